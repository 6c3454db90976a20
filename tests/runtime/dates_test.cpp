// The moment of a report as text.
#include "runtime/dates.h"

#include "runtime/number_text.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <optional>
#include <string>

namespace korvane {
namespace {

using test::EnvironmentVariable;

struct MomentRow {
    const char* seconds;
    const char* date;
    const char* time;
};

// Seconds of each moment by `date -u -d "2026-11-21 09:05:07" +%s` and so on.
TEST(MomentText, IsTheMomentOfSourceDateEpochInUniversalTime) {
    const EnvironmentVariable zone("TZ", "EST5");
    for (const MomentRow& row : {MomentRow{"1795251907", "21-NOVEMBER-2026", "9:05:07"},
                                 MomentRow{"1835395200", "29-FEBRUARY-2028", "0:00:00"},
                                 MomentRow{"1793923199", "5-NOVEMBER-2026", "23:59:59"},
                                 MomentRow{"0", "1-JANUARY-1970", "0:00:00"}}) {
        const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", row.seconds);
        EXPECT_EQ(momentText().date, row.date);
        EXPECT_EQ(momentText().time, row.time);
        EXPECT_EQ(fixedMoment(), std::stoll(row.seconds));
    }
}

// The present moment by another road: strftime in the C locale, upper case, leading zeros taken
// off.
std::array<std::string, 2> presentText(std::time_t now) {
    std::array<char, 64> date{};
    std::array<char, 64> time{};
    const std::tm* moment = std::localtime(&now);
    std::strftime(date.data(), date.size(), "%d-%B-%Y", moment);
    std::strftime(time.data(), time.size(), "%H:%M:%S", moment);
    const auto plain = [](std::string text) {
        return upperCase(text.front() == '0' ? text.substr(1) : text);
    };
    return {plain(date.data()), plain(time.data())};
}

void expectPresentMoment() {
    const std::time_t before = std::time(nullptr);
    const MomentText moment = momentText();
    const std::time_t after = std::time(nullptr);
    bool found = false;
    for (std::time_t now = before; now <= after; ++now) {
        found = found || presentText(now) == std::array{moment.date, moment.time};
    }
    EXPECT_TRUE(found) << moment.date << " " << moment.time;
}

TEST(MomentText, IsTheLocalTimeWithoutSourceDateEpoch) {
    const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", std::nullopt);
    for (const char* zoneName : {"UTC0", "EAST-11", "WEST+9"}) {
        const EnvironmentVariable zone("TZ", zoneName);
        expectPresentMoment();
    }
}

TEST(MomentText, TakesNoEpochFromATextThatIsNoWholeNumber) {
    for (const char* text : {"", "tomorrow", "12x", "99999999999999999999"}) {
        const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", text);
        expectPresentMoment();
        EXPECT_EQ(wrongFixedMoment(), *text != '\0') << text; // an empty one is none
        EXPECT_EQ(fixedMoment(), std::nullopt) << text;
    }
    const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", "1795251907");
    EXPECT_FALSE(wrongFixedMoment());
    EXPECT_EQ(fixedMoment(), 1795251907);
    const EnvironmentVariable none("SOURCE_DATE_EPOCH", std::nullopt);
    EXPECT_FALSE(wrongFixedMoment());
}

} // namespace
} // namespace korvane
