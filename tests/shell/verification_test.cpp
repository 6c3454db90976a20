// The window of the verification: Tools, Verify.
#include "person.h"

#include "screenshots.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test {
namespace {

TEST(VerificationWindow, ShowsThatAllFiguresHold) {
    Person person;
    person.expectScreen("VERIFY", [](QDialog& screen) {
        const QString text = screen.findChild<QPlainTextEdit*>("txtVerify")->toPlainText();
        EXPECT_TRUE(text.startsWith("Case: source\n"));
        EXPECT_TRUE(text.contains("das-9-1: Das, Principles of Foundation Engineering"));
        EXPECT_FALSE(text.contains("FAIL"));
        const QRegularExpression ending("\n(\\d+) of (\\d+) figures hold\\.\n$");
        const QRegularExpressionMatch last = ending.match(text);
        EXPECT_TRUE(last.hasMatch()) << text.right(200).toStdString();
        EXPECT_EQ(last.captured(1), last.captured(2));
        EXPECT_EQ(screen.windowTitle(), "Verification: " + last.captured().trimmed().chopped(1));
        keepScreenshot(screen, "VERIFY-all");
        chooseAction(screen, "mnuFinished");
    });
    person.choose("mnuToolsItem_5");
    person.expectNothingLeft();
    EXPECT_TRUE(person.boxes.empty());
}

TEST(VerificationWindow, IsThereAtAnyTimeButDuringASolution) {
    Person person;
    const auto isOn = [&] {
        return person.window().findChild<QMenu*>("mnuTools")->isEnabled() &&
               person.window().findChild<QAction*>("mnuToolsItem_5")->isEnabled();
    };
    EXPECT_TRUE(isOn());
    person.open(examplePath("cantilever-dry-sand"));
    EXPECT_TRUE(isOn());
    person.choose("mnuSolveItem_0");
    EXPECT_FALSE(isOn());
    person.push("cmdContinue");
    EXPECT_FALSE(isOn());
    person.push("cmdOK");
    EXPECT_TRUE(isOn());
    person.expectNothingLeft();
}

TEST(VerificationWindow, IsCopiedAndPrinted) {
    Person person;
    QString shown;
    person.expectScreen("VERIFY", [&](QDialog& screen) {
        auto* text = screen.findChild<QPlainTextEdit*>("txtVerify");
        shown = text->toPlainText();
        chooseAction(screen, "mnuCopy");
        EXPECT_EQ(QApplication::clipboard()->text(), shown);
        QTextCursor cursor = text->textCursor();
        cursor.setPosition(6);
        cursor.setPosition(12, QTextCursor::KeepAnchor);
        text->setTextCursor(cursor);
        chooseAction(screen, "mnuCopy");
        EXPECT_EQ(QApplication::clipboard()->text(), "source");
        person.expectFile(person.userFile("verified"), [](QFileDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(),
                      "korvane-verification.pdf");
        });
        chooseAction(screen, "mnuPrint");
        screen.close();
    });
    person.choose("mnuToolsItem_5");
    person.expectNothingLeft();
    QProcess reader;
    reader.start("pdftotext",
                 {"-layout", QString::fromStdString(person.userFile("verified.pdf")), "-"});
    ASSERT_TRUE(reader.waitForFinished());
    const QStringList printed =
        QString::fromUtf8(reader.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    // Each line fits the page: none is cut into pieces.
    for (const QString& line : shown.split('\n', Qt::SkipEmptyParts)) {
        const auto same = [&](const QString& paper) {
            return paper.simplified() == line.simplified();
        };
        EXPECT_TRUE(std::any_of(printed.begin(), printed.end(), same)) << line.toStdString();
    }
}

} // namespace
} // namespace korvane::test
