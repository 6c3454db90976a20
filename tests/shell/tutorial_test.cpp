// The first tutorial of the guide, step by step as it is told there.
#include "person.h"
#include "screenshots.h"

#include "runtime/file_text.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

/// One window of the tutorial: what is typed, its picture, and the button that leaves it.
void fill(QDialog& window, const std::vector<std::pair<const char*, const char*>>& fields,
          const char* picture, const char* leave) {
    for (const auto& [field, text] : fields) {
        typeInto(window, field, text);
    }
    if (picture != nullptr) {
        keepScreenshot(window, picture);
    }
    pushButton(window, leave);
}

void enterSections(Person& person) {
    const auto open = [&](const char* button) {
        person.expectScreen("KEYIN", [button](QDialog& list) { pushButton(list, button); });
    };
    person.expectScreen("KEYIN", [](QDialog& list) {
        keepScreenshot(list, "first-sections");
        pushButton(list, "cmdHeadCont");
    });
    person.expectScreen("HEADCONT", [](QDialog& window) {
        pushButton(window, "optCantilever");
        pushButton(window, "optDesign");
        fill(window,
             {{"txtHead_0", "First wall"},
              {"txtWallTop", "12"},
              {"txtFSA1", "1"},
              {"txtFSP1", "1.5"}},
             "first-control", "cmdFinished");
    });
    open("cmdSurface");
    person.expectScreen("SURFACE", [](QDialog& window) {
        fill(window,
             {{"txtRightDist_0", "0"},
              {"txtRightElev_0", "12"},
              {"txtLeftDist_0", "0"},
              {"txtLeftElev_0", "0"}},
             nullptr, "cmdFinished");
    });
    open("cmdLayerData");
    person.expectScreen("LAYRDATA", [](QDialog& window) {
        for (const char* side : {"cmdEnterRightside", "cmdEnterLeftside"}) {
            const bool right = side == std::string("cmdEnterRightside");
            pushButton(window, side);
            pushButton(window, "optStrengths");
            pushButton(window, "cmdOK");
            fill(window, {{"txtSATWt_0", "120"}, {"txtMSTWt_0", "110"}, {"txtIntFrict_0", "32"}},
                 right ? "first-layers" : nullptr, "cmdFinished");
        }
        pushButton(window, "cmdFinishedAction");
    });
    open("cmdFinished");
    person.choose("mnuEditItem_0");
    person.expectNothingLeft();
}

TEST(Tutorial, OfTheFirstWallEndsAsItSays) {
    Person person;
    enterSections(person);
    const std::string file = person.userFile("first-wall.dat");
    person.expectFile(file);
    person.choose("mnuSaveItem_0");

    person.choose("mnuSolveItem_0");
    ASSERT_TRUE(person.isShown("fraSoilOut"));
    keepScreenshot(person.window(), "first-review");
    person.push("cmdContinue");
    person.push("cmdOK");
    keepScreenshot(person.window(), "first-outcome");
    const auto* outcome = person.window().findChild<QLabel*>("lblSolution");
    for (const char* told : {"-13.84", "2.4491E+04"}) {
        EXPECT_TRUE(outcome->text().contains(told)) << outcome->text().toStdString();
    }
    person.expectScreen("CANPLOT", [](QDialog& window) {
        for (const auto& [entry, picture] :
             {std::pair{"mnuPresItem_0", "first-pressures"}, {"mnuMoment", "first-moment"}}) {
            chooseAction(window, entry);
            keepScreenshot(window, picture);
            pushButton(window, "cmdDone");
        }
        chooseAction(window, "mnuFinished");
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();

    // The file is that of the example, so that its sheet is the one that the tutorial speaks of.
    person.answer("SAVE OUTPUT DATA?", "No");
    person.open(file);
    const Problem typed = person.session().problem;
    person.open(examplePath("cantilever-dry-sand"));
    Problem example = person.session().problem;
    example.HeadingLines(1) = typed.HeadingLines(1);
    EXPECT_EQ(typed, example);
}

} // namespace
} // namespace korvane::test
