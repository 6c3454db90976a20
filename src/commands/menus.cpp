#include "commands/menus.h"

#include "commands/commands.h"

namespace korvane {

namespace {

constexpr MenuRow rows[] = {
    {nullptr, "mnuFile", &Menus::file},
    {"mnuFile", "mnuFileItem_0", &Menus::newProblem, newProblem, {}, {}, "Ctrl+N"},
    {"mnuFile", "mnuFileItem_1", &Menus::open, openFile, {}, {}, "Ctrl+O"},
    {"mnuFile", "mnuFileItem_2"},
    {"mnuFile", "mnuFileItem_3", &Menus::save},
    {"mnuFileItem_3", "mnuSaveItem_0", &Menus::saveInput, saveInput, {}, {}, "Ctrl+S"},
    {"mnuFileItem_3", "mnuSaveItem_1", &Menus::saveReport, saveReport, {}, {}, "Ctrl+Shift+S"},
    {"mnuFile", "mnuFileItem_4"},
    {"mnuFile", "mnuFileItem_5", &Menus::print},
    {"mnuFileItem_5", "mnuPrintItem_0", &Menus::printInput, printInput, {}, {}, "Ctrl+Shift+P"},
    {"mnuFileItem_5", "mnuPrintItem_1", &Menus::printReport, printReport, {}, {}, "Ctrl+P"},
    {"mnuFile", "mnuFileItem_6"},
    {"mnuFile", "mnuFileItem_7", &Menus::exit, exitProgram},
    {"mnuFile", "mnuFileItem_8"},
    {"mnuFile", "mnuFileItem_9", &Menus::recentFiles},

    {nullptr, "mnuEdit", &Menus::edit},
    {"mnuEdit", "mnuEditItem_0", &Menus::editData, editData, Screen::KEYIN},

    {nullptr, "mnuView", &Menus::view},
    {"mnuView", "mnuViewItem_0", &Menus::inputFile, nullptr, Screen::VUINPTFL},
    {"mnuView", "mnuViewItem_1", &Menus::report, nullptr, Screen::VUINECHO},
    {"mnuView", "mnuViewItem_2", &Menus::inputPlots, nullptr, Screen::VUINPLOT},
    {"mnuView", "mnuViewItem_3", &Menus::cantileverPlots, nullptr, Screen::CANPLOT},
    {"mnuView", "mnuViewItem_4", &Menus::freeEarthPlots, nullptr, Screen::FREEPLOT},
    {"mnuView", "mnuViewItem_5", &Menus::fixedEarthPlots, nullptr, Screen::FIXDPLOT},
    {"mnuView", "mnuViewItem_6", &Menus::roweCurves, nullptr, Screen::ROWECURV},

    {nullptr, "mnuSolve", &Menus::solve},
    {"mnuSolve", "mnuSolveItem_0", &Menus::solveProblem, solveProblem},

    {nullptr, "mnuTools", &Menus::tools},
    {"mnuTools", "mnuToolsItem_0", &Menus::units},
    {"mnuToolsItem_0", "mnuUnitsItem_0", &Menus::unitsUS, nullptr, {}, {}, "", UnitSystem::US},
    {"mnuToolsItem_0", "mnuUnitsItem_1", &Menus::unitsSI, nullptr, {}, {}, "", UnitSystem::SI},
    {"mnuTools", "mnuToolsItem_1", &Menus::notes, nullptr, Screen::NOTES},
    {"mnuTools", "mnuToolsItem_2", &Menus::compare, nullptr, Screen::COMPARE},
    {"mnuTools", "mnuToolsItem_3", &Menus::sheet, saveSheet},
    {"mnuTools", "mnuToolsItem_4", &Menus::study, nullptr, Screen::STUDY},
    {"mnuTools", "mnuToolsItem_5", &Menus::verify, nullptr, Screen::VERIFY},

    {nullptr, "mnuHelp", &Menus::help},
    {"mnuHelp", "mnuHelpItem_0", &Menus::helpContents, nullptr, {}, Help::Contents},
    {"mnuHelp", "mnuHelpItem_1", &Menus::helpSearch, nullptr, {}, Help::Search},
    {"mnuHelp", "mnuHelpItem_2"},
    {"mnuHelp", "mnuHelpItem_3", &Menus::about, nullptr, {}, Help::About},
};

} // namespace

std::span<const MenuRow> menuRows() {
    return rows;
}

void enableProblemViews(Menus& menus, bool enabled) {
    for (MenuItem* item : {&menus.inputFile, &menus.report, &menus.inputPlots, &menus.notes,
                           &menus.compare, &menus.study}) {
        item->enabled = enabled;
    }
}

void disableResults(Menus& menus) {
    for (MenuItem* item : {&menus.cantileverPlots, &menus.freeEarthPlots, &menus.fixedEarthPlots,
                           &menus.roweCurves, &menus.sheet}) {
        item->enabled = false;
    }
}

} // namespace korvane
