// Hashes that tell whether texts and rows of a study are the same.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

namespace korvane::study {

/// FNV-1a of 64 bits (Fowler, Noll, Vo): tells whether two texts are the same, not who wrote them.
inline std::uint64_t textHash(const std::string& text) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    return hash;
}
inline std::string hashDigits(std::uint64_t hash) {
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(hash));
    return digits.data();
}
inline std::string hashOf(const std::string& text) {
    return hashDigits(textHash(text));
}

/// A number for the values of a row, cell by cell. Sums of these tell whether rows have changed,
/// in whatever order they came.
class RowDigest {
  public:
    void add(std::uint64_t bits) {
        state_ = (state_ ^ bits) * 0x9e3779b97f4a7c15U;
        state_ ^= state_ >> 32;
    }
    void add(std::int64_t number) { add(static_cast<std::uint64_t>(number)); }
    /// SQLite keeps no negative zero, and nothing for NaN.
    void add(double number) {
        add(std::isnan(number) ? Nothing : std::bit_cast<std::uint64_t>(number + 0.0));
    }
    void add(const std::string& text) { add(text.empty() ? Nothing : textHash(text)); }
    std::uint64_t value() const { return state_; }

  private:
    static constexpr std::uint64_t Nothing = 0x7ff8000000000000U;
    std::uint64_t state_ = 0x243f6a8885a308d3U;
};

} // namespace korvane::study
