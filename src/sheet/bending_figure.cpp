#include "sheet/bending_figure.h"

#include "sheet/load_shapes.h"
#include "sheet/sheet_writer.h"
#include "sheet/statics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace korvane::sheet {

namespace {

// Pixels
constexpr double PanelWidth = 172;
constexpr double PanelGap = 14;
constexpr double PanelHeight = 330;
constexpr double Inset = 8;     // between a panel's edge and the largest value
constexpr double CurveStep = 6; // between points of a curve, at most
constexpr double TickLength = 4;
constexpr double Radius = 3;
constexpr double LabelOffset = 8; // from a marked point to its label
constexpr int ElevationTicks = 9;

/// An opposite extreme smaller than this share of the largest is not marked.
constexpr double MarkedShare = 0.02;

/// A value along the wall.
struct CurvePoint {
    double elev = 0; ///< FT
    double value = 0;
};

struct Panel {
    const char* title;
    Quantity quantity;
    std::vector<CurvePoint> curve;
    Extreme largest; ///< of the solution
};

struct Frame {
    const SheetRequest& request;
    const LevelResult& level;
    double top = 0;    ///< FT
    double bottom = 0; ///< FT
    Svg svg;
    std::vector<FigureLabel> labels;

    double y(double elev) const { return (top - elev) / (top - bottom) * PanelHeight; }
    static double left(int panel) { return panel * (PanelWidth + PanelGap); }
    static double width() { return left(2) + PanelWidth; }
    double told(Quantity quantity, double value) const {
        return inUnits(quantity, value, request.units);
    }
};

// ---- curves
// --------------------------------------------------------------------------------------

/// Elevations between which every curve is smooth and short.
std::vector<double> curveElevations(const Frame& frame, const WallLoading& loading) {
    std::vector<double> breaks;
    for (const LoadPiece& piece : loading.pieces) {
        breaks.push_back(piece.top);
    }
    for (const PointForce& line : loading.lines) {
        breaks.push_back(std::min(line.elev, loading.top));
    }
    breaks.push_back(loading.bottom);
    std::sort(breaks.rbegin(), breaks.rend());
    std::vector<double> elevations;
    for (std::size_t i = 0; i < breaks.size(); ++i) {
        if (i > 0) {
            const double length = frame.y(breaks[i]) - frame.y(breaks[i - 1]);
            const int steps = static_cast<int>(std::ceil(length / CurveStep));
            for (int step = 1; step < steps; ++step) {
                elevations.push_back(breaks[i - 1] + (breaks[i] - breaks[i - 1]) * step / steps);
            }
        }
        elevations.push_back(breaks[i]);
    }
    return elevations;
}

/// Shear, moment and deflection of a level.
std::vector<Panel> panelsOf(const Frame& frame) {
    const Problem& problem = frame.request.problem;
    const LevelResult& level = frame.level;
    const WallLoading loading = heldLoading(problem, level);
    const MomentAreas areas(loading);
    const double scale = deflectionScale(problem);
    const bool scaled = problem.ProgramMode != Mode::Analysis;
    std::vector<Panel> panels{{"Shear", Quantity::Force, {}, level.maxShear},
                              {"Moment", Quantity::Moment, {}, level.diagrams.MaxMoment},
                              {scaled ? "Deflection times EI" : "Deflection",
                               scaled ? Quantity::ScaledDeflection : Quantity::Deflection,
                               {},
                               level.diagrams.MaxDeflection}};
    for (Panel& panel : panels) { // fixed earth support tells its last row where the grid has it
        panel.largest.elev = std::max(panel.largest.elev, level.bottomElev);
    }
    for (const double elev : curveElevations(frame, loading)) {
        panels[0].curve.push_back({elev, shearAbove(loading, elev)});
        panels[0].curve.push_back({elev, shearBelow(loading, elev)});
        panels[1].curve.push_back({elev, momentAt(loading, elev)});
        panels[2].curve.push_back(
            {elev, scale * deflectionAt(level.method, areas, elev, loading.anchorElev)});
    }
    return panels;
}

// ---- drawing
// -------------------------------------------------------------------------------------

/// Horizontal scale of a panel, zero included.
struct ValueScale {
    double left = 0; ///< x
    double low = 0;
    double high = 1;

    double x(double value) const {
        return left + Inset + (value - low) / (high - low) * (PanelWidth - 2 * Inset);
    }
};

ValueScale scaleOf(const Frame& frame, const Panel& panel, double left) {
    ValueScale scale{left, 0, 0};
    const auto take = [&](double value) {
        const double told = frame.told(panel.quantity, value);
        scale.low = std::min(scale.low, told);
        scale.high = std::max(scale.high, told);
    };
    for (const CurvePoint& point : panel.curve) {
        take(point.value);
    }
    take(panel.largest.value);
    if (scale.low == scale.high) {
        scale.high = 1;
    }
    return scale;
}

/// The numbers of ticks; those of the outermost stay within the panel.
std::vector<FigureLabel> tickLabels(const ValueScale& scale, const std::vector<double>& ticks) {
    std::vector<FigureLabel> labels;
    for (const double tick : ticks) {
        const std::string text = tickText(tick);
        const double half = textWidth(text, FigureType) / 2;
        const double middle =
            std::clamp(scale.x(tick), scale.left + half, scale.left + PanelWidth - half);
        labels.push_back({labelBox({text}, {middle, PanelHeight + TickLength}, TextAnchor::Middle),
                          {text},
                          TextAnchor::Middle,
                          {},
                          "axisname"});
    }
    return labels;
}

bool haveRoom(const std::vector<FigureLabel>& labels) {
    for (std::size_t i = 1; i < labels.size(); ++i) {
        if (labels[i].box.left < labels[i - 1].box.right()) {
            return false;
        }
    }
    return true;
}

/// Ticks as many as have room for their numbers.
void drawTicks(Frame& frame, const ValueScale& scale) {
    constexpr int mostTicks = 5;
    std::vector<double> ticks;
    std::vector<FigureLabel> labels;
    int most = mostTicks;
    do {
        ticks = roundTicks(scale.low, scale.high, most);
        labels = tickLabels(scale, ticks);
    } while (!haveRoom(labels) && --most > 0);
    for (const double tick : ticks) {
        const double x = scale.x(tick);
        frame.svg.line({x, 0}, {x, PanelHeight}, tick == 0 ? "axis" : "grid");
    }
    frame.labels.insert(frame.labels.end(), labels.begin(), labels.end());
}

/// The diagram down from the axis and back to it.
void drawCurve(Frame& frame, const Panel& panel, const ValueScale& scale) {
    constexpr double unseen = 0.05; // pixels
    std::vector<SvgPoint> outline{{scale.x(0), frame.y(panel.curve.front().elev)}};
    for (const CurvePoint& point : panel.curve) {
        outline.push_back({scale.x(frame.told(panel.quantity, point.value)), frame.y(point.elev)});
    }
    outline.push_back({scale.x(0), outline.back().y});
    frame.svg.polygon(withoutStraightOnes(outline, unseen), "curve");
}

/// The largest value, and that of the other sign.
std::vector<CurvePoint> extremesOf(const Panel& panel) {
    std::vector<CurvePoint> extremes{{panel.largest.elev, panel.largest.value}};
    CurvePoint other;
    for (const CurvePoint& point : panel.curve) {
        if (point.value * panel.largest.value < 0 &&
            std::fabs(point.value) > std::fabs(other.value)) {
            other = point;
        }
    }
    if (std::fabs(other.value) > MarkedShare * std::fabs(panel.largest.value)) {
        extremes.push_back(other);
    }
    return extremes;
}

void markExtremes(Frame& frame, const Panel& panel, const ValueScale& scale) {
    std::vector<CurvePoint> extremes = extremesOf(panel);
    std::sort(extremes.begin(), extremes.end(),
              [](const CurvePoint& a, const CurvePoint& b) { return a.elev > b.elev; });
    std::vector<LabelSlot> slots;
    slots.reserve(extremes.size());
    for (const CurvePoint& point : extremes) {
        slots.push_back({frame.y(point.elev), 2 * FigureLine + 2});
    }
    const auto middles = spreadSlots(slots, 0, PanelHeight);
    for (std::size_t i = 0; i < extremes.size(); ++i) {
        const CurvePoint& point = extremes[i];
        const SvgPoint at{scale.x(frame.told(panel.quantity, point.value)), frame.y(point.elev)};
        const std::vector<std::string> lines{
            quantityText(panel.quantity, point.value, frame.request.units),
            "at " + figureText(Quantity::Length, point.elev, frame.request.units)};
        LabelBox box = labelBox(lines, {0, middles[i] - FigureLine}, TextAnchor::Start);
        const bool toRight = at.x < scale.left + PanelWidth / 2;
        const double wanted = toRight ? at.x + LabelOffset : at.x - LabelOffset - box.width;
        box.left = std::clamp(wanted, scale.left + 1, scale.left + PanelWidth - box.width - 1);
        frame.svg.circle(at, Radius, "extreme");
        frame.labels.push_back({box, lines, TextAnchor::Start, {}, "over"});
    }
}

void drawPanel(Frame& frame, const Panel& panel, int number) {
    const double left = Frame::left(number);
    const ValueScale scale = scaleOf(frame, panel, left);
    frame.svg.polygon(
        {{left, 0}, {left + PanelWidth, 0}, {left + PanelWidth, PanelHeight}, {left, PanelHeight}},
        "panel");
    drawTicks(frame, scale);
    drawCurve(frame, panel, scale);
    frame.svg.line({scale.x(0), 0}, {scale.x(0), PanelHeight}, "axis");
    markExtremes(frame, panel, scale);
    const std::string unit = unitMarkup(panel.quantity, frame.request.units);
    const std::vector<std::string> title{std::string(panel.title) + ", " + unit};
    frame.labels.push_back({labelBox(title, {left, -FigureLine - TickLength}, TextAnchor::Start),
                            title,
                            TextAnchor::Start,
                            {},
                            "name"});
}

/// Elevations at the left edge.
void drawElevations(Frame& frame) {
    const UnitSystem units = frame.request.units;
    const double oneUnit = inUnits(Quantity::Length, 1, units);
    std::vector<std::vector<SvgPoint>> grid;
    std::vector<std::vector<SvgPoint>> marks;
    for (const double tick :
         roundTicks(frame.bottom * oneUnit, frame.top * oneUnit, ElevationTicks)) {
        const double y = frame.y(tick / oneUnit);
        for (int panel = 0; panel < 3; ++panel) {
            grid.push_back({{Frame::left(panel), y}, {Frame::left(panel) + PanelWidth, y}});
        }
        marks.push_back({{-TickLength, y}, {0, y}});
        const std::vector<std::string> lines{tickText(tick)};
        frame.labels.push_back(
            {labelBox(lines, {-2 * TickLength, y - FigureLine / 2}, TextAnchor::End),
             lines,
             TextAnchor::End,
             {},
             "axisname"});
    }
    frame.svg.lines(grid, "grid");
    frame.svg.lines(marks, "axis");
}

/// What stands at named elevations, in the column at the right edge.
void drawLevels(Frame& frame) {
    const Problem& problem = frame.request.problem;
    std::vector<ColumnLabel> labels;
    const auto add = [&](const std::string& name, double elev) {
        if (elev > frame.top || elev < frame.bottom) {
            return;
        }
        const double y = frame.y(elev);
        frame.svg.line({0, y}, {Frame::width(), y}, "level");
        labels.push_back({{Frame::width(), y},
                          {name + " " + figureText(Quantity::Length, elev, frame.request.units)}});
    };
    add("Top", problem.WallTopElev);
    if (problem.WallType == WallKind::Anchored) {
        add("Anchor", problem.AnchorElev);
    } else {
        add("Transition", frame.level.transitionElev);
    }
    add("Lower ground", std::min(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1)));
    add("Bottom", frame.level.bottomElev);
    const auto placed = placeColumn(labels, {Frame::width(), true, 0, PanelHeight});
    frame.labels.insert(frame.labels.end(), placed.begin(), placed.end());
}

} // namespace

Figure bendingFigure(const SheetRequest& request, const LevelResult& level) {
    Frame frame{.request = request,
                .level = level,
                .top = level.diagrams.ResultElev(1),
                .bottom = level.bottomElev,
                .svg = {},
                .labels = {}};
    drawElevations(frame);
    const auto panels = panelsOf(frame);
    for (std::size_t i = 0; i < panels.size(); ++i) {
        drawPanel(frame, panels[i], static_cast<int>(i));
    }
    drawLevels(frame);
    drawLabels(frame.svg, frame.labels);
    Figure figure;
    figure.view = viewOf(Frame::width(), PanelHeight, frame.labels);
    figure.labels = std::move(frame.labels);
    figure.svg = frame.svg.finish(figure.view, "bending", "Shear, moment and deflection");
    return figure;
}

} // namespace korvane::sheet
