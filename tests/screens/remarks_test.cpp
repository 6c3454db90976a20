// The line for remarks: limits and units of the field in focus, what a saved file would lose; F1.
#include "looks.h"

#include "problem/save_losses.h"
#include "screens/controls.h"
#include "screens/field.h"
#include "widgets/help_sections.h"
#include "widgets/help_viewer.h"

#include <QDialog>
#include <QLayout>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

class RemarksTest : public testing::Test {
  protected:
    Desk desk;
    Problem& problem = desk.problem;

    std::string remarkAt(const QString& field) {
        desk.workable<QWidget>(field)->setFocus();
        return desk.text("lblRemark");
    }
    std::string remark() { return desk.text("lblRemark"); }
    bool warns() {
        return desk.find("lblRemark")->palette().color(QPalette::WindowText) == RequiredColour;
    }
    void open(Screen screen, const std::vector<QString>& buttons = {},
              std::optional<Load> loadKind = {}) {
        problem = fullProblem();
        for (const int side : {Right, Left}) { // what a file holds as it is
            problem.SoilBottomSlope(side, 1) = 0;
            problem.SoilFSPassive(side, 2) = 0;
        }
        problem.SeepageKind = Seepage::Automatic;
        problem.SeepageElev = -9;
        desk.session->HeadContDataValid = 1;
        desk.reopen(screen, loadKind);
        for (const QString& button : buttons) {
            desk.click(button);
        }
    }
    /// Types, and looks for the words of a rule behind the limits.
    void expectLoss(const QString& field, const QString& text, const std::string& value) {
        desk.type(field, text);
        EXPECT_NE(remark().find(" " + value + ": "), std::string::npos)
            << field.toStdString() << ": " << remark();
        EXPECT_TRUE(warns()) << field.toStdString();
    }
    void expectNoLoss(const QString& field, const QString& text) {
        desk.type(field, text);
        EXPECT_EQ(remark().find("saved "), std::string::npos) << remark();
        EXPECT_FALSE(warns()) << field.toStdString();
    }
};

} // namespace

// ---- limits and units
// ----------------------------------------------------------------------------

TEST_F(RemarksTest, LimitsAndUnitOfTheFieldInFocus) {
    open(Screen::HEADCONT);
    EXPECT_EQ(remarkAt("txtWallTop"), "Wall top elevation (FT): any number.");
    EXPECT_EQ(remarkAt("txtAnchorEl"), "Anchor elevation (FT): not above the wall top.");
    EXPECT_EQ(remarkAt("txtFSP1"), "Level 1 safety factor, passive: not below 0; empty or 0 means "
                                   "the active factor (in a file without factors it is 1.5).");
    open(Screen::SURFACE);
    EXPECT_EQ(remarkAt("txtRightDist_1"),
              "Rightside, distance from wall (FT), row 2: beyond the row above.");
    open(Screen::LAYRDATA, {"cmdEnterLeftside", "cmdOK"});
    EXPECT_EQ(remarkAt("txtIntFrict_0"),
              "Angle of internal friction (DEG), row 1: 0 to 45; empty means 0.");
    EXPECT_EQ(remarkAt("txtSATWt_3"), "Saturated unit weight (PCF), row 4: above 0.");
    open(Screen::WATER, {"cmdWaterEls"});
    EXPECT_EQ(remarkAt("txtWaterElL"), "Leftside water elevation (FT): any number.");
    open(Screen::SURCHARG, {}, Load::Triangle);
    EXPECT_EQ(remarkAt("txtDT3L_1"),
              "Leftside triangular load, distance to end (FT), row 2: not before the peak; start, "
              "peak and end not all equal.");
    open(Screen::HORLOAD, {}, Load::HorizontalLine);
    EXPECT_EQ(remarkAt("txtHorLine_0"), "Horizontal line load (PLF), row 1: any number.");
    desk.reopen(Screen::ROWEPILE);
    EXPECT_EQ(remarkAt("txtDefAllow"), "Default sections, allowable stress (PSI): above 0.");
}

TEST_F(RemarksTest, EveryFieldTellsItsNameAndLimitsAndTheLineIsNeverBlank) {
    for (const Look& look : allLooks()) {
        SCOPED_TRACE(look.name);
        Desk other;
        look.reach(other);
        EXPECT_NE(other.text("lblRemark"), "");
        for (Field* field : other.top().findChildren<Field*>()) {
            if (!field->isVisible() || !field->isEnabled()) {
                continue;
            }
            field->setFocus();
            const std::string told = other.text("lblRemark");
            EXPECT_TRUE(told.starts_with(field->accessibleName().toStdString() + ": ")) << told;
            EXPECT_FALSE(field->meaning().limits.isEmpty());
        }
        for (QPushButton* button : other.top().findChildren<QPushButton*>()) {
            if (button->isVisible()) {
                button->setFocus();
                EXPECT_EQ(other.text("lblRemark"), "F1 opens the guide at this section.");
            }
        }
        // The line stands at the screen's lower edge, and the scroll area takes all above it.
        const QWidget* line = other.find("lblRemark");
        EXPECT_EQ(line->geometry().bottom(), other.top().rect().bottom());
        const QWidget* canvas = other.find("canvas");
        const QWidget* scroll = canvas->parentWidget()->parentWidget();
        EXPECT_EQ(scroll->geometry().bottom() + 1 + other.top().layout()->spacing(),
                  line->geometry().top());
    }
}

// ---- what a saved file loses
// ---------------------------------------------------------------------

TEST_F(RemarksTest, NothingIsToldOfAProblemThatAFileHolds) {
    open(Screen::HEADCONT);
    ASSERT_TRUE(lossesOfSave(problem).empty());
    expectNoLoss("txtFSP1", "1.25");
    expectNoLoss("txtHead_0", "RIVER WALL");
    open(Screen::LAYRDATA, {"cmdEnterRightside", "cmdOK"});
    expectNoLoss("txtSlope_0", "0");
    expectNoLoss("txtFSA3_0", "1.5");
    expectNoLoss("txtFSP3_0", "1.5");
}

TEST_F(RemarksTest, TheHeadingScreenTellsWhatAFileLoses) {
    open(Screen::HEADCONT);
    expectLoss("txtHead_0", "River wall", "Small letters in a heading");
    desk.type("txtHead_0", "");
    expectLoss("txtHead_2", "River wall", "Small letters in a heading");
    expectLoss("txtFSA1", "1.125", "Level 1 factor with more than two decimals");
    expectLoss("txtFSP1", "1.125", "Level 1 factor with more than two decimals");
    expectLoss("txtFSP1", "0.001", "Level 1 factor below 0.005");
    desk.type("txtFSA1", "");
    expectNoLoss("txtFSP1", ""); // 1.0 both
    problem.SurfaceElev(Left, 1) = -40;
    desk.click("optAnalysis");
    desk.click("optFSOption2");
    expectLoss("txtFSAAnalysis", "1.255", "Level 1 factor with more than two decimals");
    expectLoss("txtWallBot", "-40",
               "Wall bottom of an analysis not below the ground on both sides");
    expectNoLoss("txtWallBot", "-41");
}

TEST_F(RemarksTest, TheSurfaceTellsWhatAFileRefuses) {
    open(Screen::SURFACE);
    expectLoss("txtLeftDist_0", "-1", "First surface point before the wall");
    expectNoLoss("txtRightDist_0", "0");
}

TEST_F(RemarksTest, TheLayersTellWhatAFileLoses) {
    open(Screen::LAYRDATA, {"cmdEnterRightside"});
    expectLoss("txtFSP2", "1.5", "Level 2 passive factor without an active one");
    desk.type("txtFSA2", "1");
    expectNoLoss("txtFSP2", "1.5");
    desk.click("cmdOK");
    expectLoss("txtSlope_0", "0.1", "Slope of a layer's bottom");
    expectLoss("txtSlope_1", "0.1", "Slope of a layer's bottom"); // before the third row is there
    expectLoss("txtFSP3_1", "1.5", "Passive factor of a layer without an active one");
    expectLoss("txtWallFrict_0", "-1", "Angle of wall friction below 0");
    expectLoss("txtAdhes_0", "1e9", "Adhesion above the cohesion");
}

TEST_F(RemarksTest, ASideByCoefficientsTellsWhatAFileLoses) {
    open(Screen::LAYRDATA, {"cmdEnterRightside"});
    problem.SoilBottomSlope(Right, 1) = 0.1;
    desk.answers = {Answer::Yes};
    desk.click("optCoefficients");
    expectLoss("txtFSA2", "1.5", "Level 2 factors of a side by coefficients");
    expectLoss("txtFSP2", "1.5", "Level 2 factors of a side by coefficients");
    desk.click("cmdOK");
    desk.type("txtSATWt_1", "120");
    expectLoss("txtAK_0", "0.3",
               "Slopes and layer factors from before a side was changed to coefficients");
}

TEST_F(RemarksTest, TheWaterTellsWhatAFileLoses) {
    open(Screen::WATER, {"cmdWaterEls"});
    const std::string seepage = "Seepage elevation below the lower of left ground and left water, "
                                "or above the lower of right ground and right water";
    expectLoss("txtSeepEl", "-40", seepage);
    expectNoLoss("txtSeepEl", "-9");
    desk.click("optSeepEl");
    expectLoss("txtSeepGrad", "0.1", "Seepage gradient given as a number");
    open(Screen::WATER, {"cmdWaterPres"});
    desk.typeDown("txtELWPR", {"1", "-2"});
    expectLoss("txtELWPR_2", "3", "Water pressures not from the top down");
    expectLoss("txtELWPR_0", "5", "Type of seepage from before the water was changed to pressures");
}

TEST_F(RemarksTest, TheLoadsTellWhatAFileLoses) {
    open(Screen::SURCHARG, {}, Load::Uniform);
    expectLoss("txtQUL", "0", "Uniform load of 0");
    expectNoLoss("txtQUL", "");
    open(Screen::SURCHARG, {}, Load::Ramp);
    expectLoss("txtQRR", "0", "Ramp load of 0");
    open(Screen::SURCHARG, {"cmdDelVarR"}, Load::Variable);
    expectLoss("txtRightDist_0", "5", "Variable load of one point");
    desk.type("txtRightDist_1", "7");
    expectNoLoss("txtRightDist_0", "5");
}

// ---- F1
// ------------------------------------------------------------------------------------------

TEST_F(RemarksTest, F1AsksForTheGuideFromEveryScreen) {
    for (const Look& look : allLooks()) {
        Desk other;
        look.reach(other);
        QTest::keyClick(other.top().focusWidget(), Qt::Key_F1);
        EXPECT_EQ(other.helpItems, std::vector<Help>{Help::OfWindow}) << look.name;
    }
}

TEST_F(RemarksTest, TheGuideOpensAtTheSectionOfTheScreen) {
    const std::pair<const char*, const char*> expected[] = {
        {"KEYIN", "Data entry"},
        {"HEADCONT", "Heading, Wall and Control Data"},
        {"SURFACE", "Soil Surface Data"},
        {"LAYRDATA", "Soil Layer Data"},
        {"WATER", "Water Data"},
        {"SURCHCON", "Surface Surcharge Data"},
        {"SURCHARG", "Surface Surcharge Data"},
        {"HORCON", "Applied Horizontal Loads"},
        {"HORLOAD", "Applied Horizontal Loads"},
        {"ROWEPILE", "Sheet pile data"},
        {"WEDGMETH", "Wedge methods"},
        {"VUINPTFL", "The input file"},
        {"VUINECHO", "The output report"},
        {"NOTES", "Notes"},
        {"VERIFY", "Verification"},
        {"STUDY", "The study window"},
        {"VUSOLPLT", "Plots"},
        {"CKORVANE", "The menus"},
    };
    for (const auto& [window, section] : expected) {
        EXPECT_EQ(helpSection(window), section);
        QDialog screen;
        screen.setObjectName(window);
        screen.show();
        HelpService help;
        help.show(&screen, Help::OfWindow);
        auto* page = screen.findChild<QTextBrowser*>("helpPage");
        ASSERT_NE(page, nullptr);
        EXPECT_EQ(page->textCursor().block().text(), section);
        EXPECT_GT(page->textCursor().block().blockFormat().headingLevel(), 0);
        // At the top of the window, also when its size changes; the page's end cannot come up.
        auto* viewer = screen.findChild<HelpViewer*>();
        const auto atTop = [&] {
            QCoreApplication::processEvents();
            QTextCursor heading = page->textCursor();
            heading.movePosition(QTextCursor::StartOfBlock);
            const auto* bar = page->verticalScrollBar();
            return page->cursorRect(heading).top() < 40 || bar->value() > bar->maximum() - 40;
        };
        EXPECT_TRUE(atTop()) << section;
        viewer->resize(viewer->width() * 2 / 3, viewer->height());
        EXPECT_TRUE(atTop()) << section;
        auto* contents = screen.findChild<QTreeWidget*>("helpContents");
        EXPECT_EQ(contents->currentItem()->text(0), section);
        contents->setCurrentItem(contents->topLevelItem(0));
        help.show(&screen, Help::OfWindow); // again, from another page
        EXPECT_EQ(page->textCursor().block().text(), section);
    }
}

} // namespace korvane::test
