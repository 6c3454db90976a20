#include "rowe/pile_sections.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

TEST(PileSections, EightDefaultsAreLoaded) {
    PileSections sections;
    sections.PileName(9) = "OLD";
    sections.PileSectionData(13, 2) = 5;
    sections.PileAllowStress(10) = 5;
    sections.PileModulus(11) = 5;
    LoadPileDefaults(sections);

    struct Section {
        const char* name;
        double modulus, inertia;
    };
    // Section modulus IN^3 and moment of inertia IN^4 per foot of wall.
    const Section expectedSections[] = {
        {"PZ40", 60.7, 490.8},   {"PZ38", 46.8, 280.8},   {"PZ35", 48.5, 361.2},
        {"PZ32", 38.3, 220.4},   {"PZ27", 30.2, 184.2},   {"PZ22", 18.1, 84.4},
        {"PLZ25", 32.8, 223.25}, {"PLZ23", 30.2, 203.75},
    };
    EXPECT_EQ(sections.PileSectionCount, 8);
    for (int p = 1; p <= 13; ++p) {
        const Section expected = p <= 8 ? expectedSections[p - 1] : Section{"", 0, 0};
        EXPECT_EQ(sections.PileName(p), expected.name);
        EXPECT_EQ(sections.PileSectionData(p, 1), expected.modulus);
        EXPECT_EQ(sections.PileSectionData(p, 2), expected.inertia);
        EXPECT_EQ(sections.PileAllowStress(p), p <= 8 ? 24000.0 : 0.0);
        EXPECT_EQ(sections.PileModulus(p), p <= 8 ? 29.0e6 : 0.0);
    }
}

TEST(PileSections, AcceptedValuesAreThoseOfAllDefaultsAndNoOthers) {
    PileSections sections;
    LoadPileDefaults(sections);
    acceptDefaults(sections, 25000, 28e6);
    for (int p = 1; p <= 13; ++p) {
        EXPECT_EQ(sections.PileAllowStress(p), p <= 8 ? 25000.0 : 0.0);
        EXPECT_EQ(sections.PileModulus(p), p <= 8 ? 28e6 : 0.0);
    }
}

} // namespace
} // namespace korvane::test
