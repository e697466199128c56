#pragma once

#include "host_options.h"

#include <nxsim/journal_runner.h>

#include <boost/filesystem/path.hpp>

#include <map>
#include <memory>
#include <string>

namespace QorfmtHost {

class QtPresenter;

/// Sets QORFMT_SITE, QORFMT_CONFIGURATION and QORFMT_SEARCH_PATH from the options, as
/// qorfmt-replay does, and points the dialog resource path at the source tree's resources unless
/// QORFMT_RESOURCE_PATH is set. Throws std::runtime_error when the site is not a directory.
void applySetup(HostOptions& options);

/// The user-function libraries loaded so far; each stays loaded, as the CAD system keeps them.
class LibraryCache {
public:
    /// The library of `file`, loaded on first use; throws std::runtime_error naming the file.
    nxsim::UserFunctionLibrary& library(const boost::filesystem::path& file);

private:
    std::map<std::string, std::unique_ptr<nxsim::UserFunctionLibrary>> m_libraries;
};

/// Replays the journal of the options in the presenter's windows (which it puts in Scripted
/// mode for the time): 0 passed, 1 with "FILE:LINE: ..." on the first failure, 2 on a setup
/// error, as qorfmt-replay answers.
nxsim::ReplayOutcome replayInWindows(const HostOptions& options, LibraryCache& libraries,
                                     QtPresenter& presenter);

} // namespace QorfmtHost
