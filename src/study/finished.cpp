#include "study/finished.h"

#include "study/draws.h"
#include "study/run.h"

#include "rowe/pile_sections.h"
#include "runtime/number_format.h"
#include "runtime/number_text.h"
#include "sheet/sheet_writer.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <map>
#include <sstream>
#include <utility>

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

/// A reason with "…" for its numbers; names of fields keep theirs.
std::string withoutNumbers(const std::string& reason) {
    std::string text;
    std::istringstream words(reason);
    for (std::string word; words >> word;) {
        const std::size_t end = word.find_last_not_of(".,;:)") + 1;
        const std::size_t start = std::min(word.find_first_not_of('('), end);
        text += text.empty() ? "" : " ";
        text += isNumeric(std::string_view(word).substr(start, end - start))
                    ? word.substr(0, start) + "…" + word.substr(end)
                    : word;
    }
    return text;
}

std::vector<Ending> endingsOf(const Store& store) {
    std::map<std::pair<std::string, std::string>, Ending> alike;
    bool isHead = true;
    store.queryCells("SELECT outcome, reason, id FROM variants WHERE outcome <> 'solved' "
                     "ORDER BY id",
                     [&](const std::vector<std::string>& cells) {
                         if (std::exchange(isHead, false)) {
                             return;
                         }
                         const std::string reason = withoutNumbers(cells[1]);
                         Ending& ending = alike[{cells[0], reason}];
                         if (ending.count++ == 0) {
                             ending.outcome = cells[0];
                             ending.reason = cells[1];
                             ending.example = cells[1];
                             ending.first = std::stoull(cells[2]);
                         } else if (cells[1] != ending.example) {
                             ending.reason = reason;
                         }
                     });
    std::vector<Ending> all;
    all.reserve(alike.size());
    for (const auto& [key, ending] : alike) {
        all.push_back(ending);
    }
    std::sort(all.begin(), all.end(), [](const Ending& a, const Ending& b) {
        return a.count != b.count ? a.count > b.count : a.first < b.first;
    });
    all.resize(std::min(all.size(), MostEndings));
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
