// Axes and marks of plots.
#include "study/chart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <regex>

namespace korvane::study::test {

using testing::HasSubstr;
using testing::Not;

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();

std::size_t countOf(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    return static_cast<std::size_t>(
        std::distance(std::sregex_iterator(text.begin(), text.end(), expression), {}));
}

/// Where a text of a figure stands.
std::pair<double, double> placeOf(const std::string& svg, const std::string& text) {
    std::smatch found;
    const std::regex expression("<text x=\"([-0-9.]+)\" y=\"([-0-9.]+)\"[^>]*>" + text + "<");
    if (!std::regex_search(svg, found, expression)) {
        ADD_FAILURE() << text;
        return {};
    }
    return {std::stod(found[1]), std::stod(found[2])};
}

} // namespace

TEST(StudyChart, AxesHoldAllNumbersThatThereAre) {
    const Axis axis = axisOver("x", {3, None, 1, std::numeric_limits<double>::infinity(), 2});
    EXPECT_DOUBLE_EQ(axis.low, 1 - 0.04 * 2);
    EXPECT_DOUBLE_EQ(axis.high, 3 + 0.04 * 2);
    for (const double number : {0.0, -7.0, 1e6}) {
        const Axis one = axisOver("x", {number});
        EXPECT_LT(one.low, number);
        EXPECT_GT(one.high, number);
    }
    EXPECT_LT(axisOver("x", {None}).low, axisOver("x", {None}).high);
}

TEST(StudyChart, ACurveHasAGapWhereThereIsNoNumber) {
    Chart chart({"x", 0, 5}, {"y", 0, 1});
    chart.curve({{0, 0}, {1, 0.5}, {2, None}, {3, 0.5}, {4, 1}, {5, 1}});
    EXPECT_EQ(countOf(chart.finish("title"), "<polyline"), 2U);
}

TEST(StudyChart, MarksBeyondTheAxesAreLeftOutAndLabelsKeepApart) {
    Chart chart({"x", 0, 10}, {"y", 0, 1}, 500, 200);
    chart.markX(5, "median 5.000");
    chart.markX(5.1, "mean 5.100");
    chart.markX(9, "far right");
    chart.markX(11, "outside");
    chart.markX(None, "nowhere");
    const std::string svg = chart.finish("title");
    EXPECT_THAT(svg, Not(HasSubstr("outside")));
    EXPECT_THAT(svg, Not(HasSubstr("nowhere")));
    EXPECT_DOUBLE_EQ(placeOf(svg, "median 5.000").first, 250);
    EXPECT_DOUBLE_EQ(placeOf(svg, "mean 5.100").first, 255);
    EXPECT_NE(placeOf(svg, "median 5.000").second, placeOf(svg, "mean 5.100").second);
    EXPECT_EQ(placeOf(svg, "median 5.000").second, placeOf(svg, "far right").second);
}

TEST(StudyChart, YPointsUp) {
    Chart chart({"x", 0, 10}, {"y", 0, 4}, 500, 200);
    chart.circle({5, 3}, "point");
    EXPECT_THAT(chart.finish("title"), HasSubstr("cx=\"250\" cy=\"50\""));
}

TEST(StudyChart, AnAxisOverLastDigitsHasRoomForTicks) {
    // The depths of one wall with its top at 12 and at 13.
    const Axis axis = axisOver("x", {13.837137775792618, 13.83713777579262});
    EXPECT_GT(axis.high - axis.low, 1);
    Chart chart({"x", 0, 10}, axis, 500, 200);
    EXPECT_THAT(chart.finish("title"), HasSubstr(">14<"));
}

TEST(StudyChart, BarsTellTheirNumbersAndWhatIsNothingAsZero) {
    const std::string svg =
        barChart({{"a", 0.98765, 0.9, 1.1}, {"b", -3e-9, None, None}}, "share", "Shares");
    EXPECT_THAT(svg, HasSubstr(">0.988<"));
    EXPECT_THAT(svg, HasSubstr(">0<"));
    EXPECT_THAT(svg, Not(HasSubstr("e-")));
    EXPECT_EQ(countOf(svg, "whisker"), 1U);
}

} // namespace korvane::study::test
