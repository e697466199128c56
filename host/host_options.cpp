#include "host_options.h"

#include <QString>
#include <QtGlobal>

#include <cstdlib>

namespace fs = boost::filesystem;

namespace QorfmtHost {

namespace {

bool nonEmptyEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value && *value;
}

QtMessageHandler g_defaultHandler = nullptr;

void dropOffscreenNoise(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtWarningMsg && (message.startsWith("This plugin does not support") ||
                                 message.startsWith("QStandardPaths: XDG_RUNTIME_DIR"))) {
        return;
    }
    g_defaultHandler(type, context, message);
}

} // namespace

void quietPlatformNoise() {
    if (!g_defaultHandler) {
        g_defaultHandler = qInstallMessageHandler(dropOffscreenNoise);
    }
}

HostOptions parseHostOptions(const std::vector<std::string>& arguments) {
    HostOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& arg = arguments[i];
        auto value = [&]() -> std::string {
            if (i + 1 >= arguments.size()) {
                throw UsageError(arg + " needs a value");
            }
            const std::string& next = arguments[++i];
            if (next.empty()) {
                throw UsageError(arg + " needs a non-empty value");
            }
            return next;
        };
        if (arg == "--site") {
            options.site = value();
        } else if (arg == "--configuration") {
            options.configuration = value();
        } else if (arg == "--search-path") {
            options.searchPath = value();
        } else if (arg == "--library") {
            options.library = value();
        } else if (arg == "--replay") {
            options.replay = value();
        } else if (arg == "--record") {
            options.record = value();
        } else if (arg == "--screenshots") {
            options.screenshots = value();
        } else if (arg == "--offscreen") {
            options.offscreen = true;
        } else if (arg == "--pause") {
            const std::string text = value();
            char* end = nullptr;
            const long ms = std::strtol(text.c_str(), &end, 10);
            if (*end != '\0' || ms < 0 || ms > 60000) {
                throw UsageError("--pause needs milliseconds from 0 to 60000, not \"" + text +
                                 "\"");
            }
            options.pauseMs = static_cast<int>(ms);
        } else if (arg == "--no-run") {
            options.runAtStart = false;
        } else if (arg == "--help" || arg == "-h") {
            options.help = true;
        } else {
            throw UsageError("unknown argument \"" + arg + "\"");
        }
    }
    if (!options.replay.empty() && !options.record.empty()) {
        throw UsageError("--replay and --record cannot be used together");
    }
    return options;
}

void applyDefaults(HostOptions& options, const fs::path& executableDir) {
    if (options.site.empty()) {
        options.site = fs::path(QORFMT_SOURCE_DIR) / "examples" / "site";
    }
    if (options.library.empty()) {
        options.library = executableDir / "libqorfmt_configure.so";
    }
}

std::string usageText() {
    return "usage: qorfmt-host [--site DIR] [--configuration NAME] [--search-path DIRS]\n"
           "                   [--library FILE] [--replay JOURNAL] [--record JOURNAL]\n"
           "                   [--offscreen] [--screenshots DIR] [--no-run] [--pause MS]\n"
           "\n"
           "  --site DIR           installation directory of the configurator\n"
           "                       (default: examples/site of the source tree)\n"
           "  --configuration NAME configuration of the in-house configuration library\n"
           "  --search-path DIRS   further root directories, separated by ':', each searched\n"
           "                       for format_defs/\n"
           "  --library FILE       user-function library that Run Configurator loads\n"
           "                       (default: libqorfmt_configure.so beside qorfmt-host)\n"
           "  --replay JOURNAL     replay a journal in the host's windows, then quit with\n"
           "                       0 (passed), 1 (failed) or 2 (setup error)\n"
           "  --record JOURNAL     write the session as a journal that qorfmt-replay replays\n"
           "  --offscreen          use Qt's offscreen platform (no display needed); without\n"
           "                       --replay every dialog is closed right after it is shown\n"
           "  --screenshots DIR    save a PNG of every dialog and message box as it is shown\n"
           "  --no-run             do not run the library at start\n"
           "  --pause MS           with --replay on a display: keep each dialog, box and\n"
           "                       picker on screen for MS milliseconds (default 0)\n";
}

bool displayAvailable() {
    return nonEmptyEnvironment("QT_QPA_PLATFORM") || nonEmptyEnvironment("DISPLAY") ||
           nonEmptyEnvironment("WAYLAND_DISPLAY");
}

} // namespace QorfmtHost
