// Bounds of drawings, and what diagrams tell in numbers.
#include "plots/readings.h"

#include "drawing.h"
#include "plots/bounds_surface.h"
#include "plots/plot_screen.h"
#include "plots/result_plots.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::test {

namespace {

// ---- bounds ----

constexpr Corners Usual{{0, 0}, {1000, 500}};

TEST(Bounds, HoldAllInkWithALinesWidthOfRoom) {
    const RecordingSurface metrics; // 100 twips a character, 195 high
    BoundsSurface surface(metrics);
    surface.setLineWidth(2); // 30 twips, half of it on either side
    surface.line({300, 100}, {100, 200}, Red);
    EXPECT_EQ(surface.bounds(Usual), (Corners{{70, 70}, {330, 230}}));
    surface.text({400, 250}, "ABC");
    EXPECT_EQ(surface.bounds(Usual), (Corners{{70, 70}, {715, 460}}));
    surface.circle({50, 100}, 60, Red);
    EXPECT_EQ(surface.bounds(Usual), (Corners{{-40, 10}, {715, 460}}));
    surface.filledRectangle({{900, 0}, {800, 100}}, Black);
    EXPECT_EQ(surface.bounds(Usual), (Corners{{-40, -15}, {915, 460}}));
}

TEST(Bounds, WhatRunsFarOutDoesNotMakeTheRestTooSmall) {
    const RecordingSurface metrics;
    BoundsSurface surface(metrics);
    surface.line({500, 100}, {500, 50000}, Red);
    EXPECT_EQ(surface.bounds(Usual).b.y, 500 + 250);
    EXPECT_EQ(BoundsSurface(metrics).bounds(Usual), Usual); // nothing drawn
}

TEST(Bounds, OfACantileverWallsDeflectionsTakeInTheTopElevation) {
    const SmallWall wall;
    const RecordingSurface metrics;
    PlotView view = openPlotScreen(wall.data(), PlotScreenName::CANPLOT);
    view.PlotNumber = DeflectionPlot;
    // Its text is centred as if it were as wide as the second title: 26 characters of 100.
    const double left = 864 - 2600 / 2.0;
    EXPECT_EQ(plotBounds(metrics, wall.data(), view, Medium::Screen).a.x, left - 15);
    view.PlotNumber = MomentPlot;
    EXPECT_GT(plotBounds(metrics, wall.data(), view, Medium::Screen).a.x, 0);
}

// ---- readings ----

struct Readings : testing::Test, SmallWall {
    PlotReadings of(PlotScreenName screen, int plotNumber) {
        PlotView view = openPlotScreen(data(), screen);
        view.PlotNumber = plotNumber;
        return plotReadings(data(), view);
    }
};

using Lines = std::vector<std::string>;

constexpr UnitSystem US = UnitSystem::US;
constexpr UnitSystem SI = UnitSystem::SI;

TEST_F(Readings, ExtremesComeWithTheirElevations) {
    EXPECT_EQ(
        extremeLines(of(PlotScreenName::CANPLOT, ShearPlot), US),
        (Lines{"Largest 1990 LB/FT at elevation -5.00 FT, smallest -960 LB/FT at -10.00 FT"}));
    EXPECT_EQ(extremeLines(of(PlotScreenName::CANPLOT, DeflectionPlot), US),
              (Lines{"Largest 2.5000E+09 LB-IN3/FT at elevation 0.00 FT, smallest -9.5000E+08 "
                     "LB-IN3/FT at -10.00 FT"}));
    // Down to the wall's bottom at -20, the row below it left out.
    EXPECT_EQ(
        extremeLines(of(PlotScreenName::CANPLOT, RightPressurePlot), US),
        (Lines{"Passive: largest 720.0 PSF at elevation -20.00 FT, smallest 40.0 PSF at 0.00 FT",
               "Active: largest 380.0 PSF at elevation -20.00 FT, smallest 0.0 PSF at 0.00 FT"}));
}

TEST_F(Readings, InSiUnitsNumbersAreConverted) {
    // 1 LB/FT is 0.0145939 kN/m: 1990 and -960. 1 PSF is 0.04788026 kPa: 720, 40, 380.
    EXPECT_EQ(extremeLines(of(PlotScreenName::CANPLOT, ShearPlot), SI),
              (Lines{"Largest 29.04 kN/m at elevation -1.524 m, smallest -14.01 kN/m at "
                     "-3.048 m"}));
    EXPECT_EQ(extremeLines(of(PlotScreenName::CANPLOT, RightPressurePlot), SI),
              (Lines{"Passive: largest 34.47 kPa at elevation -6.096 m, smallest 1.92 kPa at "
                     "0.000 m",
                     "Active: largest 18.19 kPa at elevation -6.096 m, smallest 0.00 kPa at "
                     "0.000 m"}));
    // 1 LB-IN3/FT is 4.44822 / 1000 x 1.6387064E-5 / 0.3048 = 2.391512E-7 kNm3/m: 2.5E9 and -9.5E8.
    EXPECT_EQ(extremeLines(of(PlotScreenName::CANPLOT, DeflectionPlot), SI),
              (Lines{"Largest 5.9788E+02 kNm3/m at elevation 0.000 m, smallest -2.2719E+02 kNm3/m "
                     "at -3.048 m"}));
}

TEST_F(Readings, AnAnalysisTellsTrueDeflections) {
    problem.ProgramMode = Mode::Analysis;
    const PlotReadings deflections = of(PlotScreenName::CANPLOT, DeflectionPlot);
    EXPECT_EQ(deflections.title, "DEFLECTION (IN) FOR CANTILEVER WALL ANALYSIS");
    EXPECT_EQ(deflections.quantity, Quantity::Deflection);
}

/// Height in the box, from 1008 over 4320 twips, of an elevation between 0 and -20.
double heightOf(double elevation) {
    return 1008 - elevation / 20 * 4320;
}

TEST_F(Readings, ValuesLieStraightBetweenTheRows) {
    const PlotReadings moments = of(PlotScreenName::CANPLOT, MomentPlot);
    // From 0 at 0.00 to 1000 at -5.00, and from 3450 at -10.00 to -750 at -20.00.
    EXPECT_EQ(valueLine(moments, heightOf(-2.5), US), "At elevation -2.50 FT: 500 LB-FT/FT");
    EXPECT_EQ(valueLine(moments, heightOf(-15), US), "At elevation -15.00 FT: 1350 LB-FT/FT");
    EXPECT_EQ(valueLine(moments, heightOf(0), US), "At elevation 0.00 FT: 0 LB-FT/FT");
    EXPECT_EQ(valueLine(moments, heightOf(-20), US), "At elevation -20.00 FT: -750 LB-FT/FT");
    EXPECT_EQ(valueLine(moments, 1007, US), "");
    EXPECT_EQ(valueLine(moments, 5329, US), "");
    // 1350 x 4.44822 N = 6.005 kN.
    EXPECT_EQ(valueLine(moments, heightOf(-15), SI), "At elevation -4.572 m: 6.01 kNm/m");
}

TEST_F(Readings, BothPressuresOfASideAreTold) {
    // Right side at -7.5: passive between 500 and 600, active between 150 and 250.
    EXPECT_EQ(valueLine(of(PlotScreenName::CANPLOT, RightPressurePlot), heightOf(-7.5), US),
              "At elevation -7.50 FT: Passive 550.0 PSF, Active 200.0 PSF");
}

TEST_F(Readings, AtAStepTheValueBelowItIsTold) {
    EXPECT_EQ(valueLine(of(PlotScreenName::CANPLOT, ShearPlot), heightOf(-5), US),
              "At elevation -5.00 FT: 1990 LB/FT");
}

TEST_F(Readings, SketchesOfTheInputHaveATitleAlone) {
    const PlotReadings sketch = of(PlotScreenName::VUINPLOT, 1);
    EXPECT_EQ(sketch.title, "INPUT DATA: System");
    EXPECT_TRUE(extremeLines(sketch, US).empty());
    EXPECT_EQ(valueLine(sketch, 3000, US), "");
    EXPECT_EQ(of(PlotScreenName::ROWECURV, 1).title, "ROWE'S MOMENT REDUCTION FOR PILES IN SAND");
}

} // namespace

} // namespace korvane::test
