#include "host_options.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>
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
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption help({"h", "help"}, "Show the command line.");
    const QCommandLineOption version("version", "Show the version.");
    const QCommandLineOption site("site", "Installation directory.", "DIR");
    const QCommandLineOption configuration("configuration", "Configuration.", "NAME");
    const QCommandLineOption searchPath("search-path", "Further root directories.", "DIRS");
    const QCommandLineOption library("library", "User-function library.", "FILE");
    const QCommandLineOption replay("replay", "Journal to replay.", "JOURNAL");
    const QCommandLineOption record("record", "Journal to write.", "JOURNAL");
    const QCommandLineOption offscreen("offscreen", "Qt's offscreen platform.");
    const QCommandLineOption screenshots("screenshots", "Folder for pictures.", "DIR");
    const QCommandLineOption noRun("no-run", "Do not run the library at start.");
    const QCommandLineOption resetLayout("reset-layout", "Forget the kept window geometry.");
    const QCommandLineOption pause("pause", "Time each replayed dialog stays.", "MS");
    const QList<QCommandLineOption> valueOptions = {site,   configuration, searchPath,  library,
                                                    replay, record,        screenshots, pause};
    parser.addOptions({help, version, offscreen, noRun, resetLayout});
    parser.addOptions(valueOptions);

    QStringList list{"qorfmt-host"};
    for (const std::string& argument : arguments) {
        list << QString::fromStdString(argument);
    }
    if (!parser.parse(list)) {
        const QStringList unknown = parser.unknownOptionNames();
        if (!unknown.isEmpty()) {
            const std::string name = unknown.first().toStdString();
            throw UsageError(std::string("unknown argument \"") + (name.size() == 1 ? "-" : "--") +
                             name + "\"");
        }
        // The parser takes the next argument as an option's value, so a value is missing only
        // after the last argument.
        for (const QCommandLineOption& option : valueOptions) {
            const std::string name = option.names().first().toStdString();
            if (!arguments.empty() &&
                (arguments.back() == "--" + name || arguments.back() == "-" + name)) {
                throw UsageError(arguments.back() + " needs a value");
            }
        }
        throw UsageError(parser.errorText().toStdString());
    }
    if (!parser.positionalArguments().isEmpty()) {
        throw UsageError("unknown argument \"" +
                         parser.positionalArguments().first().toStdString() + "\"");
    }
    for (const QCommandLineOption& option : valueOptions) {
        for (const QString& value : parser.values(option)) {
            if (value.isEmpty()) {
                throw UsageError("--" + option.names().first().toStdString() +
                                 " needs a non-empty value");
            }
        }
    }

    // As on most command lines, an option given twice takes its last value.
    auto last = [&](const QCommandLineOption& option) {
        return parser.values(option).isEmpty() ? std::string()
                                               : parser.values(option).last().toStdString();
    };
    HostOptions options;
    options.site = last(site);
    options.configuration = last(configuration);
    options.searchPath = last(searchPath);
    options.library = last(library);
    options.replay = last(replay);
    options.record = last(record);
    options.screenshots = last(screenshots);
    options.offscreen = parser.isSet(offscreen);
    options.runAtStart = !parser.isSet(noRun);
    options.resetLayout = parser.isSet(resetLayout);
    options.help = parser.isSet(help);
    options.version = parser.isSet(version);
    if (parser.isSet(pause)) {
        const std::string text = last(pause);
        char* end = nullptr;
        const long ms = std::strtol(text.c_str(), &end, 10);
        if (*end != '\0' || ms < 0 || ms > 60000) {
            throw UsageError("--pause needs milliseconds from 0 to 60000, not \"" + text + "\"");
        }
        options.pauseMs = static_cast<int>(ms);
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

std::string versionText() {
    return std::string("qorfmt-host ") + QORFMT_VERSION + "\n";
}

std::string usageText() {
    return "usage: qorfmt-host [--site DIR] [--configuration NAME] [--search-path DIRS]\n"
           "                   [--library FILE] [--replay JOURNAL] [--record JOURNAL]\n"
           "                   [--offscreen] [--screenshots DIR] [--no-run] [--pause MS]\n"
           "                   [--reset-layout]\n"
           "       qorfmt-host --help | --version\n"
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
           "                       picker on screen for MS milliseconds (default 0)\n"
           "  --reset-layout       forget where the windows and dialogs were left and how\n"
           "                       large they were\n"
           "  -h, --help           print this text\n"
           "  --version            print the version\n";
}

bool displayAvailable() {
    return nonEmptyEnvironment("QT_QPA_PLATFORM") || nonEmptyEnvironment("DISPLAY") ||
           nonEmptyEnvironment("WAYLAND_DISPLAY");
}

} // namespace QorfmtHost
