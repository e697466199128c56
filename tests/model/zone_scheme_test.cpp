#include "model/zone_scheme.h"

#include <gtest/gtest.h>

using namespace QorBorder;

TEST(ZoneScheme, MenusHaveOneTextPerValue) {
    EXPECT_EQ(zoneTypeTexts().size(), 3u);
    EXPECT_EQ(zoneStartTexts().size(), 4u);
    EXPECT_EQ(zoneStartTexts()[ZoneStartBottomRight], "Bottom right");
    EXPECT_EQ(zoneTypeTexts()[ZoneNone], "None");
}

TEST(ZoneScheme, NumbersCountFromOne) {
    EXPECT_EQ(zoneLabel(ZoneNumbers, 0), "1");
    EXPECT_EQ(zoneLabel(ZoneNumbers, 23), "24");
}

TEST(ZoneScheme, LettersSkipIAndO) {
    std::string sixteen;
    for (int i = 0; i < 16; ++i) {
        sixteen += zoneLabel(ZoneLetters, i);
    }
    EXPECT_EQ(sixteen, "ABCDEFGHJKLMNPQR");
    EXPECT_EQ(zoneLabel(ZoneLetters, 23), "Z");
}

TEST(ZoneScheme, LettersAfterZAreDoubled) {
    EXPECT_EQ(zoneLabel(ZoneLetters, 24), "AA");
    EXPECT_EQ(zoneLabel(ZoneLetters, 25), "BB");
    EXPECT_EQ(zoneLabel(ZoneLetters, 48), "AAA");
}

TEST(ZoneScheme, NoZonesHaveNoLabels) {
    EXPECT_FALSE(numbersZones(ZoneNone));
    EXPECT_TRUE(numbersZones(ZoneNumbers));
    EXPECT_TRUE(numbersZones(ZoneLetters));
    EXPECT_EQ(zoneLabel(ZoneNone, 0), "");
    EXPECT_EQ(zoneLabel(ZoneNumbers, -1), "");
}

// A value that the menu does not have shows as its first entry, so it numbers like it too.
TEST(ZoneScheme, AnIndexOutsideTheMenusMeansItsFirstEntry) {
    EXPECT_EQ(zoneTypeOf(7), ZoneNumbers);
    EXPECT_EQ(zoneLabel(-3, 4), "5");
    EXPECT_TRUE(zonesCountFromLeft(9));
    EXPECT_TRUE(zonesCountFromTop(9));
}

TEST(ZoneScheme, StartCornerGivesTheCountingDirectionOfBothEdges) {
    EXPECT_TRUE(zonesCountFromLeft(ZoneStartTopLeft));
    EXPECT_TRUE(zonesCountFromTop(ZoneStartTopLeft));
    EXPECT_FALSE(zonesCountFromLeft(ZoneStartTopRight));
    EXPECT_TRUE(zonesCountFromTop(ZoneStartTopRight));
    EXPECT_TRUE(zonesCountFromLeft(ZoneStartBottomLeft));
    EXPECT_FALSE(zonesCountFromTop(ZoneStartBottomLeft));
    EXPECT_FALSE(zonesCountFromLeft(ZoneStartBottomRight));
    EXPECT_FALSE(zonesCountFromTop(ZoneStartBottomRight));
}

TEST(ZoneScheme, ZonesCutTheFrameEdgeIntoEqualParts) {
    const std::vector<double> expected = {20,     68.75, 117.5,  166.25, 215,
                                          263.75, 312.5, 361.25, 410};
    EXPECT_EQ(zoneBoundaries(20, 410, 8), expected);
    EXPECT_TRUE(zoneBoundaries(0, 1, 0).empty());
    EXPECT_EQ(zoneBoundaries(10, 0, 2), (std::vector<double>{10, 5, 0}));
}
