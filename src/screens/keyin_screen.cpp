#include "screens/keyin_screen.h"

#include "problem/loads.h"
#include "screens/section_checks.h"

#include <QPushButton>

#include <algorithm>
#include <span>

namespace korvane {

namespace {

constexpr int RequiredSections = 3;

bool isGiven(const Session& session, std::span<const LoadRules> loads) {
    return std::any_of(loads.begin(), loads.end(),
                       [&](const LoadRules& load) { return load.isGiven(session.problem); });
}

const SectionList& sectionList() {
    static const SectionList list{
        .screen = "KEYIN",
        .windowTitle = "KEYBOARD INPUT",
        .titlePanel = "panKeyIn",
        .title = "Select Data Section to be Entered",
        .frame = "fraInputSects",
        .sections =
            {{{"cmdHeadCont", "&Heading, Wall and Control Data", "panHeadCont", true,
               [](const Session& session) { return session.HeadContDataValid != 0; }},
              Screen::HEADCONT},
             {{"cmdSurface", "Soil &Surface Data", "panSurface", true,
               [](const Session& session) { return session.problem.SurfacePointCount(Right) > 0; }},
              Screen::SURFACE},
             // The left side's layers are deliberately not looked at.
             {{"cmdLayerData", "Soil &Layer Data", "panLayerData", true,
               [](const Session& session) { return session.problem.SoilLayerCount(Right) >= 1; }},
              Screen::LAYRDATA},
             {{"cmdWaterData", "&Water Data", "panWaterData", false,
               [](const Session& session) {
                   return session.problem.WaterDataKind != WaterData::None;
               }},
              Screen::WATER},
             {{"cmdSurcharge", "S&urface Surcharge Data", "panSurcharge", false,
               [](const Session& session) { return isGiven(session, GroundLoads); }},
              Screen::SURCHCON},
             {{"cmdHorizontal", "Applied &Horizontal Loads", "panHorizontal", false,
               [](const Session& session) { return isGiven(session, WallLoads); }},
              Screen::HORCON}},
        .requiredNote = "(Sections indicated in red are required.)",
    };
    return list;
}

} // namespace

KeyinScreen::KeyinScreen(ScreenContext& context) : SectionScreen(context, &sectionList()) {
    session().DataChanged = 0;
    session().SolutionFailed = 0;
    const bool editing = problem().NumHeadingLines != 0;
    if (editing) {
        session().HeadContDataValid = 1;
        setTitle("Select Data Section to be Edited");
    }
    // On opening a new problem nothing is highlighted; of a held one the required sections are,
    // whatever their counts.
    for (int section = 0; section < static_cast<int>(sectionList().sections.size()); ++section) {
        const auto hasData =
            sectionList().sections[static_cast<std::size_t>(section)].button.hasData;
        highlight(panel(section), editing && (section < RequiredSections || hasData(session())));
    }
}

void KeyinScreen::finishStage() {
    session().SolutionFailed = 0;
    if (const auto fault = sectionFault(session())) {
        failAt(button(static_cast<int>(fault->at)));
        if (goesOn(fault->box)) { // Cancel aborts the run, which empties the whole problem
            return;
        }
        session().SolutionFailed = 1;
    }
    accept();
}

} // namespace korvane
