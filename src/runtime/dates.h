// The moment of a report as text, with English names whatever the locale.
#pragma once

#include <optional>
#include <string>

namespace korvane {

/// Date as "21-NOVEMBER-2026" and time as "9:05:07" (24 hours, hour without leading zero).
struct MomentText {
    std::string date;
    std::string time;
};

/// The present moment in local time, or the one of the environment variable SOURCE_DATE_EPOCH
/// (UTC) where that is set, so that a report can be reproduced to the byte.
MomentText momentText();

/// The moment of SOURCE_DATE_EPOCH in seconds since 1970; nothing where it is not set or no moment.
std::optional<long long> fixedMoment();

/// True where SOURCE_DATE_EPOCH is set to what is no moment; the others then ignore it.
bool wrongFixedMoment();

} // namespace korvane
