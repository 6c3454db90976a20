// The calculation sheet of the desktop: when it can be had, where it goes, what is told of it.
#include "runtime/file_text.h"
#include "scripted_desktop.h"
#include "sheet/sheet.h"
#include "support/faulty_machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <memory>

namespace korvane::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Clay behind and in front that no depth holds.
constexpr const char* ClayWithoutDepth = "'SOFT CLAY\n"
                                         "CONTROL CANTILEVER DESIGN 1.00 1.00\nWALL 20\n"
                                         "SURFACE RIGHTSIDE 1 0 20\nSURFACE LEFTSIDE 1 0 0\n"
                                         "SOIL BOTH STRENGTHS 1\n 120 120 0 300 0 0\nFINISHED\n";

struct SheetCommand : testing::Test, Office {
    bool isOn() const { return session->menus.sheet.enabled; }
    std::string save(const std::string& name) {
        desktop.boxes.clear();
        desktop.chosenFiles = {userFile(name)};
        saveSheet(*session, desktop);
        return std::filesystem::exists(userFile(name)) ? readFile(userFile(name)) : "";
    }
};

TEST_F(SheetCommand, IsOnFromASolutionToTheNextChange) {
    EXPECT_FALSE(isOn());
    open("anchored-sand");
    EXPECT_FALSE(isOn());
    solve();
    EXPECT_TRUE(isOn());
    enter(session->problem); // nothing has changed, and nothing is solved
    EXPECT_FALSE(isOn());
    solve();
    EXPECT_TRUE(isOn());
    newProblem(*session, desktop);
    EXPECT_FALSE(isOn());
}

TEST_F(SheetCommand, IsOnAfterASolutionThatWasDiscontinued) {
    open("anchored-sand");
    solveProblem(*session, desktop);
    discontinueSolution(*session);
    ASSERT_TRUE(isOn());
    const std::string html = save("review.html");
    EXPECT_THAT(html, HasSubstr("id=\"checks\""));
    EXPECT_THAT(html, Not(HasSubstr("class=\"fail\"")));
}

TEST_F(SheetCommand, IsOnAfterAFailureAndTellsIt) {
    open(write("clay.dat", ClayWithoutDepth));
    solve();
    ASSERT_NE(session->SolutionFailed, 0);
    ASSERT_TRUE(isOn());
    EXPECT_THAT(save("clay.html"), HasSubstr("The solution ended without results"));
}

TEST_F(SheetCommand, IsSavedWithItsDetailsAndNotesAndOpened) {
    open("anchored-all-loads");
    solve();
    const std::string html = save("all.html");
    EXPECT_TRUE(isSheetFile(html.substr(0, SheetHeadBytes)));
    EXPECT_THAT(html, HasSubstr("anchored-all-loads.dat"));
    EXPECT_THAT(html, HasSubstr("Rowe's moment reduction"));
    EXPECT_THAT(html, Not(HasSubstr("was not kept"))); // how the pressures came about
    ASSERT_FALSE(session->notes.list.empty());
    EXPECT_THAT(html, HasSubstr(std::string(session->notes.list.front().code)));
    EXPECT_EQ(desktop.opened, std::vector<std::string>{userFile("all.html")});
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_FALSE(desktop.busy);
    ASSERT_FALSE(desktop.dialogs.empty());
    EXPECT_EQ(desktop.dialogs.back().fileName, "anchored-all-loads.html");
    EXPECT_EQ(desktop.dialogs.back().kind, FileDialog::Kind::Save);
}

TEST_F(SheetCommand, TakesTheUnitsChosenWithItsNotes) {
    open("anchored-sand");
    solve();
    session->units = UnitSystem::SI;
    const std::string html = save("metric.html");
    EXPECT_THAT(html, HasSubstr("kN/m"));
    EXPECT_THAT(html, Not(HasSubstr(" PSF")));
    EXPECT_EQ(session->notes.units, UnitSystem::US); // the notes at hand stay those of the stop
}

TEST_F(SheetCommand, TellsOfAProblemThatIsNotSaved) {
    open("cantilever-dry-sand");
    Problem changed = session->problem;
    changed.WallTopElev += 1;
    enter(changed);
    solve();
    EXPECT_THAT(save("wall.html"), HasSubstr("cantilever-dry-sand.dat, changed and not saved"));
}

TEST_F(SheetCommand, ACancelledDialogDoesNothing) {
    open("cantilever-dry-sand");
    solve();
    desktop.boxes.clear();
    saveSheet(*session, desktop);
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_TRUE(desktop.opened.empty());
}

TEST_F(SheetCommand, AnotherKindOfFileIsRefusedAndAnotherNameAskedFor) {
    open("cantilever-dry-sand");
    solve();
    desktop.boxes.clear();
    desktop.chosenFiles = {userFile("wall.dat"), userFile("wall.htm")};
    saveSheet(*session, desktop);
    EXPECT_EQ(desktop.titles(), std::vector<std::string>{"UNKNOWN KIND OF FILE!"});
    EXPECT_FALSE(std::filesystem::exists(userFile("wall.dat")));
    EXPECT_TRUE(std::filesystem::exists(userFile("wall.htm")));
}

TEST_F(SheetCommand, AFileThatCannotBeWrittenIsToldAndNothingOpened) {
    open("cantilever-dry-sand");
    solve();
    EXPECT_EQ(save("missing/wall.html"), "");
    ASSERT_EQ(desktop.titles(), std::vector<std::string>{"FILE ERROR"});
    EXPECT_THAT(desktop.boxes[0].text, HasSubstr(userFile("missing/wall.html")));
    EXPECT_TRUE(desktop.opened.empty());
    EXPECT_TRUE(isOn());
    EXPECT_NE(save("wall.html"), "");
}

TEST_F(SheetCommand, AnOldSheetStaysWholeOnAFullDisk) {
    open("cantilever-dry-sand");
    solve();
    const std::string old = save("wall.html");
    desktop.opened.clear();
    session->units = UnitSystem::SI;
    {
        const SmallDisk full(16);
        EXPECT_EQ(save("wall.html"), old);
    }
    ASSERT_EQ(desktop.titles(), (std::vector<std::string>{"OVERWRITE?", "FILE ERROR"}));
    EXPECT_THAT(desktop.boxes[1].text, HasSubstr("Disk full"));
    EXPECT_TRUE(desktop.opened.empty());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(user.path()), {}), 1);
    EXPECT_NE(save("wall.html"), old);
}

TEST_F(SheetCommand, WithoutABrowserABoxTellsWhereItIs) {
    open("cantilever-dry-sand");
    solve();
    desktop.hasBrowser = false;
    EXPECT_NE(save("wall.html"), "");
    ASSERT_EQ(desktop.titles(), std::vector<std::string>{"CALCULATION SHEET"});
    EXPECT_EQ(desktop.boxes[0].text, "The calculation sheet is saved:\n" + userFile("wall.html") +
                                         "\n\nNo program could be started that shows it. Please "
                                         "open it in a browser.");
}

TEST_F(SheetCommand, ACheckThatFailsIsTold) {
    open("anchored-sand");
    solve();
    auto changed = std::make_unique<Results>(*session->notes.solved.results);
    changed->levels(1).anchorForce *= 1.001;
    session->notes.solved.results = changed.get();
    const std::string html = save("wall.html");
    EXPECT_THAT(html, HasSubstr("class=\"fail\""));
    ASSERT_EQ(desktop.titles(), std::vector<std::string>{"CALCULATION SHEET"});
    EXPECT_THAT(desktop.boxes[0].text, HasSubstr(" checks of the calculation sheet fail"));
    EXPECT_EQ(desktop.boxes[0].icon, Icon::Exclamation);
    EXPECT_EQ(desktop.opened.size(), 1U);
}

} // namespace
} // namespace korvane::test
