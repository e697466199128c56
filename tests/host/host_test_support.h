#pragma once

#include <nxsim/dlg.h>
#include <nxsim/platform.h>
#include <nxsim/presenter.h>
#include <nxsim/runtime.h>

#include <NXOpen/Callback.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include "host_options.h"
#include "window_layout.h"

#include <QApplication>
#include <QDir>
#include <QSettings>

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

#include <gtest/gtest.h>

#include "testutil/lambda_callback.h"

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace HostTest {

namespace fs = boost::filesystem;

inline const fs::path kNxsimData = NXSIM_TEST_DATA;
inline const fs::path kHostData = HOST_TEST_DATA;

/// The one QApplication of the test program, on Qt's offscreen platform. It is never destroyed:
/// at exit, Qt's own globals may already be gone.
inline QApplication& application() {
    static QApplication* app = nullptr;
    if (!app) {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        QorfmtHost::quietPlatformNoise();
        static int argc = 1;
        static char name[] = "host_tests";
        static char* argv[] = {name, nullptr};
        app = new QApplication(argc, argv);
        // Kept window geometry goes to a folder of the test run, never to the user's settings.
        static char settings[] = "/tmp/host_tests_settings.XXXXXX";
        if (::mkdtemp(settings)) {
            QSettings::setDefaultFormat(QSettings::IniFormat);
            QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings);
        }
    }
    return *app;
}

using TestUtil::Handler;
using TestUtil::LambdaCallback;

/// A handler that counts its calls and keeps the dialog open.
inline LambdaCallback counting(int& calls) {
    return LambdaCallback([&calls](NXOpen::UIStyler::StylerEvent*) {
        ++calls;
        return NXOpen::UIStyler::DialogStateContinueDialog;
    });
}

/// Changes the working directory for its lifetime (the test parts are opened by name).
class ScopedCurrentPath {
public:
    explicit ScopedCurrentPath(const fs::path& dir) : m_previous(fs::current_path()) {
        fs::current_path(dir);
    }
    ~ScopedCurrentPath() { fs::current_path(m_previous); }
    ScopedCurrentPath(const ScopedCurrentPath&) = delete;
    ScopedCurrentPath& operator=(const ScopedCurrentPath&) = delete;

private:
    fs::path m_previous;
};

/// A clean platform with the stand-in's test dialogs on the resource path, and the application.
class Fixture : public ::testing::Test {
protected:
    void SetUp() override {
        application();
        nxsim::reset();
        nxsim::setPresenter(nullptr);
        nxsim::setResourcePath({kNxsimData / "dlg"});
        QorfmtHost::WindowLayout::forget();
    }
    void TearDown() override {
        nxsim::setPresenter(nullptr);
        nxsim::reset();
    }

    /// A shown dialog of the resource file `name` (construct handlers run, none registered).
    static std::unique_ptr<nxsim::RuntimeDialog> shownDialog(const std::string& name) {
        auto dialog = std::make_unique<nxsim::RuntimeDialog>(
            nxsim::readDialogLayout(nxsim::findDialogResource(name)));
        dialog->beginShow();
        return dialog;
    }
};

} // namespace HostTest
