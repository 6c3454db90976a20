// The plots of a study's report.
#pragma once

#include "study/finished.h"

#include <string>
#include <vector>

namespace korvane::study {

struct Picture {
    std::string svg;
    std::string caption;
};

/// Plots that belong together, below a heading.
struct PictureGroup {
    std::string heading;
    std::vector<Picture> pictures;
};

/// A result of a variable alone at its low and its high number.
struct Swing {
    std::size_t variable = 0;
    double lowNumber = 0;
    double highNumber = 0;
    double low = 0; ///< NaN where the wall has no solution
    double high = 0;
    double base = 0; ///< of the wall as it is

    double size() const;
};

/// Of a study with one variable at a time: the swings of an output, the largest first.
std::vector<Swing> swingsOf(const FinishedStudy& finished, std::size_t output);

/// The tornado of each output.
void addTornados(std::vector<PictureGroup>& groups, const FinishedStudy& finished);

/// Of a grid: curves or a heat map over the two variables that move the first output most.
void addGrid(std::vector<PictureGroup>& groups, const FinishedStudy& finished);

/// The walls of a search, and where the target was found.
void addSearch(std::vector<PictureGroup>& groups, const FinishedStudy& finished);

/// Histogram with quantiles and cumulative curve of each output.
void addDistributions(std::vector<PictureGroup>& groups, const FinishedStudy& finished);

/// How much of a column's variance each variable explains by itself in a straight line (squared
/// correlation), by index of the random variables; of a sample.
std::vector<double> sharesOf(const FinishedStudy& finished, const std::string& column);

/// Shares of a sample's variance; Sobol' indices; importance factors of the first-order method.
void addImportanceBars(std::vector<PictureGroup>& groups, const FinishedStudy& finished);

/// Two variables with the limit state: the sample where there is one, the line at which the state
/// is reached, the design point where it is known.
void addScatter(std::vector<PictureGroup>& groups, const FinishedStudy& finished);

/// The probability of a limit state by the number of variants, with its interval.
void addConvergence(std::vector<PictureGroup>& groups, const FinishedStudy& finished);

/// Probability along a variable.
void addFragility(std::vector<PictureGroup>& groups, const FinishedStudy& finished);

/// All that the method of the study has.
std::vector<PictureGroup> picturesOf(const FinishedStudy& finished);

} // namespace korvane::study
