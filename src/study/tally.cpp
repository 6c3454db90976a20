#include "study/tally.h"

#include "study/draws.h"

#include <algorithm>
#include <cmath>

namespace korvane::study {

void OutputTally::add(double value, std::size_t mostKept) {
    count += 1;
    const double away = value - mean;
    mean += away / count;
    squares += away * (value - mean);
    least = std::min(least, value);
    largest = std::max(largest, value);
    if (count <= static_cast<double>(mostKept)) {
        kept.push_back(value);
    } else if (!kept.empty()) {
        kept = {};
    }
}

Tally::Tally(const Study& study, std::size_t mostKept) : study_(&study) {
    const bool hasValues = study.method == Method::Fragility;
    groups_.resize(hasValues ? study.variables[study.along].values.size() : 1);
    for (GroupTally& group : groups_) {
        group.outputs.resize(study.outputs.size());
        group.limits.resize(study.limits.size());
    }
    const std::size_t columns = groups_.size() * std::max<std::size_t>(study.outputs.size(), 1);
    // Nothing is told of outputs that are weighted.
    mostKept_ = isWeighted(study) ? 0 : mostKept / columns;
    if (study.method == Method::Sensitivity) {
        every_ = Draws(study).dimension() + 2;
    }
}

GroupTally* Tally::groupOf(std::uint64_t id) {
    if (groups_.size() > 1) {
        return &groups_[static_cast<std::size_t>(id / study_->sample.size)];
    }
    return id % every_ == 0 ? &groups_.front() : nullptr;
}

std::string Tally::condition(std::size_t group) const {
    if (groups_.size() > 1) {
        const std::uint64_t from = group * study_->sample.size;
        return "id >= " + std::to_string(from) + " AND id < " +
               std::to_string(from + study_->sample.size);
    }
    return "id % " + std::to_string(every_) + " = 0";
}

void Tally::add(const Row& row) {
    const std::string_view outcome = outcomeName(row.outcome);
    const auto known = outcomes_.find(outcome);
    (known == outcomes_.end() ? outcomes_[std::string(outcome)] : known->second) += 1;
    addNumbers(row);
}

void Tally::addAll(const Store& store) {
    store.queryTexts(
        "SELECT outcome, count(*) FROM variants GROUP BY outcome",
        [this](const std::string& outcome, double count) { outcomes_[outcome] += count; });
    std::string columns = "id";
    for (const OutputColumn& output : study_->outputs) {
        columns += ", " + quoted(output.name);
    }
    for (const LimitState& limit : study_->limits) {
        columns += ", " + quoted(limit.name);
    }
    Row row;
    const auto outputs = static_cast<std::ptrdiff_t>(study_->outputs.size());
    store.query("SELECT " + columns + " FROM variants ORDER BY id",
                [&](const std::vector<double>& cells) {
                    const auto first = cells.begin() + 1;
                    row.id = static_cast<std::uint64_t>(cells.front());
                    row.outputs.assign(first, first + outputs);
                    row.limits.assign(first + outputs, cells.end());
                    addNumbers(row);
                });
}

void Tally::addNumbers(const Row& row) {
    ++rows_;
    GroupTally* group = groupOf(row.id);
    if (group == nullptr) {
        return;
    }
    for (std::size_t n = 0; n < group->outputs.size(); ++n) {
        if (!std::isnan(row.outputs[n])) {
            group->outputs[n].add(row.outputs[n], mostKept_);
        }
    }
    for (std::size_t n = 0; n < group->limits.size(); ++n) {
        group->limits[n].count += 1;
        group->limits[n].reached += row.limits[n] ? 1 : 0;
    }
}

} // namespace korvane::study
