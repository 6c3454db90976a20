// korvane_walls COUNT SEED DIR: writes COUNT random problems as DIR/wall-00001.dat and so on.
// Four in ten are nasty. The same seed gives the same files everywhere.
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "runtime/runtime_error.h"
#include "support/nasty_problem.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string_view>

namespace {

using namespace korvane;

constexpr double nastyShare = 0.4;

template <class Number>
bool readWhole(std::string_view text, Number& number) {
    const char* end = text.data() + text.size();
    const auto [stopped, fault] = std::from_chars(text.data(), end, number);
    return fault == std::errc() && stopped == end;
}

void writeWalls(int count, std::uint64_t seed, const std::filesystem::path& folder) {
    test::Draws draws(seed);
    test::RandomProblems plain(seed);
    test::NastyProblems nasty(seed);
    std::filesystem::create_directories(folder);
    for (int wall = 1; wall <= count; ++wall) {
        const Problem problem = draws.chance(nastyShare) ? nasty.next().problem : plain.next();
        char name[40];
        std::snprintf(name, sizeof name, "wall-%05d.dat", wall);
        saveFile(folder / name, inputFileText(problem));
    }
}

} // namespace

int main(int argc, char** argv) {
    int count = 0;
    std::uint64_t seed = 0;
    if (argc != 4 || !readWhole(argv[1], count) || count < 0 || !readWhole(argv[2], seed)) {
        std::cerr << "usage: korvane_walls COUNT SEED DIR\n";
        return 2;
    }
    try {
        writeWalls(count, seed, argv[3]);
    } catch (const std::exception& fault) {
        std::cerr << "korvane_walls: " << fault.what() << "\n";
        return 1;
    }
    return 0;
}
