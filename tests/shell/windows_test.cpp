// Title window, message boxes, help, text windows and printing.
#include "person.h"

#include "runtime/file_text.h"
#include "shell/title_window.h"
#include "support/faulty_machine.h"
#include "widgets/gate.h"
#include "widgets/help_pages.h"
#include "widgets/message_box.h"

#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test {
namespace {

// ---- title and disclaimer ----

constexpr int ShortTitle = 60; // milliseconds

/// Does something to the title window once the disclaimer is on show.
void atDisclaimer(TitleWindow& title, const std::function<void()>& act) {
    QTimer::singleShot(5 * ShortTitle, &title, act);
}

TEST(Title, AcceptGoesOn) {
    TitleWindow title;
    atDisclaimer(title, [&] { pushButton(title, "okbutton_0"); });
    EXPECT_TRUE(title.runAtStart(ShortTitle));
    EXPECT_EQ(title.DisclaimerAnswer, 1);
}

TEST(Title, DeclineEscapeAndTheFramesCrossEndIt) {
    const std::function<void(TitleWindow&)> ways[] = {
        [](TitleWindow& title) { pushButton(title, "okbutton_1"); },
        [](TitleWindow& title) { QTest::keyClick(&title, Qt::Key_Escape); },
        [](TitleWindow& title) { title.close(); },
    };
    for (const auto& way : ways) {
        TitleWindow title;
        atDisclaimer(title, [&] { way(title); });
        EXPECT_FALSE(title.runAtStart(ShortTitle));
        EXPECT_EQ(title.DisclaimerAnswer, -1);
    }
}

TEST(Title, DecliningEndsTheProgramBeforeAnyMenuAppearsAndMakesNoTemporaryFile) {
    const TemporaryFolder folder;
    qputenv("temp", folder.path().c_str());
    bool menuSeen = false;
    QTimer::singleShot(5 * ShortTitle, qApp, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            menuSeen = menuSeen || window->objectName() == "CKORVANE";
        }
        pushButton(*QApplication::activeWindow(), "okbutton_1");
    });
    EXPECT_EQ(runProgram({}, ShortTitle), 0);
    EXPECT_FALSE(menuSeen);
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        EXPECT_NE(window->objectName(), "CKORVANE");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(Title, EscapeDuringTheTitleScreenDeclines) {
    TitleWindow title;
    QTimer::singleShot(ShortTitle / 3, &title, [&] { QTest::keyClick(&title, Qt::Key_Escape); });
    EXPECT_FALSE(title.runAtStart(ShortTitle));
}

TEST(Title, TheWaitComesBeforeTheDisclaimerAndAClickDoesNotSkipIt) {
    TitleWindow title;
    bool shownEarly = true;
    QTimer::singleShot(ShortTitle / 3, &title, [&] {
        QTest::mouseClick(title.findChild<QWidget*>("Panel3D1"), Qt::LeftButton);
        shownEarly = title.findChild<QWidget*>("okpanel")->isVisible();
    });
    std::string words;
    atDisclaimer(title, [&] {
        words = title.findChild<QLabel*>("okpanel")->text().toStdString();
        EXPECT_EQ(title.findChild<QPushButton*>("okbutton_0")->text(), "&ACCEPT");
        EXPECT_TRUE(title.findChild<QPushButton*>("okbutton_0")->isDefault());
        EXPECT_EQ(title.findChild<QPushButton*>("okbutton_1")->text(), "&DECLINE");
        pushButton(title, "okbutton_0");
    });
    EXPECT_TRUE(title.runAtStart(ShortTitle));
    EXPECT_FALSE(shownEarly);
    EXPECT_EQ(
        words.rfind("   TO USE THIS PROGRAM, YOU MUST ACKNOWLEDGE THE FOLLOWING DISCLAIMER:", 0),
        0U);
}

TEST(About, HasOneButtonAndAnythingClosesIt) {
    Person person;
    const std::function<void(QDialog&)> ways[] = {
        [](QDialog& about) { pushButton(about, "okbutton_0"); },
        [](QDialog& about) { QTest::keyClick(&about, Qt::Key_Escape); },
        [](QDialog& about) { about.close(); },
        [](QDialog& about) {
            QTest::mouseClick(about.findChild<QWidget*>("Panel3D1"), Qt::LeftButton);
        },
    };
    for (const auto& way : ways) {
        person.expectScreen("splash_form", [&](QDialog& about) {
            EXPECT_EQ(about.findChild<QPushButton*>("okbutton_0")->text(), "&OK");
            EXPECT_FALSE(about.findChild<QPushButton*>("okbutton_1")->isVisible());
            EXPECT_FALSE(about.findChild<QLabel*>("okpanel")->text().contains("DISCLAIMER"));
            way(about);
        });
        person.choose("mnuHelpItem_3");
        person.expectNothingLeft();
        EXPECT_TRUE(person.window().isVisible());
    }
}

// ---- faults in a paint ----

TEST(Paint, AFaultSkipsWhatIsLeftOfTheDrawing) {
    class FaultyPicture : public QWidget {
      public:
        int begun = 0;
        int ended = 0;

      protected:
        void paintEvent(QPaintEvent*) override {
            enterPaint([this] {
                ++begun;
                if (begun == 1) {
                    throw RuntimeError(9);
                }
                ++ended;
            });
        }
    } picture;
    picture.grab(); // goes on with the event loop, without a box
    EXPECT_EQ(picture.begun, 1);
    EXPECT_EQ(picture.ended, 0);
    picture.grab();
    EXPECT_EQ(picture.ended, 1);
}

// ---- message boxes ----

/// Asks a box and does something at it; the answer.
Answer answered(const MessageBox& box, const std::function<void(QMessageBox&)>& act) {
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (auto* shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            shown != nullptr && shown->isVisible()) {
            poll.stop();
            act(*shown);
        }
    });
    poll.start(5);
    return askBox(nullptr, box);
}

TEST(MessageBoxes, EscapeAndTheCrossMeanCancelOrOk) {
    const auto escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
    const auto cross = [](QMessageBox& box) { box.close(); };
    EXPECT_EQ(answered({.text = "?", .buttons = Buttons::OkCancel}, escape), Answer::Cancel);
    EXPECT_EQ(answered({.text = "?", .buttons = Buttons::OkCancel}, cross), Answer::Cancel);
    EXPECT_EQ(answered({.text = "?"}, escape), Answer::Ok);
    EXPECT_EQ(answered({.text = "?"}, cross), Answer::Ok);
}

TEST(MessageBoxes, AQuestionIsLeftByItsButtonsAlone) {
    const Answer answer = answered({.text = "?", .buttons = Buttons::YesNo}, [](QMessageBox& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        EXPECT_TRUE(box.isVisible());
        box.close();
        EXPECT_TRUE(box.isVisible());
        QTest::keyClick(&box, Qt::Key_N, Qt::AltModifier);
        if (box.isVisible()) { // no shortcut without an active window
            box.button(QMessageBox::No)->click();
        }
    });
    EXPECT_EQ(answer, Answer::No);
}

TEST(MessageBoxes, TheFirstButtonIsDefaultAndTextIsPlain) {
    const Answer answer =
        answered({.text = "<b>not bold</b>\nsecond line", .title = "T", .buttons = Buttons::YesNo},
                 [](QMessageBox& box) {
                     EXPECT_EQ(box.textFormat(), Qt::PlainText);
                     EXPECT_EQ(box.text(), "<b>not bold</b>\nsecond line");
                     EXPECT_EQ(box.windowTitle(), "T");
                     EXPECT_LT(box.button(QMessageBox::Yes)->x(), box.button(QMessageBox::No)->x());
                     QTest::keyClick(&box, Qt::Key_Return);
                 });
    EXPECT_EQ(answer, Answer::Yes);
}

TEST(MessageBoxes, ABusyPointerIsTakenOffAndPutBack) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    answered({.text = "?"}, [](QMessageBox& box) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        box.button(QMessageBox::Ok)->click();
    });
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();
}

// ---- help ----

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

// ---- printing ----

std::string textOfPdf(const std::string& path) {
    QProcess reader;
    reader.start("pdftotext", {"-layout", QString::fromStdString(path), "-"});
    EXPECT_TRUE(reader.waitForFinished()) << "pdftotext";
    return reader.readAllStandardOutput().toStdString();
}

/// The words of all lines in their order, without blanks and page breaks.
std::string words(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c != ' ' && c != '\n' && c != '\f' && c != '\r') {
            result += c;
        }
    }
    return result;
}

TEST(Printing, WithoutAPrinterTheReportGoesToAPdfFileLineByLine) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    person.push("cmdContinue");
    person.push("cmdOK");
    const std::string pdf = person.userFile("report.pdf");
    person.expectFile(person.userFile("report")); // the extension is the dialog's
    person.choose("mnuPrintItem_1");
    person.expectNothingLeft();
    const std::string report = readFile(person.session().report.CurrentOutputName);
    EXPECT_EQ(words(textOfPdf(pdf)), words(report));
}

TEST(Printing, PrintingTheInputResetsTheLineCount) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectFile(person.userFile("input.pdf"));
    person.choose("mnuPrintItem_0");
    EXPECT_EQ(person.session().FileLineCount, 1 + 2); // one heading line, control and wall
    const std::string text = textOfPdf(person.userFile("input.pdf"));
    EXPECT_NE(text.find("'CANTILEVER WALL IN DRY SAND"), std::string::npos);
    EXPECT_NE(text.find("FINISHED"), std::string::npos);
}

TEST(Printing, CancelPrintsNothingAndChangesNothing) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectFile("");
    person.choose("mnuPrintItem_0");
    EXPECT_EQ(person.session().FileLineCount, 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Printing, AFailedWriteTellsAndLeavesTheOldFileWhole) {
    constexpr rlim_t lessThanAPage = 1000; // bytes
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string old = person.userFile("old.pdf");
    writeFile(old, "the old print");
    for (const char* item : {"mnuPrintItem_0", "mnuPrintItem_1"}) {
        person.expectFile(old);
        person.expectBox("Yes"); // it exists
        person.expectBox("OK");
        {
            const SmallDisk full(lessThanAPage);
            person.choose(item);
        }
        person.expectNothingLeft();
        EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
        EXPECT_EQ(person.boxes.back().text, "File: " + old + "\nDisk full\n\nYour data are kept.");
        EXPECT_EQ(readFile(old), "the old print");
    }
    EXPECT_EQ(person.session().FileLineCount, 0); // nothing was printed
}

/// A machine with a printer, and what its setup dialog leaves.
void givePrinter(Person& person, const std::function<bool(QPrinter&)>& setUp) {
    PrintServices& services = person.program->desktop.printServices;
    services.hasPrinter = [] { return true; };
    services.chooseSetup = [setUp](QPrinter& printer, QWidget*) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        return setUp(printer);
    };
}

TEST(Printing, CancelAtThePrintersSetupPrintsNothingAndChangesNothing) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    int asked = 0;
    givePrinter(person, [&](const QPrinter& printer) {
        ++asked;
        EXPECT_EQ(printer.docName().toStdString(), examplePath("cantilever-dry-sand"));
        return false;
    });
    person.choose("mnuPrintItem_0");
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(person.session().FileLineCount, 0);
    EXPECT_EQ(person.boxes.size(), 1U); // that the input is complete
}

TEST(Printing, TheSetupsOwnPdfFileTakesTheWholeReport) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string pdf = person.userFile("by-setup.pdf");
    givePrinter(person, [&](QPrinter& printer) {
        printer.setOutputFileName(QString::fromStdString(pdf));
        return true;
    });
    person.choose("mnuPrintItem_1");
    EXPECT_EQ(words(textOfPdf(pdf)), words(readFile(person.session().report.CurrentOutputName)));
}

TEST(Printing, APrinterThatIsGoneAfterTheSetupIsTold) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    givePrinter(person, [](QPrinter& printer) {
        printer.setOutputFileName({});
        printer.setOutputFormat(QPrinter::PdfFormat); // what the toolkit falls back to
        return true;
    });
    person.expectBox("OK");
    person.choose("mnuPrintItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
    EXPECT_NE(person.boxes.back().text.find("Device I/O error"), std::string::npos);
    EXPECT_EQ(person.session().FileLineCount, 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Printing, ALineWiderThanThePageWrapsAndLongTextsTakeMorePages) {
    std::vector<std::string> lines(200, "line");
    lines[0] = std::string(300, 'w');
    PrintServices services;
    const TemporaryFolder folder;
    const std::string pdf = (folder.path() / "wide.pdf").string();
    services.hasPrinter = [] { return false; };
    services.choosePdf = [&](QWidget*) { return QString::fromStdString(pdf); };
    EXPECT_TRUE(printPages(nullptr, services, "wide", textPages(lines)));
    const std::string text = textOfPdf(pdf);
    EXPECT_EQ(std::count(text.begin(), text.end(), 'w'), 300);
    EXPECT_GE(std::count(text.begin(), text.end(), '\f'), 3); // pages of about 60 lines
}

} // namespace
} // namespace korvane::test
