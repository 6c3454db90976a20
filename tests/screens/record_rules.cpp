#include "record_rules.h"

#include <algorithm>
#include <map>

namespace korvane::test {

namespace {

bool heading(const Problem& p) {
    if (p.NumHeadingLines < 1) {
        return false;
    }
    for (int line = 1; line <= p.NumHeadingLines; ++line) {
        if (p.HeadingLines(line).rfind('\'', 0) != 0) {
            return false;
        }
    }
    const bool anchored = p.WallType == WallKind::Anchored;
    if ((!anchored && p.WallType != WallKind::Cantilever) ||
        (anchored && p.AnchorElev > p.WallTopElev)) {
        return false;
    }
    if (p.ProgramMode == Mode::Design) {
        return p.FSActive > 0 && p.FSPassive > 0;
    }
    return p.ProgramMode == Mode::Analysis &&
           (p.FSKind == FactorKind::OneForBoth ||
            (p.FSKind == FactorKind::ActiveGiven && p.FSActive > 0)) &&
           p.WallBottomElev < p.WallTopElev && (!anchored || p.WallBottomElev < p.AnchorElev) &&
           p.WallModulus > 0 && p.WallInertia > 0;
}

bool surface(const Problem& p) {
    for (const int side : {Right, Left}) {
        if (p.SurfacePointCount(side) < 1) {
            return false;
        }
        for (int i = 2; i <= p.SurfacePointCount(side); ++i) {
            if (p.SurfaceDist(side, i) <= p.SurfaceDist(side, i - 1)) {
                return false;
            }
        }
    }
    return true;
}

bool layer(const Problem& p, int side, int i) {
    const bool last = i == p.SoilLayerCount(side);
    if (p.SoilSatWeight(side, i) <= 0 || p.SoilMoistWeight(side, i) <= 0 ||
        (last && p.SoilBottomElev(side, i) != NoLayerBottom) ||
        (!last && i > 1 && p.SoilBottomElev(side, i) >= p.SoilBottomElev(side, i - 1))) {
        return false;
    }
    if (p.SoilDataKind(side) == SoilData::Coefficients) {
        return p.SoilCoefActive(side, i) >= 0 && p.SoilCoefPassive(side, i) > 0;
    }
    const double friction = p.SoilFriction(side, i);
    return friction >= 0 && friction <= 45 && p.SoilCohesion(side, i) >= 0 &&
           friction + p.SoilCohesion(side, i) > 0 && p.SoilWallFriction(side, i) <= friction &&
           p.SoilAdhesion(side, i) >= 0 && p.SoilFSActive(side, i) >= 0 &&
           p.SoilFSPassive(side, i) >= 0;
}

bool layers(const Problem& p) {
    for (const int side : {Right, Left}) {
        if (p.SoilLayerCount(side) < 1 ||
            (p.SoilDataKind(side) != SoilData::Strengths &&
             p.SoilDataKind(side) != SoilData::Coefficients) ||
            p.Level2FSActive(side) < 0 || p.Level2FSPassive(side) < 0) {
            return false;
        }
        for (int i = 1; i <= p.SoilLayerCount(side); ++i) {
            if (!layer(p, side, i)) {
                return false;
            }
        }
    }
    return true;
}

bool water(const Problem& p) {
    if (p.WaterDataKind == WaterData::Pressures) {
        return p.WaterPressCount >= 2;
    }
    if (p.WaterDataKind == WaterData::None) {
        return p.SeepageKind == Seepage::None;
    }
    const bool seeps = p.SeepageKind == Seepage::Automatic || p.SeepageKind == Seepage::Given;
    return p.WaterDataKind == WaterData::Elevations && p.WaterUnitWeight > 0 &&
           (seeps || p.SeepageKind == Seepage::None) &&
           (!seeps || p.WaterElev(Right) > p.WaterElev(Left)) &&
           (p.SeepageKind != Seepage::Given ||
            (p.SeepageGradient(1) > 0 && p.SeepageGradient(1) < 1));
}

bool surcharge(const Problem& p, Load kind, int side, int i) {
    switch (kind) {
    case Load::Line:
        return p.VLineDist(side, i) > 0 && p.VLineLoad(side, i) > 0;
    case Load::Uniform:
        return p.VUniformLoad(side) >= 0;
    case Load::Strip:
        return p.VStripStart(side, i) >= 0 && p.VStripEnd(side, i) > p.VStripStart(side, i) &&
               p.VStripLoad(side, i) > 0;
    case Load::Ramp:
        return p.VRampStart(side) >= 0 && p.VRampEnd(side) >= p.VRampStart(side) &&
               p.VRampLoad(side) >= 0;
    case Load::Triangle:
        return p.VTriStart(side, i) >= 0 && p.VTriPeak(side, i) >= p.VTriStart(side, i) &&
               p.VTriEnd(side, i) >= p.VTriPeak(side, i) &&
               p.VTriEnd(side, i) > p.VTriStart(side, i) && p.VTriLoad(side, i) > 0;
    default:
        return p.VVarDist(side, i) >= 0 && p.VVarLoad(side, i) >= 0 &&
               (i == 1 || p.VVarDist(side, i) > p.VVarDist(side, i - 1));
    }
}

bool surcharges(const Problem& p, Load kind) {
    for (const int side : {Right, Left}) {
        for (int i = 1; i <= rulesOf(kind).rows(p, side); ++i) {
            if (!surcharge(p, kind, side, i)) {
                return false;
            }
        }
    }
    return true;
}

bool distributed(const Problem& p) {
    for (int i = 2; i <= p.HDistCount; ++i) {
        if (p.HDistElev(i) >= p.HDistElev(i - 1)) {
            return false;
        }
    }
    return p.HDistCount != 1;
}

} // namespace

bool meetsTests(const Problem& problem, Screen screen, std::optional<Load> loadKind) {
    const std::map<Screen, bool (*)(const Problem&)> sections = {{Screen::HEADCONT, heading},
                                                                 {Screen::SURFACE, surface},
                                                                 {Screen::LAYRDATA, layers},
                                                                 {Screen::WATER, water}};
    if (const auto section = sections.find(screen); section != sections.end()) {
        return section->second(problem);
    }
    if (screen == Screen::SURCHARG) {
        return surcharges(problem, loadKind.value());
    }
    return loadKind != Load::Distributed || distributed(problem);
}

bool countsInRange(const Problem& p) {
    const auto within = [](int count, int most) { return count >= 0 && count <= most; };
    for (const int side : {Right, Left}) {
        if (!within(p.SurfacePointCount(side), 11) || !within(p.SoilLayerCount(side), 11) ||
            !within(p.VLineCount(side), 5) || !within(p.VUniformCount(side), 1) ||
            !within(p.VStripCount(side), 5) || !within(p.VRampCount(side), 1) ||
            !within(p.VTriCount(side), 5) || !within(p.VVarCount(side), 11)) {
            return false;
        }
    }
    return within(p.NumHeadingLines, 4) && within(p.WaterPressCount, 11) &&
           within(p.HLineCount, 5) && within(p.HDistCount, 11);
}

} // namespace korvane::test
