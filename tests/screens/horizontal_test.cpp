// HORCON and HORLOAD: line loads and the distributed load on the wall.
#include "looks.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

const std::string lineChoices = "\n\nChoose OK to continue HORIZONTAL LINE LOAD"
                                "\n     DATA entry."
                                "\nChoose CANCEL to delete all HORIZONTAL LINE"
                                "\n     LOAD DATA and exit.";
const std::string lineMissing =
    okCancel("DATA MISSING", "At least one required data value is missing." + lineChoices);
const std::string lineInvalid =
    okCancel("INVALID DATA", "At least one data value is invalid." + lineChoices);
const std::string distributedChoices = "\n\n     Choose OK to continue HORIZONTAL"
                                       "\n          DISTRIBUTED LOAD DATA entry."
                                       "\nChoose CANCEL to delete ALL HORIZONTAL"
                                       "\n          DISTRIBUTED LOAD DATA and exit.";
const std::string distributedMissing =
    okCancel("DATA MISSING", "At least one required data values i missing." + distributedChoices);
const std::string distributedInvalid =
    okCancel("INVALID DATA ITEM", "At least one data value is invalid." + distributedChoices);

class HorizontalTest : public testing::Test {
  protected:
    Desk desk;
    Problem& problem = desk.problem;

    void openLines() { desk.reopen(Screen::HORLOAD, Load::HorizontalLine); }
    void openDistributed() { desk.reopen(Screen::HORLOAD, Load::Distributed); }
    std::string finishLines() {
        desk.click("cmdFinHorLine");
        return desk.lastBox();
    }
    std::string finishDistributed() {
        desk.click("cmdFinHorDist");
        return desk.lastBox();
    }
};

} // namespace

TEST_F(HorizontalTest, TheListHighlightsTheSectionsWithData) {
    problem.HDistCount = 2;
    desk.open(Screen::HORCON);
    EXPECT_EQ(desk.top().windowTitle(), "HORIZONTAL LOADS");
    EXPECT_FALSE(desk.isHighlighted("panHorizLine"));
    EXPECT_TRUE(desk.isHighlighted("panHorizDist"));
    desk.onShow = [&](Screen screen) {
        EXPECT_EQ(screen, Screen::HORLOAD);
        problem.HLineCount = 1;
        problem.HDistCount = 0;
    };
    desk.click("cmdHorizLine");
    EXPECT_EQ(desk.session->LoadKind, Load::HorizontalLine);
    EXPECT_TRUE(desk.isHighlighted("panHorizLine"));
    EXPECT_TRUE(desk.isHighlighted("panHorizDist")); // painted by its own button alone
    desk.onShow = nullptr;
    desk.click("cmdHorizDist");
    EXPECT_EQ(desk.session->LoadKind, Load::Distributed);
    EXPECT_FALSE(desk.isHighlighted("panHorizDist"));
    desk.click("cmdFinished");
    EXPECT_FALSE(desk.isOpen());
}

TEST_F(HorizontalTest, EachScreenOfLoadsRefusesTheKindsOfTheOther) {
    EXPECT_THROW(desk.open(Screen::HORLOAD, Load::Variable), RuntimeError);
    EXPECT_THROW(desk.open(Screen::SURCHARG, Load::HorizontalLine), RuntimeError);
}

TEST_F(HorizontalTest, LineLoadsNeedNoOrderAndNoSign) {
    openLines();
    EXPECT_TRUE(desk.isShown("imgHorLine"));
    EXPECT_FALSE(desk.isShown("cmdDelHorLine"));
    desk.typeDown("txtElevHorLine", {"-5", "3", "-1", "-5", "0"});
    desk.typeDown("txtHorLine", {"100", "-250", "0", "1e3", "7"});
    EXPECT_TRUE(desk.isShown("cmdDelHorLine"));
    EXPECT_THROW(desk.find("txtHorLine_5"), std::runtime_error);
    EXPECT_EQ(finishLines(), noBox);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.HLineCount, 5);
    EXPECT_EQ(problem.HLineElev(2), 3);
    EXPECT_EQ(problem.HLineLoad(2), -250);
    EXPECT_EQ(problem.HLineLoad(4), 1000);
}

TEST_F(HorizontalTest, ALineWithItsLoadAloneIsMissingItsElevation) {
    openLines();
    desk.type("txtHorLine_0", "100");
    EXPECT_EQ(finishLines(), lineMissing);
    EXPECT_EQ(problem.HLineCount, 1);
    desk.type("txtElevHorLine_0", "x");
    EXPECT_EQ(finishLines(), lineInvalid);
    desk.type("txtElevHorLine_0", "1");
    desk.type("txtHorLine_0", "1 2");
    EXPECT_EQ(finishLines(), lineInvalid);
    EXPECT_EQ(desk.session->SolutionFailed, 0);
}

TEST_F(HorizontalTest, CancelAmongTheLineLoadsFailsTheRun) {
    problem = fullProblem();
    openLines();
    desk.type("txtHorLine_1", "");
    desk.answers = {Answer::Cancel};
    EXPECT_EQ(finishLines(), lineMissing);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.HLineCount, 0);
    EXPECT_EQ(problem.HDistCount, 2);
    EXPECT_EQ(desk.session->SolutionFailed, 1);
}

TEST_F(HorizontalTest, AllRowsEmptyDeletesTheSectionWithoutAMessage) {
    problem = fullProblem();
    openLines();
    for (const char* field :
         {"txtElevHorLine_0", "txtHorLine_0", "txtElevHorLine_1", "txtHorLine_1"}) {
        desk.type(field, "");
    }
    EXPECT_EQ(finishLines(), noBox);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.HLineCount, 0);
    openDistributed();
    for (const char* field : {"txtElHorDist_0", "txtHorDist_0", "txtElHorDist_1", "txtHorDist_1"}) {
        desk.type(field, " ");
    }
    EXPECT_EQ(finishDistributed(), noBox);
    EXPECT_EQ(problem.HDistCount, 0);
}

TEST_F(HorizontalTest, OneRowOfADistributedLoadIsInvalid) {
    openDistributed();
    desk.type("txtElHorDist_0", "5");
    EXPECT_EQ(finishDistributed(), distributedInvalid); // although the load is missing too
    EXPECT_EQ(problem.HDistCount, 1);
}

TEST_F(HorizontalTest, DistributedElevationsFallStrictly) {
    openDistributed();
    desk.typeDown("txtElHorDist", {"5", "5"});
    desk.typeDown("txtHorDist", {"10", "20"});
    EXPECT_EQ(finishDistributed(), distributedInvalid);
    desk.type("txtElHorDist_1", "6");
    EXPECT_EQ(finishDistributed(), distributedInvalid);
    desk.type("txtElHorDist_1", "");
    EXPECT_EQ(finishDistributed(), distributedMissing);
    desk.type("txtElHorDist_1", "4.9");
    desk.type("txtHorDist_1", "");
    EXPECT_EQ(finishDistributed(), distributedMissing);
    desk.type("txtHorDist_1", "x");
    EXPECT_EQ(finishDistributed(), distributedInvalid);
    desk.type("txtHorDist_1", "-20");
    EXPECT_EQ(finishDistributed(), noBox);
    EXPECT_EQ(problem.HDistCount, 2);
    EXPECT_EQ(problem.HDistElev(2), 4.9);
    EXPECT_EQ(problem.HDistLoad(2), -20);
}

TEST_F(HorizontalTest, CancelOfTheDistributedLoadLeavesTheRunAlone) {
    problem = fullProblem();
    openDistributed();
    EXPECT_TRUE(desk.isShown("imgHorDist"));
    desk.type("txtHorDist_0", "x");
    desk.answers = {Answer::Cancel};
    EXPECT_EQ(finishDistributed(), distributedInvalid);
    EXPECT_EQ(problem.HDistCount, 0);
    EXPECT_EQ(problem.HLineCount, 2);
    EXPECT_EQ(desk.session->SolutionFailed, 0);
}

TEST_F(HorizontalTest, ElevenPointsAreTheMost) {
    openDistributed();
    for (int row = 0; row < 11; ++row) {
        desk.type(QString("txtElHorDist_%1").arg(row), QString::number(-row));
        desk.type(QString("txtHorDist_%1").arg(row), "1");
    }
    EXPECT_THROW(desk.find("txtHorDist_11"), std::runtime_error);
    EXPECT_EQ(finishDistributed(), noBox);
    EXPECT_EQ(problem.HDistCount, 11);
}

TEST_F(HorizontalTest, DeleteEmptiesTheSection) {
    problem = fullProblem();
    openLines();
    EXPECT_EQ(desk.text("cmdDelHorLine"), "&Delete Line Loads");
    desk.click("cmdDelHorLine");
    EXPECT_EQ(problem.HLineCount, 0);
    EXPECT_EQ(desk.session->DataChanged, 1);
    EXPECT_EQ(desk.text("txtHorLine_0"), "");
    EXPECT_FALSE(desk.isShown("cmdDelHorLine"));
    openDistributed();
    EXPECT_EQ(desk.text("cmdDelHorDist"), "&Delete Distributed Loads");
    desk.click("cmdDelHorDist");
    EXPECT_EQ(problem.HDistCount, 0);
}

TEST_F(HorizontalTest, FocusGoesRowByRowWithTheButtonsBehind) {
    problem = fullProblem();
    openLines();
    EXPECT_EQ(desk.tabOrder("txtElevHorLine_0"),
              (std::vector<std::string>{"txtElevHorLine_0", "txtHorLine_0", "txtElevHorLine_1",
                                        "txtHorLine_1", "txtElevHorLine_2", "txtHorLine_2",
                                        "txtElevHorLine_3", "txtHorLine_3", "txtElevHorLine_4",
                                        "txtHorLine_4", "cmdFinHorLine", "cmdDelHorLine"}));
}

} // namespace korvane::test
