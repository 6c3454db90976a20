// The help: contents, search, places read before, and the text windows that can be searched.
#include "person.h"
#include "screenshots.h"

#include "runtime/file_text.h"
#include "widgets/help_pages.h"
#include "widgets/help_viewer.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test {
namespace {

TEST(Help, SearchFindsWordsInAllPagesWithTheirSections) {
    const auto pages = loadHelpPages();
    ASSERT_GE(pages.size(), 8U);
    for (const HelpPage& page : pages) {
        EXPECT_FALSE(page.title.isEmpty());
    }
    const auto hits = searchHelp(pages, "seepage GRADIENT");
    ASSERT_FALSE(hits.empty());
    std::vector<int> found;
    for (const HelpHit& hit : hits) {
        EXPECT_TRUE(hit.piece.text.contains("seepage", Qt::CaseInsensitive));
        EXPECT_TRUE(hit.piece.text.contains("gradient", Qt::CaseInsensitive));
        found.push_back(hit.page);
    }
    found.erase(std::unique(found.begin(), found.end()), found.end());
    EXPECT_GE(found.size(), 3U);
    EXPECT_TRUE(searchHelp(pages, "  ").empty());
}

HelpViewer* viewerOf(Person& person) {
    HelpViewer* found = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* viewer = qobject_cast<HelpViewer*>(window)) {
            found = viewer;
        }
    }
    (void)person;
    return found;
}

TEST(Help, ContentsOpenAPageAtItsSectionAndSearchOpensTheHit) {
    Person person;
    person.choose("mnuHelpItem_0");
    HelpViewer* viewer = viewerOf(person);
    ASSERT_NE(viewer, nullptr);
    EXPECT_TRUE(viewer->isVisible());
    auto* contents = viewer->findChild<QTreeWidget*>("helpContents");
    auto* page = viewer->findChild<QTextBrowser*>("helpPage");
    QTreeWidgetItem* inputFile = contents->findItems("The input file", Qt::MatchExactly).value(0);
    ASSERT_NE(inputFile, nullptr);
    contents->setCurrentItem(inputFile->child(inputFile->childCount() - 1));
    EXPECT_TRUE(page->toPlainText().contains("FINISHED"));
    EXPECT_EQ(page->textCursor().block().text(), "What a saved file does not bring back");

    person.choose("mnuHelpItem_1");
    EXPECT_EQ(viewerOf(person), viewer) << "there is one help window";
    QTest::keyClicks(viewer->findChild<QWidget*>("helpWords"), "IMPROPER WALL ROTATION");
    auto* hits = viewer->findChild<QListWidget*>("helpHits");
    ASSERT_GE(hits->count(), 1);
    hits->setCurrentRow(0);
    EXPECT_TRUE(page->toPlainText().contains("IMPROPER WALL ROTATION"));
}

TEST(Help, EnterAndArrowsInTheSearchFieldGoThroughTheHits) {
    Person person;
    person.choose("mnuHelpItem_1");
    HelpViewer* viewer = viewerOf(person);
    ASSERT_NE(viewer, nullptr);
    auto* words = viewer->findChild<QLineEdit*>("helpWords");
    auto* hits = viewer->findChild<QListWidget*>("helpHits");
    auto* page = viewer->findChild<QTextBrowser*>("helpPage");
    QTest::keyClicks(words, "seepage");
    ASSERT_GE(hits->count(), 3);
    keepScreenshot(*viewer, "help-search");
    const Qt::Key keys[] = {Qt::Key_Return, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up};
    const int rows[] = {0, 1, 2, 1};
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(words, keys[i]);
        EXPECT_EQ(hits->currentRow(), rows[i]);
        EXPECT_EQ(page->textCursor().selectedText().toLower(), "seepage");
    }
    EXPECT_TRUE(viewer->isVisible());
    words->setText("no such words anywhere");
    QTest::keyClick(words, Qt::Key_Return);
    EXPECT_EQ(hits->count(), 1);
}

// A letter with Alt is a mnemonic or nothing.
TEST(Help, AltWithALetterTypesNothingIntoSearchAndFindBar) {
    Person person;
    person.choose("mnuHelpItem_1");
    HelpViewer* viewer = viewerOf(person);
    ASSERT_NE(viewer, nullptr);
    viewer->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(viewer));
    QTest::keyClick(viewer, Qt::Key_F, Qt::ControlModifier);
    for (const char* name : {"helpWords", "findWords"}) {
        auto* words = viewer->findChild<QLineEdit*>(name);
        QTest::keyClicks(words, "wa");
        QTest::keyClick(words, Qt::Key_Z, Qt::AltModifier);
        QTest::keyClick(words, Qt::Key_Q, Qt::AltModifier | Qt::ShiftModifier);
        EXPECT_EQ(words->text(), "wa") << name;
        QTest::keyClick(words, Qt::Key_Q, Qt::AltModifier | Qt::ControlModifier);
        EXPECT_EQ(words->text(), "waq") << name; // as keyboards with a third level send it
        QTest::keyClicks(words, "ll");
        EXPECT_EQ(words->text(), "waqll") << name;
    }
}

TEST(Help, SearchHitsAreWholeLinesWithinTheList) {
    Person person;
    person.choose("mnuHelpItem_1");
    HelpViewer* viewer = viewerOf(person);
    QTest::keyClicks(viewer->findChild<QWidget*>("helpWords"), "wall");
    auto* hits = viewer->findChild<QListWidget*>("helpHits");
    ASSERT_GE(hits->count(), 5);
    for (int row = 0; row < hits->count(); ++row) {
        const QString text = hits->item(row)->text();
        EXPECT_FALSE(text.contains(" | ")) << text.toStdString();
        const QRect place = hits->visualItemRect(hits->item(row));
        EXPECT_LE(place.width(), hits->viewport()->width());
        const QFontMetrics metrics(hits->font());
        const QRect needed =
            metrics.boundingRect(QRect(0, 0, place.width(), 10000), Qt::TextWordWrap, text);
        EXPECT_GE(place.height() + metrics.height() / 2, needed.height()) << text.toStdString();
    }
}

TEST(Help, BackReturnsToThePlacesReadBefore) {
    Person person;
    person.choose("mnuHelpItem_0");
    HelpViewer* viewer = viewerOf(person);
    ASSERT_NE(viewer, nullptr);
    auto* page = viewer->findChild<QTextBrowser*>("helpPage");
    auto* back = viewer->findChild<QPushButton*>("helpBack");
    EXPECT_FALSE(back->isEnabled());
    const auto heading = [&] { return page->textCursor().block().text().toStdString(); };
    viewer->openPage(1, "View");
    viewer->openPage(1, "Solve");
    viewer->openPage(3, {});
    EXPECT_EQ(heading(), "The input file");
    pushButton(*viewer, "helpBack");
    EXPECT_EQ(heading(), "Solve");
    viewer->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(viewer));
    QTest::keyClick(viewer, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(heading(), "View");
    pushButton(*viewer, "helpBack");
    EXPECT_EQ(heading(), "Getting started");
    EXPECT_FALSE(back->isEnabled());
}

TEST(Help, CtrlFFindsInThePage) {
    Person person;
    person.choose("mnuHelpItem_0");
    HelpViewer* viewer = viewerOf(person);
    viewer->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(viewer));
    QTest::keyClick(viewer, Qt::Key_F, Qt::ControlModifier);
    auto* words = viewer->findChild<QLineEdit*>("findWords");
    ASSERT_TRUE(words->isVisible());
    QTest::keyClicks(words, "engineer");
    EXPECT_EQ(viewer->findChild<QTextBrowser*>("helpPage")->textCursor().selectedText(),
              "engineer");
    QTest::keyClick(words, Qt::Key_Return);
    QTest::keyClick(words, Qt::Key_Escape);
    EXPECT_FALSE(words->isVisible());
    EXPECT_TRUE(viewer->isVisible());
}

TEST(Help, StaysOpenOverTheScreenBelowWhenAModalScreenCloses) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectScreen("VUINECHO", [&](QDialog& screen) {
        chooseAction(screen, "mnuHelpItem_0");
        HelpViewer* viewer = viewerOf(person);
        ASSERT_NE(viewer, nullptr);
        EXPECT_EQ(viewer->parentWidget(), &screen);
        viewer->openPage(3, {});
        chooseAction(screen, "mnuFinished");
    });
    person.choose("mnuViewItem_1");
    HelpViewer* viewer = viewerOf(person);
    ASSERT_NE(viewer, nullptr);
    EXPECT_TRUE(viewer->isVisible());
    EXPECT_EQ(viewer->parentWidget(), &person.window());
    EXPECT_TRUE(viewer->findChild<QTextBrowser*>("helpPage")->toPlainText().contains("CONTROL"));

    person.expectBox("No");
    person.choose("mnuFileItem_0"); // New closes the help with the problem
    EXPECT_EQ(viewerOf(person), nullptr);
}

// ---- text windows ----

TEST(TextWindows, AKeyThatWouldChangeTheTextShowsTheMessageAndChangesNothing) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectScreen("VUINPTFL", [&](QDialog& screen) {
        EXPECT_EQ(screen.windowTitle().toStdString(), examplePath("cantilever-dry-sand"));
        auto* text = screen.findChild<QPlainTextEdit*>("txtINPTFILE");
        const QString before = text->toPlainText();
        // The whole file less its last character.
        EXPECT_EQ(before.toStdString() + "\n", readFile(examplePath("cantilever-dry-sand")));
        for (const Qt::Key key : {Qt::Key_X, Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Delete}) {
            person.expectBox("OK");
            QTest::keyClick(text, key);
        }
        std::size_t told = 4;
        for (const auto change :
             {QKeySequence::Paste, QKeySequence::Cut, QKeySequence::DeleteEndOfLine,
              QKeySequence::DeleteCompleteLine}) {
            for (const QKeySequence& keys : QKeySequence::keyBindings(change)) {
                person.expectBox("OK");
                QTest::keySequence(text, keys);
                ++told;
            }
        }
        EXPECT_GE(told, 4U + 2U);                 // paste and cut have keys everywhere
        EXPECT_EQ(person.boxes.size(), 1 + told); // the first told that the input is complete
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End}) {
            QTest::keyClick(text, key); // free
        }
        QTest::keyClick(text, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(text, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(text->toPlainText(), before);
        screen.close(); // the frame's cross is Finished
    });
    person.choose("mnuViewItem_0");
    person.expectNothingLeft();
    ASSERT_GT(person.boxes.size(), 5U);
    for (std::size_t box = 1; box < person.boxes.size(); ++box) {
        EXPECT_EQ(person.boxes[box].text, "Changes made in this window are ignored.");
    }
}

TEST(TextWindows, AnOutputOfMoreThan48000BytesIsShownInPart) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string output = person.session().report.CurrentOutputName;
    writeFile(output, std::string(47990, 'x') + "\n" + std::string(100, 'y') + "\n");
    person.expectBox("OK");
    person.expectScreen("VUINECHO", [](QDialog& screen) {
        EXPECT_EQ(screen.findChild<QPlainTextEdit*>("txtINECHO")->toPlainText().size(), 48000);
        chooseAction(screen, "mnuFinished");
    });
    person.choose("mnuViewItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().text, "The current output file: " + output +
                                            "\n  is too long to display in its entirety."
                                            "\nTo see the entire file, save the file as a permanent"
                                            "\nfile and view it after after exiting KORVANE.");
}

TEST(TextWindows, CtrlFFindsTheNextAndThePreviousPlace) {
    Person person;
    const std::string path = person.userFile("words.dat");
    writeFile(path, "'A WALL, A SECOND WALL\n'AND A THIRD WALL IN A HEADING OF SOME LENGTH\n"
                    "CONTROL C D 1 1\nWALL 0\nSURFACE R 1 0 0\nSURFACE L 1 0 -10\n"
                    "SOIL B S 1\n 120 120 30 0 0 0\nFINISHED\n");
    person.open(path);
    person.expectScreen("VUINPTFL", [&](QDialog& screen) {
        ASSERT_TRUE(takesKeys(screen));
        auto* text = screen.findChild<QPlainTextEdit*>("txtINPTFILE");
        auto* words = screen.findChild<QLineEdit*>("findWords");
        EXPECT_FALSE(words->isVisible());
        QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(screen.focusWidget(), words);
        QTest::keyClicks(words, "wall"); // any case
        const QString whole = text->toPlainText();
        std::vector<int> places;
        for (qsizetype at = whole.indexOf("WALL"); at >= 0; at = whole.indexOf("WALL", at + 1)) {
            places.push_back(static_cast<int>(at));
        }
        ASSERT_EQ(places.size(), 4U);
        const auto found = [&] { return text->textCursor().selectionStart(); };
        EXPECT_EQ(found(), places[0]);
        QTest::keyClick(words, Qt::Key_Return);
        EXPECT_EQ(found(), places[1]);
        QTest::keyClick(words, Qt::Key_F3);
        EXPECT_EQ(found(), places[2]);
        QTest::keyClick(words, Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_EQ(found(), places[1]);
        pushButton(screen, "findPrevious");
        pushButton(screen, "findPrevious"); // around the beginning
        EXPECT_EQ(found(), places[3]);
        keepScreenshot(screen, "VUINPTFL-find");
        pushButton(screen, "findNext");
        EXPECT_EQ(found(), places[0]);
        words->setText("WALLS");
        EXPECT_EQ(screen.findChild<QLabel*>("findTold")->text(), "Not found");
        QTest::keyClick(words, Qt::Key_Escape);
        EXPECT_FALSE(words->isVisible());
        EXPECT_EQ(text->toPlainText(), whole);
        screen.close();
    });
    person.choose("mnuViewItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.size(), 1U); // nothing typed went into the text
}

} // namespace
} // namespace korvane::test
