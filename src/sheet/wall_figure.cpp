#include "sheet/wall_figure.h"

#include "pressures/water_pressures.h"
#include "sheet/load_shapes.h"
#include "sheet/wall_labels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace korvane::sheet {

namespace {

// Pixels
constexpr double TextGap = 4; // between leader and text
constexpr double TrackHeight = 24;
constexpr double ShapeHeight = 17; // of the largest distributed load
constexpr double LeastShape = 5;
constexpr double LineArrow = 20;
constexpr double ArrowSpacing = 26;
constexpr double AboveGround = 3; // between ground and loads
constexpr double Margin = 6;
constexpr double WallHalf = 2.5;
constexpr int PatternFamilies = 3;
constexpr int PatternsOfFamily = 4;

// ---- hatches
// -------------------------------------------------------------------------------------

struct PatternRow {
    const char* size;
    const char* marks;
};

/// Marks that stay apart without colour, a row for each family: soils with friction alone are
/// dotted, soils with cohesion alone have strokes, the others both.
constexpr PatternRow Patterns[PatternFamilies][PatternsOfFamily] = {
    {{"8", R"(<circle cx="2" cy="2" r=".8"/><circle cx="6" cy="6" r=".8"/>)"},
     {"10", R"(<circle cx="2.5" cy="2.5" r="1.5" fill="none"/>)"},
     {"9", R"(<path d="M2 4.5h5M4.5 2v5"/>)"},
     {"13", R"(<circle cx="3" cy="3" r="1.3"/><circle cx="9.5" cy="9.5" r=".7"/>)"}},
    {{"8", R"(<path d="M-1 9L9-1"/>)"},
     {"9", R"(<path d="M0 3h5M4 7.5h5"/>)"},
     {"8", R"(<path d="M-1-1L9 9"/>)"},
     {"10", R"(<path d="M0 6q2.5-4 5 0t5 0" fill="none"/>)"}},
    {{"12",
      R"(<path d="M-1 13L13-1"/><circle cx="3" cy="3" r=".9"/><circle cx="9" cy="9" r=".9"/>)"},
     {"12", R"(<path d="M1 3h6"/><circle cx="9" cy="9" r=".9"/><circle cx="3" cy="9" r=".9"/>)"},
     {"12",
      R"(<path d="M-1-1L13 13"/><circle cx="9" cy="3" r=".9"/><circle cx="3" cy="9" r=".9"/>)"},
     {"9", R"(<path d="M0 0L9 9M0 9L9 0"/>)"}},
};

/// A hatch in use. Soils beyond the patterns of their family take them again, turned and larger.
struct Hatch {
    int family = 0;
    int number = 0; ///< from 0 within the family

    std::string name() const {
        return "soil" + std::to_string(family + 1) + "-" + std::to_string(number + 1);
    }
    std::string markup() const;
};

std::string Hatch::markup() const {
    const auto& [size, marks] = Patterns[family][number % PatternsOfFamily];
    const int turn = number / PatternsOfFamily;
    constexpr int degrees = 30;
    constexpr double growth = 0.35;
    const std::string transform = turn == 0 ? ""
                                            : " patternTransform=\"rotate(" +
                                                  std::to_string(turn * degrees) + ") scale(" +
                                                  svgNumber(1 + turn * growth) + ")\"";
    return "<pattern id=\"" + name() +
           "\" patternUnits=\"userSpaceOnUse\" class=\"hatch\" width=\"" + size + "\" height=\"" +
           size + "\"" + transform + ">" + marks + "</pattern>\n";
}

/// What tells a soil from another one.
std::array<double, 8> soilData(const Problem& problem, int side, int layer) {
    const double weights[] = {problem.SoilSatWeight(side, layer),
                              problem.SoilMoistWeight(side, layer)};
    if (problem.SoilDataKind(side) == SoilData::Coefficients) {
        return {weights[0], weights[1], problem.SoilCoefActive(side, layer),
                problem.SoilCoefPassive(side, layer)};
    }
    return {weights[0],
            weights[1],
            0,
            0,
            problem.SoilFriction(side, layer),
            problem.SoilCohesion(side, layer),
            problem.SoilWallFriction(side, layer),
            problem.SoilAdhesion(side, layer)};
}

int familyOf(const std::array<double, 8>& soil) {
    const double friction = soil[4];
    const double cohesion = soil[5];
    return cohesion == 0 ? 0 : friction == 0 ? 1 : 2;
}

/// A hatch for each soil; layers of the same data share one.
Array<Hatch, 2, 11> soilHatches(const Problem& problem) {
    Array<Hatch, 2, 11> hatches;
    std::map<std::array<double, 8>, Hatch> known;
    std::array<int, PatternFamilies> used{};
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const auto soil = soilData(problem, side, layer);
            const int family = familyOf(soil);
            const auto [place, isNew] =
                known.try_emplace(soil, Hatch{family, used[static_cast<std::size_t>(family)]});
            used[static_cast<std::size_t>(family)] += isNew ? 1 : 0;
            hatches(side, layer) = place->second;
        }
    }
    return hatches;
}

// ---- the scene
// -------------------------------------------------------------------------------------

/// What is drawn on, and what everybody must know of it.
struct Scene {
    const SheetRequest& request;
    const Problem& problem;
    WallView view;
    Array<std::vector<GroundLoad>, 2> loads;
    Array<Hatch, 2, 11> hatches; ///< (side, layer)
    double zoneBottom = 0;       ///< y; the labels of ground loads stand above it
    Svg svg;
    std::vector<FigureLabel> labels;
};

int outwards(int side) {
    return side == Right ? 1 : -1;
}

/// y of a track's base line: clear of the highest ground in view and of the wall's top.
double trackBase(const Scene& scene, int side, int track) {
    const double ground = highestGround(scene.problem, side, scene.view.reach(side));
    return scene.view.y(ground) - AboveGround - track * TrackHeight;
}

double shapeHeight(const GroundLoad& load, double distance, double largest) {
    if (load.isLine) {
        return LineArrow;
    }
    const double share = largest > 0 ? load.intensityAt(distance) / largest : 0;
    return share <= 0 ? 0 : std::max(LeastShape, share * ShapeHeight);
}

double largestLoad(const Scene& scene) {
    return std::max(largestIntensity(scene.loads(Right)), largestIntensity(scene.loads(Left)));
}

// ---- soil and water
// ------------------------------------------------------------------------------

void drawSoil(Scene& scene, int side) {
    const auto points = [&](const std::vector<SvgPoint>& places) {
        std::vector<SvgPoint> list;
        list.reserve(places.size());
        for (const SvgPoint& place : places) {
            list.push_back(scene.view.at(side, place.x, place.y));
        }
        return list;
    };
    for (const SoilShape& shape : soilShapes(scene.problem, side, scene.view)) {
        auto outline = points(shape.upper);
        const auto lower = points(shape.lower);
        outline.insert(outline.end(), lower.rbegin(), lower.rend());
        scene.svg.polygon(outline, "soil", "url(#" + scene.hatches(side, shape.layer).name() + ")");
        scene.svg.polyline(points(shape.upper), shape.layer == 1 ? "ground" : "layer");
    }
}

/// The water level with its usual sign, a triangle that stands on it.
void drawWater(Scene& scene, int side) {
    const Problem& problem = scene.problem;
    if (problem.WaterDataKind != WaterData::Elevations) {
        return;
    }
    const double y = scene.view.y(problem.WaterElev(side));
    const double wall = scene.view.wallX();
    const double edge = scene.view.edge(side);
    const double x = wall + 0.55 * (edge - wall);
    scene.svg.polygon(
        {{wall, y}, {edge, y}, {edge, scene.view.height() + 1}, {wall, scene.view.height() + 1}},
        "wet");
    scene.svg.line({wall, y}, {edge, y}, "water");
    scene.svg.polygon({{x, y}, {x - 5, y - 8}, {x + 5, y - 8}}, "water head");
    scene.svg.line({x - 5, y + 3}, {x + 5, y + 3}, "water");
    scene.svg.line({x - 2.5, y + 6}, {x + 2.5, y + 6}, "water");
}

/// Water runs down the right face, around the bottom and up the left face.
void drawSeepage(Scene& scene) {
    if (!hasSeepage(scene.problem)) {
        return;
    }
    const WallView& view = scene.view;
    const double right = view.wallX() + SeepageOffset;
    const double left = view.wallX() - SeepageOffset;
    const double foot = view.y(view.wallBottom) + SeepageOffset;
    const double exit = view.y(seepageExitElev(scene.problem));
    scene.svg.polyline({{right, view.y(scene.problem.SeepageElev)},
                        {right, foot - SeepageOffset},
                        {right - 3, foot - 3},
                        {view.wallX(), foot},
                        {left + 3, foot - 3},
                        {left, foot - SeepageOffset}},
                       "seepage");
    scene.svg.arrow({left, foot - SeepageOffset}, {left, exit}, "seepage");
}

// ---- wall
// ----------------------------------------------------------------------------------------

void drawWall(Scene& scene) {
    const WallView& view = scene.view;
    const double x = view.wallX();
    const double top = view.y(scene.problem.WallTopElev);
    const auto bottoms = wallBottoms(scene.request);
    double solid = view.height();
    for (const WallBottom& bottom : bottoms) {
        solid = std::min(solid, view.y(bottom.elev));
    }
    const auto box = [&](double from, double to, std::string_view cssClass) {
        scene.svg.polygon(
            {{x - WallHalf, from}, {x + WallHalf, from}, {x + WallHalf, to}, {x - WallHalf, to}},
            cssClass);
    };
    if (bottoms.empty()) { // nobody knows how deep it goes
        box(top, view.y(view.wallBottom), "wall open");
        return;
    }
    box(top, solid, "wall");
    for (const WallBottom& bottom : bottoms) {
        const double y = view.y(bottom.elev);
        if (y > solid) {
            box(solid, y, "wall open");
        }
        scene.svg.line({x - 9, y}, {x + 9, y}, "mark");
    }
}

void drawAnchor(Scene& scene) {
    if (scene.problem.WallType != WallKind::Anchored) {
        return;
    }
    const SvgPoint block =
        scene.view.at(Right, AnchorBlock * scene.view.reach(Right), scene.problem.AnchorElev);
    const SvgPoint head{scene.view.wallX(), block.y};
    scene.svg.line({head.x + WallHalf, head.y}, block, "anchor");
    scene.svg.polygon({{block.x, block.y - 7},
                       {block.x + 4, block.y - 7},
                       {block.x + 4, block.y + 7},
                       {block.x, block.y + 7}},
                      "anchor head");
    scene.svg.circle(head, 3.5, "anchor head");
}

using ArrowEnds = std::vector<std::pair<SvgPoint, SvgPoint>>;

/// Pressures given along the wall, as a diagram beside it with arrows onto it.
void drawOnWall(Scene& scene, const std::vector<SvgPoint>& table, const std::string& cssClass,
                bool runsOn) {
    double largest = 0;
    for (const SvgPoint& point : table) {
        largest = std::max(largest, std::fabs(point.y));
    }
    if (largest == 0) {
        return;
    }
    const double x = scene.view.wallX();
    const auto out = [&](double pressure) { return x + pressure / largest * WallDiagram; };
    std::vector<SvgPoint> outline{{x, scene.view.y(table.front().x)}};
    for (const SvgPoint& point : table) {
        outline.push_back({out(point.y), scene.view.y(point.x)});
    }
    if (runsOn) {
        outline.push_back({outline.back().x, scene.view.y(scene.view.wallBottom)});
    }
    outline.push_back({x, outline.back().y});
    scene.svg.polygon(outline, cssClass + " shape");
    ArrowEnds arrows;
    for (const SvgPoint& point : table) {
        if (point.y != 0) {
            const double y = scene.view.y(point.x);
            arrows.push_back({{out(point.y), y}, {x + (point.y > 0 ? WallHalf : -WallHalf), y}});
        }
    }
    scene.svg.arrows(arrows, cssClass);
}

void drawLoadsOnWall(Scene& scene) {
    drawOnWall(scene, wallPressureTable(scene.problem), "water", true);
    drawOnWall(scene, wallLoadTable(scene.problem), "load", false);
    ArrowEnds lines;
    for (int i = 1; i <= scene.problem.HLineCount; ++i) {
        const double sign = scene.problem.HLineLoad(i) >= 0 ? 1 : -1;
        const double x = scene.view.wallX();
        const double y = scene.view.y(scene.problem.HLineElev(i));
        lines.push_back({{x + sign * WallArrow, y}, {x + sign * WallHalf, y}});
    }
    scene.svg.arrows(lines, "load strong");
}

// ---- loads on the ground
// -------------------------------------------------------------------------

/// What all loads on the ground have alike.
struct GroundStrokes {
    ArrowEnds lines;
    ArrowEnds arrows;
    std::vector<std::vector<SvgPoint>> dropped;
};

void drawGroundLoad(Scene& scene, int side, const GroundLoad& load, double largest,
                    GroundStrokes& strokes) {
    const double base = trackBase(scene, side, load.track);
    const auto x = [&](double distance) { return scene.view.x(side, distance); };
    if (load.isLine) {
        const double foot = scene.view.y(groundElev(scene.problem, side, load.from()));
        strokes.lines.push_back({{x(load.from()), base - LineArrow}, {x(load.from()), foot}});
        return;
    }
    std::vector<SvgPoint> outline{{x(load.from()), base}};
    for (const SvgPoint& point : load.profile) {
        const double share = largest > 0 ? point.y / largest : 0;
        const double height = share <= 0 ? 0 : std::max(LeastShape, share * ShapeHeight);
        outline.push_back({x(point.x), base - height});
    }
    outline.push_back({x(load.to()), base});
    scene.svg.polygon(outline, "load shape");
    const double length = (load.to() - load.from()) * scene.view.scale;
    const int arrows = std::max(1, static_cast<int>(length / ArrowSpacing));
    for (int i = 0; i < arrows; ++i) {
        const double distance = load.from() + (i + 0.5) / arrows * (load.to() - load.from());
        const double height = shapeHeight(load, distance, largest);
        if (height >= LeastShape) {
            strokes.arrows.push_back({{x(distance), base - height}, {x(distance), base}});
        }
    }
    for (const double end : {load.from(), load.to()}) { // where it stands on falling ground
        const double foot = scene.view.y(groundElev(scene.problem, side, end));
        if (foot > base + TrackHeight / 2) {
            strokes.dropped.push_back({{x(end), base}, {x(end), foot}});
        }
    }
}

/// A label of a ground load before its row is known.
struct Flag {
    SvgPoint tip;
    std::string text;
    int row = 0;
};

/// Rows from the top: a label that would run into the one before it stands lower, so that leaders,
/// which come down at the inner end of each label, cross no other label.
std::vector<Flag> flagsOf(const Scene& scene, int side, double largest) {
    std::vector<Flag> flags;
    for (const GroundLoad& load : scene.loads(side)) {
        for (const LoadLabel& label : load.labels) {
            const double top = load.profile.empty()
                                   ? scene.zoneBottom + TextGap
                                   : trackBase(scene, side, load.track) -
                                         shapeHeight(load, label.distance, largest);
            flags.push_back({{scene.view.x(side, label.distance), top}, label.text});
        }
    }
    std::stable_sort(flags.begin(), flags.end(), [&](const Flag& a, const Flag& b) {
        return outwards(side) * a.tip.x < outwards(side) * b.tip.x;
    });
    double reached = -1e9;
    int row = 0;
    for (Flag& flag : flags) {
        const double start = outwards(side) * flag.tip.x;
        row = start > reached ? 0 : row + 1;
        flag.row = row;
        reached = std::max(reached, start + 2 * TextGap + textWidth(flag.text, FigureType));
    }
    return flags;
}

void placeFlags(Scene& scene, int side, double largest) {
    const std::vector<Flag> flags = flagsOf(scene, side, largest);
    int rows = 0;
    for (const Flag& flag : flags) {
        rows = std::max(rows, flag.row + 1);
    }
    for (const Flag& flag : flags) {
        const double top = scene.zoneBottom - (rows - flag.row) * (FigureLine + 2);
        const TextAnchor anchor = side == Right ? TextAnchor::Start : TextAnchor::End;
        const SvgPoint inner{flag.tip.x + outwards(side) * TextGap, top};
        scene.labels.push_back({labelBox({flag.text}, inner, anchor),
                                {flag.text},
                                anchor,
                                {flag.tip, {flag.tip.x, top + 1}}});
    }
}

// ---- the whole
// -----------------------------------------------------------------------------------

std::string definitions(const Scene& scene) {
    const WallView& view = scene.view;
    std::set<std::string> patterns;
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= scene.problem.SoilLayerCount(side); ++layer) {
            patterns.insert(scene.hatches(side, layer).markup());
        }
    }
    std::string text = "<defs>\n";
    for (const std::string& pattern : patterns) {
        text += pattern;
    }
    text += "<clipPath id=\"wallview\"><rect x=\"0\" y=\"-1000\" width=\"" +
            svgNumber(view.width()) + "\" height=\"" + svgNumber(view.height() + 1000) +
            "\"/></clipPath>\n</defs>\n";
    return text;
}

/// y above which the labels of ground loads stand.
double zoneBottomOf(const Scene& scene) {
    double bottom = 0;
    for (const int side : {Right, Left}) {
        if (const int tracks = trackCount(scene.loads(side)); tracks > 0) {
            bottom = std::min(bottom, trackBase(scene, side, tracks - 1) - LineArrow);
        }
    }
    return bottom - 2 * Margin;
}

void drawScene(Scene& scene) {
    scene.svg.markup(definitions(scene));
    scene.svg.group({}, "wallview");
    for (const int side : {Right, Left}) {
        drawWater(scene, side);
    }
    for (const int side : {Right, Left}) {
        drawSoil(scene, side);
    }
    drawSeepage(scene);
    drawAnchor(scene);
    drawLoadsOnWall(scene);
    drawWall(scene);
    const double largest = largestLoad(scene);
    GroundStrokes strokes;
    for (const int side : {Right, Left}) {
        for (const GroundLoad& load : scene.loads(side)) {
            if (!load.profile.empty()) {
                drawGroundLoad(scene, side, load, largest, strokes);
            }
        }
    }
    scene.svg.arrows(strokes.lines, "load strong");
    scene.svg.arrows(strokes.arrows, "load");
    scene.svg.lines(strokes.dropped, "dropped");
    scene.svg.end();
    drawLabels(scene.svg, scene.labels);
}

} // namespace

Figure wallFigure(const SheetRequest& request) {
    Scene scene{.request = request,
                .problem = request.problem,
                .view = wallView(request),
                .loads = {},
                .hatches = soilHatches(request.problem),
                .svg = {},
                .labels = {}};
    for (const int side : {Right, Left}) {
        scene.loads(side) =
            groundLoads(request.problem, side, scene.view.reach(side), request.units);
    }
    scene.zoneBottom = zoneBottomOf(scene);
    for (const int side : {Right, Left}) {
        placeFlags(scene, side, largestLoad(scene));
        const auto column = placeColumn(
            sideLabels(request, scene.view, side),
            {scene.view.edge(side), side == Right, scene.zoneBottom + Margin, scene.view.height()});
        scene.labels.insert(scene.labels.end(), column.begin(), column.end());
    }
    drawScene(scene);
    Figure figure;
    figure.view = viewOf(scene.view.width(), scene.view.height(), scene.labels);
    figure.labels = std::move(scene.labels);
    figure.svg = scene.svg.finish(figure.view, "wallfigure", "The wall, drawn to scale");
    return figure;
}

} // namespace korvane::sheet
