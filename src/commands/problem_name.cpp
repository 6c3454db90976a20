#include "commands/problem_name.h"

#include "commands/files.h"
#include "commands/wall_notes.h"
#include "runtime/number_text.h"
#include "runtime/runtime_error.h"

#include <filesystem>

namespace korvane {

namespace {

constexpr const char* program = "KORVANE";
constexpr const char* MetricRemark = "metric file, shown in feet and pounds";

std::string fileName(const Session& session) {
    return std::filesystem::path(session.ProblemFile).filename().string();
}

/// "bottom -16.35 FT, maximum moment 1.2345E+04 LB-FT".
std::string levelText(const LevelResult& level) {
    return "bottom " + formatNumber(level.bottomElev, "####0.00") + " FT, maximum moment " +
           formatNumber(level.diagrams.MaxMoment.value, "0.0000E+00") + " LB-FT";
}

/// "cantilever wall, design; bottom ..."; empty where no solution is at hand.
std::string solutionText(const Session& session) {
    const Menus& menus = session.menus;
    const bool cantilever = menus.cantileverPlots.enabled;
    const bool anchored = menus.freeEarthPlots.enabled;
    if (!(cantilever || anchored)) {
        return {};
    }
    const auto& levels = session.workspace.results().levels;
    std::string text = anchored ? "anchored wall, " : "cantilever wall, ";
    text += session.problem.ProgramMode == Mode::Design ? "design; " : "analysis; ";
    if (cantilever) {
        return text + levelText(levels(1));
    }
    return text + "free earth method: " + levelText(levels(1)) +
           "; fixed earth method: " + levelText(levels(2));
}

} // namespace

bool hasUnsavedInput(const Session& session) {
    return endsIn(session.CurrentInputName, ".III") || session.DataChanged != 0 ||
           session.inputFileStale;
}

std::string titleText(const Session& session) {
    const bool unsaved = hasUnsavedInput(session);
    std::string name = fileName(session);
    if (name.empty() && !unsaved) {
        return program;
    }
    name = name.empty() ? "Untitled" : name;
    return name + (unsaved ? "*" : "") +
           (session.fileUnits == UnitSystem::SI ? " (metric file)" : "") + " - " + program;
}

std::string problemStem(const Session& session) {
    const std::string stem = std::filesystem::path(session.ProblemFile).stem().string();
    return stem.empty() ? "wall" : stem;
}

std::string documentTitle(const Session& session) {
    const Problem& problem = session.problem;
    std::string title = fileName(session);
    if (problem.NumHeadingLines > 0) {
        const std::string& line = problem.HeadingLines(1);
        const std::string heading = trimmed(line.rfind('\'', 0) == 0 ? line.substr(1) : line);
        title += (title.empty() || heading.empty() ? "" : ": ") + heading;
    }
    return title.empty() ? program : title;
}

std::string statusLine(const Session& session) {
    std::string text;
    const auto add = [&text](const std::string& part) {
        text += (text.empty() || part.empty() ? "" : "; ") + part;
    };
    if (session.stage == FlowStage::Rest) {
        add(session.fileUnits == UnitSystem::SI ? MetricRemark : "");
        add(solutionText(session));
    }
    if (session.stage != FlowStage::Solving) {
        add(notesRemark(session));
    }
    if (session.copyFault != 0) {
        add(std::string("unsaved data have no recovery copy: ") +
            runtimeErrorText(session.copyFault));
    }
    const std::string name = fileName(session);
    return name.empty() || text.empty() ? text : name + ": " + text;
}

} // namespace korvane
