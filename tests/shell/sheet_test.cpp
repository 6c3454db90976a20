// Tools, Calculation Sheet: the file that a person chooses, and the browser.
#include "person.h"

#include "runtime/file_text.h"

#include <QLineEdit>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace korvane::test {
namespace {

/// A person with a solved wall, whose browser only notes what it is to show.
struct Reader {
    explicit Reader(const std::string& name) {
        person.program->desktop.openUrl = [this](const QUrl& url) {
            opened.push_back(bytesOf(url));
            return hasBrowser;
        };
        person.open(examplePath(name));
        EXPECT_FALSE(person.canChoose("mnuToolsItem_3"));
        person.choose("mnuSolveItem_0");
        EXPECT_FALSE(person.canChoose("mnuToolsItem_3"));
        person.push("cmdContinue");
        person.push("cmdOK");
    }
    static std::string bytesOf(const QUrl& url) { return url.toLocalFile().toStdString(); }

    Person person;
    std::vector<std::string> opened;
    bool hasBrowser = true;
};

TEST(SheetEntry, SavesTheSheetAndOpensIt) {
    Reader reader("cantilever-dry-sand");
    Person& person = reader.person;
    person.expectFile(person.userFile("sheet"), [](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "SAVE CALCULATION SHEET");
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "cantilever-dry-sand.html");
    });
    person.choose("mnuToolsItem_3");
    person.expectNothingLeft();
    const std::string file = person.userFile("sheet.html");
    EXPECT_EQ(reader.opened, std::vector<std::string>{file});
    EXPECT_THAT(readFile(file), testing::HasSubstr("cantilever-dry-sand.dat"));
    EXPECT_THAT(readFile(file), testing::Not(testing::HasSubstr("class=\"fail\"")));
}

TEST(SheetEntry, AsksBeforeItWritesOverAFile) {
    Reader reader("cantilever-dry-sand");
    Person& person = reader.person;
    const std::string file = person.userFile("sheet.html");
    writeFile(file, "mine");
    person.expectFile(file);
    person.expectBox("No");
    person.expectFile("");
    person.choose("mnuToolsItem_3");
    person.expectNothingLeft();
    EXPECT_EQ(readFile(file), "mine");
    EXPECT_TRUE(reader.opened.empty());
}

TEST(SheetEntry, TellsWhyNoSheetIsSaved) {
    Reader reader("cantilever-dry-sand");
    Person& person = reader.person;
    person.expectFile(person.userFile("missing/sheet.html"));
    person.expectBox("OK");
    person.choose("mnuToolsItem_3");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
    EXPECT_FALSE(person.boxes.back().busy);
    EXPECT_TRUE(reader.opened.empty());
    EXPECT_TRUE(person.canChoose("mnuToolsItem_3"));
}

TEST(SheetEntry, TellsWhereTheSheetIsWithoutABrowser) {
    Reader reader("cantilever-dry-sand");
    Person& person = reader.person;
    reader.hasBrowser = false;
    person.expectFile(person.userFile("sheet.html"));
    person.expectBox("OK");
    person.choose("mnuToolsItem_3");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "CALCULATION SHEET");
    EXPECT_THAT(person.boxes.back().text, testing::HasSubstr(person.userFile("sheet.html")));
}

} // namespace
} // namespace korvane::test
