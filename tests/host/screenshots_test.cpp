#include "host_test_support.h"

#include "screenshots.h"

#include <testutil/temp_dir.h>

#include <QImage>
#include <QLabel>

using namespace HostTest;
using QorfmtHost::Screenshots;

namespace {
class ScreenshotsTest : public Fixture {};
} // namespace

TEST_F(ScreenshotsTest, PicturesAreNumberedNamedAfterTheWindowAndAsLargeAsIt) {
    TestUtil::TempDir temp;
    Screenshots shots(temp.path() / "shots");
    QLabel window("some text");
    window.resize(230, 90);
    window.show();
    const auto first = shots.save(window, "qorborder_config_main");
    const auto second = shots.save(window, "message-Validation Error");
    EXPECT_EQ(first.filename().string(), "001_qorborder_config_main.png");
    EXPECT_EQ(second.filename().string(), "002_message-Validation_Error.png");
    ASSERT_EQ(shots.files().size(), 2u);
    QImage image(QString::fromStdString(first.string()));
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), window.size() * window.devicePixelRatio());
    EXPECT_GT(boost::filesystem::file_size(first), 0u);
}

TEST_F(ScreenshotsTest, WithoutADirectoryNothingIsSaved) {
    Screenshots shots;
    QLabel window("x");
    EXPECT_FALSE(shots.enabled());
    EXPECT_TRUE(shots.save(window, "any").empty());
    EXPECT_TRUE(shots.files().empty());
}

TEST_F(ScreenshotsTest, AnUnwritableDirectoryIsReportedWithItsName) {
    TestUtil::TempDir temp;
    const auto blocker = temp.write("file", "not a directory");
    Screenshots shots(blocker / "shots");
    QLabel window("x");
    try {
        shots.save(window, "any");
        FAIL();
    } catch (const std::runtime_error& e) {
        EXPECT_NE(std::string(e.what()).find(blocker.string()), std::string::npos);
    }
}

TEST(ScreenshotNameTest, FileNamePartKeepsOnlySafeCharacters) {
    EXPECT_EQ(QorfmtHost::fileNamePart("qorfmt_config_selectfile.dlg"),
              "qorfmt_config_selectfile.dlg");
    EXPECT_EQ(QorfmtHost::fileNamePart("a/b c:d"), "a_b_c_d");
    EXPECT_EQ(QorfmtHost::fileNamePart(""), "window");
}
