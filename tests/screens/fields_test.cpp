// What a field does with long numbers, with Alt and F6, and with blocks from and to a spreadsheet.
#include "looks.h"

#include "screens/cell_block.h"
#include "screens/controls.h"
#include "screens/field.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QTimer>

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

class FieldsTest : public testing::Test {
  protected:
    Desk desk;
    Problem& problem = desk.problem;

    Field* field(const QString& name) { return desk.workable<Field>(name); }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }
    void paste(const QString& name, const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        desk.press(name, Qt::Key_V, Qt::ControlModifier);
    }
    void undo(const QString& name) { desk.press(name, Qt::Key_Z, Qt::ControlModifier); }
    void redo(const QString& name) {
        desk.press(name, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    }
    std::string column(const QString& array, int rows) {
        std::string texts;
        for (int row = 0; row < rows; ++row) {
            texts += desk.text(QString("%1_%2").arg(array).arg(row)) + "|";
        }
        return texts;
    }
    std::string notice(const QString& name) {
        return desk.isShown(name) ? desk.text(name) : std::string();
    }
    /// Opens the table of layers by strengths of the right side.
    void openLayers() {
        desk.open(Screen::LAYRDATA);
        desk.click("cmdEnterRightside");
        desk.click("cmdOK");
    }
};

constexpr const char* longNumber = "-0.12345678901234567";

/// The first letter on show: where the text begins, its beginning is on show.
int firstShown(Field* field) {
    field->grab(); // the toolkit scrolls when it paints
    return field->cursorPositionAt(QPoint(4, field->height() / 2));
}

} // namespace

// ---- long numbers
// --------------------------------------------------------------------------------

TEST_F(FieldsTest, ALongNumberShowsItsBeginningAfterFilling) {
    problem = plainCantilever();
    problem.SoilCohesion(Right, 1) = -0.12345678901234567;
    openLayers();
    Field* cohesion = field("txtCohes_0");
    EXPECT_EQ(firstShown(cohesion), 0);
    EXPECT_EQ(cohesion->toolTip().toStdString(), cohesion->entry());
    EXPECT_TRUE(field("txtSATWt_0")->toolTip().isEmpty()); // this one fits
}

TEST_F(FieldsTest, ALongNumberShowsItsBeginningAfterPastingAndLeaving) {
    desk.open(Screen::SURFACE);
    const QString twice = QString(longNumber) + "0000000000000000000000000";
    paste("txtRightDist_0", twice);
    EXPECT_EQ(firstShown(field("txtRightDist_0")), 0);
    paste("txtRightDist_1", twice + "\t" + twice);
    EXPECT_EQ(firstShown(field("txtRightDist_1")), 0);
    EXPECT_EQ(firstShown(field("txtRightElev_1")), 0);
    desk.type("txtLeftDist_0", twice);
    EXPECT_GT(firstShown(field("txtLeftDist_0")), 0); // what is typed is on show
    field("txtLeftDist_1")->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(firstShown(field("txtLeftDist_0")), 0);
    EXPECT_EQ(field("txtLeftDist_0")->toolTip(), twice);
}

TEST_F(FieldsTest, ALongNumberShowsItsBeginningWhenTabSelectsIt) {
    desk.open(Screen::SURFACE);
    const QString twice = QString(longNumber) + "0000000000000000000000000";
    desk.type("txtRightDist_0", twice);
    field("txtRightElev_0")->setFocus();
    QTest::keyClick(field("txtRightElev_0"), Qt::Key_Backtab);
    EXPECT_EQ(desk.focused(), "txtRightDist_0");
    EXPECT_EQ(field("txtRightDist_0")->selectedText(), twice);
    EXPECT_EQ(firstShown(field("txtRightDist_0")), 0);
    QTest::keyClicks(field("txtRightDist_0"), "5"); // typing replaces it all the same
    EXPECT_EQ(desk.text("txtRightDist_0"), "5");
    EXPECT_TRUE(field("txtRightDist_0")->toolTip().isEmpty());
}

TEST_F(FieldsTest, TheLayersColumnsTakeTheRoomOfTheWindow) {
    problem = plainCantilever();
    openLayers();
    const int usual = field("txtCohes_0")->width();
    desk.top().resize(desk.top().width() * 2, desk.top().height());
    QCoreApplication::processEvents();
    const int wide = field("txtCohes_0")->width();
    EXPECT_GT(wide, usual * 3 / 2);
    const QWidget* last = desk.find("fraSafety3");
    EXPECT_LE(last->geometry().right(), last->parentWidget()->width());
    EXPECT_GE(last->geometry().right(), last->parentWidget()->width() * 9 / 10);
    desk.top().resize(desk.top().width() / 2, desk.top().height());
    QCoreApplication::processEvents();
    EXPECT_EQ(field("txtCohes_0")->width(), usual);
}

// ---- keys
// ----------------------------------------------------------------------------------------

TEST_F(FieldsTest, AltWithALetterTypesNothing) {
    for (const Look& look : allLooks()) {
        Desk other;
        look.reach(other);
        for (QLineEdit* edit : other.top().findChildren<QLineEdit*>()) {
            if (!edit->isVisible() || !edit->isEnabled()) {
                continue;
            }
            edit->setFocus();
            const QString before = edit->text();
            for (const char letter : {'x', '7', '-'}) {
                QTest::keyClick(edit, letter, Qt::AltModifier);
            }
            EXPECT_EQ(edit->text(), before) << look.name << edit->objectName().toStdString();
        }
        EXPECT_EQ(other.session->DataChanged, 0) << look.name;
    }
}

TEST_F(FieldsTest, AltGrTypes) {
    desk.open(Screen::HEADCONT);
    QTest::keyClick(field("txtHead_0"), '@', Qt::GroupSwitchModifier);
    EXPECT_EQ(desk.text("txtHead_0"), "@");
}

TEST_F(FieldsTest, F6GoesBetweenTheTablesOfTheSides) {
    desk.open(Screen::SURFACE);
    desk.press("txtRightElev_3", Qt::Key_F6);
    EXPECT_EQ(desk.focused(), "txtLeftElev_3");
    QTest::keyClick(desk.top().focusWidget(), Qt::Key_F6);
    EXPECT_EQ(desk.focused(), "txtRightElev_3");
    desk.press("cmdFinished", Qt::Key_F6);
    EXPECT_EQ(desk.focused(), "txtRightDist_0");
    const std::tuple<Load, const char*, const char*> first[] = {
        {Load::Line, "txtDLLR_0", "txtDLLL_0"},
        {Load::Uniform, "txtQUR", "txtQUL"},
        {Load::Strip, "txtDS1R_0", "txtDS1L_0"},
        {Load::Ramp, "txtDR1R", "txtDR1L"},
        {Load::Triangle, "txtDT1R_0", "txtDT1L_0"},
        {Load::Variable, "txtRightDist_0", "txtLeftDist_0"},
    };
    for (const auto& [kind, right, left] : first) {
        desk.reopen(Screen::SURCHARG, kind);
        desk.press(right, Qt::Key_F6);
        EXPECT_EQ(desk.focused(), left);
        desk.press(left, Qt::Key_F6);
        EXPECT_EQ(desk.focused(), right);
    }
}

TEST_F(FieldsTest, F6DoesNothingWhereThereIsOneTable) {
    desk.open(Screen::HORLOAD, Load::HorizontalLine);
    desk.press("txtHorLine_2", Qt::Key_F6);
    EXPECT_EQ(desk.focused(), "txtHorLine_2");
}

// ---- numbers of other programs
// -------------------------------------------------------------------

TEST_F(FieldsTest, NumbersOfOtherProgramsBecomePlain) {
    const QString blank = QChar(0x00A0), narrow = QChar(0x202F), minus = QChar(0x2212);
    const std::pair<QString, QString> plain[] = {
        {"12.5", "12.5"},
        {blank + "12.5" + blank, "12.5"},
        {"1" + narrow + "234.5", "1234.5"},
        {minus + "3", "-3"},
        {"1,234.5", "1234.5"},
        {"-1,234,567.25", "-1234567.25"},
        {minus + "12,345.", "-12345."},
        {"1,234.5E3", "1234.5E3"},
        {"12x", "12x"},
        {"", ""},
    };
    for (const auto& [text, number] : plain) {
        EXPECT_EQ(plainNumber(text).value_or("refused"), number) << text.toStdString();
    }
    for (const char* text : {"1,5", "1,234", "1,23.5", "12,34.5", "1234,567.5", ",5", "1.234,5",
                             "1,234.5,6", "1,234.567,8", "a,b"}) {
        EXPECT_FALSE(plainNumber(text)) << text;
    }
}

TEST_F(FieldsTest, APastedNumberIsMadePlainAndACommaIsRefusedBesideTheTable) {
    desk.open(Screen::SURFACE);
    paste("txtRightDist_0", "1,234.5");
    EXPECT_EQ(desk.text("txtRightDist_0"), "1234.5");
    paste("txtRightElev_0", "1,5");
    EXPECT_EQ(desk.text("txtRightElev_0"), "");
    EXPECT_EQ(notice("fraSurfRight_refused"),
              "\"1,5\" is no number with a decimal point: nothing was pasted.");
    const QPalette colours = desk.find("fraSurfRight_refused")->palette();
    EXPECT_EQ(colours.color(QPalette::WindowText), RequiredColour);
    EXPECT_EQ(colours.color(QPalette::Window), WarningGround);
    // Right under the table of its side, and no other text is covered.
    const QRect frame = desk.find("fraSurfRight")->geometry();
    const QRect told = desk.find("fraSurfRight_refused")->geometry();
    EXPECT_EQ(told.left(), frame.left());
    EXPECT_LT(told.top() - frame.bottom(), 10);
}

TEST_F(FieldsTest, ARefusalIsToldInTheLineForRemarksWhereItsPlaceIsOutOfSight) {
    desk.mainWindow.resize(500, 220);
    desk.open(Screen::SURFACE);
    paste("txtRightElev_0", "1,5");
    EXPECT_NE(desk.text("lblRemark").find("is no number with a decimal point"), std::string::npos);
    // A long remark has the lines that it needs.
    const auto* line = desk.find<QLabel>("lblRemark");
    EXPECT_GE(line->height(), line->heightForWidth(line->width()));
    EXPECT_FALSE(field("txtRightElev_0")->visibleRegion().isEmpty());
}

TEST_F(FieldsTest, ABlockWithACommaIsRefusedWhole) {
    desk.open(Screen::SURFACE);
    paste("txtLeftDist_0", "0\t1,000.5\n5\t2,5");
    EXPECT_EQ(column("txtLeftDist", 2), "||");
    EXPECT_EQ(column("txtLeftElev", 2), "||");
    EXPECT_NE(notice("fraSurfLeft_refused"), "");
    EXPECT_EQ(desk.session->DataChanged, 0);
    paste("txtLeftDist_0", QString("0\t1,000.5\n5\t") + QChar(0x2212) + "2.5");
    EXPECT_EQ(column("txtLeftElev", 2), "1000.5|-2.5|");
    EXPECT_EQ(notice("fraSurfLeft_refused"), "");
}

TEST_F(FieldsTest, TextsKeepTheirCommas) {
    desk.open(Screen::HEADCONT);
    paste("txtHead_0", "PIER 4, NORTH");
    EXPECT_EQ(desk.text("txtHead_0"), "PIER 4, NORTH");
    paste("txtHead_1", "A, B\nC");
    EXPECT_EQ(column("txtHead", 3), "PIER 4, NORTH|A, B|C|");
    paste("txtWallTop", "12,5");
    EXPECT_EQ(desk.text("txtWallTop"), "");
    EXPECT_EQ(desk.text("lblRemark"),
              "\"12,5\" is no number with a decimal point: nothing was pasted.");
    EXPECT_EQ(desk.find("lblRemark")->palette().color(QPalette::WindowText), RequiredColour);
    desk.reopen(Screen::ROWEPILE);
    desk.click("cmdDefAccept");
    paste("txtName_0", "AZ 26, S355\t48.4\t406.5\t25,000.0\t3E7");
    EXPECT_EQ(desk.text("txtName_0"), "AZ 26, S355");
    EXPECT_EQ(desk.text("txtAllow_0"), "25000.0");
    paste("txtSectMod_1", "1,5");
    EXPECT_NE(notice("additions_refused"), "");
}

// ---- undo
// ----------------------------------------------------------------------------------------

TEST_F(FieldsTest, OneUndoTakesBackAWholeBlock) {
    desk.open(Screen::SURFACE);
    desk.type("txtRightDist_0", "7");
    desk.type("txtRightElev_1", "8");
    paste("txtRightDist_0", "1\t2\n3\t4\n5\t");
    EXPECT_EQ(column("txtRightDist", 3), "1|3|5|");
    undo("txtRightDist_0");
    EXPECT_EQ(column("txtRightDist", 3), "7|||");
    EXPECT_EQ(column("txtRightElev", 3), "|8||");
    redo("txtRightDist_0");
    EXPECT_EQ(column("txtRightDist", 3), "1|3|5|");
    EXPECT_EQ(column("txtRightElev", 3), "2|4||");
    undo("txtRightElev_9"); // from any field of the table
    EXPECT_EQ(column("txtRightDist", 3), "7|||");
    undo("txtRightDist_0"); // then what was typed before it
    EXPECT_EQ(desk.text("txtRightDist_0"), "");
}

TEST_F(FieldsTest, WhatWasTypedAfterABlockIsUndoneBeforeIt) {
    desk.open(Screen::SURFACE);
    paste("txtLeftDist_0", "1\n2");
    desk.type("txtLeftDist_4", "9");
    undo("txtLeftDist_4");
    EXPECT_EQ(column("txtLeftDist", 5), "1|2||||");
    undo("txtLeftDist_4");
    EXPECT_EQ(column("txtLeftDist", 5), "|||||");
}

TEST_F(FieldsTest, BlocksAreTakenBackOneByOne) {
    desk.open(Screen::SURFACE);
    paste("txtLeftDist_0", "1\n2");
    paste("txtLeftDist_1", "5\n6");
    EXPECT_EQ(column("txtLeftDist", 3), "1|5|6|");
    undo("txtLeftDist_1");
    EXPECT_EQ(column("txtLeftDist", 3), "1|2||");
    undo("txtLeftDist_1");
    EXPECT_EQ(column("txtLeftDist", 3), "|||");
    redo("txtLeftDist_1");
    redo("txtLeftDist_1");
    EXPECT_EQ(column("txtLeftDist", 3), "1|5|6|");
}

TEST_F(FieldsTest, AnEmptyCellOfABlockBringsNothingOldBack) {
    desk.open(Screen::SURFACE);
    desk.type("txtLeftElev_0", "3");
    desk.type("txtLeftElev_0", ""); // has a change to undo, and is empty
    paste("txtLeftDist_0", "1\t\n2\t4");
    undo("txtLeftDist_0");
    EXPECT_EQ(column("txtLeftDist", 2), "||");
    EXPECT_EQ(column("txtLeftElev", 2), "||");
}

TEST_F(FieldsTest, ABlockThatIsUndoneIsAChangeOfTheData) {
    desk.open(Screen::SURFACE);
    paste("txtLeftDist_0", "1\n2");
    desk.session->DataChanged = 0;
    undo("txtLeftDist_0");
    EXPECT_EQ(desk.session->DataChanged, 1);
}

// ---- copying
// -------------------------------------------------------------------------------------

TEST_F(FieldsTest, ABlockIsCopiedFromTheFieldInFocusOn) {
    problem = plainCantilever();
    problem.SurfacePointCount(Right) = 3;
    for (int point = 1; point <= 3; ++point) {
        problem.SurfaceDist(Right, point) = 10.0 * point;
        problem.SurfaceElev(Right, point) = -0.5 * point;
    }
    desk.open(Screen::SURFACE);
    desk.press("txtRightDist_0", Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(clipboard(), "10\t-0.5\n20\t-1\n30\t-1.5\n");
    desk.press("txtRightElev_1", Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(clipboard(), "-1\n-1.5\n");
    EXPECT_EQ(desk.session->DataChanged, 0);
    desk.press("txtRightDist_0", Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    desk.press("txtLeftDist_0", Qt::Key_V, Qt::ControlModifier); // and comes back as it is
    EXPECT_EQ(column("txtLeftDist", 4), "10|20|30||");
    EXPECT_EQ(column("txtLeftElev", 4), "-0.5|-1|-1.5||");
}

TEST_F(FieldsTest, OnlyTheShownColumnsOfTheLayersAreCopied) {
    problem = fullProblem();
    openLayers();
    desk.press("txtSATWt_0", Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(clipboard().split('\n').value(0).split('\t').size(), 10);
    EXPECT_EQ(clipboard().split('\n').value(1), "125.5\t118\t32\t0\t0\t0\t\t\t\t1.75");
}

TEST_F(FieldsTest, TheMenuOfAFieldCopiesPastesAndTakesBackBlocks) {
    desk.open(Screen::SURFACE);
    paste("txtRightDist_0", "1\t2\n3\t4");
    const auto choose = [&](const char* field, const QString& entry) {
        bool chosen = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions()) {
                if (action->text().remove('&').section('\t', 0, 0) == entry &&
                    action->isEnabled()) {
                    action->trigger();
                    chosen = true;
                }
            }
            menu->close();
        });
        QLineEdit* edit = desk.workable<QLineEdit>(field);
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                                edit->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(edit, &event);
        EXPECT_TRUE(chosen) << entry.toStdString();
    };
    choose("txtRightDist_0", "Copy Block");
    EXPECT_EQ(clipboard(), "1\t2\n3\t4\n");
    choose("txtRightDist_8", "Undo"); // in a field that the block did not reach
    EXPECT_EQ(column("txtRightDist", 2), "||");
    choose("txtLeftDist_0", "Paste");
    EXPECT_EQ(column("txtLeftElev", 2), "2|4|");
}

} // namespace korvane::test
