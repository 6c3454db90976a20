// The numbers of a report as JSON.
#include "study/draws.h"
#include "study/pictures.h"
#include "study/report.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace korvane::study {

namespace {

using Json = nlohmann::ordered_json;

constexpr int SummarySchema = 1;

/// Null where it is not finite.
Json number(double value) {
    return std::isfinite(value) ? Json(value) : Json(nullptr);
}

Json variableOf(const Study& study, const Variable& variable) {
    Json fields = Json::array();
    for (const FieldAddress& place : variable.fields) {
        fields.push_back(addressName(place));
    }
    Json told{{"name", variable.name},
              {"fields", fields},
              {"change", changeName(variable.change)},
              {"unit", unitOf(variable.quantity, study.units).name}};
    if (variable.isRandom()) {
        const DistributionFigures figures = figuresOf(variable);
        told["distribution"] = variable.distribution;
        told["mean"] = number(figures.mean);
        told["deviation"] = number(figures.deviation);
        told["quantile 0.05"] = number(figures.low);
        told["quantile 0.95"] = number(figures.high);
    } else {
        told["values"] = variable.values;
    }
    return told;
}

Json variablesOf(const Study& study) {
    Json all = Json::array();
    for (const Variable& variable : study.variables) {
        all.push_back(variableOf(study, variable));
    }
    return all;
}

Json outputsOf(const FinishedStudy& finished) {
    Json all = Json::array();
    for (std::size_t n = 0; n < finished.study.outputs.size(); ++n) {
        const OutputColumn& column = finished.study.outputs[n];
        all.push_back({{"name", column.name},
                       {"unit", unitOf(column.quantity(), finished.study.units).name},
                       {"base", number(finished.baseOutputs[n])}});
    }
    return all;
}

Json limitsOf(const Study& study) {
    Json all = Json::array();
    for (const LimitState& limit : study.limits) {
        all.push_back({{"name", limit.name},
                       {"state", limit.text},
                       {"noSolution", limit.noSolutionFails ? "fails" : "safe"}});
    }
    return all;
}

Json endingsOf(const FinishedStudy& finished) {
    Json all = Json::array();
    for (const Ending& ending : finished.endings) {
        all.push_back({{"outcome", ending.outcome},
                       {"reason", ending.reason},
                       {"example", ending.example},
                       {"count", ending.count},
                       {"first", ending.first}});
    }
    return all;
}

Json statisticsOf(const FinishedStudy& finished) {
    Json all = Json::array();
    for (const Statistic& one : finished.statistics) {
        all.push_back({{"subject", one.subject},
                       {"name", one.name},
                       {"value", number(one.value)},
                       {"low", number(one.low)},
                       {"high", number(one.high)}});
    }
    return all;
}

Json tornadoOf(const FinishedStudy& finished) {
    Json all = Json::array();
    for (const std::size_t output : finished.plotted()) {
        for (const Swing& swing : swingsOf(finished, output)) {
            all.push_back({{"output", finished.study.outputs[output].name},
                           {"variable", finished.study.variables[swing.variable].name},
                           {"lowNumber", number(swing.lowNumber)},
                           {"highNumber", number(swing.highNumber)},
                           {"low", number(swing.low)},
                           {"high", number(swing.high)}});
        }
    }
    return all;
}

Json fragilityOf(const FinishedStudy& finished) {
    Json all = Json::array();
    for (const LimitState& limit : finished.study.limits) {
        for (const FragilityPoint& point : finished.fragility(limit.name)) {
            all.push_back({{"limit", limit.name},
                           {"value", number(point.value)},
                           {"probability", number(point.probability)},
                           {"low", number(point.low)},
                           {"high", number(point.high)}});
        }
    }
    return all;
}

} // namespace

std::string summaryText(const FinishedStudy& finished) {
    const Study& study = finished.study;
    Json summary{{"schema", SummarySchema},
                 {"program", finished.store.provenance("program")},
                 {"base", study.baseName},
                 {"method", methodName(study.method)},
                 {"units", unitsName(study.units)},
                 {"seed", study.sample.seed},
                 {"studyHash", finished.store.provenance("study")},
                 {"baseHash", finished.store.provenance("base")},
                 {"variants", finished.rows},
                 {"withoutSolution", finished.lost},
                 {"variables", variablesOf(study)},
                 {"outputs", outputsOf(finished)},
                 {"limits", limitsOf(study)},
                 {"statistics", statisticsOf(finished)},
                 {"failures", endingsOf(finished)}};
    if (study.method == Method::OneAtATime) {
        summary["tornado"] = tornadoOf(finished);
    }
    if (study.method == Method::Fragility) {
        summary["fragility"] = fragilityOf(finished);
    }
    return summary.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace korvane::study
