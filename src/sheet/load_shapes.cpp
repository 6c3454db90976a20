#include "sheet/load_shapes.h"

#include "problem/loads.h"
#include "sheet/sheet_writer.h"

#include <algorithm>
#include <cstddef>

namespace korvane::sheet {

std::string figureText(Quantity quantity, double value, UnitSystem units) {
    const std::string unit = unitMarkup(quantity, units);
    const bool joined = quantity == Quantity::Angle || unit.empty();
    return quantityText(quantity, value, units) + (joined ? "" : " ") + unit;
}

double GroundLoad::intensityAt(double distance) const {
    for (std::size_t i = profile.size(); i-- > 1;) {
        const SvgPoint& a = profile[i - 1];
        const SvgPoint& b = profile[i];
        if (a.x <= distance && distance <= b.x) {
            return b.x == a.x ? b.y : a.y + (b.y - a.y) * (distance - a.x) / (b.x - a.x);
        }
    }
    return profile.back().y;
}

namespace {

/// Texts of labels in the units of the figure.
struct Texts {
    UnitSystem units;

    std::string stress(double value) const { return figureText(Quantity::Stress, value, units); }
    std::string length(double value) const { return figureText(Quantity::Length, value, units); }
    std::string plain(double value) const { return quantityText(Quantity::Length, value, units); }
    std::string between(double from, double to) const { return plain(from) + " to " + length(to); }
};

/// One kind of load: its entries as shapes without limits.
using ShapesOf = void (*)(const Problem&, int side, double reach, const Texts&,
                          std::vector<GroundLoad>&);

void addUniform(const Problem& problem, int side, double reach, const Texts& texts,
                std::vector<GroundLoad>& loads) {
    if (problem.VUniformCount(side) > 0) {
        const double load = problem.VUniformLoad(side);
        constexpr double outer = 0.85;
        loads.push_back({.profile = {{0, load}, {reach, load}},
                         .labels = {{outer * reach, texts.stress(load) + ", uniform"}}});
    }
}

void addLines(const Problem& problem, int side, double, const Texts& texts,
              std::vector<GroundLoad>& loads) {
    for (int i = 1; i <= problem.VLineCount(side); ++i) {
        const double at = problem.VLineDist(side, i);
        const std::string text =
            figureText(Quantity::LineLoad, problem.VLineLoad(side, i), texts.units);
        loads.push_back({.isLine = true,
                         .profile = {{at, 0}},
                         .labels = {{at, text + " at " + texts.length(at)}}});
    }
}

void addStrips(const Problem& problem, int side, double, const Texts& texts,
               std::vector<GroundLoad>& loads) {
    for (int i = 1; i <= problem.VStripCount(side); ++i) {
        const double from = problem.VStripStart(side, i);
        const double to = problem.VStripEnd(side, i);
        const double load = problem.VStripLoad(side, i);
        loads.push_back(
            {.profile = {{from, load}, {to, load}},
             .labels = {{(from + to) / 2, texts.stress(load) + ", " + texts.between(from, to)}}});
    }
}

void addRamp(const Problem& problem, int side, double reach, const Texts& texts,
             std::vector<GroundLoad>& loads) {
    if (problem.VRampCount(side) > 0) {
        const double from = problem.VRampStart(side);
        const double to = problem.VRampEnd(side);
        const double load = problem.VRampLoad(side);
        loads.push_back(
            {.profile = {{from, 0}, {to, load}, {std::max(to, reach), load}},
             .labels = {{to, "ramp to " + texts.stress(load) + ", " + texts.between(from, to)}}});
    }
}

void addTriangles(const Problem& problem, int side, double, const Texts& texts,
                  std::vector<GroundLoad>& loads) {
    for (int i = 1; i <= problem.VTriCount(side); ++i) {
        const double from = problem.VTriStart(side, i);
        const double peak = problem.VTriPeak(side, i);
        const double to = problem.VTriEnd(side, i);
        const double load = problem.VTriLoad(side, i);
        loads.push_back(
            {.profile = {{from, 0}, {peak, load}, {to, 0}},
             .labels = {{peak, texts.stress(load) + " at " + texts.plain(peak) + ", 0 at " +
                                   texts.plain(from) + " and " + texts.length(to)}}});
    }
}

void addVarying(const Problem& problem, int side, double, const Texts& texts,
                std::vector<GroundLoad>& loads) {
    GroundLoad load;
    for (int i = 1; i <= problem.VVarCount(side); ++i) {
        const double at = problem.VVarDist(side, i);
        load.profile.push_back({at, problem.VVarLoad(side, i)});
        load.labels.push_back(
            {at, texts.stress(problem.VVarLoad(side, i)) + " at " + texts.length(at)});
    }
    if (!load.profile.empty()) {
        loads.push_back(load);
    }
}

/// Those that cover most come first and lie lowest.
constexpr ShapesOf Kinds[] = {addUniform, addRamp, addVarying, addStrips, addTriangles, addLines};

/// What is left of a load within the reach; its labels beyond stand at the edge.
void cutAt(double reach, int side, GroundLoad& load) {
    for (LoadLabel& label : load.labels) {
        if (label.distance > reach) {
            label.distance = reach;
            label.text = side == Right ? label.text + " \u2192" : "\u2190 " + label.text;
        }
    }
    if (load.to() <= reach) {
        return;
    }
    if (load.from() >= reach) {
        load.profile.clear();
        return;
    }
    const double atEdge = load.intensityAt(reach);
    std::erase_if(load.profile, [&](const SvgPoint& point) { return point.x >= reach; });
    load.profile.push_back({reach, atEdge});
}

/// The lowest track on which nothing overlaps.
int freeTrack(const std::vector<GroundLoad>& loads, const GroundLoad& load, double gap) {
    for (int track = 0;; ++track) {
        const bool taken = std::any_of(loads.begin(), loads.end(), [&](const GroundLoad& other) {
            return !other.profile.empty() && other.track == track &&
                   load.from() < other.to() + gap && other.from() < load.to() + gap;
        });
        if (!taken) {
            return track;
        }
    }
}

} // namespace

std::vector<GroundLoad> groundLoads(const Problem& problem, int side, double reach,
                                    UnitSystem units) {
    std::vector<GroundLoad> wanted;
    for (const ShapesOf add : Kinds) {
        add(problem, side, reach, {units}, wanted);
    }
    constexpr double gapOfReach = 0.01;
    std::vector<GroundLoad> loads;
    for (GroundLoad& load : wanted) {
        cutAt(reach, side, load);
        if (!load.profile.empty()) {
            load.track = freeTrack(loads, load, gapOfReach * reach);
        }
        loads.push_back(std::move(load));
    }
    return loads;
}

int trackCount(const std::vector<GroundLoad>& loads) {
    int tracks = 0;
    for (const GroundLoad& load : loads) {
        tracks = load.profile.empty() ? tracks : std::max(tracks, load.track + 1);
    }
    return tracks;
}

double largestIntensity(const std::vector<GroundLoad>& loads) {
    double largest = 0;
    for (const GroundLoad& load : loads) {
        for (const SvgPoint& point : load.profile) {
            largest = load.isLine ? largest : std::max(largest, point.y);
        }
    }
    return largest;
}

} // namespace korvane::sheet
