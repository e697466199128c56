// The lines of a document's elements as a checker looks them up.
#include "model/source_lines.h"

#include <gtest/gtest.h>

using QorBorder::SourceLines;

TEST(SourceLines, NothingRecordedIsLineZero) {
    const SourceLines lines;
    int object = 0;
    EXPECT_EQ(lines.of(&object), 0);
    EXPECT_EQ(lines.of(&object, "choice", "0"), 0);
}

TEST(SourceLines, ObjectsAndEntriesAreFoundByWhatTheyWereRecordedUnder) {
    SourceLines lines;
    int owner = 0;
    int other = 0;
    lines.record(&other, 7);
    lines.record(&owner, 3);
    lines.record(&owner, "choice", "1", 12);
    lines.record(&owner, "choice", "0", 11);
    lines.record(&other, "choice", "0", 20);
    lines.record(&owner, "placement", "0", 30);
    EXPECT_EQ(lines.of(&owner), 3);
    EXPECT_EQ(lines.of(&other), 7);
    EXPECT_EQ(lines.of(&owner, "choice", "0"), 11);
    EXPECT_EQ(lines.of(&owner, "choice", "1"), 12);
    EXPECT_EQ(lines.of(&other, "choice", "0"), 20);
    EXPECT_EQ(lines.of(&owner, "placement", "0"), 30);
    EXPECT_EQ(lines.of(&owner, "choice", "2"), 0);
    EXPECT_EQ(lines.of(&other, "placement", "0"), 0);
}

TEST(SourceLines, RecordedTwiceKeepsTheLastLine) {
    SourceLines lines;
    int object = 0;
    lines.record(&object, 4);
    lines.record(&object, "choice", "0", 5);
    lines.record(&object, 9);
    lines.record(&object, "choice", "0", 10);
    EXPECT_EQ(lines.of(&object), 9);
    EXPECT_EQ(lines.of(&object, "choice", "0"), 10);
}

TEST(SourceLines, RecordingAfterALookupIsFoundByTheNextLookup) {
    SourceLines lines;
    int first = 0;
    int second = 0;
    lines.record(&first, 1);
    lines.record(&first, "choice", "0", 2);
    EXPECT_EQ(lines.of(&first), 1);
    EXPECT_EQ(lines.of(&first, "choice", "0"), 2);
    lines.record(&second, 5);
    lines.record(&first, 6);
    lines.record(&second, "choice", "0", 7);
    EXPECT_EQ(lines.of(&second), 5);
    EXPECT_EQ(lines.of(&first), 6);
    EXPECT_EQ(lines.of(&second, "choice", "0"), 7);
    EXPECT_EQ(lines.of(&first, "choice", "0"), 2);
}

TEST(SourceLines, FinishKeepsEveryLine) {
    SourceLines lines;
    int objects[50] = {};
    for (int i = 49; i >= 0; --i) {
        lines.record(&objects[i], i + 1);
        lines.record(&objects[0], "choice", std::to_string(i), 100 + i);
    }
    lines.finish();
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(lines.of(&objects[i]), i + 1);
        EXPECT_EQ(lines.of(&objects[0], "choice", std::to_string(i)), 100 + i);
    }
}
