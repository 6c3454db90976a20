// After a box: where the focus goes, and what leaving the box but by its buttons means.
#include "looks.h"

#include "screens/field.h"
#include "widgets/message_box.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

class FailingTest : public testing::Test {
  protected:
    Desk desk;
    Problem& problem = desk.problem;

    /// Finishes, answers OK, and tells where the focus is then.
    std::string focusAfter(const QString& button) {
        desk.click(button);
        EXPECT_EQ(desk.boxes.size(), 1U);
        desk.boxes.clear();
        return desk.focused();
    }
    void openFilled(Screen screen, std::optional<Load> loadKind = {}) {
        problem = fullProblem();
        desk.session->HeadContDataValid = 1;
        desk.reopen(screen, loadKind);
    }
    void layers() {
        openFilled(Screen::LAYRDATA);
        desk.click("cmdEnterRightside");
        desk.click("cmdOK");
    }
};

} // namespace

// ---- the focus after OK
// --------------------------------------------------------------------------

TEST_F(FailingTest, TheHeadingScreenGoesToTheFirstMissingItem) {
    desk.open(Screen::HEADCONT);
    EXPECT_EQ(focusAfter("cmdFinished"), "txtHead_0");
    desk.type("txtHead_0", "A");
    EXPECT_EQ(focusAfter("cmdFinished"), "optCantilever");
    desk.click("optAnchored");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtWallTop");
    desk.type("txtWallTop", "10");
    EXPECT_EQ(focusAfter("cmdFinished"), "optDesign");
    desk.click("optAnalysis");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtAnchorEl");
    desk.type("txtAnchorEl", "11");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtAnchorEl"); // above the top
    desk.type("txtAnchorEl", "9");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtWallBot");
    desk.type("txtWallBot", "9");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtWallBot"); // not below the anchor
    desk.type("txtWallBot", "-20");
    desk.type("txtWallE", "29E6");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtWallI");
    desk.type("txtWallI", "100");
    EXPECT_EQ(focusAfter("cmdFinished"), "optFSOption1");
    desk.click("optFSOption2");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtFSAAnalysis");
}

TEST_F(FailingTest, TheFieldThatFailedIsSelected) {
    openFilled(Screen::HEADCONT);
    desk.type("txtFSP1", "-1");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtFSP1");
    EXPECT_EQ(desk.find<QLineEdit>("txtFSP1")->selectedText(), "-1");
}

TEST_F(FailingTest, TheSurfaceGoesToTheRowThatFailed) {
    desk.open(Screen::SURFACE);
    EXPECT_EQ(focusAfter("cmdFinished"), "txtRightDist_0");
    openFilled(Screen::SURFACE);
    desk.type("txtRightElev_1", "");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtRightElev_1");
    desk.type("txtRightElev_1", "0");
    desk.type("txtLeftDist_1", "0");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtLeftDist_1");
    desk.type("txtLeftDist_0", "");
    desk.type("txtLeftDist_1", "");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtLeftDist_0");
}

TEST_F(FailingTest, TheLayersGoToTheFieldThatFailed) {
    layers();
    desk.type("txtAdhes_1", "-1");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtAdhes_1");
    desk.type("txtMSTWt_0", "");
    EXPECT_EQ(focusAfter("cmdFinished"), "txtMSTWt_0");
    for (const char* field : {"txtSATWt_0", "txtSATWt_1", "txtMSTWt_1"}) {
        desk.type(field, "");
    }
    EXPECT_EQ(focusAfter("cmdFinished"), "txtSATWt_0"); // no layer at all
}

TEST_F(FailingTest, TheControlStageAndTheChoiceOfASideDoSo) {
    openFilled(Screen::LAYRDATA);
    desk.click("cmdEnterLeftside");
    desk.type("txtFSP2", "x");
    EXPECT_EQ(focusAfter("cmdOK"), "txtFSP2");
    problem.SoilLayerCount(Left) = 0;
    desk.reopen(Screen::LAYRDATA);
    EXPECT_EQ(focusAfter("cmdFinishedAction"), "cmdEnterLeftside");
}

TEST_F(FailingTest, TheWaterGoesToTheFieldThatFailed) {
    desk.open(Screen::WATER);
    desk.click("cmdWaterEls");
    desk.type("txtWaterElL", "1");
    EXPECT_EQ(focusAfter("cmdFinishedElevData"), "txtWaterWt");
    desk.type("txtWaterWt", "62.4");
    EXPECT_EQ(focusAfter("cmdFinishedElevData"), "txtWaterElR");
    desk.type("txtWaterElR", "1");
    desk.click("optSeepEl");
    EXPECT_EQ(focusAfter("cmdFinishedElevData"), "txtSeepEl");
    desk.type("txtSeepEl", "1");
    EXPECT_EQ(focusAfter("cmdFinishedElevData"), "txtSeepGrad");
    desk.type("txtSeepGrad", "2");
    EXPECT_EQ(focusAfter("cmdFinishedElevData"), "txtWaterElR"); // not above the left one
    desk.type("txtWaterElR", "3");
    desk.click("optSeepEl");
    desk.type("txtSeepEl", "2");
    desk.type("txtSeepGrad", "2");
    EXPECT_EQ(focusAfter("cmdFinishedElevData"), "txtSeepGrad");
    desk.reopen(Screen::WATER);
    desk.click("cmdWaterPres");
    desk.typeDown("txtELWPR", {"1"});
    EXPECT_EQ(focusAfter("cmdFinishedWatPres"), "txtELWPR_1"); // at least two rows
    desk.typeDown("txtELWPR", {"1", "2"});
    EXPECT_EQ(focusAfter("cmdFinishedWatPres"), "txtWPR_0");
}

TEST_F(FailingTest, TheLoadsGoToTheFieldThatFailed) {
    struct Case {
        Screen screen;
        Load kind;
        const char* field;
        const char* text;
        const char* finished;
    };
    const Case cases[] = {
        {Screen::SURCHARG, Load::Line, "txtQLLR_1", "0", "cmdFinVertLine"},
        {Screen::SURCHARG, Load::Uniform, "txtQUL", "-1", "cmdFinUnifLoad"},
        {Screen::SURCHARG, Load::Strip, "txtDS2L_0", "", "cmdFinStrips"},
        {Screen::SURCHARG, Load::Ramp, "txtDR2R", "1", "cmdFinRamps"},
        {Screen::SURCHARG, Load::Triangle, "txtQTL_0", "x", "cmdFinTriangs"},
        {Screen::SURCHARG, Load::Variable, "txtLeftDist_2", "1", "cmdFinVertVar"},
        {Screen::HORLOAD, Load::HorizontalLine, "txtHorLine_1", "", "cmdFinHorLine"},
        {Screen::HORLOAD, Load::Distributed, "txtElHorDist_1", "7", "cmdFinHorDist"},
    };
    for (const Case& one : cases) {
        openFilled(one.screen, one.kind);
        desk.type(one.field, one.text);
        EXPECT_EQ(focusAfter(one.finished), one.field);
    }
    problem = Problem();
    desk.reopen(Screen::HORLOAD, Load::Distributed);
    desk.type("txtElHorDist_0", "1");
    EXPECT_EQ(focusAfter("cmdFinHorDist"), "txtElHorDist_1"); // at least two rows
}

TEST_F(FailingTest, TheSheetPilesGoToTheFieldThatFailed) {
    desk.open(Screen::ROWEPILE);
    desk.type("txtDefEMod", "x");
    EXPECT_EQ(focusAfter("cmdDefAccept"), "txtDefEMod");
    desk.type("txtDefAllow", "0");
    EXPECT_EQ(focusAfter("cmdDefAccept"), "txtDefAllow");
    desk.type("txtDefAllow", "1");
    desk.type("txtDefEMod", "1");
    desk.click("cmdDefAccept");
    desk.type("txtName_0", "A");
    desk.type("txtSectMod_0", "1");
    EXPECT_EQ(focusAfter("cmdDone"), "txtInertia_0");
}

TEST_F(FailingTest, TheSectionListGoesToTheSectionThatFailed) {
    desk.open(Screen::KEYIN);
    EXPECT_EQ(focusAfter("cmdFinished"), "cmdHeadCont");
    desk.session->HeadContDataValid = 1;
    EXPECT_EQ(focusAfter("cmdFinished"), "cmdSurface");
    problem = fullProblem();
    problem.SoilLayerCount(Left) = 0;
    EXPECT_EQ(focusAfter("cmdFinished"), "cmdLayerData");
    problem = fullProblem();
    problem.SeepageElev = 100;
    EXPECT_EQ(focusAfter("cmdFinished"), "cmdWaterData");
    problem = fullProblem();
    problem.SeepageKind = Seepage::None;
    problem.SurfaceElev(Left, 1) = problem.WallTopElev + 1;
    EXPECT_EQ(focusAfter("cmdFinished"), "cmdSurface");
    problem.SurfaceElev(Left, 1) = problem.WallTopElev;
    problem.ProgramMode = Mode::Analysis;
    problem.WallBottomElev = problem.SurfaceElev(Right, 2);
    EXPECT_EQ(focusAfter("cmdFinished"), "cmdHeadCont");
}

// ---- Escape and the frame's cross of a box
// -------------------------------------------------------

namespace {

/// A way to a box whose Cancel deletes something, on a full problem.
struct Way {
    const char* name;
    Screen screen;
    std::optional<Load> loadKind;
    std::vector<const char*> before; ///< buttons to the stage
    const char* field;               ///< gets the text; none where it is null
    const char* text;
    const char* end; ///< the button that brings the box
    std::function<void(Problem&)> twist = [](Problem&) {};
};

void typeAndPush(Desk& desk, const char* field, const char* text, const char* button) {
    desk.type(field, text);
    desk.click(button);
}

const std::vector<Way>& ways() {
    static const std::vector<const char*> right{"cmdEnterRightside", "cmdOK"};
    static const std::vector<const char*> elevations{"cmdWaterEls"};
    static const std::vector<const char*> pressures{"cmdWaterPres"};
    const auto oneLayer = [](Problem& p) { p.SoilLayerCount(Right) = 1; };
    const auto analysis = [](Problem& p) {
        p.ProgramMode = Mode::Analysis;
        p.FSKind = FactorKind::OneForBoth;
        p.WallBottomElev = p.SurfaceElev(Right, 2);
        p.WallModulus = 29e6;
        p.WallInertia = 184.2;
    };
    const auto onePressure = [](Problem& p) {
        p.WaterDataKind = WaterData::Pressures;
        p.WaterPressCount = 1;
    };
    static const std::vector<Way> all = {
        {"heading missing", Screen::HEADCONT, {}, {}, "txtWallTop", "", "cmdFinished"},
        {"heading invalid", Screen::HEADCONT, {}, {}, "txtWallTop", "x", "cmdFinished"},
        {"analysis missing", Screen::HEADCONT, {}, {}, "txtWallE", "", "cmdFinished", analysis},
        {"no surface",
         Screen::SURFACE,
         {},
         {},
         nullptr,
         "",
         "cmdFinished",
         [](Problem& p) { p.SurfacePointCount.fill(0); }},
        {"surface right", Screen::SURFACE, {}, {}, "txtRightDist_0", "50", "cmdFinished"},
        {"surface left", Screen::SURFACE, {}, {}, "txtLeftDist_0", "50", "cmdFinished"},
        {"no surface left",
         Screen::SURFACE,
         {},
         {},
         "txtLeftDist_0",
         "",
         "cmdFinished",
         [](Problem& p) { p.SurfacePointCount(Left) = 1; }},
        {"no layers",
         Screen::LAYRDATA,
         {},
         {},
         nullptr,
         "",
         "cmdFinishedAction",
         [](Problem& p) { p.SoilLayerCount(Left) = 0; }},
        {"level 2 factor", Screen::LAYRDATA, {}, {"cmdEnterRightside"}, "txtFSA2", "-1", "cmdOK"},
        {"layers invalid", Screen::LAYRDATA, {}, right, "txtAdhes_0", "-1", "cmdFinished"},
        {"layers missing", Screen::LAYRDATA, {}, right, "txtSATWt_0", "", "cmdFinished"},
        {"one layer missing",
         Screen::LAYRDATA,
         {},
         right,
         "txtMSTWt_0",
         "",
         "cmdFinished",
         oneLayer},
        {"water missing", Screen::WATER, {}, elevations, "txtWaterWt", "", "cmdFinishedElevData"},
        {"water inconsistent",
         Screen::WATER,
         {},
         elevations,
         "txtWaterElL",
         "-6",
         "cmdFinishedElevData"},
        {"seepage missing", Screen::WATER, {}, elevations, "txtSeepEl", "x", "cmdFinishedElevData"},
        {"seepage above the water",
         Screen::WATER,
         {},
         elevations,
         "txtSeepEl",
         "-5",
         "cmdFinishedElevData"},
        {"gradient", Screen::WATER, {}, elevations, "txtSeepGrad", "1", "cmdFinishedElevData"},
        {"gradient invalid",
         Screen::WATER,
         {},
         elevations,
         "txtSeepGrad",
         "x",
         "cmdFinishedElevData"},
        {"one pressure",
         Screen::WATER,
         {},
         pressures,
         nullptr,
         "",
         "cmdFinishedWatPres",
         onePressure},
        {"pressure invalid",
         Screen::WATER,
         {},
         pressures,
         "txtWPR_1",
         "x",
         "cmdFinishedWatPres",
         onePressure},
        {"line missing", Screen::SURCHARG, Load::Line, {}, "txtQLLR_0", "", "cmdFinVertLine"},
        {"line invalid", Screen::SURCHARG, Load::Line, {}, "txtQLLR_0", "0", "cmdFinVertLine"},
        {"uniform invalid", Screen::SURCHARG, Load::Uniform, {}, "txtQUL", "x", "cmdFinUnifLoad"},
        {"strip missing", Screen::SURCHARG, Load::Strip, {}, "txtQSL_0", "", "cmdFinStrips"},
        {"strip invalid", Screen::SURCHARG, Load::Strip, {}, "txtQSR_0", "0", "cmdFinStrips"},
        {"ramp missing", Screen::SURCHARG, Load::Ramp, {}, "txtQRL", "", "cmdFinRamps"},
        {"ramp invalid", Screen::SURCHARG, Load::Ramp, {}, "txtQRR", "x", "cmdFinRamps"},
        {"triangle missing", Screen::SURCHARG, Load::Triangle, {}, "txtQTL_0", "", "cmdFinTriangs"},
        {"triangle invalid",
         Screen::SURCHARG,
         Load::Triangle,
         {},
         "txtQTR_0",
         "x",
         "cmdFinTriangs"},
        {"variable missing",
         Screen::SURCHARG,
         Load::Variable,
         {},
         "txtLeftLoad_1",
         "",
         "cmdFinVertVar"},
        {"variable invalid",
         Screen::SURCHARG,
         Load::Variable,
         {},
         "txtRightLoad_1",
         "x",
         "cmdFinVertVar"},
        {"horizontal line missing",
         Screen::HORLOAD,
         Load::HorizontalLine,
         {},
         "txtHorLine_0",
         "",
         "cmdFinHorLine"},
        {"horizontal line invalid",
         Screen::HORLOAD,
         Load::HorizontalLine,
         {},
         "txtHorLine_0",
         "x",
         "cmdFinHorLine"},
        {"distributed missing",
         Screen::HORLOAD,
         Load::Distributed,
         {},
         "txtHorDist_0",
         "",
         "cmdFinHorDist"},
        {"distributed invalid",
         Screen::HORLOAD,
         Load::Distributed,
         {},
         "txtHorDist_0",
         "x",
         "cmdFinHorDist"},
        {"sections missing",
         Screen::KEYIN,
         {},
         {},
         nullptr,
         "",
         "cmdFinished",
         [](Problem& p) { p.SoilLayerCount(Left) = 0; }},
        {"seepage and surface",
         Screen::KEYIN,
         {},
         {},
         nullptr,
         "",
         "cmdFinished",
         [](Problem& p) { p.SeepageElev = 100; }},
        {"surface above the wall",
         Screen::KEYIN,
         {},
         {},
         nullptr,
         "",
         "cmdFinished",
         [](Problem& p) { p.SurfaceElev(Left, 1) = p.WallTopElev + 1; }},
        {"wall bottom above the surface",
         Screen::KEYIN,
         {},
         {},
         nullptr,
         "",
         "cmdFinished",
         analysis},
        {"default sections", Screen::ROWEPILE, {}, {}, "txtDefAllow", "0", "cmdDefAccept"},
        {"additional sections",
         Screen::ROWEPILE,
         {},
         {"cmdDefAccept"},
         "txtName_0",
         "OWN",
         "cmdDone"},
    };
    return all;
}

/// As far as the button that brings the box.
void go(Desk& desk, const Way& way) {
    desk.problem = fullProblem();
    desk.session->HeadContDataValid = 1;
    way.twist(desk.problem);
    desk.open(way.screen, way.loadKind);
    for (const char* button : way.before) {
        desk.click(button);
    }
    if (way.field != nullptr) {
        desk.type(way.field, way.text);
    }
}

/// All that stands in the fields of the screen, hidden or not.
QStringList textsOf(Desk& desk) {
    QStringList texts;
    for (const Field* field : desk.top().findChildren<Field*>()) {
        texts.append(field->text());
    }
    return texts;
}

/// Leaves the real box that is on show by a key or its frame, or pushes its Cancel.
enum class Leaving { Escape, Frame, CancelButton };

Answer answerOfRealBox(const MessageBox& box, Leaving leaving) {
    QTimer::singleShot(0, qApp, [&] {
        auto* shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(shown, nullptr);
        switch (leaving) {
        case Leaving::Escape:
            QTest::keyClick(shown, Qt::Key_Escape);
            break;
        case Leaving::Frame:
            shown->close();
            break;
        case Leaving::CancelButton:
            QTest::mouseClick(shown->button(QMessageBox::Cancel), Qt::LeftButton);
            break;
        }
        if (shown->isVisible()) { // never leave the test hanging
            shown->done(0);
        }
    });
    return askBox(nullptr, box);
}

} // namespace

TEST_F(FailingTest, EscapeAndTheFrameLeadBackToTheScreenWithNothingDeleted) {
    for (const Way& way : ways()) {
        for (const Leaving leaving : {Leaving::Escape, Leaving::Frame}) {
            SCOPED_TRACE(way.name);
            Desk other;
            go(other, way);
            int boxes = 0;
            Problem atBox;
            other.onAsk = [&](const MessageBox& box) {
                EXPECT_EQ(box.buttons, Buttons::OkCancel);
                atBox = other.problem;
                ++boxes;
                const Answer answer = answerOfRealBox(box, leaving);
                EXPECT_EQ(answer, Answer::Back);
                return answer;
            };
            const QStringList texts = textsOf(other);
            other.click(way.end);
            EXPECT_EQ(boxes, 1); // also where OK would go on to a further test
            EXPECT_TRUE(other.isOpen());
            EXPECT_TRUE(other.find(way.end)->isVisible()); // and at the same stage
            EXPECT_EQ(other.session->SolutionFailed, 0);
            EXPECT_EQ(other.problem, atBox);
            EXPECT_EQ(textsOf(other), texts);
        }
    }
}

/// The same ways by Cancel, which shows that each of their boxes deletes.
TEST_F(FailingTest, CancelOfEachOfTheseBoxesClosesOrEmptiesTheScreen) {
    for (const Way& way : ways()) {
        SCOPED_TRACE(way.name);
        Desk other;
        go(other, way);
        other.onAsk = [&](const MessageBox& box) {
            return answerOfRealBox(box, Leaving::CancelButton);
        };
        other.click(way.end);
        EXPECT_NE(other.isOpen(), way.screen != Screen::ROWEPILE);
        EXPECT_TRUE(way.screen != Screen::ROWEPILE || other.find("cmdDefAccept")->isVisible());
    }
}

TEST_F(FailingTest, CancelByItsButtonDeletesAsTold) {
    problem = fullProblem();
    desk.onAsk = [](const MessageBox& box) { return answerOfRealBox(box, Leaving::CancelButton); };
    desk.open(Screen::SURCHARG, Load::Line);
    typeAndPush(desk, "txtQLLR_0", "0", "cmdFinVertLine");
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.VLineCount(Right), 0);
    EXPECT_EQ(problem.VLineCount(Left), 0);
}

TEST_F(FailingTest, EscapeOnOtherBoxesIsCancel) {
    const MessageBox harmless{.text = "Go on?", .buttons = Buttons::OkCancel};
    EXPECT_EQ(answerOfRealBox(harmless, Leaving::Escape), Answer::Cancel);
    EXPECT_EQ(answerOfRealBox(harmless, Leaving::Frame), Answer::Cancel);
    EXPECT_EQ(answerOfRealBox({.text = "Read"}, Leaving::Escape), Answer::Ok);
}

// ---- the focus without a box
// ---------------------------------------------------------------------

TEST_F(FailingTest, ASectionOpenedByItsLetterHasTheFocusWhenItReturns) {
    desk.open(Screen::KEYIN);
    QTest::keyClick(&desk.top(), Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !desk.shown.empty(); }));
    EXPECT_EQ(desk.shown.back(), Screen::LAYRDATA);
    EXPECT_EQ(desk.focused(), "cmdLayerData");
    desk.reopen(Screen::SURCHCON);
    QTest::keyClick(&desk.top(), Qt::Key_T, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return desk.shown.size() == 2; }));
    EXPECT_EQ(desk.focused(), "cmdTriangs");
}

TEST_F(FailingTest, AfterTheRightSideComesTheLeft) {
    openFilled(Screen::LAYRDATA);
    EXPECT_EQ(desk.focused(), "cmdEnterRightside");
    for (const auto& [enter, next] : {std::pair{"cmdEnterRightside", "cmdEnterLeftside"},
                                      std::pair{"cmdEnterLeftside", "cmdFinishedAction"}}) {
        desk.click(enter);
        desk.click("cmdOK");
        desk.click("cmdFinished");
        EXPECT_EQ(desk.focused(), next);
    }
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 2;
    desk.reopen(Screen::WATER);
    desk.click("cmdWaterPres");
    desk.click("cmdFinishedWatPres");
    EXPECT_EQ(desk.focused(), "cmdWaterPres");
}

TEST_F(FailingTest, TheFocusIsVisibleAtOnce) {
    for (const Look& look : allLooks()) {
        Desk other;
        look.reach(other);
        QWidget* focused = other.top().focusWidget();
        ASSERT_NE(focused, nullptr) << look.name;
        EXPECT_TRUE(focused->isVisible()) << look.name;
        QApplication::processEvents();
        const QImage with = focused->grab().toImage();
        focused->clearFocus();
        EXPECT_NE(focused->grab().toImage(), with)
            << look.name << " " << focused->objectName().toStdString();
    }
}

} // namespace korvane::test
