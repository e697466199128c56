// Every drawing size of the example site, through the border dialogs: Extract Dimensions reads
// the sheet size NX gives for its template, and Open Template opens it for corner picks that give
// back the border's stored corners.

#include "border/border_layout_dialog.h"
#include "border/drawing_size_dialog.h"
#include "model/border_layout.h"
#include "model/definition_document.h"
#include "testutil/journal.h"
#include "testutil/temp_dir.h"

#include <nxsim/part_file.h>
#include <nxsim/platform.h>
#include <uf.h>

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

namespace fs = boost::filesystem;

const fs::path kExamples = QORFMT_EXAMPLES;

/// Every document of the example site: the installation's, the common and the plant
/// configuration's.
std::vector<fs::path> exampleDocuments() {
    std::vector<fs::path> documents;
    for (const fs::path& folder :
         {kExamples / "site/format_defs", kExamples / "configurations/common/nx/format_defs",
          kExamples / "configurations/plant_a/nx/format_defs"}) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".fordef") {
                documents.push_back(entry.path());
            }
        }
    }
    return documents;
}

/// A number as a journal line takes it, so that it reads back as the same double.
std::string number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

/// The current drawing of a template as NX describes it.
nxsim::SimDrawing sheetOf(const std::string& templateFile) {
    const nxsim::SimPart part =
        nxsim::readPartFile(kExamples / "site/format_defs/frame_templates" / templateFile);
    EXPECT_EQ(part.drawings.size(), 1u) << templateFile;
    EXPECT_GE(part.currentDrawing, 0) << templateFile;
    return part.drawings.at(static_cast<std::size_t>(part.currentDrawing));
}

class ExampleTemplates : public ::testing::Test {
protected:
    ExampleTemplates() {
        nxsim::reset();
        m_env.set("QORFMT_SITE", (kExamples / "site").string());
        m_env.set("QORFMT_CONFIGURATION", nullptr);
        m_env.set("QORFMT_SEARCH_PATH", nullptr);
    }

    /// Replays `journal` with `show` as the program that the `run` line starts.
    static nxsim::JournalResult replay(const std::string& journal,
                                       const std::function<void()>& show) {
        return TestUtil::runJournal(journal, [&show] {
            UF_initialize();
            show();
            UF_terminate();
        });
    }

    /// Every border of the example site.
    static std::vector<boost::shared_ptr<QorBorder::BorderLayout>> borders() {
        std::vector<boost::shared_ptr<QorBorder::BorderLayout>> all;
        for (const fs::path& file : exampleDocuments()) {
            const auto document = QorBorder::DefinitionDocument::load(file);
            for (const auto& border : document->borderLayoutTypes(QorBorder::AllUnits)) {
                all.push_back(document->getBorderLayout(border->id));
            }
        }
        return all;
    }

private:
    TestUtil::ScopedEnvironment m_env;
};

TEST_F(ExampleTemplates, EveryExampleSiteBorderHasDrawingSizes) {
    const auto all = borders();
    ASSERT_GE(all.size(), 7u);
    for (const auto& border : all) {
        EXPECT_FALSE(border->drawingSizes().empty()) << border->id;
    }
}

TEST_F(ExampleTemplates, ExtractDimensionsOnEveryExampleTemplateGivesTheSheetSizeNxGives) {
    int checked = 0;
    for (const auto& border : borders()) {
        for (const QorBorder::DrawingSize& stored : border->drawingSizes()) {
            const nxsim::SimDrawing sheet = sheetOf(stored.templateFile);
            QorBorder::DrawingSize size = stored;
            EXPECT_JOURNAL_PASSES(
                replay("run\ndialog qorborder_config_drawing_size\n"
                       "set HEIGHT 0\nset LENGTH 0\npress EXTRACT_DIMS\n"
                       "expect value HEIGHT " +
                           number(sheet.height) +
                           "\n"
                           "expect value LENGTH " +
                           number(sheet.length) + "\nok\n",
                       [&size] { QorBorderConf::DrawingSizeDialog(size).show(); }));
            // The documents were written with the sizes their templates have.
            EXPECT_EQ(size.height, stored.height) << border->id << " " << stored.templateFile;
            EXPECT_EQ(size.length, stored.length) << border->id << " " << stored.templateFile;
            EXPECT_TRUE(nxsim::loadedPartFiles().empty()) << stored.templateFile;
            ++checked;
        }
    }
    EXPECT_GE(checked, 15);
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

TEST_F(ExampleTemplates, OpenTemplateOnEveryExampleSizeLetsTheCornersBePickedOnItsSheet) {
    int checked = 0;
    for (const auto& border : borders()) {
        const auto& sizes = border->drawingSizes();
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            const nxsim::SimDrawing sheet = sheetOf(sizes[i].templateFile);
            const QorBorder::Point3 bl = border->bottomLeft;
            const QorBorder::Point3 tr = border->topRight;
            const double pickX = sheet.length - tr.x;
            const double pickY = sheet.height - tr.y;
            const std::string journal = "run\ndialog qorborder_config_border\n"
                                        "select FRAME_SIZES " +
                                        std::to_string(i) +
                                        "\n"
                                        "press OPEN_TEMPLATE\n"
                                        "press PK_BL_CORNER\npoint " +
                                        number(bl.x) + " " + number(bl.y) +
                                        "\n"
                                        "press PK_TR_CORNER\npoint " +
                                        number(pickX) + " " + number(pickY) +
                                        "\n"
                                        "expect value BL_X_LOC " +
                                        number(bl.x) +
                                        "\n"
                                        "expect value BL_Y_LOC " +
                                        number(bl.y) +
                                        "\n"
                                        "expect value TR_X_LOC " +
                                        number(sheet.length - pickX) +
                                        "\n"
                                        "expect value TR_Y_LOC " +
                                        number(sheet.height - pickY) +
                                        "\n"
                                        "cancel\n";
            SCOPED_TRACE(border->id + " " + sizes[i].templateFile);
            EXPECT_JOURNAL_PASSES(replay(
                journal, [&border] { QorBorderConf::BorderLayoutDialog(border, true).show(); }));
            EXPECT_TRUE(nxsim::loadedPartFiles().empty()) << sizes[i].templateFile;
            ++checked;
        }
    }
    EXPECT_GE(checked, 15);
    EXPECT_TRUE(nxsim::shownMessages().empty());
}

} // namespace
