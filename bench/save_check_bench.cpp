// What the configurator's check after a save costs beside the save itself, for each document of
// the example site: the document is saved in place in a copy of the site, then checked as the
// configurator checks it (the site's other documents as context, kept between saves; template
// lookups along the site's search roots). Both are timed in the same iteration, and the counters
// give each one's mean and their ratio; the target is a check under 20% of the save.
#include "base/wildcard_filter.h"
#include "kivug/search_file_list.h"
#include "model/definition_document.h"
#include "model/lint/site_check.h"

#include <benchmark/benchmark.h>
#include <boost/filesystem/operations.hpp>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

namespace fs = boost::filesystem;

namespace {

// The example site copied once into a temporary folder, as the configurator would find it with
// the plant A configuration current.
struct ExampleSite {
    fs::path root;
    std::vector<fs::path> roots;
    std::vector<fs::path> documents;

    ExampleSite() {
        root = fs::temp_directory_path() / fs::unique_path("qorfmt-bench-%%%%-%%%%");
        copyTree(fs::path(QORFMT_EXAMPLES_DIR), root);
        roots = {root / "site", root / "configurations" / "common" / "nx",
                 root / "configurations" / "plant_a" / "nx"};
        documents = KivUg::NxSearchFileList("format_defs", roots)
                        .filePaths(Base::WildcardFilter("*.fordef"));
    }
    ~ExampleSite() {
        boost::system::error_code ec;
        fs::remove_all(root, ec);
    }

    static void copyTree(const fs::path& from, const fs::path& to) {
        fs::create_directories(to);
        for (fs::recursive_directory_iterator it(from), end; it != end; ++it) {
            const fs::path target = to / it->path().lexically_relative(from);
            if (fs::is_directory(it->path())) {
                fs::create_directories(target);
            } else {
                fs::copy_file(it->path(), target);
            }
        }
    }
};

ExampleSite& site() {
    static ExampleSite instance;
    return instance;
}

void saveAndCheck(benchmark::State& state, std::size_t index) {
    const fs::path file = site().documents.at(index);
    const auto document = QorBorder::DefinitionDocument::load(file);
    const auto templateFound = [](const std::string& name, const std::string& folder) {
        return !KivUg::findFile(name, folder, false, site().roots).empty();
    };
    QorLint::SiteCheck check;
    // The first check reads the site; the configurator pays that once per run.
    check.check(file, document, site().documents, {}, templateFound);

    using Clock = std::chrono::steady_clock;
    Clock::duration saving{};
    Clock::duration checking{};
    std::size_t findings = 0;
    for (auto _ : state) {
        document->modified = true;
        const auto start = Clock::now();
        document->save();
        const auto saved = Clock::now();
        findings = check.check(file, document, site().documents, {}, templateFound).size();
        checking += Clock::now() - saved;
        saving += saved - start;
    }
    const double iterations = static_cast<double>(state.iterations());
    const auto ms = [&](Clock::duration d) {
        return std::chrono::duration<double, std::milli>(d).count() / iterations;
    };
    state.counters["save_ms"] = ms(saving);
    state.counters["check_ms"] = ms(checking);
    state.counters["check/save"] = ms(checking) / ms(saving);
    state.counters["findings"] = static_cast<double>(findings);
    state.SetLabel(file.filename().string());
}

} // namespace

int main(int argc, char** argv) {
    for (std::size_t i = 0; i < site().documents.size(); ++i) {
        benchmark::RegisterBenchmark(
            ("SaveAndCheck/" + site().documents[i].filename().stem().string()).c_str(),
            [i](benchmark::State& state) { saveAndCheck(state, i); })
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
