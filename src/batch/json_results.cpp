#include "batch/json_results.h"

#include "batch/json_comparison.h"
#include "batch/json_notes.h"
#include "batch/json_problem.h"
#include "problem/fields.h"
#include "problem/unit_conversion.h"
#include "reports/reduction_report.h"
#include "reports/report_parts.h"
#include "runtime/dates.h"
#include "runtime/json_text.h"
#include "runtime/utf8_text.h"
#include "solution/wall_diagrams.h"
#include "state/result_fields.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>

namespace korvane::batch {

namespace {

const char* statusText(int status) {
    return status == StatusSolved ? "solved" : status == StatusFailed ? "failed" : "error";
}

const char* answerText(Answer answer) {
    switch (answer) {
    case Answer::Ok:
        return "OK";
    case Answer::Cancel:
        return "Cancel";
    case Answer::Yes:
        return "Yes";
    case Answer::No:
        return "No";
    case Answer::Back:
        return "Back";
    }
    return "";
}

/// A document whose numbers are told in a system of units.
class UnitsJson : public JsonText {
  public:
    UnitsJson(std::size_t length, UnitSystem units) : JsonText(length), units_(units) {}

    using JsonText::member;
    void member(const ResultField& field, double number) {
        JsonText::member(field.name, told(field, number));
    }
    void member(const ResultField& field, const std::optional<double>& perhaps) {
        perhaps ? member(field, *perhaps) : JsonText::member(field.name, nullptr);
    }
    double told(const ResultField& field, double number) const {
        return inUnits(field.quantity, number, units_);
    }
    UnitSystem units() const { return units_; }

  private:
    UnitSystem units_;
};

/// A value where it applies.
template <class T>
std::optional<T> where(bool applies, const T& value) {
    return applies ? std::optional<T>(value) : std::nullopt;
}

void writeMessages(UnitsJson& json, const std::vector<Message>& messages) {
    json.array([&] {
        for (const Message& message : messages) {
            json.object([&] {
                json.member("title", utf8Text(message.box.title));
                json.member("text", utf8Text(message.box.text));
                json.member("answer", answerText(message.answer));
            });
        }
    });
}

/// Two values: just below and just above a grid point, or active and passive.
template <class T>
void writePair(UnitsJson& json, const char* name, const T& first, const T& second) {
    json.member(name).array([&] {
        json.value(first);
        json.value(second);
    });
}

void writeNumbers(UnitsJson& json, const ResultField& field, double first, double second) {
    writePair(json, field.name, json.told(field, first), json.told(field, second));
}

/// The pressures of one side at a grid point.
void writeSide(UnitsJson& json, const char* name, const Pressures& pressures, int side, int i) {
    const auto& active = pressures.ActivePressures;
    const auto& passive = pressures.PassivePressures;
    json.member(name).object([&] {
        writeNumbers(json, results::active, active(side, i, 1), active(side, i, 2));
        writeNumbers(json, results::passive, passive(side, i, 1), passive(side, i, 2));
        writePair(json, "marks", markText(pressures.ActiveMark(side, i)),
                  markText(pressures.PassiveMark(side, i)));
    });
}

void writeGrid(UnitsJson& json, const PressureDiagrams& level) {
    const Pressures& pressures = level.pressures;
    const auto& WaterPressures = pressures.WaterPressures;
    json.array([&] {
        for (int i = 1; i <= level.grid.NumElevs; ++i) {
            json.object([&] {
                json.member(results::elev, level.grid.ElevGrid(i));
                writeNumbers(json, results::water, WaterPressures(i, 1), WaterPressures(i, 2));
                writeSide(json, "right", pressures, Right, i);
                writeSide(json, "left", pressures, Left, i);
                writeNumbers(json, results::netActive, level.NetActive(i, 1),
                             level.NetActive(i, 2));
                writeNumbers(json, results::netPassive, level.NetPassive(i, 1),
                             level.NetPassive(i, 2));
            });
        }
    });
}

void writeRows(UnitsJson& json, const ResultDiagrams& diagrams, bool analysis) {
    const ResultField& deflection = analysis ? results::deflection : results::scaledDeflection;
    json.array([&] {
        for (int i = 1; i <= diagrams.RowCount; ++i) {
            json.object([&] {
                json.member(results::elev, diagrams.ResultElev(i));
                json.member(results::moment, diagrams.ResultMoment(i));
                json.member(results::shear, diagrams.ResultShear(i));
                json.member(deflection, diagrams.ResultDeflection(i));
                json.member(results::pressure, diagrams.ResultPressure(i));
            });
        }
    });
}

void writeExtreme(UnitsJson& json, const ResultField& field, const Extreme& extreme) {
    json.member(field.name).object([&] {
        json.member("value", json.told(field, extreme.value));
        json.member(results::elev, extreme.elev);
    });
}

void writeLevel(UnitsJson& json, const Problem& problem, const LevelResult& level) {
    const bool analysis = problem.ProgramMode == Mode::Analysis;
    const bool activeGiven = analysis && problem.FSKind == FactorKind::ActiveGiven;
    const bool fixedEarth = level.method == SolutionMethod::FixedEarth;
    const bool anchored = problem.WallType == WallKind::Anchored;
    const bool seeps = problem.SeepageKind != Seepage::None;
    json.object([&] {
        json.member("method", solutionMethodName(level.method));
        json.member(results::bottomElev, level.bottomElev);
        json.member(results::penetration, level.penetration);
        json.member(results::anchorForce, where(anchored, level.anchorForce));
        json.member(results::factorOfSafety, where(analysis, level.factorOfSafety));
        json.member(results::factorGiven, where(activeGiven, problem.FSActive));
        json.member(results::seepageGradient, where(seeps, level.seepageGradient));
        json.member(results::transitionElev, where(!anchored, level.transitionElev));
        json.member(results::toeReaction, where(fixedEarth, level.toeReaction));
        writeExtreme(json, results::maxMoment, level.diagrams.MaxMoment);
        writeExtreme(json, results::maxShear, level.maxShear);
        writeExtreme(json, analysis ? results::maxDeflection : results::maxScaledDeflection,
                     level.diagrams.MaxDeflection);
        json.member("rows");
        writeRows(json, level.diagrams, analysis);
        json.member("grid");
        writeGrid(json, wallDiagrams(level));
    });
}

const char* sourceName(FactorSource source) {
    switch (source) {
    case FactorSource::Control:
        return "control";
    case FactorSource::Side:
        return "side";
    case FactorSource::Layer:
        return "layer";
    case FactorSource::Search:
        return "search";
    }
    return "";
}

/// How the pressures of a side were found; "table" where a layer's passive coefficient came from
/// the table for curved failure surfaces.
const char* sideMethod(const Problem& problem, const Results& results, const LevelResult& level,
                       int side) {
    const PressureMethod method = results.review.SideMethod(side);
    if (method != PressureMethod::Coefficients) {
        return method == PressureMethod::Sweep ? "sweep" : "fixed";
    }
    if (problem.SoilDataKind(side) == SoilData::Coefficients) {
        return "given";
    }
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        if (level.layers(side, layer).KpSource == CoefficientSource::CurvedTable) {
            return "table";
        }
    }
    return "coulomb";
}

/// Factors of safety divide strengths: where coefficients are given, there are neither.
void writeLayer(UnitsJson& json, const DevelopedLayer& layer) {
    const bool strengths = layer.KaSource != CoefficientSource::Given;
    const bool coefficients = layer.KaSource != CoefficientSource::None;
    json.object([&] {
        json.member(results::fsActive, where(strengths, layer.fsActive));
        json.member(results::fsPassive, where(strengths, layer.fsPassive));
        if (strengths) {
            writePair(json, "fsSource", sourceName(layer.activeSource),
                      sourceName(layer.passiveSource));
        } else {
            json.member("fsSource", nullptr);
        }
        json.member(results::frictionActive, where(strengths, layer.frictionActive));
        json.member(results::frictionPassive, where(strengths, layer.frictionPassive));
        json.member(results::wallFrictionActive, where(strengths, layer.wallFrictionActive));
        json.member(results::wallFrictionPassive, where(strengths, layer.wallFrictionPassive));
        json.member(results::cohesionActive, where(strengths, layer.cohesionActive));
        json.member(results::cohesionPassive, where(strengths, layer.cohesionPassive));
        json.member(results::adhesionActive, where(strengths, layer.adhesionActive));
        json.member(results::adhesionPassive, where(strengths, layer.adhesionPassive));
        json.member(results::ka, where(coefficients, layer.Ka));
        json.member(results::kp, where(coefficients, layer.Kp));
    });
}

/// The soil of a side as the last level used it; null where nothing is solved.
void writeSoilOfSide(UnitsJson& json, const Problem& problem, const Results* results, int side) {
    if (results == nullptr) {
        json.value(nullptr);
        return;
    }
    const LevelResult& level = results->levels(results->levelCount);
    json.object([&] {
        json.member("method", sideMethod(problem, *results, level, side));
        json.member("layers").array([&] {
            for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
                writeLayer(json, level.layers(side, layer));
            }
        });
    });
}

void writeOptions(UnitsJson& json, const Options& options) {
    json.object([&] {
        json.member("wedge", options.fixedSurface ? "fixed" : "sweep");
        json.member("amendments").array([] {});
        json.member("largestFactor", options.maxFs);
        json.member("epoch", fixedMoment());
    });
}

/// A value of a section: one number in clay, one for loose and one for dense sand; null where the
/// section lies outside the range of the curves.
void writeReduced(UnitsJson& json, const char* name, const MomentReduction& rowe,
                  const Array<double, 13, 2>& values, int p) {
    if (!rowe.inRange(p)) {
        json.member(name, nullptr);
    } else if (rowe.soil == RoweSoil::Clay) {
        json.member(name, values(p, 1));
    } else {
        json.member(name).object([&] {
            json.member("loose", values(p, 1));
            json.member("dense", values(p, 2));
        });
    }
}

void writeSection(UnitsJson& json, const PileSections& sections, const MomentReduction& rowe,
                  int p) {
    json.object([&] {
        json.member("name", utf8Text(sections.PileName(p)));
        json.member(results::sectionModulus, sections.PileSectionData(p, 1));
        json.member(results::inertia, sections.PileSectionData(p, 2));
        json.member(results::allowableStress, sections.PileAllowStress(p));
        json.member(results::modulus, sections.PileModulus(p));
        json.member(results::logRigidity, rowe.PileLogRigidity(p));
        json.member(results::momentRatio, rowe.PileMomentRatio(p));
        writeReduced(json, "coefficient", rowe, rowe.coefficient, p);
        writeReduced(json, "reducedRatio", rowe, rowe.reducedRatio, p);
    });
}

void writeRowe(UnitsJson& json, const PileSections& sections, const MomentReduction* rowe) {
    if (rowe == nullptr || rowe->soil == RoweSoil::None) {
        json.value(nullptr);
        return;
    }
    const bool clay = rowe->soil == RoweSoil::Clay;
    const auto& inRange = rowe->inRange;
    json.object([&] {
        json.member("soil", clay ? "clay" : "sand");
        json.member(results::height, rowe->RoweHeight);
        json.member(results::alpha, rowe->RoweAlpha);
        json.member(results::beta, rowe->RoweBeta);
        json.member(results::stability, where(clay, rowe->RoweStability));
        json.member("applicable", std::any_of(inRange.begin(), inRange.end(), std::identity{}));
        json.member("notes").array([&] {
            for (const std::string& note : reductionNotes(*rowe)) {
                json.value(note);
            }
        });
        json.member("sections").array([&] {
            for (int p = 1; p <= sections.PileSectionCount; ++p) {
                writeSection(json, sections, *rowe, p);
            }
        });
    });
}

/// Why there are no results; null where there are.
void writeFailure(UnitsJson& json, const Failure& failure, const InputFault& fault, WallKind wall) {
    if (!failure) {
        json.value(nullptr);
        return;
    }
    const auto given = [](int count) { return where(count != 0, count); };
    const bool refused = fault.line != 0;
    const int side = refused ? fault.side : failure.side;
    const bool hasElev = failureHasElevation(failure.code);
    const bool hasLow = failure.bracketed || failure.code == FailureCode::FactorDeclined;
    json.object([&] {
        json.member("code", failureName(failure.code));
        json.member("stage", stageText(failure.stage, wall));
        json.member("level", given(failure.level));
        json.member("side", where<std::string_view>(side != 0, side == Right ? "right" : "left"));
        json.member("layer", given(failure.layer));
        json.member(results::elev, where(hasElev, failure.elev));
        json.member(results::distance, where(failure.distance > 0, failure.distance));
        json.member(results::factorLow, where(hasLow, failure.low));
        json.member(results::factorHigh, where(failure.bracketed, failure.high));
        json.member("error", given(failure.error));
        const Finding& finding = failure.finding;
        const bool hasFinding = finding.by != 0;
        const std::string field = refused ? fault.field : finding.field;
        json.member("field", where(refused || hasFinding, field));
        json.member("index", given(refused ? fault.index : finding.index));
        const ResultField ofField{"", quantityOf(finding.field)};
        json.member("value", where(hasFinding, json.told(ofField, finding.value)));
        json.member("limit",
                    where(hasFinding && finding.hasLimit(), json.told(ofField, finding.limit)));
        json.member("line", given(fault.line));
        json.member("read", where(refused, utf8Text(fault.read)));
        json.member("must", where(refused, fault.needed));
    });
}

const PressureDiagrams* reviewDiagrams(const Solved& solved) {
    return solved.review != nullptr && solved.review->hasPressures ? &solved.review->diagrams
                                                                   : nullptr;
}

/// Null unless the wall is solved: where a later step has failed too. A file that could not take
/// its place says nothing of the wall.
const Results* solvedResults(const JsonRecord& record) {
    const FailureCode code = record.solved.failure.code;
    const bool solved = code == FailureCode::None || code == FailureCode::FileFault;
    return solved ? record.solved.results : nullptr;
}

int levelCount(const Results* results) {
    return results == nullptr ? 0 : results->levelCount;
}

/// Bytes, on the safe side: a grid point takes some 550, a result row 150, all else 10,000.
std::size_t expectedLength(const JsonRecord& record) {
    const PressureDiagrams* review = reviewDiagrams(record.solved);
    int points = review == nullptr ? 0 : review->grid.NumElevs;
    const Results* results = solvedResults(record);
    for (int level = 1; level <= levelCount(results); ++level) {
        points += results->levels(level).solved.grid.NumElevs;
    }
    return 20000 + 700U * static_cast<std::size_t>(points);
}

void writeReview(UnitsJson& json, const PressureDiagrams* review) {
    if (review != nullptr) {
        writeGrid(json, withWaterInStep(*review));
    } else {
        json.array([] {});
    }
}

void writeProblemInUnits(UnitsJson& json, const Problem& problem) {
    if (json.units() == UnitSystem::US) {
        writeProblem(json, problem);
    } else {
        writeProblem(json, problemInUnits(problem, json.units()));
    }
}

} // namespace

std::string jsonResults(const JsonRecord& record) {
    const Results* results = solvedResults(record);
    UnitsJson json(expectedLength(record), record.units);
    json.object([&] {
        json.member("schema", 2);
        json.member("program", "KORVANE");
        json.member("version", KORVANE_VERSION);
        json.member("input", utf8Text(record.input));
        json.member("units", unitsName(record.units));
        json.member("status", statusText(record.status));
        json.member("options");
        writeOptions(json, record.options);
        json.member("failure");
        writeFailure(json, record.solved.failure, record.fault, record.problem.WallType);
        json.member("messages");
        writeMessages(json, record.messages);
        if (record.notes != nullptr) {
            json.member("notes");
            writeNotes(json, *record.notes, record.units);
        }
        if (record.comparison != nullptr) {
            json.member("comparison");
            writeComparison(json, *record.comparison, record.problem.ProgramMode, record.units);
        }
        json.member("problem");
        writeProblemInUnits(json, record.problem);
        json.member("right");
        writeSoilOfSide(json, record.problem, results, Right);
        json.member("left");
        writeSoilOfSide(json, record.problem, results, Left);
        json.member("grid");
        writeReview(json, reviewDiagrams(record.solved));
        json.member("levels").array([&] {
            for (int level = 1; level <= levelCount(results); ++level) {
                writeLevel(json, record.problem, results->levels(level));
            }
        });
        json.member("rowe");
        writeRowe(json, record.sections, record.solved.reduction);
    });
    return json.take();
}

} // namespace korvane::batch
