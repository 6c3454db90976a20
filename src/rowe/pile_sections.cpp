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

void LoadPileDefaults(RoweData& rowe) {
    rowe.PileName.fill("");
    rowe.PileSectionData.fill(0);
    rowe.PileAllowStress.fill(0);
    rowe.PileModulus.fill(0);
    rowe.PileSectionCount = DefaultSectionCount;
    int p = 0;
    for (const DefaultSection& section : defaultSections) {
        ++p;
        rowe.PileName(p) = section.name;
        rowe.PileSectionData(p, 1) = section.sectionModulus;
        rowe.PileSectionData(p, 2) = section.inertia;
    }
    acceptDefaultTexts(rowe, DefaultAllowStressText, DefaultModulusText);
}

void acceptDefaults(RoweData& rowe, double allowStress, double modulus) {
    for (int p = 1; p <= DefaultSectionCount; ++p) {
        rowe.PileAllowStress(p) = allowStress;
        rowe.PileModulus(p) = modulus;
    }
}

bool acceptDefaultTexts(RoweData& rowe, std::string_view allowStress, std::string_view modulus) {
    double stress = 0;
    if (!takePositive(allowStress, stress) || !isNumeric(modulus)) {
        return false;
    }
    acceptDefaults(rowe, stress, numericValue(modulus));
    return true;
}

bool addSections(RoweData& rowe, const std::array<PileEntry, 5>& rows) {
    rowe.PileSectionCount = DefaultSectionCount;
    for (const PileEntry& row : rows) {
        const std::string name = trimmed(row.name);
        if (name.empty()) {
            break;
        }
        const int p = ++rowe.PileSectionCount;
        rowe.PileName(p) = name;
        if (!takePositive(row.sectionModulus, rowe.PileSectionData(p, 1)) ||
            !takePositive(row.inertia, rowe.PileSectionData(p, 2)) ||
            !takePositive(row.allowStress, rowe.PileAllowStress(p)) ||
            !takePositive(row.modulus, rowe.PileModulus(p))) {
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
