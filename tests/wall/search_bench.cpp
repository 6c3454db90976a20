#include "search_bench.h"

#include "solution/solution.h"
#include "support/balance.h"
#include "wall/preparation.h"
#include "wall/trial_pressures.h"

namespace korvane::test {

namespace {

constexpr int LowestElev = -40;

void setPiece(Array<double, 301, 2>& diagram, int top, int bottom, double p1, double p2) {
    for (int elev = top; elev >= bottom; --elev) {
        const double p = p1 + (p2 - p1) * (top - elev) / (top - bottom);
        const int row = HandMadeWall::rowAt(elev);
        if (elev != bottom) {
            diagram(row, 1) = p;
        }
        if (elev != top) {
            diagram(row, 2) = p;
        }
    }
}

void setUniform(State& state, Array<double, 301, 2>& diagram, double p) {
    for (int i = HandMadeWall::ZeroRow; i <= state.grid.NumElevs; ++i) {
        diagram(i, 1) = diagram(i, 2) = p;
    }
}

} // namespace

HandMadeWall::HandMadeWall(WallKind wallType) {
    clearProblemData(problem);
    problem.WallType = wallType;
    problem.ProgramMode = Mode::Design;
    problem.WallTopElev = 10;
    problem.AnchorElev = 10;
    auto& grid = state->grid;
    grid.ElevGrid(1) = problem.WallTopElev;
    for (int elev = 0; elev >= LowestElev; --elev) {
        grid.ElevGrid(rowAt(elev)) = elev;
    }
    const int last = rowAt(LowestElev);
    grid.ElevGrid(last + 1) = LowestElev - 50000.0;
    grid.ElevGrid(last + 2) = LowestElev - 100000.0;
    grid.NumElevs = last + 2;
    state->net.NetZeroIndex = ZeroRow;
}

void HandMadeWall::setActive(int top, int bottom, double p1, double p2) {
    setPiece(state->net.NetActive, top, bottom, p1, p2);
}

void HandMadeWall::setPassive(int top, int bottom, double p1, double p2) {
    setPiece(state->net.NetPassive, top, bottom, p1, p2);
}

void HandMadeWall::setUniformActive(double p) {
    setUniform(*state, state->net.NetActive, p);
}

void HandMadeWall::setUniformPassive(double p) {
    setUniform(*state, state->net.NetPassive, p);
}

void HandMadeWall::setDriving(double force, double moment) {
    state->net.DrivingForce = force;
    state->net.DrivingMoment = moment;
}

void HandMadeWall::addLineLoad(double elev, double load) {
    ++problem.HLineCount;
    problem.HLineElev(problem.HLineCount) = elev;
    problem.HLineLoad(problem.HLineCount) = load;
}

void prepare(State& state) {
    PrepareSolution(state);
    for (const int side : {Right, Left}) {
        auto& method = state.preparation.SideMethod(side);
        method = method == PressureMethod::Wedge ? PressureMethod::Sweep : method;
    }
}

void computePressures(State& state) {
    prepare(state);
    if (!state.failed()) {
        ComputeSoilPressures(state, 1, [](int) {});
    }
}

void solve(Bench& bench) {
    Options options;
    options.wedge = WedgeMethod::Sweep;
    options.factorLimit = bench.limit();
    Workspace workspace;
    if (reviewWall(bench.problem, options, workspace)) {
        solveWall(workspace);
    }
    *bench.state = workspace.state();
    bench.state->kept = bench.kept.get();
    *bench.results = workspace.results();
}

Resultant resultant(const Bench& bench, int level) {
    const Balance balance = balanceOf(bench.problem, bench.results->levels(level));
    return {balance.force, balance.moment};
}

std::vector<std::string> textsOf(const Bench& bench) {
    std::vector<std::string> texts;
    for (const MessageBox& box : bench.told()) {
        texts.push_back(box.text);
    }
    return texts;
}

} // namespace korvane::test
