#include "study/plan.h"

#include <openturns/DistFunc.hxx>

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

namespace {

/// Of a sample around points, the share that is drawn as the variables are.
constexpr double OriginShare = 0.1;

std::uint64_t sizeOf(const Study& study, std::size_t dimension) {
    const std::uint64_t size = study.sample.size;
    switch (study.method) {
    case Method::Grid: {
        std::uint64_t product = 1;
        for (const Variable& variable : study.variables) {
            product *= variable.values.size();
        }
        return product;
    }
    case Method::OneAtATime:
        return 1 + 2 * study.variables.size();
    case Method::Sample:
        return size;
    case Method::Sensitivity:
        return size * (dimension + 2);
    case Method::Reliability:
        return study.algorithm == Algorithm::Form ? 0 : size;
    case Method::Fragility:
        return size * study.variables[study.along].values.size();
    case Method::Target:
        break;
    }
    return 0;
}

} // namespace

std::array<double, 2> endsOf(const Variable& variable) {
    if (variable.isRandom()) {
        const DistributionFigures figures = figuresOf(variable);
        return {figures.low, figures.high};
    }
    const auto [least, largest] =
        std::minmax_element(variable.values.begin(), variable.values.end());
    return {*least, *largest};
}

double unchanged() {
    return std::numeric_limits<double>::quiet_NaN();
}

bool isUnchanged(double number) {
    return std::isnan(number);
}

Share shareOf(std::uint64_t size, std::uint64_t part, std::uint64_t parts) {
    // Without the product of size and part, which could be too large.
    const auto start = [&](std::uint64_t k) { return size / parts * k + size % parts * k / parts; };
    return {start(part - 1), start(part)};
}

double weightAround(const std::vector<std::vector<double>>& centers,
                    const std::vector<double>& normals) {
    const double share = (1 - OriginShare) / static_cast<double>(centers.size());
    double density = OriginShare; // of the sample, to that of the distributions
    for (const std::vector<double>& center : centers) {
        double exponent = 0;
        for (std::size_t i = 0; i < normals.size(); ++i) {
            exponent += center[i] * (normals[i] - center[i] / 2);
        }
        density += share * std::exp(exponent);
    }
    return 1 / density;
}

Plan::Plan(const Study& study)
    : study_(&study), draws_(study), size_(sizeOf(study, draws_.dimension())) {
    if (study.method == Method::OneAtATime) {
        for (const Variable& variable : study.variables) {
            ends_.push_back(endsOf(variable));
        }
    }
}

void Plan::numbers(std::uint64_t index, std::vector<double>& numbers) {
    numbers.resize(study_->variables.size());
    const std::uint64_t size = study_->sample.size;
    switch (study_->method) {
    case Method::Grid:
        gridNumbers(index, numbers);
        return;
    case Method::OneAtATime:
        oneAtATimeNumbers(index, numbers);
        return;
    case Method::Sensitivity: {
        const std::uint64_t blocks = draws_.dimension() + 2;
        drawnNumbers(index / blocks, index % blocks, numbers);
        return;
    }
    case Method::Fragility:
        drawnNumbers(index % size, 0, numbers);
        numbers[study_->along] = study_->variables[study_->along].values[index / size];
        return;
    default:
        drawnNumbers(index, 0, numbers);
    }
}

/// The first variable varies slowest.
void Plan::gridNumbers(std::uint64_t index, std::vector<double>& numbers) const {
    for (std::size_t n = numbers.size(); n-- > 0;) {
        const std::vector<double>& values = study_->variables[n].values;
        numbers[n] = values[index % values.size()];
        index /= values.size();
    }
}

/// The base, then low and high of each variable.
void Plan::oneAtATimeNumbers(std::uint64_t index, std::vector<double>& numbers) const {
    for (std::size_t n = 0; n < numbers.size(); ++n) {
        const bool moves = index > 0 && (index - 1) / 2 == n;
        // A variable without fields has no base to be left at.
        const bool free = study_->variables[n].fields.empty();
        numbers[n] = moves ? ends_[n][(index - 1) % 2] : free ? ends_[n][0] : unchanged();
    }
}

double Plan::coordinate(std::uint64_t point, std::size_t coordinate) const {
    return study_->sample.at(point, static_cast<int>(coordinate));
}

/// Blocks of the indices of Sobol': the first point, the second one, then the first with one
/// coordinate of the second after the other (A. Saltelli, 2002). All other methods have one block.
void Plan::drawnNumbers(std::uint64_t point, std::uint64_t block, std::vector<double>& numbers) {
    const std::size_t dimension = draws_.dimension();
    uniforms_.resize(dimension);
    for (std::size_t i = 0; i < dimension; ++i) {
        const bool second = block == 1 || block == i + 2;
        uniforms_[i] = coordinate(point, second ? i + dimension : i);
    }
    if (centers_.empty()) {
        draws_.fromUniforms(uniforms_, drawn_);
    } else {
        moveToCenter(point);
        draws_.fromNormals(uniforms_, drawn_);
    }
    for (std::size_t n = 0; n < numbers.size(); ++n) {
        if (!study_->variables[n].isRandom()) {
            numbers[n] = study_->variables[n].values.front();
        }
    }
    for (std::size_t i = 0; i < dimension; ++i) {
        numbers[draws_.variableOf(i)] = drawn_[i];
    }
}

/// Uniform numbers become normal ones around the origin or one of the centers. Which one, a
/// coordinate of its own tells: points of a Sobol' sequence that follow one another, or share the
/// digits of one coordinate, lie in a part of the cube.
void Plan::moveToCenter(std::uint64_t point) {
    const double share = (1 - OriginShare) / static_cast<double>(centers_.size());
    const double choice = coordinate(point, uniforms_.size()) - OriginShare;
    const auto chosen =
        std::min(static_cast<std::size_t>(std::max(choice, 0.0) / share), centers_.size() - 1);
    for (std::size_t i = 0; i < uniforms_.size(); ++i) {
        uniforms_[i] = (choice < 0 ? 0 : centers_[chosen][i]) + OT::DistFunc::qNormal(uniforms_[i]);
    }
    weight_ = weightAround(centers_, uniforms_);
}

} // namespace korvane::study
