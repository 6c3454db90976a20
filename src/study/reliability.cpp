#include "study/reliability.h"

#include "study/plan.h"

#include <openturns/Cobyla.hxx>
#include <openturns/CompositeRandomVector.hxx>
#include <openturns/DistFunc.hxx>
#include <openturns/EvaluationImplementation.hxx>
#include <openturns/FORM.hxx>
#include <openturns/Function.hxx>
#include <openturns/Less.hxx>
#include <openturns/Normal.hxx>
#include <openturns/RandomVector.hxx>
#include <openturns/ThresholdEvent.hxx>

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

namespace {

constexpr int MostSolutions = 20000;
/// A depth has kinks of 0.0001 FT: nearer to the limit than this the search finds nothing.
constexpr double FeetNearness = 1e-3;
/// The same of any margin, and where no wall is asked, as shares of that of the median.
constexpr double WallNearness = 1e-4;
constexpr double PlainNearness = 1e-10;
/// A point further from the limit state than this share has not met it.
constexpr double Missed = 0.01;

/// How far a wall is from a limit state, over independent standard normal numbers.
class Margin : public OT::EvaluationImplementation {
  public:
    Margin(const Study& study, const LimitState& limit)
        : study_(study), limit_(limit), draws_(study),
          evaluation_(std::make_shared<Evaluation>(study)),
          solutions_(std::make_shared<std::uint64_t>(0)) {
        numbers_.resize(study.variables.size());
        for (std::size_t n = 0; n < numbers_.size(); ++n) {
            if (!study.variables[n].isRandom()) {
                numbers_[n] = study.variables[n].values.front();
            }
        }
        usual_ = std::abs(at(std::vector<double>(draws_.dimension(), 0.0)));
        usual_ = usual_ > 0 ? usual_ : 1;
    }

    Margin* clone() const override { return new Margin(*this); }
    OT::UnsignedInteger getInputDimension() const override { return draws_.dimension(); }
    OT::UnsignedInteger getOutputDimension() const override { return 1; }
    OT::Point operator()(const OT::Point& normals) const override {
        return OT::Point(1, at(std::vector<double>(normals.begin(), normals.end())));
    }

    /// Below 0 in the state.
    double at(const std::vector<double>& normals) const {
        std::vector<double> drawn;
        draws_.fromNormals(normals, drawn);
        std::vector<double> numbers = numbers_;
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            numbers[draws_.variableOf(i)] = drawn[i];
        }
        evaluation_->solve(numbers);
        ++*solutions_;
        const LimitValues values = evaluation_->limitValues(numbers);
        if (!limit_.condition.isKnown(values)) {
            return limit_.noSolutionFails ? -usual_ : usual_;
        }
        return limit_.condition.margin(values);
    }

    /// Of the median; never 0.
    double usual() const { return usual_; }
    const Draws& draws() const { return draws_; }
    std::uint64_t solutions() const { return *solutions_; }

  private:
    const Study& study_;
    const LimitState& limit_;
    Draws draws_;
    std::shared_ptr<Evaluation> evaluation_;
    std::shared_ptr<std::uint64_t> solutions_;
    std::vector<double> numbers_;
    double usual_ = 1; ///< of the median
};

bool asksWall(const Study& study, const Condition& condition) {
    const std::vector<std::string_view> names = outputNames(study.base);
    return condition.asksDesign() ||
           std::any_of(names.begin(), names.end(),
                       [&](std::string_view name) { return condition.names(name); });
}

OT::Cobyla search(double nearness) {
    OT::Cobyla cobyla;
    cobyla.setMaximumEvaluationNumber(MostSolutions);
    cobyla.setMaximumIterationNumber(MostSolutions);
    cobyla.setMaximumAbsoluteError(1e-9);
    cobyla.setMaximumRelativeError(1e-9);
    cobyla.setMaximumResidualError(1e-9);
    cobyla.setMaximumConstraintError(nearness);
    return cobyla;
}

/// How near to the limit state the search goes, in the units of the margin.
double nearnessOf(const Study& study, const LimitState& limit, double usual) {
    return asksWall(study, limit.condition)
               ? std::max(inUnits(Quantity::Length, FeetNearness, study.units),
                          WallNearness * usual)
               : PlainNearness * usual;
}

/// The point on the ray through a found one at which the state is reached, where it is within a
/// hundredth of it: the last digits, which the search for the ray leaves open.
void sharpen(const Margin& margin, std::vector<double>& point) {
    const std::vector<double> found = point;
    const auto at = [&](double scale) {
        for (std::size_t i = 0; i < point.size(); ++i) {
            point[i] = scale * found[i];
        }
        return margin.at(point);
    };
    double low = 0.99;
    double high = 1.01;
    const bool lowIsSafe = at(low) > 0;
    if (lowIsSafe == (at(high) > 0)) {
        point = found;
        return;
    }
    for (int n = 0; n < 40; ++n) {
        const double middle = (low + high) / 2;
        ((at(middle) > 0) == lowIsSafe ? low : high) = middle;
    }
    at((low + high) / 2);
}

double lengthOf(const std::vector<double>& point) {
    double squares = 0;
    for (const double u : point) {
        squares += u * u;
    }
    return std::sqrt(squares);
}

} // namespace

FirstOrder firstOrder(const Study& study, const LimitState& limit) {
    FirstOrder result;
    const Margin margin(study, limit);
    try {
        const OT::UnsignedInteger dimension = margin.getInputDimension();
        const OT::Normal standard(dimension);
        const OT::CompositeRandomVector distance(OT::Function(margin.clone()),
                                                 OT::RandomVector(standard));
        const OT::ThresholdEvent event(distance, OT::Less(), 0.0);
        OT::FORM form(search(nearnessOf(study, limit, margin.usual())), event,
                      OT::Point(dimension, 0.1));
        form.run();
        const OT::Point point = form.getResult().getStandardSpaceDesignPoint();
        result.standard.assign(point.begin(), point.end());
        sharpen(margin, result.standard);
        margin.draws().fromNormals(result.standard, result.designPoint);
        const bool isReached = margin.at(std::vector<double>(dimension, 0.0)) < 0;
        result.beta = lengthOf(result.standard) * (isReached ? -1 : 1);
        result.probability = OT::DistFunc::pNormal(-result.beta);
        for (const double u : result.standard) {
            result.importance.push_back(result.beta == 0 ? 0 : u * u / (result.beta * result.beta));
        }
        if (!(std::abs(margin.at(result.standard)) <= Missed * margin.usual())) {
            result.fault = "the search has not met the limit state";
        }
    } catch (const std::exception& fault) {
        result.fault = fault.what();
    }
    result.solutions = margin.solutions();
    return result;
}

void addFirstOrder(std::vector<Statistic>& all, const Study& study) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const Draws draws(study);
    for (const LimitState& limit : study.limits) {
        const FirstOrder found = firstOrder(study, limit);
        if (!found.fault.empty()) {
            all.push_back({limit.name, "no design point: " + found.fault, none, none, none});
            continue;
        }
        all.push_back({limit.name, "beta", found.beta, none, none});
        all.push_back({limit.name, "probability of first order", found.probability, none, none});
        for (std::size_t i = 0; i < draws.dimension(); ++i) {
            const std::string& name = study.variables[draws.variableOf(i)].name;
            all.push_back({limit.name, "design point " + name, found.designPoint[i], none, none});
            all.push_back({limit.name, "importance " + name, found.importance[i], none, none});
        }
        all.push_back({limit.name, "solutions", static_cast<double>(found.solutions), none, none});
    }
}

void addImportance(std::vector<Statistic>& all, const Study& study, const Store& store) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    // Fewer hits tell nothing of how far the weights spread.
    constexpr double LeastHits = 10;
    for (const LimitState& limit : study.limits) {
        const std::string hit = "weight * " + quoted(limit.name);
        store.query("SELECT count(*), sum(" + hit + "), sum(" + hit + " * weight), sum(" +
                        quoted(limit.name) + ") FROM variants",
                    [&](const std::vector<double>& row) {
                        const double mean = row[1] / row[0];
                        const double variance = row[2] / row[0] - mean * mean;
                        const double half = OT::DistFunc::qNormal(0.025, true) *
                                            std::sqrt(std::max(variance, 0.0) / row[0]);
                        const bool few = row[3] < LeastHits;
                        all.push_back({limit.name, "reached", row[3], none, none});
                        all.push_back({limit.name, "probability by importance sampling", mean,
                                       few ? none : std::max(0.0, mean - half),
                                       few ? none : std::min(1.0, mean + half)});
                    });
    }
}

} // namespace korvane::study
