// Reports and JSON take memory for their text as it grows, and for nothing else.
#include "allocations/heap_allocations.h"
#include "runtime/json_text.h"
#include "runtime/print_lines.h"

#include <gtest/gtest.h>

#include <string>

namespace korvane {
namespace {

TEST(Allocations, AreCounted) {
    const long before = test::heapAllocations();
    const std::string text(1000, 'x');
    EXPECT_EQ(test::heapAllocations(), before + 1);
    EXPECT_EQ(text.size(), 1000U);
}

// 75,000 bytes by doubling from 15, and a line of 75: 13 and 3 times.
TEST(Allocations, OfAReportAreThoseOfItsGrowingText) {
    const long before = test::heapAllocations();
    PrintLines lines;
    for (int i = 0; i < 1000; ++i) {
        const double value = 12345.678 - 20 * i;
        lines.right(15, value, "####0.00").text("+").right(29, value, "0.0000E+00");
        lines.right(43, "*", value, "#####0.").right(61, value / 3, "0.0000E+00");
        lines.right(74, value, "####0.00").end();
    }
    EXPECT_LE(test::heapAllocations() - before, 16);
    EXPECT_EQ(lines.lineCount(), 1000);
    EXPECT_GT(lines.content().size(), 70000U);
}

TEST(Allocations, OfAJsonDocumentAreOneWhereItsLengthWasGuessed) {
    const long before = test::heapAllocations();
    JsonText json(100000);
    json.array([&] {
        for (int i = 0; i < 1000; ++i) {
            json.object([&] {
                json.member("value", i / 7.0);
                json.member("text", "a longer text than a short string \"holds\"");
            });
        }
    });
    const std::string text = json.take();
    EXPECT_EQ(test::heapAllocations() - before, 1);
    EXPECT_GT(text.size(), 50000U);
}

} // namespace
} // namespace korvane
