// A solved problem put together by hand, for the tests of what is made from results.
#pragma once

#include "state/results.h"
#include "support/support.h"

#include <initializer_list>

namespace korvane::test {

/// All that reports, plots and the moment reduction read.
struct ResultBench {
    Problem problem;
    Results results;
    PileSections sections;
    MomentReduction reduction;
};

inline void setElevations(ElevationGrid& grid, std::initializer_list<double> elevations) {
    grid.NumElevs = 0;
    for (const double elevation : elevations) {
        grid.ElevGrid(++grid.NumElevs) = elevation;
    }
}

/// One row of a level's diagrams.
struct ResultRow {
    double elev = 0;
    double moment = 0;
    double shear = 0;
    double deflection = 0;
    double pressure = 0;
};

inline void setRows(ResultDiagrams& diagrams, std::initializer_list<ResultRow> rows) {
    int& r = diagrams.RowCount;
    r = 0;
    for (const ResultRow& row : rows) {
        ++r;
        diagrams.ResultElev(r) = row.elev;
        diagrams.ResultMoment(r) = row.moment;
        diagrams.ResultShear(r) = row.shear;
        diagrams.ResultDeflection(r) = row.deflection;
        diagrams.ResultPressure(r) = row.pressure;
    }
}

} // namespace korvane::test
