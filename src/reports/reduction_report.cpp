#include "reports/reduction_report.h"

#include "reports/report_parts.h"
#include "runtime/number_text.h"
#include "runtime/table_order.h"

#include <array>
#include <string>

namespace korvane {

namespace {

/// What differs between the reports for sand and for clay and between their two forms.
struct ReportForm {
    std::string_view bannerRow;
    std::string_view designTitle;
    bool valuesInZone; ///< the ratios stand in the next print zone
    bool hasStability;
    std::string_view stressFormat;
    std::array<int, 5> sectionColumns; ///< name, section modulus, inertia, stress, modulus
    int nameColumn;                    ///< of the table of coefficients
};

constexpr ReportForm sandForm = {"*  FREE EARTH DESIGN IN SAND  *",
                                 " II.--DESIGN PARAMETERS",
                                 false,
                                 false,
                                 "0.00E+00",
                                 {16, 28, 40, 60, 74},
                                 11};
constexpr ReportForm sandNotApplicableForm = {"*  FREE EARTH DESIGN IN SAND  *",
                                              "II.--DESIGN PARAMETERS",
                                              true,
                                              false,
                                              "0.00E+00",
                                              {16, 28, 40, 60, 73},
                                              11};
constexpr ReportForm clayForm = {"*  FREE EARTH DESIGN IN CLAY  *",
                                 " II.--DESIGN PARAMETERS",
                                 false,
                                 true,
                                 "####0.00",
                                 {15, 27, 40, 58, 73},
                                 10};

constexpr NumberFormat RatioFormat = "#0.00";

/// The note below the table for sand on sections out of range.
constexpr std::string_view SandRangeNote[2] = {
    "* REDUCTION NOT APPLICABLE DUE TO", "  LOG(H^4/EI) LESS THAN -3.5 OR GREATER THEN -1.5."};

/// The words of a broken condition behind "REDUCTION NOT APPLICABLE DUE TO ", and those of a second
/// line.
struct ConditionWords {
    RoweCondition condition;
    std::string_view cause;
    std::string_view secondLine;
    int blanks; ///< before the second line
};

constexpr ConditionWords Conditions[] = {
    {RoweCondition::AlphaTooSmall, "ALPHA LESS THAN 0.6.", "", 0},
    {RoweCondition::AlphaTooLarge, "ALPHA GREATER THAN 0.8.", "", 0},
    {RoweCondition::BetaTooLarge, "BETA GREATER THAN 0.3.", "", 0},
    {RoweCondition::RightBelowTop, "RIGHTSIDE SURFACE", "BELOW TOP OF WALL.", 14},
    {RoweCondition::RightBelowLeft, "RIGHTSIDE SURFACE", "AT OR BELOW LEFTSIDE SURFACE.", 14},
    {RoweCondition::StabilityTooSmall, "STABILITY NUMBER", "LESS THAN 0.5.", 5},
    {RoweCondition::StabilityTooLarge, "STABILITY NUMBER", "GREATER THAN 2.5.", 5},
};
constexpr int FartherLeft =
    9; ///< blanks fewer, deliberate: in the sand report, below the left side

constexpr const ConditionWords& wordsOf(RoweCondition condition) {
    return Conditions[static_cast<int>(condition)];
}
static_assert(inOrder(Conditions, &ConditionWords::condition));

void parameterLine(PrintLines& lines, const ReportForm& form, std::string_view label,
                   double value) {
    lines.spc(10).text(label);
    if (form.valuesInZone) {
        lines.zone();
    }
    lines.text(formatNumber(value, RatioFormat)).end();
}

void designParameters(PrintLines& lines, const ReportForm& form, const MomentReduction& rowe) {
    lines.line(5, form.designTitle).empty();
    parameterLine(lines, form, "WALL HEIGHT RATIO (ALPHA)  = ", rowe.RoweAlpha);
    parameterLine(lines, form, "ANCHOR HEIGHT RATIO (BETA) = ", rowe.RoweBeta);
    if (form.hasStability) {
        parameterLine(lines, form, "STABILITY NUMBER           = ", rowe.RoweStability);
    }
    lines.empty();
}

void sectionTable(PrintLines& lines, const ReportForm& form, const PileSections& sections) {
    lines.line(7, "SHEET PILE DATA:");
    lines.line(20, "<SECTION PROPERTIES>");
    lines.line(21, "(PER FOOT OF WALL)");
    pieceLine(
        lines,
        {{10, "SHEET"}, {5, "SECTION"}, {4, "MOMENT OF"}, {10, "ALLOWABLE"}, {4, "MODULUS OF"}});
    pieceLine(lines,
              {{11, "PILE"}, {5, "MODULUS"}, {5, "INERTIA"}, {13, "STRESS"}, {5, "ELLASTICITY"}});
    pieceLine(lines, {{11, "NAME"}, {6, "(IN^3)"}, {6, "(IN^4)"}, {14, "(PSI)"}, {8, "(PSI)"}});
    const auto& column = form.sectionColumns;
    for (int p = 1; p <= sections.PileSectionCount; ++p) {
        lines.right(column[0], sections.PileName(p));
        lines.right(column[1], sections.PileSectionData(p, 1), "###0.00");
        lines.right(column[2], sections.PileSectionData(p, 2), "###0.00");
        lines.right(column[3], sections.PileAllowStress(p), form.stressFormat);
        lines.right(column[4], sections.PileModulus(p), "0.00E+00").end();
    }
    lines.empty();
}

void coefficientHead(PrintLines& lines, RoweSoil soil, bool applicable) {
    lines.line(5, "III.--PRELIMINARY DESIGN DATA").empty();
    lines.line(5, "SHEET");
    pieceLine(lines,
              {{6, "PILE"},
               {21, "ROWE'S MOMENT"},
               {4, applicable ? "RATIO OF ALLOWABLE MOMENT TO" : "RATIO OF ALLOWABLE MOMENT"}});
    pieceLine(lines, {{6, "NAME"},
                      {5, "LOG(H^4/EI)"},
                      {4, "REDUCTION COEF."},
                      {5, applicable ? "REDUCED FREE EARTH MOMENT" : "TO FREE EARTH MOMENT"}});
    if (soil == RoweSoil::Sand && applicable) {
        pieceLine(lines, {{30, "LOOSE"}, {5, "DENSE"}, {10, "LOOSE"}, {5, "DENSE"}});
    }
}

void sandRow(PrintLines& lines, const MomentReduction& outcome, int p) {
    if (outcome.inRange(p)) {
        lines.right(36, outcome.coefficient(p, 1), RatioFormat);
        lines.right(46, outcome.coefficient(p, 2), RatioFormat);
    } else {
        lines.right(37, "1.00*").right(47, "1.00*");
    }
    lines.right(61, outcome.reducedRatio(p, 1), RatioFormat);
    lines.right(71, outcome.reducedRatio(p, 2), RatioFormat).end();
}

void clayRow(PrintLines& lines, const MomentReduction& outcome, int p) {
    if (outcome.inRange(p)) {
        lines.right(43, outcome.coefficient(p, 1), RatioFormat);
    } else {
        lines.spc(11).text("1.0 (***)");
    }
    lines.right(64, outcome.reducedRatio(p, 1), RatioFormat).end();
}

void coefficientRows(PrintLines& lines, const ReportForm& form, const PileSections& sections,
                     const MomentReduction& rowe) {
    for (int p = 1; p <= sections.PileSectionCount; ++p) {
        lines.right(form.nameColumn, sections.PileName(p));
        lines.right(23, rowe.PileLogRigidity(p), RatioFormat);
        if (rowe.soil == RoweSoil::Sand && rowe.applicable) {
            sandRow(lines, rowe, p);
        } else {
            clayRow(lines, rowe, p); // the sand report's not applicable form is the same
        }
    }
}

void conditionNotes(PrintLines& lines, const MomentReduction& rowe) {
    for (const RoweCondition condition : rowe.broken) {
        const ConditionWords& words = wordsOf(condition);
        const bool fartherLeft =
            rowe.soil == RoweSoil::Sand && condition == RoweCondition::RightBelowLeft;
        lines.empty();
        lines.spc(10).text("*** REDUCTION NOT APPLICABLE DUE TO ").text(words.cause).end();
        if (!words.secondLine.empty()) {
            lines.line(words.blanks - (fartherLeft ? FartherLeft : 0), words.secondLine);
        }
    }
}

} // namespace

PrintLines reductionReport(const Problem& problem, const PileSections& sections,
                           const MomentReduction& reduction) {
    if (reduction.soil == RoweSoil::None) {
        return {};
    }
    const bool sand = reduction.soil == RoweSoil::Sand;
    const bool applicable = reduction.applicable;
    const ReportForm& form = !sand ? clayForm : applicable ? sandForm : sandNotApplicableForm;
    constexpr std::string_view stars = "*******************************";

    PrintLines lines;
    lines.empty(5);
    programHead(lines, ProgramLine, 1);
    banner(lines, 20, {stars, "* PRELIMINARY DESIGN DATA FOR *", form.bannerRow, stars});
    headingSection(lines, problem, "  I.--HEADING");
    designParameters(lines, form, reduction);
    sectionTable(lines, form, sections);
    coefficientHead(lines, reduction.soil, applicable);
    coefficientRows(lines, form, sections, reduction);
    conditionNotes(lines, reduction);
    if (reduction.sandOutOfRange) {
        lines.empty().line(10, SandRangeNote[0]).line(10, SandRangeNote[1]);
    }
    if (sand || !applicable) { // deliberate: the report for clay that applies ends at its table
        lines.empty(5);
    }
    return lines;
}

std::vector<std::string> reductionNotes(const MomentReduction& reduction) {
    std::vector<std::string> plain;
    for (const RoweCondition condition : reduction.broken) {
        const ConditionWords& words = wordsOf(condition);
        plain.push_back(trimmed("REDUCTION NOT APPLICABLE DUE TO " + std::string(words.cause) +
                                " " + std::string(words.secondLine)));
    }
    if (reduction.sandOutOfRange) {
        plain.push_back(std::string(SandRangeNote[0].substr(2)) + " " + trimmed(SandRangeNote[1]));
    }
    return plain;
}

} // namespace korvane
