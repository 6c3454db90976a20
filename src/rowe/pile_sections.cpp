#include "rowe/pile_sections.h"

#include "runtime/number_text.h"

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

/// Stores the value of a field that holds a number above zero; false where it does not.
bool takePositive(std::string_view field, double& value) {
    if (!isNumeric(field) || numericValue(field) <= 0) {
        return false;
    }
    value = numericValue(field);
    return true;
}

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
    acceptDefaultTexts(sections, DefaultAllowStressText, DefaultModulusText);
}

void acceptDefaults(PileSections& sections, double allowStress, double modulus) {
    for (int p = 1; p <= DefaultSectionCount; ++p) {
        sections.PileAllowStress(p) = allowStress;
        sections.PileModulus(p) = modulus;
    }
}

bool acceptDefaultTexts(PileSections& sections, std::string_view allowStress,
                        std::string_view modulus) {
    double stress = 0;
    if (!takePositive(allowStress, stress) || !isNumeric(modulus)) {
        return false;
    }
    acceptDefaults(sections, stress, numericValue(modulus));
    return true;
}

bool addSections(PileSections& sections, const std::array<PileEntry, 5>& rows) {
    sections.PileSectionCount = DefaultSectionCount;
    for (const PileEntry& row : rows) {
        const std::string name = trimmed(row.name);
        if (name.empty()) {
            break;
        }
        const int p = ++sections.PileSectionCount;
        sections.PileName(p) = name;
        if (!takePositive(row.sectionModulus, sections.PileSectionData(p, 1)) ||
            !takePositive(row.inertia, sections.PileSectionData(p, 2)) ||
            !takePositive(row.allowStress, sections.PileAllowStress(p)) ||
            !takePositive(row.modulus, sections.PileModulus(p))) {
            return false;
        }
    }
    return true;
}

MessageBox invalidSectionsBox() {
    return {.text = "At least one data value is invalid.\n"
                    "\n"
                    "     Choose OK to continue SHEET PILE DATA entry.\n"
                    "     Choose CANCEL to return to DEFAULT DATA values.",
            .title = "INVALID DATA",
            .buttons = Buttons::OkCancel,
            .cancelDeletes = true};
}

} // namespace korvane
