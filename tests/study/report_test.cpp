// Reports of finished studies: whole, by themselves, the same twice, and true to the rows.
#include "study_desk.h"

#include "study/answers.h"
#include "study/command_line.h"
#include "study/pictures.h"
#include "study/report.h"

#include "runtime/number_format.h"
#include "support/html_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <map>
#include <regex>

namespace korvane::study::test {

using korvane::test::EnvironmentVariable;
using testing::HasSubstr;

namespace {

std::string randomFriction() {
    return friction("distribution = \"Normal(32, 2)\"\nbounds = [26, 38]");
}
std::string randomWeight() {
    return variable("load_factor", "fields = [\"SoilMoistWeight.*.1\"]\nchange = \"multiply\"\n"
                                   "distribution = \"Normal(1, 0.05)\"\nbounds = [0.8, 1.2]");
}
std::string deep() {
    return limit("too deep", "penetration > 14");
}

/// A small study of each method, and of what each draws.
std::vector<std::pair<std::string, std::string>> studies() {
    const std::string both = randomFriction() + randomWeight() + deep();
    const std::string values = friction("values = [28, 30, 32, 34]");
    const std::string tops = "fields = [\"WallTopElev\"]\nrange = [12, 14, 0.25]";
    return {
        {"curve", head("grid") + values},
        {"curves", head("grid") + values +
                       variable("top", "fields = [\"WallTopElev\"]\n"
                                       "values = [12, 13]") +
                       deep()},
        {"map", head("grid") + friction("range = [28, 36, 1]") + variable("top", tops) + deep()},
        {"tornado", head("one-at-a-time") + friction("low = 30\nhigh = 34") +
                        variable("top", "fields = [\"WallTopElev\"]\nlow = 12\nhigh = 13")},
        {"sample", head("sample", "size = 60") + both},
        {"one_variable", head("sample", "size = 30") + randomFriction()},
        {"sensitivity", head("sensitivity", "size = 40\ndesign = \"sobol\"") + both},
        {"form", head("reliability") + both},
        {"monte_carlo", head("reliability", "algorithm = \"monte-carlo\"\nsize = 60") + both},
        {"importance", head("reliability", "algorithm = \"importance\"\nsize = 60") + both},
        {"target", head("target") + friction("low = 28\nhigh = 36") +
                       "[target]\noutput = \"penetration\"\nvalue = 14\n"},
        {"fragility", head("fragility", "size = 30\nalong = \"top\"") + randomFriction() +
                          variable("top", "fields = [\"WallTopElev\"]\nvalues = [12, 12.5, 13]") +
                          deep()},
    };
}

std::string report(const StudyDesk& desk, const std::string& output) {
    const CommandRun run = StudyDesk::run({"report", desk.file(output)});
    EXPECT_EQ(run.status, StatusDone) << run.err;
    return desk.read(output + "/report.html");
}

nlohmann::json summary(const StudyDesk& desk, const std::string& output) {
    return nlohmann::json::parse(desk.read(output + "/summary.json"));
}

/// Pairs of numbers of a path that has lines alone.
std::vector<std::pair<double, double>> pointsOf(const std::string& path) {
    std::vector<std::pair<double, double>> points;
    const std::regex pair("[ML](-?[0-9.]+) ?(-?[0-9.]+)");
    for (std::sregex_iterator one(path.begin(), path.end(), pair), end; one != end; ++one) {
        points.emplace_back(std::stod((*one)[1]), std::stod((*one)[2]));
    }
    return points;
}

} // namespace

TEST(StudyReport, IsWellFormedAndByItselfForEveryMethod) {
    for (const auto& [name, text] : studies()) {
        const StudyDesk desk;
        desk.runStudy(text, "o");
        const std::string html = report(desk, "o");
        EXPECT_EQ(korvane::test::htmlFault(html), "") << name;
        EXPECT_THAT(html, HasSubstr("class=\"chart\"")) << name;
        EXPECT_THAT(html, HasSubstr("class=\"wallfigure\"")) << name;
        EXPECT_LT(html.size(), 400000U) << name;
        const nlohmann::json told = summary(desk, "o");
        EXPECT_EQ(told["variants"], desk.number("o", "SELECT count(*) FROM variants")) << name;
        EXPECT_FALSE(told["statistics"].empty()) << name;
        EXPECT_FALSE(answersOf(FinishedStudy(desk.file("o"))).empty()) << name;
    }
}

TEST(StudyReport, ATornadoHasTheWidestWayFromAnyOfThreeWallsOnTop) {
    // Water at 16 or 17 FT on both sides moves little between the two and much from the base's 8;
    // friction has one end without a solution and is far from the base at the other.
    const StudyDesk desk;
    const auto ends = [](double low, double high) {
        return "low = " + std::to_string(low) + "\nhigh = " + std::to_string(high);
    };
    desk.runStudy("[study]\nbase = \"anchored-sand.dat\"\nmethod = \"one-at-a-time\"\n"
                  "outputs = \"penetration\"\n" +
                      variable("load", "fields = \"AnchorElev\"\n" + ends(15.5, 15.6)) +
                      variable("water", "fields = \"WaterElev.*\"\n" + ends(16, 17)) +
                      variable("friction", "fields = \"SoilFriction.*.1\"\n" + ends(36, 95)),
                  "o");
    report(desk, "o");
    const nlohmann::json told = summary(desk, "o");
    std::map<std::string, double> swings;
    std::vector<std::string> order;
    for (const nlohmann::json& bar : told["tornado"]) {
        if (bar["output"] != "penetration_free") {
            continue;
        }
        std::vector<double> three{told["outputs"][0]["base"].get<double>()};
        for (const char* end : {"low", "high"}) {
            if (!bar[end].is_null()) {
                three.push_back(bar[end].get<double>());
            }
        }
        order.push_back(bar["variable"]);
        swings[order.back()] = *std::max_element(three.begin(), three.end()) -
                               *std::min_element(three.begin(), three.end());
        EXPECT_EQ(three.size(), order.back() == "friction" ? 2U : 3U);
    }
    ASSERT_EQ(order.size(), 3U);
    EXPECT_EQ(order[2], "load");
    EXPECT_GT(swings["friction"], 1);
    EXPECT_GT(swings["water"], 1);
    EXPECT_GE(swings[order[0]], swings[order[1]]);
    const std::string answer = answersOf(FinishedStudy(desk.file("o"))).at(0);
    EXPECT_THAT(answer, HasSubstr("moves most with " + order[0]));
    EXPECT_EQ(answer.find(", no solution at 95") != std::string::npos, order[0] == "friction");
}

TEST(StudyReport, SameRowsGiveSameBytes) {
    const EnvironmentVariable moment("SOURCE_DATE_EPOCH", "1790000000");
    const std::string text = head("sample", "size = 300") + randomFriction() + deep();
    const StudyDesk desk;
    desk.runStudy(text, "one", {"--jobs", "1"});
    desk.runStudy(text, "two", {"--jobs", "2"});
    const std::string html = report(desk, "one");
    EXPECT_EQ(report(desk, "two"), html);
    EXPECT_EQ(report(desk, "one"), html);
    EXPECT_EQ(desk.read("two/summary.json"), desk.read("one/summary.json"));
    EXPECT_THAT(html, HasSubstr("21-SEPTEMBER-2026"));
}

TEST(StudyReport, HasNothingButItsDateFromTheClock) {
    const StudyDesk desk;
    desk.runStudy(head("sample", "size = 50") + randomFriction() + deep(), "o");
    std::vector<std::string> pages;
    std::vector<std::string> summaries;
    for (const char* seconds : {"0", "1790000000"}) {
        const EnvironmentVariable moment("SOURCE_DATE_EPOCH", seconds);
        const std::string html = report(desk, "o");
        EXPECT_THAT(html, HasSubstr(*seconds == '0' ? "1-JANUARY-1970" : "21-SEPTEMBER-2026"));
        pages.push_back(
            std::regex_replace(html, std::regex("\\d+-[A-Z]+-\\d{4}( [\\d:]+)?"), "DATE"));
        summaries.push_back(desk.read("o/summary.json"));
    }
    EXPECT_EQ(pages[0], pages[1]);
    EXPECT_EQ(summaries[0], summaries[1]);
}

TEST(StudyReport, AWrongMomentIsWrongUsage) {
    const EnvironmentVariable moment("SOURCE_DATE_EPOCH", "soon");
    const StudyDesk desk;
    desk.runStudy(head("grid") + friction("values = [30, 32]"), "o");
    const CommandRun run = StudyDesk::run({"report", desk.file("o")});
    EXPECT_EQ(run.status, StatusUsage);
    EXPECT_THAT(run.err, HasSubstr("SOURCE_DATE_EPOCH"));
}

TEST(StudyReport, NeedsAFinishedStudy) {
    const StudyDesk desk;
    const auto fault = [&](const std::string& folder) {
        const CommandRun run = StudyDesk::run({"report", desk.file(folder)});
        EXPECT_EQ(run.status, StatusFault);
        EXPECT_FALSE(std::filesystem::exists(desk.file(folder + "/report.html")));
        return run.err;
    };
    EXPECT_THAT(fault("nowhere"), HasSubstr("results.sqlite is missing"));
    const std::string text = head("grid") + friction("values = [30, 32]");
    desk.runStudy(text, "parts", {"--part", "1/2"});
    EXPECT_THAT(fault("parts"), HasSubstr("collect its parts"));
    {
        const Study study = studyOf(text);
        std::filesystem::create_directories(desk.file("half"));
        const Store store(desk.file("half/results.sqlite"), study, 0, 2);
    }
    EXPECT_THAT(fault("half"), HasSubstr("not finished"));
    std::filesystem::create_directories(desk.file("damaged"));
    desk.write("damaged/results.sqlite", std::string(5000, 'x'));
    EXPECT_THAT(fault("damaged"), HasSubstr("damaged"));
}

TEST(StudyReport, NamesCannotBecomeMarkup) {
    const StudyDesk desk;
    desk.runStudy(head("sample", "size = 20") + "# <script>alert(1)</script> & more\n" +
                      randomFriction() + limit("<b> & \\\"so\\\"", "penetration > 14"),
                  "o");
    const std::string html = report(desk, "o");
    EXPECT_EQ(korvane::test::htmlFault(html), "");
    EXPECT_THAT(html, HasSubstr("&lt;b&gt; &amp; &quot;so&quot;"));
    EXPECT_THAT(html, HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt; &amp; more"));
}

/// The bars of a tornado are the rows of the study: low and high of each variable alone.
TEST(StudyReport, TheTornadoHasTheRowsWithTheLargestFirst) {
    const StudyDesk desk;
    desk.runStudy(head("one-at-a-time", "outputs = [\"penetration\"]") +
                      variable("top", "fields = [\"WallTopElev\"]\nlow = 12\nhigh = 12.2") +
                      friction("low = 28\nhigh = 36"),
                  "o");
    report(desk, "o");
    const nlohmann::json tornado = summary(desk, "o")["tornado"];
    ASSERT_EQ(tornado.size(), 2U);
    EXPECT_EQ(tornado[0]["variable"], "friction");
    EXPECT_EQ(tornado[1]["variable"], "top");
    const auto penetration = [&](int id) {
        return desk.number("o",
                           "SELECT penetration FROM variants WHERE id = " + std::to_string(id));
    };
    EXPECT_EQ(tornado[0]["low"], penetration(3));
    EXPECT_EQ(tornado[0]["high"], penetration(4));
    EXPECT_EQ(tornado[0]["lowNumber"], 28);
    EXPECT_EQ(tornado[0]["highNumber"], 36);
    EXPECT_GT(tornado[0]["low"], tornado[0]["high"]); // weak sand asks for more depth
    EXPECT_EQ(tornado[1]["low"], penetration(1));
    EXPECT_EQ(summary(desk, "o")["outputs"][0]["base"], penetration(0));
    EXPECT_THAT(desk.read("o/report.html"), HasSubstr("penetration moves most with friction"));
}

TEST(StudyReport, TellsVariantsWithoutASolutionWithTheirReasons) {
    const StudyDesk desk;
    desk.runStudy(head("grid") + friction("values = [-2, -1, 32, 34]"), "o");
    const std::string html = report(desk, "o");
    EXPECT_THAT(html, HasSubstr("2 of 4 variants have no solution"));
    EXPECT_THAT(html, HasSubstr("SoilFriction"));
    const nlohmann::json told = summary(desk, "o");
    EXPECT_EQ(told["withoutSolution"], 2);
    std::uint64_t count = 0;
    for (const nlohmann::json& failure : told["failures"]) {
        EXPECT_EQ(failure["outcome"], "invalid-problem");
        count += failure["count"].get<std::uint64_t>();
    }
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(told["failures"][0]["first"], 0);
}

TEST(StudyReport, ReasonsThatDifferByNumbersAloneAreOne) {
    const StudyDesk desk;
    desk.runStudy(head("grid") + friction("values = [-2, -1, 32]") +
                      variable("top", "fields = [\"WallTopElev\"]\nvalues = [12, 13]"),
                  "o");
    report(desk, "o");
    const nlohmann::json failures = summary(desk, "o")["failures"];
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0]["count"], 4);
    const std::string reason = failures[0]["reason"];
    EXPECT_THAT(reason, testing::AllOf(HasSubstr("SoilFriction"), HasSubstr("…")));
    EXPECT_THAT(reason, testing::Not(HasSubstr("-2")));
    EXPECT_THAT(failures[0]["example"].get<std::string>(), HasSubstr("-2"));
    EXPECT_THAT(desk.read("o/report.html"), testing::Not(HasSubstr("other reasons")));
}

/// Rows of a search and of a tornado are no sample: their mean would hang on how it went.
TEST(StudyReport, OnlySamplesHaveMoments) {
    const StudyDesk desk;
    for (const auto& [name, text] : studies()) {
        if (name != "tornado" && name != "target" && name != "form") {
            continue;
        }
        desk.runStudy(text, name);
        const std::string html = report(desk, name);
        const auto numbers = [&desk, &name = name](const std::string& where) {
            return desk.number(name, "SELECT count(*) FROM statistics WHERE subject = "
                                     "'penetration' AND " +
                                         where);
        };
        EXPECT_EQ(numbers("name = 'mean' OR name LIKE 'quantile%'"), 0) << name;
        EXPECT_EQ(numbers("name = 'count'"), name == "tornado" ? 1 : 0) << name;
        EXPECT_THAT(html, testing::Not(HasSubstr("Median"))) << name;
        EXPECT_EQ(html.find("95 % from") == std::string::npos, name != "form") << name;
    }
}

TEST(StudyReport, AFragilityTellsTheOutputsOfEachValue) {
    const StudyDesk desk;
    desk.runStudy(studies().back().second, "o");
    const std::string html = report(desk, "o");
    EXPECT_THAT(html, HasSubstr("along top</caption>"));
    for (const char* value : {"12", "12.5", "13"}) {
        std::string mean;
        appendShortest(
            mean,
            roundedTo(desk.statistic("o", "penetration", std::string("mean at ") + value), 5));
        EXPECT_THAT(html, HasSubstr(">" + mean + "<")) << value;
    }
}

/// Correlated normal numbers z with z' R^-1 z = beta^2, which the sum of their squares is not.
TEST(StudyReport, BetaOfCorrelatedVariablesIsWorkedOutWithTheirCorrelations) {
    const StudyDesk desk;
    const std::string text =
        head("reliability") + variable("a", "distribution = \"Normal(0, 1)\"") +
        variable("b", "distribution = \"Normal(0, 1)\"") + limit("far", "a + b > 3");
    desk.runStudy(text, "free");
    EXPECT_THAT(report(desk, "free"), testing::Not(HasSubstr("<mi>R</mi>")));
    desk.runStudy(text + "[[correlation]]\nbetween = [\"a\", \"b\"]\nrank = 0.5\n", "o");
    EXPECT_THAT(report(desk, "o"), HasSubstr("<mi>R</mi>"));
    const double rho = 2 * std::sin(std::acos(-1.0) / 6 * 0.5);
    const double a = desk.statistic("o", "far", "normal number a");
    const double b = desk.statistic("o", "far", "normal number b");
    const double beta = desk.statistic("o", "far", "beta");
    EXPECT_NEAR(a, 1.5, 1e-4);
    EXPECT_NEAR((a * a - 2 * rho * a * b + b * b) / (1 - rho * rho), beta * beta, 1e-6);
    EXPECT_NEAR(beta, 3 / std::sqrt(2 + 2 * rho), 1e-6);
}

/// a + b = 3 of two standard normal numbers is a straight line, whatever the wall.
TEST(StudyReport, TheLineOfALimitStateIsWhereItIsReached) {
    const StudyDesk desk;
    desk.runStudy(head("reliability") + variable("a", "distribution = \"Normal(0, 1)\"") +
                      variable("b", "distribution = \"Normal(0, 1)\"") + limit("far", "a + b > 3"),
                  "o");
    std::vector<PictureGroup> groups;
    addScatter(groups, FinishedStudy(desk.file("o")));
    ASSERT_EQ(groups.size(), 1U);
    const std::string& svg = groups[0].pictures.at(0).svg;
    std::smatch line;
    ASSERT_TRUE(std::regex_search(svg, line, std::regex("<path d=\"([^\"]*)\" class=\"limit\"")));
    const auto points = pointsOf(line[1]);
    EXPECT_GT(points.size(), 20U);
    // The axes reach 0.6 times the 90 % range beyond it, and a margin of 4 % of that.
    const double end = 1.6448536269514722 * 2.2 * 1.08;
    double least = 10;
    double largest = -10;
    for (const auto& [x, y] : points) {
        const double a = -end + x / 460 * 2 * end;
        const double b = end - y / 340 * 2 * end;
        EXPECT_NEAR(a + b, 3, 0.01);
        least = std::min(least, a);
        largest = std::max(largest, a);
    }
    EXPECT_NEAR(least, 3 - end, 0.01);
    EXPECT_NEAR(largest, end, 0.01);
    EXPECT_THAT(groups[0].pictures[0].caption, HasSubstr("design point"));
}

/// The depth of the wall depends on friction alone; a variable without fields explains nothing.
TEST(StudyReport, SharesTellWhatMovesAnOutput) {
    const StudyDesk desk;
    desk.runStudy(head("sample", "size = 400\ndesign = \"latin-hypercube\"") + randomFriction() +
                      variable("idle", "distribution = \"Normal(5, 1)\""),
                  "o");
    const std::vector<double> shares = sharesOf(FinishedStudy(desk.file("o")), "penetration");
    ASSERT_EQ(shares.size(), 2U);
    EXPECT_GT(shares[0], 0.95); // nearly a straight line
    EXPECT_LT(shares[1], 0.03); // 1 / 400, give or take
}

TEST(StudyReport, TheFragilityCurveIsTheShareOfRowsAtEachValue) {
    const StudyDesk desk;
    desk.runStudy(head("fragility", "size = 40\nalong = \"top\"") + randomFriction() +
                      variable("top", "fields = [\"WallTopElev\"]\nvalues = [13, 12]") + deep(),
                  "o");
    report(desk, "o");
    const nlohmann::json curve = summary(desk, "o")["fragility"];
    ASSERT_EQ(curve.size(), 2U);
    for (const nlohmann::json& point : curve) {
        const std::string value = std::to_string(point["value"].get<double>());
        EXPECT_EQ(point["probability"],
                  desk.number("o", "SELECT avg(\"too deep\") FROM variants WHERE top = " + value));
        EXPECT_LE(point["low"], point["probability"]);
        EXPECT_GE(point["high"], point["probability"]);
    }
    EXPECT_EQ(curve[0]["value"], 12);
}

TEST(StudyReport, QuestionsNameWhatIsAsked) {
    for (const auto& [name, text] : studies()) {
        const std::string question = questionOf(studyOf(text));
        EXPECT_TRUE(question.ends_with("?")) << question;
        EXPECT_THAT(question, testing::AnyOf(HasSubstr("friction"), HasSubstr("too deep"))) << name;
    }
}

} // namespace korvane::study::test
