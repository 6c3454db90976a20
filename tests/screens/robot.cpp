#include "robot.h"

#include "runtime/file_text.h"
#include "runtime/number_text.h"
#include "screens/screens.h"
#include "widgets/shown_text.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace korvane::test {

namespace {

/// An exception cannot pass through the event loops of the windows.
[[noreturn]] void giveUp(const std::string& reason) {
    std::fprintf(stderr, "the robot gives up: %s\n", reason.c_str());
    std::_Exit(1);
}

template <class Control>
Control& workable(QWidget& window, const QString& name) {
    auto* control = window.findChild<Control*>(name);
    if (control == nullptr || !control->isVisible() || !control->isEnabled()) {
        giveUp("cannot work " + name.toStdString() + " on " + window.objectName().toStdString());
    }
    return *control;
}

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
    clickOn(window, problem.WallType == "A" ? "optAnchored" : "optCantilever");
    typeInto(window, "txtWallTop", shown(problem.WallTopElev));
    if (problem.WallType == "A") {
        typeInto(window, "txtAnchorEl", shown(problem.AnchorElev));
    }
    if (problem.ProgramMode == "D") {
        clickOn(window, "optDesign");
        typeInto(window, "txtFSA1", shown(problem.FSActive));
        typeInto(window, "txtFSP1", shown(problem.FSPassive));
    } else {
        clickOn(window, "optAnalysis");
        clickOn(window, problem.FSKind == 1 ? "optFSOption1" : "optFSOption2");
        if (problem.FSKind == 2) {
            typeInto(window, "txtFSAAnalysis", shown(problem.FSActive));
        }
        typeInto(window, "txtWallBot", shown(problem.WallBottomElev));
        typeInto(window, "txtWallE", shown(problem.WallModulus));
        typeInto(window, "txtWallI", shown(problem.WallInertia));
    }
    clickOn(window, "cmdFinished");
}

void typeSurface(QWidget& window, const Problem& p) {
    for (const int side : {Right, Left}) {
        const QString name = side == Right ? "txtRight" : "txtLeft";
        typeColumn(window, name + "Dist", p.SurfacePointCount(side),
                   [&](int row) { return p.SurfaceDist(side, row); });
        typeColumn(window, name + "Elev", p.SurfacePointCount(side),
                   [&](int row) { return p.SurfaceElev(side, row); });
    }
    clickOn(window, "cmdFinished");
}

void typeLayers(QWidget& window, const Problem& p) {
    for (const int side : {Right, Left}) {
        const bool strengths = p.SoilDataKind(side) == "S";
        const int layers = p.SoilLayerCount(side);
        const auto column = [&](const char* array, const Array<double, 2, 11>& values, int rows) {
            typeColumn(window, array, rows, [&](int row) { return values(side, row); });
        };
        clickOn(window, side == Right ? "cmdEnterRightside" : "cmdEnterLeftside");
        clickOn(window, strengths ? "optStrengths" : "optCoefficients");
        typeInto(window, "txtFSA2", shown(p.Level2FSActive(side)));
        typeInto(window, "txtFSP2", shown(p.Level2FSPassive(side)));
        clickOn(window, "cmdOK");
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
        clickOn(window, "cmdFinished");
    }
    clickOn(window, "cmdFinishedAction");
}

void typeWater(QWidget& window, const Problem& p) {
    if (p.WaterDataKind == "P") {
        clickOn(window, "cmdWaterPres");
        typeColumn(window, "txtELWPR", p.WaterPressCount,
                   [&](int row) { return p.WaterPressElev(row); });
        typeColumn(window, "txtWPR", p.WaterPressCount,
                   [&](int row) { return p.WaterPressure(row); });
        clickOn(window, "cmdFinishedWatPres");
        clickOn(window, "cmdFinishedWaterData");
        return;
    }
    clickOn(window, "cmdWaterEls");
    typeInto(window, "txtWaterWt", shown(p.WaterUnitWeight));
    typeInto(window, "txtWaterElR", shown(p.WaterElev(Right)));
    typeInto(window, "txtWaterElL", shown(p.WaterElev(Left)));
    if (!p.SeepageKind.empty()) {
        clickOn(window, p.SeepageKind == "A" ? "optAutoSeep" : "optSeepEl");
        typeInto(window, "txtSeepEl", shown(p.SeepageElev));
        if (p.SeepageKind == "G") {
            typeInto(window, "txtSeepGrad", shown(p.SeepageGradient(1)));
        }
    } // None is set on a new problem
    clickOn(window, "cmdFinishedElevData");
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
    clickOn(window, kind.finished);
}

} // namespace

void typeInto(QWidget& window, const QString& field, const QString& text) {
    auto& control = workable<QLineEdit>(window, field);
    control.setFocus();
    control.selectAll();
    QTest::keyClick(&control, Qt::Key_Delete);
    QTest::keyClicks(&control, text);
}

void clickOn(QWidget& window, const QString& button) {
    auto& control = workable<QAbstractButton>(window, button);
    control.setFocus();
    QTest::mouseClick(&control, Qt::LeftButton, {}, QPoint(10, control.height() / 2));
}

Robot::Robot()
    : temp_("temp", temporary_.path().string()), date_("SOURCE_DATE_EPOCH", "1795305907"),
      program_(std::make_unique<Program>(dataScreens())) {
    program_->window->show();
}

Robot::~Robot() {
    answer("SAVE INPUT DATA?", "No");
    answer("SAVE OUTPUT DATA?", "No");
    during([this] { program_->window->close(); });
}

void Robot::plan(const std::string& window, std::function<void(QWidget&)> act) {
    deeds_.push_back({window, std::move(act)});
}

void Robot::planClick(const std::string& window, const QString& button) {
    plan(window, [button](QWidget& active) { clickOn(active, button); });
}

void Robot::planEntry(const Problem& problem) {
    const auto section = [&](const char* button, const char* screen,
                             void (*type)(QWidget&, const Problem&)) {
        planClick("KEYIN", button);
        plan(screen, [problem, type](QWidget& window) { type(window, problem); });
    };
    section("cmdHeadCont", "HEADCONT", typeHeading);
    section("cmdSurface", "SURFACE", typeSurface);
    section("cmdLayerData", "LAYRDATA", typeLayers);
    if (!problem.WaterDataKind.empty()) {
        section("cmdWaterData", "WATER", typeWater);
    }
    planClick("KEYIN", "cmdSurcharge");
    for (const SurchargeKind& kind : surchargeKinds()) {
        if (kind.count(problem, Right) + kind.count(problem, Left) > 0) {
            planClick("SURCHCON", kind.button);
            plan("SURCHARG",
                 [problem, &kind](QWidget& window) { typeSurcharge(window, kind, problem); });
        }
    }
    planClick("SURCHCON", "cmdFinished");
    planClick("KEYIN", "cmdHorizontal");
    planClick("HORCON", "cmdHorizLine");
    plan("HORLOAD", [p = problem](QWidget& window) {
        typeColumn(window, "txtElevHorLine", p.HLineCount, [&](int i) { return p.HLineElev(i); });
        typeColumn(window, "txtHorLine", p.HLineCount, [&](int i) { return p.HLineLoad(i); });
        clickOn(window, "cmdFinHorLine");
    });
    planClick("HORCON", "cmdHorizDist");
    plan("HORLOAD", [p = problem](QWidget& window) {
        typeColumn(window, "txtElHorDist", p.HDistCount, [&](int i) { return p.HDistElev(i); });
        typeColumn(window, "txtHorDist", p.HDistCount, [&](int i) { return p.HDistLoad(i); });
        clickOn(window, "cmdFinHorDist");
    });
    planClick("HORCON", "cmdFinished");
    planClick("KEYIN", "cmdFinished");
}

/// Each look is a timer of its own, since a repeating one rests while its slot waits in a window.
void Robot::look() {
    if (!working_) {
        return;
    }
    QTimer::singleShot(1, qApp, [this] { look(); });
    QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr || !window->isVisible()) {
        return;
    }
    if (auto* box = qobject_cast<QMessageBox*>(window)) {
        const std::string title = box->windowTitle().toStdString();
        if (const auto known = answers_.find(title); known != answers_.end()) {
            for (QAbstractButton* button : box->buttons()) {
                if (button->text().remove('&') == known->second && button->isEnabled()) {
                    idle_ = 0;
                    boxes.push_back(title + ": " + box->text().toStdString());
                    button->click();
                    return;
                }
            }
        }
    }
    if (!deeds_.empty() && window->objectName().toStdString() == deeds_.front().window) {
        idle_ = 0;
        const Deed deed = deeds_.front();
        deeds_.pop_front();
        deed.act(*window);
    } else if (++idle_ > 2000) {
        giveUp("waits for " + (deeds_.empty() ? "nothing" : deeds_.front().window) + ", but " +
               window->objectName().toStdString() + " \"" + window->windowTitle().toStdString() +
               "\" is open " +
               (qobject_cast<QMessageBox*>(window) != nullptr
                    ? qobject_cast<QMessageBox*>(window)->text().toStdString()
                    : ""));
    }
}

void Robot::during(const std::function<void()>& command) {
    working_ = true;
    idle_ = 0;
    QTimer::singleShot(1, qApp, [this] { look(); });
    command();
    working_ = false;
    QTest::qWait(5); // the last look has gone by
    EXPECT_TRUE(deeds_.empty()) << "still to do: " << deeds_.front().window;
    deeds_.clear();
}

void Robot::choose(const QString& menuItem) {
    auto* action = program_->window->findChild<QAction*>(menuItem);
    if (action == nullptr || !action->isEnabled()) {
        throw std::runtime_error("cannot choose " + menuItem.toStdString());
    }
    for (QObject* parent = action->parent(); parent != nullptr; parent = parent->parent()) {
        auto* menu = qobject_cast<QMenu*>(parent);
        if (menu != nullptr && !menu->isEnabled()) {
            throw std::runtime_error("the menu is disabled: " + menuItem.toStdString());
        }
    }
    during([action] { action->trigger(); });
}

void Robot::click(const QString& button) {
    during([&] { clickOn(*program_->window, button); });
}

std::string Robot::report() {
    return readFile(session().state.report.CurrentOutputName);
}

} // namespace korvane::test
