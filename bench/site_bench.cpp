// The whole program at site scale: generates a site, replays journals through the real dialogs
// and .dlg files with qorfmt-replay, runs qorfmt lint, and compares each with a bare pugixml
// parse of the same files in the same run. A per-event time is the difference of two journals
// that differ only in the events, divided by their number. Every figure is the median of
// --runs runs, taken in turns so that a busy spell of the machine touches each alike.
#include "fordef_generator.h"

#include "model/definition_document.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <pugixml.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <spawn.h>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace fs = boost::filesystem;
using namespace QorBorder;

namespace {

struct Options {
    fs::path bin;  ///< qorfmt-replay, qorfmt and libqorfmt_configure.so
    fs::path work; ///< the generated sites, journals and logs
    int documents = 100;
    int blocks = 100;
    int fields = 20;
    int largeBlockFields = 500;
    int events = 5000;
    int layoutOpens = 1000;
    int lintDocuments = 6000;
    int runs = 3;
    bool keep = false;
    bool dialogs = true; ///< false: lint only
};

const char* const kUsage =
    "usage: qorfmt_sitebench --bin DIR [--work DIR] [--documents N] [--blocks N] [--fields N]\n"
    "                        [--large-block-fields N] [--events N] [--layout-opens N]\n"
    "                        [--lint-documents N] [--runs N] [--keep] [--lint-only]\n";

Options parseOptions(int argc, char** argv) {
    Options options;
    options.work = fs::temp_directory_path() / fs::unique_path("qorfmt-sitebench-%%%%-%%%%");
    const std::map<std::string, int*> numbers = {
        {"--documents", &options.documents},
        {"--blocks", &options.blocks},
        {"--fields", &options.fields},
        {"--large-block-fields", &options.largeBlockFields},
        {"--events", &options.events},
        {"--layout-opens", &options.layoutOpens},
        {"--lint-documents", &options.lintDocuments},
        {"--runs", &options.runs}};
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (arg == "--keep") {
            options.keep = true;
        } else if (arg == "--lint-only") {
            options.dialogs = false;
        } else if (arg == "--bin" && hasValue) {
            options.bin = argv[++i];
        } else if (arg == "--work" && hasValue) {
            options.work = argv[++i];
        } else if (numbers.count(arg) && hasValue) {
            const int value = std::atoi(argv[++i]);
            if (value < 1) {
                std::cerr << "qorfmt_sitebench: " << arg << " must be a positive number\n";
                std::exit(2);
            }
            *numbers.at(arg) = value;
        } else {
            std::cerr << kUsage;
            std::exit(2);
        }
    }
    if (options.bin.empty()) {
        std::cerr << kUsage;
        std::exit(2);
    }
    return options;
}

// "doc00042", "D00042_": a stem and five digits.
std::string numbered(const std::string& stem, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%05d", number);
    return stem + digits;
}

// ---- sites ----------------------------------------------------------------------------------

// The template parts that the generated documents name, copied from the example site so that
// lint finds them.
void addTemplates(const fs::path& site, const Bench::DocumentShape& shape) {
    const fs::path examples = fs::path(QORFMT_SOURCE_DIR) / "examples/site/format_defs";
    fs::create_directories(site / "format_defs/frame_templates");
    fs::create_directories(site / "format_defs/block_templates");
    for (int s = 0; s < shape.sizesPerBorder; ++s) {
        fs::copy_file(examples / "frame_templates/iso5457_a3.prt",
                      site / "format_defs/frame_templates" /
                          ("frame_a" + std::to_string(s) + ".prt"),
                      fs::copy_option::overwrite_if_exists);
    }
    for (int s = 0; s < shape.stylesPerBlock; ++s) {
        fs::copy_file(examples / "block_templates/iso7200_title_block.prt",
                      site / "format_defs/block_templates" /
                          ("title_" + std::to_string(s) + ".prt"),
                      fs::copy_option::overwrite_if_exists);
    }
}

struct Site {
    fs::path folder;
    std::vector<fs::path> files;
    std::uintmax_t bytes = 0;
};

// `count` documents of `shape` named doc00000.fordef...; the last one also holds a block of
// `largeBlockFields` fields (ID "LARGE_BLOCK", the last row of its block list).
Site generateSite(const fs::path& folder, int count, const Bench::DocumentShape& shape,
                  int largeBlockFields) {
    const std::string separator = shape.idSeparator;
    Site site;
    site.folder = folder;
    fs::create_directories(folder / "format_defs");
    addTemplates(folder, shape);
    for (int d = 0; d < count; ++d) {
        const auto document = Bench::generateDocument(shape, numbered("D", d) + separator);
        if (d == count - 1 && largeBlockFields > 0) {
            Bench::DocumentShape large = shape;
            large.blockLayouts = 1;
            large.fieldsPerBlock = largeBlockFields;
            large.borderLayouts = 0;
            large.blockLocations = 0;
            large.translations = 0;
            const auto block = Bench::generateDocument(large, "LARGE_")->blockLayouts(AllUnits);
            auto copy = boost::make_shared<BlockLayout>(*block.front());
            copy->id = "LARGE_BLOCK";
            document->addBlockLayout(copy);
        }
        const fs::path file = folder / "format_defs" / (numbered("doc", d) + ".fordef");
        document->save(file);
        site.files.push_back(file);
        site.bytes += fs::file_size(file);
    }
    return site;
}

void copyTree(const fs::path& from, const fs::path& to) {
    fs::create_directories(to);
    for (const fs::directory_entry& entry : fs::directory_iterator(from)) {
        if (fs::is_directory(entry.path())) {
            copyTree(entry.path(), to / entry.path().filename());
        } else {
            fs::copy_file(entry.path(), to / entry.path().filename(),
                          fs::copy_option::overwrite_if_exists);
        }
    }
}

std::string fixed(double value, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    return text;
}

// ---- running the programs -------------------------------------------------------------------

// Wall time, which a user waits, and CPU time (user and system), which a busy machine disturbs
// less: on a shared machine the wall time of a run includes the time it waited for a core.
struct Timing {
    double wall = 0;
    double cpu = 0;
};

struct Run {
    Timing time;
    double maxResidentMB = 0;
};

double cpuSeconds(const rusage& usage) {
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Runs the program with stdout and stderr into `log`; a failure prints the log and ends the
// benchmark, since its figures would mean nothing.
Run runProgram(const std::vector<std::string>& args, const fs::path& log,
               const std::vector<int>& acceptedExits = {0}) {
    std::vector<char*> argv;
    for (const std::string& arg : args) {
        argv.push_back(const_cast<char*>(arg.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_adddup2(&actions, 1, 2);
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) {
        std::cerr << "qorfmt_sitebench: cannot start " << args[0] << ": " << std::strerror(spawned)
                  << '\n';
        std::exit(1);
    }
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    Run run;
    run.time.wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    run.time.cpu = cpuSeconds(usage);
    run.maxResidentMB = static_cast<double>(usage.ru_maxrss) / 1024.0;
    const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128;
    if (std::find(acceptedExits.begin(), acceptedExits.end(), exitCode) == acceptedExits.end()) {
        std::cerr << "qorfmt_sitebench: " << args[0] << " exited with " << exitCode << "; "
                  << log.string() << ":\n";
        std::ifstream in(log.string());
        std::cerr << in.rdbuf() << '\n';
        std::exit(1);
    }
    return run;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// ---- journals -------------------------------------------------------------------------------

std::string openDocuments(int count) {
    std::ostringstream text;
    text << "run\ndialog qorborder_config_main\n";
    for (int d = 0; d < count; ++d) {
        text << "  press OPEN_FILE\n"
             << "    dialog qorfmt_config_selectfile.dlg\n"
             << "    select FILE_LIST " << d << "\n"
             << "    expect value FILE_SELECTION \"" << numbered("doc", d) << ".fordef\"\n"
             << "    ok\n";
    }
    text << "  expect label FILENAME \"" << numbered("doc", count - 1) << ".fordef\"\n";
    return text.str();
}

void writeJournal(const fs::path& file, const std::string& text) {
    std::ofstream out(file.string());
    out << text << "  cancel\n";
}

double fileMB(std::uintmax_t bytes) {
    return static_cast<double>(bytes) / 1e6;
}

// The bare pugixml parse of every file, each read whole and parsed in place, one after another.
Timing bareParse(const std::vector<fs::path>& files) {
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    const auto start = std::chrono::steady_clock::now();
    for (const fs::path& file : files) {
        std::string buffer(fs::file_size(file), '\0');
        std::FILE* in = std::fopen(file.c_str(), "rb");
        buffer.resize(std::fread(&buffer[0], 1, buffer.size(), in));
        std::fclose(in);
        pugi::xml_document xml;
        if (!xml.load_buffer_inplace(&buffer[0], buffer.size())) {
            std::cerr << "qorfmt_sitebench: " << file.string() << " does not parse\n";
            std::exit(1);
        }
    }
    Timing timing;
    timing.wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    timing.cpu = cpuSeconds(after) - cpuSeconds(before);
    return timing;
}

Timing median(const std::vector<Timing>& timings) {
    std::vector<double> wall;
    std::vector<double> cpu;
    for (const Timing& timing : timings) {
        wall.push_back(timing.wall);
        cpu.push_back(timing.cpu);
    }
    return {median(wall), median(cpu)};
}

// "1.99 s (CPU 0.64 s)"
std::string seconds(const Timing& timing) {
    return fixed(timing.wall, 2) + " s (CPU " + fixed(timing.cpu, 2) + " s)";
}

// "4.02x (CPU 1.30x)"
std::string ratio(const Timing& a, const Timing& b) {
    return fixed(a.wall / b.wall, 2) + "x (CPU " + fixed(a.cpu / b.cpu, 2) + "x)";
}

std::string machine() {
    std::ifstream cpuinfo("/proc/cpuinfo");
    std::string line;
    std::string model = "unknown processor";
    while (std::getline(cpuinfo, line)) {
        if (line.rfind("model name", 0) == 0) {
            model = line.substr(line.find(':') + 2);
            break;
        }
    }
    double load[3] = {0, 0, 0};
    getloadavg(load, 3);
    std::ostringstream text;
    text << sysconf(_SC_NPROCESSORS_ONLN) << " cores (" << model << "), load average " << load[0]
         << " " << load[1] << " " << load[2];
    return text.str();
}

void printRow(const std::string& what, const std::string& result) {
    std::printf("%-62s %s\n", what.c_str(), result.c_str());
    std::fflush(stdout);
}

void benchmarkDialogs(const Options& options, const fs::path& logs) {
    const std::string replay = (options.bin / "qorfmt-replay").string();
    const std::string library = (options.bin / "libqorfmt_configure.so").string();
    // The dialog site: documents x blocks x fields, with borders, locations and translations.
    Bench::DocumentShape shape;
    shape.blockLayouts = options.blocks;
    shape.fieldsPerBlock = options.fields;
    shape.stylesPerBlock = 2;
    shape.rowTypesPerBlock = 1;
    shape.borderLayouts = 10;
    shape.sizesPerBorder = 4;
    shape.blockLocations = options.blocks * 2;
    shape.translations = options.blocks * 4;
    const Site site =
        generateSite(options.work / "site", options.documents, shape, options.largeBlockFields);
    std::printf("Dialog site: %d documents x %d blocks x %d fields (the last document also a "
                "block of %d fields), %.1f MB\n",
                options.documents, options.blocks, options.fields, options.largeBlockFields,
                fileMB(site.bytes));

    // Journals: each pair differs only in the events it measures.
    const fs::path journals = options.work / "journals";
    fs::create_directories(journals);
    const std::string open = openDocuments(options.documents);
    std::string blockEvents = open;
    std::string borderEvents = open;
    std::string layoutBase = open;
    std::string layoutOpens = open;
    for (int e = 0; e < options.events; ++e) {
        blockEvents += "  select BLOCKLIST " + std::to_string(e % options.blocks) + "\n";
        borderEvents += "  select BORDERLIST " + std::to_string(e % shape.borderLayouts) + "\n";
    }
    const std::string selectLarge = "  select BLOCKLIST " + std::to_string(options.blocks) + "\n";
    for (int k = 0; k < options.layoutOpens; ++k) {
        layoutBase += selectLarge;
        layoutOpens += selectLarge + "  press EDITBLOCK\n    dialog qorborder_config_block\n" +
                       "    expect value BLOCK_ID \"LARGE_BLOCK\"\n    cancel\n";
    }
    const std::map<std::string, std::string> journalTexts = {{"open", open},
                                                             {"block-events", blockEvents},
                                                             {"border-events", borderEvents},
                                                             {"layout-base", layoutBase},
                                                             {"layout-opens", layoutOpens}};
    for (const auto& journal : journalTexts) {
        writeJournal(journals / (journal.first + ".journal"), journal.second);
    }

    // Saves of the example documents with their lint report, each on a fresh copy of the
    // example site: edit the first block or border (OK marks it modified), then save or not.
    // The example site with its configurations beside it.
    const fs::path examples = fs::path(QORFMT_SOURCE_DIR) / "examples";
    struct ExampleSave {
        std::string name;
        fs::path withSave;
        fs::path withoutSave;
    };
    std::vector<ExampleSave> saves;
    // In the file list's order.
    const char* const exampleNames[] = {"asme_y14_100_blocks", "asme_y14_1_borders",
                                        "iso5457_borders", "iso7200_blocks"};
    for (int row = 0; row < 4; ++row) {
        const char* const name = exampleNames[row];
        const bool blocks = std::strstr(name, "blocks") != nullptr;
        std::string text = "run\ndialog qorborder_config_main\n  press OPEN_FILE\n"
                           "    dialog qorfmt_config_selectfile.dlg\n    select FILE_LIST " +
                           std::to_string(row) + "\n    expect value FILE_SELECTION \"" + name +
                           ".fordef\"\n    ok\n";
        text += blocks ? "  select BLOCKLIST 0\n  press EDITBLOCK\n"
                         "    dialog qorborder_config_block\n    ok\n"
                       : "  select BORDERLIST 0\n  press EDITBORDER\n"
                         "    dialog qorborder_config_border\n    ok\n";
        ExampleSave save{name, journals / (std::string("save-") + name + ".journal"),
                         journals / (std::string("nosave-") + name + ".journal")};
        writeJournal(save.withoutSave, text);
        writeJournal(save.withSave, text + "  press SAVE_FILE\n  expect stoplight \"1 0\"\n");
        saves.push_back(save);
    }

    const auto replayJournal = [&](const std::string& name, const fs::path& siteFolder) {
        return runProgram({replay, (journals / (name + ".journal")).string(), "--site",
                           siteFolder.string(), "--library", library},
                          logs / (name + ".log"))
            .time;
    };

    std::map<std::string, std::vector<Timing>> times;
    std::vector<Timing> parses;
    for (int r = 0; r < options.runs; ++r) {
        parses.push_back(bareParse(site.files));
        for (const auto& journal : journalTexts) {
            times[journal.first].push_back(replayJournal(journal.first, site.folder));
        }
        for (const ExampleSave& save : saves) {
            for (const fs::path& journal : {save.withSave, save.withoutSave}) {
                const fs::path copy = options.work / "example-copy";
                fs::remove_all(copy);
                copyTree(examples, copy);
                times[journal.stem().string()].push_back(
                    runProgram({replay, journal.string(), "--site", (copy / "site").string(),
                                "--library", library},
                               logs / (journal.stem().string() + ".log"))
                        .time);
            }
        }
    }

    const Timing opened = median(times["open"]);
    const Timing parse = median(parses);
    printRow("opening every document through the main dialog (whole run)",
             seconds(opened) + "; bare parse " + seconds(parse) + " = " + ratio(opened, parse));
    // Per run, the difference of the two journals; then the median of the runs.
    const auto perEvent = [&](const std::string& with, const std::string& without, int count) {
        std::vector<Timing> differences;
        for (int r = 0; r < options.runs; ++r) {
            differences.push_back({(times[with][r].wall - times[without][r].wall) / count,
                                   (times[with][r].cpu - times[without][r].cpu) / count});
        }
        const Timing each = median(differences);
        return fixed(each.wall * 1000.0, 3) + " ms (CPU " + fixed(each.cpu * 1000.0, 3) + " ms)";
    };
    printRow("main dialog list event: select a block (per event)",
             perEvent("block-events", "open", options.events));
    printRow("main dialog list event: select a border (per event)",
             perEvent("border-events", "open", options.events));
    printRow("block layout dialog opened on the block of " +
                 std::to_string(options.largeBlockFields) + " fields (per opening)",
             perEvent("layout-opens", "layout-base", options.layoutOpens));
    for (const ExampleSave& save : saves) {
        printRow("save of " + save.name + ".fordef with its lint report",
                 perEvent(save.withSave.stem().string(), save.withoutSave.stem().string(), 1));
    }
}

} // namespace

int main(int argc, char** argv) {
    const Options options = parseOptions(argc, argv);
    const std::string qorfmt = (options.bin / "qorfmt").string();
    fs::create_directories(options.work);
    const fs::path logs = options.work / "logs";
    fs::create_directories(logs);

    std::printf("Machine: %s\n", machine().c_str());

    if (options.dialogs) {
        benchmarkDialogs(options, logs);
    }

    // qorfmt lint of a site of many small documents against a bare parse of the same files.
    Bench::DocumentShape small;
    small.blockLayouts = 2;
    small.fieldsPerBlock = 5;
    small.stylesPerBlock = 1;
    small.rowTypesPerBlock = 1;
    small.borderLayouts = 1;
    small.sizesPerBorder = 2;
    small.blockLocations = 2;
    small.translations = 8;
    // A site that lint finds clean, as a kept site is: IDs without "_", and one document that
    // defines the blocks every border requires.
    small.idSeparator = "-";
    small.partsListBlock = "PARTSLIST";
    Site lintSite = generateSite(options.work / "lint-site", options.lintDocuments, small, 0);
    {
        DefinitionDocument common("");
        for (const std::string& id : {small.revisionBlock, small.partsListBlock}) {
            auto block = boost::make_shared<BlockLayout>();
            block->id = id;
            common.addBlockLayout(block);
        }
        const fs::path file = lintSite.folder / "format_defs" / "common.fordef";
        common.save(file);
        lintSite.files.push_back(file);
        lintSite.bytes += fs::file_size(file);
    }
    std::vector<Timing> lintTimes;
    std::vector<double> lintMemory;
    std::vector<Timing> lintParse;
    for (int r = 0; r < options.runs; ++r) {
        lintParse.push_back(bareParse(lintSite.files));
        // Exit 1 would be findings: the log counts them.
        const Run run = runProgram({qorfmt, "lint", "--site", lintSite.folder.string()},
                                   logs / "lint.log", {0, 1});
        lintTimes.push_back(run.time);
        lintMemory.push_back(run.maxResidentMB);
    }
    const Timing lint = median(lintTimes);
    const Timing lintParsed = median(lintParse);
    const double siteMB = fileMB(lintSite.bytes);
    printRow("qorfmt lint of " + std::to_string(lintSite.files.size()) + " documents (" +
                 fixed(siteMB, 1) + " MB)",
             seconds(lint) + "; bare parse " + seconds(lintParsed) + " = " +
                 ratio(lint, lintParsed));
    std::ifstream lintLog((logs / "lint.log").string());
    const long findings =
        std::count(std::istreambuf_iterator<char>(lintLog), std::istreambuf_iterator<char>(), '\n');
    printRow("qorfmt lint: findings", std::to_string(findings));
    printRow("qorfmt lint: peak memory / the site's bytes",
             fixed(median(lintMemory), 0) + " MB = " + fixed(median(lintMemory) / siteMB, 2) + "x");
    std::printf("Machine after the runs: %s\n", machine().c_str());

    if (!options.keep) {
        boost::system::error_code ec;
        fs::remove_all(options.work, ec);
    }
    return 0;
}
