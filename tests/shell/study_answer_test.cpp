// The page of a study's answer in windows of several heights.
#include "screenshots.h"

#include "shell/study_answer.h"
#include "support/support.h"
#include "widgets/geometry.h"

#include <QHeaderView>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::test {
namespace {

/// A study of the plain wall in which each variable moves the depth a little more than the last.
struct Answered {
    study::Question question;
    study::StudyRows rows;
};

Answered answered(int variables, study::Asking asking) {
    Answered made;
    made.question = {.asking = asking, .variables = {}, .outputs = {"penetration"}};
    const ProblemField fields[] = {ProblemField::SoilMoistWeight, ProblemField::SoilFriction,
                                   ProblemField::SoilCohesion, ProblemField::SoilWallFriction,
                                   ProblemField::SurfaceElev};
    for (int n = 0; n < variables; ++n) {
        made.question.variables.push_back(
            {.address = {fields[n], Right, 1}, .low = 10, .high = 20, .steps = 2});
    }
    made.rows.columns = study::columnsOf("penetration", plainCantilever());
    const auto count = static_cast<int>(study::variantsOf(made.question));
    for (int id = 0; id < count; ++id) {
        made.rows.rows.push_back(
            {.numbers = {}, .outputs = {10.0 + id}, .outcome = "solved", .reason = {}});
    }
    return made;
}

/// All of the figure can be come to, with bars where there is no room for it.
bool isInReach(const QScrollArea& picture) {
    const QSize figure = picture.widget()->minimumSize();
    const QSize room = picture.viewport()->size();
    const auto reaches = [](const QScrollBar& bar, int has, int needs) {
        return has >= needs || (bar.isVisible() && bar.maximum() + has >= needs);
    };
    return !figure.isEmpty() &&
           reaches(*picture.verticalScrollBar(), room.height(), figure.height()) &&
           reaches(*picture.horizontalScrollBar(), room.width(), figure.width());
}

} // namespace

TEST(StudyAnswer, ShowsAllOfItsFigureInAnyWindow) {
    for (const auto asking : {study::Asking::OneAtATime, study::Asking::Grid}) {
        for (const int height : {240, 400, 900}) {
            for (const int width : {300, 900}) {
                QTabWidget pages;
                auto* answer = new StudyAnswer;
                pages.addTab(new QWidget, "first");
                pages.addTab(answer, "answer");
                pages.resize(width, height);
                pages.show();
                ASSERT_TRUE(QTest::qWaitForWindowExposed(&pages));
                const Answered made = answered(4, asking);
                answer->showAnswer(made.question, made.rows);
                pages.setCurrentIndex(1);
                const auto* picture = answer->findChild<QScrollArea*>("picAnswer");
                EXPECT_TRUE(QTest::qWaitFor([picture] { return isInReach(*picture); }))
                    << width << " x " << height << ", figure " << picture->widget()->minimumHeight()
                    << " in " << picture->viewport()->height();
                keepScreenshot(pages, QString("answer %1 %2 %3")
                                          .arg(width)
                                          .arg(height)
                                          .arg(asking == study::Asking::Grid));
            }
        }
    }
}

TEST(StudyAnswer, GivesTheTableWhatItNeedsAndTheFigureTheRest) {
    QTabWidget pages;
    auto* answer = new StudyAnswer;
    pages.addTab(new QWidget, "first");
    pages.addTab(answer, "answer");
    pages.resize(900, 700);
    pages.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&pages));
    const auto* table = answer->findChild<QTableWidget*>("tblAnswer");
    const auto* picture = answer->findChild<QScrollArea*>("picAnswer");
    int before = 0;
    for (const int variables : {1, 4}) {
        const Answered made = answered(variables, study::Asking::OneAtATime);
        answer->showAnswer(made.question, made.rows);
        pages.setCurrentIndex(1);
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return table->viewport()->height() >= table->verticalHeader()->length();
        })) << variables;
        EXPECT_GT(table->height(), before);
        EXPECT_LE(table->height(), pixels(2100));
        EXPECT_GT(picture->height(), pixels(3000));
        before = table->height();
    }
}

} // namespace korvane::test
