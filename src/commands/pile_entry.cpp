#include "commands/pile_entry.h"

#include "rowe/pile_sections.h"
#include "runtime/number_text.h"

namespace korvane {

namespace {

/// Stores the value of a field that holds a number above zero; false where it does not.
bool takePositive(std::string_view field, double& value) {
    if (!isNumeric(field) || numericValue(field) <= 0) {
        return false;
    }
    value = numericValue(field);
    return true;
}

} // namespace

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
