#include <nxsim/part_file.h>

#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using nxsim::PartFileError;
using nxsim::SimPart;
namespace fs = boost::filesystem;

SimPart parse(const std::string& text) {
    return nxsim::parsePartFile(text, "p.prt");
}

TEST(PartFile, ReadsDrawingsWithSizesUnitsAndTheCurrentSheet) {
    SimPart p = parse("qorfmt-part 1\n"
                      "units inch\n"
                      "drawing S1 metric A3\n"
                      "drawing S2 english D scale 0.5 projection first\n"
                      "drawing S3 custom 300 500.5\n"
                      "drawing S4 custom 1 2 units mm\n"
                      "current S3\n");
    ASSERT_EQ(p.drawings.size(), 4u);
    EXPECT_EQ(p.units, 2);
    EXPECT_EQ(p.drawings[0].sizeState, 0);
    EXPECT_EQ(p.drawings[0].sizeCode, 4);
    EXPECT_EQ(p.drawings[0].height, 297);
    EXPECT_EQ(p.drawings[0].length, 420);
    EXPECT_EQ(p.drawings[0].units, 1);
    EXPECT_EQ(p.drawings[1].sizeState, 1);
    EXPECT_EQ(p.drawings[1].sizeCode, 4);
    EXPECT_EQ(p.drawings[1].height, 22);
    EXPECT_EQ(p.drawings[1].length, 34);
    EXPECT_EQ(p.drawings[1].scale, 0.5);
    EXPECT_EQ(p.drawings[1].projection, 2);
    EXPECT_EQ(p.drawings[2].sizeState, 2);
    EXPECT_EQ(p.drawings[2].height, 300);
    EXPECT_EQ(p.drawings[2].length, 500.5);
    EXPECT_EQ(p.drawings[2].units, 2) << "a custom sheet takes the part's units";
    EXPECT_EQ(p.drawings[3].units, 1);
    EXPECT_EQ(p.currentDrawing, 2);
}

TEST(PartFile, FirstDrawingIsCurrentUnlessTheFileSaysOtherwise) {
    EXPECT_EQ(parse("qorfmt-part 1\ndrawing A metric A4\ndrawing B metric A0\n").currentDrawing, 0);
    EXPECT_EQ(parse("qorfmt-part 1\ndrawing A metric A4\ncurrent none\n").currentDrawing, -1);
    EXPECT_EQ(parse("qorfmt-part 1\n").currentDrawing, -1);
}

TEST(PartFile, ReadsTaggedPointsAndLines) {
    SimPart p = parse("qorfmt-part 1\n# geometry\npoint 5 1 2 3\nline 6 0 0 0 10 0 0\n");
    ASSERT_EQ(p.objects.size(), 2u);
    ASSERT_NE(p.object(5), nullptr);
    EXPECT_EQ(p.object(5)->type, nxsim::SimObject::Point);
    EXPECT_EQ(p.object(5)->start[2], 3);
    EXPECT_EQ(p.object(6)->type, nxsim::SimObject::Line);
    EXPECT_EQ(p.object(6)->end[0], 10);
    EXPECT_EQ(p.object(7), nullptr);
}

TEST(PartFile, SheetSizeTablesFollowIsoAndAnsi) {
    EXPECT_EQ(nxsim::metricSheetSize(1), std::make_pair(841.0, 1189.0));
    EXPECT_EQ(nxsim::metricSheetSize(5), std::make_pair(210.0, 297.0));
    EXPECT_EQ(nxsim::englishSheetSize(1), std::make_pair(8.5, 11.0));
    EXPECT_EQ(nxsim::englishSheetSize(8), std::make_pair(34.0, 55.0));
    EXPECT_THROW(nxsim::metricSheetSize(6), std::out_of_range);
    EXPECT_THROW(nxsim::englishSheetSize(0), std::out_of_range);
}

struct BadPart {
    const char* text;
    const char* error;
};

class PartFileErrors : public ::testing::TestWithParam<BadPart> {};

TEST_P(PartFileErrors, NameTheFileLineAndReason) {
    try {
        parse(GetParam().text);
        FAIL() << GetParam().text;
    } catch (const PartFileError& e) {
        EXPECT_EQ(std::string(e.what()), GetParam().error);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, PartFileErrors,
    ::testing::Values(
        BadPart{"", "p.prt: not a part file of the simulated format (the file is empty)"},
        BadPart{"PRT\n", "p.prt: not a part file of the simulated format (the first line must "
                         "be \"qorfmt-part 1\")"},
        BadPart{"qorfmt-part 1\nunits cm\n", "p.prt:2: units must be mm or inch, not \"cm\""},
        BadPart{"qorfmt-part 1\ndrawing A metric A5\n", "p.prt:2: unknown size \"A5\" (A0 to A4)"},
        BadPart{"qorfmt-part 1\ndrawing A english G\n",
                "p.prt:2: unknown size \"G\" (A, B, C, D, E, F, H or J)"},
        BadPart{"qorfmt-part 1\ndrawing A custom 0 5\n", "p.prt:2: a custom size must be "
                                                         "positive"},
        BadPart{"qorfmt-part 1\ndrawing A metric A4\ndrawing A metric A3\n",
                "p.prt:3: drawing A is given twice"},
        BadPart{"qorfmt-part 1\ndrawing A metric A4 scale\n",
                "p.prt:2: option \"scale\" needs a value"},
        BadPart{"qorfmt-part 1\ndrawing A metric A4 colour red\n",
                "p.prt:2: unknown drawing option \"colour\" (units, scale, projection)"},
        BadPart{"qorfmt-part 1\ncurrent B\ndrawing A metric A4\n",
                "p.prt:2: current names no drawing: \"B\""},
        BadPart{"qorfmt-part 1\npoint 1 0 0\n", "p.prt:2: expected: point TAG X Y Z"},
        BadPart{"qorfmt-part 1\npoint 70000 0 0 0\n",
                "p.prt:2: \"70000\" is not a tag (1 to 65535)"},
        BadPart{"qorfmt-part 1\npoint 1 0 0 0\nline 2 0 0 0 1 1 x\n",
                "p.prt:3: \"x\" is not a number"},
        BadPart{"qorfmt-part 1\npoint 1 0 0 0\nline 1 0 0 0 1 1 1\n",
                "p.prt:3: tag 1 is used twice (first on line 2)"},
        BadPart{"qorfmt-part 1\npoint 1 0 \x01 0\n", "p.prt:2: \"\\x01\" is not a number"},
        BadPart{"qorfmt-part 1\nsolid 1\n",
                "p.prt:2: unknown line \"solid\" (units, drawing, current, point, line)"}));

TEST(PartFile, EveryTagOfAFullPartIsTakenAndADuplicateNamesTheFirstLine) {
    std::string text = "qorfmt-part 1\n";
    for (int tag = 1; tag <= 65535; ++tag) {
        text += "point " + std::to_string(tag) + " 0 0 0\n";
    }
    EXPECT_EQ(parse(text).objects.size(), 65535u);
    text += "point 40000 0 0 0\n";
    try {
        parse(text);
        FAIL() << "a tag twice was taken";
    } catch (const PartFileError& e) {
        EXPECT_EQ(std::string(e.what()),
                  "p.prt:65537: tag 40000 is used twice (first on line 40001)");
    }
}

TEST(PartFile, AFifoIsRefusedAtOnceWithItsKind) {
    TestUtil::TempDir dir;
    const fs::path file = dir.path() / "pipe.prt";
    ASSERT_EQ(::mkfifo(file.c_str(), 0644), 0);
    try {
        nxsim::readPartFile(file);
        FAIL() << "a FIFO was read";
    } catch (const PartFileError& e) {
        EXPECT_EQ(std::string(e.what()),
                  file.string() + ": it is a FIFO (named pipe), not a regular file");
    }
}

TEST(PartFile, BinaryVendorPartIsRefusedNamingTheFile) {
    try {
        nxsim::readPartFile(std::string(NXSIM_TEST_DATA) + "/parts/vendor_binary.prt");
        FAIL();
    } catch (const PartFileError& e) {
        EXPECT_NE(std::string(e.what()).find("vendor_binary.prt: not a part file"),
                  std::string::npos)
            << e.what();
    }
}

} // namespace
