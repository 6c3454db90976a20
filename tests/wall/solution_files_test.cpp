#include "wall/solution_files.h"

#include "runtime/file_text.h"
#include "support/pressure_bench.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <filesystem>

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

/// Places of the file's items, in bytes: 301 doubles are 2408 bytes.
constexpr std::size_t Moment = 2408;
constexpr std::size_t Shear = 4816;
constexpr std::size_t Deflection = 7224;
constexpr std::size_t Pressure = 9632;
constexpr std::size_t GridCount = 12040;
constexpr std::size_t Grid = 12042;
constexpr std::size_t Active = 14450;
constexpr std::size_t Passive = 24082; // 2 x 301 x 2 doubles, 9632 bytes, further on
constexpr std::size_t Marks = 33714;
constexpr std::size_t WaterSize = 4816; // 301 x 2 doubles

/// A solution whose every value tells its place.
struct FileBench : Bench {
    FileBench() {
        state->files.TempFolder = folder.path().string();
        auto& results = state->results;
        auto& pressures = state->pressures;
        for (int i = 1; i <= 301; ++i) {
            results.ResultElev(i) = i;
            results.ResultMoment(i) = 1000 + i;
            results.ResultShear(i) = 2000 + i;
            results.ResultDeflection(i) = 3000 + i;
            results.ResultPressure(i) = 4000 + i;
            state->grid.ElevGrid(i) = -i;
            for (const int k : {1, 2}) {
                pressures.WaterPressures(i, k) = 50000 + 10 * i + k;
                for (const int side : {Right, Left}) {
                    pressures.ActivePressures(side, i, k) = 10000 * side + 10 * i + k;
                    pressures.PassivePressures(side, i, k) = -(10000 * side + 10 * i + k);
                }
            }
        }
        state->grid.NumElevs = 0x0123;
    }

    std::string bytes(int level = 1) const { return readFile(state->files.ScratchFileName(level)); }
    std::string name(const std::string& file) const { return (folder.path() / file).string(); }

    TemporaryFolder folder;
};

/// The double that stands at a place, the lowest byte first.
double doubleAt(const std::string& bytes, std::size_t place) {
    std::uint64_t bits = 0;
    for (std::size_t byte = 8; byte-- > 0;) {
        bits = bits << 8 | static_cast<unsigned char>(bytes.at(place + byte));
    }
    return std::bit_cast<double>(bits);
}

TEST(SolutionFile, DoublesAndCountsStandWithTheirLowestByteFirst) {
    FileBench bench;
    bench.state->results.ResultElev(1) = 1.0;  // 3F F0 and zeros
    bench.state->results.ResultElev(2) = -2.5; // C0 04 and zeros
    WriteSolutionFile(*bench.state, 1);
    const std::string bytes = bench.bytes();
    EXPECT_EQ(bytes.substr(0, 16), std::string("\0\0\0\0\0\0\xF0\x3F\0\0\0\0\0\0\x04\xC0", 16));
    EXPECT_EQ(bytes.substr(GridCount, 2), "\x23\x01");
}

TEST(SolutionFile, HoldsTheItemsInTheirOrderAndAll301PlacesOfEach) {
    FileBench bench;
    bench.state->grid.NumElevs = 3;
    WriteSolutionFile(*bench.state, 1);
    const std::string bytes = bench.bytes();
    ASSERT_EQ(bytes.size(), Marks + WaterSize);
    for (const int i : {1, 2, 301}) {
        const std::size_t row = 8 * static_cast<std::size_t>(i - 1);
        EXPECT_EQ(doubleAt(bytes, row), i);
        EXPECT_EQ(doubleAt(bytes, Moment + row), 1000 + i);
        EXPECT_EQ(doubleAt(bytes, Shear + row), 2000 + i);
        EXPECT_EQ(doubleAt(bytes, Deflection + row), 3000 + i);
        EXPECT_EQ(doubleAt(bytes, Pressure + row), 4000 + i);
        EXPECT_EQ(doubleAt(bytes, Grid + row), -i);
        // Both values of a row stand together, the right side's rows before the left side's.
        EXPECT_EQ(doubleAt(bytes, Active + 2 * row), 10000 + 10 * i + 1);
        EXPECT_EQ(doubleAt(bytes, Active + 2 * row + 8), 10000 + 10 * i + 2);
        EXPECT_EQ(doubleAt(bytes, Active + 4816 + 2 * row), 20000 + 10 * i + 1);
        EXPECT_EQ(doubleAt(bytes, Passive + 2 * row + 8), -(10000 + 10 * i + 2));
        EXPECT_EQ(doubleAt(bytes, Passive + 4816 + 2 * row), -(20000 + 10 * i + 1));
        EXPECT_EQ(doubleAt(bytes, Marks + 2 * row), 50000 + 10 * i + 1);
        EXPECT_EQ(doubleAt(bytes, Marks + 2 * row + 8), 50000 + 10 * i + 2);
    }
}

TEST(SolutionFile, TakesTheFirstFreeNumberOfItsLevel) {
    FileBench bench;
    WriteSolutionFile(*bench.state, 1);
    WriteSolutionFile(*bench.state, 2);
    WriteSolutionFile(*bench.state, 1);
    const TemporaryFiles& files = bench.state->files;
    EXPECT_EQ(files.ScratchFileName(1), bench.name("ZZ11"));
    EXPECT_EQ(files.ScratchFileName(2), bench.name("ZZ20"));
    EXPECT_EQ(files.ScratchFileCount, 11); // the first eight places stay empty
    EXPECT_EQ(files.ScratchFileList(9), bench.name("ZZ10"));
    EXPECT_EQ(files.ScratchFileList(10), bench.name("ZZ20"));
    EXPECT_EQ(files.ScratchFileList(11), bench.name("ZZ11"));
}

TEST(SolutionFile, NeverWritesOverAnothersFileNorThroughALink) {
    FileBench bench;
    writeFile(bench.name("ZZ10"), "mine");
    fs::create_symlink(bench.name("elsewhere"), bench.name("ZZ11"));
    WriteSolutionFile(*bench.state, 1);
    EXPECT_EQ(bench.state->files.ScratchFileName(1), bench.name("ZZ12"));
    EXPECT_EQ(readFile(bench.name("ZZ10")), "mine");
    EXPECT_FALSE(fs::exists(bench.name("elsewhere")));
}

TEST(SolutionFile, IsForItsUserAlone) {
    FileBench bench;
    WriteSolutionFile(*bench.state, 1);
    EXPECT_EQ(fs::status(bench.name("ZZ10")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST(SolutionFile, AFullListIsASubscriptErrorAndMakesNoFile) {
    FileBench bench;
    TemporaryFiles& files = bench.state->files;
    files.ScratchFileCount = 99;
    WriteSolutionFile(*bench.state, 1);
    EXPECT_EQ(files.ScratchFileList(100), bench.name("ZZ10"));
    EXPECT_EQ(errorOf([&] { WriteSolutionFile(*bench.state, 1); }), 9);
    EXPECT_EQ(files.ScratchFileCount, 100);
    EXPECT_FALSE(fs::exists(bench.name("ZZ11")));
}

/// The fault of an action that must be one of a file.
RuntimeError faultOf(const auto& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error;
    }
    return RuntimeError(0);
}

TEST(SolutionFile, AFolderThatIsGoneIsAFileFaultWithTheName) {
    FileBench bench;
    bench.state->files.TempFolder = bench.name("nowhere");
    const RuntimeError fault = faultOf([&] { WriteSolutionFile(*bench.state, 2); });
    EXPECT_EQ(fault.number(), 76);
    EXPECT_EQ(fault.fileName(), bench.name("nowhere/ZZ20"));
    EXPECT_EQ(bench.state->files.ScratchFileCount, 8);
}

/// Other values than those of FileBench in everything that a level keeps.
void overwriteState(State& state) {
    state.results = {};
    state.grid = {};
    const auto WaterPressures = state.pressures.WaterPressures;
    state.pressures = {};
    state.pressures.WaterPressures = WaterPressures;
    state.pressures.ActiveMark(Left, 5) = "?";
}

TEST(LoadResultLevel, BringsTheLevelBack) {
    FileBench bench;
    State& state = *bench.state;
    state.pressures.ActiveMark(Right, 17) = true;
    state.pressures.PassiveMark(Left, 3) = "xyz";
    state.pressures.PassiveMark(Left, 4) = "u";
    const ResultDiagrams results = state.results;
    const ElevationGrid grid = state.grid;
    const Pressures pressures = state.pressures;
    WriteSolutionFile(state, 2);
    overwriteState(state);
    LoadResultLevel(state, 2);
    EXPECT_TRUE(state.results.ResultElev == results.ResultElev);
    EXPECT_TRUE(state.results.ResultMoment == results.ResultMoment);
    EXPECT_TRUE(state.results.ResultShear == results.ResultShear);
    EXPECT_TRUE(state.results.ResultDeflection == results.ResultDeflection);
    EXPECT_TRUE(state.results.ResultPressure == results.ResultPressure);
    EXPECT_EQ(state.grid.NumElevs, 0x0123);
    EXPECT_TRUE(state.grid.ElevGrid == grid.ElevGrid);
    EXPECT_TRUE(state.pressures.ActivePressures == pressures.ActivePressures);
    EXPECT_TRUE(state.pressures.PassivePressures == pressures.PassivePressures);
    EXPECT_TRUE(state.pressures.ActiveMark == pressures.ActiveMark);
    EXPECT_TRUE(state.pressures.PassiveMark == pressures.PassiveMark);
}

TEST(LoadResultLevel, TheMarksOfEachLevelHaveTheirOwnLengths) {
    FileBench bench;
    State& state = *bench.state;
    state.pressures.ActiveMark(Right, 17) = true;
    WriteSolutionFile(state, 1);
    state.pressures.ActiveMark(Right, 17) = false;
    state.pressures.PassiveMark(Left, 9) = true;
    WriteSolutionFile(state, 2);
    LoadResultLevel(state, 1);
    EXPECT_TRUE(state.pressures.ActiveMark(Right, 17));
    EXPECT_FALSE(state.pressures.PassiveMark(Left, 9));
    LoadResultLevel(state, 2);
    EXPECT_FALSE(state.pressures.ActiveMark(Right, 17));
    EXPECT_TRUE(state.pressures.PassiveMark(Left, 9));
}

TEST(LoadResultLevel, TheWaterPressuresInMemoryStayAndGoIntoTheFile) {
    FileBench bench;
    State& state = *bench.state;
    state.pressures.PassiveMark(Left, 9) = true;
    WriteSolutionFile(state, 1);
    const std::string before = bench.bytes();
    state.pressures.WaterPressures(1, 1) = -0.125;
    state.pressures.WaterPressures(301, 2) = 77;
    LoadResultLevel(state, 1);
    EXPECT_EQ(state.pressures.WaterPressures(1, 1), -0.125);
    EXPECT_EQ(state.pressures.WaterPressures(301, 2), 77);
    const std::string after = bench.bytes();
    EXPECT_EQ(after.size(), before.size());
    EXPECT_EQ(after.substr(0, Marks + 1), before.substr(0, Marks + 1));
    EXPECT_EQ(doubleAt(after, Marks + 1), -0.125);
    EXPECT_EQ(doubleAt(after, after.size() - 8), 77);
    EXPECT_EQ(after.substr(Marks + 9, WaterSize - 16), before.substr(Marks + 9, WaterSize - 16));
}

TEST(LoadResultLevel, AFileThatIsGoneIsAFileFaultWithTheName) {
    FileBench bench;
    WriteSolutionFile(*bench.state, 1);
    fs::remove(bench.name("ZZ10"));
    const RuntimeError fault = faultOf([&] { LoadResultLevel(*bench.state, 1); });
    EXPECT_EQ(fault.number(), 53);
    EXPECT_EQ(fault.fileName(), bench.name("ZZ10"));
    EXPECT_FALSE(fs::exists(bench.name("ZZ10")));
}

TEST(LoadResultLevel, AFileThatEndsEarlyIsAFileFaultWithTheName) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{100}, GridCount + 1, Marks - 1}) {
        FileBench bench;
        WriteSolutionFile(*bench.state, 1);
        fs::resize_file(bench.name("ZZ10"), size);
        const RuntimeError fault = faultOf([&] { LoadResultLevel(*bench.state, 1); });
        EXPECT_EQ(fault.number(), 62);
        EXPECT_EQ(fault.fileName(), bench.name("ZZ10"));
    }
}

TEST(KeepSolvedLevel, CopiesWhatTheLevelWasSolvedWith) {
    FileBench bench;
    State& state = *bench.state;
    state.solution.BottomIndex(2) = 42;
    state.net.NetActive(3, 1) = 8;
    state.net.NetPassive(3, 2) = 9;
    KeepSolvedLevel(state, 2);
    const Pressures pressures = state.pressures;
    overwriteState(state);
    state.net = {};
    const SolvedLevel& kept = state.solved(2);
    EXPECT_TRUE(kept.solved);
    EXPECT_FALSE(state.solved(1).solved);
    EXPECT_EQ(kept.rowCount, 42);
    EXPECT_EQ(kept.grid.NumElevs, 0x0123);
    EXPECT_EQ(kept.grid.ElevGrid(7), -7);
    EXPECT_TRUE(kept.pressures.ActivePressures == pressures.ActivePressures);
    EXPECT_TRUE(kept.pressures.WaterPressures == pressures.WaterPressures);
    EXPECT_EQ(kept.NetActive(3, 1), 8);
    EXPECT_EQ(kept.NetPassive(3, 2), 9);
    EXPECT_EQ(kept.ResultElev(5), 5);
    EXPECT_EQ(kept.ResultMoment(5), 1005);
    EXPECT_EQ(kept.ResultShear(5), 2005);
    EXPECT_EQ(kept.ResultDeflection(5), 3005);
    EXPECT_EQ(kept.ResultPressure(5), 4005);
    forgetSolvedLevels(state);
    EXPECT_FALSE(kept.solved);
}

} // namespace
} // namespace korvane::test
