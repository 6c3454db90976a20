// Notes in metric units: the same words, each number converted.
#include "support/nasty_problem.h"
#include "told_wall.h"

#include <cmath>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace korvane::test {
namespace {

/// What one US unit of a text is in the metric one, by hand.
struct Told {
    const char* metric;
    double factor;
};
const std::map<std::string, Told> Units{
    {"FT", {"m", 0.3048}},
    {"PCF", {"kN/m3", 0.157087464}},
    {"PSF", {"kPa", 0.0478802590}},
    {"LB/FT", {"kN/m", 0.0145939029}},
};

std::vector<std::string> wordsOf(const std::string& text) {
    std::vector<std::string> words;
    std::istringstream each(text);
    for (std::string word; each >> word;) {
        while (word.size() > 1 && std::string(".,:;()").find(word.back()) != std::string::npos) {
            word.pop_back();
        }
        words.push_back(word);
    }
    return words;
}

/// Half of the last digit's place.
double halfPlace(const std::string& number) {
    const std::size_t point = number.find('.');
    const auto decimals = point == std::string::npos ? 0 : number.size() - point - 1;
    return 0.5 * std::pow(10, -static_cast<double>(decimals));
}

/// Adds the US units found to `seen`.
void expectConverted(const std::string& us, const std::string& si, std::set<std::string>& seen) {
    const auto feet = wordsOf(us);
    const auto metres = wordsOf(si);
    ASSERT_EQ(feet.size(), metres.size()) << us << "\n" << si;
    for (std::size_t i = 0; i < feet.size(); ++i) {
        const auto unit = i == 0 ? Units.end() : Units.find(feet[i]);
        if (unit == Units.end()) {
            const bool isNumber = i + 1 < feet.size() && Units.contains(feet[i + 1]);
            EXPECT_TRUE(isNumber || feet[i] == metres[i]) << us << "\n" << si;
            continue;
        }
        seen.insert(feet[i]);
        EXPECT_EQ(metres[i], unit->second.metric) << si;
        const double factor = unit->second.factor;
        EXPECT_NEAR(std::stod(metres[i - 1]), std::stod(feet[i - 1]) * factor,
                    halfPlace(metres[i - 1]) + halfPlace(feet[i - 1]) * factor + 1e-9)
            << us << "\n"
            << si;
    }
}

TEST(NotesInMetricUnits, HaveTheSameWordsAndConvertedNumbers) {
    RandomProblems plain(12);
    NastyProblems nasty(12);
    std::set<std::string> seen;
    for (int number = 0; number < 60; ++number) {
        ToldWall wall(number % 2 == 0 ? plain.next() : nasty.next().problem);
        const auto us = wall.notes();
        const auto si = wall.notes(NoteWork::All, UnitSystem::SI);
        ASSERT_EQ(us.size(), si.size());
        for (std::size_t i = 0; i < us.size(); ++i) {
            EXPECT_EQ(us[i].code, si[i].code);
            EXPECT_EQ(us[i].value, si[i].value); // of the records
            if (us[i].code != "metric-weight") {
                expectConverted(us[i].text, si[i].text, seen);
            }
        }
    }
    EXPECT_EQ(seen.size(), Units.size());
}

// 12 PCF are 1.885 kN/m3, perhaps tonnes.
TEST(NotesInMetricUnits, AWeightOfNoSoilLooksLikeOtherUnits) {
    Problem problem = plainCantilever();
    problem.SoilMoistWeight(Left, 1) = 12;
    const auto textOf = [&problem](UnitSystem units) {
        for (const Note& note : notesOnInput({.problem = problem, .units = units})) {
            if (note.code == "metric-weight") {
                return note.text;
            }
        }
        return std::string();
    };
    EXPECT_TRUE(textOf(UnitSystem::US)
                    .ends_with("is 12.00 PCF, which no soil weighs: it looks "
                               "like a value in other units, metric ones perhaps."));
    EXPECT_TRUE(textOf(UnitSystem::SI)
                    .ends_with("is 1.885 kN/m3, which no soil weighs: it looks "
                               "like a value in other units, metric ones perhaps."));
}

} // namespace
} // namespace korvane::test
