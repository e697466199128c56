#pragma once

#include <nxsim/journal_runner.h>

#include <boost/filesystem/path.hpp>

#include <functional>
#include <string>

namespace TestUtil {

/// The folder of the product's dialog resource files.
boost::filesystem::path productResources();

/// Replays `text` as a journal named `name` with the scripted presenter, finding dialog
/// resources in the product's folder and in `extraResources`. Each `run` line calls `entry`;
/// `expect file` paths are relative to `site`.
nxsim::JournalResult runJournal(const std::string& text, const std::function<void()>& entry,
                                const boost::filesystem::path& site = {},
                                const boost::filesystem::path& extraResources = {},
                                const std::string& name = "test.journal");

} // namespace TestUtil

/// Replays a journal and fails the test with the journal's "FILE:LINE: reason" when it fails.
#define EXPECT_JOURNAL_PASSES(result)                                                              \
    do {                                                                                           \
        const nxsim::JournalResult journalResult_ = (result);                                      \
        EXPECT_TRUE(journalResult_.passed) << journalResult_.message;                              \
    } while (false)
