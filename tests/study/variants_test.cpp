// Which walls the variants are, and that their rows are those of single solves.
#include "study_desk.h"

#include "study/evaluation.h"
#include "study/plan.h"

#include "rowe/pile_sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace korvane::study::test {

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::vector<std::vector<double>> numbersOf(const Study& study) {
    Plan plan(study);
    std::vector<std::vector<double>> all;
    for (std::uint64_t n = 0; n < plan.size(); ++n) {
        std::vector<double> numbers;
        plan.numbers(n, numbers);
        all.push_back(numbers);
    }
    return all;
}

/// The wall that a variant is.
Problem wallOf(const Study& study, const std::vector<double>& numbers) {
    Evaluation evaluation(study);
    evaluation.solve(numbers);
    return evaluation.problem();
}

std::string bits(double number) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%a", number);
    return text.data();
}

const std::string TwoVariables = friction("values = [30, 32, 34]") +
                                 variable("top", "fields = \"WallTopElev\"\nchange = \"add\"\n"
                                                 "values = [0, -1]");

} // namespace

TEST(Variants, TheFirstVariableOfAGridVariesSlowest) {
    EXPECT_THAT(numbersOf(studyOf(head("grid") + TwoVariables)),
                ElementsAre(ElementsAre(30, 0), ElementsAre(30, -1), ElementsAre(32, 0),
                            ElementsAre(32, -1), ElementsAre(34, 0), ElementsAre(34, -1)));
}

TEST(Variants, OneAtATimeIsTheBaseThenBothEndsOfEach) {
    const auto numbers = numbersOf(
        studyOf(head("one-at-a-time") + TwoVariables + variable("capacity", "values = [5, 6]")));
    const auto is = [](double a) { return testing::DoubleEq(a); };
    const auto same = testing::Truly(isUnchanged);
    EXPECT_THAT(numbers,
                ElementsAre(ElementsAre(same, same, is(5)), ElementsAre(is(30), same, is(5)),
                            ElementsAre(is(34), same, is(5)), ElementsAre(same, is(-1), is(5)),
                            ElementsAre(same, is(0), is(5)), ElementsAre(same, same, is(5)),
                            ElementsAre(same, same, is(6))));
}

TEST(Variants, OneAtATimeTakesTheLeastAndTheLargestValue) {
    const auto numbers =
        numbersOf(studyOf(head("one-at-a-time") + friction("values = [32, 28, 36, 34]")));
    EXPECT_EQ(numbers[1][0], 28);
    EXPECT_EQ(numbers[2][0], 36);
}

TEST(Variants, OneAtATimeTakesTheFivePercentEndsOfADistribution) {
    const auto numbers =
        numbersOf(studyOf(head("one-at-a-time") + friction("distribution = \"Normal(32, 2)\"")));
    EXPECT_NEAR(numbers[1][0], 32 - 2 * 1.6448536269514722, 1e-9);
    EXPECT_NEAR(numbers[2][0], 32 + 2 * 1.6448536269514722, 1e-9);
}

TEST(Variants, FieldsAreSetAddedToOrMultiplied) {
    const Study study =
        studyOf(head("grid") + friction("values = 30") +
                variable("top", "fields = \"WallTopElev\"\nchange = \"add\"\nvalues = 2") +
                variable("moist", "fields = [\"SoilMoistWeight.*.*\", \"SoilSatWeight.*.*\"]\n"
                                  "change = \"multiply\"\nvalues = 1.5"));
    const Problem wall = wallOf(study, {30, 2, 1.5});
    for (const int side : {Right, Left}) {
        EXPECT_EQ(wall.SoilFriction(side, 1), 30);
        EXPECT_EQ(wall.SoilMoistWeight(side, 1), 165);
        EXPECT_EQ(wall.SoilSatWeight(side, 1), 180);
    }
    EXPECT_EQ(wall.WallTopElev, 14);
    // The next variant starts from the base again.
    Evaluation evaluation(study);
    evaluation.solve({30, 2, 1.5});
    evaluation.solve({unchanged(), unchanged(), unchanged()});
    EXPECT_EQ(evaluation.problem().WallTopElev, study.base.WallTopElev);
    EXPECT_EQ(evaluation.problem().SoilMoistWeight(Right, 1), 110);
}

TEST(Variants, TiesFollowTheirField) {
    const Study study =
        studyOf(head("grid") + friction("values = [30, 36]") +
                "[[tie]]\nfield = \"SoilWallFriction.left.1\"\nto = \"SoilFriction.left.1\"\n"
                "factor = 0.5\nadd = 1\n");
    EXPECT_EQ(wallOf(study, {30}).SoilWallFriction(Left, 1), 16);
    EXPECT_EQ(wallOf(study, {36}).SoilWallFriction(Left, 1), 19);
    EXPECT_EQ(wallOf(study, {36}).SoilWallFriction(Right, 1), 0);
}

namespace {

std::string tie(const std::string& field, const std::string& to, const std::string& more = "") {
    return "[[tie]]\nfield = \"" + field + "\"\nto = \"" + to + "\"\n" + more + "\n";
}

const std::string Drawn =
    variable("friction", "fields = \"SoilFriction.right.1\"\nvalues = [30, 36]");

} // namespace

TEST(Variants, TiesThatFollowTiesDoNotDependOnTheirOrder) {
    // Friction on the left is 2 below that on the right, that of the wall half of the left one.
    const std::string first = tie("SoilFriction.left.1", "SoilFriction.right.1", "add = -2");
    const std::string then = tie("SoilWallFriction.left.1", "SoilFriction.left.1", "factor = 0.5");
    const std::string start = head("grid") + Drawn;
    for (const std::string& ties : {first + then, then + first}) {
        const Study study = studyOf(start + ties);
        Evaluation evaluation(study);
        for (const double friction : {30.0, 36.0, 30.0}) { // whatever was solved before
            evaluation.solve({friction});
            EXPECT_EQ(evaluation.problem().SoilFriction(Left, 1), friction - 2);
            EXPECT_EQ(evaluation.problem().SoilWallFriction(Left, 1), (friction - 2) / 2);
        }
    }
}

TEST(Variants, FieldsOfTiesStartFromTheBase) {
    // What no study file can say: the field grows by a fiftieth of the base, once.
    Study study = studyOf(head("grid") + Drawn);
    const FieldAddress top{ProblemField::WallTopElev};
    study.ties = {Tie{.field = top, .to = top, .factor = 1.02}};
    Evaluation evaluation(study);
    for (int n = 0; n < 3; ++n) {
        evaluation.solve({unchanged()});
        EXPECT_EQ(evaluation.problem().WallTopElev, 1.02 * study.base.WallTopElev);
    }
}

TEST(Variants, TiesThatSpeakAgainstOneAnotherAreRefused) {
    const auto fault = [](const std::string& ties) { return faultOf(head("grid") + Drawn + ties); };
    EXPECT_THAT(fault(tie("SoilFriction.left.1", "SoilFriction.left.1", "factor = 1.02")),
                HasSubstr("s.toml:9: [[tie]]: SoilFriction.left.1 cannot follow itself"));
    EXPECT_THAT(fault(tie("SoilFriction.left.1", "SoilFriction.right.1") +
                      tie("SoilFriction.left.1", "SoilWallFriction.left.1")),
                HasSubstr("SoilFriction.left.1 follows SoilFriction.right.1 already"));
    EXPECT_THAT(fault(tie("SoilFriction.right.1", "SoilFriction.left.1")),
                HasSubstr("SoilFriction.right.1 is a field of the variable friction"));
    EXPECT_THAT(fault(tie("SoilFriction.left.1", "SoilWallFriction.left.1") +
                      tie("SoilWallFriction.left.1", "SoilFriction.left.1")),
                HasSubstr("follow one another in a ring"));
}

TEST(Variants, RowsOfTiesAreTheSameForAnyThreadsAndParts) {
    const std::string text =
        head("sample", "size = 700\noutputs = \"penetration\"") +
        variable("friction",
                 "fields = \"SoilFriction.right.1\"\ndistribution = \"Normal(32, 2)\"") +
        tie("SoilWallFriction.left.1", "SoilFriction.left.1", "factor = 0.5") +
        tie("SoilFriction.left.1", "SoilFriction.right.1", "add = 1");
    const StudyDesk desk;
    desk.runStudy(text, "one", {"--jobs", "1"});
    desk.runStudy(text, "three", {"--jobs", "3"});
    EXPECT_EQ(desk.variants("three"), desk.variants("one"));
    for (const char* part : {"4/4", "1/4", "3/4", "2/4"}) {
        desk.runStudy(text, "parts", {"--part", part});
    }
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("parts")}).status, 0);
    EXPECT_EQ(desk.variants("parts"), desk.variants("one"));
}

TEST(Variants, UnitsOfTheStudyAreThoseOfItsNumbers) {
    const Study study =
        studyOf(head("grid", "units = \"si\"\noutputs = \"penetration\"") +
                variable("top", "fields = \"WallTopElev\"\nchange = \"set\"\nvalues = 4.2672"));
    EXPECT_NEAR(wallOf(study, {4.2672}).WallTopElev, 14, 1e-12);
    Evaluation evaluation(study);
    Row row;
    evaluation.fill({4.2672}, row);
    const Study same = studyOf(head("grid", "outputs = \"penetration\"") +
                               variable("top", "fields = \"WallTopElev\"\nvalues = 14"));
    Evaluation other(same);
    Row inFeet;
    other.fill({14}, inFeet);
    EXPECT_NEAR(row.outputs[0], inFeet.outputs[0] * 0.3048, 1e-9);
}

TEST(Variants, AnInvalidWallIsAnOutcomeWithItsReason) {
    const StudyDesk desk;
    desk.runStudy(head("grid", "outputs = \"penetration\"") + friction("values = [32, 95, 34]"),
                  "o");
    const auto rows =
        desk.rows("o", "SELECT penetration IS NULL, outcome, reason FROM variants ORDER BY id");
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0], (TextRow{"0", "solved", "NULL"}));
    EXPECT_EQ(rows[2], (TextRow{"0", "solved", "NULL"}));
    EXPECT_EQ(rows[1][0], "1");
    EXPECT_EQ(rows[1][1], "invalid-problem");
    EXPECT_GT(rows[1][2].size(), 10U);
    EXPECT_EQ(desk.statistic("o", "outcome", "invalid-problem"), 1);
    EXPECT_EQ(desk.statistic("o", "outcome", "solved"), 2);
    EXPECT_EQ(desk.statistic("o", "penetration", "count"), 2);
}

TEST(Variants, AnAnalysisBeyondItsLargestFactorIsAnOutcome) {
    const StudyDesk desk;
    const std::string base = "[study]\nbase = \"analysis-cantilever.dat\"\nmethod = \"grid\"\n"
                             "outputs = \"factorOfSafety\"\n";
    // A long wall in strong soil has a factor beyond 5, where the search stops first.
    desk.runStudy(base + "maxFs = 4\n" + friction("values = [33, 44]") +
                      variable("toe", "fields = \"WallBottomElev\"\nvalues = [-18, -40]"),
                  "o");
    const auto rows =
        desk.rows("o", "SELECT factorOfSafety IS NULL, outcome FROM variants ORDER BY id");
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0], (TextRow{"0", "solved"}));
    EXPECT_EQ(rows[3], (TextRow{"1", "factor-declined"}));
    // Searching further it has one.
    desk.runStudy(base + friction("values = 44") +
                      variable("toe", "fields = \"WallBottomElev\"\nvalues = -40"),
                  "further");
    EXPECT_GT(desk.number("further", "SELECT factorOfSafety FROM variants"), 5);
}

TEST(Variants, RowsAreSingleSolvesToTheBit) {
    for (const std::string name : {"cantilever-dry-sand.dat", "anchored-sand.dat"}) {
        for (const std::string method : {"grid", "one-at-a-time"}) {
            const Study study = studyOf(
                head(method,
                     "outputs = [\"penetration\", \"bottom\", \"maxMoment\", \"maxShear\"]") +
                    friction("range = [28, 36, 4]") +
                    variable("top", "fields = \"WallTopElev\"\nchange = \"add\"\nvalues = [0, 1]"),
                name);
            Evaluation evaluation(study);
            const int levels = study.base.WallType == WallKind::Anchored ? 2 : 1;
            for (const std::vector<double>& numbers : numbersOf(study)) {
                Row row;
                evaluation.fill(numbers, row);
                Problem problem = study.base;
                for (const int side : {Right, Left}) {
                    problem.SoilFriction(side, 1) =
                        isUnchanged(numbers[0]) ? study.base.SoilFriction(side, 1) : numbers[0];
                }
                problem.WallTopElev += isUnchanged(numbers[1]) ? 0 : numbers[1];
                Workspace workspace;
                PileSections sections;
                LoadPileDefaults(sections);
                const Solved solved = solve(
                    problem, {.wedge = WedgeMethod::Sweep, .factorLimit = {}}, sections, workspace);
                ASSERT_NE(solved.results, nullptr);
                std::vector<std::string> expected;
                for (int output = 0; output < 4; ++output) {
                    for (int level = 1; level <= levels; ++level) {
                        const LevelResult& result = solved.results->levels(level);
                        switch (output) {
                        case 0:
                            expected.push_back(bits(result.penetration));
                            break;
                        case 1:
                            expected.push_back(bits(result.bottomElev));
                            break;
                        case 2:
                            expected.push_back(bits(result.diagrams.MaxMoment.value));
                            expected.push_back(bits(result.diagrams.MaxMoment.elev));
                            break;
                        default:
                            expected.push_back(bits(result.maxShear.value));
                            expected.push_back(bits(result.maxShear.elev));
                        }
                    }
                }
                std::vector<std::string> got;
                for (const double value : row.outputs) {
                    got.push_back(bits(value));
                }
                EXPECT_EQ(got, expected) << name << " " << method;
            }
        }
    }
}

TEST(Variants, RowsAreThoseOfTheBatchProgramToTheBit) {
    const StudyDesk desk;
    desk.runStudy("[study]\nbase = \"anchored-sand.dat\"\nmethod = \"grid\"\n"
                  "outputs = [\"penetration\", \"anchorForce\", \"maxMoment\"]\n" +
                      friction("values = [28, 30, 33.3]") +
                      variable("anchor", "fields = \"AnchorElev\"\nvalues = [14, 17.5]"),
                  "o");
    std::string text = example("anchored-sand.dat");
    for (const char* phi : {"28", "30", "33.3"}) {
        for (const char* anchor : {"14", "17.5"}) {
            std::string input = text;
            input.replace(input.find("WALL  20  15.5"), 14, std::string("WALL  20  ") + anchor);
            input.replace(input.find("125  115  30"), 12, std::string("125  115  ") + phi);
            desk.write("one.dat", input);
            const std::string command = std::string(KORVANE_BATCH) +
                                        " --json --quiet --no-notes -o '" + desk.file("one.out") +
                                        "' '" + desk.file("one.dat") + "' 2>/dev/null";
            ASSERT_EQ(std::system(command.c_str()), 0); // NOLINT: one thread
            const auto json = nlohmann::json::parse(desk.read("one.json"));
            const auto rows = desk.rows(
                "o", "SELECT penetration_free, penetration_fixed, anchorForce_free, "
                     "anchorForce_fixed, maxMoment_free, maxMoment_fixed, maxMomentElev_free, "
                     "maxMomentElev_fixed FROM variants WHERE friction = " +
                         std::string(phi) + " AND anchor = " + anchor);
            ASSERT_EQ(rows.size(), 1U);
            TextRow expected;
            for (const char* name : {"penetration", "anchorForce"}) {
                for (const std::size_t level : {0U, 1U}) {
                    expected.push_back(bits(json["levels"][level][name]));
                }
            }
            for (const char* part : {"value", "elev"}) {
                for (const std::size_t level : {0U, 1U}) {
                    expected.push_back(bits(json["levels"][level]["maxMoment"][part]));
                }
            }
            EXPECT_EQ(rows[0], expected) << phi << " " << anchor;
        }
    }
}

TEST(Variants, NotesCountZeroOrOne) {
    const StudyDesk desk;
    desk.runStudy("[study]\nbase = \"wall.dat\"\nmethod = \"grid\"\n"
                  "outputs = [\"note.no-reserve\"]\n" +
                      variable("factor", "fields = \"FSPassive\"\nvalues = [1, 1.5]"),
                  "o");
    const auto rows = desk.rows("o", "SELECT \"note.no-reserve\" FROM variants ORDER BY id");
    // A factor of 1 holds no reserve, one of 1.5 does.
    EXPECT_EQ(rows, (std::vector<TextRow>{{bits(1)}, {bits(0)}}));
}

TEST(Variants, SharesAreTheWholeWithoutOverlap) {
    for (const std::uint64_t size :
         {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{7}, std::uint64_t{1000000000000000}}) {
        for (const std::uint64_t parts : {1U, 3U, 8U, 1000U}) {
            std::uint64_t next = 0;
            for (std::uint64_t part = 1; part <= parts; ++part) {
                const Share share = shareOf(size, part, parts);
                EXPECT_EQ(share.from, next);
                EXPECT_GE(share.to, share.from);
                EXPECT_LE(share.to - share.from, size / parts + 1);
                next = share.to;
            }
            EXPECT_EQ(next, size);
        }
    }
}

} // namespace korvane::study::test
