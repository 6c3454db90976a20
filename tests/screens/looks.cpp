#include "looks.h"

namespace korvane::test {

Problem fullProblem() {
    Problem problem = plainCantilever();
    problem.WallType = "A";
    problem.AnchorElev = -3;
    problem.WaterDataKind = "E";
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = -6;
    problem.WaterElev(Left) = -9;
    problem.SeepageKind = "G";
    problem.SeepageElev = -8;
    problem.SeepageGradient(1) = 0.125;
    problem.SeepageGradient(2) = 0.125;
    for (const int side : {Right, Left}) {
        problem.SoilBottomElev(side, 2) = NoLayerBottom;
        problem.SoilLayerCount(side) = 2;
        problem.SoilBottomElev(side, 1) = -14.25;
        problem.SoilBottomSlope(side, 1) = 0.05;
        problem.SoilSatWeight(side, 2) = 125.5;
        problem.SoilMoistWeight(side, 2) = 118;
        problem.SoilFriction(side, 2) = 32;
        problem.SoilFSPassive(side, 2) = 1.75;
        problem.SurfacePointCount(side) = 2;
        problem.SurfaceDist(side, 2) = 40;
        problem.SurfaceElev(side, 2) = problem.SurfaceElev(side, 1) - 1.5;
        problem.VLineCount(side) = 2;
        problem.VLineDist(side, 1) = 5;
        problem.VLineLoad(side, 1) = 1250.5;
        problem.VLineDist(side, 2) = 12.5;
        problem.VLineLoad(side, 2) = 800;
        problem.VUniformCount(side) = 1;
        problem.VUniformLoad(side) = 250;
        problem.VStripCount(side) = 1;
        problem.VStripEnd(side, 1) = 8;
        problem.VStripLoad(side, 1) = 300;
        problem.VRampCount(side) = 1;
        problem.VRampStart(side) = 10;
        problem.VRampEnd(side) = 25;
        problem.VRampLoad(side) = 400;
        problem.VTriCount(side) = 1;
        problem.VTriStart(side, 1) = 2;
        problem.VTriPeak(side, 1) = 6;
        problem.VTriEnd(side, 1) = 11;
        problem.VTriLoad(side, 1) = 350;
        problem.VVarCount(side) = 3;
        for (const int point : {1, 2, 3}) {
            problem.VVarDist(side, point) = 5.0 * point;
            problem.VVarLoad(side, point) = 100.0 * point;
        }
    }
    problem.HLineCount = 2;
    problem.HLineElev(1) = -1;
    problem.HLineLoad(1) = 500;
    problem.HLineElev(2) = -2.5;
    problem.HLineLoad(2) = -150;
    problem.HDistCount = 2;
    problem.HDistElev(1) = -1;
    problem.HDistLoad(1) = 20;
    problem.HDistElev(2) = -5;
    problem.HDistLoad(2) = 60;
    return problem;
}

namespace {

void hold(Desk& desk, const Problem& problem) {
    desk.problem = problem;
    desk.state.HeadContDataValid = 1;
}

Problem analysis() {
    Problem problem = fullProblem();
    problem.ProgramMode = "A";
    problem.FSKind = 2;
    problem.FSActive = 1.25;
    problem.WallBottomElev = -31.5;
    problem.WallModulus = 29e6;
    problem.WallInertia = 184.2;
    return problem;
}

} // namespace

std::vector<Look> allLooks() {
    std::vector<Look> looks;
    const auto blank = [&](const std::string& name, Screen screen) {
        looks.push_back({name + "-blank", [screen](Desk& desk) { desk.open(screen); }});
    };
    const auto filled = [&](const std::string& name, Screen screen) {
        looks.push_back({name + "-filled", [screen](Desk& desk) {
                             hold(desk, fullProblem());
                             desk.open(screen);
                         }});
    };
    for (const auto& [name, screen] :
         std::vector<std::pair<std::string, Screen>>{{"keyin", Screen::KEYIN},
                                                     {"layrdata", Screen::LAYRDATA},
                                                     {"water", Screen::WATER},
                                                     {"surchcon", Screen::SURCHCON},
                                                     {"horcon", Screen::HORCON},
                                                     {"headcont", Screen::HEADCONT},
                                                     {"surface", Screen::SURFACE}}) {
        blank(name, screen);
        filled(name, screen);
    }
    looks.push_back({"headcont-analysis", [](Desk& desk) {
                         hold(desk, analysis());
                         desk.open(Screen::HEADCONT);
                     }});
    const auto load = [&](const std::string& name, Screen screen, int kind) {
        looks.push_back({name + "-blank", [screen, kind](Desk& desk) { desk.open(screen, kind); }});
        looks.push_back({name + "-filled", [screen, kind](Desk& desk) {
                             hold(desk, fullProblem());
                             desk.open(screen, kind);
                         }});
    };
    for (const int kind : {1, 2, 3, 4, 5, 6}) {
        load("surcharg-" + std::to_string(kind), Screen::SURCHARG, kind);
    }
    for (const int section : {1, 2}) {
        load("horload-" + std::to_string(section), Screen::HORLOAD, section);
    }
    for (const auto& [side, button] : std::vector<std::pair<std::string, std::string>>{
             {"right", "cmdEnterRightside"}, {"left", "cmdEnterLeftside"}}) {
        const auto control = [&, open = QString::fromStdString(button)](const std::string& kind,
                                                                        bool onward) {
            return [open, kind, onward](Desk& desk) {
                Problem problem = fullProblem();
                problem.SoilDataKind.fill(kind);
                problem.SoilCoefActive.fill(0.333);
                problem.SoilCoefPassive.fill(3);
                hold(desk, problem);
                desk.open(Screen::LAYRDATA);
                desk.click(open);
                if (onward) {
                    desk.click("cmdOK");
                }
            };
        };
        looks.push_back({"layrdata-control-" + side, control("S", false)});
        looks.push_back({"layrdata-strengths-" + side, control("S", true)});
        looks.push_back({"layrdata-coefficients-" + side, control("C", true)});
    }
    const auto water = [&](const std::string& name, const char* kind, const char* seepage,
                           const char* button) {
        looks.push_back({"water-" + name, [kind, seepage, button](Desk& desk) {
                             Problem problem = fullProblem();
                             problem.WaterDataKind = kind;
                             problem.SeepageKind = seepage;
                             problem.WaterPressCount = 2;
                             problem.WaterPressElev(1) = -5;
                             problem.WaterPressElev(2) = -20;
                             problem.WaterPressure(2) = 624;
                             hold(desk, problem);
                             desk.open(Screen::WATER);
                             desk.click(button);
                         }});
    };
    water("elevations-none", "E", "", "cmdWaterEls");
    water("elevations-gradient", "E", "G", "cmdWaterEls");
    water("elevations-automatic", "E", "A", "cmdWaterEls");
    water("pressures", "P", "", "cmdWaterPres");
    looks.push_back({"rowepile-defaults", [](Desk& desk) { desk.open(Screen::ROWEPILE); }});
    looks.push_back({"rowepile-additions", [](Desk& desk) {
                         desk.open(Screen::ROWEPILE);
                         desk.click("cmdDefAccept");
                         desk.type("txtName_0", "AZ 26");
                     }});
    return looks;
}

} // namespace korvane::test
