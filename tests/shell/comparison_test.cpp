// The window of the comparison, worked as a person does.
#include "person.h"
#include "screenshots.h"

#include "comparison/comparison_table.h"
#include "runtime/file_text.h"
#include "shell/comparison_window.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QProgressBar>
#include <QTableWidget>

#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace korvane::test {
namespace {

QTableWidget& tableOf(QDialog& window) {
    return *window.findChild<QTableWidget*>("tblRows");
}

/// Does something in the midst of the work, each time that rows are done.
class AtWork : public QObject {
  public:
    explicit AtWork(std::function<void(QDialog&, int done)> act) : act_(std::move(act)) {
        qApp->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* window = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Show && window != nullptr &&
            window->objectName() == "COMPARE") {
            QObject::connect(window->findChild<QProgressBar*>("barRows"),
                             &QProgressBar::valueChanged, window,
                             [this, window](int done) { act_(*window, done); });
        }
        return false;
    }

  private:
    std::function<void(QDialog&, int)> act_;
};

/// Does something at the window once its rows are worked out.
void atRows(Person& person, const std::function<void(QDialog&)>& act) {
    person.expectScreen("COMPARE", [&person, act](QDialog& window) {
        if (tableOf(window).rowCount() == 0) {
            atRows(person, act);
        } else {
            act(window);
        }
    });
}

QString stateOf(QDialog& window) {
    return window.findChild<QLabel*>("lblState")->text();
}

/// The text of a cell, of the line whose first cell has the title.
QString cellOf(QDialog& window, const QString& title, int column) {
    const QTableWidget& table = tableOf(window);
    for (int row = 0; row < table.rowCount(); ++row) {
        if (table.item(row, 0)->text() == title) {
            return table.item(row, column)->text();
        }
    }
    return "no such row";
}

} // namespace

TEST(ComparisonWindow, ShowsTheTableOfTheProblemAndItsReasons) {
    Person person;
    EXPECT_FALSE(person.canChoose("mnuToolsItem_2"));
    person.open(examplePath("anchored-sand"));
    ASSERT_TRUE(person.canChoose("mnuToolsItem_2")); // without a solution
    Workspace workspace;
    Options options;
    options.wedge = WedgeMethod::Sweep;
    const Problem& problem = person.session().problem;
    const Comparison comparison = compareWall({.problem = problem, .options = options}, workspace);
    const ComparisonTable expected = comparisonTable(comparison, Mode::Design, UnitSystem::US);
    atRows(person, [&](QDialog& window) {
        const QTableWidget& table = tableOf(window);
        ASSERT_EQ(table.rowCount(), static_cast<int>(expected.lines.size()));
        ASSERT_EQ(table.columnCount(), static_cast<int>(expected.columns.size()));
        EXPECT_EQ(table.horizontalHeaderItem(2)->text(), "Penetration\nFT");
        EXPECT_EQ(cellOf(window, "as given", 1), "free earth");
        for (int column = 0; column < table.columnCount(); ++column) {
            EXPECT_EQ(table.item(0, column)->text().toStdString(),
                      expected.lines[0].cells[static_cast<std::size_t>(column)]);
        }
        EXPECT_EQ(cellOf(window, "factors 1, active and rear water 1.35", 1),
                  "Ka of the retained side is not given");
        EXPECT_FALSE(window.findChild<QProgressBar*>("barRows")->isVisible());
        EXPECT_EQ(stateOf(window), "Percentages are differences to the wall as given; wedges by "
                                   "the sweep search.");
        keepScreenshot(window, "COMPARE rows");
        chooseAction(window, "mnuCopy");
        EXPECT_EQ(QApplication::clipboard()->text().toStdString(), comparisonCells(expected));
        tableOf(window).setRangeSelected({0, 0, 1, 1}, true);
        QTest::keyClick(&tableOf(window), Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), "as given\tfree earth\n\tfixed earth\n");
        chooseAction(window, "mnuFinished");
    });
    person.choose("mnuToolsItem_2");
    person.expectNothingLeft();
}

TEST(ComparisonWindow, TakesTheUnitsOfTheMenu) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuUnitsItem_1");
    atRows(person, [&](QDialog& window) {
        EXPECT_EQ(tableOf(window).horizontalHeaderItem(2)->text(), "Penetration\nm");
        window.close();
    });
    person.choose("mnuToolsItem_2");
    person.expectNothingLeft();
}

TEST(ComparisonWindow, KeepsToTheProblemThatItCompares) {
    Person person;
    person.open(examplePath("anchored-sand"));
    const AtWork edits([&person](QDialog&, int done) {
        if (done == 3) { // from then on deflections would be told as those of an analysis
            person.session().problem.ProgramMode = Mode::Analysis;
            person.session().wedge = WedgeMethod::FixedSurface;
        }
    });
    atRows(person, [&](QDialog& window) {
        const QTableWidget& table = tableOf(window);
        QStringList headings;
        for (int column = 0; column < table.columnCount(); ++column) {
            headings += table.horizontalHeaderItem(column)->text();
        }
        EXPECT_TRUE(headings.contains("Max. deflection\nLB-IN3/FT"))
            << headings.join(';').toStdString();
        EXPECT_THAT(stateOf(window).toStdString(), testing::EndsWith("by the sweep search."));
        chooseAction(window, "mnuFinished");
    });
    person.choose("mnuToolsItem_2");
    person.expectNothingLeft();
}

TEST(ComparisonWindow, SearchesAsFarAsThePersonHasGoneOn) {
    // Under full active pressure its passive factor lies between 25 and 30.
    std::string text = readInputFile(examplePath("analysis-cantilever"));
    const auto put = [&text](std::string_view old, std::string_view now) {
        ASSERT_NE(text.find(old), std::string::npos);
        text.replace(text.find(old), old.size(), now);
    };
    put("CANTILEVER  ANALYSIS\n", "CANTILEVER  ANALYSIS 1\n");
    put("10  -18 ", "10  -20.8 ");
    Person person;
    saveFile(person.userFile("wall.dat"), text);
    person.open(person.userFile("wall.dat"));
    const auto expectGiven = [&](bool solved) {
        atRows(person, [solved](QDialog& window) {
            const QString cell = cellOf(window, "as given", 1);
            EXPECT_EQ(cell == "cantilever", solved) << cell.toStdString();
            chooseAction(window, "mnuFinished");
        });
        person.choose("mnuToolsItem_2");
    };
    expectGiven(false); // up to 20 unless told otherwise
    person.answer("LARGE FACTOR OF SAFETY", "Yes");
    person.choose("mnuSolveItem_0");
    person.push("cmdOK");
    expectGiven(true);
    person.expectNothingLeft();
}

TEST(ComparisonWindow, EndsWhereItIsCancelledAndShowsWhatThereIs) {
    Person person;
    person.open(examplePath("anchored-sand"));
    const AtWork cancels([](QDialog& window, int done) {
        if (done == 3) {
            pushButton(window, "cmdCancel");
        }
    });
    atRows(person, [&](QDialog& window) {
        EXPECT_THAT(stateOf(window).toStdString(), testing::StartsWith("Cancelled after 3 rows. "));
        EXPECT_EQ(cellOf(window, "passive factor 1.25", 1), "free earth");
        EXPECT_EQ(cellOf(window, "passive factor 1.5", 1), "no such row");
        chooseAction(window, "mnuFinished");
    });
    person.choose("mnuToolsItem_2");
    person.expectNothingLeft();
}

TEST(ComparisonWindow, ClosesInTheMidstOfItsWork) {
    Person person;
    person.open(examplePath("anchored-sand"));
    int last = 0;
    const AtWork closes([&last](QDialog& window, int done) {
        last = done;
        if (done == 2) {
            window.close();
        }
    });
    person.choose("mnuToolsItem_2");
    EXPECT_EQ(last, 2);
    person.expectNothingLeft();
}

} // namespace korvane::test
