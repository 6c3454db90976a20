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

/// The fixed moment, a whole number of seconds; false where there is none.
bool fixedMoment(std::tm& moment) {
    const std::string_view text = fixedMomentText();
    long long seconds = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (result.ec != std::errc{} || result.ptr != text.data() + text.size()) {
        return false;
    }
    const auto time = static_cast<std::time_t>(seconds);
    return gmtime_r(&time, &moment) != nullptr;
}

} // namespace

MomentText momentText() {
    std::tm moment{};
    if (!fixedMoment(moment)) {
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
    std::tm moment{};
    return !fixedMomentText().empty() && !fixedMoment(moment);
}

} // namespace korvane
