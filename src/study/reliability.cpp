#include "study/reliability.h"

#include "study/plan.h"
#include "study/statistics.h"

#include <openturns/Cobyla.hxx>
#include <openturns/CompositeRandomVector.hxx>
#include <openturns/DistFunc.hxx>
#include <openturns/EvaluationImplementation.hxx>
#include <openturns/FORM.hxx>
#include <openturns/Function.hxx>
#include <openturns/Less.hxx>
#include <openturns/Normal.hxx>
#include <openturns/OptimizationProblem.hxx>
#include <openturns/RandomVector.hxx>
#include <openturns/ThresholdEvent.hxx>

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

namespace {

/// A depth has kinks of 0.0001 FT: nearer to the limit than this the search finds nothing.
constexpr double FeetNearness = 1e-3;
/// The same of any margin, and where no wall is asked, as shares of that of the median.
constexpr double WallNearness = 1e-4;
constexpr double PlainNearness = 1e-10;
/// A point further from the limit state than this share has not met it.
constexpr double Missed = 0.01;
/// Points nearer to one another than this are the same.
constexpr double Apart = 0.1;
/// Points of a smaller share of the probability of the nearest do not count, and rays do not look
/// for them.
constexpr double LeastShare = 1e-3;
constexpr double LeastShareOfRays = 1e-2;
/// Rays look for a border to here where no point is known yet.
constexpr double FurthestLook = 8;
/// Points that a survey adds to those of the alternatives, and of these such that are searched for
/// their nearest.
constexpr std::size_t MostAdded = 32;
constexpr std::size_t MostSearched = 8;
/// The sample hardly sees a place that counts more than this many times what the nearest point
/// does.
constexpr double HardlySeen = 3;
/// A point this much nearer than another one there takes its place.
constexpr double Nearer = 1e-3;
/// Nearer to the origin than this a point has no direction.
constexpr double SmallestBeta = 1e-6;

/// Walls by normal numbers, and what the search has cost.
struct Walls {
    Walls(const Study& asked, const LimitState& state, std::function<bool()> ends)
        : study(asked), limit(state), stop(std::move(ends)), draws(asked), evaluation(asked),
          numbers(asked.variables.size()) {
        for (std::size_t n = 0; n < numbers.size(); ++n) {
            if (!study.variables[n].isRandom()) {
                numbers[n] = study.variables[n].values.front();
            }
        }
    }

    LimitValues at(const Normals& normals) {
        draws.fromNormals(normals, drawn);
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            numbers[draws.variableOf(i)] = drawn[i];
        }
        evaluation.solve(numbers);
        ++solutions;
        return evaluation.limitValues(numbers);
    }
    bool isStopped() const { return stop && stop(); }

    const Study& study;
    const LimitState& limit;
    std::function<bool()> stop;
    Draws draws;
    Evaluation evaluation;
    std::vector<double> numbers;
    std::vector<double> drawn;
    std::uint64_t solutions = 0;
};

/// How far a wall is from comparisons that hold together, each as a share of the margin of the
/// median: they may be in any units. Below 0 where they hold.
class Margins : public OT::EvaluationImplementation {
  public:
    Margins(Walls& walls, std::vector<Condition> comparisons, bool opposite)
        : walls_(walls), comparisons_(std::move(comparisons)),
          unsolved_(walls.limit.noSolutionFails != opposite ? -1 : 1),
          usual_(comparisons_.size(), 1) {
        const OT::Point median = (*this)(OT::Point(getInputDimension(), 0.0));
        for (std::size_t n = 0; n < usual_.size(); ++n) {
            usual_[n] = median[n] == 0 ? 1 : std::abs(median[n]);
        }
    }

    Margins* clone() const override { return new Margins(*this); }
    OT::UnsignedInteger getInputDimension() const override { return walls_.draws.dimension(); }
    OT::UnsignedInteger getOutputDimension() const override { return comparisons_.size(); }
    OT::Point operator()(const OT::Point& point) const override {
        const LimitValues values = walls_.at({point.begin(), point.end()});
        OT::Point margins(comparisons_.size(), unsolved_);
        if (walls_.limit.condition.isKnown(values)) {
            for (std::size_t n = 0; n < comparisons_.size(); ++n) {
                margins[n] = comparisons_[n].margin(values) / usual_[n];
            }
        }
        return margins;
    }
    /// The largest.
    double worst(const Normals& normals) const {
        const OT::Point margins = (*this)(OT::Point(normals.begin(), normals.end()));
        return *std::max_element(margins.begin(), margins.end());
    }

    /// How near to the limit state the search goes.
    double nearness() const {
        const std::vector<std::string_view> names = outputNames(walls_.study.base);
        double nearest = PlainNearness;
        for (std::size_t n = 0; n < comparisons_.size(); ++n) {
            const Condition& one = comparisons_[n];
            if (one.asksDesign() || std::any_of(names.begin(), names.end(),
                                                [&](auto name) { return one.names(name); })) {
                const double feet =
                    inUnits(Quantity::Length, FeetNearness, walls_.study.units) / usual_[n];
                nearest = std::max({nearest, WallNearness, std::min(feet, Missed)});
            }
        }
        return nearest;
    }

  private:
    Walls& walls_;
    std::vector<Condition> comparisons_;
    double unsolved_ = 1; ///< of a wall without a solution
    std::vector<double> usual_;
};

/// The square of the length, or the margins with their signs changed: what a search makes small,
/// and what it keeps above 0.
class SquaredLength : public OT::EvaluationImplementation {
  public:
    explicit SquaredLength(OT::UnsignedInteger dimension) : dimension_(dimension) {}
    SquaredLength* clone() const override { return new SquaredLength(*this); }
    OT::UnsignedInteger getInputDimension() const override { return dimension_; }
    OT::UnsignedInteger getOutputDimension() const override { return 1; }
    OT::Point operator()(const OT::Point& point) const override {
        return OT::Point(1, point.normSquare());
    }

  private:
    OT::UnsignedInteger dimension_;
};
class Reserves : public OT::EvaluationImplementation {
  public:
    explicit Reserves(const Margins& margins) : margins_(margins) {}
    Reserves* clone() const override { return new Reserves(*this); }
    OT::UnsignedInteger getInputDimension() const override { return margins_.getInputDimension(); }
    OT::UnsignedInteger getOutputDimension() const override {
        return margins_.getOutputDimension();
    }
    OT::Point operator()(const OT::Point& point) const override { return margins_(point) * -1; }

  private:
    Margins margins_;
};

OT::Cobyla searchOf(const Margins& margins, Walls& walls) {
    OT::Cobyla cobyla;
    cobyla.setMaximumEvaluationNumber(MostSearchSolutions);
    cobyla.setMaximumIterationNumber(MostSearchSolutions);
    cobyla.setMaximumAbsoluteError(1e-9);
    cobyla.setMaximumRelativeError(1e-9);
    cobyla.setMaximumResidualError(1e-9);
    cobyla.setMaximumConstraintError(margins.nearness());
    cobyla.setStopCallback([](void* state) { return static_cast<Walls*>(state)->isStopped(); },
                           &walls);
    return cobyla;
}

/// The nearest point of one comparison's border; throws what OpenTURNS throws.
OT::Point nearestOfOne(const Margins& margins, Walls& walls, const OT::Point& start) {
    const OT::CompositeRandomVector distance(OT::Function(margins),
                                             OT::RandomVector(OT::Normal(start.getSize())));
    OT::FORM form(searchOf(margins, walls), OT::ThresholdEvent(distance, OT::Less(), 0.0), start);
    form.run();
    return form.getResult().getStandardSpaceDesignPoint();
}

/// The nearest point where several hold together: their common border has corners, which a search
/// along the worst of them does not pass.
OT::Point nearestOfAll(const Margins& margins, Walls& walls, const OT::Point& start) {
    const SquaredLength length(start.getSize());
    OT::OptimizationProblem problem{OT::Function(length)};
    problem.setInequalityConstraint(OT::Function(Reserves(margins)));
    OT::Cobyla cobyla = searchOf(margins, walls);
    cobyla.setProblem(problem);
    cobyla.setStartingPoint(start);
    cobyla.run();
    return cobyla.getResult().getOptimalPoint();
}

/// The point on the ray through a found one at which the state is reached, where it is within a
/// hundredth of it: the last digits, which the search for the ray leaves open.
void sharpen(const Margins& margins, Normals& point) {
    const Normals found = point;
    const auto at = [&](double scale) {
        for (std::size_t i = 0; i < point.size(); ++i) {
            point[i] = scale * found[i];
        }
        return margins.worst(point);
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

/// Adds the point that a search from `start` finds, unless it is there already. Why there is none.
std::string addPoint(std::vector<Normals>& points, const Margins& margins, Walls& walls,
                     const OT::Point& start) {
    try {
        const OT::Point found = margins.getOutputDimension() == 1
                                    ? nearestOfOne(margins, walls, start)
                                    : nearestOfAll(margins, walls, start);
        if (walls.isStopped()) {
            return "stopped";
        }
        Normals point(found.begin(), found.end());
        sharpen(margins, point);
        if (!(std::abs(margins.worst(point)) <= Missed)) {
            return "the search has not met the limit state";
        }
        if (std::none_of(points.begin(), points.end(),
                         [&](const Normals& other) { return distanceOf(point, other) < Apart; })) {
            points.push_back(std::move(point));
        }
        return {};
    } catch (const std::exception& fault) {
        return fault.what();
    }
}

void sortByLength(std::vector<Normals>& points) {
    std::stable_sort(points.begin(), points.end(),
                     [](const Normals& a, const Normals& b) { return lengthOf(a) < lengthOf(b); });
}

/// Points of all alternatives, nearest first.
std::vector<Normals> bordersOf(Walls& walls, bool opposite, FirstOrder& result) {
    const auto alternatives = walls.limit.condition.alternatives(opposite);
    if (alternatives.empty()) {
        result.isTooLong = true;
        result.fault = "it has more than " + std::to_string(Condition::MostAlternatives) +
                       " alternatives joined by and and or";
    }
    std::vector<Normals> points;
    for (const std::vector<Condition>& comparisons : alternatives) {
        if (walls.isStopped()) {
            result.fault = "stopped";
            break;
        }
        const Margins margins(walls, comparisons, opposite);
        std::vector<Normals> found;
        const OT::Point start(walls.draws.dimension(), 0.1);
        const std::string fault = addPoint(found, margins, walls, start);
        // From the other side as well: abs(x) > 3 has a border on both.
        const OT::Point mirrored =
            found.empty() ? start : OT::Point(found[0].begin(), found[0].end());
        if (!walls.isStopped()) {
            addPoint(found, margins, walls, mirrored * -1);
        }
        if (found.empty()) {
            ++result.missed;
            result.fault = result.fault.empty() ? fault : result.fault;
        }
        points.insert(points.end(), found.begin(), found.end());
    }
    sortByLength(points);
    return points;
}

/// How much a place of the border counts in the variance of a sample around points.
double shareOf(const Normals& place, const std::vector<Normals>& points) {
    const double length = lengthOf(place);
    return std::exp(-length * length / 2) * weightAround(points, place);
}

/// The entry of rays that counts most, as a multiple of what the nearest point does.
struct LeastSeen {
    std::size_t entry = 0;
    double multiple = 0;
    bool isNearer = false; ///< than all points
};
LeastSeen leastSeen(const std::vector<Normals>& entries, const std::vector<Normals>& points) {
    LeastSeen least;
    const double usual = points.empty() ? 1 : shareOf(points.front(), points);
    for (std::size_t n = 0; n < entries.size(); ++n) {
        const double multiple = shareOf(entries[n], points) / usual;
        if (multiple > least.multiple) {
            least.entry = n;
            least.multiple = multiple;
        }
    }
    least.isNearer =
        !entries.empty() &&
        (points.empty() || lengthOf(entries[least.entry]) < lengthOf(points.front()) - 10 * Nearer);
    return least;
}

/// Adds the nearest point around an entry, or in place of one that is there and further away;
/// where that one is no further the entry itself, for the sample.
void addAround(std::vector<Normals>& points, const Normals& entry, const Normals& nearest) {
    const auto there = std::find_if(points.begin(), points.end(), [&](const Normals& other) {
        return distanceOf(nearest, other) < Apart;
    });
    if (there == points.end()) {
        points.push_back(nearest);
    } else if (lengthOf(nearest) < lengthOf(*there) - Nearer) {
        *there = nearest;
    } else {
        points.push_back(entry);
    }
    sortByLength(points);
}

/// Looks along rays for borders that the searches by margins do not see: of walls without a
/// solution, and of states that curve around the origin. How many rays meet a border that the
/// sample hardly sees all the same.
std::size_t addSurveyed(std::vector<Normals>& points, Walls& walls, bool isReached) {
    const Reached reached = [&](const Normals& normals) {
        return !walls.isStopped() && walls.limit.reached(walls.at(normals)) != isReached;
    };
    // The radius beyond which a point has less than its least share of the nearest's probability.
    const double radius =
        points.empty() ? FurthestLook
                       : -OT::DistFunc::qNormal(LeastShareOfRays *
                                                OT::DistFunc::pNormal(-lengthOf(points.front())));
    std::vector<Normals> entries = entriesAlongRays(reached, walls.draws.dimension(), radius);
    LeastSeen least = leastSeen(entries, points);
    for (std::size_t n = 0; n < MostAdded && (least.multiple > HardlySeen || least.isNearer); ++n) {
        const Normals entry = entries[least.entry];
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(least.entry));
        addAround(points, entry, n < MostSearched ? nearestAround(reached, entry) : entry);
        least = leastSeen(entries, points);
    }
    return static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(), [&](const Normals& entry) {
            return shareOf(entry, points) > HardlySeen * shareOf(points.front(), points);
        }));
}

/// Takes the nearest point as the design point.
void takeDesignPoint(FirstOrder& result, Walls& walls, const Normals& point, bool isReached) {
    const double beta = lengthOf(point);
    const double probability = OT::DistFunc::pNormal(-beta);
    result.beta = beta * (isReached ? -1 : 1);
    result.probability = isReached ? 1 - probability : probability;
    walls.draws.fromNormals(point, result.designPoint);
    result.scores = walls.draws.scores(point);
    Normals beyond = point;
    for (double& number : beyond) {
        number *= 1 + SmallestBeta;
    }
    result.endsUnsolved = !walls.limit.condition.isKnown(walls.at(beyond));
    if (beta < SmallestBeta) {
        return;
    }
    const double length = lengthOf(result.scores);
    for (const double score : result.scores) {
        result.importance.push_back(score * score / (length * length));
    }
}

} // namespace

bool hasTooManyAlternatives(const Study& study, const LimitState& limit) {
    const bool state = limit.condition.alternatives(false).empty();
    const bool opposite = limit.condition.alternatives(true).empty();
    if (state == opposite) {
        return state;
    }
    Walls walls(study, limit, {});
    return limit.reached(walls.at(Normals(walls.draws.dimension(), 0))) ? opposite : state;
}

FirstOrder firstOrder(const Study& study, const LimitState& limit,
                      const std::function<bool()>& stop) {
    FirstOrder result;
    Walls walls(study, limit, stop);
    const bool isReached = limit.reached(walls.at(Normals(walls.draws.dimension(), 0)));
    std::vector<Normals> points = bordersOf(walls, isReached, result);
    if (!walls.isStopped() && !result.isTooLong) {
        result.hardlySeen = addSurveyed(points, walls, isReached);
    }
    for (Normals& point : points) {
        if (result.points.empty()) {
            takeDesignPoint(result, walls, point, isReached);
        } else if (OT::DistFunc::pNormal(-lengthOf(point)) <
                   LeastShare * OT::DistFunc::pNormal(-std::abs(result.beta))) {
            break;
        }
        result.points.push_back(std::move(point));
    }
    if (!result.points.empty() && !walls.isStopped()) {
        result.fault.clear();
    }
    result.solutions = walls.solutions;
    return result;
}

void WeightedHits::add(double hit, double weight) {
    const double square = hit * weight * weight;
    rows += 1;
    weights += hit * weight;
    squares += square;
    fourths += square * square;
}

Estimate WeightedHits::estimate(bool opposite) const {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const double mean = weights / rows;
    const double value = opposite ? 1 - mean : mean;
    if (!hasInterval || !(squares * squares >= LeastCarrying * fourths) || fourths == 0) {
        return {value, none, none};
    }
    const double half = OT::DistFunc::qNormal(0.025, true) *
                        std::sqrt(std::max(squares / rows - mean * mean, 0.0) / rows);
    return {value, std::max(0.0, value - half), std::min(1.0, value + half)};
}

std::vector<FirstOrder> firstOrders(const Study& study, const std::function<bool()>& stop) {
    std::vector<FirstOrder> all;
    for (const LimitState& limit : study.limits) {
        all.push_back(firstOrder(study, limit, stop));
    }
    return all;
}

void addFirstOrder(std::vector<Statistic>& all, const Study& study,
                   const std::vector<FirstOrder>& orders) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const Draws draws(study);
    for (std::size_t n = 0; n < study.limits.size(); ++n) {
        const LimitState& limit = study.limits[n];
        const FirstOrder& found = orders[n];
        if (!found.fault.empty()) {
            all.push_back({limit.name, "no design point: " + found.fault, none, none, none});
            continue;
        }
        all.push_back({limit.name, "beta", found.beta, none, none});
        all.push_back({limit.name, "probability of first order", found.probability, none, none});
        for (std::size_t i = 0; i < draws.dimension(); ++i) {
            const std::string& name = study.variables[draws.variableOf(i)].name;
            all.push_back({limit.name, "design point " + name, found.designPoint[i], none, none});
            all.push_back({limit.name, "normal number " + name, found.scores[i], none, none});
            if (!found.importance.empty()) {
                all.push_back({limit.name, "importance " + name, found.importance[i], none, none});
            }
        }
        if (found.hardlySeen > 0) {
            all.push_back(
                {limit.name, HardlySeenRays, static_cast<double>(found.hardlySeen), none, none});
        }
        if (found.endsUnsolved) {
            all.push_back({limit.name, EndsUnsolved, 1, none, none});
        }
        if (found.missed > 0) {
            all.push_back({limit.name, "alternatives without a design point",
                           static_cast<double>(found.missed), none, none});
        }
        all.push_back({limit.name, "solutions", static_cast<double>(found.solutions), none, none});
    }
}

void addImportance(std::vector<Statistic>& all, const Study& study, const Store& store,
                   const std::vector<FirstOrder>& orders) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t n = 0; n < study.limits.size(); ++n) {
        const std::string& limit = study.limits[n].name;
        const bool opposite = orders[n].beta < 0;
        const std::string hit = opposite ? "(1 - " + quoted(limit) + ")" : quoted(limit);
        WeightedHits hits{.hasInterval = haveIntervals(study) && orders[n].hardlySeen == 0};
        double reached = 0;
        store.query("SELECT " + quoted(limit) + ", " + hit + ", weight FROM variants",
                    [&](const std::vector<double>& row) {
                        reached += row[0];
                        hits.add(row[1], row[2]);
                    });
        const Estimate found = hits.estimate(opposite);
        all.push_back({limit, "reached", reached, none, none});
        all.push_back(
            {limit, "probability by importance sampling", found.value, found.low, found.high});
    }
}

} // namespace korvane::study
