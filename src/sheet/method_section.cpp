// Methods, factors and coefficients.
#include "sheet/sections.h"
#include "sheet/soil_work.h"

#include <algorithm>

namespace korvane::sheet {

namespace {

constexpr int MethodNumber = 2;

std::string methodText(const SheetRequest& request, int side) {
    const Problem& problem = request.problem;
    switch (sideMethods(request)(side)) {
    case PressureMethod::Coefficients:
        return problem.SoilDataKind(side) == SoilData::Coefficients
                   ? "Pressures by the coefficients that the input gives for each layer."
                   : "Pressures by coefficients: the ground is level, no layer has adhesion and no "
                     "layer bottom slopes.";
    case PressureMethod::Sweep:
        return "Wedge method, sweep search: " + wedgeReason(problem, side) +
               ". From each elevation of the wall planes are tried by steps of 2 degrees from 23 "
               "degrees off the vertical; the largest active and the smallest passive force count.";
    case PressureMethod::FixedSurface:
        return "Wedge method, fixed surface: " + wedgeReason(problem, side) +
               ". In each layer the plane rises at 45 degrees plus (active) or less (passive) half "
               "the developed friction.";
    default:
        return wedgeReason(problem, side).empty()
                   ? "The solution has not come to a method."
                   : "A wedge method is required: " + wedgeReason(problem, side) + ".";
    }
}

void writeFactors(SheetWriter& writer, const Problem& problem, int side, double searched) {
    Table table;
    table.caption = "Factors of safety";
    table.columns = {{"Layer"}, {"Active"}, {"comes from"}, {"Passive"}, {"comes from"}};
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const LayerFactor active = activeFactor(problem, side, layer, searched);
        const LayerFactor passive = passiveFactor(problem, side, layer, searched);
        const auto value = [&](const LayerFactor& factor) {
            return factor.value > 0 ? writer.precise(Quantity::Number, factor.value)
                                    : writer.text("not found");
        };
        const auto source = [&](const LayerFactor& factor) {
            return writer.text(factor.value > 0 ? factorSourceText(factor.source) : "");
        };
        table.rows.push_back({writer.text(std::to_string(layer)), value(active), source(active),
                              value(passive), source(passive)});
    }
    writer.table(table);
}

void writeDeveloped(SheetWriter& writer, const Problem& problem, int side,
                    const std::vector<LayerWork>& layers) {
    const auto head = [](const char* letter, const char* subscript) {
        return "<math>" + mathSymbol({letter, subscript}) + "</math>";
    };
    bool adhesion = false;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        adhesion = adhesion || problem.SoilAdhesion(side, layer) > 0;
    }
    Table table;
    table.caption = "Strengths as given and as developed";
    table.columns = {{"Layer"}};
    for (const char* subscript : {"", "a", "p"}) {
        table.columns.push_back({"", Quantity::Angle, head("φ", subscript)});
        table.columns.push_back({"", Quantity::Angle, head("δ", subscript)});
        table.columns.push_back({"", Quantity::Stress, head("c", subscript)});
        if (adhesion) {
            table.columns.push_back({"", Quantity::Stress, head("a", subscript)});
        }
    }
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const LayerWork& work = layers[static_cast<std::size_t>(layer - 1)];
        std::vector<Cell> row{writer.text(std::to_string(layer))};
        const auto add = [&](double friction, double wall, double cohesion, double onWall) {
            row.push_back(writer.precise(Quantity::Angle, friction));
            row.push_back(writer.precise(Quantity::Angle, wall));
            row.push_back(writer.precise(Quantity::Stress, cohesion));
            if (adhesion) {
                row.push_back(writer.precise(Quantity::Stress, onWall));
            }
        };
        add(problem.SoilFriction(side, layer), problem.SoilWallFriction(side, layer),
            problem.SoilCohesion(side, layer), problem.SoilAdhesion(side, layer));
        add(work.frictionActive, work.wallFrictionActive, work.cohesionActive, work.adhesionActive);
        add(work.frictionPassive, work.wallFrictionPassive, work.cohesionPassive,
            work.adhesionPassive);
        table.rows.push_back(row);
    }
    writer.table(table);
}

void writeCurved(SheetWriter& writer, const LayerWork& work) {
    const CurvedCoefficient curved =
        curvedCoefficient(work.frictionPassive, work.wallFrictionPassive);
    const CurvedSteps steps = curvedSteps(curved, work.frictionPassive, work.wallFrictionPassive);
    writer.paragraph("Passive by the table for curved failure surfaces:");
    writer.numbers({"K", "0"}, steps.full);
    if (curved.angle1 > 0) {
        writer.numbers({"R", "A"}, steps.reduction1);
    } else {
        writer.definition({"R", "A"}, steps.reduction1, "Below 10° the reduction runs to");
    }
    writer.numbers({"R", "B"}, steps.reduction2);
    writer.numbers({"R", ""}, steps.reduction);
    writer.numbers({"K", "p"}, steps.Kp);
}

void writeCoefficients(SheetWriter& writer, int layer, const LayerWork& work) {
    writer.subheading("Layer " + std::to_string(layer));
    const auto angles = [&](double friction, double wallFriction, const char* subscript) {
        return std::pair{term("φ", subscript, friction, Quantity::Angle),
                         term("δ", subscript, wallFriction, Quantity::Angle)};
    };
    const auto [phiA, deltaA] = angles(work.frictionActive, work.wallFrictionActive, "a");
    writer.numbers({"K", "a"}, coulombCoefficient(phiA, deltaA, 1));
    if (work.KpSource == CoefficientSource::Coulomb) {
        const auto [phiP, deltaP] = angles(work.frictionPassive, work.wallFrictionPassive, "p");
        writer.numbers({"K", "p"}, coulombCoefficient(phiP, deltaP, -1));
    } else if (work.KpSource == CoefficientSource::CurvedTable) {
        writeCurved(writer, work);
    } else {
        writer.paragraph("The developed friction is beyond the table for curved failure surfaces: "
                         "there is no passive coefficient.");
    }
}

bool sameCoefficients(const LayerWork& a, const LayerWork& b) {
    return a.frictionActive == b.frictionActive && a.frictionPassive == b.frictionPassive &&
           a.wallFrictionActive == b.wallFrictionActive &&
           a.wallFrictionPassive == b.wallFrictionPassive;
}

void writeGiven(SheetWriter& writer, const std::vector<LayerWork>& layers) {
    Table table;
    table.caption = "Coefficients as given";
    table.columns = {{"Layer"},
                     {"", Quantity::Number, "<math>" + mathSymbol({"K", "a"}) + "</math>"},
                     {"", Quantity::Number, "<math>" + mathSymbol({"K", "p"}) + "</math>"}};
    int layer = 0;
    for (const LayerWork& work : layers) {
        table.rows.push_back({writer.text(std::to_string(++layer)),
                              writer.precise(Quantity::Number, work.Ka),
                              writer.precise(Quantity::Number, work.Kp)});
    }
    writer.table(table);
    writer.paragraph(
        "Given coefficients are not changed by factors of safety, and neither cohesion "
        "nor the direction of wall friction acts on them.");
}

/// How the formulas read, once for the whole sheet, as far as the wall needs them.
void writeStrengthDefinitions(SheetWriter& writer) {
    const Expr phi = term("φ", "", 0);
    const Expr delta = term("δ", "", 0);
    const Expr factor = term("F", "", 1);
    writer.paragraph("A factor of safety divides the tangents of the friction angles, the cohesion "
                     "and the adhesion: the strengths are said to be developed. The factor of a "
                     "layer stands before that of its side, and that before the one of the wall. "
                     "Active pressures (index a) and passive ones (index p) have factors of their "
                     "own:");
    writer.definition({"φ", "a"}, arctangent(tangent(phi) / term("F", "a", 1)));
    writer.definition({"δ", "a"}, arctangent(tangent(delta) / term("F", "a", 1)));
    writer.definition({"c", "a"}, term("c", "", 0) / term("F", "a", 1));
    writer.paragraph("and likewise with p.");
}

void writeCoulombDefinitions(SheetWriter& writer) {
    writer.paragraph("Coulomb's coefficients (1776) for a vertical wall and level ground, with "
                     "developed angles:");
    const auto coulomb = [&](const char* subscript, int sign) {
        writer.definition({"K", subscript}, coulombCoefficient(term("φ", subscript, 0),
                                                               term("δ", subscript, 0), sign));
    };
    coulomb("a", 1);
    coulomb("p", -1);
}

void writeCurvedDefinitions(SheetWriter& writer) {
    writer.paragraph("Where the developed wall friction is above half the developed friction of "
                     "the soil, the passive coefficient comes from the table for curved failure "
                     "surfaces (log-spirals; Caquot and Kerisel, 1948): K0 for full wall friction "
                     "between the table's rows 1 and 2, then the reduction R for less wall "
                     "friction between its columns A and B (angles) and in each between its rows "
                     "1 and 2 (ratios ρ of wall to soil friction):");
    constexpr double friction = 27; // any angle within the table: the letters alone are shown
    const CurvedSteps steps =
        curvedSteps(curvedCoefficient(friction, friction), friction, friction);
    writer.definition({"K", "0"}, steps.full);
    writer.definition({"R", "A"}, steps.reduction1, "and likewise B:");
    writer.definition({"R", ""}, steps.reduction);
    writer.definition({"K", "p"}, steps.Kp);
}

/// Of the sides that take coefficients from strengths: whether one has a layer of that source in
/// any of the solutions.
bool takes(const SheetRequest& request, const std::vector<PressureStage>& stages,
           CoefficientSource source) {
    const Problem& problem = request.problem;
    const Array<PressureMethod, 2> methods = sideMethods(request);
    const auto takesWith = [&](double searched) {
        for (const int side : {Right, Left}) {
            for (int layer = 1; layer <= problem.SoilLayerCount(side) &&
                                methods(side) == PressureMethod::Coefficients;
                 ++layer) {
                if (layerWork(problem, side, layer, searched).KpSource == source) {
                    return true;
                }
            }
        }
        return false;
    };
    return (stages.empty() && takesWith(0)) ||
           std::any_of(stages.begin(), stages.end(), [&](const PressureStage& stage) {
               return takesWith(searchedFactor(request, stage.level));
           });
}

/// Coefficients layer by layer, what they rest on by side.
void checkSide(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
               int side) {
    const std::string place = stage.prefix + sideName(side) + " side";
    WorstCheck factors("Factors of safety, " + place, Quantity::Number);
    WorstCheck friction("Developed friction, " + place, Quantity::Angle);
    WorstCheck wallFriction("Developed wall friction, " + place, Quantity::Angle);
    WorstCheck cohesion("Developed cohesion, " + place, Quantity::Stress);
    WorstCheck adhesion("Developed adhesion, " + place, Quantity::Stress);
    const double searched = searchedFactor(request, stage.level);
    for (int layer = 1; layer <= request.problem.SoilLayerCount(side); ++layer) {
        const DevelopedLayer& engine = stage.layers(side, layer);
        const LayerWork work = layerWork(request.problem, side, layer, searched);
        const std::string at = "layer " + std::to_string(layer);
        if (engine.KaSource != CoefficientSource::None) {
            std::string here = place;
            (here += ", ") += at;
            writer.check("Ka, " + here, Quantity::Number, work.Ka, engine.Ka);
            writer.check("Kp, " + here, Quantity::Number, work.Kp, engine.Kp);
        }
        if (work.given) {
            continue;
        }
        const std::string active = at + ", active";
        const std::string passive = at + ", passive";
        factors.add(work.active.value, engine.fsActive, active);
        factors.add(work.passive.value, engine.fsPassive, passive);
        friction.add(work.frictionActive, engine.frictionActive, active);
        friction.add(work.frictionPassive, engine.frictionPassive, passive);
        wallFriction.add(work.wallFrictionActive, engine.wallFrictionActive, active);
        wallFriction.add(work.wallFrictionPassive, engine.wallFrictionPassive, passive);
        cohesion.add(work.cohesionActive, engine.cohesionActive, active);
        cohesion.add(work.cohesionPassive, engine.cohesionPassive, passive);
        adhesion.add(work.adhesionActive, engine.adhesionActive, active);
        adhesion.add(work.adhesionPassive, engine.adhesionPassive, passive);
    }
    for (const WorstCheck* check : {&factors, &friction, &wallFriction, &cohesion, &adhesion}) {
        check->tell(writer);
    }
}

void writeSide(SheetWriter& writer, const SheetRequest& request, int side, double searched) {
    const Problem& problem = request.problem;
    writer.heading(std::string(side == Right ? "Right" : "Left") + " side");
    writer.paragraph(methodText(request, side));
    std::vector<LayerWork> layers;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        layers.push_back(layerWork(problem, side, layer, searched));
    }
    if (problem.SoilDataKind(side) == SoilData::Coefficients) {
        writeGiven(writer, layers);
        return;
    }
    writeFactors(writer, problem, side, searched);
    const bool known =
        !layers.empty() && layers.front().active.value > 0 && layers.front().passive.value > 0;
    if (!known) {
        return;
    }
    writeDeveloped(writer, problem, side, layers);
    if (sideMethods(request)(side) != PressureMethod::Coefficients) {
        return;
    }
    for (std::size_t n = 0; n < layers.size(); ++n) {
        const auto first = std::find_if(layers.begin(), layers.end(), [&](const LayerWork& other) {
            return sameCoefficients(other, layers[n]);
        });
        const auto before = static_cast<std::size_t>(first - layers.begin());
        if (before < n) {
            writer.paragraph("Layer " + std::to_string(n + 1) +
                             ": angles and coefficients of layer " + std::to_string(before + 1) +
                             ".");
        } else {
            writeCoefficients(writer, static_cast<int>(n) + 1, layers[n]);
        }
    }
}

} // namespace

void writeMethod(SheetWriter& writer, const SheetRequest& request) {
    const Problem& problem = request.problem;
    writer.section(MethodNumber, "Methods, factors and coefficients");
    const bool strengths = problem.SoilDataKind(Right) == SoilData::Strengths ||
                           problem.SoilDataKind(Left) == SoilData::Strengths;
    const std::vector<PressureStage> stages = pressureStages(request);
    const bool curved = takes(request, stages, CoefficientSource::CurvedTable);
    if (strengths) {
        writeStrengthDefinitions(writer);
    }
    if (curved || takes(request, stages, CoefficientSource::Coulomb)) {
        writeCoulombDefinitions(writer);
    }
    if (curved) {
        writeCurvedDefinitions(writer);
    }
    if (stages.empty()) {
        for (const int side : {Right, Left}) {
            writeSide(writer, request, side, 0);
        }
    }
    bool shown = false;
    for (const PressureStage& stage : stages) {
        // The levels of a design have the same factors.
        writer.mute(shown && (!stage.shown || problem.ProgramMode == Mode::Design));
        shown = true;
        if (problem.ProgramMode == Mode::Analysis && !stage.title.empty()) {
            writer.paragraph("For the " + stage.title + ":");
        }
        const double searched = searchedFactor(request, stage.level);
        for (const int side : {Right, Left}) {
            writeSide(writer, request, side, searched);
            if (!stage.review) {
                checkSide(writer, request, stage, side);
            }
        }
        writer.mute(false);
    }
}

} // namespace korvane::sheet
