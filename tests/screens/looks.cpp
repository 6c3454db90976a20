#include "looks.h"

#include "screens/field.h"

namespace korvane::test {

Problem fullProblem() {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -3;
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = -6;
    problem.WaterElev(Left) = -9;
    problem.SeepageKind = Seepage::Given;
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

Problem blankProblem() {
    Problem problem;
    clearProblemData(problem);
    return problem;
}

Problem analysis() {
    Problem problem = fullProblem();
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::ActiveGiven;
    problem.FSActive = 1.25;
    problem.WallBottomElev = -31.5;
    problem.WallModulus = 29e6;
    problem.WallInertia = 184.2;
    return problem;
}

Problem layersOfKind(SoilData kind) {
    Problem problem = fullProblem();
    problem.SoilDataKind.fill(kind);
    problem.SoilCoefActive.fill(0.333);
    problem.SoilCoefPassive.fill(3);
    return problem;
}

Problem waterOfKind(WaterData kind, Seepage seepage) {
    Problem problem = fullProblem();
    problem.WaterDataKind = kind;
    problem.SeepageKind = seepage;
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -5;
    problem.WaterPressElev(2) = -20;
    problem.WaterPressure(2) = 624;
    return problem;
}

std::function<void(Desk&)> opening(Screen screen, std::optional<Load> loadKind = {}) {
    return [screen, loadKind](Desk& desk) { desk.open(screen, loadKind); };
}

/// Opens a screen and clicks buttons one after another.
std::function<void(Desk&)> clicking(Screen screen, const std::vector<QString>& buttons) {
    return [screen, buttons](Desk& desk) {
        desk.open(screen);
        for (const QString& button : buttons) {
            desk.click(button);
        }
    };
}

} // namespace

std::vector<Look> allLooks() {
    std::vector<Look> looks;
    const auto blankAndFilled = [&](const std::string& name, Screen screen,
                                    std::optional<Load> loadKind = {}) {
        looks.push_back({name + "-blank", blankProblem(), opening(screen, loadKind)});
        looks.push_back({name + "-filled", fullProblem(), opening(screen, loadKind)});
    };
    blankAndFilled("keyin", Screen::KEYIN);
    blankAndFilled("headcont", Screen::HEADCONT);
    looks.push_back({"headcont-analysis", analysis(), opening(Screen::HEADCONT)});
    blankAndFilled("surface", Screen::SURFACE);
    blankAndFilled("layrdata", Screen::LAYRDATA);
    for (const std::string side : {"Rightside", "Leftside"}) {
        const QString enter = QString::fromStdString("cmdEnter" + side);
        looks.push_back(
            {"layrdata-control-" + side, fullProblem(), clicking(Screen::LAYRDATA, {enter})});
        looks.push_back({"layrdata-strengths-" + side, layersOfKind(SoilData::Strengths),
                         clicking(Screen::LAYRDATA, {enter, "cmdOK"})});
        looks.push_back({"layrdata-coefficients-" + side, layersOfKind(SoilData::Coefficients),
                         clicking(Screen::LAYRDATA, {enter, "cmdOK"})});
    }
    blankAndFilled("water", Screen::WATER);
    for (const auto& [name, seepage] :
         std::vector<std::pair<std::string, Seepage>>{{"none", Seepage::None},
                                                      {"gradient", Seepage::Given},
                                                      {"automatic", Seepage::Automatic}}) {
        looks.push_back({"water-elevations-" + name, waterOfKind(WaterData::Elevations, seepage),
                         clicking(Screen::WATER, {"cmdWaterEls"})});
    }
    looks.push_back({"water-pressures", waterOfKind(WaterData::Pressures, Seepage::None),
                     clicking(Screen::WATER, {"cmdWaterPres"})});
    blankAndFilled("surchcon", Screen::SURCHCON);
    int place = 0;
    for (const LoadRules& load : GroundLoads) {
        blankAndFilled("surcharg-" + std::to_string(++place), Screen::SURCHARG, load.load);
    }
    blankAndFilled("horcon", Screen::HORCON);
    place = 0;
    for (const LoadRules& load : WallLoads) {
        blankAndFilled("horload-" + std::to_string(++place), Screen::HORLOAD, load.load);
    }
    looks.push_back({"rowepile-defaults", blankProblem(), opening(Screen::ROWEPILE)});
    looks.push_back(
        {"rowepile-additions", blankProblem(), clicking(Screen::ROWEPILE, {"cmdDefAccept"})});
    looks.push_back({"rowepile-entered", blankProblem(), [](Desk& desk) {
                         desk.open(Screen::ROWEPILE);
                         desk.click("cmdDefAccept");
                         desk.typeDown("txtName", {"AZ 26", "OWN SECTION"});
                         desk.typeDown("txtSectMod", {"48.4", "7"});
                         desk.typeDown("txtInertia", {"406.25", "1234"});
                         desk.typeDown("txtAllow", {"25.0E3", "36000"});
                         desk.typeDown("txtEMod", {"29E6", "30000000"});
                     }});
    // What is told beside each table that refuses a block, and of a value that a file loses.
    const auto refusing = [&](const std::string& name, Screen screen, std::optional<Load> loadKind,
                              const std::vector<QString>& buttons, const QString& field) {
        looks.push_back({name + "-refused", fullProblem(), [=](Desk& desk) {
                             desk.open(screen, loadKind);
                             for (const QString& button : buttons) {
                                 desk.click(button);
                             }
                             QWidget* at = desk.workable<QWidget>(field);
                             at->setFocus();
                             const QString tooMany("1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12");
                             static_cast<Field*>(at)->pasteText(tooMany);
                         }});
    };
    refusing("headcont", Screen::HEADCONT, {}, {}, "txtHead_0");
    refusing("surface", Screen::SURFACE, {}, {}, "txtLeftDist_0");
    refusing("layrdata", Screen::LAYRDATA, {}, {"cmdEnterRightside", "cmdOK"}, "txtSATWt_0");
    refusing("water", Screen::WATER, {}, {"cmdWaterPres"}, "txtWPR_0");
    const std::pair<Load, QString> fields[] = {
        {Load::Line, "txtDLLR_0"},     {Load::Uniform, "txtQUL"},
        {Load::Strip, "txtDS1L_0"},    {Load::Ramp, "txtDR1L"},
        {Load::Triangle, "txtDT1L_0"}, {Load::Variable, "txtRightDist_0"}};
    place = 0;
    for (const auto& [kind, field] : fields) {
        refusing("surcharg-" + std::to_string(++place), Screen::SURCHARG, kind, {}, field);
    }
    refusing("horload-1", Screen::HORLOAD, Load::HorizontalLine, {}, "txtHorLine_0");
    refusing("horload-2", Screen::HORLOAD, Load::Distributed, {}, "txtHorDist_0");
    refusing("rowepile", Screen::ROWEPILE, {}, {"cmdDefAccept"}, "txtName_0");
    looks.push_back({"layrdata-loss", fullProblem(), [](Desk& desk) {
                         desk.open(Screen::LAYRDATA);
                         desk.click("cmdEnterRightside");
                         desk.click("cmdOK");
                         desk.workable<QWidget>("txtSlope_0")->setFocus();
                     }});
    return looks;
}

} // namespace korvane::test
