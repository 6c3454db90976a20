#include "sheet/wall_labels.h"

#include "pressures/water_pressures.h"
#include "sheet/load_shapes.h"

#include <algorithm>
#include <cmath>

namespace korvane::sheet {

bool hasSeepage(const Problem& problem) {
    return problem.WaterDataKind == WaterData::Elevations && problem.SeepageKind != Seepage::None &&
           problem.WaterElev(Right) > problem.WaterElev(Left);
}

std::vector<SvgPoint> wallPressureTable(const Problem& problem) {
    std::vector<SvgPoint> table;
    if (problem.WaterDataKind == WaterData::Pressures) {
        for (int i = 1; i <= problem.WaterPressCount; ++i) {
            table.push_back({problem.WaterPressElev(i), problem.WaterPressure(i)});
        }
    }
    return table;
}

std::vector<SvgPoint> wallLoadTable(const Problem& problem) {
    std::vector<SvgPoint> table;
    for (int i = 1; i <= problem.HDistCount; ++i) {
        table.push_back({problem.HDistElev(i), problem.HDistLoad(i)});
    }
    return table;
}

namespace {

/// Gathers the labels of one side.
class SideLabels {
  public:
    SideLabels(const SheetRequest& request, const WallView& view, int side)
        : request_(request), problem_(request.problem), view_(view), side_(side) {}

    void wall();
    void anchor();
    void ground();
    void water();
    void seepage();
    void layers();
    void loadsOnWall();
    void pressureTable();

    std::vector<ColumnLabel> taken() { return std::move(labels_); }

  private:
    std::string text(Quantity quantity, double value) const {
        return figureText(quantity, value, request_.units);
    }
    std::string plain(Quantity quantity, double value) const {
        return quantityText(quantity, value, request_.units);
    }
    std::string elev(double value) const { return text(Quantity::Length, value); }
    bool shows(double elevation) const { return elevation <= view_.high && elevation >= view_.low; }
    /// A point of the drawing; beyond its edges the nearest one.
    SvgPoint within(SvgPoint point) const {
        return {std::clamp(point.x, 0.0, view_.width()), std::clamp(point.y, 0.0, view_.height())};
    }
    void add(SvgPoint tip, std::vector<std::string> lines) {
        labels_.push_back({within(tip), std::move(lines)});
    }
    std::vector<std::string> layerLines(int layer) const;
    void levelValues(std::vector<std::string>& lines, Quantity quantity,
                     double LevelResult::*value) const;

    const SheetRequest& request_;
    const Problem& problem_;
    const WallView& view_;
    int side_;
    std::vector<ColumnLabel> labels_;
};

void SideLabels::wall() {
    if (side_ != Left) {
        return;
    }
    add({view_.wallX(), view_.y(problem_.WallTopElev)},
        {"Top of wall", elev(problem_.WallTopElev)});
    for (const WallBottom& bottom : wallBottoms(request_)) {
        add({view_.wallX(), view_.y(bottom.elev)},
            {"Bottom" + (bottom.name.empty() ? "" : ", " + bottom.name), elev(bottom.elev)});
    }
}

/// A value of each solved level, named where there are two.
void SideLabels::levelValues(std::vector<std::string>& lines, Quantity quantity,
                             double LevelResult::*value) const {
    if (request_.solved.results == nullptr) {
        return;
    }
    const Results& results = *request_.solved.results;
    for (int level = 1; level <= results.levelCount; ++level) {
        const LevelResult& result = results.levels(level);
        lines.push_back(
            (results.levelCount > 1 ? solutionMethodName(result.method) + std::string(" ") : "") +
            text(quantity, result.*value));
    }
}

void SideLabels::anchor() {
    if (side_ != Right || problem_.WallType != WallKind::Anchored) {
        return;
    }
    std::vector<std::string> lines{"Anchor " + elev(problem_.AnchorElev)};
    levelValues(lines, Quantity::Force, &LevelResult::anchorForce);
    const SvgPoint block = view_.at(Right, AnchorBlock * view_.reach(Right), problem_.AnchorElev);
    add({block.x + 4, block.y}, lines);
}

void SideLabels::ground() {
    const int points = problem_.SurfacePointCount(side_);
    for (int i = 1; i <= points; ++i) {
        const double distance = points == 1 ? view_.reach(side_) : problem_.SurfaceDist(side_, i);
        const double elevation = problem_.SurfaceElev(side_, i);
        if (distance > view_.reach(side_) || (i > 1 && !shows(elevation))) {
            continue;
        }
        const std::string where =
            problem_.SurfaceDist(side_, i) == 0 || points == 1
                ? ""
                : " at " + text(Quantity::Length, problem_.SurfaceDist(side_, i));
        add(view_.at(side_, distance, elevation), {"Ground " + elev(elevation) + where});
    }
}

void SideLabels::water() {
    if (problem_.WaterDataKind == WaterData::Elevations) {
        const double elevation = problem_.WaterElev(side_);
        std::vector<std::string> lines{"Water " + elev(elevation)};
        if (side_ == Right && problem_.WaterElev(Left) == elevation && !hasSeepage(problem_)) {
            lines.push_back(text(Quantity::UnitWeight, problem_.WaterUnitWeight));
        }
        if (shows(elevation)) {
            add({view_.edge(side_), view_.y(elevation)}, lines);
        }
    }
}

void SideLabels::seepage() {
    if (side_ != Right || !hasSeepage(problem_)) {
        return;
    }
    const bool automatic = problem_.SeepageKind == Seepage::Automatic;
    std::vector<std::string> lines{"Seepage from " + elev(problem_.SeepageElev),
                                   automatic ? "gradient found" : "gradient given"};
    if (automatic || request_.solved.results != nullptr) {
        levelValues(lines, Quantity::Gradient, &LevelResult::seepageGradient);
    } else {
        lines.push_back(text(Quantity::Gradient, problem_.SeepageGradient(1)));
    }
    add({view_.wallX() + SeepageOffset, view_.y(problem_.SeepageElev)}, lines);
}

std::vector<std::string> SideLabels::layerLines(int layer) const {
    std::string head = side_ == Right ? "Right " : "Left ";
    head += std::to_string(layer);
    if (layer < problem_.SoilLayerCount(side_)) {
        head += ", to " + elev(problem_.SoilBottomElev(side_, layer));
    }
    std::vector<std::string> lines{head};
    if (problem_.SoilDataKind(side_) == SoilData::Coefficients) {
        lines.push_back("Ka " + plain(Quantity::Number, problem_.SoilCoefActive(side_, layer)) +
                        ", Kp " + plain(Quantity::Number, problem_.SoilCoefPassive(side_, layer)));
    } else {
        std::string strength = "φ " + text(Quantity::Angle, problem_.SoilFriction(side_, layer));
        if (problem_.SoilWallFriction(side_, layer) != 0) {
            strength += ", δ " + text(Quantity::Angle, problem_.SoilWallFriction(side_, layer));
        }
        lines.push_back(strength);
        std::string cohesion = "c " + text(Quantity::Stress, problem_.SoilCohesion(side_, layer));
        if (problem_.SoilAdhesion(side_, layer) != 0) {
            cohesion += ", a " + plain(Quantity::Stress, problem_.SoilAdhesion(side_, layer));
        }
        lines.push_back(cohesion);
    }
    const double moist = problem_.SoilMoistWeight(side_, layer);
    const double saturated = problem_.SoilSatWeight(side_, layer);
    lines.push_back("γ " + (moist == saturated ? "" : plain(Quantity::UnitWeight, moist) + " / ") +
                    text(Quantity::UnitWeight, saturated));
    return lines;
}

void SideLabels::layers() {
    const auto shapes = soilShapes(problem_, side_, view_);
    for (const SoilShape& shape : shapes) {
        add(view_.at(side_, shape.mark.x, shape.mark.y), layerLines(shape.layer));
    }
    if (const int hidden = problem_.SoilLayerCount(side_) - static_cast<int>(shapes.size());
        hidden > 0) {
        add({view_.edge(side_), view_.height()},
            {std::to_string(hidden) + (hidden == 1 ? " layer" : " layers") + " not in view"});
    }
}

void SideLabels::loadsOnWall() {
    const double sign = side_ == Right ? 1 : -1;
    for (int i = 1; i <= problem_.HLineCount; ++i) {
        const double load = problem_.HLineLoad(i);
        const double elevation = problem_.HLineElev(i);
        if ((load >= 0) == (side_ == Right) && shows(elevation)) {
            add({view_.wallX() + sign * WallArrow, view_.y(elevation)},
                {text(Quantity::LineLoad, std::fabs(load)), "at " + elev(elevation)});
        }
    }
    const auto table = wallLoadTable(problem_);
    double largest = 0;
    for (const SvgPoint& point : table) {
        largest = std::max(largest, std::fabs(point.y));
    }
    for (const SvgPoint& point : table) {
        if ((point.y >= 0) == (side_ == Right) && shows(point.x) && largest > 0) {
            add({view_.wallX() + point.y / largest * WallDiagram, view_.y(point.x)},
                {text(Quantity::Stress, std::fabs(point.y)) + " at " + elev(point.x)});
        }
    }
}

/// The largest value alone: the table beside the figure has them all.
void SideLabels::pressureTable() {
    const auto table = wallPressureTable(problem_);
    if (table.empty()) {
        return;
    }
    SvgPoint largest = table.front();
    for (const SvgPoint& point : table) {
        largest = std::fabs(point.y) > std::fabs(largest.y) ? point : largest;
    }
    if ((largest.y >= 0) == (side_ == Right) && largest.y != 0) {
        add({view_.wallX() + (largest.y > 0 ? WallDiagram : -WallDiagram), view_.y(largest.x)},
            {"Net water pressure", text(Quantity::Stress, std::fabs(largest.y)),
             "at " + elev(largest.x)});
    }
}

} // namespace

std::vector<ColumnLabel> sideLabels(const SheetRequest& request, const WallView& view, int side) {
    SideLabels labels(request, view, side);
    labels.wall();
    labels.anchor();
    labels.ground();
    labels.water();
    labels.seepage();
    labels.loadsOnWall();
    labels.pressureTable();
    labels.layers();
    return labels.taken();
}

} // namespace korvane::sheet
