#include "runtime/dates.h"

#include <charconv>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <system_error>

namespace korvane {

namespace {

constexpr const char* monthNames[] = {"JANUARY",   "FEBRUARY", "MARCH",    "APRIL",
                                      "MAY",       "JUNE",     "JULY",     "AUGUST",
                                      "SEPTEMBER", "OCTOBER",  "NOVEMBER", "DECEMBER"};

void appendTwoDigits(std::string& text, int n) {
    text += static_cast<char>('0' + n / 10);
    text += static_cast<char>('0' + n % 10);
}

/// SOURCE_DATE_EPOCH; "" where it is not set.
std::string_view fixedMomentText() {
    const char* variable = std::getenv("SOURCE_DATE_EPOCH"); // NOLINT(concurrency-mt-unsafe)
    return variable == nullptr ? "" : variable;
}

} // namespace

std::optional<long long> fixedMoment() {
    const std::string_view text = fixedMomentText();
    long long seconds = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (result.ec != std::errc{} || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    std::tm moment{};
    const auto time = static_cast<std::time_t>(seconds);
    return gmtime_r(&time, &moment) != nullptr ? std::optional(seconds) : std::nullopt;
}

MomentText momentText() {
    std::tm moment{};
    if (const auto seconds = fixedMoment()) {
        const auto time = static_cast<std::time_t>(*seconds);
        gmtime_r(&time, &moment);
    } else {
        const std::time_t now = std::time(nullptr);
        localtime_r(&now, &moment);
    }
    MomentText text{std::to_string(moment.tm_mday), std::to_string(moment.tm_hour)};
    ((text.date += '-') += monthNames[moment.tm_mon]) += '-';
    text.date += std::to_string(1900LL + moment.tm_year);
    appendTwoDigits(text.time += ':', moment.tm_min);
    appendTwoDigits(text.time += ':', moment.tm_sec);
    return text;
}

bool wrongFixedMoment() {
    return !fixedMomentText().empty() && !fixedMoment();
}

} // namespace korvane
