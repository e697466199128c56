#pragma once

#include <nxsim/dlg.h>
#include <nxsim/journal_runner.h>
#include <nxsim/platform.h>

#include <NXOpen/Callback.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <gtest/gtest.h>

#include "testutil/lambda_callback.h"

#include <functional>
#include <string>
#include <utility>

namespace NxsimTest {

using TestUtil::Handler;
using TestUtil::LambdaCallback;

inline LambdaCallback handler(Handler fn) {
    return LambdaCallback(std::move(fn));
}

/// Starts every test from a clean platform with the test dialogs on the resource path.
class Fixture : public ::testing::Test {
protected:
    void SetUp() override {
        nxsim::reset();
        nxsim::setPresenter(nullptr);
        nxsim::setResourcePath({boost::filesystem::path(NXSIM_TEST_DATA) / "dlg"});
    }
    void TearDown() override {
        nxsim::setPresenter(nullptr);
        nxsim::reset();
    }

    /// Replays journal text; `entry` is what `run` calls.
    static nxsim::JournalResult replay(const std::string& text,
                                       const std::function<void()>& entry) {
        nxsim::JournalRunner runner(nxsim::parseJournal(text, "test.journal"));
        return runner.run(entry);
    }

    static std::string part(const std::string& name) {
        return (boost::filesystem::path(NXSIM_TEST_DATA) / "parts" / name).string();
    }
};

} // namespace NxsimTest
