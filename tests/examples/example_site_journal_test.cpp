// The configurator run as NX runs it on the example site: the file select dialog lists each
// document under its own base folder only, and every document opens with its borders, blocks and
// translations in the main dialog. Nothing is saved, so the site stays as committed.
#include "model/definition_document.h"

#include "base/wildcard_filter.h"
#include "kivug/search_file_list.h"
#include "testutil/journal.h"
#include "testutil/temp_dir.h"

#include <nxsim/journal_runner.h>
#include <nxsim/platform.h>

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

// The file select dialog's base folders, in the order of its "FILTER" menu.
const char* const kBaseFolders[] = {"Installation", "Common configuration",
                                    "Current configuration"};

std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c;
    }
    return out + "\"";
}

std::string itemList(const std::vector<std::string>& items) {
    std::string out = "[";
    for (std::size_t i = 0; i < items.size(); ++i) {
        out += (i == 0 ? "" : ", ") + quoted(items[i]);
    }
    return out + "]";
}

class ExampleSiteInTheConfigurator : public ::testing::Test {
protected:
    ExampleSiteInTheConfigurator() {
        m_environment.set("QORFMT_SITE", site().string());
        m_environment.set("QORFMT_CONFIGURATION", nullptr);
        m_environment.set("QORFMT_SEARCH_PATH", nullptr);
        nxsim::reset();
    }

    static fs::path site() { return fs::canonical(fs::path(QORFMT_EXAMPLES_DIR) / "site"); }

    // The documents of one search root, sorted by name as the file select dialog lists them.
    static std::vector<fs::path> documents(const fs::path& root) {
        std::vector<fs::path> files;
        const fs::path folder = root / "format_defs";
        for (fs::directory_iterator it(folder), end; it != end; ++it) {
            if (fs::is_regular_file(it->path()) &&
                Base::WildcardFilter("*.fordef").matches(it->path())) {
                files.push_back(it->path());
            }
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    nxsim::JournalResult run(const std::string& journal) {
        return TestUtil::runJournal(
            journal, [] { library().callUfusr(); }, site());
    }

private:
    // Loaded once and never unloaded, as NX keeps a user-function library: the documents it opens
    // stay in its document manager for the life of the process.
    static nxsim::UserFunctionLibrary& library() {
        static nxsim::UserFunctionLibrary* const loaded =
            new nxsim::UserFunctionLibrary(QORFMT_CONFIGURE_LIBRARY);
        return *loaded;
    }

    TestUtil::ScopedEnvironment m_environment;
};

} // namespace

TEST_F(ExampleSiteInTheConfigurator, FileSelectDialogListsEachDocumentUnderItsOwnBaseFolderOnly) {
    const std::vector<fs::path> roots = KivUg::searchRoots();
    ASSERT_EQ(roots.size(), 3u);
    std::string journal = "run\ndialog qorborder_config_main\n";
    for (std::size_t i = 0; i < roots.size(); ++i) {
        std::vector<std::string> names;
        for (const fs::path& file : documents(roots[i])) {
            names.push_back(file.filename().string());
        }
        ASSERT_FALSE(names.empty()) << roots[i];
        journal += "  press OPEN_FILE\n"
                   "    dialog qorfmt_config_selectfile.dlg\n"
                   "    choose FILTER " +
                   quoted(kBaseFolders[i]) + "\n    expect items FILE_LIST " + itemList(names) +
                   "\n    cancel\n";
    }
    journal += "  cancel\n";
    EXPECT_JOURNAL_PASSES(run(journal));
}

TEST_F(ExampleSiteInTheConfigurator, EveryDocumentOpensWithItsBordersBlocksAndTranslations) {
    const std::vector<fs::path> roots = KivUg::searchRoots();
    ASSERT_EQ(roots.size(), 3u);
    std::string journal = "run\ndialog qorborder_config_main\n";
    int opened = 0;
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const std::vector<fs::path> files = documents(roots[i]);
        for (std::size_t row = 0; row < files.size(); ++row) {
            const auto document = DefinitionDocument::load(files[row]);
            std::vector<std::string> borders;
            for (const auto& border : document->borderLayoutTypes(AllUnits)) {
                borders.push_back(border->id);
            }
            std::vector<std::string> blocks;
            for (const auto& block : document->blockLayouts(AllUnits)) {
                blocks.push_back(block->id);
            }
            std::vector<std::string> keys;
            for (const auto& entry : document->translations()) {
                keys.push_back(entry.first);
            }
            journal += "  press OPEN_FILE\n"
                       "    dialog qorfmt_config_selectfile.dlg\n"
                       "    choose FILTER " +
                       quoted(kBaseFolders[i]) + "\n    select FILE_LIST " + std::to_string(row) +
                       "\n    ok\n  expect items BORDERLIST " + itemList(borders) +
                       "\n  expect items BLOCKLIST " + itemList(blocks) +
                       "\n  expect items TRANSLATION_LIST " + itemList(keys) + "\n";
            ++opened;
        }
    }
    journal += "  cancel\n";
    EXPECT_GE(opened, 3);
    EXPECT_JOURNAL_PASSES(run(journal));
}
