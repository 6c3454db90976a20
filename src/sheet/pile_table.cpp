#include "sheet/pile_table.h"

#include "reports/reduction_report.h"
#include "rowe/reduction_tables.h"
#include "sheet/clay_work.h"
#include "sheet/stages.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace korvane::sheet {

namespace {

constexpr double InchesPerFoot = 12;
constexpr double Rounding = 1e-9;

/// A section under the largest moment of a level.
struct PileWork {
    double modulus = 0;    ///< IN^3 per foot of wall
    double inertia = 0;    ///< IN^4 per foot of wall
    double allowable = 0;  ///< PSI
    double elastic = 0;    ///< PSI
    double stress = 0;     ///< PSI
    double ratio = 0;      ///< allowable over present stress
    double deflection = 0; ///< IN
};

struct PileJob {
    SheetWriter& writer;
    const SheetRequest& request;
    const LevelResult& level;
    const OwnExtremes& own;
    std::string prefix; ///< of checks: the method, where there are two
    double moment = 0;  ///< LB-FT, the largest one's size

    int count() const { return request.sections.PileSectionCount; }
    /// Rowe's reduction where it has a report for this level.
    const MomentReduction* reduction() const {
        const MomentReduction* rowe = request.solved.reduction;
        const bool reduces = level.method == SolutionMethod::FreeEarth && rowe != nullptr &&
                             rowe->soil != RoweSoil::None;
        return reduces ? rowe : nullptr;
    }
};

PileWork workOf(const PileJob& job, int p) {
    const PileSections& sections = job.request.sections;
    const Problem& problem = job.request.problem;
    PileWork work;
    work.modulus = sections.PileSectionData(p, 1);
    work.inertia = sections.PileSectionData(p, 2);
    work.allowable = sections.PileAllowStress(p);
    work.elastic = sections.PileModulus(p);
    work.stress = InchesPerFoot * job.moment / work.modulus;
    work.ratio = work.allowable / work.stress;
    // An analysis tells the deflection of the wall that was given.
    const double own =
        problem.ProgramMode == Mode::Analysis ? problem.WallModulus * problem.WallInertia : 1;
    work.deflection = job.level.diagrams.MaxDeflection.value * own / (work.elastic * work.inertia);
    return work;
}

const char* passText(double ratio) {
    return ratio >= 1 ? "passes" : "fails";
}

// ---- stresses
// ------------------------------------------------------------------------------------

void writeStresses(const PileJob& job) {
    SheetWriter& writer = job.writer;
    Table table;
    table.caption =
        "Sections under the largest moment, " + writer.withUnit(Quantity::Moment, job.moment);
    table.columns = {{.title = "Section"},
                     {.title = "Section modulus", .quantity = Quantity::SectionModulus},
                     {.title = "Inertia", .quantity = Quantity::Inertia},
                     {.title = "Allowable stress", .quantity = Quantity::Modulus},
                     {.title = "Stress", .quantity = Quantity::Modulus},
                     {.title = "Allowable / stress"},
                     {.title = "Largest deflection", .quantity = Quantity::Deflection},
                     {.title = "Result"}};
    for (int p = 1; p <= job.count(); ++p) {
        const PileWork work = workOf(job, p);
        table.rows.push_back({writer.text(job.request.sections.PileName(p)),
                              writer.value(Quantity::SectionModulus, work.modulus),
                              writer.value(Quantity::Inertia, work.inertia),
                              writer.value(Quantity::Modulus, work.allowable),
                              writer.value(Quantity::Modulus, work.stress),
                              writer.precise(Quantity::Number, work.ratio),
                              writer.value(Quantity::Deflection, work.deflection),
                              writer.text(passText(work.ratio))});
    }
    writer.table(table);
}

/// What a section comes to under the moment and deflection that the sheet has worked out.
struct SectionFormulas {
    Expr required;   ///< IN^3 per foot of wall
    Expr stress;     ///< PSI
    Expr ratio;      ///< allowable over present stress
    Expr deflection; ///< IN
};

SectionFormulas formulasOf(const PileJob& job, int p) {
    const PileWork work = workOf(job, p);
    const Problem& problem = job.request.problem;
    constexpr double newtonsPerMillimetre2 = 1000; // of kNm over cm^3
    const Expr M = term("M", "max", std::fabs(job.own.moment), Quantity::Moment);
    const Expr S = term("S", "", work.modulus, Quantity::SectionModulus);
    const Expr allowable = term("σ", "all", work.allowable, Quantity::Modulus);
    const Expr scaled = unitFactor(InchesPerFoot, newtonsPerMillimetre2) * M;
    const Expr stress = scaled / S;
    const Expr stiffness = term("E", "", work.elastic, Quantity::Modulus) *
                           term("I", "", work.inertia, Quantity::Inertia);
    // Of a wall that is given the deflection is known; of another its product with E and I.
    constexpr double millimetres = 1e8; // of kNm^3 over MPa and cm^4
    const Expr deflection =
        problem.ProgramMode == Mode::Analysis
            ? term("y", "w", job.own.deflection, Quantity::Deflection) *
                  term("E", "w", problem.WallModulus, Quantity::Modulus) *
                  term("I", "w", problem.WallInertia, Quantity::Inertia) / stiffness
            : unitFactor(1, millimetres) *
                  term("D", "max", job.own.deflection, Quantity::ScaledDeflection) / stiffness;
    return {scaled / allowable, stress,
            allowable / term("σ", "", stress.value(), Quantity::Modulus), deflection};
}

/// The numbers set in for the first section; the others follow by the same formulas.
void writeSectionFormulas(const PileJob& job) {
    SheetWriter& writer = job.writer;
    const SectionFormulas formulas = formulasOf(job, 1);
    writer.paragraph("The formulas with the numbers of the first section, " +
                     job.request.sections.PileName(1) + "; u is the factor between the units:");
    writer.formula({"S", "req"}, formulas.required, Quantity::SectionModulus,
                   "section modulus required:");
    writer.formula({"σ"}, formulas.stress, Quantity::Modulus, "stress:");
    writer.formula({"r"}, formulas.ratio, Quantity::Number, "ratio:");
    writer.formula({"y"}, formulas.deflection, Quantity::Deflection, "largest deflection:");
}

void checkSections(const PileJob& job) {
    WorstCheck required(job.prefix + "section modulus required", Quantity::SectionModulus);
    WorstCheck stress(job.prefix + "stress of sections", Quantity::Modulus);
    WorstCheck ratio(job.prefix + "allowable over present stress of sections", Quantity::Number);
    WorstCheck deflection(job.prefix + "largest deflection of sections", Quantity::Deflection);
    for (int p = 1; p <= job.count(); ++p) {
        const PileWork work = workOf(job, p);
        const SectionFormulas own = formulasOf(job, p);
        const std::string& name = job.request.sections.PileName(p);
        required.addAlone(own.required.value(), InchesPerFoot * job.moment / work.allowable, name,
                          0);
        stress.addAlone(own.stress.value(), work.stress, name, 0);
        ratio.addAlone(own.ratio.value(), work.ratio, name, 0);
        deflection.addAlone(own.deflection.value(), work.deflection, name, 0);
    }
    for (const WorstCheck* check : {&required, &stress, &ratio}) {
        check->tell(job.writer, job.own.momentShare);
    }
    deflection.tell(job.writer, job.own.deflectionShare);
}

/// One row for each allowable stress of the table.
void writeRequiredModulus(const PileJob& job) {
    SheetWriter& writer = job.writer;
    Table table;
    table.columns = {{.title = "Allowable stress", .quantity = Quantity::Modulus},
                     {.title = "Section modulus required", .quantity = Quantity::SectionModulus}};
    std::set<double> stresses;
    for (int p = 1; p <= job.count(); ++p) {
        stresses.insert(job.request.sections.PileAllowStress(p));
    }
    for (const double stress : stresses) {
        table.rows.push_back(
            {writer.value(Quantity::Modulus, stress),
             writer.precise(Quantity::SectionModulus, InchesPerFoot * job.moment / stress)});
    }
    writer.table(table);
}

// ---- moment reduction
// ----------------------------------------------------------------------------

/// The points of Rowe's curves for sand.
constexpr std::array<double, 5> CurvePlaces{-3.5, -3.0, -2.5, -2.0, -1.5};
/// The curve of loose sand runs flat from here.
constexpr double FlatFrom = -2.0;

/// The polynomial through the first points of a curve, by Neville's rule.
double throughPoints(const MomentReduction& rowe, int density, int points, double x) {
    std::array<double, 5> value{};
    for (int i = 0; i < points; ++i) {
        value[static_cast<std::size_t>(i)] = rowe.RoweSandCurve(density, i + 1);
    }
    const auto count = static_cast<std::size_t>(points);
    for (std::size_t span = 1; span < count; ++span) {
        for (std::size_t from = 0; from + span < count; ++from) {
            const std::size_t to = from + span;
            value[from] =
                ((x - CurvePlaces[to]) * value[from] - (x - CurvePlaces[from]) * value[from + 1]) /
                (CurvePlaces[from] - CurvePlaces[to]);
        }
    }
    return value[0];
}

/// The points of the curves at ALPHA, on straight lines between the rows of the table.
void checkSandCurves(SheetWriter& writer, const MomentReduction& rowe) {
    const std::size_t row = rowe.RoweAlpha <= 0.7 ? 0 : 1;
    const double share = 10 * rowe.RoweAlpha - 6 - static_cast<double>(row);
    WorstCheck points("moment reduction, points of the curves at α", Quantity::Number);
    for (const int density : {1, 2}) {
        const auto& table = RoweSandTable[density - 1];
        for (std::size_t i = 0; i < CurvePlaces.size(); ++i) {
            const double own = (1 - share) * table[row][i] + share * table[row + 1][i];
            points.add(own, rowe.RoweSandCurve(density, static_cast<int>(i) + 1),
                       "at " + writer.precise(Quantity::Number, CurvePlaces[i]).markup);
        }
    }
    points.tell(writer, Rounding);
}

/// Log of H^4 over EI with FT, IN^4 and PSI, as Rowe's curves have it.
double flexibility(double height, const PileWork& work) {
    return 4 * std::log10(height) - std::log10(work.elastic) - std::log10(work.inertia);
}

void writeReductionTable(const PileJob& job, const MomentReduction& rowe) {
    SheetWriter& writer = job.writer;
    const bool sand = rowe.soil == RoweSoil::Sand;
    const std::vector<const char*> soils =
        sand ? std::vector<const char*>{"loose sand", "dense sand"}
             : std::vector<const char*>{"clay"};
    Table table;
    table.caption = "Rowe's moment reduction";
    table.columns = {{.title = "Section"}, {.title = "log(H⁴/EI)"}};
    for (const char* soil : soils) {
        table.columns.push_back({.title = std::string("Coefficient, ") + soil});
        table.columns.push_back({.title = "Reduced moment", .quantity = Quantity::Moment});
        table.columns.push_back({.title = "Allowable / reduced"});
        table.columns.push_back({.title = "Result"});
    }
    for (int p = 1; p <= job.count(); ++p) {
        std::vector<Cell> row{writer.text(job.request.sections.PileName(p)),
                              writer.precise(Quantity::Number, rowe.PileLogRigidity(p))};
        for (int k = 1; k <= static_cast<int>(soils.size()); ++k) {
            const double coefficient = rowe.inRange(p) ? rowe.coefficient(p, k) : 1;
            row.push_back(rowe.inRange(p) ? writer.precise(Quantity::Number, coefficient)
                                          : Cell{"1 *", true});
            row.push_back(writer.value(Quantity::Moment, coefficient * job.moment));
            row.push_back(writer.precise(Quantity::Number, rowe.reducedRatio(p, k)));
            row.push_back(writer.text(passText(rowe.reducedRatio(p, k))));
        }
        table.rows.push_back(std::move(row));
    }
    writer.table(table);
    writer.paragraph("* outside the range of the curves: the moment stays as it is.");
}

Expr length(std::string letter, std::string subscript, double value) {
    return term(std::move(letter), std::move(subscript), value, Quantity::Length);
}

void writeStability(const PileJob& job, const MomentReduction& rowe) {
    SheetWriter& writer = job.writer;
    const std::vector<PressureStage> stages = pressureStages(job.request);
    const ClayStability own = clayStability(job.request, stages.front(), job.level.bottomElev);
    writer.paragraph("Stability number of clay: p the uniform load and the effective weight of the "
                     "right side down to the left surface, c and a the cohesion, developed, and "
                     "the adhesion of the left side, means from its surface to the bottom:");
    writer.numbers({"p"}, own.overburden, Quantity::Stress);
    writer.numbers({"c"}, own.cohesion, Quantity::Stress);
    writer.numbers({"a"}, own.adhesion, Quantity::Stress);
    const double S = writer.formula({"S"}, own.number);
    writer.check("moment reduction, stability number", Quantity::Number, S, rowe.RoweStability,
                 Rounding);
}

/// The curves at S and ALPHA, and the numbers of the first section that is within them.
void writeClayCurves(const PileJob& job, const MomentReduction& rowe) {
    SheetWriter& writer = job.writer;
    const std::array<ClayCurve, 3> curves = clayCurves(rowe.RoweStability, rowe.RoweAlpha);
    Table table;
    table.caption = "Curves for clay at the stability number";
    table.columns = {{.title = "log(H⁴/EI)"},
                     {.title = "α 0.8"},
                     {.title = "α 0.7"},
                     {.title = "α 0.6"},
                     {.title = "at α"}};
    for (const ClayCurve& curve : curves) {
        std::vector<Cell> row{writer.precise(Quantity::Number, curve.place)};
        for (const double value :
             {curve.atAlpha[0], curve.atAlpha[1], curve.atAlpha[2], curve.value}) {
            row.push_back(writer.precise(Quantity::Number, value));
        }
        table.rows.push_back(std::move(row));
    }
    writer.table(table);
    writer.paragraph("Between three points the method adds the one in the middle, where a parabola "
                     "would take it off: coefficients can lie outside the curves.");
    for (int p = 1; p <= job.count(); ++p) {
        if (rowe.inRange(p)) {
            writer.formula({"r"}, clayCoefficient(curves, rowe.PileLogRigidity(p)),
                           Quantity::Number, job.request.sections.PileName(p) + ":");
            return;
        }
    }
}

void writeRatios(const PileJob& job, const MomentReduction& rowe) {
    SheetWriter& writer = job.writer;
    const Problem& problem = job.request.problem;
    const Expr top = length("z", "T", problem.WallTopElev);
    const Expr height = length("H", "", rowe.RoweHeight);
    const double H = writer.formula({"H"}, top - length("z", "B", job.level.bottomElev),
                                    Quantity::Length, "height of the wall:");
    const double alpha =
        writer.formula({"α"}, (top - length("z", "L", problem.SurfaceElev(Left, 1))) / height,
                       Quantity::Number, "wall height ratio:");
    const double beta = writer.formula({"β"}, (top - length("z", "A", problem.AnchorElev)) / height,
                                       Quantity::Number, "anchor height ratio:");
    writer.check("moment reduction, height", Quantity::Length, H, rowe.RoweHeight, Rounding);
    writer.check("moment reduction, wall height ratio", Quantity::Number, alpha, rowe.RoweAlpha,
                 Rounding);
    writer.check("moment reduction, anchor height ratio", Quantity::Number, beta, rowe.RoweBeta,
                 Rounding);
    // The number means nothing where the ground in front stands higher, or the wall ends at it.
    if (rowe.soil == RoweSoil::Clay &&
        problem.SurfaceElev(Right, 1) > problem.SurfaceElev(Left, 1) &&
        problem.SurfaceElev(Left, 1) > job.level.bottomElev) {
        writeStability(job, rowe);
    }
}

void checkReduction(const PileJob& job, const MomentReduction& rowe) {
    SheetWriter& writer = job.writer;
    WorstCheck logs("moment reduction, log(H⁴/EI)", Quantity::Number);
    WorstCheck ratios("moment reduction, allowable over present moment", Quantity::Number);
    WorstCheck coefficients("moment reduction, coefficient on the curve", Quantity::Number);
    WorstCheck reduced("moment reduction, allowable over reduced moment", Quantity::Number);
    const int columns = rowe.soil == RoweSoil::Sand ? 2 : 1;
    const std::array<ClayCurve, 3> curves = clayCurves(rowe.RoweStability, rowe.RoweAlpha);
    for (int p = 1; p <= job.count(); ++p) {
        const PileWork work = workOf(job, p);
        const std::string& name = job.request.sections.PileName(p);
        const double x = flexibility(rowe.RoweHeight, work);
        logs.add(x, rowe.PileLogRigidity(p), name);
        ratios.add(work.ratio, rowe.PileMomentRatio(p), name);
        for (int k = 1; k <= columns; ++k) {
            const double coefficient = rowe.inRange(p) ? rowe.coefficient(p, k) : 1;
            reduced.add(work.ratio / coefficient, rowe.reducedRatio(p, k), name);
            if (rowe.inRange(p)) {
                const double own = columns == 1 ? clayCoefficient(curves, x).value()
                                   : k == 1     ? throughPoints(rowe, 1, 4, std::min(x, FlatFrom))
                                                : throughPoints(rowe, 2, 5, x);
                coefficients.add(own, coefficient, name);
            }
        }
    }
    logs.tell(writer, Rounding);
    ratios.tell(writer, Rounding);
    coefficients.tell(writer, Rounding);
    reduced.tell(writer, Rounding);
}

void writeReduction(const PileJob& job, const MomentReduction& rowe) {
    SheetWriter& writer = job.writer;
    writeRatios(job, rowe);
    if (rowe.applicable) {
        if (rowe.soil == RoweSoil::Clay) {
            writeClayCurves(job, rowe);
        } else {
            checkSandCurves(writer, rowe);
        }
        writeReductionTable(job, rowe);
    } else {
        for (const std::string& note : reductionNotes(rowe)) {
            writer.paragraph(note);
        }
    }
    checkReduction(job, rowe);
}

} // namespace

void writePileTable(SheetWriter& writer, const SheetRequest& request, int level,
                    const OwnExtremes& own) {
    const Results& results = *request.solved.results;
    const LevelResult& result = results.levels(level);
    const std::string prefix =
        results.levelCount > 1 ? std::string(solutionMethodName(result.method)) + ": " : "";
    const PileJob job{writer, request, result,
                      own,    prefix,  std::fabs(result.diagrams.MaxMoment.value)};
    if (job.count() < 1 || job.moment == 0) {
        return;
    }
    writer.subheading("Sheet pile sections");
    writeStresses(job);
    writeSectionFormulas(job);
    writeRequiredModulus(job);
    checkSections(job);
    if (const MomentReduction* rowe = job.reduction(); rowe != nullptr) {
        writer.subheading("Moment reduction");
        writeReduction(job, *rowe);
    }
}

} // namespace korvane::sheet
