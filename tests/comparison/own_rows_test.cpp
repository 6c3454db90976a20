// Rows of one's own: what the file may say, and what is said of the rest.

#include "comparison/comparison_rows.h"
#include "comparison/own_rows.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace korvane;
using testing::HasSubstr;

namespace {

std::vector<OwnRow> rowsOf(std::string_view text) {
    const ReadOwnRows read = readOwnRows(text);
    EXPECT_EQ(read.fault, "");
    return read.rows;
}
std::string faultOf(std::string_view text) {
    const ReadOwnRows read = readOwnRows(text);
    EXPECT_TRUE(read.rows.empty());
    return "rows.toml:" + std::to_string(read.line) + ": " + read.fault;
}

} // namespace

TEST(OwnRows, NameFieldsWithAndWithoutQuotationMarks) {
    using enum FieldChange::Kind;
    const std::vector<OwnRow> rows = rowsOf("units = \"si\"\n"
                                            "[[row]]\n"
                                            "name = \"loose sand\"\n"
                                            "SoilFriction.left.1 = 28\n"
                                            "\"SoilFriction.right.1\" = 28.5\n"
                                            "AnchorElev = -3\n"
                                            "[[row]]\n"
                                            "name = \"more load\"\n"
                                            "multiply = { SoilMoistWeight.right.1 = 0.95 }\n"
                                            "add = { VUniformLoad.right = 5 }\n");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].name, "loose sand");
    EXPECT_EQ(rows[0].units, UnitSystem::SI);
    const auto has = [](const OwnRow& row, const FieldChange& change) {
        return std::find(row.changes.begin(), row.changes.end(), change) != row.changes.end();
    };
    EXPECT_EQ(rows[0].changes.size(), 3U);
    EXPECT_TRUE(has(rows[0], {{ProblemField::SoilFriction, Left, 1}, Set, 28}));
    EXPECT_TRUE(has(rows[0], {{ProblemField::SoilFriction, Right, 1}, Set, 28.5}));
    EXPECT_TRUE(has(rows[0], {{ProblemField::AnchorElev, Right, 1}, Set, -3}));
    EXPECT_EQ(rows[1].changes.size(), 2U);
    EXPECT_TRUE(has(rows[1], {{ProblemField::SoilMoistWeight, Right, 1}, Multiply, 0.95}));
    EXPECT_TRUE(has(rows[1], {{ProblemField::VUniformLoad, Right, 1}, Add, 5}));
    EXPECT_FALSE(rowsOf("[[row]]\nname = \"a\"\nAnchorElev = 1\n")[0].units);
}

TEST(OwnRows, FaultsNameFileLineAndWhatIsKnown) {
    const std::string head = "# rows\n[[row]]\nname = \"a\"\n";
    EXPECT_THAT(faultOf(head + "SoilFricton.left.1 = 30\n"),
                HasSubstr("rows.toml:4: 'SoilFricton.left.1' names no number of a problem; near "
                          "it: SoilFriction"));
    EXPECT_THAT(faultOf(head + "SoilFriction.left = 30\n"),
                HasSubstr("rows.toml:4: 'SoilFriction.left': SoilFriction takes a side and an "
                          "entry"));
    EXPECT_EQ(faultOf(head + "AnchorElev = \"high\"\n"),
              "rows.toml:4: 'AnchorElev' must be a finite number");
    EXPECT_EQ(faultOf(head + "AnchorElev = inf\n"),
              "rows.toml:4: 'AnchorElev' must be a finite number");
    EXPECT_EQ(faultOf(head + "AnchorElev = true\n"),
              "rows.toml:4: 'AnchorElev' must be a finite number");
    EXPECT_EQ(faultOf(head + "AnchorElev = 1\nadd = { AnchorElev = 1 }\n"),
              "rows.toml:5: 'AnchorElev' is changed twice in one row");
    EXPECT_THAT(faultOf(head + "add = 3\n"), HasSubstr("rows.toml:4: 'add' must be a table"));
    EXPECT_EQ(faultOf(head), "rows.toml:2: the row 'a' changes nothing");
    EXPECT_THAT(faultOf("\n[[row]]\nAnchorElev = 1\n"),
                HasSubstr("rows.toml:2: a row needs a name"));
    EXPECT_EQ(faultOf("[[row]]\nname = \"a\\nb\"\nAnchorElev = 1\n"),
              "rows.toml:2: a name is one line of text");
    EXPECT_EQ(faultOf("[[row]]\nname = \"kp-2\"\nAnchorElev = 1\n"),
              "rows.toml:2: there is a row 'kp-2' already");
    EXPECT_EQ(faultOf(head + "AnchorElev = 1\n[[row]]\nname = \"a\"\nAnchorElev = 2\n"),
              "rows.toml:6: there is a row 'a' already");
    EXPECT_EQ(faultOf("[[rows]]\nname = \"a\"\n"),
              "rows.toml:1: 'rows' is unknown here; known: units, row");
    EXPECT_EQ(faultOf("units = \"metric\"\n"), "rows.toml:1: units must be \"us\" or \"si\"");
    EXPECT_THAT(faultOf(""), HasSubstr("rows.toml:1: rows are told as [[row]] tables"));
    EXPECT_THAT(faultOf("row = 3\n"), HasSubstr("rows.toml:1: rows are told as [[row]] tables"));
    EXPECT_THAT(faultOf("[[row]]\nname = \"a\n"), HasSubstr("rows.toml:2: "));
    EXPECT_EQ(faultOf(head + "amendments = [\"surface-limit\",\n\"surface\"]\n"),
              "rows.toml:5: 'surface' is an unknown amendment; known: surface-limit, "
              "surface-slope, planes-past-horizontal, buoyant-layers, method-coefficients, "
              "method-sweep, method-fixed");
    EXPECT_THAT(faultOf(head + "amendments = [1]\n"), HasSubstr("rows.toml:4: '' is an unknown"));
    EXPECT_THAT(faultOf(head + "amendments = \"surface-limit\"\n"),
                HasSubstr("rows.toml:4: 'amendments' must be a list of names"));
    EXPECT_EQ(faultOf(head + "amendments = []\n"), "rows.toml:2: the row 'a' changes nothing");
}

TEST(OwnRows, TakeAmendmentsBesideChanges) {
    const auto rows = rowsOf("[[row]]\nname = \"a\"\n"
                             "amendments = [\"surface-slope\", \"method-fixed\"]\n"
                             "[[row]]\nname = \"b\"\namendments = [\"method-sweep\"]\n"
                             "AnchorElev = 1\n");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].amendments, (Amendments{.surfaceSlope = true, .methodFixed = true}));
    EXPECT_TRUE(rows[0].changes.empty());
    EXPECT_EQ(rows[1].amendments, (Amendments{.methodSweep = true}));
    EXPECT_EQ(rows[1].changes.size(), 1U);
}

TEST(OwnRows, ChangesSetAddAndMultiplyInTheirUnits) {
    using enum FieldChange::Kind;
    Problem problem = test::plainCantilever();
    const FieldAddress top{ProblemField::WallTopElev, Right, 1};
    problem.WallTopElev = 10;
    EXPECT_TRUE(applyChange({top, Add, 0.3048}, UnitSystem::SI, problem));
    EXPECT_DOUBLE_EQ(problem.WallTopElev, 11);
    EXPECT_TRUE(applyChange({top, Multiply, 2}, UnitSystem::SI, problem));
    EXPECT_DOUBLE_EQ(problem.WallTopElev, 22);
    EXPECT_TRUE(applyChange({top, Set, 3}, UnitSystem::US, problem));
    EXPECT_EQ(problem.WallTopElev, 3);
    const Problem before = problem;
    EXPECT_FALSE(applyChange({{ProblemField::AnchorElev, Right, 1}, Set, 3}, {}, problem));
    EXPECT_EQ(problem, before);
}
