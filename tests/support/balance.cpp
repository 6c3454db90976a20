#include "support/balance.h"

#include <cmath>

namespace korvane::test {

Balance balanceOf(const Problem& problem, const LevelResult& level) {
    const ResultDiagrams& solved = level.diagrams;
    const double bottom = level.bottomElev;
    Balance sum;
    const auto add = [&](double force, double elev) {
        sum.force += force;
        sum.moment += force * (elev - bottom);
        sum.sizes += std::fabs(force);
        sum.momentSizes += std::fabs(force * (elev - bottom));
    };
    for (int row = 2; row <= solved.RowCount; ++row) {
        const double top = solved.ResultElev(row - 1);
        const double end = row == solved.RowCount ? bottom : solved.ResultElev(row);
        // The trapezoid as two triangles, each with its centre at a third of its height.
        add(solved.ResultPressure(row - 1) * (top - end) / 2, end + (top - end) * 2 / 3);
        add(solved.ResultPressure(row) * (top - end) / 2, end + (top - end) / 3);
    }
    for (int j = 1; j <= problem.HLineCount; ++j) {
        if (problem.HLineElev(j) > bottom) {
            add(problem.HLineLoad(j), problem.HLineElev(j));
        }
    }
    if (problem.WallType == WallKind::Anchored) {
        add(-level.anchorForce, problem.AnchorElev);
    }
    return sum;
}

} // namespace korvane::test
