#include "rowe/pile_sections.h"

namespace korvane {

namespace {

struct DefaultSection {
    const char* name;
    double sectionModulus; ///< IN^3 per foot of wall
    double inertia;        ///< IN^4 per foot of wall
};

constexpr DefaultSection defaultSections[DefaultSectionCount] = {
    {"PZ40", 60.7, 490.8}, {"PZ38", 46.8, 280.8}, {"PZ35", 48.5, 361.2},   {"PZ32", 38.3, 220.4},
    {"PZ27", 30.2, 184.2}, {"PZ22", 18.1, 84.4},  {"PLZ25", 32.8, 223.25}, {"PLZ23", 30.2, 203.75},
};

} // namespace

void LoadPileDefaults(PileSections& sections) {
    sections.PileName.fill("");
    sections.PileSectionData.fill(0);
    sections.PileAllowStress.fill(0);
    sections.PileModulus.fill(0);
    sections.PileSectionCount = DefaultSectionCount;
    int p = 0;
    for (const DefaultSection& section : defaultSections) {
        ++p;
        sections.PileName(p) = section.name;
        sections.PileSectionData(p, 1) = section.sectionModulus;
        sections.PileSectionData(p, 2) = section.inertia;
    }
    acceptDefaults(sections, DefaultAllowStress, DefaultModulus);
}

bool hasAddedSections(const PileSections& sections) {
    return !sections.PileName(DefaultSectionCount + 1).empty();
}

void acceptDefaults(PileSections& sections, double allowStress, double modulus) {
    for (int p = 1; p <= DefaultSectionCount; ++p) {
        sections.PileAllowStress(p) = allowStress;
        sections.PileModulus(p) = modulus;
    }
}

} // namespace korvane
