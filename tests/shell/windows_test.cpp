// Title window, About box and message boxes.
#include "contrast.h"
#include "person.h"
#include "screenshots.h"

#include "runtime/utf8_text.h"
#include "shell/title_window.h"
#include "widgets/gate.h"
#include "widgets/geometry.h"
#include "widgets/message_box.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

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

TEST(Title, TheDisclaimerStaysOnTheScreenWithItsButtons) {
    TitleWindow title;
    atDisclaimer(title, [&] {
        const QRect screen = title.screen()->availableGeometry();
        EXPECT_LE(title.width(), screen.width());
        EXPECT_LE(title.height(), screen.height());
        for (const char* name : {"okbutton_0", "okbutton_1"}) {
            auto* button = title.findChild<QPushButton*>(name);
            const QRect place(button->mapToGlobal(QPoint()), button->size());
            EXPECT_TRUE(screen.contains(place)) << name;
            EXPECT_FALSE(button->visibleRegion().isEmpty());
        }
        // The lines of the title do not overlap each other, and the whole text can be read.
        int foot = 0;
        for (const char* name : {"Picture1", "Label1", "Label2", "Label3", "Label4", "okscroll"}) {
            auto* part = title.findChild<QWidget*>(name);
            EXPECT_GE(part->y(), foot) << name;
            EXPECT_GE(part->height(), part->minimumSizeHint().height()) << name;
            foot = part->y() + part->height();
        }
        auto* text = title.findChild<QLabel*>("okpanel");
        EXPECT_GE(text->height(), text->heightForWidth(text->width()));
        auto* scroll = title.findChild<QScrollArea*>("okscroll");
        EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
        QTest::keyClick(&title, Qt::Key_PageDown);
        EXPECT_EQ(scroll->verticalScrollBar()->value() > 0,
                  scroll->verticalScrollBar()->maximum() > 0);
        keepScreenshot(title, "splash_form-disclaimer");
        pushButton(title, "okbutton_0");
    });
    EXPECT_TRUE(title.runAtStart(ShortTitle));
}

TEST(Title, F1AnswersNoDisclaimer) {
    TitleWindow title;
    atDisclaimer(title, [&] {
        QTest::keyClick(&title, Qt::Key_F1);
        EXPECT_EQ(title.DisclaimerAnswer, 0);
        EXPECT_TRUE(title.isVisible());
        pushButton(title, "okbutton_0");
    });
    EXPECT_TRUE(title.runAtStart(ShortTitle));
}

TEST(MainWindow, OpensWithinTheScreen) {
    Person person;
    const QRect screen = person.window().screen()->availableGeometry();
    EXPECT_LE(person.window().width(), screen.width());
    EXPECT_LE(person.window().height(), screen.height());
}

/// The frames that stand in the middle of the window, on the smallest screen at the largest scale.
TEST(MainWindow, PanelsFitASmallScreenAt200Percent) {
    Person person;
    constexpr QSize room(1024 / 2 - 12, 768 / 2 - 20 - 40 - 24); // less task bar, frame and menus
    for (const char* name : {"fraSoilOut", "panDone"}) {
        auto* panel = person.window().findChild<QWidget*>(name);
        panel->show();
        EXPECT_LE(panel->width(), room.width()) << name;
        EXPECT_LE(panel->height(), room.height()) << name;
        int foot = 0;
        for (auto* part : panel->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            EXPECT_TRUE(panel->rect().contains(part->geometry())) << name;
            if (part->objectName() != "panDoneSign") { // beside the words
                EXPECT_GE(part->y(), foot) << part->objectName().toStdString();
                foot = part->y() + part->height();
            }
        }
    }
    auto* words = person.window().findChild<QLabel*>("panDoneText");
    for (const char* text : {"SOLUTION COMPLETE", "SOLUTION ABORTED DUE TO CALCULATION ERRORS"}) {
        words->setText(text);
        QFont bold = words->font();
        bold.setBold(true);
        words->setFont(bold);
        EXPECT_GE(words->height(), words->heightForWidth(words->width())) << text;
    }
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
            // The screen has room for the words.
            const auto* scroll = about.findChild<QScrollArea*>("okscroll");
            const QScreen* screen = about.screen();
            EXPECT_TRUE(scroll->verticalScrollBar()->maximum() == 0 ||
                        about.height() > screen->availableGeometry().height() * 9 / 10);
            keepScreenshot(about, "splash_form-about");
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
    EXPECT_EQ(answered({.text = "?", .buttons = Buttons::YesNoCancel}, escape), Answer::Cancel);
    EXPECT_EQ(answered({.text = "?", .buttons = Buttons::YesNoCancel}, cross), Answer::Cancel);
    EXPECT_EQ(answered({.text = "?"}, escape), Answer::Ok);
    EXPECT_EQ(answered({.text = "?"}, cross), Answer::Ok);
}

TEST(MessageBoxes, OfThreeAnswersYesStandsFirstAndEnterTakesIt) {
    const MessageBox question{.text = "?", .buttons = Buttons::YesNoCancel};
    const auto enter = [](QMessageBox& box) {
        const auto left = [&](QMessageBox::StandardButton button) {
            return box.button(button)->geometry().left();
        };
        EXPECT_LT(left(QMessageBox::Yes), left(QMessageBox::No));
        EXPECT_LT(left(QMessageBox::No), left(QMessageBox::Cancel));
        QTest::keyClick(&box, Qt::Key_Return);
    };
    EXPECT_EQ(answered(question, enter), Answer::Yes);
    EXPECT_EQ(answered(question, [](QMessageBox& box) { box.button(QMessageBox::No)->click(); }),
              Answer::No);
}

TEST(MessageBoxes, AQuestionIsLeftByItsButtonsAlone) {
    const Answer answer = answered({.text = "?", .buttons = Buttons::YesNo}, [](QMessageBox& box) {
        EXPECT_FALSE(box.windowFlags().testFlag(Qt::WindowCloseButtonHint)); // it would be refused
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

TEST(MessageBoxes, AreAtLeastAsWideAsTheirTitle) {
    const std::string title = "DATA ERROR IN INPUT FILE: /home/engineer/walls/river/station-12.dat";
    answered({.text = "?", .title = title}, [&](QMessageBox& box) {
        const QFontMetrics metrics(box.font());
        EXPECT_GE(box.width(), std::min(metrics.horizontalAdvance(QString::fromStdString(title)),
                                        screenRoom(&box).width())); // less the frame
        keepScreenshot(box, "box-with-a-long-title");
        box.button(QMessageBox::Ok)->click();
    });
}

TEST(MessageBoxes, KeepTheirLinesWhereTheScreenHasRoom) {
    const std::string text = "At least one required data value is missing."
                             "\n\n     Choose OK to continue SOIL LAYER"
                             "\n          DATA entry."
                             "\n     Choose CANCEL to delete ALL SOIL LAYER"
                             "\n          DATA and exit.";
    answered({.text = text, .buttons = Buttons::OkCancel, .icon = Icon::Exclamation},
             [&](QMessageBox& box) {
                 const auto* label = box.findChild<QLabel*>("qt_msgbox_label");
                 const QSize lines = QFontMetrics(label->font()).size(0, box.text());
                 EXPECT_GE(label->width(), lines.width());
                 EXPECT_LE(box.width(), screenRoom(&box).width());
                 EXPECT_TRUE(box.screen()->availableGeometry().contains(box.geometry()));
                 box.button(QMessageBox::Ok)->click();
             });
}

TEST(MessageBoxes, AreNeverLargerThanTheScreenAndATextThatIsHigherScrolls) {
    std::string lines;
    for (int i = 0; i < 300; ++i) {
        lines += "line " + std::to_string(i) + "\n";
    }
    const std::string path = "/" + std::string(3000, 'w') + "/" + std::string(3000, 'x');
    for (const std::string& text : {lines, path}) {
        answered({.text = text, .title = path, .icon = Icon::Exclamation}, [&](QMessageBox& box) {
            const QRect screen = box.screen()->availableGeometry();
            EXPECT_LE(box.width(), screen.width());
            EXPECT_LE(box.height(), screen.height());
            if (text == lines) {
                EXPECT_GE(box.height(), screen.height() * 3 / 4) << "uses the room";
            }
            EXPECT_TRUE(screen.contains(box.button(QMessageBox::Ok)->mapToGlobal(QPoint(0, 0))));
            const auto* area = box.findChild<QScrollArea*>("messageScroll");
            ASSERT_NE(area, nullptr);
            // All of it can be reached, and no bar is there for nothing.
            const auto* label = area->widget();
            EXPECT_GE(label->width(), label->minimumSizeHint().width());
            EXPECT_EQ(area->verticalScrollBar()->maximum() > 0, text == lines);
            EXPECT_EQ(area->horizontalScrollBar()->maximum() > 0, text == path);
            EXPECT_EQ(box.text().toStdString(), messageText(text));
            keepScreenshot(box, text == lines ? "box-with-many-lines" : "box-with-a-long-line");
            box.button(QMessageBox::Ok)->click();
        });
    }
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

// ---- in light and dark, which ctest asks for ----

TEST(Readable, AreTheTextsOfTitleDisclaimerAndAbout) {
    TitleWindow title;
    QTimer::singleShot(ShortTitle / 2, &title, [&] { expectReadable(title); });
    atDisclaimer(title, [&] {
        expectReadable(title);
        pushButton(title, "okbutton_0");
    });
    EXPECT_TRUE(title.runAtStart(ShortTitle));
    Person person;
    person.expectScreen("splash_form", [](QDialog& about) {
        expectReadable(about);
        about.close();
    });
    person.choose("mnuHelpItem_3");
    person.expectNothingLeft();
}

TEST(Readable, AreTheTextsOfTheMainWindowItsScreensAndBoxes) {
    Person person;
    person.expectFile(examplePath("cantilever-dry-sand"));
    person.expectScreen("messageBox", [](QDialog& box) {
        expectReadable(box);
        box.accept();
    });
    person.choose("mnuFileItem_1");
    const std::vector<std::pair<const char*, const char*>> screens{{"mnuViewItem_0", "VUINPTFL"},
                                                                   {"mnuViewItem_2", "VUINPLOT"},
                                                                   {"mnuToolsItem_1", "NOTES"},
                                                                   {"mnuToolsItem_2", "COMPARE"}};
    for (const auto& [item, name] : screens) {
        person.expectScreen(name, [](QDialog& screen) {
            expectReadable(screen);
            screen.close();
        });
        person.choose(item);
        person.expectNothingLeft();
    }
    person.choose("mnuSolveItem_0");
    expectReadable(person.window()); // the stop for review
    person.push("cmdContinue");
    expectReadable(person.window()); // the end
    person.push("cmdOK");
    expectReadable(person.window()); // at rest, with the status line
}

} // namespace
} // namespace korvane::test
