#include "host_test_support.h"

#include "listing_window.h"

#include <testutil/temp_dir.h>

#include <QPlainTextEdit>
#include <QPushButton>

#include <stdexcept>

using namespace HostTest;
using QorfmtHost::ListingWindow;

namespace {
class ListingWindowTest : public Fixture {};
} // namespace

TEST_F(ListingWindowTest, AWriteShowsTheWindowAndAddsAtTheEnd) {
    ListingWindow listing;
    EXPECT_FALSE(listing.isVisible());
    listing.append("first\n");
    EXPECT_TRUE(listing.isVisible());
    listing.text().moveCursor(QTextCursor::Start);
    listing.append("second\n");
    EXPECT_EQ(listing.text().toPlainText(), "first\nsecond\n");
    EXPECT_TRUE(listing.text().isReadOnly());
}

TEST_F(ListingWindowTest, CopyIsOfferedOnlyWhileTextIsSelectedAndClearEmptiesTheView) {
    ListingWindow listing;
    listing.append("Summary\n");
    auto* copy = listing.findChild<QPushButton*>("listing_copy");
    ASSERT_NE(copy, nullptr);
    EXPECT_FALSE(copy->isEnabled());
    listing.text().selectAll();
    EXPECT_TRUE(copy->isEnabled());
    listing.findChild<QPushButton*>("listing_clear")->click();
    EXPECT_EQ(listing.text().toPlainText(), "");
    EXPECT_FALSE(copy->isEnabled());
}

TEST_F(ListingWindowTest, SaveWritesTheTextAndAFailureNamesTheFile) {
    TestUtil::TempDir temp;
    ListingWindow listing;
    listing.append("Border A\n  Units: 2\n");
    const fs::path file = temp.path() / "listing.txt";
    listing.saveTo(QString::fromStdString(file.string()));
    EXPECT_EQ(TestUtil::readFile(file), "Border A\n  Units: 2\n");
    const fs::path missing = temp.path() / "no such folder" / "listing.txt";
    try {
        listing.saveTo(QString::fromStdString(missing.string()));
        FAIL() << "no error";
    } catch (const std::runtime_error& e) {
        EXPECT_EQ(std::string(e.what()).rfind(missing.string() + ": ", 0), 0u) << e.what();
    }
    EXPECT_FALSE(fs::exists(missing));
}

TEST_F(ListingWindowTest, ClosingTheListingWindowNeverEndsTheHost) {
    ListingWindow listing;
    EXPECT_FALSE(listing.testAttribute(Qt::WA_QuitOnClose));
    EXPECT_TRUE(listing.isWindow());
}
