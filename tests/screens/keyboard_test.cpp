// What fields and buttons do with keys, clipboard and frame, whatever the screen.
#include "looks.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QScrollArea>
#include <QTimer>

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

class KeyboardTest : public testing::Test {
  protected:
    Desk desk;
    Problem& problem = desk.problem;

    QLineEdit* field(const QString& name) { return desk.workable<QLineEdit>(name); }
    static void copy(const QString& text) { QGuiApplication::clipboard()->setText(text); }
    void paste(const QString& name, const QString& text) {
        copy(text);
        desk.press(name, Qt::Key_V, Qt::ControlModifier);
    }
    std::string column(const QString& array, int rows) {
        std::string texts;
        for (int row = 0; row < rows; ++row) {
            texts += desk.text(QString("%1_%2").arg(array).arg(row)) + "|";
        }
        return texts;
    }
    std::string remark() { return desk.text("lblRemark"); }
    /// What is told beside a table; empty where nothing is.
    std::string notice(const QString& name) {
        return desk.isShown(name) ? desk.text(name) : std::string();
    }
};

const std::vector<Screen> dataScreens = {Screen::HEADCONT, Screen::LAYRDATA, Screen::SURFACE,
                                         Screen::WATER};

} // namespace

// ---- moving
// --------------------------------------------------------------------------------------

TEST_F(KeyboardTest, EnterAndDownGoToTheNextRowAndUpToTheOneAbove) {
    desk.open(Screen::SURFACE);
    desk.press("txtRightDist_0", Qt::Key_Down);
    EXPECT_EQ(desk.focused(), "txtRightDist_1");
    desk.press("txtRightDist_1", Qt::Key_Return);
    EXPECT_EQ(desk.focused(), "txtRightDist_2");
    desk.press("txtRightDist_2", Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(desk.focused(), "txtRightDist_3");
    desk.press("txtRightDist_3", Qt::Key_Up);
    EXPECT_EQ(desk.focused(), "txtRightDist_2");
}

TEST_F(KeyboardTest, AColumnEndsAtItsFirstAndLastRow) {
    desk.open(Screen::SURFACE);
    desk.press("txtLeftElev_10", Qt::Key_Down);
    EXPECT_EQ(desk.focused(), "txtLeftElev_10");
    desk.press("txtLeftElev_0", Qt::Key_Up);
    EXPECT_EQ(desk.focused(), "txtLeftElev_0");
}

TEST_F(KeyboardTest, LeftAndRightEditTheText) {
    desk.open(Screen::SURFACE);
    desk.type("txtRightDist_0", "15");
    desk.press("txtRightDist_0", Qt::Key_Left);
    QTest::keyClicks(field("txtRightDist_0"), "2");
    EXPECT_EQ(desk.text("txtRightDist_0"), "125");
    EXPECT_EQ(desk.focused(), "txtRightDist_0");
    desk.press("txtRightDist_0", Qt::Key_Home);
    desk.press("txtRightDist_0", Qt::Key_Right);
    QTest::keyClicks(field("txtRightDist_0"), "0");
    EXPECT_EQ(desk.text("txtRightDist_0"), "1025");
}

TEST_F(KeyboardTest, EnterInAFieldOpensNoBoxAndChangesNoRecord) {
    for (const Screen screen : dataScreens) {
        desk.reopen(screen);
        const Problem before = problem;
        for (const QLineEdit* edit : desk.top().findChildren<QLineEdit*>()) {
            if (edit->isVisible() && edit->isEnabled()) {
                desk.press(edit->objectName(), Qt::Key_Return);
            }
        }
        EXPECT_EQ(desk.lastBox(), noBox);
        EXPECT_TRUE(desk.isOpen());
        EXPECT_EQ(problem, before);
        EXPECT_EQ(desk.session->DataChanged, 0);
    }
}

TEST_F(KeyboardTest, NoButtonIsDefault) {
    for (const Look& look : allLooks()) {
        Desk other;
        look.reach(other);
        for (const QPushButton* button : other.top().findChildren<QPushButton*>()) {
            EXPECT_FALSE(button->isDefault()) << look.name << button->objectName().toStdString();
            EXPECT_FALSE(button->autoDefault()) << look.name << button->objectName().toStdString();
        }
    }
}

TEST_F(KeyboardTest, EnterOnAFocusedButtonPushesIt) {
    desk.open(Screen::SURFACE);
    desk.press("cmdFinished", Qt::Key_Return);
    EXPECT_EQ(desk.boxes.size(), 1U);
    desk.press("cmdFinished", Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(desk.boxes.size(), 2U);
    desk.press("cmdFinished", Qt::Key_Space);
    EXPECT_EQ(desk.boxes.size(), 3U);
}

TEST_F(KeyboardTest, EscapeClosesNoScreen) {
    for (const Look& look : allLooks()) {
        Desk other;
        look.reach(other);
        const Problem before = other.problem;
        QTest::keyClick(other.top().focusWidget(), Qt::Key_Escape);
        QTest::keyClick(&other.top(), Qt::Key_Escape);
        EXPECT_TRUE(other.isOpen()) << look.name;
        EXPECT_TRUE(other.boxes.empty()) << look.name;
        EXPECT_EQ(other.problem, before) << look.name;
    }
}

TEST_F(KeyboardTest, AMnemonicPushesItsButton) {
    desk.open(Screen::SURFACE);
    QTest::keyClick(&desk.top(), Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !desk.boxes.empty(); }));
}

TEST_F(KeyboardTest, ADoubledMnemonicMovesTheFocusInTurn) {
    desk.open(Screen::KEYIN); // "&Heading ...", "Applied &Horizontal Loads" and the help menu
    std::vector<std::string> focused;
    for (int time = 0; time < 3; ++time) {
        QTest::keyClick(&desk.top(), Qt::Key_H, Qt::AltModifier);
        if (QWidget* menu = QApplication::activePopupWidget(); menu != nullptr) {
            menu->close();
            continue;
        }
        focused.push_back(desk.focused());
    }
    EXPECT_TRUE(desk.shown.empty());
    EXPECT_NE(std::find(focused.begin(), focused.end(), "cmdHeadCont"), focused.end());
    EXPECT_NE(std::find(focused.begin(), focused.end(), "cmdHorizontal"), focused.end());
}

TEST_F(KeyboardTest, ArrowsChooseAnOption) {
    desk.open(Screen::HEADCONT);
    desk.press("optCantilever", Qt::Key_Space);
    EXPECT_EQ(problem.WallType, WallKind::Cantilever);
    desk.press("optCantilever", Qt::Key_Down);
    EXPECT_EQ(problem.WallType, WallKind::Anchored);
    EXPECT_EQ(desk.focused(), "optAnchored");
}

TEST_F(KeyboardTest, AFieldThatGetsTheFocusIsScrolledIntoView) {
    desk.mainWindow.resize(300, 200);
    desk.open(Screen::SURFACE);
    QTest::qWait(1);
    desk.press("txtLeftElev_9", Qt::Key_Down);
    EXPECT_EQ(desk.focused(), "txtLeftElev_10");
    const QWidget* last = field("txtLeftElev_10");
    const QWidget* view = desk.top().findChild<QScrollArea*>()->viewport();
    EXPECT_LT(desk.top().width(), 400);
    EXPECT_TRUE(view->rect().contains(
        QRect(last->mapTo(view->parentWidget(), QPoint(0, 0)), last->size())));
}

// ---- what counts as a change
// ---------------------------------------------------------------------

TEST_F(KeyboardTest, APersonsEditsAreChangesAndCodesAreNot) {
    desk.open(Screen::SURFACE);
    int& changed = desk.session->DataChanged;
    const auto isChange = [&](const std::function<void()>& act) {
        changed = 0;
        act();
        return changed == 1;
    };
    EXPECT_TRUE(isChange([&] { QTest::keyClicks(field("txtRightDist_0"), "1"); }));
    EXPECT_TRUE(isChange([&] { desk.press("txtRightDist_0", Qt::Key_Z, Qt::ControlModifier); }));
    EXPECT_EQ(desk.text("txtRightDist_0"), "");
    EXPECT_TRUE(isChange([&] { paste("txtRightDist_0", "12"); }));
    EXPECT_TRUE(isChange([&] {
        field("txtRightDist_0")->selectAll();
        desk.press("txtRightDist_0", Qt::Key_X, Qt::ControlModifier);
    }));
    EXPECT_EQ(desk.text("txtRightDist_0"), "");
    EXPECT_TRUE(isChange([&] { paste("txtRightDist_0", "1\t2\n3\t4\n"); }));
    EXPECT_FALSE(isChange([&] { field("txtRightDist_0")->setText("7"); }));
    EXPECT_FALSE(isChange([&] { desk.press("txtRightDist_0", Qt::Key_Left); }));
    EXPECT_FALSE(isChange([&] { desk.press("txtRightDist_0", Qt::Key_C, Qt::ControlModifier); }));
}

TEST_F(KeyboardTest, ADropIsAChange) {
    desk.open(Screen::SURFACE);
    const auto drop = [&](const QString& name, const QString& text) {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(field(name), &enter);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(field(name), &event);
    };
    drop("txtRightDist_0", "4.5");
    EXPECT_EQ(desk.text("txtRightDist_0"), "4.5");
    EXPECT_EQ(desk.session->DataChanged, 1);
    desk.session->DataChanged = 0;
    drop("txtLeftDist_1", "1\t2\r\n3\t4\r\n");
    EXPECT_EQ(desk.text("txtLeftElev_2"), "4");
    EXPECT_EQ(desk.session->DataChanged, 1);
}

TEST_F(KeyboardTest, LineEndsAndOtherControlCharactersBecomeBlanks) {
    desk.open(Screen::HEADCONT);
    field("txtHead_0")->insert("QUAY\nWALL\tNORTH\x01");
    EXPECT_EQ(desk.text("txtHead_0"), "QUAY WALL NORTH ");
}

TEST_F(KeyboardTest, PasteOfTheFieldsMenuTakesBlocksToo) {
    desk.open(Screen::SURFACE);
    copy("1\t2\n3\t4");
    auto* edit = field("txtRightDist_0");
    QTimer::singleShot(0, edit, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions()) {
            if (action->text().startsWith("&Paste") && action->isEnabled()) {
                action->trigger();
            }
        }
        menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                            edit->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(edit, &event);
    EXPECT_EQ(column("txtRightDist", 3), "1|3||");
    EXPECT_EQ(column("txtRightElev", 3), "2|4||");
}

// ---- blocks
// --------------------------------------------------------------------------------------

TEST_F(KeyboardTest, ABlockPastesRightAndDownFromTheFieldInFocus) {
    desk.open(Screen::SURFACE);
    desk.type("txtRightElev_3", "old");
    paste("txtRightDist_1", "0\t10\r\n5\t9.5\r\n12\t9\r\n");
    EXPECT_EQ(column("txtRightDist", 5), "|0|5|12||");
    EXPECT_EQ(column("txtRightElev", 5), "|10|9.5|9||");
    EXPECT_EQ(column("txtLeftDist", 5), "|||||");
    EXPECT_EQ(notice("fraSurfRight_refused"), "");
}

TEST_F(KeyboardTest, TheMiddleButtonPastesTheSelectionAsABlock) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard->supportsSelection()) {
        GTEST_SKIP() << "this platform pastes nothing by the middle button";
    }
    desk.open(Screen::SURFACE);
    clipboard->setText("0\t10\n5\t9.5\n", QClipboard::Selection);
    QTest::mouseClick(field("txtRightDist_1"), Qt::MiddleButton);
    EXPECT_EQ(column("txtRightDist", 3), "|0|5|");
    EXPECT_EQ(column("txtRightElev", 3), "|10|9.5|");
    EXPECT_EQ(desk.session->DataChanged, 1);
    desk.press("txtRightDist_1", Qt::Key_Z, Qt::ControlModifier); // as one change
    EXPECT_EQ(column("txtRightDist", 3), "|||");
    EXPECT_EQ(column("txtRightElev", 3), "|||");
    clipboard->setText("7", QClipboard::Selection);
    desk.type("txtLeftDist_0", "1");
    QTest::mouseClick(field("txtLeftDist_0"), Qt::MiddleButton);
    EXPECT_EQ(field("txtLeftDist_0")->text().size(), 2);
}

TEST_F(KeyboardTest, AColumnPastesDownward) {
    desk.open(Screen::SURFACE);
    paste("txtLeftElev_8", "1\n2\n3");
    EXPECT_EQ(desk.text("txtLeftElev_10"), "3");
}

TEST_F(KeyboardTest, ABlockThatDoesNotFitChangesNothingAndIsToldOnTheScreen) {
    desk.open(Screen::SURFACE);
    paste("txtLeftElev_8", "1\n2\n3\n4"); // one row too many
    EXPECT_EQ(column("txtLeftElev", 11), "|||||||||||");
    EXPECT_EQ(notice("fraSurfLeft_refused"),
              "A block of 4 by 1 cells does not fit here: nothing was pasted.");
    EXPECT_EQ(notice("fraSurfRight_refused"), "");
    EXPECT_EQ(desk.session->DataChanged, 0);
    desk.type("txtLeftElev_0", "1"); // the notice goes with the next change
    EXPECT_EQ(notice("fraSurfLeft_refused"), "");
    paste("txtRightElev_0", "1\t2"); // it stays inside its side
    EXPECT_EQ(desk.text("txtRightElev_0"), "");
    EXPECT_EQ(desk.text("txtLeftDist_0"), "");
    EXPECT_EQ(notice("fraSurfRight_refused"),
              "A block of 1 by 2 cells does not fit here: nothing was pasted.");
}

TEST_F(KeyboardTest, ASingleCellGoesToTheCursorWithoutItsLineEnd) {
    desk.open(Screen::SURFACE);
    desk.type("txtRightDist_0", "1");
    paste("txtRightDist_0", "2.5\r\n");
    EXPECT_EQ(desk.text("txtRightDist_0"), "12.5");
}

TEST_F(KeyboardTest, EmptyCellsEmptyTheirFieldsAndShortRowsToo) {
    desk.open(Screen::SURFACE);
    desk.typeDown("txtRightElev", {"8", "9"});
    paste("txtRightDist_0", "1\t\n2");
    EXPECT_EQ(column("txtRightDist", 2), "1|2|");
    EXPECT_EQ(column("txtRightElev", 2), "||");
}

TEST_F(KeyboardTest, ABlockGoesOverTheColumnsThatTheLayerTableShows) {
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.click("optCoefficients");
    desk.click("cmdOK");
    paste("txtSATWt_0", "125\t120\t0.3\t3.3\t-10\n130\t122\t0.25\t4\t");
    EXPECT_EQ(desk.text("txtPK_0"), "3.3");
    EXPECT_EQ(desk.text("txtElev_0"), "-10");
    EXPECT_EQ(desk.text("txtAK_1"), "0.25");
    desk.click("cmdFinished");
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_EQ(problem.SoilLayerCount(Right), 2);
    EXPECT_EQ(problem.SoilCoefPassive(Right, 2), 4);
    desk.click("cmdEnterLeftside");
    desk.click("optStrengths");
    desk.click("cmdOK");
    paste("txtMSTWt_0", "120\t30\t0\t15\t0\t-5\t0.1\t1\t1.5");
    EXPECT_EQ(desk.text("txtSlope_0"), "0.1");
    EXPECT_EQ(desk.text("txtFSP3_0"), "1.5");
    paste("txtSATWt_0", "1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11");
    EXPECT_EQ(desk.text("txtSATWt_0"), "");
    EXPECT_EQ(notice("layers_refused"),
              "A block of 1 by 11 cells does not fit here: nothing was pasted.");
}

TEST_F(KeyboardTest, AFieldByItselfTakesNoBlock) {
    desk.open(Screen::HEADCONT);
    paste("txtWallTop", "1\t2");
    EXPECT_EQ(desk.text("txtWallTop"), "");
    EXPECT_EQ(remark(), "A block of 1 by 2 cells does not fit here: nothing was pasted.");
    paste("txtHead_1", "LINE ONE\nLINE TWO");
    EXPECT_EQ(desk.text("txtHead_2"), "LINE TWO");
}

// ---- the frame's cross
// ---------------------------------------------------------------------------

TEST_F(KeyboardTest, AnUntouchedScreenClosesByItsFrameWithTheRecordAsItWas) {
    for (const Look& look : allLooks()) {
        if (look.name.starts_with("rowepile") || look.name.starts_with("keyin")) {
            continue; // their frames are always their buttons
        }
        Desk other;
        look.reach(other);
        other.closeFrame();
        EXPECT_FALSE(other.isOpen()) << look.name;
        EXPECT_TRUE(other.boxes.empty()) << look.name;
        EXPECT_EQ(other.problem, look.held) << look.name;
        EXPECT_EQ(other.session->HeadContDataValid, look.held.NumHeadingLines != 0 ? 1 : 0)
            << look.name;
    }
}

TEST_F(KeyboardTest, ATouchedScreensFrameIsItsFinished) {
    desk.open(Screen::SURFACE);
    desk.type("txtRightDist_0", "0");
    desk.closeFrame();
    EXPECT_TRUE(desk.isOpen());
    ASSERT_EQ(desk.boxes.size(), 1U);
    EXPECT_EQ(desk.boxes[0].title, "INVALID DATA");
    desk.typeDown("txtRightElev", {"0"});
    desk.typeDown("txtLeftDist", {"0"});
    desk.typeDown("txtLeftElev", {"0"});
    desk.closeFrame();
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(desk.boxes.size(), 1U);
    EXPECT_EQ(problem.SurfacePointCount(Left), 1);
}

TEST_F(KeyboardTest, TheFrameOfALaterStageIsThatStagesButton) {
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.click("optStrengths"); // a choice is something done, although no change of the data
    desk.closeFrame();
    EXPECT_TRUE(desk.isShown("fraUnitWt"));
    desk.closeFrame();
    EXPECT_EQ(desk.boxes.back().title, "DATA MISSING");
    desk.reopen(Screen::WATER);
    desk.click("cmdWaterPres");
    desk.type("txtELWPR_0", "1");
    desk.closeFrame();
    EXPECT_EQ(desk.boxes.back().title, "DATA MISSING");
    EXPECT_TRUE(desk.isOpen());
}

TEST_F(KeyboardTest, ListScreensCloseByTheirFrame) {
    for (const Screen screen : {Screen::SURCHCON, Screen::HORCON}) {
        desk.reopen(screen);
        desk.closeFrame();
        EXPECT_FALSE(desk.isOpen());
    }
}

// ---- colours
// -------------------------------------------------------------------------------------

TEST_F(KeyboardTest, ColoursAreReadableInADarkTheme) {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Button, QColor(50, 50, 50));
    dark.setColor(QPalette::ButtonText, Qt::white);
    const QPalette usual = QApplication::palette();
    QApplication::setPalette(dark);
    {
        desk.open(Screen::KEYIN);
        const QPalette required = desk.find("cmdHeadCont")->palette();
        EXPECT_GT(required.color(QPalette::Button).lightness(), 200);
        EXPECT_EQ(required.color(QPalette::ButtonText), QColor(192, 0, 0));
        const QPalette other = desk.find("cmdWaterData")->palette();
        EXPECT_EQ(other.color(QPalette::ButtonText), QColor(0, 0, 0));
        EXPECT_GT(desk.find("panKeyIn")->palette().color(QPalette::Window).lightness(), 200);
        EXPECT_FALSE(desk.isHighlighted("panWaterData"));
        desk.reopen(Screen::SURFACE);
        const QPalette entry = desk.find("txtRightDist_0")->palette();
        EXPECT_EQ(entry.color(QPalette::Base), QColor(Qt::white));
        EXPECT_EQ(entry.color(QPalette::Text), QColor(Qt::black));
    }
    QApplication::setPalette(usual);
}

} // namespace korvane::test
