// The states of the menus as real commands leave them, captions, keys and what nobody can reach.
#include "person.h"

#include "runtime/file_text.h"
#include "screens/screens.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

#include <gtest/gtest.h>

#include <array>
#include <ostream>

namespace korvane::test {
namespace {

/// What the table of menu states tells of a row. The view items count as they can be chosen: an
/// item in a menu that is off cannot.
struct MenuRow {
    bool newOpen, save, print, edit, view;
    std::array<bool, 7> viewItems;
    bool solve;
    const char* caption;
};

constexpr std::array<bool, 7> NoView{};
constexpr std::array<bool, 7> Texts{true, true, true};
constexpr std::array<bool, 7> Cantilever{true, true, true, true};
constexpr std::array<bool, 7> Anchored{true, true, true, false, true, true};
constexpr std::array<bool, 7> AnchoredWithCurves{true, true, true, false, true, true, true};

bool isOn(const Person& person, const char* menu) {
    return person.program->window->findChild<QMenu*>(menu)->isEnabled();
}

void expectMenus(const Person& person, const MenuRow& row) {
    EXPECT_EQ(person.canChoose("mnuFileItem_0"), row.newOpen);
    EXPECT_EQ(person.canChoose("mnuFileItem_1"), row.newOpen);
    EXPECT_EQ(person.canChoose("mnuFileItem_7"), row.newOpen);
    EXPECT_EQ(isOn(person, "mnuFile"), row.newOpen);
    EXPECT_EQ(isOn(person, "mnuFileItem_3"), row.save);
    EXPECT_EQ(isOn(person, "mnuFileItem_5"), row.print);
    EXPECT_EQ(person.canChoose("mnuPrintItem_0"), row.newOpen && row.print);
    EXPECT_EQ(person.canChoose("mnuPrintItem_1"), row.newOpen && row.print);
    EXPECT_EQ(person.canChoose("mnuEditItem_0"), row.edit);
    EXPECT_EQ(isOn(person, "mnuView"), row.view);
    for (std::size_t item = 0; item < row.viewItems.size(); ++item) {
        EXPECT_EQ(person.canChoose(("mnuViewItem_" + std::to_string(item)).c_str()),
                  row.viewItems[item])
            << item;
    }
    EXPECT_EQ(person.canChoose("mnuToolsItem_1"), row.viewItems[0]); // notes: of every problem
    EXPECT_EQ(person.canChoose("mnuToolsItem_2"), row.viewItems[0]); // compare: every problem
    EXPECT_EQ(person.canChoose("mnuSolveItem_0"), row.solve);
    EXPECT_EQ(person.caption("mnuEditItem_0"), row.caption);
    EXPECT_TRUE(person.canChoose("mnuHelpItem_0"));
}

constexpr MenuRow Opened{true, true, true, true, true, Texts, true, "&Edit Input Data"};

/// Leaves the section list by its button, with boxes expected before.
void finishKeyin(QDialog& keyin) {
    pushButton(keyin, "cmdFinished");
}

void acceptSections(QDialog& screen) {
    pushButton(screen, "cmdDefAccept");
    pushButton(screen, "cmdDone");
}

/// An edit that changes nothing, the output before it dropped.
void editNothing(Person& person) {
    person.expectBox("No");
    person.expectScreen("KEYIN", finishKeyin);
    person.choose("mnuEditItem_0");
    person.expectNothingLeft();
}

TEST(MenuRows, AfterStartAndNew) {
    Person person;
    expectMenus(person, {true, false, false, true, false, NoView, false, "&Enter Input data"});
    person.choose("mnuFileItem_0");
    expectMenus(person, {true, false, false, true, false, NoView, false, "&Enter Input Data"});
}

TEST(MenuRows, AfterOpenThereIsNoInputToSaveSinceTheFileIsTheUsers) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    expectMenus(person, Opened);
    EXPECT_FALSE(person.canChoose("mnuSaveItem_0"));
    EXPECT_TRUE(person.canChoose("mnuSaveItem_1"));
}

TEST(MenuRows, AfterFailedOpenOnlyNewOpenAndExitRemain) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string bad = person.userFile("bad.dat");
    writeFile(bad,
              "NO HEADING HERE, BUT A LINE LONG ENOUGH FOR A FILE THAT MAY BE COMPLETE AS IT IS\n");
    person.expectBox("No"); // the output of the problem before
    person.expectFile(bad);
    person.expectBox("OK");
    person.choose("mnuFileItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "INPUT DATA ERRORS");
    expectMenus(person, {true, false, false, false, false, NoView, false, "&Enter Input Data"});
}

TEST(MenuRows, AShortFileThatIsNotReadIsAFailedOpen) {
    Person person;
    const std::string brief = person.userFile("brief.dat");
    writeFile(brief, "'SHORT\n");
    person.expectFile(brief);
    person.expectBox("No");
    person.choose("mnuFileItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "INCOMPLETE INPUT FILE!");
    EXPECT_EQ(person.boxes.back().buttons, (std::vector<std::string>{"Yes", "No"}));
    expectMenus(person, {true, false, false, false, false, NoView, false, "&Enter Input Data"});
}

TEST(MenuRows, ACancelledOpenLeavesTheMenusAsAfterNew) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectBox("No");
    person.expectFile("");
    person.choose("mnuFileItem_1");
    person.expectNothingLeft();
    expectMenus(person, {true, false, false, true, false, NoView, false, "&Enter Input Data"});
}

TEST(MenuRows, AfterEditPrintStaysAsItWas) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    editNothing(person); // the user's file still holds all
    expectMenus(person, {true, true, true, true, true, Texts, true, "Edit Input Data"});
    EXPECT_FALSE(person.canChoose("mnuSaveItem_0"));
    EXPECT_TRUE(person.canChoose("mnuSaveItem_1"));

    // A problem that was typed in: printing needs one that came from a file.
    const Problem typed = person.session().problem;
    person.expectBox("No"); // output
    person.choose("mnuFileItem_0");
    person.expectScreen("KEYIN", [&](QDialog& keyin) {
        person.session().problem = typed;
        person.session().DataChanged = 1;
        person.session().HeadContDataValid = 1;
        finishKeyin(keyin);
    });
    person.choose("mnuEditItem_0");
    person.expectNothingLeft();
    expectMenus(person, {true, true, false, true, true, Texts, true, "Edit Input Data"});
    EXPECT_TRUE(person.canChoose("mnuSaveItem_0"));
}

TEST(MenuRows, AfterFailedEditTheProblemIsEmpty) {
    Person person;
    // An empty problem has all sections missing; Cancel at that box leaves the edit.
    person.expectScreen("KEYIN", [&](QDialog& keyin) {
        person.expectBox("Cancel");
        finishKeyin(keyin);
    });
    person.choose("mnuEditItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "DATA MISSING");
    expectMenus(person, {true, false, false, true, false, NoView, false, "&Enter Input Data"});
}

TEST(MenuRows, DuringASolutionTheTopMenusAreOff) {
    constexpr MenuRow during{false, true, true, false, false, NoView, false, "&Edit Input Data"};
    Person person;
    person.open(examplePath("sloping-both-sides-fixed"));
    int looks = 0;
    const auto look = [&](QDialog&) {
        // Behind the modal window nothing can be reached; its menus are off besides.
        ++looks;
        for (const char* menu : {"mnuFile", "mnuEdit", "mnuView", "mnuSolve", "mnuTools"}) {
            EXPECT_FALSE(isOn(person, menu)) << menu;
        }
        EXPECT_FALSE(person.isShown("Image1"));
    };
    person.expectScreen("WEDGMETH", [&](QDialog& prompt) {
        look(prompt);
        pushButton(prompt, "cmdFixed");
    });
    person.choose("mnuSolveItem_0");
    expectMenus(person, during); // the stop for review
    person.expectScreen("ROWEPILE", [&](QDialog& screen) {
        look(screen);
        acceptSections(screen);
    });
    person.push("cmdContinue");
    expectMenus(person, during); // the last panel
    person.push("cmdOK");
    EXPECT_EQ(looks, 2);
    EXPECT_TRUE(isOn(person, "mnuFile"));
    EXPECT_TRUE(isOn(person, "mnuTools"));
}

struct Finished {
    const char* example;
    bool sections; ///< the section screen comes
    std::array<bool, 7> viewItems;
};

/// Names the case in the list of tests.
void PrintTo(const Finished& one, std::ostream* out) {
    *out << one.example;
}

class FinishedRows : public testing::TestWithParam<Finished> {};

TEST_P(FinishedRows, ViewItemsGoByTheResultAndPrintStaysAsItWas) {
    const Finished& row = GetParam();
    Person person;
    person.open(examplePath(row.example));
    for (const char* caption : {"&Edit Input Data", "Edit Input Data"}) { // after Open, after Edit
        person.choose("mnuSolveItem_0");
        if (person.isShown("fraSoilOut")) {
            if (row.sections) {
                person.expectScreen("ROWEPILE", acceptSections);
            }
            person.push("cmdContinue");
        }
        person.push("cmdOK");
        person.expectNothingLeft();
        expectMenus(person, {true, true, true, true, true, row.viewItems, false, caption});
        editNothing(person);
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, FinishedRows,
                         testing::Values(Finished{"cantilever-dry-sand", false, Cantilever},
                                         Finished{"analysis-cantilever", false, Cantilever},
                                         Finished{"anchored-sand", true, AnchoredWithCurves},
                                         // An analysis has no moment reduction and so no curves.
                                         Finished{"analysis-anchored", false, Anchored}),
                         [](const testing::TestParamInfo<Finished>& row) {
                             std::string name = row.param.example;
                             std::erase(name, '-');
                             return name;
                         });

// ---- captions ----

TEST(Menus, StandInTheirOrderWithTheirCaptions) {
    Person person;
    QStringList bar;
    for (const QAction* action : person.window().menuBar()->actions()) {
        bar.append(action->text());
    }
    EXPECT_EQ(bar, (QStringList{"&File", "&Edit", "&View", "&Solve", "&Tools", "&Help"}));
    const auto captions = [&](const char* name) {
        QStringList found;
        for (const QAction* action : person.window().findChild<QMenu*>(name)->actions()) {
            found.append(action->isSeparator() ? "-" : action->text());
        }
        return found;
    };
    EXPECT_EQ(captions("mnuFile"), (QStringList{"&New", "&Open", "-", "&Save", "-", "&Print", "-",
                                                "E&xit", "-", "&Recent Files"}));
    EXPECT_EQ(captions("mnuFileItem_3"), (QStringList{"&Input Data", "&Output Data"}));
    EXPECT_EQ(captions("mnuFileItem_5"), (QStringList{"&Input File", "&Output File"}));
    EXPECT_EQ(
        captions("mnuView"),
        (QStringList{"Current &Input File", "&OutPut File", "Input &Plots",
                     "&Cantilever Wall Results Plots", "&Free Earth Method Results Plots",
                     "F&ixed Earth Method Results Plots", "&Rowe's Moment Reduction Curves"}));
    EXPECT_EQ(captions("mnuSolve"), (QStringList{"&Continue Solution"}));
    EXPECT_EQ(captions("mnuTools"),
              (QStringList{"&Units", "&Notes...", "&Compare...", "Calculation &Sheet...",
                           "S&tudy...", "&Verify..."}));
    EXPECT_EQ(captions("mnuToolsItem_0"),
              (QStringList{"&US (feet, pounds)", "&SI (metres, kilonewtons)"}));
    EXPECT_EQ(captions("mnuHelp"),
              (QStringList{"&Contents", "&Search for help on ...", "-", "&About KORVANE"}));
    EXPECT_FALSE(person.window().menuBar()->isNativeMenuBar());
}

TEST(Menus, OneOfTheUnitsIsChosen) {
    Person person;
    const auto chosen = [&] {
        QStringList names;
        for (const char* name : {"mnuUnitsItem_0", "mnuUnitsItem_1"}) {
            const auto* action = person.window().findChild<QAction*>(name);
            EXPECT_TRUE(action->isCheckable());
            if (action->isChecked()) {
                names.append(name);
            }
        }
        return names;
    };
    EXPECT_EQ(chosen(), QStringList{"mnuUnitsItem_0"}); // without a problem
    person.choose("mnuUnitsItem_1");
    EXPECT_EQ(chosen(), QStringList{"mnuUnitsItem_1"});
    EXPECT_EQ(person.session().units, UnitSystem::SI);
    person.choose("mnuUnitsItem_1"); // again: nothing changes
    EXPECT_EQ(chosen(), QStringList{"mnuUnitsItem_1"});
    person.open(examplePath("cantilever-dry-sand")); // a file brings its own
    EXPECT_EQ(chosen(), QStringList{"mnuUnitsItem_0"});
    EXPECT_FALSE(person.window().findChild<QAction*>("mnuFileItem_0")->isCheckable());
}

TEST(Menus, AnItemWhoseScreenIsMissingIsOff) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    ScreenTable few = dataScreens();
    few.merge(shellScreens(person.program->desktop.printServices));
    few.erase(Screen::VUINPLOT);
    few.erase(Screen::KEYIN);
    const ShellWindow window(person.session(), person.program->desktop, few, [](QWidget*, Help) {});
    EXPECT_TRUE(window.findChild<QAction*>("mnuViewItem_0")->isEnabled());
    EXPECT_FALSE(window.findChild<QAction*>("mnuViewItem_2")->isEnabled());
    EXPECT_FALSE(window.findChild<QAction*>("mnuEditItem_0")->isEnabled());
}

// ---- keys ----

void activate(Person& person) {
    person.window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&person.window()));
}

/// Pushes a button by its letter: the toolkit shows it pressed for a moment first.
void pushByLetter(Person& person, Qt::Key letter) {
    constexpr int longerThanThePress = 200; // milliseconds
    activate(person);
    QTest::keyClick(&person.window(), letter, Qt::AltModifier);
    QTest::qWait(longerThanThePress);
}

TEST(Keys, AltVAtTheReviewViewsTheOutputThoughTheViewMenuHasTheSameLetter) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    person.expectScreen("VUINECHO", [](QDialog& screen) { chooseAction(screen, "mnuFinished"); });
    pushByLetter(person, Qt::Key_V);
    person.expectNothingLeft();
    pushByLetter(person, Qt::Key_D);
    EXPECT_FALSE(person.isShown("fraSoilOut"));
    EXPECT_EQ(person.window().findChild<QMenu*>("mnuView")->title(), "&View");
}

TEST(Keys, TheMenusWorkByTheKeyboardAlone) {
    Person person;
    activate(person);
    QTest::keyClick(&person.window(), Qt::Key_F, Qt::AltModifier);
    auto* file = person.window().findChild<QMenu*>("mnuFile");
    ASSERT_TRUE(file->isVisible());
    person.expectFile(examplePath("cantilever-dry-sand"));
    person.expectBox("OK");
    QTest::keyClick(file, Qt::Key_O);
    person.expectNothingLeft();
    activate(person);
    QTest::keyClick(&person.window(), Qt::Key_S, Qt::AltModifier);
    QTest::keyClick(person.window().findChild<QMenu*>("mnuSolve"), Qt::Key_C);
    EXPECT_TRUE(person.isShown("fraSoilOut"));
    pushByLetter(person, Qt::Key_C);
    EXPECT_TRUE(person.isShown("panDone"));
    pushByLetter(person, Qt::Key_O);
    EXPECT_FALSE(person.isShown("panDone"));
}

// "Current &Input File" and "F&ixed Earth Method Results Plots" have the same letter.
TEST(Keys, ADisabledEntryDoesNotTakeTheLetterFromAnEnabledOne) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    activate(person);
    person.expectScreen("VUINPTFL", [](QDialog& screen) { chooseAction(screen, "mnuFinished"); });
    QTest::keyClick(&person.window(), Qt::Key_V, Qt::AltModifier);
    QTest::keyClick(person.window().findChild<QMenu*>("mnuView"), Qt::Key_I);
    person.expectNothingLeft();
}

TEST(Keys, ASharedLetterWalksTheEntriesThatCanBeChosen) {
    Person person;
    person.open(examplePath("anchored-sand"));
    person.choose("mnuSolveItem_0");
    person.expectScreen("ROWEPILE", acceptSections);
    person.push("cmdContinue");
    person.push("cmdOK");
    activate(person);
    QTest::keyClick(&person.window(), Qt::Key_V, Qt::AltModifier);
    auto* view = person.window().findChild<QMenu*>("mnuView");
    QTest::keyClick(view, Qt::Key_Home);
    QTest::keyClick(view, Qt::Key_I);
    EXPECT_EQ(view->activeAction()->objectName(), "mnuViewItem_5");
    QTest::keyClick(view, Qt::Key_I);
    EXPECT_EQ(view->activeAction()->objectName(), "mnuViewItem_0");
}

TEST(Keys, AltF4TakesTheWayOfExit) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    activate(person);
    person.expectBox("No");
    QTest::keyClick(&person.window(), Qt::Key_F4, Qt::AltModifier);
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "SAVE OUTPUT DATA?");
    EXPECT_FALSE(person.window().isVisible());
    EXPECT_TRUE(person.leftNothing());
}

// ---- what nobody can reach ----

TEST(Reach, WhatIsOffHiddenOrBehindAModalWindowIsRefused) {
    Person person;
    EXPECT_THROW(person.choose("mnuSolveItem_0"), std::runtime_error); // its menu is off
    EXPECT_THROW(person.choose("mnuSaveItem_1"), std::runtime_error);  // the submenu above it
    EXPECT_THROW(person.choose("mnuNothing"), std::runtime_error);
    EXPECT_THROW(person.push("cmdOK"), std::runtime_error); // hidden
    person.expectScreen("splash_form", [&](QDialog& about) {
        EXPECT_THROW(person.choose("mnuFileItem_0"), std::runtime_error);
        pushButton(about, "okbutton_0");
    });
    person.choose("mnuHelpItem_3");
    person.expectNothingLeft();
}

} // namespace
} // namespace korvane::test
