// Every control of every screen by name and text: windows, titles, groups, labels, buttons.
#include "looks.h"

#include <QAction>
#include <QMenu>

#include <gtest/gtest.h>

#include <map>

namespace korvane::test {

namespace {

struct Named {
    const char* look;
    const char* window;
    std::vector<std::pair<const char*, const char*>> texts;
};

const std::vector<Named> screens = {
    {"keyin-blank",
     "KEYBOARD INPUT",
     {{"panKeyIn", "Select Data Section to be Entered"},
      {"cmdHeadCont", "&Heading, Wall and Control Data"},
      {"cmdSurface", "Soil &Surface Data"},
      {"cmdLayerData", "Soil &Layer Data"},
      {"cmdWaterData", "&Water Data"},
      {"cmdSurcharge", "S&urface Surcharge Data"},
      {"cmdHorizontal", "Applied &Horizontal Loads"},
      {"cmdFinished", "&Finished"},
      {"Label2", "(Sections indicated in red are required.)"},
      {"Label5", "(Highlighted sections indicate data are available.)"}}},
    {"headcont-blank",
     "HEADING, CONTROL AND WALL DATA",
     {{"panHeadCont", "Enter Heading and Control Data"},
      {"fraHeading_title", "Heading"},
      {"fraWallType_title", "Wall Type"},
      {"optCantilever", "Cantilever"},
      {"optAnchored", "Anchored"},
      {"fraMode_title", "Mode"},
      {"optDesign", "Design"},
      {"optAnalysis", "Analysis"},
      {"fraWallTop_title", "Wall Top"},
      {"txtWallTop_label", "Elevation (FT)"},
      {"cmdFinished", "&Finished"}}},
    {"headcont-filled",
     "HEADING, CONTROL AND WALL DATA",
     {{"panHeadCont", "Edit Heading and Control Data"},
      {"fraAnchor_title", "Anchor"},
      {"txtAnchorEl_label", "Elevation (FT)"},
      {"fraSafety_title", "Level 1 Safety Factors"},
      {"lblActive", "Active"},
      {"lblPassive", "Passive"}}},
    {"headcont-analysis",
     "HEADING, CONTROL AND WALL DATA",
     {{"fraWallProps_title", "Wall Properties"},
      {"txtWallBot_label", "Elevation at Bottom (FT)"},
      {"txtWallE_label", "Modulus of Elasticity (PSI)"},
      {"txtWallI_label", "Moment of Inertia (IN^4)"},
      {"fraFSOption_title", "Safety Factor Option"},
      {"optFSOption1", "Active FS = Passive FS"},
      {"optFSOption2", "Active FS Input"}}},
    {"surface-blank",
     "SURFACE DATA",
     {{"Panel3D1", "Enter Surface Data"},
      {"fraSurfRight_title", "Rightside Surface Data"},
      {"lblRightDist", "Distance From Wall (FT)"},
      {"lblRightElev", "           Elevation (FT)"},
      {"fraSurfLeft_title", "Leftside Surface Data"},
      {"lblLeftDist", "Distance From Wall (FT)"},
      {"lblLeftElev", "           Elevation (FT)"},
      {"cmdFinished", "&Finished"}}},
    {"layrdata-blank",
     "SOIL LAYER DATA",
     {{"panSoilDataAction", "Select Desired Action"},
      {"cmdFinishedAction", "&Finished"},
      {"Label3", "(Highlighted sections indicate data are available.)"}}},
    {"layrdata-control-Leftside",
     "SOIL LAYER DATA",
     {{"panHeading", "Edit LEFTSIDE Soil Data"},
      {"panControlData_title", "Control Data for Leftside Soil"},
      {"fraSoilType_title", "Soil Data Type"},
      {"optStrengths", "Strengths"},
      {"optCoefficients", "Coefficients"},
      {"fraSafety2_title", "Level 2 Safety Factors"},
      {"txtFSA2_label", "Active"},
      {"txtFSP2_label", "Passive"},
      {"cmdOK", "&OK"}}},
    {"layrdata-strengths-Rightside",
     "SOIL LAYER DATA",
     {{"panHeading", "Edit RIGHTSIDE Soil Data"},
      {"fraUnitWt_title", "Unit Weight (PCF)"},
      {"txtSATWt_label", "Saturated"},
      {"txtMSTWt_label", "Moist"},
      {"txtIntFrict_label", "Angle of Internal Friction (DEG)"},
      {"txtCohes_label", "Cohesion (PSF)"},
      {"txtWallFrict_label", "Angle of Wall Friction (DEG)"},
      {"txtAdhes_label", "Adhesion (PSF)"},
      {"txtElev_label", "Bottom Elevation (FT)"},
      {"txtSlope_label", "Bottom Slope (FT/FT)"},
      {"fraSafety3_title", "Level 3 Factors of Safety"},
      {"txtFSA3_label", "Active"},
      {"txtFSP3_label", "Passive"},
      {"cmdFinished", "Finished With &Rightside Soil"}}},
    {"layrdata-coefficients-Leftside",
     "SOIL LAYER DATA",
     {{"fraCoeffs_title", "Pressure Coefficients"},
      {"txtAK_label", "Active"},
      {"txtPK_label", "Passive"},
      {"cmdFinished", "Finished With &Leftside Soil"}}},
    {"water-filled",
     "WATER DATA",
     {{"panWater", "Select Data Section to be Entered"},
      {"cmdWaterEls", "Water &Elevation Data"},
      {"cmdWaterPres", "Water &Pressure Data"},
      {"cmdDelete", "&Delete All Water Data"},
      {"cmdFinishedWaterData", "&Finished"},
      {"Label5", "(Highlighted sections indicate data are available.)"}}},
    {"water-elevations-gradient",
     "WATER DATA",
     {{"fraWaterEls_title", "Water Elevation Data"},
      {"txtWaterWt_label", "Water Unit Weight (PCF)"},
      {"lblWaterEl", "Water Elevations (FT)"},
      {"txtWaterElR_label", "Rightside"},
      {"txtWaterElL_label", "Leftside"},
      {"fraSeepType_title", "Seepage Type"},
      {"optNoSeep", "None"},
      {"optSeepEl", "Elev/Grad"},
      {"optAutoSeep", "Automatic"},
      {"lblSeepEl", "Seepage Elevation (FT)"},
      {"lblSeepGrad", "Seepage Gradient (FT/FT)"},
      {"cmdFinishedElevData", "&Finished"}}},
    {"water-pressures",
     "WATER DATA",
     {{"fraWaterPres_title", "Water Pressure Data"},
      {"txtELWPR_label", " Elevation (FT)"},
      {"txtWPR_label", "Pressure (PSF)"},
      {"cmdFinishedWatPres", "&Finished"}}},
    {"surchcon-blank",
     "SURCHARGE",
     {{"panSurchHeading", "Select Data Section to be Entered"},
      {"cmdVertLine", "Vertical &Line Loads"},
      {"cmdUniform", "Vertical &Uniform Loads"},
      {"cmdStrips", "Vertical &Strip Loads"},
      {"cmdRamps", "Vertical &Ramp Loads"},
      {"cmdTriangs", "Vertical &Triangular Loads"},
      {"cmdVertVar", "Vertical &Variable Loads"},
      {"cmdFinished", "&Finished"},
      {"Label5", "(Highlighted sections indicate data are available.)"}}},
    {"surcharg-1-filled",
     "SURFACE SURCHARGES",
     {{"fraVertLine_title", "Vertical Line Loads"},
      {"fraLineLoadR_title", "Rightside Line Loads"},
      {"fraLineLoadL_title", "Leftside Line Loads"},
      {"txtDLLR_label", "Distance from wall (FT)"},
      {"txtQLLR_label", "Line Load (PLF)"},
      {"txtDLLL_label", "Distance from wall (FT)"},
      {"txtQLLL_label", "Line Load (PLF)"}}},
    {"surcharg-2-filled",
     "SURFACE SURCHARGES",
     {{"fraUnifLoad_title", "Uniform Loads"},
      {"lblRightside", "Rightside"},
      {"lblLeftside", "Leftside"},
      {"Label11", "Uniform Surcharge (PSF)"}}},
    {"surcharg-3-filled",
     "SURFACE SURCHARGES",
     {{"fraStrips_title", "Strip Loads"},
      {"fraStripR_title", "Rightside Strip Loads"},
      {"fraStripL_title", "Leftside Strip Loads"},
      {"fraStripR_distances", "Distances From Wall (FT)"},
      {"txtDS1R_label", "At Start"},
      {"txtDS2L_label", "At End"},
      {"txtQSR_label", "  Load   (PSF)"}}},
    {"surcharg-4-filled",
     "SURFACE SURCHARGES",
     {{"fraRamps_title", "Ramp Loads"},
      {"fraRampR_title", "Rightside Ramp Load"},
      {"fraRampL_title", "Leftside Ramp Load"},
      {"fraRampL_distances", "Distances From Wall (FT)"},
      {"txtDR1R_label", "Start Ramp"},
      {"txtDR2R_label", "At End"},
      {"txtDR1L_label", "Start Ramp"},
      {"txtDR2L_label", "End Ramp"},
      {"txtQRR_label", " Ramp Load  (PSF)"}}},
    {"surcharg-5-filled",
     "SURFACE SURCHARGES",
     {{"fraTriangs_title", "Triangular Loads"},
      {"fraTriangR_title", "Rightside Triangular Loads"},
      {"fraTriangL_title", "Leftside Triangular Loads"},
      {"fraTriangR_distances", "Distances From Wall (FT)"},
      {"txtDT1R_label", "At Start"},
      {"txtDT2R_label", "At Peak"},
      {"txtDT3L_label", "At End"},
      {"txtQTL_label", "Peak Load (PSF)"}}},
    {"surcharg-6-filled",
     "SURFACE SURCHARGES",
     {{"fraVertVar_title", "Variable Loads"},
      {"fraVertVarR_title", "Rightside Variable Loads"},
      {"fraVertVarL_title", "Leftside Variable Loads"},
      {"txtRightDist_label", "Distance From Wall (FT)"},
      {"txtLeftLoad_label", "   Load     (PSF)"}}},
    {"horcon-blank",
     "HORIZONTAL LOADS",
     {{"panHorizontal", "Select Data Section to be Entered"},
      {"cmdHorizLine", "Horizontal &Line Loads"},
      {"cmdHorizDist", "Horizontal &Distributed Loads"},
      {"cmdFinished", "&Finished"},
      {"Label5", "(Highlighted sections indicate data are available.)"}}},
    {"horload-1-filled",
     "HORIZONTAL LOADS",
     {{"fraHorLine_title", "Horizontal Line Loads"},
      {"txtElevHorLine_label", "Elevation (FT)"},
      {"txtHorLine_label", "Line Load (PLF)"},
      {"cmdFinHorLine", "&Finished"},
      {"cmdDelHorLine", "&Delete Line Loads"}}},
    {"horload-2-filled",
     "HORIZONTAL LOADS",
     {{"fraHorDist_title", "Horizontal Distributed Loads"},
      {"txtElHorDist_label", "Elevation  (FT)"},
      {"txtHorDist_label", "  Load   (PSF)"},
      {"cmdFinHorDist", "&Finished"},
      {"cmdDelHorDist", "&Delete Distributed Loads"}}},
    {"rowepile-defaults",
     "SHEET PILE DATA FOR ROWE'S MOMENT REDUCTION",
     {{"frmDefData_title", "Default Sheet Pile Data"},
      {"cmdDefAccept", "&Accept"},
      {"txtDefAllow_label", "Allowable Stress (PSI)"},
      {"txtDefEMod_label", "Modulus of Elasticity (PSI)"}}},
    {"rowepile-additions",
     "SHEET PILE DATA FOR ROWE'S MOMENT REDUCTION",
     {{"frmAddData_title", "Additional Sheet Pile Data"},
      {"txtName_label", "Pile Name"},
      {"txtSectMod_label", "Section Modulus (IN^3)"},
      {"txtInertia_label", "Moment of Inertia (IN^4)"},
      {"txtAllow_label", "Allowable Stress (PSI)"},
      {"txtEMod_label", "Modulus of Elasticity (PSI)"},
      {"cmdDone", "&Done"}}},
};

} // namespace

TEST(Controls, StandOnTheirScreensWithTheirTexts) {
    std::map<std::string, Look> looks;
    for (const Look& look : allLooks()) {
        looks.emplace(look.name, look);
    }
    for (const Named& screen : screens) {
        SCOPED_TRACE(screen.look);
        Desk desk;
        looks.at(screen.look).reach(desk);
        EXPECT_EQ(desk.top().windowTitle(), screen.window);
        for (const auto& [name, text] : screen.texts) {
            EXPECT_TRUE(desk.isShown(name)) << name;
            EXPECT_EQ(desk.text(name), text);
        }
    }
}

TEST(Controls, EveryScreenHasTheHelpMenu) {
    for (const Look& look : allLooks()) {
        Desk desk;
        look.reach(desk);
        std::vector<std::string> captions;
        for (const QAction* action : desk.find<QMenu>("mnuHelp")->actions()) {
            captions.push_back(action->text().toStdString());
        }
        EXPECT_EQ(captions, (std::vector<std::string>{"&Contents", "&Search for help on ...", "",
                                                      "&About KORVANE"}))
            << look.name;
        desk.top().findChild<QAction*>("mnuHelpItem_1")->trigger();
        EXPECT_EQ(desk.helpItems, std::vector<Help>{Help::Search}) << look.name;
    }
}

TEST(Controls, EveryScreenTakesTheMainWindowsPlace) {
    for (const Look& look : allLooks()) {
        Desk desk;
        desk.mainWindow.setGeometry(40, 50, 900, 640);
        look.reach(desk);
        EXPECT_EQ(desk.top().geometry(), desk.mainWindow.geometry()) << look.name;
    }
}

TEST(Controls, RequiredSectionsAreRedAndTheOthersBlack) {
    Desk desk;
    desk.open(Screen::KEYIN);
    for (const char* button : {"cmdHeadCont", "cmdSurface", "cmdLayerData"}) {
        EXPECT_GT(desk.find(button)->palette().color(QPalette::ButtonText).red(), 150) << button;
    }
    for (const char* button : {"cmdWaterData", "cmdSurcharge", "cmdHorizontal"}) {
        EXPECT_EQ(desk.find(button)->palette().color(QPalette::ButtonText), QColor(0, 0, 0))
            << button;
    }
}

TEST(Controls, SketchesAreDrawnSharpAtAnySize) {
    for (const Look& look : allLooks()) {
        Desk desk;
        look.reach(desk);
        for (QWidget* sketch : desk.top().findChildren<QWidget*>()) {
            if (!sketch->objectName().startsWith("img")) {
                continue;
            }
            for (const int factor : {1, 3}) {
                sketch->resize(sketch->size() * factor);
                const QImage picture = sketch->grab().toImage();
                int loads = 0;
                for (int y = 0; y < picture.height(); ++y) {
                    for (int x = 0; x < picture.width(); ++x) {
                        loads += picture.pixelColor(x, y) == QColor(0, 70, 160) ? 1 : 0;
                    }
                }
                // The load's lines are there, in its colour, and thicker where there is room.
                EXPECT_GT(loads, 15 * factor * factor) << look.name << " times " << factor;
            }
        }
    }
}

} // namespace korvane::test
