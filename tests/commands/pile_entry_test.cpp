#include "commands/pile_entry.h"

#include "rowe/pile_sections.h"
#include "runtime/number_text.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

PileEntry entry(const std::string& name) {
    return {name, "50.5", " 300 ", "2.5E4", "30E6"};
}

TEST(PileEntry, TheDefaultFieldsShowTheDefaults) {
    EXPECT_EQ(numericValue(DefaultAllowStressText), DefaultAllowStress);
    EXPECT_EQ(numericValue(DefaultModulusText), DefaultModulus);
}

TEST(PileEntry, AcceptGivesStressAndModulusToAllDefaults) {
    PileSections sections;
    LoadPileDefaults(sections);
    EXPECT_TRUE(acceptDefaultTexts(sections, " 25.0E3 ", "28000000"));
    for (int p = 1; p <= 8; ++p) {
        EXPECT_EQ(sections.PileAllowStress(p), 25000);
        EXPECT_EQ(sections.PileModulus(p), 28e6);
    }
    EXPECT_EQ(sections.PileAllowStress(9), 0);
}

TEST(PileEntry, AcceptRefusesAStressThatIsNoNumberAboveZero) {
    for (const char* stress : {"", "24 KSI", "0", "-24.0E3", "1E999"}) {
        PileSections sections;
        LoadPileDefaults(sections);
        EXPECT_FALSE(acceptDefaultTexts(sections, stress, "28E6")) << stress;
        EXPECT_EQ(sections.PileAllowStress(1), 24000);
        EXPECT_EQ(sections.PileModulus(1), 29e6);
    }
}

TEST(PileEntry, AcceptTestsTheModulusForANumberButNotForItsSign) {
    PileSections sections;
    LoadPileDefaults(sections);
    EXPECT_FALSE(acceptDefaultTexts(sections, "24.0E3", "STEEL"));
    EXPECT_FALSE(acceptDefaultTexts(sections, "24.0E3", ""));
    EXPECT_TRUE(acceptDefaultTexts(sections, "24.0E3", "-1"));
    EXPECT_EQ(sections.PileModulus(8), -1);
}

TEST(PileEntry, DoneWithoutAdditionalRowsGivesEightSections) {
    PileSections sections;
    sections.PileSectionCount = 11;
    EXPECT_TRUE(addSections(sections, {}));
    EXPECT_EQ(sections.PileSectionCount, 8);
}

TEST(PileEntry, AdditionalRowsFollowTheDefaults) {
    PileSections sections;
    LoadPileDefaults(sections);
    EXPECT_TRUE(
        addSections(sections, {entry(" AZ26 "), entry("B"), entry("C"), entry("D"), entry("E")}));
    EXPECT_EQ(sections.PileSectionCount, 13);
    EXPECT_EQ(sections.PileName(9), "AZ26");
    EXPECT_EQ(sections.PileName(13), "E");
    EXPECT_EQ(sections.PileSectionData(9, 1), 50.5);
    EXPECT_EQ(sections.PileSectionData(9, 2), 300);
    EXPECT_EQ(sections.PileAllowStress(9), 25000);
    EXPECT_EQ(sections.PileModulus(9), 30e6);
}

TEST(PileEntry, ANameInRow2BehindAnEmptyRow1IsIgnored) {
    PileSections sections;
    LoadPileDefaults(sections);
    for (const char* blank : {"", "  "}) {
        EXPECT_TRUE(addSections(sections, {entry(blank), entry("SECOND")}));
        EXPECT_EQ(sections.PileSectionCount, 8);
        EXPECT_EQ(sections.PileName(9), "");
    }
}

TEST(PileEntry, EachOfARowsFourNumbersMustBeAboveZero) {
    for (const char* bad : {"", "0", "-1", "X", "1 2"}) {
        for (std::string PileEntry::*field : {&PileEntry::sectionModulus, &PileEntry::inertia,
                                              &PileEntry::allowStress, &PileEntry::modulus}) {
            PileSections sections;
            PileEntry second = entry("SECOND");
            second.*field = bad;
            EXPECT_FALSE(addSections(sections, {entry("FIRST"), second, entry("THIRD")})) << bad;
        }
    }
}

TEST(PileEntry, TheCountGrowsBeforeARowIsTestedAndCancelGoesBackToEight) {
    PileSections sections;
    LoadPileDefaults(sections);
    PileEntry bad = entry("BAD");
    bad.inertia = "?";
    EXPECT_FALSE(addSections(sections, {bad}));
    EXPECT_EQ(sections.PileSectionCount, 9);
    EXPECT_EQ(sections.PileName(9), "BAD");
    EXPECT_EQ(sections.PileSectionData(9, 1), 50.5); // stored as soon as it passed

    LoadPileDefaults(sections); // what Cancel does
    EXPECT_EQ(sections.PileSectionCount, 8);
    EXPECT_EQ(sections.PileName(9), "");
}

TEST(PileEntry, ACorrectedRowIsRead) {
    PileSections sections;
    PileEntry row = entry("ROW");
    row.modulus = "";
    EXPECT_FALSE(addSections(sections, {row}));
    row.modulus = "30E6";
    EXPECT_TRUE(addSections(sections, {row}));
    EXPECT_EQ(sections.PileSectionCount, 9);
}

TEST(PileEntry, TheBoxOfAnInvalidValue) {
    const MessageBox box = invalidSectionsBox();
    EXPECT_EQ(box.title, "INVALID DATA");
    EXPECT_EQ(box.buttons, Buttons::OkCancel);
    EXPECT_EQ(box.text, "At least one data value is invalid.\n\n"
                        "     Choose OK to continue SHEET PILE DATA entry.\n"
                        "     Choose CANCEL to return to DEFAULT DATA values.");
}

} // namespace
} // namespace korvane::test
