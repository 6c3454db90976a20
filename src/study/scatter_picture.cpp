// The plane of two variables: the sample, the line of a limit state, the design point.
#include "study/pictures.h"

#include "study/chart.h"
#include "study/draws.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace korvane::study {

using namespace sheet;

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t MostPoints = 2000;
/// Cells along each side of the plane in which the line of a limit state is looked for.
constexpr std::size_t Cells = 36;
constexpr int Halvings = 9;
/// A plane without a sample is this share wider than between the 5 and 95 % quantiles.
constexpr double Wider = 0.6;

/// The plane of one limit state; without a limit state of a sample alone.
struct Plane {
    const FinishedStudy& finished;
    const LimitState* limit = nullptr;
    std::array<std::size_t, 2> variables{}; ///< across and up
    std::vector<SvgPoint> safe = {};
    std::vector<SvgPoint> reached = {};
    std::vector<double> others = {}; ///< numbers of all variables along the line
    std::optional<SvgPoint> designPoint = {};
    Axis across = {};
    Axis up = {};

    const Variable& variable(std::size_t n) const { return finished.study.variables[variables[n]]; }
};

/// How much a variable counts, by index of the random ones.
std::vector<double> weightsOf(const FinishedStudy& finished, const LimitState* limit) {
    std::vector<double> weights;
    if (limit != nullptr && finished.study.method == Method::Reliability) {
        for (const std::size_t n : finished.random()) {
            weights.push_back(
                finished.value(limit->name, "importance " + finished.study.variables[n].name));
        }
        if (!weights.empty() && std::isfinite(weights.front())) {
            return weights;
        }
    }
    if (limit != nullptr) {
        weights = sharesOf(finished, limit->name);
        if (!weights.empty() && std::isfinite(weights.front())) {
            return weights;
        }
    }
    const std::vector<std::size_t> outputs = finished.plotted();
    return outputs.empty() ? std::vector<double>(finished.random().size(), 0)
                           : sharesOf(finished, finished.study.outputs[outputs.front()].name);
}

/// The two that count most.
std::array<std::size_t, 2> mostImportant(const FinishedStudy& finished, const LimitState* limit) {
    const std::vector<double> weights = weightsOf(finished, limit);
    std::vector<std::size_t> order(weights.size());
    for (std::size_t n = 0; n < order.size(); ++n) {
        order[n] = n;
    }
    const auto weight = [&](std::size_t n) { return std::isfinite(weights[n]) ? weights[n] : 0; };
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return weight(a) > weight(b); });
    const std::vector<std::size_t> random = finished.random();
    return {random[order[0]], random[order[1]]};
}

void takeSample(Plane& plane) {
    const std::string reached = plane.limit == nullptr ? "0" : quoted(plane.limit->name);
    plane.finished.store.query(
        "SELECT " + quoted(plane.variable(0).name) + ", " + quoted(plane.variable(1).name) + ", " +
            reached + " FROM variants WHERE id < " + std::to_string(MostPoints) + " ORDER BY id",
        [&](const std::vector<double>& row) {
            (row[2] == 1 ? plane.reached : plane.safe).push_back({row[0], row[1]});
        });
}

/// Those of the design point where it is known, else the medians.
void takeOthers(Plane& plane) {
    const Study& study = plane.finished.study;
    const Draws draws(study);
    std::vector<double> drawn;
    draws.fromNormals(std::vector<double>(draws.dimension(), 0.0), drawn);
    plane.others.resize(study.variables.size());
    for (std::size_t n = 0; n < plane.others.size(); ++n) {
        plane.others[n] = study.variables[n].isRandom() ? 0 : study.variables[n].values.front();
    }
    bool isKnown = plane.limit != nullptr;
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        const std::size_t n = draws.variableOf(i);
        const double at = plane.limit == nullptr
                              ? None
                              : plane.finished.value(plane.limit->name,
                                                     "design point " + study.variables[n].name);
        isKnown = isKnown && std::isfinite(at);
        plane.others[n] = std::isfinite(at) ? at : drawn[i];
    }
    if (isKnown) {
        plane.designPoint = {plane.others[plane.variables[0]], plane.others[plane.variables[1]]};
    }
}

Axis axisOf(const Plane& plane, std::size_t which) {
    const auto part = [&](const SvgPoint& at) { return which == 0 ? at.x : at.y; };
    std::vector<double> numbers;
    for (const auto* points : {&plane.safe, &plane.reached}) {
        for (const SvgPoint& at : *points) {
            numbers.push_back(part(at));
        }
    }
    if (numbers.empty()) {
        const DistributionFigures figures = figuresOf(plane.variable(which));
        const double more = Wider * (figures.high - figures.low);
        numbers = {figures.low - more, figures.high + more};
    }
    if (plane.designPoint) {
        numbers.push_back(part(*plane.designPoint));
    }
    return axisOver(titleOf(plane.variable(which), plane.finished.study.units), numbers);
}

/// Whether walls of the plane have reached its limit state.
class StateInPlane {
  public:
    explicit StateInPlane(const Plane& plane)
        : plane_(plane), evaluation_(plane.finished.study), numbers_(plane.others) {}

    /// A place by cells from the left and from below.
    SvgPoint place(SvgPoint cell) const {
        const auto at = [](const Axis& axis, double n) {
            return axis.low + (axis.high - axis.low) * n / double{Cells};
        };
        return {at(plane_.across, cell.x), at(plane_.up, cell.y)};
    }
    bool isReached(SvgPoint cell) {
        const SvgPoint at = place(cell);
        numbers_[plane_.variables[0]] = at.x;
        numbers_[plane_.variables[1]] = at.y;
        evaluation_.solve(numbers_);
        return plane_.limit->reached(evaluation_.limitValues(numbers_));
    }
    /// Where it begins between a place that has reached it and one that has not: margins of
    /// different units are no help, so the way is halved.
    SvgPoint between(SvgPoint reached, SvgPoint safe) {
        for (int n = 0; n < Halvings; ++n) {
            const SvgPoint middle{(reached.x + safe.x) / 2, (reached.y + safe.y) / 2};
            (isReached(middle) ? reached : safe) = middle;
        }
        return place({(reached.x + safe.x) / 2, (reached.y + safe.y) / 2});
    }

  private:
    const Plane& plane_;
    Evaluation evaluation_;
    std::vector<double> numbers_;
};

/// Ends of the straight pieces of a limit state's line, cell by cell.
std::vector<SvgPoint> lineOf(const Plane& plane) {
    StateInPlane state(plane);
    std::vector<bool> reached;
    for (std::size_t n = 0; n < (Cells + 1) * (Cells + 1); ++n) {
        const std::size_t row = n / (Cells + 1);
        reached.push_back(
            state.isReached({static_cast<double>(n % (Cells + 1)), static_cast<double>(row)}));
    }
    constexpr std::array<std::array<std::size_t, 2>, 5> round{
        {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}};
    std::vector<SvgPoint> ends;
    for (std::size_t cell = 0; cell < Cells * Cells; ++cell) {
        for (std::size_t side = 0; side < 4; ++side) {
            const std::size_t fromX = cell % Cells + round[side][0];
            const std::size_t fromY = cell / Cells + round[side][1];
            const std::size_t toX = cell % Cells + round[side + 1][0];
            const std::size_t toY = cell / Cells + round[side + 1][1];
            const bool isReached = reached[fromY * (Cells + 1) + fromX];
            if (isReached != reached[toY * (Cells + 1) + toX]) {
                const SvgPoint from{static_cast<double>(fromX), static_cast<double>(fromY)};
                const SvgPoint to{static_cast<double>(toX), static_cast<double>(toY)};
                ends.push_back(isReached ? state.between(from, to) : state.between(to, from));
            }
        }
    }
    return ends;
}

std::string captionOf(const Plane& plane, bool hasLine) {
    const std::size_t shown = plane.safe.size() + plane.reached.size();
    std::string text;
    if (shown > 0) {
        text = shown < plane.finished.rows ? "The first " + std::to_string(shown) + " variants"
                                           : "All variants";
        text += isWeighted(plane.finished.study) ? ", drawn around the design point" : "";
        text += plane.limit == nullptr ? "." : ", red where " + plane.limit->name + " is reached.";
    }
    if (hasLine) {
        text += " Red line: " + plane.limit->text + " with the other variables at " +
                (plane.designPoint ? "the design point." : "their medians.");
    }
    if (plane.designPoint) {
        text += " Circle: the design point.";
    }
    return text;
}

Picture pictureOf(const FinishedStudy& finished, const LimitState* limit) {
    Plane plane{.finished = finished, .limit = limit};
    plane.variables = mostImportant(finished, limit);
    takeSample(plane);
    takeOthers(plane);
    plane.across = axisOf(plane, 0);
    plane.up = axisOf(plane, 1);
    Chart chart(plane.across, plane.up, 460, 340);
    chart.dots(plane.safe, "dot");
    chart.dots(plane.reached, "dot bad");
    const std::vector<SvgPoint> line = limit == nullptr ? std::vector<SvgPoint>{} : lineOf(plane);
    chart.pieces(line, "limit");
    if (plane.designPoint) {
        chart.circle(*plane.designPoint, "point bad");
    }
    const std::string title = plane.variable(0).name + " and " + plane.variable(1).name;
    return {chart.finish(title + (limit == nullptr ? "" : " with " + limit->name)),
            captionOf(plane, !line.empty())};
}

} // namespace

void addScatter(std::vector<PictureGroup>& groups, const FinishedStudy& finished) {
    if (finished.random().size() < 2) {
        return;
    }
    PictureGroup group{"The two most important variables", {}};
    for (const LimitState& limit : finished.study.limits) {
        group.pictures.push_back(pictureOf(finished, &limit));
    }
    if (finished.study.limits.empty()) {
        group.pictures.push_back(pictureOf(finished, nullptr));
    }
    groups.push_back(std::move(group));
}

} // namespace korvane::study
