// A workspace that is used again and again, alone and beside others.
#include "allocations/heap_allocations.h"
#include "solution_numbers.h"
#include "support/support.h"
#include "walls.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <type_traits>

namespace korvane::test {
namespace {

static_assert(std::is_trivially_copyable_v<State>);
static_assert(sizeof(State) < 140000); // more than half of it polygons of wedge regions

using Numbers = std::vector<std::uint64_t>;

Options optionsOf(std::size_t wall) {
    return wall % 3 == 0 ? byFixedSurface() : bySweep();
}

Numbers solvedIn(Workspace& workspace, const std::vector<Problem>& walls, std::size_t wall,
                 const PileSections& sections) {
    return solutionNumbers(walls[wall], solve(walls[wall], optionsOf(wall), sections, workspace));
}

/// Each wall in a workspace of its own.
std::vector<Numbers> solvedAlone(const std::vector<Problem>& walls, const PileSections& sections) {
    std::vector<Numbers> numbers;
    for (std::size_t wall = 0; wall < walls.size(); ++wall) {
        Workspace workspace;
        numbers.push_back(solvedIn(workspace, walls, wall, sections));
    }
    return numbers;
}

TEST(Workspace, UsedAgainGivesWhatAFreshOneGives) {
    const std::vector<Problem> walls = manyWalls(40);
    const PileSections sections = defaultSections();
    const std::vector<Numbers> alone = solvedAlone(walls, sections);
    Workspace workspace;
    for (std::size_t wall = 0; wall < walls.size(); ++wall) {
        SCOPED_TRACE(wall);
        const std::size_t other = (wall * 7 + 3) % walls.size();
        EXPECT_EQ(solvedIn(workspace, walls, wall, sections), alone[wall]);
        EXPECT_EQ(solvedIn(workspace, walls, other, sections), alone[other]);
        EXPECT_EQ(solvedIn(workspace, walls, wall, sections), alone[wall]);
    }
}

TEST(Threads, SolveSharedProblemsAsOneThreadDoes) {
    constexpr std::size_t threadCount = 16;
    const std::vector<Problem> walls = manyWalls(12);
    const PileSections sections = defaultSections();
    const std::vector<Numbers> alone = solvedAlone(walls, sections);
    std::vector<std::size_t> equal(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            Workspace workspace;
            for (std::size_t step = 0; step < walls.size(); ++step) {
                const std::size_t wall = (step + thread) % walls.size(); // each its own order
                const Numbers numbers = solvedIn(workspace, walls, wall, sections);
                equal[thread] += numbers == alone[wall] ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(equal, std::vector<std::size_t>(threadCount, walls.size()));
}

struct RepeatedWall {
    const char* name;
    Problem problem;
    Options options = {};
};

std::vector<RepeatedWall> repeatedWalls() {
    Problem seeping = plainAnchored();
    seeping.WaterDataKind = WaterData::Elevations;
    seeping.WaterUnitWeight = 62.4;
    seeping.WaterElev(Right) = seeping.SeepageElev = -8;
    seeping.WaterElev(Left) = -12;
    seeping.SeepageKind = Seepage::Automatic;
    Problem lowGround = plainAnchored(); // a moment reduction that does not apply, with its reasons
    lowGround.SurfaceElev(Right, 1) = -1;
    return {
        {"cantilever", plainCantilever()},
        {"anchored", plainAnchored()},
        {"reduction with notes", lowGround},
        {"seepage", seeping},
        {"sweep", sloping(plainAnchored()), bySweep()},
        {"fixed surface", sloping(plainAnchored()), byFixedSurface()},
        {"cantilever analysis", analysisOf(plainCantilever(), -28)},
        {"anchored analysis", analysisOf(plainAnchored(), -26)},
        {"sweep analysis", analysisOf(sloping(plainAnchored()), -28), bySweep()},
    };
}

/// How often each of three solutions in one workspace asks for memory.
std::array<long, 3> allocationsOf(const Problem& problem, const Options& options) {
    const PileSections sections = defaultSections();
    Workspace workspace;
    std::array<long, 3> counts{};
    for (long& count : counts) {
        const long before = heapAllocations();
        solve(problem, options, sections, workspace);
        count = heapAllocations() - before;
    }
    return counts;
}

TEST(Allocations, ASecondSolutionTakesNoMemory) {
    for (const RepeatedWall& wall : repeatedWalls()) {
        SCOPED_TRACE(wall.name);
        Workspace workspace;
        EXPECT_FALSE(solve(wall.problem, wall.options, defaultSections(), workspace).failure);
        const auto counts = allocationsOf(wall.problem, wall.options);
        EXPECT_EQ(counts[1], 0) << counts[0] << " at first";
        EXPECT_EQ(counts[2], 0) << counts[0] << " at first";
    }
}

TEST(Allocations, ASecondSolutionOfAnyWallTakesNoMemory) {
    const std::vector<Problem> walls = manyWalls(70);
    for (std::size_t wall = 0; wall < walls.size(); ++wall) {
        SCOPED_TRACE(wall);
        for (const Options& options : {bySweep(), byFixedSurface()}) {
            const auto counts = allocationsOf(walls[wall], options);
            EXPECT_EQ(counts[1], 0) << counts[0] << " at first";
            EXPECT_EQ(counts[2], 0) << counts[0] << " at first";
        }
    }
}

TEST(Allocations, OfAWorkspaceAreCounted) {
    const long before = heapAllocations();
    const Workspace workspace;
    EXPECT_GE(heapAllocations() - before, 1);
}

} // namespace
} // namespace korvane::test
