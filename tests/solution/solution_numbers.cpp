#include "solution_numbers.h"

#include <bit>
#include <type_traits>

namespace korvane::test {

namespace {

class Numbers {
  public:
    template <class... Values>
    void add(const Values&... values) {
        (addOne(values), ...);
    }
    std::vector<std::uint64_t> take() { return std::move(list_); }

  private:
    void addOne(double value) { list_.push_back(std::bit_cast<std::uint64_t>(value)); }
    template <class Value>
    requires(std::is_integral_v<Value> || std::is_enum_v<Value>) void addOne(Value value) {
        list_.push_back(static_cast<std::uint64_t>(value));
    }
    template <class Value, int... Extents>
    void addOne(const Array<Value, Extents...>& array) {
        for (const Value& value : array) {
            addOne(value);
        }
    }
    void addOne(const Stage& stage) { add(stage.doing, stage.side, stage.level); }
    void addOne(const Extreme& extreme) { add(extreme.value, extreme.elev); }
    void addOne(const Range& range) { add(range.largest, range.smallest); }
    void addOne(const PressureDiagrams& d) {
        add(d.grid.NumElevs, d.grid.ElevGrid, d.grid.SeepageEndIndex, d.NetActive, d.NetPassive);
        const Pressures& p = d.pressures;
        add(p.ActivePressures, p.PassivePressures, p.WaterPressures, p.SurchargePressures);
        add(p.ActiveMark, p.PassiveMark);
    }
    void addOne(const ResultDiagrams& d) {
        add(d.RowCount);
        for (int r = 1; r <= d.RowCount; ++r) {
            add(d.ResultElev(r), d.ResultMoment(r), d.ResultShear(r), d.ResultDeflection(r),
                d.ResultPressure(r));
        }
        add(d.MaxMoment, d.MaxDeflection, d.DeflectionRange, d.MomentRange, d.ShearRange,
            d.PressureRange);
    }
    void addOne(const DevelopedLayer& l) {
        add(l.fsActive, l.fsPassive, l.activeSource, l.passiveSource, l.frictionActive,
            l.frictionPassive, l.wallFrictionActive, l.wallFrictionPassive, l.cohesionActive,
            l.cohesionPassive, l.adhesionActive, l.adhesionPassive, l.Ka, l.Kp, l.KaSource,
            l.KpSource);
    }

    std::vector<std::uint64_t> list_;
};

void addLevel(Numbers& numbers, const Problem& problem, const LevelResult& level) {
    numbers.add(level.method, level.bottomElev, level.penetration, level.bottomPressure,
                level.anchorForce, level.factorOfSafety, level.seepageGradient,
                level.seepageEndElev, level.transitionElev, level.toeReaction, level.bottomIndex,
                level.maxShear, level.diagrams, level.solved, level.WedgeNoSolution);
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            numbers.add(level.layers(side, layer));
        }
    }
}

void addReview(Numbers& numbers, const Review& review) {
    numbers.add(review.SideMethod, review.hasPressures, review.WedgeNoSolution, review.SeepageKind,
                review.SeepageGradient, review.SeepageGradientLimit);
    if (review.hasPressures) {
        numbers.add(review.diagrams);
    }
}

void addResults(Numbers& numbers, const Problem& problem, const Results& results) {
    addReview(numbers, results.review);
    numbers.add(results.levelCount, results.wedgeWarning);
    for (int level = 1; level <= results.levelCount; ++level) {
        addLevel(numbers, problem, results.levels(level));
    }
}

void addReduction(Numbers& numbers, const MomentReduction& rowe) {
    numbers.add(rowe.soil, rowe.RoweSoilType, rowe.RoweHeight, rowe.RoweAlpha, rowe.RoweBeta,
                rowe.RoweStability, rowe.applicable, rowe.sandOutOfRange, rowe.PileLogRigidity,
                rowe.PileMomentRatio, rowe.RoweSandCurve, rowe.inRange, rowe.coefficient,
                rowe.reducedRatio);
    for (const RoweCondition condition : rowe.broken) {
        numbers.add(condition);
    }
}

} // namespace

std::vector<std::uint64_t> reviewNumbers(const Review& review) {
    Numbers numbers;
    addReview(numbers, review);
    return numbers.take();
}

std::vector<std::uint64_t> resultNumbers(const Problem& problem, const Results& results) {
    Numbers numbers;
    addResults(numbers, problem, results);
    return numbers.take();
}

std::vector<std::uint64_t> reductionNumbers(const MomentReduction& reduction) {
    Numbers numbers;
    addReduction(numbers, reduction);
    return numbers.take();
}

std::vector<std::uint64_t> solutionNumbers(const Problem& problem, const Solved& solved) {
    Numbers numbers;
    const Failure& f = solved.failure;
    numbers.add(f.code, f.stage, f.side, f.layer, f.level, f.elev, f.low, f.high, f.bracketed,
                f.anchored, f.error);
    numbers.add(solved.review != nullptr, solved.results != nullptr, solved.reduction != nullptr);
    if (solved.review != nullptr) {
        addReview(numbers, *solved.review);
    }
    if (solved.results != nullptr) {
        addResults(numbers, problem, *solved.results);
    }
    if (solved.reduction != nullptr) {
        addReduction(numbers, *solved.reduction);
    }
    return numbers.take();
}

} // namespace korvane::test
