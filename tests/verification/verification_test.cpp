// The verification holds where figures are right, and only there.
#include "verification/verification.h"

#include "runtime/file_text.h"
#include "support/support.h"
#include "verification/beam_figures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

/// Dry sand of 100 PCF, 30 degrees, 10 FT retained: 333.33 PSF active at 10 FT (Ka 1/3).
const char* const sand =
    "'DRY SAND\nCONTROL CANTILEVER DESIGN 1 1\nWALL 0\nSURFACE RIGHT 1 0 0\n"
    "SURFACE LEFT 1 0 -10\nSOIL BOTH STRENGTHS 1\n 100 100 30 0 0 0\nFINISHED\n";
/// Clay of 450 PSF under 15 x 120 PSF: 4c is not above the overburden, and no depth exists.
const char* const clay =
    "'CLAY\nCONTROL CANTILEVER DESIGN 1 1\nWALL 0\nSURFACE RIGHT 1 0 0\n"
    "SURFACE LEFT 1 0 -15\nSOIL BOTH STRENGTHS 1\n 120 120 0 450 0 0\nFINISHED\n";

/// A folder of case files.
struct Shelf {
    TemporaryFolder folder;

    void write(const std::string& name, const std::string& text) const {
        writeFile(folder.path() / name, text);
    }
    /// A case of the wall in dry sand with these lines.
    void ofSand(const std::string& name, const std::string& lines) const {
        write("sand.dat", sand);
        write(name, "title: a\nsource: b\ninput: sand.dat\n" + lines);
    }
    Verification verify() const { return verifyCases(casesIn(folder.path())); }
};

TEST(Verification, TellsARightFigureFromAWrongOne) {
    const Shelf shelf;
    shelf.ofSand("a.case", "check: active right 10 = 333.33 PSF within .01 because it is 1000 / 3\n"
                           "check: active right 10 = 333.30 PSF within .01 because it is wrong\n");
    const Verification verification = shelf.verify();
    ASSERT_EQ(verification.cases.size(), 1U);
    const auto& figures = verification.cases[0].figures;
    ASSERT_EQ(figures.size(), 2U);
    EXPECT_TRUE(figures[0].pass);
    EXPECT_NEAR(*figures[0].ourValue, 1000.0 / 3, 1e-9);
    EXPECT_EQ(figures[0].ours, "333.333");
    EXPECT_FALSE(figures[1].pass);
    EXPECT_FALSE(verification.holds());
    EXPECT_EQ(verification.passCount(), 1);
    const std::string table = verificationTable(verification);
    EXPECT_NE(table.find("333.33    333.333     0.0033       0.01 pass\n"), std::string::npos)
        << table;
    EXPECT_NE(table.find("333.30    333.333      0.033       0.01 FAIL\n"), std::string::npos)
        << table;
    EXPECT_NE(table.find("1 of 2 figures hold.\n"), std::string::npos) << table;
}

TEST(Verification, AFailureThatIsNotTheOneToldDoesNotHold) {
    const Shelf shelf;
    shelf.write("clay.dat", clay);
    shelf.write("right.case",
                "title: a\nsource: b\ninput: clay.dat\nfails: no-cantilever-bottom\n");
    shelf.write("wrong.case", "title: a\nsource: b\ninput: clay.dat\nfails: run-time-error\n");
    shelf.ofSand("solved.case", "fails: no-cantilever-bottom\n");
    const Verification verification = shelf.verify();
    ASSERT_EQ(verification.cases.size(), 3U);
    EXPECT_TRUE(verification.cases[0].figures[0].pass);
    EXPECT_FALSE(verification.cases[1].figures[0].pass); // solved
    EXPECT_EQ(verification.cases[1].figures[0].ours, "none");
    EXPECT_FALSE(verification.cases[2].figures[0].pass);
    EXPECT_EQ(verification.cases[2].figures[0].ours, "no-cantilever-bottom");
    EXPECT_EQ(verificationMessages(verification), "");
}

TEST(Verification, AWallWithoutTheSolutionThatItShouldHaveFailsEveryFigure) {
    const Shelf shelf;
    shelf.write("clay.dat", clay);
    shelf.write("a.case", "title: a\nsource: b\ninput: clay.dat\n"
                          "check: penetration 1 = 3 FT within 100 because so\n"
                          "check: coulomb-active 30 0 = .333333 within .001 because so\n");
    const Verification verification = shelf.verify();
    ASSERT_EQ(verification.figureCount(), 2);
    EXPECT_EQ(verification.passCount(), 0);
    EXPECT_EQ(verification.cases[0].figures[0].ours, "none");
    EXPECT_EQ(verificationMessages(verification).rfind("a: no solution: ", 0), 0U)
        << verificationMessages(verification);
}

TEST(Verification, ADamagedCaseIsToldAndStopsNoOther) {
    const Shelf shelf;
    shelf.ofSand("a.case",
                 "check: penetration 2 = 3 FT within 100 because it is no anchored wall\n");
    shelf.ofSand("b.case",
                 "check: active right 3.3 = 110 PSF within 100 because no row is there\n");
    shelf.write("c.case", "title: a\nsource: b\ninput: none.dat\nfails: no-cantilever-bottom\n");
    shelf.write("d.dat", "'NO WALL\n");
    shelf.write("d.case", "title: a\nsource: b\ninput: d.dat\nfails: no-cantilever-bottom\n");
    shelf.write("e.case", "title: a\nsource: b\n"
                          "check: log-rigidity 20 0 29E6 = 1 within 9 because I is zero\n");
    shelf.ofSand("f.case", "check: active right 10 = 333.33 PSF within .01 because so\n");
    const Verification verification = shelf.verify();
    EXPECT_FALSE(verification.holds());
    EXPECT_EQ(verification.figureCount(), 1);
    EXPECT_EQ(verification.passCount(), 1);
    const std::string messages = verificationMessages(verification);
    const std::string noValue =
        ":4: no value: the wall has no such level, or no grid row at the depth\n";
    const std::string start = shelf.folder.path().string() + "/";
    EXPECT_EQ(messages, start + "a.case" + noValue + start + "b.case" + noValue + start +
                            "c.case:3: none.dat: File not found\n" + start +
                            "d.case:3: d.dat: input refused\n" + start +
                            "e.case:3: Division by zero\n");
    EXPECT_NE(
        verificationTable(verification).find("1 of 1 figures hold; 5 case files are damaged."),
        std::string::npos);
}

TEST(Verification, TheShippedCasesAreThere) {
    const auto cases = shippedCases();
    ASSERT_GT(cases.size(), 20U);
    EXPECT_EQ(cases.front().parent_path(), fs::path(KORVANE_SOURCE_DIR) / "cases");
    const Verification verification = verifyCases(cases);
    EXPECT_TRUE(verification.holds())
        << verificationMessages(verification) << verificationTable(verification);
    EXPECT_GE(verification.figureCount(), 100);
    std::istringstream lines(verificationTable(verification));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 83U) << line; // the columns of a printed page
    }
}

TEST(Verification, AFolderWithoutCasesHasNone) {
    const TemporaryFolder folder;
    EXPECT_TRUE(casesIn(folder.path()).empty());
    EXPECT_TRUE(casesIn(folder.path() / "none").empty());
    EXPECT_FALSE(noCasesText().empty());
}

// w(z) = W z / L: sizes at 7.3 FT of a cantilever and of a span of 20 FT.
TEST(BeamFigures, AreThoseOfTheElasticLine) {
    const double L = 20;
    const double W = 600;
    const double z = 7.3;
    const BeamFigures fixed = beamAt({.fixed = true, .length = L, .load = W}, z);
    EXPECT_NEAR(std::fabs(fixed.shear), W * z * z / (2 * L), 1e-6);
    EXPECT_NEAR(std::fabs(fixed.moment), W * z * z * z / (6 * L), 1e-6);
    const double slope = W / (24 * L) * (std::pow(L, 4) - std::pow(z, 4));
    EXPECT_NEAR(std::fabs(fixed.rotation), slope, 1e-9 * slope);
    const double deflection =
        W / (120 * L) * (std::pow(z, 5) - 5 * std::pow(L, 4) * z + 4 * std::pow(L, 5));
    EXPECT_NEAR(std::fabs(fixed.deflection), deflection, 1e-9 * deflection);

    const BeamFigures simple = beamAt({.fixed = false, .length = L, .load = W}, z);
    EXPECT_NEAR(std::fabs(simple.shear), W * L / 6 - W * z * z / (2 * L), 1e-6);
    EXPECT_NEAR(std::fabs(simple.moment), W * L * z / 6 - W * z * z * z / (6 * L), 1e-6);
    const double sag =
        W * z / (360 * L) * (7 * std::pow(L, 4) - 10 * L * L * z * z + 3 * std::pow(z, 4));
    EXPECT_NEAR(std::fabs(simple.deflection), sag, 1e-9 * sag);
}

} // namespace
} // namespace korvane::test
