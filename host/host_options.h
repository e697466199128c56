#pragma once

#include <boost/filesystem/path.hpp>

#include <stdexcept>
#include <string>
#include <vector>

namespace QorfmtHost {

/// The command line of qorfmt-host.
struct HostOptions {
    boost::filesystem::path site; ///< empty until defaults are applied
    std::string configuration;
    std::string searchPath; ///< root directories separated by ':'
    boost::filesystem::path library;
    boost::filesystem::path replay; ///< journal to replay, empty for an interactive session
    boost::filesystem::path record; ///< journal to write, empty for none
    bool offscreen = false;
    boost::filesystem::path screenshots; ///< directory for PNGs, empty for none
    bool runAtStart = true;              ///< run the library once the window is up
    bool resetLayout = false;            ///< forget the kept geometry of windows and dialogs
    int pauseMs = 0; ///< with --replay: how long each dialog, box and picker stays on screen
    bool help = false;
    bool version = false;
};

/// A command line that cannot be used; what() says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Parses the arguments (without the program name); throws UsageError.
HostOptions parseHostOptions(const std::vector<std::string>& arguments);

/// Fills in what the command line left open: the example site of the source tree and the
/// user-function library beside `executableDir`.
void applyDefaults(HostOptions& options, const boost::filesystem::path& executableDir);

/// The usage text printed for --help and after a usage error.
std::string usageText();
/// What --version prints.
std::string versionText();

/// Drops Qt's warnings that say nothing to a user here: the offscreen platform's about window
/// features it lacks, and the missing XDG runtime directory. Call before the QApplication.
void quietPlatformNoise();

/// True when Qt can open windows: a platform was chosen, or an X or Wayland display is set.
bool displayAvailable();

} // namespace QorfmtHost
