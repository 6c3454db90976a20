// Title block, what became of the solution, and the table of checks at the end.
#include "sheet/sections.h"
#include "sheet/soil_work.h"
#include "sheet/stages.h"

#include "notes/clay_resistance.h"
#include "runtime/number_format.h"
#include "state/tolerances.h"

#include <algorithm>
#include <cmath>

namespace korvane::sheet {

namespace {

std::string headingLines(const Problem& problem) {
    std::string text;
    for (int i = 1; i <= problem.NumHeadingLines; ++i) {
        const std::string& line = problem.HeadingLines(i);
        text += i > 1 ? "\n" : "";
        text += line.substr(!line.empty() && line.front() == '\'' ? 1 : 0);
    }
    return text;
}

std::string blockRow(std::string_view name, std::string_view value) {
    return "<tr><th>" + escaped(name) + "</th><td>" + escaped(value) + "</td></tr>\n";
}

std::string taskOf(const Problem& problem) {
    const bool anchored = problem.WallType == WallKind::Anchored;
    const bool analysis = problem.ProgramMode == Mode::Analysis;
    return std::string(analysis ? "Analysis" : "Design") + " of " +
           (anchored ? "an anchored" : "a cantilever") + " sheet-pile wall";
}

std::string levelLine(const SheetWriter& writer, const SheetRequest& request,
                      const LevelResult& level) {
    std::string text = std::string("By the ") + solutionMethodName(level.method) + " method: ";
    if (request.problem.ProgramMode == Mode::Analysis) {
        text += "factor of safety " +
                quantityText(Quantity::Number, level.factorOfSafety, request.units) + ", ";
    } else {
        text += "bottom at " + elevationText(level.bottomElev, request.units) + ", penetration " +
                writer.withUnit(Quantity::Length, level.penetration) + ", ";
    }
    if (request.problem.WallType == WallKind::Anchored) {
        text += "anchor force " + writer.withUnit(Quantity::Force, level.anchorForce) + ", ";
    }
    return text + "largest moment " +
           writer.withUnit(Quantity::Moment, level.diagrams.MaxMoment.value) + ".";
}

/// PSF: soil and uniform load above an elevation, less still water.
double effectiveStress(const Problem& problem, int side, double elev) {
    double stress = problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) : 0;
    double top = problem.SurfaceElev(side, 1);
    for (int layer = 1; layer <= problem.SoilLayerCount(side) && top > elev; ++layer) {
        const bool last = layer == problem.SoilLayerCount(side);
        const double bottom = last ? elev : std::max(elev, problem.SoilBottomElev(side, layer));
        const bool water = problem.WaterDataKind == WaterData::Elevations;
        const double wet =
            water ? std::max(0.0, std::min(top, problem.WaterElev(side)) - bottom) : 0;
        stress += (top - bottom - wet) * problem.SoilMoistWeight(side, layer) +
                  wet * (problem.SoilSatWeight(side, layer) - problem.WaterUnitWeight);
        top = bottom;
    }
    return stress;
}

/// PSF: net pressure of still water.
double stillWater(const Problem& problem, double elev) {
    if (problem.WaterDataKind != WaterData::Elevations) {
        return 0;
    }
    return problem.WaterUnitWeight * (std::max(0.0, problem.WaterElev(Right) - elev) -
                                      std::max(0.0, problem.WaterElev(Left) - elev));
}

/// The number that shows why clay on both sides holds a wall or not: the net pressure below the
/// lower ground, which does not change with depth in clay of one weight.
void tellClayNumber(SheetWriter& writer, const SheetRequest& request) {
    const Problem& problem = request.problem;
    const auto factor = [&problem](int side, int layer) -> std::optional<double> {
        const double value = side == Right ? activeFactor(problem, side, layer, 0).value
                                           : passiveFactor(problem, side, layer, 0).value;
        return value > 0 ? std::optional(value) : std::nullopt;
    };
    const auto clay = leastClayResistance(problem, factor, NoLayerBottom);
    if (!clay) {
        return;
    }
    const double ground = clay->elev;
    const int right = clay->right;
    const int left = clay->left;
    const double Fa = *factor(Right, right);
    const double Fp = *factor(Left, left);
    const auto stress = [](const char* letter, const char* index, double value) {
        return term(letter, index, value, Quantity::Stress);
    };
    const Expr net =
        stress("σ", "R", effectiveStress(problem, Right, ground)) -
        Expr(2) * stress("c", "R", problem.SoilCohesion(Right, right)) / term("F", "a", Fa) -
        stress("σ", "L", effectiveStress(problem, Left, ground)) -
        Expr(2) * stress("c", "L", problem.SoilCohesion(Left, left)) / term("F", "p", Fp) +
        stress("p", "w", stillWater(problem, ground));
    writer.paragraph("In clay the net active pressure below " +
                     elevationText(ground, request.units) +
                     ", where it is largest, is what loads the clay behind less twice the "
                     "developed cohesions of both sides (effective stresses, still water):");
    const double value = writer.formula({"p", "net"}, net, Quantity::Stress);
    constexpr double Rounding = 1e-9; // of sums that cancel out
    writer.paragraph(value < -Rounding * clay->cohesion
                         ? "It is below zero: by this number alone the clay in front would hold "
                           "the wall."
                     : clay->endless
                         ? "It is not below zero, and depth does not lower it: no depth holds this "
                           "wall."
                         : "It is not below zero: no depth within these layers holds this wall.");
}

/// The least net active pressure below the lower ground, where the solution came to it.
void tellLeastPressure(SheetWriter& writer, const SheetRequest& request) {
    const std::vector<PressureStage> stages = pressureStages(request);
    if (stages.empty()) {
        return;
    }
    const PressureDiagrams& diagrams = stages.front().diagrams;
    const double ground =
        std::min(request.problem.SurfaceElev(Right, 1), request.problem.SurfaceElev(Left, 1));
    int least = 0;
    for (int i = 1; i <= diagrams.grid.NumElevs - 2; ++i) {
        const bool better = least == 0 || diagrams.NetActive(i, 1) < diagrams.NetActive(least, 1);
        least = diagrams.grid.ElevGrid(i) < ground + SameElevation && better ? i : least;
    }
    if (least != 0) {
        writer.paragraph("The least net active pressure below the lower ground is " +
                         writer.withUnit(Quantity::Stress, diagrams.NetActive(least, 1)) + " at " +
                         elevationText(diagrams.grid.ElevGrid(least), request.units) +
                         "; below zero the soil in front resists more than what pushes behind.");
    }
}

void tellFailure(SheetWriter& writer, const SheetRequest& request) {
    const Failure& failure = request.solved.failure;
    const MessageBox box = failureBox(failure);
    std::string text;
    for (const char c : box.text) {
        text += c == '\n' ? ' ' : c;
    }
    writer.markup("<div class=\"bad\">\n");
    writer.markupParagraph("<strong>The solution ended without results</strong> while " +
                           escaped(stageText(failure.stage, request.problem.WallType)) + ".");
    if (failure.code == FailureCode::FactorDeclined) {
        text = "The search for the factor of safety stopped at its limit: the wall still held at " +
               writer.withUnit(Quantity::Number, failure.low) + ".";
    }
    if (!text.empty()) {
        writer.paragraph(text);
    }
    if (failureHasElevation(failure.code)) {
        writer.paragraph("The search stood at " + elevationText(failure.elev, request.units) + ".");
    }
    if (failure.layer > 0) {
        writer.paragraph(std::string("It concerns the ") + sideName(failure.side) +
                         " side, layer " + std::to_string(failure.layer) + ".");
    }
    tellClayNumber(writer, request);
    tellLeastPressure(writer, request);
    writer.paragraph("What follows is known up to that point.");
    writer.markup("</div>\n");
}

} // namespace

void writeTitleBlock(SheetWriter& writer, const SheetRequest& request) {
    writer.markup("<h1>Calculation sheet</h1>\n<table class=\"block\">\n<tbody>\n");
    writer.markup(blockRow("Heading", headingLines(request.problem)));
    writer.markup(blockRow("Task", taskOf(request.problem)));
    if (!request.inputName.empty()) {
        writer.markup(blockRow("Input", request.inputName));
    }
    writer.markup(blockRow("Date", request.moment.date + " " + request.moment.time));
    writer.markup(blockRow("Program", "KORVANE " KORVANE_VERSION));
    writer.markup(blockRow(
        "Units", request.units == UnitSystem::SI ? "SI" : "US customary (FT, LB, PSF, PCF)"));
    writer.markup("</tbody></table>\n");
    if (request.solved.failure) {
        tellFailure(writer, request);
    } else if (const Results* results = request.solved.results) {
        for (int level = 1; level <= results->levelCount; ++level) {
            writer.paragraph(levelLine(writer, request, results->levels(level)));
        }
    }
    writer.paragraph("Forces and moments are per unit length of wall. Numbers in formulas have "
                     "five significant digits; what follows the last sign of equality is worked "
                     "out from the full values of the symbols. Section 9 compares these results "
                     "with those of the solution.");
}

void writeChecks(SheetWriter& writer) {
    const std::vector<Check>& checks = writer.checks();
    writer.section(9, "Checks");
    std::size_t failed = 0;
    for (const Check& check : checks) {
        failed += check.pass ? 0 : 1;
    }
    writer.paragraph(
        checks.empty()
            ? "The solution has not come to a value that could be worked out again."
            : std::to_string(checks.size()) +
                  " values worked out again from the symbols printed here, beside those of the "
                  "solution: " +
                  (failed == 0 ? "all agree." : std::to_string(failed) + " do not agree."));
    std::string rows;
    for (const Check& check : checks) {
        const auto cell = [&](double value, int digits, const std::string& unit) {
            std::string text = "<td>";
            if (std::isfinite(value)) {
                appendShortest(text,
                               roundedTo(inUnits(check.quantity, value, writer.units()), digits));
            } else {
                text += "–";
            }
            return (text += unit) += "</td>";
        };
        constexpr int digits = 9;
        const std::string unit = unitMarkup(check.quantity, writer.units());
        rows += std::string("<tr class=\"") + (check.pass ? "pass" : "fail") + "\"><td>" +
                escaped(check.what) + "</td>" + cell(check.sheet, digits, "") +
                cell(check.engine, digits, "") +
                cell(check.tolerance, 3, unit.empty() || unit == "°" ? unit : " " + unit) + "<td>" +
                (check.pass ? "agrees" : "differs") + "</td></tr>\n";
    }
    writer.markup("<div class=\"t\"><table id=\"checks\">\n<thead><tr><th>Value</th><th>Sheet</th>"
                  "<th>Solution</th><th>Tolerance</th><th>Result</th></tr></thead>\n"
                  "<tbody>\n" +
                  rows + "</tbody></table></div>\n");
}

} // namespace korvane::sheet
