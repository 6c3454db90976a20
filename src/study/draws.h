// Distributions of the variables of a study, and how uniform numbers become numbers of theirs.
#pragma once

#include "study/study.h"

#include <memory>
#include <string>
#include <vector>

namespace korvane::study {

/// What is wrong with the distribution of a variable: an unknown name with those that are known,
/// parameters, bounds. Empty where nothing is.
std::string distributionFault(const Variable& variable);

/// Whether numbers can have all correlations of a study at once.
bool canBeTogether(const Study& study);

/// Mean, deviation and quantiles of a distribution; NaN for a mean or deviation that it has not.
struct DistributionFigures {
    double mean = 0;
    double deviation = 0;
    double low = 0;  ///< 5 % quantile
    double high = 0; ///< 95 % quantile
};
DistributionFigures figuresOf(const Variable& variable);

/// The joint distribution of the random variables of a study. Copies share nothing that changes,
/// so that each thread has its own.
class Draws {
  public:
    explicit Draws(const Study& study);
    ~Draws();
    Draws(const Draws& other);
    Draws& operator=(const Draws&) = delete;

    /// Random variables, in the order of the study.
    std::size_t dimension() const;
    /// Index of a random variable among all variables.
    std::size_t variableOf(std::size_t coordinate) const;

    /// Numbers of the random variables from independent uniforms (0 to 1, both ends excluded), a
    /// coordinate each: normal copula of the rank correlations, then the inverse of each
    /// distribution function.
    void fromUniforms(const std::vector<double>& uniforms, std::vector<double>& numbers) const;
    /// The same from independent standard normal numbers.
    void fromNormals(const std::vector<double>& normals, std::vector<double>& numbers) const;

    /// The normal numbers of the variables themselves, correlated as these are.
    std::vector<double> scores(const std::vector<double>& normals) const;

    struct Contents;
    const Contents& contents() const { return *contents_; }

  private:
    std::unique_ptr<Contents> contents_;
};

} // namespace korvane::study
