#include "notes/rules.h"

#include "runtime/arithmetic.h"
#include "runtime/run_guarded.h"
#include "wall/preparation.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvane {

const char* severityName(Severity severity) {
    switch (severity) {
    case Severity::Remark:
        return "remark";
    case Severity::Caution:
        return "caution";
    case Severity::Unsafe:
        return "unsafe";
    }
    return "";
}

const char* solutionMethodName(SolutionMethod method) {
    switch (method) {
    case SolutionMethod::Cantilever:
        return "cantilever";
    case SolutionMethod::FreeEarth:
        return "free earth";
    case SolutionMethod::FixedEarth:
        return "fixed earth";
    }
    return "";
}

Workspace& NoteWorkspace::get() {
    if (!workspace_) {
        workspace_.emplace();
    }
    return *workspace_;
}

int countOf(const std::vector<Note>& notes, Severity severity) {
    return static_cast<int>(std::count_if(notes.begin(), notes.end(), [severity](const Note& note) {
        return note.severity == severity;
    }));
}

void throwOnMemory(int error) {
    if (error == OutOfMemory || error == InternalError) {
        throw RuntimeError(error);
    }
}

namespace {

/// True where a rule can look at what there is.
bool canLook(const NoteRule& rule, const Wall& wall) {
    switch (rule.needs) {
    case Needs::Input:
        return true;
    case Needs::Run: // at the stop for review neither stands
        return wall.solved != nullptr && (wall.solved->results != nullptr || wall.solved->failure);
    case Needs::Results:
        return wall.hasResults();
    }
    return false;
}

std::array<std::span<const NoteRule>, 9> allRules() {
    return {weightRules(), wedgeRules(),     coefficientRules(), clayRules(),  seepageRules(),
            loadRules(),   reductionRules(), fileRules(),        remarkRules()};
}

std::vector<Note> lookAt(const Wall& wall) {
    std::vector<Note> notes;
    const NoteWork work = wall.request.work;
    if (work == NoteWork::None) {
        return notes;
    }
    for (const auto& rules : allRules()) {
        for (const NoteRule& rule : rules) {
            const bool wanted = work == NoteWork::All || rule.worst == Severity::Unsafe;
            if (wanted && canLook(rule, wall)) {
                NoteSink sink(notes, rule);
                // A number beyond what a rule can bear leaves the rule without a note.
                const auto fault = runGuarded([&] { rule.look(wall, sink); });
                throwOnMemory(fault ? fault->number() : 0);
            }
        }
    }
    if (work == NoteWork::UnsafeOnly) {
        std::erase_if(notes, [](const Note& note) { return note.severity != Severity::Unsafe; });
    }
    std::stable_sort(notes.begin(), notes.end(),
                     [](const Note& a, const Note& b) { return a.severity > b.severity; });
    return notes;
}

} // namespace

std::vector<std::string_view> noteCodes() {
    std::vector<std::string_view> codes;
    for (const auto& rules : allRules()) {
        for (const NoteRule& rule : rules) {
            codes.push_back(rule.code);
        }
    }
    return codes;
}

std::vector<Note> notesOnInput(const NoteRequest& request) {
    return lookAt({.request = request, .problem = request.problem});
}

std::vector<Note> notesOnSolution(const NoteRequest& request, const Solved& solved,
                                  const Options& options, NoteWorkspace& second) {
    switch (solved.failure.code) {
    case FailureCode::InvalidProblem: // the record itself is not to be trusted
    case FailureCode::InputRefused:
    case FailureCode::FileFault:
        return {};
    case FailureCode::FactorDeclined: // stopped by a person: there is nothing to compare
        return notesOnInput(request);
    default:
        break;
    }
    return lookAt({.request = request,
                   .problem = request.problem,
                   .solved = &solved,
                   .options = &options,
                   .second = &second});
}

// ---- what several themes share -----------------------------------------------------------------

std::vector<double> knownBottoms(const Wall& wall) {
    std::vector<double> bottoms;
    if (wall.hasResults()) {
        for (int level = 1; level <= wall.results().levelCount; ++level) {
            bottoms.push_back(wall.results().levels(level).bottomElev);
        }
    } else if (!wall.design()) {
        bottoms.push_back(wall.problem.WallBottomElev);
    }
    return bottoms;
}

int layersDownTo(const Problem& problem, int side, double bottomElev) {
    int layer = 1;
    while (layer < problem.SoilLayerCount(side) &&
           problem.SoilBottomElev(side, layer) > bottomElev) {
        ++layer;
    }
    return layer;
}

double layerTop(const Problem& problem, int side, int layer) {
    return layer == 1 ? problem.SurfaceElev(side, 1) : problem.SoilBottomElev(side, layer - 1);
}

int layerBelow(const Problem& problem, int side, double elev) {
    int layer = 1;
    while (layer < problem.SoilLayerCount(side) && problem.SoilBottomElev(side, layer) >= elev) {
        ++layer;
    }
    return layer;
}

double dredgeLine(const Problem& problem) {
    return MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
}

double overburden(const Problem& problem, int side, double elev, bool buoyant) {
    const bool hasWater = problem.WaterDataKind == WaterData::Elevations;
    const double water = hasWater ? problem.WaterElev(side) : NoLayerBottom;
    const double lift = buoyant ? problem.WaterUnitWeight : 0;
    double sum = problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) : 0;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const double top = layerTop(problem, side, layer);
        const double bottom = MaxOf(problem.SoilBottomElev(side, layer), elev);
        if (top <= bottom) {
            break;
        }
        const double table = MaxOf(MinOf(water, top), bottom);
        sum += (top - table) * problem.SoilMoistWeight(side, layer) +
               (table - bottom) * (problem.SoilSatWeight(side, layer) - lift);
    }
    return sum;
}

double waterHead(const Problem& problem, int side, double elev) {
    return problem.WaterDataKind == WaterData::Elevations
               ? MaxOf(0, problem.WaterElev(side) - elev) * problem.WaterUnitWeight
               : 0;
}

bool isClay(const Problem& problem, int side, int layer) {
    return problem.SoilDataKind(side) == SoilData::Strengths &&
           problem.SoilFriction(side, layer) == 0 && problem.SoilCohesion(side, layer) > 0;
}

std::optional<LayerFactors> layerFactors(const Wall& wall, int side, int layer) {
    if (wall.solved->results != nullptr) {
        const DevelopedLayer& developed = wall.results().levels(1).layers(side, layer);
        return LayerFactors{developed.fsActive, developed.fsPassive};
    }
    if (!wall.design()) {
        return std::nullopt;
    }
    return LayerFactors{givenActiveFactor(wall.problem, side, layer).value,
                        givenPassiveFactor(wall.problem, side, layer).value};
}

double dividedAngle(double degrees, double factor) {
    return std::atan(divide(std::tan(degrees * DegreesToRadians), factor)) / DegreesToRadians;
}

PassiveAngles passiveAngles(const Wall& wall, int side, int layer) {
    if (wall.solved->results != nullptr) {
        const DevelopedLayer& developed = wall.results().levels(1).layers(side, layer);
        return {developed.frictionPassive, developed.wallFrictionPassive, developed.fsPassive};
    }
    const auto factors = layerFactors(wall, side, layer);
    const double factor = factors ? factors->passive : 1;
    return {dividedAngle(wall.problem.SoilFriction(side, layer), factor),
            dividedAngle(wall.problem.SoilWallFriction(side, layer), factor), factor};
}

int layersInUse(const Wall& wall, int side) {
    return wall.solved->results != nullptr
               ? layersDownTo(wall.problem, side, wall.results().levels(1).bottomElev)
               : wall.problem.SoilLayerCount(side);
}

} // namespace korvane
