// Notes in windows: the line at the foot of the main window, the box, the window of all notes.
#include "person.h"

#include "notes/note_texts.h"
#include "runtime/file_text.h"
#include "screenshots.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTextBlock>
#include <QTextBrowser>

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

/// Unsafe on the input by its water, and after the solution by planes that meet a rough wall.
constexpr const char* UnsafeWall = "'A WALL WHOSE PLANES MEET A ROUGH BACK\n"
                                   "CONTROL CANTILEVER DESIGN 1.00 1.00\nWALL 10\n"
                                   "SURFACE RIGHTSIDE 1 0 10\nSURFACE LEFTSIDE 2 0 0\n 50 0\n"
                                   "SOIL BOTH STRENGTHS 1\n 125 115 30 0 30 0\n"
                                   "WATER ELEVATIONS 70 -5 -5\nFINISHED\n";

void openUnsafe(Person& person) {
    const std::string wall = person.userFile("wall.dat");
    writeFile(wall, UnsafeWall);
    person.open(wall);
}

void chooseSweep(Person& person) {
    person.expectScreen("WEDGMETH", [](QDialog& prompt) { pushButton(prompt, "cmdSweep"); });
}

/// From Solve to the last panel, with a box at either stop.
void solveUnsafe(Person& person) {
    chooseSweep(person);
    person.expectBox("OK");
    person.choose("mnuSolveItem_0");
    person.expectBox("OK");
    person.push("cmdContinue");
    person.expectNothingLeft();
}

QLabel& statusLine(Person& person) {
    return *person.window().findChild<QLabel*>("lblSolution");
}

TEST(Notes, TheLineStandsBelowThePanelsAndTheBoxOverThem) {
    Person person;
    openUnsafe(person);
    EXPECT_FALSE(statusLine(person).isVisible());
    const auto expectFree = [&](const char* panel) {
        auto* frame = person.window().findChild<QWidget*>(panel);
        ASSERT_TRUE(frame->isVisible());
        ASSERT_TRUE(statusLine(person).isVisible());
        const QRect line(statusLine(person).mapTo(&person.window(), QPoint()),
                         statusLine(person).size());
        EXPECT_FALSE(frame->geometry().intersects(line)) << panel;
        EXPECT_TRUE(person.window().rect().contains(line));
        EXPECT_GE(line.top(), person.window().height() / 2);
    };
    chooseSweep(person);
    person.expectScreen("messageBox", [&](QDialog& box) {
        EXPECT_EQ(box.windowTitle(), "NOTES");
        EXPECT_EQ(qobject_cast<QMessageBox*>(&box)->icon(), QMessageBox::Warning);
        expectFree("fraSoilOut");
        qobject_cast<QMessageBox*>(&box)->button(QMessageBox::Ok)->click();
    });
    person.choose("mnuSolveItem_0");
    person.expectNothingLeft();
    expectFree("fraSoilOut");
    EXPECT_TRUE(statusLine(person).text().startsWith("wall.dat: notes: 1 unsafe, "));
    keepScreenshot(person.window(), "CKORVANE-review-notes");
    person.expectBox("OK");
    person.push("cmdContinue");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "NOTES");
    EXPECT_FALSE(person.boxes.back().busy);
    expectFree("panDone");
    keepScreenshot(person.window(), "CKORVANE-done-notes");
    person.push("cmdOK");
    EXPECT_TRUE(statusLine(person).text().contains("; notes: 3 unsafe, "));
    keepScreenshot(person.window(), "CKORVANE-rest-notes");
}

TEST(Notes, TheBoxHindersNothing) {
    Person person;
    openUnsafe(person);
    solveUnsafe(person);
    EXPECT_EQ(person.session().panels.panDoneText, "SOLUTION COMPLETE");
    EXPECT_TRUE(person.isShown("panDone"));
    EXPECT_EQ(person.boxes.size(), 3U); // the first told that the input is complete
    EXPECT_NE(person.boxes[1].text.find("Water weighs 70.00 PCF"), std::string::npos);
    EXPECT_NE(person.boxes[2].text.find("Planes overestimate passive pressure"), std::string::npos);
    EXPECT_EQ(person.boxes[2].text.find("Water weighs"), std::string::npos);
    EXPECT_EQ(person.boxes[2].text.find("..."), std::string::npos); // nothing is cut off
    person.push("cmdOK");
    EXPECT_TRUE(person.canChoose("mnuViewItem_3"));
}

TEST(Notes, TheWindowHasAllOfThemAndFinds) {
    Person person;
    openUnsafe(person);
    solveUnsafe(person);
    EXPECT_FALSE(person.canChoose("mnuToolsItem_1"));
    person.push("cmdOK");
    person.expectScreen("NOTES", [&](QDialog& screen) {
        EXPECT_EQ(screen.windowTitle(), "NOTES");
        auto* text = screen.findChild<QPlainTextEdit*>("txtNotes");
        for (const Note& note : person.session().notes.list) {
            EXPECT_TRUE(text->toPlainText().simplified().contains(
                QString::fromStdString(noteLine(note)).simplified()))
                << note.text;
        }
        keepScreenshot(screen, "NOTES-unsafe");
        person.expectBox("OK"); // what is typed is ignored
        QTest::keyClick(text, Qt::Key_X);
        ASSERT_TRUE(takesKeys(screen));
        QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
        auto* words = screen.findChild<QLineEdit*>("findWords");
        EXPECT_EQ(screen.focusWidget(), words);
        QTest::keyClicks(words, "(no-surcharge)");
        EXPECT_EQ(text->textCursor().selectedText(), "(no-surcharge)");
        QTest::keyClick(&screen, Qt::Key_F1);
        auto* guide = screen.findChild<QTextBrowser*>("helpPage");
        ASSERT_NE(guide, nullptr);
        EXPECT_EQ(guide->textCursor().block().text(), "Notes");
        chooseAction(screen, "mnuFinished");
    });
    person.choose("mnuToolsItem_1");
    person.expectNothingLeft();
}

TEST(Notes, TheWindowTellsThemInTheUnitsChosen) {
    Person person;
    openUnsafe(person);
    for (const auto& [units, told] : {std::pair("mnuUnitsItem_1", "Water weighs 10.996 kN/m3"),
                                      std::pair("mnuUnitsItem_0", "Water weighs 70.00 PCF")}) {
        person.choose(units);
        person.expectScreen("NOTES", [told = told](QDialog& screen) {
            EXPECT_TRUE(
                screen.findChild<QPlainTextEdit*>("txtNotes")->toPlainText().contains(told));
            screen.close();
        });
        person.choose("mnuToolsItem_1");
        person.expectNothingLeft();
    }
}

TEST(Notes, AreCopiedWholeOrAsSelected) {
    Person person;
    openUnsafe(person);
    person.expectScreen("NOTES", [](QDialog& screen) {
        auto* text = screen.findChild<QPlainTextEdit*>("txtNotes");
        chooseAction(screen, "mnuCopy");
        EXPECT_EQ(QApplication::clipboard()->text(), text->toPlainText());
        QTextCursor cursor = text->textCursor();
        cursor.setPosition(2);
        cursor.setPosition(8, QTextCursor::KeepAnchor);
        text->setTextCursor(cursor);
        chooseAction(screen, "mnuCopy");
        EXPECT_EQ(QApplication::clipboard()->text(), text->toPlainText().mid(2, 6));
        screen.close();
    });
    person.choose("mnuToolsItem_1");
    person.expectNothingLeft();
}

TEST(Notes, ArePrinted) {
    Person person;
    openUnsafe(person);
    std::string shown;
    person.expectScreen("NOTES", [&](QDialog& screen) {
        shown = screen.findChild<QPlainTextEdit*>("txtNotes")->toPlainText().toStdString();
        person.expectFile(person.userFile("notes"), [](QFileDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "wall-notes.pdf");
        });
        chooseAction(screen, "mnuPrint");
        person.expectFile(person.userFile("missing/notes.pdf"));
        person.expectBox("OK");
        chooseAction(screen, "mnuPrint");
        EXPECT_TRUE(screen.isVisible());
        screen.close();
    });
    person.choose("mnuToolsItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
    QProcess reader;
    reader.start("pdftotext",
                 {"-layout", QString::fromStdString(person.userFile("notes.pdf")), "-"});
    ASSERT_TRUE(reader.waitForFinished());
    const QString printed = QString::fromUtf8(reader.readAllStandardOutput()).simplified();
    EXPECT_TRUE(printed.startsWith(QString::fromStdString(shown).simplified())) << shown;
}

} // namespace
} // namespace korvane::test
