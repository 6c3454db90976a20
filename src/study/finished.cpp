#include "study/finished.h"

#include "study/draws.h"
#include "study/run.h"

#include "rowe/pile_sections.h"
#include "runtime/number_format.h"
#include "sheet/sheet_writer.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

namespace korvane::study {

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr int ToldDigits = 4;

/// The study of a file of rows, from the texts that it keeps.
Study readBack(const Store& store, const std::string& folder) {
    ReadStudy read = readStudy(folder, store.provenance("studyText"), store.provenance("baseText"));
    if (!read.fault.empty()) {
        throw StoreFault{read.fault};
    }
    store.checkSame(read.study);
    if (!store.isComplete()) {
        throw StoreFault{folder + " holds a study that is not finished"};
    }
    return std::move(read.study);
}

std::string resultsOf(const std::string& folder) {
    const std::filesystem::path path = std::filesystem::path(folder) / fileOfPart(1, 1);
    if (!std::filesystem::exists(path)) {
        throw StoreFault{path.string() + " is missing: run the study, or collect its parts"};
    }
    return path.string();
}

std::string unitText(const std::string& name, const std::string& unit) {
    return unit.empty() ? name : name + " (" + unit + ")";
}

std::string withUnit(double value, const std::string& unit) {
    return told(value) + (unit.empty() ? "" : unit == "°" ? unit : " " + unit);
}

std::vector<Ending> endingsOf(const Store& store) {
    std::vector<Ending> all;
    bool isHead = true;
    store.queryCells(
        "SELECT outcome, reason, count(*), min(id) FROM variants "
        "WHERE outcome <> 'solved' GROUP BY outcome, reason "
        "ORDER BY count(*) DESC, min(id) LIMIT " +
            std::to_string(MostEndings),
        [&](const std::vector<std::string>& cells) {
            if (!isHead) {
                all.push_back({cells[0], cells[1], std::stoull(cells[2]), std::stoull(cells[3])});
            }
            isHead = false;
        });
    return all;
}

} // namespace

FinishedStudy::FinishedStudy(const std::string& folder)
    : store(resultsOf(folder)), study(readBack(store, folder)), statistics(store.statistics()),
      endings(endingsOf(store)) {
    store.query("SELECT count(*), sum(outcome <> 'solved') FROM variants",
                [this](const std::vector<double>& row) {
                    rows = static_cast<std::uint64_t>(row[0]);
                    lost = rows == 0 ? 0 : static_cast<std::uint64_t>(row[1]);
                });
    LoadPileDefaults(sections);
    base = solve(study.base, study.options, sections, workspace);
    for (const OutputColumn& column : study.outputs) {
        const bool isNote = column.output == nullptr;
        baseOutputs.push_back(isNote ? None : column.value(base, {}, study.units).value_or(None));
    }
}

const Statistic* FinishedStudy::find(const std::string& subject, const std::string& name) const {
    const auto found =
        std::find_if(statistics.begin(), statistics.end(), [&](const Statistic& one) {
            return one.subject == subject && one.name == name;
        });
    return found == statistics.end() ? nullptr : &*found;
}

double FinishedStudy::value(const std::string& subject, const std::string& name) const {
    const Statistic* found = find(subject, name);
    return found == nullptr ? None : found->value;
}

/// The rows "value" and "probability" of a limit state follow one another.
std::vector<FragilityPoint> FinishedStudy::fragility(const std::string& limit) const {
    std::vector<FragilityPoint> points;
    for (const Statistic& one : statistics) {
        if (one.subject == limit && one.name == "value") {
            points.push_back({.value = one.value});
        } else if (one.subject == limit && one.name == "probability" && !points.empty()) {
            points.back() = {points.back().value, one.value, one.low, one.high};
        }
    }
    return points;
}

std::vector<std::size_t> FinishedStudy::plotted() const {
    std::vector<std::size_t> all;
    for (std::size_t n = 0; n < study.outputs.size(); ++n) {
        if (study.outputs[n].output != nullptr && !study.outputs[n].isElev) {
            all.push_back(n);
        }
    }
    return all;
}

std::vector<std::size_t> FinishedStudy::random() const {
    std::vector<std::size_t> all;
    for (std::size_t n = 0; n < study.variables.size(); ++n) {
        if (study.variables[n].isRandom()) {
            all.push_back(n);
        }
    }
    return all;
}

std::string FinishedStudy::drawnRows() const {
    return study.method == Method::Sensitivity
               ? " WHERE id % " + std::to_string(random().size() + 2) + " = 0"
               : "";
}

std::string told(double value) {
    if (!std::isfinite(value)) {
        return "–";
    }
    std::string text;
    appendShortest(text, roundedTo(value, ToldDigits));
    return text;
}

std::string titleOf(const OutputColumn& column, UnitSystem units) {
    return unitText(column.name, sheet::unitMarkup(column.quantity(), units));
}

std::string titleOf(const Variable& variable, UnitSystem units) {
    return unitText(variable.name, sheet::unitMarkup(variable.quantity, units));
}

std::string toldWithUnit(double value, const OutputColumn& column, UnitSystem units) {
    return withUnit(value, sheet::unitMarkup(column.quantity(), units));
}

std::string toldWithUnit(double value, const Variable& variable, UnitSystem units) {
    return withUnit(value, sheet::unitMarkup(variable.quantity, units));
}

} // namespace korvane::study
