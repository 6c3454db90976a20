#include "typing.h"

#include "runtime/number_text.h"
#include "widgets/shown_text.h"

#include <functional>

namespace korvane::test {

namespace {

QString shown(double value) {
    return shownText(generalForm(value));
}

void typeColumn(QWidget& window, const QString& array, int rows,
                const std::function<double(int)>& value) {
    for (int row = 1; row <= rows; ++row) {
        typeInto(window, QString("%1_%2").arg(array).arg(row - 1), shown(value(row)));
    }
}

void typeHeading(QWidget& window, const Problem& problem) {
    for (int line = 1; line <= problem.NumHeadingLines; ++line) {
        typeInto(window, QString("txtHead_%1").arg(line - 1),
                 shownText(problem.HeadingLines(line)));
    }
    pushButton(window, problem.WallType == WallKind::Anchored ? "optAnchored" : "optCantilever");
    typeInto(window, "txtWallTop", shown(problem.WallTopElev));
    if (problem.WallType == WallKind::Anchored) {
        typeInto(window, "txtAnchorEl", shown(problem.AnchorElev));
    }
    if (problem.ProgramMode == Mode::Design) {
        pushButton(window, "optDesign");
        typeInto(window, "txtFSA1", shown(problem.FSActive));
        typeInto(window, "txtFSP1", shown(problem.FSPassive));
    } else {
        pushButton(window, "optAnalysis");
        pushButton(window,
                   problem.FSKind == FactorKind::OneForBoth ? "optFSOption1" : "optFSOption2");
        if (problem.FSKind == FactorKind::ActiveGiven) {
            typeInto(window, "txtFSAAnalysis", shown(problem.FSActive));
        }
        typeInto(window, "txtWallBot", shown(problem.WallBottomElev));
        typeInto(window, "txtWallE", shown(problem.WallModulus));
        typeInto(window, "txtWallI", shown(problem.WallInertia));
    }
    pushButton(window, "cmdFinished");
}

void typeSurface(QWidget& window, const Problem& p) {
    for (const int side : {Right, Left}) {
        const QString name = side == Right ? "txtRight" : "txtLeft";
        typeColumn(window, name + "Dist", p.SurfacePointCount(side),
                   [&](int row) { return p.SurfaceDist(side, row); });
        typeColumn(window, name + "Elev", p.SurfacePointCount(side),
                   [&](int row) { return p.SurfaceElev(side, row); });
    }
    pushButton(window, "cmdFinished");
}

void typeLayers(QWidget& window, const Problem& p) {
    for (const int side : {Right, Left}) {
        const bool strengths = p.SoilDataKind(side) == SoilData::Strengths;
        const int layers = p.SoilLayerCount(side);
        const auto column = [&](const char* array, const Array<double, 2, 11>& values, int rows) {
            typeColumn(window, array, rows, [&](int row) { return values(side, row); });
        };
        pushButton(window, side == Right ? "cmdEnterRightside" : "cmdEnterLeftside");
        pushButton(window, strengths ? "optStrengths" : "optCoefficients");
        typeInto(window, "txtFSA2", shown(p.Level2FSActive(side)));
        typeInto(window, "txtFSP2", shown(p.Level2FSPassive(side)));
        pushButton(window, "cmdOK");
        column("txtSATWt", p.SoilSatWeight, layers);
        column("txtMSTWt", p.SoilMoistWeight, layers);
        column("txtElev", p.SoilBottomElev, layers - 1);
        if (strengths) {
            column("txtIntFrict", p.SoilFriction, layers);
            column("txtCohes", p.SoilCohesion, layers);
            column("txtWallFrict", p.SoilWallFriction, layers);
            column("txtAdhes", p.SoilAdhesion, layers);
            column("txtSlope", p.SoilBottomSlope, layers - 1);
            column("txtFSA3", p.SoilFSActive, layers);
            column("txtFSP3", p.SoilFSPassive, layers);
        } else {
            column("txtAK", p.SoilCoefActive, layers);
            column("txtPK", p.SoilCoefPassive, layers);
        }
        pushButton(window, "cmdFinished");
    }
    pushButton(window, "cmdFinishedAction");
}

void typeWater(QWidget& window, const Problem& p) {
    if (p.WaterDataKind == WaterData::Pressures) {
        pushButton(window, "cmdWaterPres");
        typeColumn(window, "txtELWPR", p.WaterPressCount,
                   [&](int row) { return p.WaterPressElev(row); });
        typeColumn(window, "txtWPR", p.WaterPressCount,
                   [&](int row) { return p.WaterPressure(row); });
        pushButton(window, "cmdFinishedWatPres");
        pushButton(window, "cmdFinishedWaterData");
        return;
    }
    pushButton(window, "cmdWaterEls");
    typeInto(window, "txtWaterWt", shown(p.WaterUnitWeight));
    typeInto(window, "txtWaterElR", shown(p.WaterElev(Right)));
    typeInto(window, "txtWaterElL", shown(p.WaterElev(Left)));
    if (p.SeepageKind != Seepage::None) {
        pushButton(window, p.SeepageKind == Seepage::Automatic ? "optAutoSeep" : "optSeepEl");
        typeInto(window, "txtSeepEl", shown(p.SeepageElev));
        if (p.SeepageKind == Seepage::Given) {
            typeInto(window, "txtSeepGrad", shown(p.SeepageGradient(1)));
        }
    } // None is set on a new problem
    pushButton(window, "cmdFinishedElevData");
}

/// A kind of vertical load as the list and its screen name it.
struct SurchargeKind {
    const char* button;
    const char* finished;
    int rows;
    std::vector<std::pair<QString, QString>> controls; ///< right, left
    std::function<int(const Problem&, int)> count;
    std::function<std::vector<double>(const Problem&, int, int)> row;
};

const std::vector<SurchargeKind>& surchargeKinds() {
    using P = const Problem&;
    static const std::vector<SurchargeKind> kinds = {
        {"cmdVertLine",
         "cmdFinVertLine",
         5,
         {{"txtDLLR", "txtDLLL"}, {"txtQLLR", "txtQLLL"}},
         [](P p, int s) { return p.VLineCount(s); },
         [](P p, int s, int i) {
             return std::vector{p.VLineDist(s, i), p.VLineLoad(s, i)};
         }},
        {"cmdUniform",
         "cmdFinUnifLoad",
         1,
         {{"txtQUR", "txtQUL"}},
         [](P p, int s) { return p.VUniformCount(s); },
         [](P p, int s, int) { return std::vector{p.VUniformLoad(s)}; }},
        {"cmdStrips",
         "cmdFinStrips",
         5,
         {{"txtDS1R", "txtDS1L"}, {"txtDS2R", "txtDS2L"}, {"txtQSR", "txtQSL"}},
         [](P p, int s) { return p.VStripCount(s); },
         [](P p, int s, int i) {
             return std::vector{p.VStripStart(s, i), p.VStripEnd(s, i), p.VStripLoad(s, i)};
         }},
        {"cmdRamps",
         "cmdFinRamps",
         1,
         {{"txtDR1R", "txtDR1L"}, {"txtDR2R", "txtDR2L"}, {"txtQRR", "txtQRL"}},
         [](P p, int s) { return p.VRampCount(s); },
         [](P p, int s, int) {
             return std::vector{p.VRampStart(s), p.VRampEnd(s), p.VRampLoad(s)};
         }},
        {"cmdTriangs",
         "cmdFinTriangs",
         5,
         {{"txtDT1R", "txtDT1L"},
          {"txtDT2R", "txtDT2L"},
          {"txtDT3R", "txtDT3L"},
          {"txtQTR", "txtQTL"}},
         [](P p, int s) { return p.VTriCount(s); },
         [](P p, int s, int i) {
             return std::vector{p.VTriStart(s, i), p.VTriPeak(s, i), p.VTriEnd(s, i),
                                p.VTriLoad(s, i)};
         }},
        {"cmdVertVar",
         "cmdFinVertVar",
         11,
         {{"txtRightDist", "txtLeftDist"}, {"txtRightLoad", "txtLeftLoad"}},
         [](P p, int s) { return p.VVarCount(s); },
         [](P p, int s, int i) {
             return std::vector{p.VVarDist(s, i), p.VVarLoad(s, i)};
         }},
    };
    return kinds;
}

void typeSurcharge(QWidget& window, const SurchargeKind& kind, const Problem& problem) {
    for (const int side : {Right, Left}) {
        for (int row = 1; row <= kind.count(problem, side); ++row) {
            const std::vector<double> values = kind.row(problem, side, row);
            for (std::size_t column = 0; column < values.size(); ++column) {
                const auto& [right, left] = kind.controls[column];
                const QString name = side == Right ? right : left;
                typeInto(window, kind.rows == 1 ? name : QString("%1_%2").arg(name).arg(row - 1),
                         shown(values[column]));
            }
        }
    }
    pushButton(window, kind.finished);
}

} // namespace

void expectEntry(Person& person, const Problem& problem) {
    const auto push = [&](const char* screen, const char* button) {
        person.expectScreen(screen, [button](QDialog& list) { pushButton(list, button); });
    };
    const auto section = [&](const char* button, const char* screen,
                             void (*type)(QWidget&, const Problem&)) {
        push("KEYIN", button);
        person.expectScreen(screen, [problem, type](QWidget& window) { type(window, problem); });
    };
    section("cmdHeadCont", "HEADCONT", typeHeading);
    section("cmdSurface", "SURFACE", typeSurface);
    section("cmdLayerData", "LAYRDATA", typeLayers);
    if (problem.WaterDataKind != WaterData::None) {
        section("cmdWaterData", "WATER", typeWater);
    }
    push("KEYIN", "cmdSurcharge");
    for (const SurchargeKind& kind : surchargeKinds()) {
        if (kind.count(problem, Right) + kind.count(problem, Left) > 0) {
            push("SURCHCON", kind.button);
            person.expectScreen("SURCHARG", [problem, &kind](QWidget& window) {
                typeSurcharge(window, kind, problem);
            });
        }
    }
    push("SURCHCON", "cmdFinished");
    push("KEYIN", "cmdHorizontal");
    push("HORCON", "cmdHorizLine");
    person.expectScreen("HORLOAD", [p = problem](QWidget& window) {
        typeColumn(window, "txtElevHorLine", p.HLineCount, [&](int i) { return p.HLineElev(i); });
        typeColumn(window, "txtHorLine", p.HLineCount, [&](int i) { return p.HLineLoad(i); });
        pushButton(window, "cmdFinHorLine");
    });
    push("HORCON", "cmdHorizDist");
    person.expectScreen("HORLOAD", [p = problem](QWidget& window) {
        typeColumn(window, "txtElHorDist", p.HDistCount, [&](int i) { return p.HDistElev(i); });
        typeColumn(window, "txtHorDist", p.HDistCount, [&](int i) { return p.HDistLoad(i); });
        pushButton(window, "cmdFinHorDist");
    });
    push("HORCON", "cmdFinished");
    push("KEYIN", "cmdFinished");
}

} // namespace korvane::test
