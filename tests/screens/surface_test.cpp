// SURFACE: counting, reading and boxes.
#include "looks.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

std::string invalid(const std::string& line) {
    return okCancel("INVALID DATA", line + "\n\nChoose OK to continue data entry."
                                           "\n\n     Choose OK to continue SURFACE"
                                           "\n          DATA entry."
                                           "\nChoose CANCEL to DELETE ALL SURFACE"
                                           "\n          DATA and exit.");
}

const std::string invalidRight = invalid("At least one RIGHT SIDE SURFACE DATA value is invalid.");
const std::string invalidLeft = invalid("At least one LEFT SIDE SURDACE DATA value is invalid.");

class SurfaceTest : public testing::Test {
  protected:
    Desk desk;

    void SetUp() override { desk.open(Screen::SURFACE); }
    void typeSide(const QString& side, const std::vector<std::string>& distances,
                  const std::vector<std::string>& elevations) {
        desk.typeDown("txt" + side + "Dist", distances);
        desk.typeDown("txt" + side + "Elev", elevations);
    }
    std::string finish() {
        desk.click("cmdFinished");
        return desk.lastBox();
    }
};

} // namespace

TEST_F(SurfaceTest, ABlankRightSideIsMissing) {
    EXPECT_EQ(desk.text("Panel3D1"), "Enter Surface Data");
    EXPECT_EQ(finish(),
              okCancel("DATA MISSING", "At least one SURFACE point is required for the right side."
                                       "\n\nChoose OK to continue SURFACE DATA entry."
                                       "\nChoose CANCEL to DELETE ALL SURFACE DATA"
                                       "\n     and exit."));
    EXPECT_TRUE(desk.isOpen());
}

TEST_F(SurfaceTest, ABlankLeftSideIsMissing) {
    typeSide("Right", {"0"}, {"10"});
    EXPECT_EQ(finish(),
              okCancel("DATA MISSING", "At least one SURFACE point is required for the left side."
                                       "\n\n     Choose OK to continue SURFACE DATA entry."
                                       "\nChoose CANCEL to DELETE ALL SURFACE DATA and exit."));
    EXPECT_EQ(desk.problem.SurfacePointCount(Right), 1);
    EXPECT_EQ(desk.problem.SurfaceElev(Right, 1), 10);
}

TEST_F(SurfaceTest, OnePointASideNeedsNoParticularDistance) {
    typeSide("Right", {"-3"}, {"10"});
    typeSide("Left", {"7.5"}, {"20"});
    EXPECT_EQ(finish(), noBox);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(desk.problem.SurfacePointCount(Right), 1);
    EXPECT_EQ(desk.problem.SurfaceDist(Right, 1), -3);
    EXPECT_EQ(desk.problem.SurfacePointCount(Left), 1);
    EXPECT_EQ(desk.problem.SurfaceDist(Left, 1), 7.5);
    EXPECT_EQ(desk.problem.SurfaceElev(Left, 1), 20);
    EXPECT_EQ(desk.session->DataChanged, 1);
}

TEST_F(SurfaceTest, EqualDistancesInARowAreInvalidAndKeepWhatWasReadBefore) {
    typeSide("Right", {"0", "5", "5"}, {"1", "2", "3"});
    EXPECT_EQ(finish(), invalidRight);
    EXPECT_TRUE(desk.isOpen());
    EXPECT_EQ(desk.problem.SurfacePointCount(Right), 3);
    EXPECT_EQ(desk.problem.SurfaceDist(Right, 2), 5);
    EXPECT_EQ(desk.problem.SurfaceElev(Right, 2), 2);
    EXPECT_EQ(desk.text("txtRightDist_2"), "5"); // nothing typed is lost
    typeSide("Right", {".", ".", "5.1"}, {});
    typeSide("Left", {"0", "-1"}, {"0", "0"});
    EXPECT_EQ(finish(), invalidLeft);
}

TEST_F(SurfaceTest, ABlankRowWithinASideFailsByEitherWayOfCounting) {
    typeSide("Right", {"0", ".", "5"}, {"1", "1", "1"});
    typeSide("Left", {"0", ".", "5"}, {"1", "1", "1"});
    EXPECT_EQ(finish(), invalidRight);
    EXPECT_EQ(desk.problem.SurfacePointCount(Right), 2); // filled rows
    typeSide("Right", {".", "2"}, {});
    EXPECT_EQ(finish(), invalidLeft);
    EXPECT_EQ(desk.problem.SurfacePointCount(Right), 3);
    EXPECT_EQ(desk.problem.SurfacePointCount(Left), 3); // the last filled row
}

TEST_F(SurfaceTest, AnElevationMustStandBesideItsDistance) {
    typeSide("Right", {"0", "5"}, {"1"});
    EXPECT_EQ(finish(), invalidRight);
}

TEST_F(SurfaceTest, ATextCountsAsTheNumberAtItsHead) {
    typeSide("Right", {"x", "12x"}, {"abc", "1.5E1FT"});
    typeSide("Left", {"0"}, {"-"});
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(desk.problem.SurfaceDist(Right, 1), 0);
    EXPECT_EQ(desk.problem.SurfaceDist(Right, 2), 12);
    EXPECT_EQ(desk.problem.SurfaceElev(Right, 1), 0);
    EXPECT_EQ(desk.problem.SurfaceElev(Right, 2), 15);
    EXPECT_EQ(desk.problem.SurfaceElev(Left, 1), 0);
}

TEST_F(SurfaceTest, ElevenRowsAreTheMost) {
    std::vector<std::string> rows;
    rows.reserve(11);
    for (int row = 0; row < 11; ++row) {
        rows.push_back(std::to_string(row));
    }
    typeSide("Right", rows, rows);
    typeSide("Left", rows, rows);
    EXPECT_THROW(desk.find("txtRightDist_11"), std::runtime_error);
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(desk.problem.SurfacePointCount(Right), 11);
    EXPECT_EQ(desk.problem.SurfacePointCount(Left), 11);
    EXPECT_EQ(desk.problem.SurfaceElev(Left, 11), 10);
}

TEST_F(SurfaceTest, WithoutPointsOnTheRightTheLeftSideIsShownEmptyToo) {
    desk.problem = plainCantilever();
    desk.reopen(Screen::SURFACE);
    EXPECT_EQ(desk.text("Panel3D1"), "Edit Surface Data");
    EXPECT_EQ(desk.text("txtLeftElev_0"), "-10");
    desk.problem.SurfacePointCount(Right) = 0;
    desk.reopen(Screen::SURFACE);
    EXPECT_EQ(desk.text("Panel3D1"), "Enter Surface Data");
    EXPECT_EQ(desk.text("txtLeftElev_0"), "");
}

TEST_F(SurfaceTest, CancelDropsBothSidesPoints) {
    desk.problem = plainCantilever();
    desk.reopen(Screen::SURFACE);
    desk.type("txtLeftElev_0", "");
    desk.answers = {Answer::Cancel};
    EXPECT_EQ(finish(), invalidLeft);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(desk.problem.SurfacePointCount(Right), 0);
    EXPECT_EQ(desk.problem.SurfacePointCount(Left), 0);
}

TEST_F(SurfaceTest, FocusGoesDownTheRightSideAndThenTheLeft) {
    const auto order = desk.tabOrder("txtRightDist_0");
    ASSERT_EQ(order.size(), 45U);
    EXPECT_EQ(order[1], "txtRightElev_0");
    EXPECT_EQ(order[2], "txtRightDist_1");
    EXPECT_EQ(order[22], "txtLeftDist_0");
    EXPECT_EQ(order[44], "cmdFinished");
}

} // namespace korvane::test
