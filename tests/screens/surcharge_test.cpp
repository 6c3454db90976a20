// SURCHCON and SURCHARG: the six kinds of vertical load.
#include "looks.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test {

namespace {

std::string missing(const std::string& choices) {
    return okCancel("DATA MISSING", "At least one required data value is missing.\n\n" + choices);
}
std::string invalid(const std::string& choices) {
    return okCancel("INVALID DATA", "At least one data value is invalid.\n\n" + choices);
}

const std::string lineOk = "     Choose OK to continue LINE LOAD DATA \n          entry.\n";
const std::string lineMissing =
    missing(lineOk + "     Choose CANCEL to delete ALL LINE LOAD\n          DATA and exit.");
const std::string lineInvalid =
    invalid(lineOk + "     Choose CANCEL to DELETE ALL LINE LOAD\n          DATA and exit.");
const std::string uniformInvalid = invalid("     Choose OK to continue UNIFORM LOAD"
                                           "\n          DATA entry."
                                           "\n     Choose CANCEL to DELETE ALL UNIFORM"
                                           "\n          LOAD DATA and exit.");
const std::string stripChoices = "     Choose OK to continue STRIP LOAD DATA "
                                 "\n          entry."
                                 "\n     Choose CANCEL to DELETE ALL STRIP LOAD"
                                 "\n          DATA and exit.";
const std::string rampChoices = "     Choose OK to continue RAMP LOAD DATA"
                                "\n          entry."
                                "\n     Choose CANCEL to DELETE ALL RAMP LOAD"
                                "\n          DATA and exit.";
const std::string triangleOk = "     Choose OK to continue TRIANGULAR LOAD\n          DATA entry."
                               "\n     Choose CANCEL to DELETE ALL\n";
const std::string triangleMissing =
    missing(triangleOk + "          TRIANGULAR LOAD DATA and exit.");
const std::string triangleInvalid = invalid(triangleOk + "          TRIANGULAR DATA and exit.");
const std::string variableMissing = missing("     Choose OK to continue VARIABLE LOAD"
                                            "\n          DATA entry."
                                            "\n     Choose CANCEL to DELETE ALL VARIABLE"
                                            "\n          LOAD DATA and exit.");
const std::string variableInvalid = invalid("     Choose OK to continue VARIABLE LOAD "
                                            "\n          DATA entry."
                                            "\n     Choose CANCEL to DELETE VARIABLE LOAD"
                                            "\n          DATA and exit.");

/// What the tests of all kinds need to know of a kind, as the system names it.
struct Kind {
    Load load;
    const char* frame;
    const char* title;
    const char* picture;
    int rows;
    std::vector<QString> right; ///< controls of a row
    std::vector<QString> left;
    std::vector<std::string> valid; ///< a row
    const char* finished;
    const char* deleteRight;
    const char* deleteLeft;
    Array<int, 2> Problem::*count;
};

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all = {
        {Load::Line,
         "fraVertLine",
         "Vertical Line Loads",
         "imgLineLoad",
         5,
         {"txtDLLR", "txtQLLR"},
         {"txtDLLL", "txtQLLL"},
         {"5", "100"},
         "cmdFinVertLine",
         "cmdDelVertLineR",
         "cmdDelVertLineL",
         &Problem::VLineCount},
        {Load::Uniform,
         "fraUnifLoad",
         "Uniform Loads",
         "imgUnif",
         1,
         {"txtQUR"},
         {"txtQUL"},
         {"250"},
         "cmdFinUnifLoad",
         "cmdDelUnifLoad",
         "cmdDelUnifLoad",
         &Problem::VUniformCount},
        {Load::Strip,
         "fraStrips",
         "Strip Loads",
         "imgStrips",
         5,
         {"txtDS1R", "txtDS2R", "txtQSR"},
         {"txtDS1L", "txtDS2L", "txtQSL"},
         {"0", "5", "100"},
         "cmdFinStrips",
         "cmdDelStripR",
         "cmdDelStripL",
         &Problem::VStripCount},
        {Load::Ramp,
         "fraRamps",
         "Ramp Loads",
         "imgRamps",
         1,
         {"txtDR1R", "txtDR2R", "txtQRR"},
         {"txtDR1L", "txtDR2L", "txtQRL"},
         {"2", "9", "100"},
         "cmdFinRamps",
         "cmdDelRampR",
         "cmdDelRampL",
         &Problem::VRampCount},
        {Load::Triangle,
         "fraTriangs",
         "Triangular Loads",
         "imgTriangs",
         5,
         {"txtDT1R", "txtDT2R", "txtDT3R", "txtQTR"},
         {"txtDT1L", "txtDT2L", "txtDT3L", "txtQTL"},
         {"1", "2", "3", "100"},
         "cmdFinTriangs",
         "cmdDelTriangR",
         "cmdDelTriangL",
         &Problem::VTriCount},
        {Load::Variable,
         "fraVertVar",
         "Variable Loads",
         "imgVertVar",
         11,
         {"txtRightDist", "txtRightLoad"},
         {"txtLeftDist", "txtLeftLoad"},
         {"5", "100"},
         "cmdFinVertVar",
         "cmdDelVarR",
         "cmdDelVarL",
         &Problem::VVarCount},
    };
    return all;
}

class SurchargeTest : public testing::Test {
  protected:
    Desk desk;
    Problem& problem = desk.problem;

    const Kind& open(Load load) {
        desk.reopen(Screen::SURCHARG, load);
        return *std::ranges::find(kinds(), load, &Kind::load);
    }
    static QString control(const Kind& kind, const QString& name, int row) {
        return kind.rows == 1 ? name : name + "_" + QString::number(row - 1);
    }
    /// Types a row; "." leaves a field alone.
    void typeRow(const Kind& kind, const std::vector<QString>& controls, int row,
                 const std::vector<std::string>& texts) {
        for (std::size_t column = 0; column < texts.size(); ++column) {
            if (texts[column] != ".") {
                desk.type(control(kind, controls[column], row),
                          QString::fromStdString(texts[column]));
            }
        }
    }
    std::string finish(const Kind& kind) {
        desk.click(kind.finished);
        return desk.lastBox();
    }
    /// The box for one row on the right side of a fresh screen.
    std::string boxFor(Load load, const std::vector<std::string>& row) {
        const Kind& kind = open(load);
        typeRow(kind, kind.right, 1, row);
        return finish(kind);
    }
};

} // namespace

TEST_F(SurchargeTest, TheListHighlightsEachKindByItsOwnCounts) {
    const std::pair<const char*, const char*> controls[] = {
        {"cmdVertLine", "panVertLine"}, {"cmdUniform", "panUniform"}, {"cmdStrips", "panStrips"},
        {"cmdRamps", "panRamps"},       {"cmdTriangs", "panTriangs"}, {"cmdVertVar", "panVertVar"}};
    for (const Kind& kind : kinds()) {
        const auto& [button, panel] = controls[static_cast<std::size_t>(kind.load)];
        (problem.*kind.count)(Left) = 1;
        desk.reopen(Screen::SURCHCON);
        for (const auto& [otherButton, other] : controls) {
            EXPECT_EQ(desk.isHighlighted(other), std::string(other) == panel) << other;
        }
        desk.onShow = [&](Screen) { (problem.*kind.count)(Left) = 0; };
        desk.click(button);
        EXPECT_EQ(desk.shown.back(), Screen::SURCHARG);
        EXPECT_EQ(desk.session->LoadKind, kind.load);
        EXPECT_FALSE(desk.isHighlighted(panel));
    }
    desk.click("cmdFinished");
    EXPECT_FALSE(desk.isOpen());
}

TEST_F(SurchargeTest, EachKindShowsItsFrameWithPictureAndControls) {
    for (const Kind& kind : kinds()) {
        open(kind.load);
        EXPECT_EQ(desk.top().windowTitle(), "SURFACE SURCHARGES");
        EXPECT_EQ(desk.text(QString(kind.frame) + "_title"), kind.title);
        EXPECT_TRUE(desk.isShown(kind.picture));
        for (const Kind& other : kinds()) {
            EXPECT_EQ(desk.top().findChild<QWidget*>(other.frame) != nullptr,
                      other.load == kind.load);
        }
        EXPECT_EQ(desk.text(kind.finished), "&Finished");
        EXPECT_FALSE(desk.isShown(kind.deleteRight));
        EXPECT_FALSE(desk.isShown(kind.deleteLeft));
    }
}

TEST_F(SurchargeTest, FocusGoesDownTheRightSideAndThenTheLeft) {
    for (const Kind& kind : kinds()) {
        open(kind.load);
        std::vector<std::string> expected;
        for (const auto* side : {&kind.right, &kind.left}) {
            for (int row = 1; row <= kind.rows; ++row) {
                for (const QString& name : *side) {
                    expected.push_back(control(kind, name, row).toStdString());
                }
            }
        }
        expected.emplace_back(kind.finished);
        EXPECT_EQ(desk.tabOrder(control(kind, kind.right[0], 1)), expected);
    }
}

TEST_F(SurchargeTest, AnEmptyScreenClosesWithCountsOfZero) {
    for (const Kind& kind : kinds()) {
        open(kind.load);
        EXPECT_EQ(finish(kind), noBox);
        EXPECT_FALSE(desk.isOpen());
        EXPECT_EQ((problem.*kind.count)(Right), 0);
        EXPECT_EQ((problem.*kind.count)(Left), 0);
    }
}

TEST_F(SurchargeTest, ASideHoldsItsMostRowsAndNoMore) {
    for (const Kind& kind : kinds()) {
        open(kind.load);
        for (const auto* side : {&kind.right, &kind.left}) {
            for (int row = 1; row <= kind.rows; ++row) {
                std::vector<std::string> texts = kind.valid;
                if (kind.load == Load::Variable) {
                    texts[0] = std::to_string(row);
                }
                typeRow(kind, *side, row, texts);
            }
        }
        EXPECT_EQ(desk.top().findChild<QWidget*>(kind.right[0] + QString("_%1").arg(kind.rows)),
                  nullptr);
        EXPECT_EQ(finish(kind), noBox);
        EXPECT_FALSE(desk.isOpen());
        EXPECT_EQ((problem.*kind.count)(Right), kind.rows);
        EXPECT_EQ((problem.*kind.count)(Left), kind.rows);
        EXPECT_EQ(desk.session->DataChanged, 1);
    }
}

TEST_F(SurchargeTest, EveryFieldReachesItsPlaceInTheRecord) {
    const auto enter = [this](Load load, const std::vector<std::string>& right,
                              const std::vector<std::string>& left) {
        const Kind& kind = open(load);
        typeRow(kind, kind.right, 1, right);
        typeRow(kind, kind.left, 1, left);
        EXPECT_EQ(finish(kind), noBox);
    };
    enter(Load::Line, {"1", "2"}, {"3", "4"});
    enter(Load::Uniform, {"5"}, {"6"});
    enter(Load::Strip, {"7", "8", "9"}, {"10", "11", "12"});
    enter(Load::Ramp, {"13", "14", "15"}, {"16", "17", "18"});
    enter(Load::Triangle, {"19", "20", "21", "22"}, {"23", "24", "25", "26"});
    enter(Load::Variable, {"27", "28"}, {"29", "30"});
    const Problem& p = problem;
    const double values[] = {
        p.VLineDist(1, 1),  p.VLineLoad(1, 1),   p.VLineDist(2, 1),   p.VLineLoad(2, 1),
        p.VUniformLoad(1),  p.VUniformLoad(2),   p.VStripStart(1, 1), p.VStripEnd(1, 1),
        p.VStripLoad(1, 1), p.VStripStart(2, 1), p.VStripEnd(2, 1),   p.VStripLoad(2, 1),
        p.VRampStart(1),    p.VRampEnd(1),       p.VRampLoad(1),      p.VRampStart(2),
        p.VRampEnd(2),      p.VRampLoad(2),      p.VTriStart(1, 1),   p.VTriPeak(1, 1),
        p.VTriEnd(1, 1),    p.VTriLoad(1, 1),    p.VTriStart(2, 1),   p.VTriPeak(2, 1),
        p.VTriEnd(2, 1),    p.VTriLoad(2, 1),    p.VVarDist(1, 1),    p.VVarLoad(1, 1),
        p.VVarDist(2, 1),   p.VVarLoad(2, 1)};
    double expected = 0;
    for (const double value : values) {
        EXPECT_EQ(value, ++expected);
    }
}

TEST_F(SurchargeTest, ALineLoadStandsAwayFromTheWallAStripMayTouchIt) {
    EXPECT_EQ(boxFor(Load::Line, {"0", "100"}), lineInvalid);
    EXPECT_EQ(boxFor(Load::Line, {"0.1", "0"}), lineInvalid);
    EXPECT_EQ(boxFor(Load::Line, {"0.1", ""}), lineMissing);
    EXPECT_EQ(boxFor(Load::Line, {"0.1", "1x"}), lineInvalid);
    EXPECT_EQ(boxFor(Load::Line, {"0.1", "1"}), noBox);
    EXPECT_EQ(boxFor(Load::Strip, {"0", "1", "100"}), noBox);
}

TEST_F(SurchargeTest, AStripNeedsAWidthAndALoad) {
    EXPECT_EQ(boxFor(Load::Strip, {"-1", "1", "100"}), invalid(stripChoices));
    EXPECT_EQ(boxFor(Load::Strip, {"5", "5", "100"}), invalid(stripChoices));
    EXPECT_EQ(boxFor(Load::Strip, {"5", "6", "0"}), invalid(stripChoices));
    EXPECT_EQ(boxFor(Load::Strip, {"5", "", "100"}), missing(stripChoices));
    EXPECT_EQ(boxFor(Load::Strip, {"", "6", "100"}), missing(stripChoices));
    EXPECT_EQ(boxFor(Load::Strip, {"x", "", ""}),
              invalid(stripChoices)); // the first bad field decides
}

TEST_F(SurchargeTest, ARampMayBeOfNoWidthAndOfNoLoad) {
    EXPECT_EQ(boxFor(Load::Ramp, {"5", "5", "0"}), noBox);
    EXPECT_EQ(problem.VRampCount(Right), 1);
    EXPECT_EQ(problem.VRampCount(Left), 0);
    EXPECT_EQ(boxFor(Load::Ramp, {"5", "4.9", "1"}), invalid(rampChoices));
    EXPECT_EQ(boxFor(Load::Ramp, {"-1", "4", "1"}), invalid(rampChoices));
    EXPECT_EQ(boxFor(Load::Ramp, {"1", "4", "-1"}), invalid(rampChoices));
    EXPECT_EQ(boxFor(Load::Ramp, {"", "", "1"}), missing(rampChoices));
}

TEST_F(SurchargeTest, OnlyATriangleWithAllThreeEqualIsInvalid) {
    EXPECT_EQ(boxFor(Load::Triangle, {"2", "2", "5", "1"}), noBox);
    EXPECT_EQ(boxFor(Load::Triangle, {"2", "5", "5", "1"}), noBox);
    EXPECT_EQ(boxFor(Load::Triangle, {"2", "2", "2", "1"}), triangleInvalid);
    EXPECT_EQ(boxFor(Load::Triangle, {"2", "1", "5", "1"}), triangleInvalid);
    EXPECT_EQ(boxFor(Load::Triangle, {"2", "4", "3", "1"}), triangleInvalid);
    EXPECT_EQ(boxFor(Load::Triangle, {"-2", "4", "5", "1"}), triangleInvalid);
    EXPECT_EQ(boxFor(Load::Triangle, {"2", "4", "5", "0"}), triangleInvalid);
    EXPECT_EQ(boxFor(Load::Triangle, {"2", "4", "5", ""}), triangleMissing);
}

TEST_F(SurchargeTest, VariableDistancesRiseStrictly) {
    const Kind& kind = open(Load::Variable);
    typeRow(kind, kind.right, 1, {"0", "0"});
    typeRow(kind, kind.right, 2, {"4", "10"});
    typeRow(kind, kind.right, 3, {"4", "20"});
    EXPECT_EQ(finish(kind), variableInvalid);
    typeRow(kind, kind.right, 3, {"5", "-1"});
    EXPECT_EQ(finish(kind), variableInvalid);
    typeRow(kind, kind.right, 3, {"", "20"});
    EXPECT_EQ(finish(kind), variableMissing);
    typeRow(kind, kind.right, 3, {"5", "20"});
    EXPECT_EQ(finish(kind), noBox);
    EXPECT_EQ(problem.VVarCount(Right), 3);
    EXPECT_EQ(boxFor(Load::Variable, {"-1", "10"}), variableInvalid);
}

TEST_F(SurchargeTest, AVariableLoadOfOnePointPasses) {
    EXPECT_EQ(boxFor(Load::Variable, {"5", "10"}), noBox);
    EXPECT_EQ(problem.VVarCount(Right), 1);
}

TEST_F(SurchargeTest, AUniformLoadOfZeroCountsAsALoad) {
    EXPECT_EQ(boxFor(Load::Uniform, {"0"}), noBox);
    EXPECT_EQ(problem.VUniformCount(Right), 1);
    EXPECT_EQ(problem.VUniformCount(Left), 0);
    desk.reopen(Screen::SURCHCON);
    EXPECT_TRUE(desk.isHighlighted("panUniform"));
}

TEST_F(SurchargeTest, AnInvalidUniformLoadIsNotCounted) {
    problem.VUniformCount.fill(1);
    for (const char* text : {"-1", "250 PSF"}) {
        const Kind& kind = open(Load::Uniform);
        desk.type("txtQUR", text);
        EXPECT_EQ(finish(kind), uniformInvalid);
        EXPECT_TRUE(desk.isOpen());
        EXPECT_EQ(problem.VUniformCount(Right), 0);
    }
}

TEST_F(SurchargeTest, ARowOfBlanksAboveTheLastOneIsMissing) {
    const Kind& kind = open(Load::Line);
    typeRow(kind, kind.left, 1, kind.valid);
    typeRow(kind, kind.left, 4, kind.valid);
    EXPECT_EQ(finish(kind), lineMissing);
    EXPECT_EQ(problem.VLineCount(Left), 4);
    EXPECT_TRUE(desk.isOpen());
}

TEST_F(SurchargeTest, AFaultOnTheLeftLeavesTheRightSideRead) {
    problem.VStripCount(Right) = 2;
    const Kind& kind = open(Load::Strip);
    typeRow(kind, kind.right, 1, {"1", "2", "3"});
    typeRow(kind, kind.right, 2, {"", "", ""});
    typeRow(kind, kind.left, 1, {"1", "1", "3"});
    EXPECT_EQ(finish(kind), invalid(stripChoices));
    EXPECT_EQ(problem.VStripCount(Right), 1);
    EXPECT_EQ(problem.VStripLoad(Right, 1), 3);
    EXPECT_EQ(problem.VStripCount(Left), 1);
}

TEST_F(SurchargeTest, CancelDropsTheKindOnBothSidesAndNoOther) {
    for (const Kind& kind : kinds()) {
        problem = fullProblem();
        open(kind.load);
        desk.type(control(kind, kind.left[0], 1), "bad");
        desk.answers = {Answer::Cancel};
        EXPECT_NE(finish(kind), noBox);
        EXPECT_FALSE(desk.isOpen());
        for (const Kind& other : kinds()) {
            const bool same = other.load == kind.load;
            EXPECT_EQ((problem.*other.count)(Right) == 0, same);
            EXPECT_EQ((problem.*other.count)(Left) == 0, same);
        }
        EXPECT_EQ(desk.session->SolutionFailed, 0);
    }
}

TEST_F(SurchargeTest, ADeleteButtonDropsItsSideAlone) {
    for (const Kind& kind : kinds()) {
        if (kind.load == Load::Uniform) {
            continue;
        }
        problem = fullProblem();
        desk.session->DataChanged = 0;
        open(kind.load);
        EXPECT_TRUE(desk.isShown(kind.deleteRight));
        EXPECT_TRUE(desk.isShown(kind.deleteLeft));
        const int right = (problem.*kind.count)(Right);
        desk.click(kind.deleteLeft);
        EXPECT_EQ((problem.*kind.count)(Left), 0);
        EXPECT_EQ((problem.*kind.count)(Right), right);
        EXPECT_EQ(desk.session->DataChanged, 1);
        EXPECT_EQ(desk.text(control(kind, kind.left[0], 1)), "");
        EXPECT_FALSE(desk.isShown(kind.deleteLeft));
        EXPECT_TRUE(desk.isShown(kind.deleteRight));
        EXPECT_EQ(finish(kind), noBox);
        EXPECT_EQ((problem.*kind.count)(Right), right);
    }
}

TEST_F(SurchargeTest, TheUniformDeleteButtonDropsBothSides) {
    problem = fullProblem();
    problem.VUniformCount(Right) = 0;
    open(Load::Uniform);
    EXPECT_EQ(desk.text("txtQUR"), "");
    EXPECT_EQ(desk.text("txtQUL"), " 250");
    EXPECT_TRUE(desk.isShown("cmdDelUnifLoad"));
    desk.click("cmdDelUnifLoad");
    EXPECT_EQ(problem.VUniformCount(Left), 0);
    EXPECT_EQ(desk.text("txtQUL"), "");
    EXPECT_FALSE(desk.isShown("cmdDelUnifLoad"));
    EXPECT_EQ(desk.session->DataChanged, 1);
    desk.type("txtQUR", "1");
    EXPECT_TRUE(desk.isShown("cmdDelUnifLoad"));
}

TEST_F(SurchargeTest, TypingOffersToDeleteItsSide) {
    for (const Kind& kind : kinds()) {
        if (kind.load == Load::Uniform) {
            continue;
        }
        open(kind.load);
        desk.session->DataChanged = 0;
        desk.type(control(kind, kind.left.back(), kind.rows), "1");
        EXPECT_EQ(desk.session->DataChanged, 1);
        EXPECT_TRUE(desk.isShown(kind.deleteLeft));
        EXPECT_FALSE(desk.isShown(kind.deleteRight));
        // Nothing is stored yet: deleting empties the fields and is no change of the data.
        desk.session->DataChanged = 0;
        desk.click(kind.deleteLeft);
        EXPECT_EQ(desk.session->DataChanged, 0);
        EXPECT_EQ(desk.text(control(kind, kind.left.back(), kind.rows)), "");
    }
}

TEST_F(SurchargeTest, CaptionsOfTheDeleteButtons) {
    const std::pair<const char*, const char*> captions[] = {
        {"cmdDelVertLineR", "Delete &Rightside Loads"},
        {"cmdDelVertLineL", "Delete &leftside Loads"},
        {"cmdDelUnifLoad", "&Delete Uniform Surcharges"},
        {"cmdDelStripR", "Delete &Rightside Loads"},
        {"cmdDelStripL", "Delete &Leftside Loads"},
        {"cmdDelRampR", "Delete &Rightside Load"},
        {"cmdDelRampL", "Delete &Leftside Load"},
        {"cmdDelTriangR", "Delete &Rightside Loads"},
        {"cmdDelTriangL", "Delete &Leftside Loads"},
        {"cmdDelVarR", "Delete &Rightside Loads"},
        {"cmdDelVarL", "Delete &Leftside Loads"},
    };
    for (const Kind& kind : kinds()) {
        open(kind.load);
        for (const auto& [name, caption] : captions) {
            if (std::string(name) == kind.deleteRight || std::string(name) == kind.deleteLeft) {
                EXPECT_EQ(desk.text(name), caption) << name;
            }
        }
    }
}

} // namespace korvane::test
