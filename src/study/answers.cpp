#include "study/answers.h"

#include "study/pictures.h"
#include "study/reliability.h"

#include <algorithm>
#include <cmath>

namespace korvane::study {

namespace {

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t n = 0; n < names.size(); ++n) {
        text += (n == 0 ? "" : n + 1 == names.size() ? " and " : ", ") + names[n];
    }
    return text;
}

std::string outputsText(const Study& study) {
    std::vector<std::string> names;
    for (const OutputColumn& column : study.outputs) {
        if (!column.isElev) {
            names.push_back(column.name);
        }
    }
    return joined(names);
}

std::string variablesText(const Study& study, std::size_t without) {
    std::vector<std::string> names;
    for (std::size_t n = 0; n < study.variables.size(); ++n) {
        if (n != without) {
            names.push_back(study.variables[n].name);
        }
    }
    return joined(names);
}

std::string stateText(const LimitState& limit) {
    return "“" + limit.name + "” (" + limit.text + ")";
}

std::string limitsText(const Study& study) {
    std::vector<std::string> texts;
    for (const LimitState& limit : study.limits) {
        texts.push_back(stateText(limit));
    }
    return joined(texts);
}

std::string interval(const Statistic& one) {
    return std::isfinite(one.low) && std::isfinite(one.high)
               ? " (95 %: " + told(one.low) + " to " + told(one.high) + ")"
               : "";
}

void answerTornado(std::vector<std::string>& answers, const FinishedStudy& finished) {
    const Study& study = finished.study;
    for (const std::size_t output : finished.plotted()) {
        const std::vector<Swing> swings = swingsOf(finished, output);
        if (swings.front().size() == 0) {
            continue;
        }
        const Swing& most = swings.front();
        const Variable& variable = study.variables[most.variable];
        const OutputColumn& column = study.outputs[output];
        const auto text = [&](double value) {
            return std::isfinite(value) ? toldWithUnit(value, column, study.units) : "no solution";
        };
        answers.push_back(
            column.name + " moves most with " + variable.name + ": " + text(most.low) + " at " +
            toldWithUnit(most.lowNumber, variable, study.units) + ", " + text(most.high) + " at " +
            toldWithUnit(most.highNumber, variable, study.units) + "; the base has " +
            text(most.base) + ".");
    }
}

void answerRange(std::vector<std::string>& answers, const FinishedStudy& finished) {
    for (const std::size_t output : finished.plotted()) {
        const OutputColumn& column = finished.study.outputs[output];
        const UnitSystem units = finished.study.units;
        if (finished.value(column.name, "count") > 0) {
            answers.push_back(
                column.name + " lies between " +
                toldWithUnit(finished.value(column.name, "least"), column, units) + " and " +
                toldWithUnit(finished.value(column.name, "largest"), column, units) + ".");
        }
    }
}

void answerSample(std::vector<std::string>& answers, const FinishedStudy& finished) {
    for (const std::size_t output : finished.plotted()) {
        const OutputColumn& column = finished.study.outputs[output];
        const UnitSystem units = finished.study.units;
        const Statistic* mean = finished.find(column.name, "mean");
        if (mean == nullptr) {
            continue;
        }
        answers.push_back(
            column.name + ": mean " + toldWithUnit(mean->value, column, units) + interval(*mean) +
            "; nine walls of ten lie between " +
            toldWithUnit(finished.value(column.name, "quantile 0.05"), column, units) + " and " +
            toldWithUnit(finished.value(column.name, "quantile 0.95"), column, units) + ".");
    }
}

std::string indexText(const std::string& output, const std::string& variable,
                      const Statistic& total) {
    return output + " hangs most on " + variable + ": total index " + told(total.value) +
           interval(total) + ".";
}

void answerIndices(std::vector<std::string>& answers, const FinishedStudy& finished) {
    for (const std::size_t output : finished.plotted()) {
        const std::string& name = finished.study.outputs[output].name;
        const Statistic* most = nullptr;
        std::string about;
        for (const std::size_t n : finished.random()) {
            const std::string& variable = finished.study.variables[n].name;
            const Statistic* total = finished.find(name, "total " + variable);
            if (total != nullptr && (most == nullptr || total->value > most->value)) {
                most = total;
                about = variable;
            }
        }
        if (most != nullptr) {
            answers.push_back(indexText(name, about, *most));
        }
    }
}

void answerProbabilities(std::vector<std::string>& answers, const FinishedStudy& finished) {
    for (const LimitState& limit : finished.study.limits) {
        const std::string what = stateText(limit) + ": ";
        const Statistic* beta = finished.find(limit.name, "beta");
        if (beta != nullptr) {
            answers.push_back(what + "reliability index β " + told(beta->value) +
                              ", probability by the first-order method " +
                              told(finished.value(limit.name, "probability of first order")) +
                              (finished.find(limit.name, EndsUnsolved) == nullptr
                                   ? "."
                                   : std::string("; ") + EndsUnsolved + "."));
        }
        for (const char* name : {"probability", "probability by importance sampling"}) {
            if (const Statistic* one = finished.find(limit.name, name)) {
                answers.push_back(what + name + " " + told(one->value) + interval(*one) + ", " +
                                  told(finished.value(limit.name, "reached")) + " of " +
                                  std::to_string(finished.rows) + " variants.");
            }
        }
        for (const Statistic& one : finished.statistics) {
            if (one.subject == limit.name && one.name.starts_with("no design point")) {
                answers.push_back(what + one.name + ".");
            }
        }
    }
}

void answerTarget(std::vector<std::string>& answers, const FinishedStudy& finished) {
    const Study& study = finished.study;
    const Variable& variable = study.variables.front();
    const OutputColumn& output = study.target->output;
    const double found = finished.value(variable.name, "target");
    if (std::isfinite(found)) {
        answers.push_back(
            "With " + variable.name + " at " + toldWithUnit(found, variable, study.units) + " " +
            output.name + " is " +
            toldWithUnit(finished.value(output.name, "at the target"), output, study.units) +
            "; the target is " + toldWithUnit(study.target->value, output, study.units) + ".");
    }
    for (const Statistic& one : finished.statistics) {
        if (one.name.starts_with("no target")) {
            answers.push_back(one.subject + ": " + one.name + ".");
        } else if (one.name == "jumps over the target by") {
            answers.push_back(one.subject + " " + one.name + " " +
                              toldWithUnit(one.value, output, study.units) + ".");
        }
    }
}

/// Ends of the curve, and where it crosses one half between two values.
void answerFragility(std::vector<std::string>& answers, const FinishedStudy& finished) {
    const Study& study = finished.study;
    const Variable& along = study.variables[study.along];
    for (const LimitState& limit : study.limits) {
        const std::vector<FragilityPoint> points = finished.fragility(limit.name);
        if (points.empty()) {
            continue;
        }
        const auto end = [&](std::size_t n) {
            return told(points[n].probability) + " at " +
                   toldWithUnit(points[n].value, along, study.units);
        };
        std::string text =
            stateText(limit) + ": probability " + end(0) + ", " + end(points.size() - 1);
        for (std::size_t n = 1; n < points.size(); ++n) {
            const FragilityPoint& before = points[n - 1];
            const FragilityPoint& here = points[n];
            if ((before.probability < 0.5) != (here.probability < 0.5)) {
                const double part =
                    (0.5 - before.probability) / (here.probability - before.probability);
                const double at = before.value + part * (here.value - before.value);
                text += ", one half near " + toldWithUnit(at, along, study.units);
                break;
            }
        }
        answers.push_back(text + ".");
    }
}

} // namespace

std::string questionOf(const Study& study) {
    const std::string outputs = outputsText(study);
    const std::size_t none = study.variables.size();
    switch (study.method) {
    case Method::Grid:
        return "What are " + outputs + " for every combination of the values of " +
               variablesText(study, none) + "?";
    case Method::OneAtATime:
        return "How far do " + outputs + " move when each of " + variablesText(study, none) +
               " alone goes to its low and to its high number?";
    case Method::Sample:
        return "How are " + outputs + " distributed where " + variablesText(study, none) + " are" +
               " distributed as told below" +
               (study.limits.empty() ? "?" : ", and how likely is " + limitsText(study) + "?");
    case Method::Sensitivity:
        return "How much of the variance of " + outputs + " comes from each of " +
               variablesText(study, none) + "?";
    case Method::Reliability:
        return "How likely is " + limitsText(study) + "?";
    case Method::Target:
        return "At which " + study.variables.front().name + " does " + study.target->output.name +
               " reach " + toldWithUnit(study.target->value, study.target->output, study.units) +
               "?";
    case Method::Fragility:
        break;
    }
    return "How likely is " + limitsText(study) + " along " + study.variables[study.along].name +
           ", where " + variablesText(study, study.along) + " are distributed as told below?";
}

std::vector<std::string> answersOf(const FinishedStudy& finished) {
    std::vector<std::string> answers;
    switch (finished.study.method) {
    case Method::Grid:
        answerRange(answers, finished);
        break;
    case Method::OneAtATime:
        answerTornado(answers, finished);
        break;
    case Method::Sample:
        answerProbabilities(answers, finished);
        answerSample(answers, finished);
        break;
    case Method::Sensitivity:
        answerIndices(answers, finished);
        break;
    case Method::Reliability:
        answerProbabilities(answers, finished);
        break;
    case Method::Target:
        answerTarget(answers, finished);
        break;
    case Method::Fragility:
        answerFragility(answers, finished);
        break;
    }
    return answers;
}

} // namespace korvane::study
