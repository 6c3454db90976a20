// A side by a wedge method: surface, planes, forces, floor and tension rule.
#include "sheet/pressure_parts.h"
#include "sheet/soil_work.h"
#include "sheet/wedge_work.h"
#include "state/tolerances.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvane::sheet {

namespace {

/// One wedge side at work.
struct WedgeRun {
    SheetWriter& writer;
    const SheetRequest& request;
    const PressureStage& stage;
    int side;
    const WedgeDetails& wedge;

    const Problem& problem() const { return request.problem; }
    /// Of a second solution one row is shown.
    bool isAgain() const { return stage.level > 1; }
    /// The levels of a design differ by their seepage alone.
    bool isSame() const { return isAgain() && request.problem.ProgramMode == Mode::Design; }
    std::string place() const { return stage.prefix + sideName(side) + " side"; }
    std::string at(double elev) const { return "at " + elevationText(elev, request.units); }
};

/// Coulomb's coefficient for ground that slopes at β; `sign` +1 active, -1 passive.
Expr slopingCoefficient(const Expr& phi, const Expr& delta, const Expr& beta, int sign) {
    const Expr lean = sign > 0 ? phi - beta : phi + beta;
    const Expr under = root(sine(phi + delta) * sine(lean) / (cosine(beta) * cosine(delta)));
    const Expr sum = sign > 0 ? Expr(1) + under : Expr(1) - under;
    return power(cosine(phi), 2) / (cosine(delta) * power(sum, 2));
}

void writeSurface(const WedgeRun& run) {
    const WedgeSurface& engine = run.wedge.surface;
    if (!engine.used || run.wedge.pressures.empty()) {
        return;
    }
    SheetWriter& writer = run.writer;
    writer.mute(run.isSame() || !run.stage.shown);
    const LayerWork work =
        layerWork(run.problem(), run.side, 1, searchedFactor(run.request, run.stage.level));
    const std::vector<GroundPoint> ground = groundLine(run.problem(), run.side);
    writer.subheading("Pressures just below the surface");
    writer.paragraph("From cohesion and the uniform load, by Coulomb's coefficients of the first "
                     "layer for sloping ground (Mueller-Breslau 1906); the wall friction is not "
                     "divided by a factor. The slope that the method takes is the arctangent of "
                     "the rise of the first stretch of ground in FT, divided by its length in FT:");
    const Expr slope =
        arctangent(term("Δy", "", ground[1].y - ground[0].y)) / term("Δx", "", ground[1].x);
    const double beta = writer.formula({"β", ""}, slope, Quantity::Angle);
    const double betaA = beta > 0 ? std::min(beta, work.frictionActive) : beta;
    const double betaP = beta < 0 && beta < work.frictionPassive ? work.frictionPassive : beta;
    if (betaA != beta || betaP != beta) {
        writer.paragraph(betaP != beta
                             ? "Falling ground takes the developed friction itself in the passive "
                               "coefficient."
                             : "Active, the slope is limited to the developed friction.");
    }
    const Expr delta = term("δ", "", run.problem().SoilWallFriction(run.side, 1), Quantity::Angle);
    const auto angle = [](const char* letter, const char* index, double value) {
        return term(letter, index, value, Quantity::Angle);
    };
    const double Ka =
        writer.formula({"K", "a"}, slopingCoefficient(angle("φ", "a", work.frictionActive), delta,
                                                      angle("β", "", betaA), 1));
    const double Kp =
        writer.formula({"K", "p"}, slopingCoefficient(angle("φ", "p", work.frictionPassive), delta,
                                                      angle("β", "", betaP), -1));
    const double load =
        run.problem().VUniformCount(run.side) != 0 ? run.problem().VUniformLoad(run.side) : 0;
    const Expr q = term("q", "", load, Quantity::Stress);
    const Expr ka = term("K", "a", Ka);
    const Expr kp = term("K", "p", Kp);
    const double pa = writer.formula(
        {"p", "a"},
        ka * q - Expr(2) * term("c", "a", work.cohesionActive, Quantity::Stress) * root(ka),
        Quantity::Stress);
    if (pa < 0) {
        writer.paragraph("Below zero it counts as none.");
    }
    const double pp = writer.formula(
        {"p", "p"},
        kp * q + Expr(2) * term("c", "p", work.cohesionPassive, Quantity::Stress) * root(kp),
        Quantity::Stress);
    const WedgePressureRow& first = run.wedge.pressures.front();
    writer.check("Ka at the surface, " + run.place(), Quantity::Number, Ka, engine.Ka);
    writer.check("Kp at the surface, " + run.place(), Quantity::Number, Kp, engine.Kp);
    writer.check("Active pressure at the surface, " + run.place(), Quantity::Stress,
                 std::max(0.0, pa), first.activeBefore(1), 1e-6, 1);
    writer.check("Passive pressure at the surface, " + run.place(), Quantity::Stress, pp,
                 first.passiveBefore(1));
    writer.mute(!run.stage.shown);
}

std::vector<WedgePiece> piecesOf(const WedgeRun& run, const WedgePlane& plane) {
    const auto first = run.wedge.pieces.begin() + plane.firstPiece;
    return {first, first + plane.pieceCount};
}

/// The pieces of both planes of a row, from the ground to the wall.
void writePieces(const WedgeRun& run, const WedgeRow& row) {
    const SheetWriter& writer = run.writer;
    Table table;
    table.wide = true;
    table.columns = {{"Plane"},
                     {"layer"},
                     {"inner end", Quantity::Length},
                     {"EL", Quantity::Length},
                     {"outer end", Quantity::Length},
                     {"EL", Quantity::Length},
                     {"length", Quantity::Length},
                     {"soil weight", Quantity::Force},
                     {"loads", Quantity::Force},
                     {"C", Quantity::Force},
                     {"t"}};
    for (const bool active : {true, false}) {
        for (const WedgePiece& piece : piecesOf(run, active ? row.active : row.passive)) {
            table.rows.push_back({writer.text(active ? "active" : "passive"),
                                  {std::to_string(piece.layer), true},
                                  writer.value(Quantity::Length, piece.x1),
                                  writer.value(Quantity::Length, piece.y1),
                                  writer.value(Quantity::Length, piece.x2),
                                  writer.value(Quantity::Length, piece.y2),
                                  writer.value(Quantity::Length, piece.length),
                                  writer.precise(Quantity::Force, piece.soil),
                                  writer.precise(Quantity::Force, piece.surcharge),
                                  writer.precise(Quantity::Force, piece.cohesion),
                                  writer.precise(Quantity::Number, piece.friction)});
        }
    }
    if (!table.rows.empty()) {
        run.writer.table(table);
    }
}

void writePolygon(const WedgeRun& run, const std::vector<ForceVector>& polygon, bool active) {
    std::string caption = active ? "Active wedge: " : "Passive wedge: ";
    for (const ForceVector& force : polygon) {
        caption += std::string(&force == &polygon.front() ? "" : ", ") + force.name + " " +
                   quantityText(Quantity::Force, std::hypot(force.x, force.y), run.request.units);
    }
    caption += " " + unitMarkup(Quantity::Force, run.request.units);
    run.writer.markup("<figure>" +
                      polygonDrawing(polygon, active ? "Forces on the active wedge"
                                                     : "Forces on the passive wedge") +
                      "\n<figcaption>" + escaped(caption) + "</figcaption></figure>\n");
}

/// The plane's pieces, the formula of the one at the wall, and its forces drawn.
void writePlane(const WedgeRun& run, const WedgeRow& row, bool active) {
    const WedgePlane& plane = active ? row.active : row.passive;
    SheetWriter& writer = run.writer;
    const char* name = active ? "active" : "passive";
    if (!plane.found) {
        writer.paragraph(std::string("No plane gives a ") + name + " force here.");
        return;
    }
    const std::vector<WedgePiece> pieces = piecesOf(run, plane);
    double outer = 0;
    for (std::size_t n = 0; n + 1 < pieces.size(); ++n) {
        const PieceSymbols symbols(pieces[n], active);
        const std::string label = "Piece in layer " + std::to_string(pieces[n].layer) + ":";
        outer += writer.numbers(
            label, {{{"A"}, symbols.A()},
                    {{"B"}, symbols.B()},
                    {{"H", std::to_string(n + 1)}, symbols.outward(), Quantity::Force}});
    }
    const PieceSymbols symbols(pieces.back(), active);
    const WallStrengths wall = wallTerms(run.request, run.stage, run.side, row.elev, active);
    const WallForce force = wallForce(symbols, outer, wall);
    writer.numbers(active ? "Active, at the wall:" : "Passive, at the wall:",
                   {{{"A"}, force.A}, {{"B"}, force.B}, {{"D"}, force.D}});
    const double P = writer.numbers({"P", ""}, force.P, Quantity::Force);
    writer.numbers({"E", active ? "a" : "p"}, force.horizontal, Quantity::Force);
    writePolygon(run, forcePolygon(symbols, outer, wall, P), active);
    if (active ? row.activeMarked : row.passiveMarked) {
        writer.paragraph("Marked * in the report: the force still changes at the end of the range "
                         "of planes.");
    }
}

/// The rows nearest to a third, two thirds and all of the depth in the soil; of a second solution
/// the last of them.
std::vector<const WedgeRow*> shownRows(const WedgeRun& run) {
    const double surface = run.problem().SurfaceElev(run.side, 1);
    const double lowest = lowestElev(run.stage);
    std::vector<const WedgeRow*> rows;
    const std::vector<double> shares =
        run.isAgain() ? std::vector<double>{1.0} : std::vector<double>{1 / 3.0, 2 / 3.0, 1.0};
    for (const double share : shares) {
        const double wanted = surface - share * (surface - lowest);
        const WedgeRow* nearest = nullptr;
        for (const WedgeRow& row : run.wedge.rows) {
            const bool better = nearest == nullptr ||
                                std::abs(row.elev - wanted) < std::abs(nearest->elev - wanted);
            nearest = better ? &row : nearest;
        }
        if (nearest != nullptr && (rows.empty() || rows.back() != nearest)) {
            rows.push_back(nearest);
        }
    }
    return rows;
}

void writeForceDefinitions(SheetWriter& writer) {
    writer.paragraph(
        "Equilibrium of the soil on a plane at the angle α off the vertical: W its weight and the "
        "loads on it, t the developed tangent of friction and C the developed cohesion along the "
        "piece, δ the mean developed wall friction and T the adhesion on the wall above, H the "
        "push "
        "of the pieces farther out. Active:");
    WedgePiece plain; // with cohesion, so that all parts of the formulas show
    plain.cohesion = 1;
    const auto define = [&](bool active) {
        const PieceSymbols symbols(plain, active);
        const Expr delta = term("δ", "", 0);
        const Expr A = term("A", "", 1);
        const Expr B = term("B", "", 1);
        const Expr H = term("H", "", 0);
        const Expr T = term("T", "", 0);
        const Expr D = term("D", "", 1);
        writer.definition({"A", ""}, symbols.A());
        writer.definition({"B", ""}, symbols.B());
        writer.definition({"D", ""}, active ? B * sine(delta) - A * cosine(delta)
                                            : -(B * sine(delta)) - A * cosine(delta));
        const Expr along = symbols.C * cosine(symbols.a);
        const Expr across = symbols.C * sine(symbols.a);
        writer.definition({"P", ""}, active ? ((symbols.W - T - along) * B - (H - across) * A) / D
                                            : ((symbols.W + T + along) * B - (H + across) * A) / D);
        writer.definition({"E", active ? "a" : "p"}, term("P", "", 0) * cosine(delta));
        writer.definition({"H", "1"}, symbols.outward(), "A piece farther out pushes with");
    };
    define(true);
    writer.paragraph("Passive:");
    define(false);
}

/// Ground that falls below a layer's bottom and rises again.
void writeReach(const WedgeRun& run) {
    const Problem& problem = run.problem();
    const std::vector<GroundPoint> ground = groundLine(problem, run.side);
    for (int layer = 1; layer < problem.SoilLayerCount(run.side); ++layer) {
        const double reach = layerReach(problem, run.side, layer);
        const bool rises = std::any_of(ground.begin(), ground.end(), [&](const GroundPoint& point) {
            return point.x > reach &&
                   point.y > problem.SoilBottomElev(run.side, layer) +
                                 problem.SoilBottomSlope(run.side, layer) * point.x + SameElevation;
        });
        if (rises) {
            run.writer.paragraph("Approximation: layer " + std::to_string(layer) + " ends " +
                                 run.writer.withUnit(Quantity::Length, reach) +
                                 " from the wall, where the ground first comes down to its bottom; "
                                 "ground that rises above it farther out counts as the layer "
                                 "below.");
        }
    }
}

/// Share of a force that rounding may make up before its digits count for nothing.
constexpr double LostForce = 1e-3;

void writeSenseless(const WedgeRun& run, const ElevationRanges& ranges, bool active) {
    const std::string where = ranges.text(run.request.units);
    if (!where.empty()) {
        run.writer.paragraph(
            std::string("Without a meaning: on the governing ") + (active ? "active" : "passive") +
            " plane a divisor (A of an outer piece, or D at the wall) vanishes but "
            "for rounding, and the force is what rounding makes of the quotient; "
            "its check allows for that. So at " +
            where + ".");
    }
}

void checkPlanes(const WedgeRun& run) {
    const double lowest = lowestElev(run.stage);
    WorstCheck weight("Weight of the soil on planes, " + run.place(), Quantity::Force);
    WorstCheck load("Loads on planes, " + run.place(), Quantity::Force);
    WorstCheck active("Active force on the wall, " + run.place(), Quantity::Force);
    WorstCheck passive("Passive force on the wall, " + run.place(), Quantity::Force);
    WorstCheck friction("Friction on planes by the polygon of forces, " + run.place(),
                        Quantity::Number);
    WorstCheck onWall("Mean developed wall friction, " + run.place(), Quantity::Angle);
    ElevationRanges noActive;
    ElevationRanges noPassive;
    for (const WedgeRow& row : run.wedge.rows) {
        if (row.elev < lowest) {
            break;
        }
        const std::string at = run.at(row.elev);
        for (const bool isActive : {true, false}) {
            const WedgePlane& plane = isActive ? row.active : row.passive;
            if (!plane.found) {
                continue;
            }
            const std::vector<WedgePiece> pieces = piecesOf(run, plane);
            double outer = 0;
            double lostOutside = 0;
            for (const WedgePiece& piece : pieces) {
                weight.add(soilWeight(run.problem(), run.stage, run.side, piece), piece.soil, at);
                load.add(loadWeight(run.problem(), run.side, piece), piece.surcharge, at);
                if (&piece != &pieces.back()) {
                    const PieceSymbols outside(piece, isActive);
                    outer += outside.outward().value();
                    lostOutside += outside.lostOutward();
                }
            }
            const PieceSymbols symbols(pieces.back(), isActive);
            const WallStrengths wall =
                wallTerms(run.request, run.stage, run.side, row.elev, isActive);
            const WallForce force = wallForce(symbols, outer, wall, lostOutside);
            // Each by itself: a force that is rounding alone would hide all others.
            (isActive ? active : passive)
                .addAlone(force.horizontal.value(), plane.force, at, 0, force.lost);
            onWall.add(wall.friction, plane.wallFriction, at);
            const ReactionTangent tangent = reactionTangent(
                forcePolygon(symbols, outer, wall, force.P.value()), symbols, force.lost);
            if (!tangent.none) {
                friction.addAlone(tangent.value, pieces.back().friction, at, 0, tangent.lost);
            }
            (isActive ? noActive : noPassive)
                .add(row.elev, force.lost > LostForce * std::abs(plane.force));
        }
    }
    writeSenseless(run, noActive, true);
    writeSenseless(run, noPassive, false);
    weight.tell(run.writer);
    load.tell(run.writer, 1e-6, 1);
    active.tell(run.writer, 1e-6, 1);
    passive.tell(run.writer, 1e-6, 1);
    friction.tell(run.writer, 1e-6, 1);
    onWall.tell(run.writer, 1e-6, 1);
}

/// Rows that the wedge method itself has worked out, from the surface down to the bottom.
std::vector<const WedgePressureRow*> forceRows(const WedgeRun& run) {
    std::vector<const WedgePressureRow*> rows;
    for (const WedgePressureRow& row : run.wedge.pressures) {
        if (!row.inserted) {
            rows.push_back(&row);
        }
    }
    return rows;
}

/// The slope of the parabola through three points of the force curve.
Expr forceSlope(const WedgePressureRow& above, const WedgePressureRow& row,
                const WedgePressureRow& below, bool active) {
    const auto force = [&](const char* index, const WedgePressureRow& at) {
        return term("E", index, active ? at.activeForce : at.passiveForce, Quantity::Force);
    };
    const Expr h1 = term("h", "1", above.elev - row.elev, Quantity::Length);
    const Expr h2 = term("h", "2", row.elev - below.elev, Quantity::Length);
    const Expr g1 = (force("2", row) - force("1", above)) / h1;
    const Expr g2 = (force("3", below) - force("2", row)) / h2;
    return (h2 * g1 + h1 * g2) / (h1 + h2);
}

void writeSlopes(const WedgeRun& run) {
    SheetWriter& writer = run.writer;
    const std::vector<const WedgePressureRow*> rows = forceRows(run);
    WorstCheck active("Active pressure from forces, " + run.place(), Quantity::Stress);
    WorstCheck passive("Passive pressure from forces, " + run.place(), Quantity::Stress);
    const double lowest = lowestElev(run.stage);
    writer.subheading("Pressures from forces");
    writer.paragraph("The pressure is the rate at which the force grows with depth: the slope of "
                     "the parabola through the forces of a row and its neighbours, E1 above, E2 at "
                     "the row, E3 below.");
    const double surface = run.problem().SurfaceElev(run.side, 1);
    bool shown = false;
    for (std::size_t n = 1; n + 1 < rows.size(); ++n) {
        const double elev = rows[n]->elev;
        if (rows[n + 1]->elev < lowest - 1) {
            break;
        }
        const Expr slopeA = forceSlope(*rows[n - 1], *rows[n], *rows[n + 1], true);
        const Expr slopeP = forceSlope(*rows[n - 1], *rows[n], *rows[n + 1], false);
        active.add(slopeA.value(), rows[n]->activeBefore(1), run.at(elev));
        passive.add(slopeP.value(), rows[n]->passiveBefore(1), run.at(elev));
        if (!shown && elev <= (surface + lowest) / 2) {
            const std::string label = elevationText(elev, run.request.units) + ":";
            writer.formula({"p", "a"}, slopeA, Quantity::Stress, label);
            writer.numbers({"p", "p"}, slopeP, Quantity::Stress, label);
            shown = true;
        }
    }
    active.tell(writer);
    passive.tell(writer);
}

/// The row of the grid at an elevation, above the bottom of the wall; 0 without one.
int gridRow(const PressureStage& stage, double elev) {
    const ElevationGrid& grid = stage.diagrams.grid;
    for (int i = 2; i < grid.NumElevs; ++i) {
        if (grid.ElevGrid(i) == elev) {
            return i;
        }
    }
    return 0;
}

/// The vertical effective stress down the wall, and the rows that the rules change.
void writeRules(const WedgeRun& run) {
    SheetWriter& writer = run.writer;
    const Problem& problem = run.problem();
    WorstCheck floor("Effective stress, floor of the passive pressure, " + run.place(),
                     Quantity::Stress);
    WorstCheck passive("Passive pressure in force, " + run.place(), Quantity::Stress);
    WorstCheck active("Active pressure in force, " + run.place(), Quantity::Stress);
    ElevationRanges raised;
    ElevationRanges cut;
    const double lowest = lowestElev(run.stage);
    double stress = problem.VUniformCount(run.side) != 0 ? problem.VUniformLoad(run.side) : 0;
    const WedgePressureRow* above = nullptr;
    int layer = 1;
    for (const WedgePressureRow& row : run.wedge.pressures) {
        if (row.elev < lowest - SameElevation) {
            break;
        }
        const std::string at = run.at(row.elev);
        if (above != nullptr) {
            if (layer < problem.SoilLayerCount(run.side) &&
                row.elev < problem.SoilBottomElev(run.side, layer)) {
                ++layer;
            }
            PressureStage stage;
            stage.gradient = run.stage.gradient;
            // Exactly at the end of seepage a row is outside of it here.
            stage.seepageEnd =
                row.elev == run.stage.seepageEnd ? row.elev + SameElevation : run.stage.seepageEnd;
            const WaterShare water = waterShare(problem, stage, run.side, row.elev);
            const double weight = water.wet ? problem.SoilSatWeight(run.side, layer)
                                            : problem.SoilMoistWeight(run.side, layer);
            stress += (above->elev - row.elev) * (weight - water.weight.value());
            floor.add(stress, row.effective, at);
            const int inForce = gridRow(run.stage, row.elev);
            if (!row.inserted && inForce != 0) {
                const Pressures& pressures = run.stage.diagrams.pressures;
                passive.add(std::max(stress, row.passiveBefore(2)),
                            pressures.PassivePressures(run.side, inForce, 2), at);
                active.add(std::max(0.0, row.activeBefore(2)),
                           pressures.ActivePressures(run.side, inForce, 2), at);
            }
        }
        raised.add(row.elev, row.raised(1) || row.raised(2));
        cut.add(row.elev, row.tensionCut(1) || row.tensionCut(2));
        above = &row;
    }
    floor.tell(writer);
    passive.tell(writer);
    active.tell(writer, 1e-6, 1);
    const auto tell = [&](const ElevationRanges& ranges, const std::string& text) {
        const std::string where = ranges.text(run.request.units);
        if (!where.empty()) {
            writer.paragraph(text + where + ".");
        }
    };
    tell(cut, "Soil cannot pull at the wall: a falling active force counts as no pressure, at ");
    tell(raised, "Passive pressure is held at or above the vertical effective stress; that floor "
                 "acts at ");
}

} // namespace

void writeWedges(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
                 int side, bool first) {
    const WedgeDetails& wedge = stage.details->sides(side).wedge;
    const WedgeRun run{writer, request, stage, side, wedge};
    if (wedge.rows.empty()) {
        writer.paragraph("The wedge method has not come to forces.");
        return;
    }
    writeSurface(run);
    writer.subheading("Planes");
    if (first) {
        writeForceDefinitions(writer);
    }
    writeReach(run);
    for (const WedgeRow* row : shownRows(run)) {
        writer.subheading(
            "Planes from " + elevationText(row->elev, request.units) + ": active at " +
            quantityText(Quantity::Angle, row->active.angle, request.units) + "°, passive at " +
            quantityText(Quantity::Angle, row->passive.angle, request.units) +
            "° off the vertical");
        writePieces(run, *row);
        if (run.isSame()) {
            writer.paragraph("By the same formulas the forces on the wall are " +
                             writer.withUnit(Quantity::Force, row->active.force) + " active and " +
                             writer.withUnit(Quantity::Force, row->passive.force) + " passive.");
        } else {
            writePlane(run, *row, true);
            writePlane(run, *row, false);
        }
    }
    checkPlanes(run);
    writeSlopes(run);
    writeRules(run);
}

} // namespace korvane::sheet
