#include "screens/section_checks.h"

#include "problem/validate.h"
#include "screens/entry.h"

namespace korvane {

namespace {

constexpr const char* Choices = "\n\n     Choose OK to continue data entry."
                                "\n     Choose CANCEL to abort this run.";

/// The first line opens the list; every other one stands behind a line end, even as the first.
std::string missingSections(const Session& session) {
    const Problem& problem = session.problem;
    std::string list;
    if (session.HeadContDataValid == 0) {
        list = "     HEADING, CONTROL, AND WALL DATA.";
    }
    if (problem.SurfacePointCount(Right) + problem.SurfacePointCount(Left) == 0) {
        list += "\n     SOIL SURFACE DATA.";
    }
    if (problem.SoilLayerCount(Right) == 0) {
        list += "\n     RIGHT SIDE SOIL LAYER DATA.";
    }
    if (problem.SoilLayerCount(Left) == 0) {
        list += "\n     LEFT SIDE SOIL LAYER DATA.";
    }
    return list;
}

/// A seepage that was left behind when the water became pressures counts too: deliberate.
bool seepageIsInconsistent(const Problem& problem) {
    return problem.SeepageKind != Seepage::None &&
           !limitsBetween(ProblemField::SeepageElev, ByScreen, problem).hold(problem.SeepageElev);
}

Limits groundLimits(const Problem& problem, int side, int point) {
    return limitsBetween(ProblemField::SurfaceElev, ByScreen, problem, side, point);
}

bool surfaceIsAboveWall(const Problem& problem, int side) {
    return problem.SurfaceElev(side, 1) > groundLimits(problem, side, 1).high;
}

bool surfaceIsBelowWall(const Problem& problem, int side, int point) {
    return problem.SurfaceElev(side, point) <= groundLimits(problem, side, point).low;
}

Section firstMissing(const Session& session) {
    const Problem& problem = session.problem;
    if (session.HeadContDataValid == 0) {
        return Section::Heading;
    }
    return problem.SurfacePointCount(Right) + problem.SurfacePointCount(Left) == 0
               ? Section::Surface
               : Section::Layers;
}

MessageBox wallBox(const std::string& text) {
    return okCancelBox("INCONSISTENT WALL/SURFACE ELEVATION DATA", text + Choices);
}

} // namespace

std::optional<SectionFault> sectionFault(const Session& session) {
    const Problem& problem = session.problem;
    if (const std::string list = missingSections(session); !list.empty()) {
        return SectionFault{
            okCancelBox("DATA MISSING", "The following required data have not been provided.\n\n" +
                                            list +
                                            "\n\nChoose OK to continue data entry."
                                            "\nChoose CANCEL to abort this run."),
            firstMissing(session)};
    }
    if (seepageIsInconsistent(problem)) {
        return SectionFault{okCancelBox("INCONSISTENT SEEPAGE DATA",
                                        std::string("Seepage elevation is inconsistent with Surface"
                                                    "\nand/or water elevations.") +
                                            Choices),
                            Section::Water};
    }
    if (surfaceIsAboveWall(problem, Right) || surfaceIsAboveWall(problem, Left)) {
        return SectionFault{wallBox("Right or left side surface has been specified"
                                    "\nabove the top of the wall."),
                            Section::Surface};
    }
    // Deliberately the first two points of the right side and not the first of each side.
    if (problem.ProgramMode == Mode::Analysis &&
        (surfaceIsBelowWall(problem, Right, 1) || surfaceIsBelowWall(problem, Right, 2))) {
        return SectionFault{wallBox("Wall bottom has been specified above the soil surface."),
                            Section::Heading};
    }
    return std::nullopt;
}

} // namespace korvane
