// The plot windows: menus and states, every diagram on the screen, on paper and in files.
#include "person.h"
#include "pixels.h"
#include "screenshots.h"

#include "plots/plot_screen.h"
#include "plots/svg_surface.h"
#include "runtime/file_text.h"
#include "shell/plot_picture.h"

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QTableWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <ostream>
#include <set>

namespace korvane::test {
namespace {

/// Solves an example with the default sections.
void solveExample(Person& person, const char* name, bool sectionsShown) {
    person.open(examplePath(name));
    person.choose("mnuSolveItem_0");
    if (person.isShown("fraSoilOut")) {
        if (sectionsShown) {
            person.expectScreen("ROWEPILE", [](QDialog& screen) {
                pushButton(screen, "cmdDefAccept");
                pushButton(screen, "cmdDone");
            });
        }
        person.push("cmdContinue");
    }
    ASSERT_EQ(person.session().SolutionFailed, 0);
    person.push("cmdOK");
}

/// The enabled entries of a plot screen that open a diagram.
std::vector<QAction*> diagramsOf(QDialog& screen) {
    std::vector<QAction*> found;
    for (QAction* action : screen.findChildren<QAction*>()) {
        const QString name = action->objectName();
        const bool diagram = name.startsWith("mnu") && name != "mnuFinished" &&
                             !name.startsWith("mnuHelp") && action->menu() == nullptr;
        if (diagram && action->isEnabled()) {
            found.push_back(action);
        }
    }
    return found;
}

QWidget* pictureOnShow(QDialog& screen) {
    QWidget* shown = nullptr;
    for (int number = 1; number <= 10; ++number) {
        auto* picture = screen.findChild<QWidget*>(QString("Picture%1").arg(number));
        if (picture != nullptr && picture->isVisible()) {
            EXPECT_EQ(shown, nullptr) << "one picture at a time";
            shown = picture;
        }
    }
    return shown;
}

/// Number of colours: a blank picture has one.
std::size_t coloursOf(const QImage& image) {
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            colours.insert(image.pixel(x, y));
        }
    }
    return colours.size();
}

void expectMenuState(QDialog& screen) {
    for (const char* button : {"cmdDone", "cmdPrint", "cmdSave"}) {
        EXPECT_FALSE(screen.findChild<QWidget*>(button)->isVisible()) << button;
    }
    EXPECT_EQ(pictureOnShow(screen), nullptr);
    EXPECT_FALSE(screen.findChild<QWidget*>("Label1_0")->isVisible());
}

void expectShowing(QDialog& screen) {
    for (const char* button : {"cmdDone", "cmdPrint", "cmdSave"}) {
        EXPECT_TRUE(screen.findChild<QWidget*>(button)->isVisible()) << button;
    }
    EXPECT_TRUE(diagramsOf(screen).empty()) << "entries are disabled while a diagram is on show";
    EXPECT_FALSE(screen.findChild<QAction*>("mnuFinished")->isEnabled());
    EXPECT_TRUE(screen.findChild<QWidget*>("Label1_0")->isVisible());
}

/// What the diagram on show consists of.
std::vector<Primitive> recipeOf(Person& person, const QDialog& screen, const QWidget& picture,
                                Medium medium) {
    const auto all = plotScreens();
    const auto shown = std::find_if(all.begin(), all.end(), [&](const PlotScreen& candidate) {
        return screen.objectName() == candidate.objectName;
    });
    const PlotData data = person.session().plotData();
    PlotView view = openPlotScreen(data, shown->name);
    view.PlotNumber =
        picture.objectName().mid(static_cast<int>(std::string("Picture").size())).toInt();
    RecordingSurface surface;
    drawPlot(surface, data, view, medium);
    return surface.primitives();
}

/// Where something is drawn, in pixels.
QRect inkOf(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0)) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

/// Goes through all diagrams of a screen: shows each, prints it to a PDF, returns to the menu.
void printAll(Person& person, QDialog& screen) {
    for (QAction* diagram : diagramsOf(screen)) {
        const std::string name = diagram->objectName().toStdString();
        SCOPED_TRACE(name);
        diagram->trigger();
        expectShowing(screen);
        ASSERT_NE(pictureOnShow(screen), nullptr);
        QWidget& picture = *pictureOnShow(screen);
        keepScreenshot(screen, screen.objectName() + "-" + diagram->objectName());
        expectPainted(pixelsOf(picture), recipeOf(person, screen, picture, Medium::Screen));
        const std::string pdf =
            person.userFile(screen.objectName().toStdString() + "-" + name + ".pdf");
        person.expectFile(pdf);
        pushButton(screen, "cmdPrint");
        expectShowing(screen); // the diagram stays
        const Pixels page = pageOf(pdf);
        expectPainted(page, recipeOf(person, screen, picture, Medium::Paper));
        EXPECT_EQ(page.image.width(), 850); // Letter: 8.5 IN at 100 pixels an inch
        const QRect ink = inkOf(page.image);
        EXPECT_GT(ink.width(), 200);
        EXPECT_GT(ink.height(), 100);
        // The frame lies from (1, 3) to (7.75, 6.75) IN, heading lines above it; the top elevation
        // of a cantilever wall's deflections stands out to the left of it.
        EXPECT_GE(ink.left(), 0.5 * 100);
        EXPECT_LE(ink.right(), 7.75 * 100 + 6);
        EXPECT_LE(ink.bottom(), 6.75 * 100 + 6);
        pushButton(screen, "cmdDone");
        expectMenuState(screen);
    }
    chooseAction(screen, "mnuFinished");
}

struct PlotCase {
    const char* example;
    bool sectionsShown; ///< left soil of one kind in an anchored design
    const char* viewItem;
    const char* screen;
    std::size_t diagrams;
    const char* title;
};

/// Names the case in the list of tests.
void PrintTo(const PlotCase& one, std::ostream* out) {
    *out << one.example;
}

class Plots : public testing::TestWithParam<PlotCase> {};

TEST_P(Plots, EveryDiagramShowsAndPrints) {
    const PlotCase& plot = GetParam();
    Person person;
    solveExample(person, plot.example, plot.sectionsShown);
    person.expectScreen(plot.screen, [&](QDialog& screen) {
        EXPECT_EQ(screen.windowTitle().toStdString(), plot.title);
        EXPECT_EQ(diagramsOf(screen).size(), plot.diagrams);
        expectMenuState(screen);
        printAll(person, screen);
    });
    person.choose(plot.viewItem);
    person.expectNothingLeft();
}

std::string plotName(const testing::TestParamInfo<PlotCase>& parameter) {
    return std::string(parameter.param.screen) + std::to_string(parameter.index);
}

INSTANTIATE_TEST_SUITE_P(
    Windows, Plots,
    testing::Values(
        PlotCase{"cantilever-water-seepage", false, "mnuViewItem_3", "CANPLOT", 7,
                 "CANTILEVER WALL RESULTS"},
        PlotCase{"cantilever-dry-sand", false, "mnuViewItem_3", "CANPLOT", 6, // no water
                 "CANTILEVER WALL RESULTS"},
        PlotCase{"anchored-layered-water", false, "mnuViewItem_4", "FREEPLOT", 7,
                 "ANCHORED WALL RESULTS BY FREE EARTH METHOD"},
        PlotCase{"anchored-layered-water", false, "mnuViewItem_5", "FIXDPLOT", 7,
                 "ANCHORED WALL RESULTS BY FIXED EARTH METHOD"},
        PlotCase{"analysis-anchored", true, "mnuViewItem_4", "FREEPLOT", 7,
                 "ANCHORED WALL RESULTS BY FREE EARTH METHOD"},
        PlotCase{"anchored-all-loads", true, "mnuViewItem_2", "VUINPLOT", 9, "INPUT DATA"},
        PlotCase{"cantilever-dry-sand", false, "mnuViewItem_2", "VUINPLOT", 1, "INPUT DATA"}),
    plotName);

TEST(InitialPlots, EveryDiagramShowsAndPrintsFromTheReview) {
    Person person;
    person.open(examplePath("cantilever-water-seepage"));
    person.choose("mnuSolveItem_0");
    person.expectScreen("VUSOLPLT", [&](QDialog& screen) {
        EXPECT_EQ(diagramsOf(screen).size(), 4U);
        printAll(person, screen);
    });
    person.push("cmdPlotPres");
    person.expectNothingLeft();
}

TEST(InputPlots, WaterPressuresGivenByElevationShowAndPrint) {
    Person person;
    const std::string input = person.userFile("pressures.dat");
    writeFile(input, "'WALL WITH GIVEN WATER PRESSURES, A HEADING OF SOME LENGTH\n"
                     "CONTROL C D 1 1\nWALL 0\nSURFACE R 1 0 0\nSURFACE L 1 0 -10\n"
                     "SOIL B S 1\n 120 120 30 0 0 0\n"
                     "WATER PRESSURES 3 -2 0 -10 400\n -30 0\nFINISHED\n");
    person.open(input);
    person.expectScreen("VUINPLOT", [&](QDialog& screen) {
        EXPECT_EQ(diagramsOf(screen).size(), 2U);
        printAll(person, screen);
    });
    person.choose("mnuViewItem_2");
    person.expectNothingLeft();
}

TEST(RoweCurves, ShowsItsDiagramAtOnceAndDoneClosesIt) {
    Person person;
    solveExample(person, "anchored-sand", true);
    person.expectScreen("ROWECURV", [&](QDialog& screen) {
        EXPECT_EQ(screen.windowTitle(), "ROWE'S MOMENT REDUCTION FOR PILES IN SAND");
        ASSERT_NE(pictureOnShow(screen), nullptr);
        QWidget& picture = *pictureOnShow(screen);
        keepScreenshot(screen, "ROWECURV-curves");
        expectPainted(pixelsOf(picture), recipeOf(person, screen, picture, Medium::Screen));
        const std::string pdf = person.userFile("rowe.pdf");
        person.expectFile(pdf);
        pushButton(screen, "cmdPrint");
        expectPainted(pageOf(pdf), recipeOf(person, screen, picture, Medium::Paper));
        pushButton(screen, "cmdDone");
        EXPECT_FALSE(screen.isVisible());
    });
    person.choose("mnuViewItem_6");
    person.expectNothingLeft();
}

QLabel* labelOf(QDialog& screen, const char* name) {
    return screen.findChild<QLabel*>(name);
}

/// Gives a section the modulus for LOG(H^4/EI) -2 and the stress for M/Mo 1.
void bringIntoPicture(Session& session, int p) {
    const MomentReduction& rowe = session.workspace.reduction();
    session.sections.PileModulus(p) *= std::pow(10, rowe.PileLogRigidity(p) + 2);
    session.sections.PileAllowStress(p) /= rowe.PileMomentRatio(p);
    reduceWallMoments(session.workspace, session.sections);
    ASSERT_NEAR(rowe.PileLogRigidity(p), -2, 1e-6);
    ASSERT_NEAR(rowe.PileMomentRatio(p), 1, 1e-6);
}

TEST(RoweCurves, ATableBelowThePictureTellsOfAllSections) {
    Person person;
    solveExample(person, "anchored-sand", true);
    bringIntoPicture(person.session(), 2);
    person.expectScreen("ROWECURV", [&](QDialog& screen) {
        const PileSections& sections = person.session().sections;
        const MomentReduction& rowe = person.session().workspace.reduction();
        const auto* table = screen.findChild<QTableWidget*>("tblSections");
        ASSERT_EQ(table->rowCount(), sections.PileSectionCount);
        EXPECT_GE(table->mapTo(&screen, QPoint()).y(),
                  pictureOnShow(screen)->mapTo(&screen, QPoint()).y() +
                      pictureOnShow(screen)->height());
        int leftOut = 0;
        for (int row = 0; row < table->rowCount(); ++row) {
            EXPECT_EQ(table->item(row, 0)->text().toStdString(), sections.PileName(row + 1));
            const double x = rowe.PileLogRigidity(row + 1);
            const double ratio = rowe.PileMomentRatio(row + 1);
            const bool shown = x > -3.5 && x <= -1.5 && ratio <= 1.2;
            EXPECT_EQ(table->item(row, 3)->text() == "yes", shown) << row;
            EXPECT_EQ(table->item(row, 3)->text().startsWith("left out: "), !shown) << row;
            leftOut += shown ? 0 : 1;
        }
        EXPECT_GT(leftOut, 0);
        EXPECT_LT(leftOut, table->rowCount());
        pushButton(screen, "cmdDone");
    });
    person.choose("mnuViewItem_6");
    person.expectNothingLeft();
}

TEST(PlotMenu, ALineInTheEmptyAreaTellsWhatToChoose) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        QLabel* line = labelOf(screen, "lblChoice");
        EXPECT_TRUE(line->isVisible());
        EXPECT_EQ(line->text(), "Choose a diagram from the menu above: Deflections, Moment "
                                "Diagram, Shear Diagram, Design Pressures.");
        keepScreenshot(screen, "CANPLOT-menu");
        chooseAction(screen, "mnuMoment");
        EXPECT_FALSE(line->isVisible());
        pushButton(screen, "cmdDone");
        EXPECT_TRUE(line->isVisible());
        EXPECT_FALSE(labelOf(screen, "lblExtremes")->isVisible());
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectScreen("VUINPLOT", [&](QDialog& screen) {
        EXPECT_EQ(labelOf(screen, "lblChoice")->text(),
                  "Choose a diagram from the menu above: System.");
        chooseAction(screen, "mnuSystem");
        EXPECT_FALSE(labelOf(screen, "lblExtremes")->isVisible()); // a sketch has no values
        pushButton(screen, "cmdDone");
        screen.close();
    });
    person.choose("mnuViewItem_2");
    person.expectNothingLeft();
}

TEST(PlotBand, TellsExtremesAndTheValuesAtThePointer) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    const double top = person.session().problem.WallTopElev;
    const double bottom = person.session().workspace.results().levels(1).bottomElev;
    const double elevation = (top + bottom) / 2;
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        chooseAction(screen, "mnuMoment");
        EXPECT_TRUE(labelOf(screen, "lblExtremes")->text().startsWith("Largest "));
        EXPECT_TRUE(labelOf(screen, "lblExtremes")->text().contains(" LB-FT/FT at elevation "));
        const QString hint = "Point at the diagram for its values.";
        EXPECT_EQ(labelOf(screen, "lblPointed")->text(), hint);
        auto& picture = dynamic_cast<PlotPicture&>(*pictureOnShow(screen));
        const QPointF middle = picture.mapping().map(QPointF(5040, 1008 + 4320 / 2.0));
        QMouseEvent move(QEvent::MouseMove, middle, picture.mapToGlobal(middle), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&picture, &move);
        const QString told = labelOf(screen, "lblPointed")->text();
        EXPECT_EQ(told.section(' ', 0, 1), "At elevation");
        EXPECT_NEAR(told.section(' ', 2, 2).toDouble(), elevation, 0.006);
        EXPECT_TRUE(told.endsWith(" LB-FT/FT"));
        keepScreenshot(screen, "CANPLOT-pointed");
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&picture, &leave);
        EXPECT_EQ(labelOf(screen, "lblPointed")->text(), hint);
        screen.close();
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
}

TEST(PlotBand, TellsTheUnitsOfTheMenu) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    person.choose("mnuUnitsItem_1");
    const auto& largest = person.session().workspace.results().levels(1).diagrams.MaxMoment;
    // 1 LB-FT/FT is 4.4482216152605 Nm/m, 1 FT is 0.3048 m.
    const double moment = largest.value * 4.4482216152605 / 1000;
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        chooseAction(screen, "mnuMoment");
        keepScreenshot(screen, "CANPLOT-SI");
        const QString told = labelOf(screen, "lblExtremes")->text();
        EXPECT_TRUE(told.contains(" kNm/m at elevation ")) << told.toStdString();
        EXPECT_TRUE(told.endsWith(" m")) << told.toStdString();
        EXPECT_NEAR(told.section(' ', 1, 1).toDouble(), moment, 0.01 * moment);
        EXPECT_NEAR(told.section(' ', 5, 5).toDouble(), largest.elev * 0.3048, 0.2);
        screen.close();
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
}

TEST(PlotBand, StandsBelowThePictureWithoutCoveringIt) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        for (const QSize size : {QSize(800, 600), QSize(500, 340)}) {
            screen.resize(size);
            chooseAction(screen, "mnuPresItem_1"); // two lines of extremes
            QTest::qWait(50);
            const QWidget* above = pictureOnShow(screen);
            for (const char* name : {"lblExtremes", "lblPointed", "cmdDone"}) {
                auto* below = screen.findChild<QWidget*>(name);
                EXPECT_GE(below->mapTo(&screen, QPoint()).y(),
                          above->mapTo(&screen, QPoint(0, above->height())).y())
                    << name << " at " << size.width();
                EXPECT_GE(below->height(), below->heightForWidth(below->width()));
                above = below;
            }
            keepScreenshot(screen, QString("CANPLOT-%1").arg(size.width()));
            pushButton(screen, "cmdDone");
        }
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
}

TEST(PlotPictures, ShowAllOfTheDrawing) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        chooseAction(screen, "mnuDefl"); // the top elevation stands far out to the left
        QWidget& picture = *pictureOnShow(screen);
        const QTransform mapping = dynamic_cast<PlotPicture&>(picture).mapping();
        const SvgSurface metrics; // of the same letters
        const QRectF room(picture.rect());
        for (const Primitive& part : recipeOf(person, screen, picture, Medium::Screen)) {
            if (part.kind == Primitive::Kind::Text && part.text == "20.00") {
                const QRectF ink(part.a.x, part.a.y, metrics.textWidth(part.text),
                                 metrics.textHeight());
                EXPECT_TRUE(room.adjusted(-0.5, -0.5, 0.5, 0.5).contains(mapping.mapRect(ink)));
            }
            EXPECT_TRUE(
                room.adjusted(-1, -1, 1, 1).contains(mapping.map(QPointF(part.a.x, part.a.y))))
                << part.text;
        }
        EXPECT_EQ(mapping.m11(), mapping.m22()) << "one factor";
        screen.close();
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
}

TEST(PlotFrame, TheCrossIsDoneWhileADiagramShowsAndFinishedOtherwise) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        chooseAction(screen, "mnuMoment");
        screen.close();
        EXPECT_TRUE(screen.isVisible());
        expectMenuState(screen);
        QTest::keyClick(&screen, Qt::Key_Escape);
        EXPECT_TRUE(screen.isVisible());
        screen.close();
        EXPECT_FALSE(screen.isVisible());
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
}

TEST(PlotKeys, AltDReachesDoneThoughAMenuHasTheSameLetter) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        chooseAction(screen, "mnuMoment");
        EXPECT_TRUE(takesKeys(screen));
        QTest::keyClick(&screen, Qt::Key_D, Qt::AltModifier);
        auto* done = screen.findChild<QPushButton*>("cmdDone");
        EXPECT_TRUE(QTest::qWaitFor([done] { return !done->isVisible(); }, 1000));
        expectMenuState(screen);
        EXPECT_EQ(screen.findChild<QAction*>("mnuDefl")->text(), "&Deflections");
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
}

TEST(Figures, AreSavedByTheFiltersOrTheNamesExtension) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        chooseAction(screen, "mnuMoment");
        for (const char* name : {"moment", "moment.svg", "moment.pdf"}) {
            person.expectFile(person.userFile(name), [](QFileDialog& dialog) {
                // The first filter is PNG; the name is made of the problem's.
                EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(),
                          "cantilever-dry-sand-moment");
            });
            pushButton(screen, "cmdSave");
        }
        expectShowing(screen);
        screen.close();
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
    const QImage png(QString::fromStdString(person.userFile("moment.png")));
    EXPECT_GE(coloursOf(png), 3U);
    // At 200 pixels an inch: from the heading at y 3744 twips to the frame's foot at 9720, across
    // the frame's width of 9720, with 30 twips of line and room around (15 above the heading).
    EXPECT_NEAR(png.width(), (9720 + 60) * 200 / 1440.0, 1);
    EXPECT_NEAR(png.height(), (9720 + 30 - 3744 + 15) * 200 / 1440.0, 1);
    EXPECT_EQ(png.text("Title"), "BENDING MOMENT (LB-FT) FOR CANTILEVER WALL DESIGN");
    EXPECT_TRUE(png.text("Description").contains("CANTILEVER WALL IN DRY SAND"));
    EXPECT_NE(readFile(person.userFile("moment.svg")).find("BENDING MOMENT (LB-FT)"),
              std::string::npos);
    const std::string pdf = readFile(person.userFile("moment.pdf"));
    EXPECT_EQ(pdf.rfind("%PDF", 0), 0U);
    const auto told = [&](const std::string& element) {
        const std::size_t begin = pdf.find("<dc:" + element + ">");
        const std::size_t end = pdf.find("</dc:" + element + ">");
        return begin < end && end < pdf.size() ? pdf.substr(begin, end - begin) : std::string();
    };
    EXPECT_NE(told("title").find("BENDING MOMENT (LB-FT) FOR CANTILEVER"), std::string::npos);
    EXPECT_NE(told("description").find("CANTILEVER WALL IN DRY SAND"), std::string::npos);
}

TEST(Figures, ASuffixThatIsNoPictureIsTold) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        chooseAction(screen, "mnuMoment");
        person.expectFile(person.userFile("moment.jpg"));
        person.expectBox("OK");
        person.expectFile(person.userFile("station 12.5")); // no suffix of any kind of file
        pushButton(screen, "cmdSave");
        screen.close();
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "UNKNOWN KIND OF FILE!");
    EXPECT_EQ(person.boxes.back().text, "File: " + person.userFile("moment.jpg") +
                                            "\nThe name must end in .PNG, .SVG, .PDF."
                                            "\nPlease choose another file name.");
    EXPECT_FALSE(std::filesystem::exists(person.userFile("moment.jpg")));
    EXPECT_FALSE(QImage(QString::fromStdString(person.userFile("station 12.5.png"))).isNull());
}

TEST(Figures, AFullDiskTellsAndTheDiagramStays) {
    Person person;
    solveExample(person, "cantilever-dry-sand", false);
    const std::string fullDisk = person.userFile("moment.png");
    std::filesystem::create_symlink("/dev/full", fullDisk);
    person.expectScreen("CANPLOT", [&](QDialog& screen) {
        chooseAction(screen, "mnuMoment");
        person.expectFile(fullDisk);
        person.expectBox("Yes");
        person.expectBox("OK");
        pushButton(screen, "cmdSave");
        expectShowing(screen);
        screen.close();
        screen.close();
    });
    person.choose("mnuViewItem_3");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
}

} // namespace
} // namespace korvane::test
