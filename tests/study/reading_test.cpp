// Study files: every key, and what is said of those that are wrong.
#include "study_desk.h"
#include "study_process.h"

#include "study/command_line.h"
#include "study/draws.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace korvane::study::test {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string Values = "values = [30, 32]";

std::vector<std::string> outputsOf(const Study& study) {
    std::vector<std::string> names;
    for (const OutputColumn& column : study.outputs) {
        names.push_back(column.name);
    }
    return names;
}

std::vector<std::string> fieldsOf(const Variable& variable) {
    std::vector<std::string> names;
    for (const FieldAddress& place : variable.fields) {
        names.push_back(addressName(place));
    }
    return names;
}

} // namespace

TEST(StudyFile, EveryKeyOfTheHeadIsRead) {
    const Study study = studyOf(
        head("sample", "design = \"latin-hypercube\"\nsize = 10000\nseed = 17\nwedge = \"fixed\"\n"
                       "amendments = [\"surface-limit\"]\nunits = \"si\"\nmaxFs = 30\n"
                       "outputs = [\"penetration\", \"maxMoment\", \"note.no-reserve\"]\n") +
        friction("distribution = \"Normal(32, 2)\"\nbounds = [26, 38]"));
    EXPECT_EQ(study.method, Method::Sample);
    EXPECT_EQ(study.sample.design, Design::LatinHypercube);
    EXPECT_EQ(study.sample.size, 10000U);
    EXPECT_EQ(study.sample.seed, 17U);
    EXPECT_EQ(study.options.wedge, WedgeMethod::FixedSurface);
    EXPECT_EQ(study.options.factorLimit.largest, 30);
    EXPECT_EQ(study.units, UnitSystem::SI);
    EXPECT_THAT(outputsOf(study),
                ElementsAre("penetration", "maxMoment", "maxMomentElev", "note.no-reserve"));
    EXPECT_EQ(study.variables[0].bounds[0], 26);
    EXPECT_EQ(study.variables[0].bounds[1], 38);
    EXPECT_TRUE(study.asksForNotes());
}

TEST(StudyFile, UnitsAreThoseOfTheBaseUnlessGiven) {
    const std::string text = head("grid") + variable("top", "fields = \"WallTopElev\"\nvalues = 4");
    EXPECT_EQ(studyOf(text).units, UnitSystem::US);
    EXPECT_EQ(studyOf(text, "cantilever-metric.dat").units, UnitSystem::SI);
}

TEST(StudyFile, EveryKeyOfTheOtherTablesIsRead) {
    const Study study =
        studyOf(head("reliability", "algorithm = \"importance\"\nsize = 100") +
                friction("distribution = \"Normal(32, 2)\"") +
                variable("moist", "fields = \"SoilMoistWeight.*.*\"\nchange = \"multiply\"\n"
                                  "distribution = \"Uniform(0.9, 1.1)\"") +
                variable("top", "fields = \"WallTopElev\"\nchange = \"add\"\nvalues = 1") +
                "[[correlation]]\nbetween = [\"friction\", \"moist\"]\nrank = 0.5\n"
                "[[tie]]\nfield = \"SoilWallFriction.left.1\"\nto = \"SoilFriction.left.1\"\n"
                "factor = 0.5\nadd = 1\n" +
                limit("deep", "penetration > 20", "noSolution = \"safe\""));
    EXPECT_EQ(study.algorithm, Algorithm::Importance);
    EXPECT_EQ(study.variables[1].change, Change::Multiply);
    EXPECT_EQ(study.variables[1].quantity, Quantity::Number);
    EXPECT_EQ(study.variables[2].change, Change::Add);
    ASSERT_EQ(study.correlations.size(), 1U);
    EXPECT_EQ(study.correlations[0].rank, 0.5);
    ASSERT_EQ(study.ties.size(), 1U);
    EXPECT_EQ(study.ties[0].factor, 0.5);
    EXPECT_EQ(study.ties[0].add, 1);
    EXPECT_FALSE(study.limits[0].noSolutionFails);
}

TEST(StudyFile, GroupsNameEverySideAndLayer) {
    const std::string text = head("grid") +
                             variable("all", "fields = \"SoilFriction.*.*\"\n" + Values) +
                             variable("right", "fields = \"SoilMoistWeight.right.*\"\nvalues = 1");
    const Study study = studyOf(text, "anchored-layered-water.dat");
    const Problem& base = study.base;
    EXPECT_EQ(study.variables[0].fields.size(),
              static_cast<std::size_t>(base.SoilLayerCount(Right) + base.SoilLayerCount(Left)));
    EXPECT_EQ(study.variables[1].fields.size(),
              static_cast<std::size_t>(base.SoilLayerCount(Right)));
}

TEST(StudyFile, GroupsOfSandAndClayGoByTheFrictionOfTheBase) {
    const std::string example = "anchored-clay.dat";
    for (const bool sand : {true, false}) {
        const std::string kind = sand ? "sand" : "clay";
        const ReadStudy read =
            readStudy("s.toml",
                      head("grid") + variable("c", "fields = \"SoilMoistWeight.*.*\"\nlayers = \"" +
                                                       kind + "\"\nvalues = 120"),
                      test::example(example));
        std::vector<std::string> expected;
        const Problem base = studyOf(head("grid") + variable("t", "fields=\"WallTopElev\"\n"
                                                                  "values=1"),
                                     example)
                                 .base;
        for (const int side : {Right, Left}) {
            for (int layer = 1; layer <= base.SoilLayerCount(side); ++layer) {
                if ((base.SoilFriction(side, layer) > 0) == sand) {
                    expected.push_back("SoilMoistWeight." +
                                       std::string(side == Right ? "right." : "left.") +
                                       std::to_string(layer));
                }
            }
        }
        if (expected.empty()) {
            EXPECT_THAT(read.fault, HasSubstr("names nothing that the base has")) << kind;
        } else {
            EXPECT_THAT(fieldsOf(read.study.variables.at(0)),
                        testing::UnorderedElementsAreArray(expected));
        }
    }
}

TEST(StudyFile, ARangeIsInclusiveAndItsValuesAreRounded) {
    const auto values = [](const std::string& range) {
        return studyOf(head("grid") + friction("range = " + range)).variables[0].values;
    };
    EXPECT_THAT(values("[0.1, 0.5, 0.1]"), ElementsAre(0.1, 0.2, 0.3, 0.4, 0.5));
    EXPECT_THAT(values("[38, 26, -4]"), ElementsAre(38, 34, 30, 26));
    EXPECT_THAT(values("[1, 2, 0.4]"), ElementsAre(1, 1.4, 1.8));
    EXPECT_THAT(values("[5, 5, 1]"), ElementsAre(5));
    EXPECT_THAT(values("[-0.3, 0.3, 0.1]"), ElementsAre(-0.3, -0.2, -0.1, 0, 0.1, 0.2, 0.3));
}

TEST(StudyFile, FaultsNameFileLineAndWhatIsKnown) {
    struct Case {
        std::string text;
        std::string start; ///< of the fault
        std::string known; ///< somewhere in it
    };
    const std::string good = friction(Values);
    const std::string random = friction("distribution = \"Normal(32, 2)\"");
    const std::vector<Case> cases{
        {head("grid", "colour = 1") + good, "s.toml:4: [study]: unknown key \"colour\"", "base, "},
        {head("gird") + good, "s.toml:3: [study]: unknown method \"gird\"",
         "grid, one-at-a-time, sample, sensitivity, reliability, target, fragility"},
        {head("grid", "units = \"metric\"") + good, "s.toml:4: [study]: unknown units \"metric\"",
         "us, si"},
        {head("grid", "wedge = \"x\"") + good, "s.toml:4: [study]: unknown wedge", "sweep, fixed"},
        {head("grid", "design = \"x\"") + good, "s.toml:4: [study]: unknown design",
         "monte-carlo, latin-hypercube, sobol"},
        {head("grid", "amendments = [\"x\"]") + good, "s.toml:4: [study]: unknown amendment", ","},
        {head("grid", "outputs = [\"depth\"]") + good, "s.toml:4: unknown output \"depth\"",
         "penetration, bottom,"},
        {head("grid", "outputs = [\"factorOfSafety\"]") + good,
         "s.toml:4: unknown output \"factorOfSafety\"", "penetration"},
        {head("grid", "outputs = [\"note.x\"]") + good, "s.toml:4: unknown note \"x\"",
         "no-reserve"},
        {head("grid", "outputs = 3") + good, "s.toml:4: [study]: outputs must be", ""},
        {head("sample", "size = 9\nseed = -1") + random,
         "s.toml:5: [study]: seed must be at least 0", ""},
        {head("sample", "size = 9\nseed = 1.5") + random,
         "s.toml:5: [study]: seed must be a whole number", ""},
        {head("grid", "maxFs = 0") + good, "s.toml:4: [study]: maxFs must be", ""},
        {"[[study]]\nbase = 1\n", "s.toml:1:", "[study]"},
        {"x = [\n", "s.toml:", ""},
        {"[study]\nmethod = \"grid\"\n", "s.toml:1: [study] needs \"base\"", ""},
        {"[study]\nbase = \"a\"\n", "s.toml:1: [study] needs \"method\"", ""},
        {head("grid"), "s.toml:1: a [[variable]] is missing", ""},
        {good, "s.toml:1: a table [study] is missing", ""},
        {head("grid") + "[other]\n", "s.toml:5: the study: unknown key \"other\"",
         "study, variable, correlation, tie, limit, target"},
        {head("grid") + "[variable]\nname = \"a\"\n", "s.toml:5: \"variable\" must be written", ""},
        {head("grid") + variable("f", "fields = \"SoilFrictoin.left.1\"\n" + Values),
         "s.toml:7: [[variable]]: fields", "SoilFriction"},
        {head("grid") + variable("f", "fields = \"SoilFriction.left.9\"\n" + Values),
         "s.toml:7: [[variable]]: fields SoilFriction.left.9", ""},
        {head("grid") + variable("f", "fields = \"Water*.left\"\n" + Values),
         "s.toml:7: [[variable]]: fields \"Water*.left\" names nothing that the base has", ""},
        {head("grid") +
             variable("f", "fields = [\"SoilFriction.left.1\", \"WallTopElev\"]\n" + Values),
         "s.toml:7: [[variable]]: fields measure different things", "WallTopElev"},
        {head("grid") +
             variable("f", "fields = \"SoilFriction.left.1\"\nlayers = \"sand\"\n" + Values),
         "s.toml:8: [[variable]]: layers", "*"},
        {head("grid") + friction("change = \"plus\"\n" + Values),
         "s.toml:8: [[variable]]: unknown change \"plus\"", "set, add, multiply"},
        {head("grid") + friction("range = [3, 2, 1]"), "s.toml:8: [[variable]]: range is empty",
         ""},
        {head("grid") + friction("range = [2, 3, 0]"), "s.toml:8: [[variable]]: range is empty",
         ""},
        {head("grid") + friction("range = [2, 3]"), "s.toml:8: [[variable]]: range must be", ""},
        {head("grid") + friction("range = [0, 1, 1e-9]"), "s.toml:8: [[variable]]: range has more",
         ""},
        {head("grid") + friction("values = []"), "s.toml:8: [[variable]]: values is empty", ""},
        {head("grid") + friction("values = [nan]"), "s.toml:8: [[variable]]: values must be", ""},
        {head("grid") + friction("low = 3"), "s.toml:5: [[variable]] needs \"high\"", ""},
        {head("grid") + friction(""), "s.toml:5: [[variable]] friction needs one of", ""},
        {head("grid") + friction(Values + "\nbounds = [1, 2]"),
         "s.toml:9: [[variable]]: bounds belongs to a distribution", ""},
        {head("grid") + variable("id", Values), "s.toml:6: [[variable]]: name \"id\" has a", ""},
        {head("grid") + variable("maxMoment", Values), "s.toml:6: [[variable]]: name \"maxMoment\"",
         "output"},
        {head("grid") + variable("MAXMOMENTELEV", Values), "s.toml:6:", "output"},
        {head("grid") + variable("a b", Values), "s.toml:6: [[variable]]: name must have", ""},
        {head("grid") + good + variable("Friction", Values),
         "s.toml:10: [[variable]]: name \"Friction\" is there already", ""},
        {head("sample", "size = 9") + friction("distribution = \"Nromal(32, 2)\""),
         "s.toml:8: [[variable]]: distribution unknown distribution \"Nromal\"",
         "LogNormalMuSigma, "},
        {head("sample", "size = 9") + friction("distribution = \"Normal(32)\""),
         "s.toml:8: [[variable]]: distribution has the parameters mean", "deviation"},
        {head("sample", "size = 9") + friction("distribution = \"Normal(32, -2)\""),
         "s.toml:8: [[variable]]: distribution \"Normal(32, -2)\" cannot be", ""},
        {head("sample", "size = 9") + friction("distribution = \"Normal\""),
         "s.toml:8: [[variable]]: distribution must be NAME(NUMBER, ...)", ""},
        {head("sample", "size = 9") + friction("distribution = \"Normal(32, 2)\"\nbounds = [3, 2]"),
         "s.toml:9: [[variable]]: bounds must be", ""},
        {head("sample", "size = 9") + friction("distribution = \"Uniform(1, 2)\"\nbounds = [5, 6]"),
         "s.toml:8: [[variable]]: distribution", "cannot be"},
        {head("sample") + random, "s.toml:1: [study] needs \"size\"", ""},
        {head("sample", "size = 0") + random, "s.toml:4: [study]: size must be at least 1", ""},
        {head("sample", "size = 9000000000000000000") + random, "s.toml:4: [study]: size", ""},
        {head("sample", "design = \"sobol\"\nsize = 4294967297") + random,
         "s.toml:5: [study]: size sobol has no more than", ""},
        {head("sample", "size = 9") + good, "s.toml:5: variable friction needs a distribution", ""},
        {head("grid") + random, "s.toml:5: variable friction needs values", ""},
        {head("sample", "size = 9") + random +
             "[[correlation]]\nbetween = [\"friction\", \"cohesion\"]\nrank = 0.4\n",
         "s.toml:10: unknown variable \"cohesion\"", "friction"},
        {head("sample", "size = 9") + random + variable("b", "values = 1") +
             "[[correlation]]\nbetween = [\"friction\", \"b\"]\nrank = 0.4\n",
         "s.toml:13: [[correlation]]: between b has no distribution", ""},
        {head("grid") + good + limit("deep", "depth > 20"),
         "s.toml:11: [[limit]]: state unknown \"depth\"", "penetration"},
        {head("grid") + good + limit("deep", "penetration > 20", "noSolution = \"x\""),
         "s.toml:12: [[limit]]: unknown noSolution \"x\"", "fails, safe"},
        {head("grid") + good + limit("Friction", "penetration > 20"),
         "s.toml:10: [[limit]]: name \"Friction\" is taken", ""},
        {head("grid") + good + limit("PENETRATION", "penetration > 20"),
         "s.toml:10: [[limit]]: name \"PENETRATION\" is taken", ""},
        {head("grid") + good + "[[tie]]\nfield = \"WallTopElev\"\nto = \"SoilFriction.left.1\"\n",
         "s.toml:11: [[tie]]: to measures something else", ""},
        {head("reliability") + random, "s.toml:1: a [[limit]] is missing", ""},
        {head("fragility", "size = 9\nalong = \"x\"") + random, "s.toml:5: unknown variable \"x\"",
         "friction"},
        {head("fragility", "size = 9\nalong = \"friction\"") + random,
         "s.toml:5: [study]: along must have values", ""},
        {head("grid", "along = \"friction\"") + good, "s.toml:4: [study]: along belongs to", ""},
        {head("target") + good, "s.toml:1: the method target needs a table [target]", ""},
        {head("grid") + good + "[target]\noutput = \"penetration\"\nvalue = 1\n",
         "s.toml:9: [target] belongs to the method target", ""},
        {head("target") + good + "[target]\noutput = \"x\"\nvalue = 1\n",
         "s.toml:10: unknown output \"x\"", "penetration"},
        {head("target") + random + "[target]\noutput = \"penetration\"\nvalue = 1\n",
         "s.toml:5: variable friction needs values", ""},
    };
    for (const Case& one : cases) {
        EXPECT_THAT(faultOf(one.text), AllOf(StartsWith(one.start), HasSubstr(one.known)))
            << one.text;
    }
}

TEST(StudyFile, CorrelationsThatCannotBeTogetherAreRefused) {
    std::string text = head("sample", "size = 9");
    for (const char* name : {"a", "b", "c"}) {
        text += variable(name, "distribution = \"Normal(0, 1)\"");
    }
    text += "[[correlation]]\nbetween = [\"a\", \"b\"]\nrank = 0.9\n"
            "[[correlation]]\nbetween = [\"b\", \"c\"]\nrank = 0.9\n";
    // Only together with the third can the two be.
    EXPECT_THAT(faultOf(text), StartsWith("s.toml:17: the correlations cannot be together"));
    studyOf(text + "[[correlation]]\nbetween = [\"a\", \"c\"]\nrank = 0.8\n");
    EXPECT_THAT(faultOf(text + "[[correlation]]\nbetween = [\"a\", \"c\"]\nrank = -0.9\n"),
                StartsWith("s.toml:20: the correlations cannot be together"));
    EXPECT_THAT(faultOf(text + "[[correlation]]\nbetween = [\"b\", \"a\"]\nrank = -0.9\n"),
                HasSubstr("between b and a there is a correlation already"));
}

TEST(StudyFile, SensitivityWithCorrelationsIsRefused) {
    EXPECT_THAT(faultOf(head("sensitivity", "size = 9") +
                        variable("a", "distribution = \"Normal(0, 1)\"") +
                        variable("b", "distribution = \"Normal(0, 1)\"") +
                        "[[correlation]]\nbetween = [\"a\", \"b\"]\nrank = 0.5\n"),
                StartsWith("s.toml:11: [[correlation]]: Sobol' indices are those of independent"));
}

TEST(StudyFile, AFragilityAlongAValueTwiceIsRefused) {
    EXPECT_THAT(faultOf(head("fragility", "size = 9\nalong = \"s\"") +
                        variable("s", "values = [1, 2, 1]") +
                        variable("r", "distribution = \"Normal(0, 1)\"") + limit("a", "s > r")),
                StartsWith("s.toml:6: variable s has a value twice"));
}

TEST(StudyFile, SobolSamplesAroundPointsNeedACoordinateMore) {
    std::string variables;
    for (int n = 0; n < 40; ++n) {
        variables += variable("x" + std::to_string(n), "distribution = \"Normal(0, 1)\"");
    }
    const std::string start = "design = \"sobol\"\nsize = 9\n";
    studyOf(head("sample", start) + variables);
    EXPECT_THAT(faultOf(head("reliability", start + "algorithm = \"importance\"") + variables +
                        limit("a", "x1 > 3")),
                HasSubstr("sobol has no more than 40"));
}

TEST(StudyFile, KeysThatTheMethodDoesNotHeedAreRefused) {
    const std::string random = friction("distribution = \"Normal(32, 2)\"");
    const std::string deep = limit("deep", "penetration > 20");
    for (const std::string key : {"design = \"sobol\"", "size = 10000", "seed = 2"}) {
        const std::string name = key.substr(0, key.find(' '));
        for (const std::string& text :
             {head("reliability", key) + random + deep,
              head("reliability", key + "\nalgorithm = \"form\"") + random + deep,
              head("grid", key) + friction(Values), head("one-at-a-time", key) + friction(Values),
              head("target", key) + friction(Values) +
                  "[target]\noutput = \"penetration\"\nvalue = 14\n"}) {
            EXPECT_THAT(faultOf(text),
                        StartsWith("s.toml:4: [study]: " + name + " means nothing to the method"))
                << text;
        }
    }
    EXPECT_THAT(faultOf(head("sample", "algorithm = \"form\"\nsize = 9") + random),
                StartsWith("s.toml:4: [study]: algorithm belongs to the method reliability"));
    EXPECT_THAT(faultOf(head("sensitivity", "size = 1") + random),
                StartsWith("s.toml:4: [study]: size must be at least 2"));
    EXPECT_THAT(faultOf(head("one-at-a-time") + variable("a", "distribution = \"Normal(0, 1)\"") +
                        variable("b", "distribution = \"Normal(0, 1)\"") +
                        "[[correlation]]\nbetween = [\"a\", \"b\"]\nrank = 0.5\n"),
                StartsWith("s.toml:11: [[correlation]]: means nothing to the method"));
}

TEST(StudyFile, AFieldIsSetOnceAlone) {
    const std::string top = "fields = \"WallTopElev\"\nvalues = 14";
    EXPECT_THAT(faultOf(head("grid") + variable("a", top) + variable("b", top)),
                StartsWith("s.toml:9: variable b: WallTopElev is changed by a variable before it"));
    EXPECT_THAT(
        faultOf(head("grid") + variable("a", top + "\nchange = \"add\"") + variable("b", top)),
        HasSubstr("is changed by a variable before it"));
    EXPECT_THAT(faultOf(head("grid") + variable("a", "fields = [\"SoilFriction.left.1\", "
                                                     "\"SoilFriction.*.*\"]\nchange = \"add\"\n"
                                                     "values = 1")),
                StartsWith("s.toml:5: variable a: SoilFriction.left.1 is named twice"));
    studyOf(head("grid") + variable("a", top) + variable("b", top + "\nchange = \"add\""));
}

TEST(StudyFile, ALimitStateMayNotHaveTheNameOfANoteThatIsAskedFor) {
    const std::string rest = friction(Values) + limit("Note.no-reserve", "penetration > 20");
    EXPECT_THAT(faultOf(head("grid", "outputs = [\"note.no-reserve\"]") + rest),
                StartsWith("s.toml:10: [[limit]]: name \"Note.no-reserve\" is taken"));
    studyOf(head("grid") + rest);
}

TEST(StudyFile, BoundsMayBeOpenOnOneSide) {
    const auto figures = [](const std::string& bounds) {
        return figuresOf(
            studyOf(head("sample", "size = 9") +
                    friction("distribution = \"Exponential(1, 0)\"\nbounds = " + bounds))
                .variables[0]);
    };
    // Cut below at 2 an exponential distribution is the same again, 2 further on: mean 2 + 1, 5 %
    // quantile 2 - ln 0.95.
    EXPECT_NEAR(figures("[2, inf]").mean, 3, 1e-9);
    EXPECT_NEAR(figures("[2, inf]").low, 2 - std::log(0.95), 1e-9);
    // Cut above at 1: its 95 % quantile is -ln(1 - 0.95 (1 - exp(-1))).
    EXPECT_NEAR(figures("[-inf, 1]").high, -std::log(1 - 0.95 * (1 - std::exp(-1))), 1e-9);
    EXPECT_THAT(faultOf(head("sample", "size = 9") +
                        friction("distribution = \"Normal(1, 1)\"\nbounds = [inf, 1]")),
                HasSubstr("bounds must be [least, largest]"));
}

TEST(StudyFile, AFileThatIsNotThereIsAWrongStudyFile) {
    const StudyDesk desk;
    std::filesystem::create_directory(desk.file("folder"));
    for (const char* name : {"nowhere.toml", "folder"}) {
        for (const std::vector<std::string>& arguments :
             {std::vector<std::string>{"check", desk.file(name)},
              std::vector<std::string>{"run", desk.file(name), "--output", desk.file("o")},
              std::vector<std::string>{"slurm", desk.file(name), "--output", desk.file("o"),
                                       "--parts", "2"}}) {
            const CommandRun run = StudyDesk::run(arguments);
            EXPECT_EQ(run.status, StatusUsage) << arguments[0];
            EXPECT_THAT(run.err, HasSubstr(desk.file(name) + ": "));
        }
    }
    EXPECT_FALSE(std::filesystem::exists(desk.file("o")));
}

TEST(StudyFile, CheckTellsWhatElseIsAsked) {
    const StudyDesk desk;
    const std::string drawn = "distribution = \"Normal(32, 2)\"\nbounds = [26, inf]";
    CommandRun run = StudyDesk::run(
        {"check",
         desk.write("r.toml", head("reliability") + friction(drawn) +
                                  variable("b", "distribution = \"Normal(0, 1)\"") +
                                  "[[correlation]]\nbetween = [\"friction\", \"b\"]\nrank = 0.5\n"
                                  "[[tie]]\nfield = \"SoilWallFriction.left.1\"\n"
                                  "to = \"SoilFriction.left.1\"\nfactor = 0.5\n" +
                                  limit("deep", "penetration > 20"))});
    EXPECT_EQ(run.status, StatusDone) << run.err;
    for (const char* line :
         {"Normal(32, 2) within 26 and inf", "correlation of friction and b: rank 0.5",
          "tie: SoilWallFriction.left.1 is 0.5 times SoilFriction.left.1 plus 0",
          "outputs: penetration maxMoment maxMomentElev", "algorithm: form",
          "20000 at the most, about"}) {
        EXPECT_THAT(run.out, HasSubstr(line));
    }
    run = StudyDesk::run({"check", desk.write("t.toml", head("target") + friction(Values) +
                                                            "[target]\noutput = \"penetration\"\n"
                                                            "value = 14\n")});
    EXPECT_THAT(run.out, HasSubstr("target: penetration 14"));
    EXPECT_THAT(run.out, HasSubstr("2 walls and about 40 by halving"));
}

TEST(StudyFile, MessagesOfTheLibraryStayInside) {
    const StudyDesk desk;
    desk.write("s.toml",
               head("sample", "size = 9") + friction("distribution = \"Student(1, 32, 1)\""));
    EXPECT_EQ(waitFor(start({"run", desk.file("s.toml"), "--output", desk.file("o"), "--quiet"},
                            desk.file("messages"))),
              0);
    EXPECT_EQ(desk.read("messages"), "");
}

TEST(StudyFile, GridsBeyondAllCountingAreRefused) {
    std::string text = head("grid");
    for (const char* name : {"a", "b", "c", "d"}) {
        text += variable(name, "range = [1, 100000, 1]");
    }
    EXPECT_THAT(faultOf(text), HasSubstr("variants"));
}

TEST(StudyFile, OutputsOfAnchoredWallsHaveTwoLevels) {
    const Study study = studyOf(head("grid", "outputs = [\"anchorForce\", \"maxMoment_fixed\"]") +
                                    variable("a", "fields = \"AnchorElev\"\nvalues = 15"),
                                "anchored-sand.dat");
    EXPECT_THAT(outputsOf(study), ElementsAre("anchorForce_free", "anchorForce_fixed",
                                              "maxMoment_fixed", "maxMomentElev_fixed"));
}

TEST(StudyFile, OnlyFixedEarthHasAToeReaction) {
    const std::string rest = variable("a", "fields = \"AnchorElev\"\nvalues = 15");
    const Study study = studyOf(head("grid", "outputs = [\"toeReaction\"]") + rest +
                                    limit("held", "toeReaction < 1"),
                                "anchored-sand.dat");
    EXPECT_THAT(outputsOf(study), ElementsAre("toeReaction_fixed"));
    // Not reached by a level that has none.
    EXPECT_EQ(study.limits[0].condition.alternatives(false).size(), 1U);
    EXPECT_THAT(
        faultOf(head("grid", "outputs = [\"toeReaction_free\"]") + rest, "anchored-sand.dat"),
        HasSubstr("unknown output"));
}

TEST(StudyFile, AnOutputByItsTwoNamesIsOneColumn) {
    const std::string grid = friction("values = [30, 32]");
    EXPECT_THAT(outputsOf(studyOf(head("grid", "outputs = [\"bottom\", \"bottomElev\"]") + grid)),
                ElementsAre("bottom"));
    const std::string fault = faultOf(head("grid", "outputs = [\"depth\"]") + grid);
    EXPECT_THAT(fault, AllOf(HasSubstr("bottom,"), Not(HasSubstr("bottomElev"))));
}

TEST(StudyFile, ParametersOfDistributionsAreToldInWords) {
    const auto faultWith = [](const std::string& distribution) {
        return faultOf(head("sample", "size = 9") +
                       friction("distribution = \"" + distribution + "\""));
    };
    EXPECT_THAT(faultWith("Normal(1)"), HasSubstr("has the parameters mean, deviation"));
    EXPECT_THAT(faultWith("LogUniform(1)"), HasSubstr("aLog (logarithm of the least value), bLog"));
    EXPECT_THAT(faultWith("Nothing(1)"), Not(HasSubstr("Dirichlet")));
}

TEST(StudyFile, ATargetOfAnAnchoredWallNamesItsLevel) {
    const std::string text = head("target") +
                             variable("a", "fields = \"AnchorElev\"\nlow = 10\nhigh = 18") +
                             "[target]\nvalue = 10\noutput = ";
    EXPECT_THAT(faultOf(text + "\"penetration\"\n", "anchored-sand.dat"),
                HasSubstr("penetration_free, penetration_fixed"));
    studyOf(text + "\"penetration_fixed\"\n", "anchored-sand.dat");
}

TEST(StudyFile, ABaseThatIsRefusedIsNamed) {
    const StudyDesk desk;
    const std::string good = head("grid") + friction(Values);
    desk.write("wall.dat", "'NO WALL\nCONTROL NONSENSE\nFINISHED\n");
    CommandRun run = StudyDesk::run({"check", desk.write("s.toml", good)});
    EXPECT_EQ(run.status, StatusUsage);
    EXPECT_THAT(run.err, AllOf(StartsWith(desk.file("s.toml") + ":2: [study]: base"),
                               HasSubstr("wall.dat is refused: ")));
    std::filesystem::remove(desk.file("wall.dat"));
    run = StudyDesk::run({"run", desk.file("s.toml"), "--output", desk.file("o")});
    EXPECT_EQ(run.status, StatusUsage);
    EXPECT_THAT(run.err, HasSubstr("wall.dat"));
    EXPECT_FALSE(std::filesystem::exists(desk.file("o")));
}

TEST(StudyFile, CheckTellsWhatWouldRun) {
    const StudyDesk desk;
    const std::string text = head("sample", "size = 1200") +
                             friction("distribution = \"LogNormalMuSigma(32, 2)\"") +
                             limit("deep", "penetration > 20");
    const CommandRun run = StudyDesk::run({"check", desk.write("s.toml", text)});
    EXPECT_EQ(run.status, StatusDone) << run.err;
    EXPECT_THAT(run.out, HasSubstr("sample of"));
    EXPECT_THAT(run.out, HasSubstr("mean 32 deg, deviation 2 deg"));
    // Quantiles of the log-normal distribution by hand: sigma of the logarithm
    // sqrt(ln(1 + (2/32)^2)) = 0.062439, mu = ln 32 - sigma^2 / 2 = 3.463787, z(0.95) = 1.644854.
    EXPECT_THAT(run.out, HasSubstr("5 % 28.8204 deg, 95 % 35.3921 deg"));
    EXPECT_THAT(run.out, HasSubstr("limit deep: penetration > 20"));
    EXPECT_THAT(run.out, HasSubstr("1,200 variants"));
}

TEST(StudyFile, CheckTellsOfFactorsOfSafety) {
    const StudyDesk desk;
    const std::string text = "[study]\nbase = \"analysis-cantilever.dat\"\nmethod = \"sample\"\n"
                             "size = 10\n" +
                             friction("distribution = \"Normal(33, 2)\"") +
                             limit("unsafe", "factorOfSafety < 1");
    const CommandRun run = StudyDesk::run({"check", desk.write("s.toml", text)});
    EXPECT_EQ(run.status, StatusDone) << run.err;
    EXPECT_THAT(run.out, HasSubstr("to 0.1 FT of the bottom only"));
}

} // namespace korvane::study::test
