#include "study/report.h"

#include "study/answers.h"
#include "study/chart.h"
#include "study/draws.h"
#include "study/pictures.h"
#include "study/statistics.h"

#include "runtime/file_text.h"
#include "runtime/number_format.h"
#include "sheet/sheet_style.h"
#include "sheet/sheet_writer.h"
#include "sheet/wall_figure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <iterator>

namespace korvane::study {

using namespace sheet;

namespace {

constexpr std::string_view Head =
    "<!DOCTYPE html>\n<html xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"en\">\n<head>\n"
    "<meta charset=\"utf-8\"/>\n<meta name=\"generator\" content=\"korvane-study " KORVANE_VERSION
    "\"/>\n<meta name=\"viewport\" content=\"width=device-width\"/>\n";
constexpr int TableDigits = 5;

Cell cell(double value) {
    if (!std::isfinite(value)) {
        return {"–", true};
    }
    std::string text;
    appendShortest(text, roundedTo(value, TableDigits));
    return {text, true};
}

/// The first line of the base's heading, without its apostrophe.
std::string titleOf(const FinishedStudy& finished) {
    const Problem& base = finished.study.base;
    if (base.NumHeadingLines < 1 || base.HeadingLines(1).empty()) {
        return finished.study.baseName;
    }
    const std::string& line = base.HeadingLines(1);
    return line.substr(line.front() == '\'' ? 1 : 0);
}

std::string headOf(const FinishedStudy& finished, const MomentText& moment) {
    const std::string title = titleOf(finished);
    return std::string(Head) + "<title>" + escaped(title) + " – study</title>\n<style>" +
           sheetStyle(title, "Study of " + finished.study.baseName + " · " + moment.date +
                                 " · KORVANE " KORVANE_VERSION) +
           std::string(chartStyle()) + "</style>\n</head>\n<body>\n";
}

std::string blockRow(std::string_view name, std::string_view value) {
    return "<tr><th>" + escaped(name) + "</th><td>" + escaped(value) + "</td></tr>\n";
}

std::string methodText(const Study& study) {
    constexpr std::array<const char*, 3> designs{"Monte Carlo", "Latin hypercube",
                                                 "Sobol' sequence"};
    constexpr std::array<const char*, 3> algorithms{
        "first-order method", "first-order method and a sample",
        "first-order method and a sample around the design points"};
    std::string text = methodName(study.method);
    if (study.method == Method::Reliability) {
        text += std::string(", ") + algorithms[static_cast<std::size_t>(study.algorithm)];
    }
    if (study.sample.size > 0 && study.method != Method::Grid) {
        text += std::string(", ") + designs[static_cast<std::size_t>(study.sample.design)] + ", " +
                std::to_string(study.sample.size) + " points, seed " +
                std::to_string(study.sample.seed);
    }
    return text;
}

/// A table whose first columns, `words` of them, hold text.
void writeTable(SheetWriter& writer, const Table& table, int words) {
    writer.markup("<div class=\"words" + std::to_string(words) + "\">\n");
    writer.table(table);
    writer.markup("</div>\n");
}

void writeTitle(SheetWriter& writer, const FinishedStudy& finished, const MomentText& moment) {
    const Study& study = finished.study;
    writer.markup("<h1>Study</h1>\n<table class=\"block\">\n<tbody>\n");
    writer.markup(blockRow("Wall", titleOf(finished)));
    writer.markup(blockRow("Base", study.baseName));
    writer.markup(blockRow("Method", methodText(study)));
    std::string variants = std::to_string(finished.rows);
    if (finished.lost > 0) {
        variants += ", " + std::to_string(finished.lost) + " of them without a solution";
    }
    writer.markup(blockRow("Variants", finished.rows == 0 ? "none stored" : variants));
    writer.markup(blockRow("Date", moment.date + " " + moment.time));
    writer.markup(blockRow("Program", finished.store.provenance("program")));
    writer.markup(blockRow(
        "Units", study.units == UnitSystem::SI ? "SI" : "US customary (FT, LB, PSF, PCF)"));
    writer.markup("</tbody></table>\n");
}

void writeQuestion(SheetWriter& writer, const FinishedStudy& finished) {
    writer.section(1, "Question and answer");
    writer.paragraph(questionOf(finished.study));
    writer.markup("<div class=\"answers\">\n");
    for (const std::string& answer : answersOf(finished)) {
        writer.markupParagraph("<strong>" + escaped(answer) + "</strong>");
    }
    writer.markup("</div>\n");
}

bool canBeDrawn(const Problem& problem) {
    return problem.SurfacePointCount(Right) > 0 && problem.SurfacePointCount(Left) > 0 &&
           problem.SoilLayerCount(Right) > 0 && problem.SoilLayerCount(Left) > 0;
}

void writeBase(SheetWriter& writer, const FinishedStudy& finished) {
    const Study& study = finished.study;
    writer.section(2, "The base wall");
    if (canBeDrawn(study.base)) {
        const std::vector<Note> none;
        const SheetRequest request{.problem = study.base,
                                   .sections = finished.sections,
                                   .solved = finished.base,
                                   .options = study.options,
                                   .notes = none,
                                   .units = study.units,
                                   .inputName = study.baseName};
        writer.markup("<figure>\n" + wallFigure(request).svg +
                      "<figcaption>Drawn to scale, as the input file has it. Variants change it "
                      "by the variables below.</figcaption>\n</figure>\n");
    }
    if (finished.base.failure) {
        writer.paragraph(std::string("The base itself has no solution: ") +
                         failureName(finished.base.failure.code) + ".");
    }
}

/// "Normal(32, 2) from 26 to 38", "2 to 6, 3 values".
std::string rangeText(const Variable& variable) {
    if (variable.isRandom()) {
        std::string text = variable.distribution;
        if (variable.bounds[0]) {
            text += " from " + told(*variable.bounds[0]) + " to " + told(*variable.bounds[1]);
        }
        return text;
    }
    if (variable.values.size() == 1) {
        return told(variable.values.front());
    }
    return told(variable.values.front()) + " to " + told(variable.values.back()) +
           (variable.values.size() > 2 ? ", " + std::to_string(variable.values.size()) + " values"
                                       : "");
}

std::string fieldsText(const Variable& variable) {
    std::string text;
    for (const FieldAddress& place : variable.fields) {
        text += (text.empty() ? "" : ", ") + addressName(place);
    }
    return text.empty() ? "limit states alone" : text;
}

void writeVariables(SheetWriter& writer, const FinishedStudy& finished) {
    const Study& study = finished.study;
    writer.section(3, "Variables");
    Table table{.columns = {{"Variable"}, {"Unit"}, {"Changes"}, {"Fields"}, {"Values"}}};
    const bool isDrawn = !finished.random().empty();
    if (isDrawn) {
        for (const char* title : {"Mean", "Deviation", "5 %", "95 %"}) {
            table.columns.push_back({title});
        }
    }
    for (const Variable& variable : study.variables) {
        std::vector<Cell> row{writer.text(variable.name),
                              {unitMarkup(variable.quantity, study.units), false},
                              writer.text(changeName(variable.change)),
                              writer.text(fieldsText(variable)),
                              writer.text(rangeText(variable))};
        if (variable.isRandom()) {
            const DistributionFigures figures = figuresOf(variable);
            for (const double figure :
                 {figures.mean, figures.deviation, figures.low, figures.high}) {
                row.push_back(cell(figure));
            }
        } else if (isDrawn) {
            row.resize(table.columns.size());
        }
        table.rows.push_back(std::move(row));
    }
    writeTable(writer, table, 5);
    for (const Correlation& one : study.correlations) {
        writer.paragraph("Rank correlation of " + study.variables[one.first].name + " and " +
                         study.variables[one.second].name + ": " + told(one.rank) + ".");
    }
    for (const Tie& tie : study.ties) {
        writer.paragraph(addressName(tie.field) + " follows " + addressName(tie.to) + ": " +
                         told(tie.factor) + " times it" +
                         (tie.add != 0 ? " plus " + told(tie.add) : "") + ".");
    }
    for (const LimitState& limit : study.limits) {
        writer.paragraph("Limit state “" + limit.name + "”: " + limit.text +
                         ". A wall without a solution " +
                         (limit.noSolutionFails ? "has reached it." : "has not reached it."));
    }
}

void writePictures(SheetWriter& writer, const FinishedStudy& finished) {
    writer.section(4, "Plots");
    const std::vector<PictureGroup> groups = picturesOf(finished);
    if (groups.empty()) {
        writer.paragraph("There is nothing to draw.");
    }
    for (const PictureGroup& group : groups) {
        writer.heading(group.heading);
        writer.markup("<div class=\"charts\">\n");
        for (const Picture& picture : group.pictures) {
            writer.markup("<figure>\n" + picture.svg + "<figcaption>" + escaped(picture.caption) +
                          "</figcaption>\n</figure>\n");
        }
        writer.markup("</div>\n");
    }
}

// ---- statistics
// ----------------------------------------------------------------------------------

/// A number of an output in a table; `at` stands behind its name for a value of a fragility.
struct OutputNumber {
    const char* title;
    const char* name;
    double Statistic::*member = &Statistic::value;

    double of(const FinishedStudy& finished, const std::string& output,
              const std::string& at = {}) const {
        const Statistic* one = finished.find(output, name + at);
        return one == nullptr ? std::nan("") : one->*member;
    }
};
constexpr std::array<OutputNumber, 10> OutputNumbers{{{"Walls", "count"},
                                                      {"Mean", "mean"},
                                                      {"95 % from", "mean", &Statistic::low},
                                                      {"to", "mean", &Statistic::high},
                                                      {"Deviation", "deviation"},
                                                      {"Least", "least"},
                                                      {"5 %", "quantile 0.05"},
                                                      {"Median", "quantile 0.5"},
                                                      {"95 %", "quantile 0.95"},
                                                      {"Largest", "largest"}}};

/// Numbers that the study has of any output: a tornado has no mean.
std::vector<OutputNumber> numbersOf(const FinishedStudy& finished) {
    std::vector<OutputNumber> numbers;
    std::copy_if(OutputNumbers.begin(), OutputNumbers.end(), std::back_inserter(numbers),
                 [&](const OutputNumber& number) {
                     return std::any_of(
                         finished.study.outputs.begin(), finished.study.outputs.end(),
                         [&](const OutputColumn& column) {
                             return finished.find(column.name, number.name) != nullptr;
                         });
                 });
    return numbers;
}

void writeOutputs(SheetWriter& writer, const FinishedStudy& finished) {
    const std::vector<OutputNumber> numbers = numbersOf(finished);
    if (numbers.empty()) {
        return;
    }
    Table table{.caption = "Outputs", .columns = {{"Output"}, {"Unit"}, {"Base"}}};
    for (const OutputNumber& number : numbers) {
        table.columns.push_back({number.title});
    }
    for (std::size_t n = 0; n < finished.study.outputs.size(); ++n) {
        const OutputColumn& column = finished.study.outputs[n];
        table.rows.push_back({writer.text(column.name),
                              {unitMarkup(column.quantity(), finished.study.units), false},
                              cell(finished.baseOutputs[n])});
        for (const OutputNumber& number : numbers) {
            table.rows.back().push_back(cell(number.of(finished, column.name)));
        }
    }
    writeTable(writer, table, 2);
}

/// What is told of outputs in the table above, and of outcomes below.
bool isToldElsewhere(const FinishedStudy& finished, const Statistic& one) {
    if (one.subject == "outcome") {
        return true;
    }
    constexpr std::array<std::string_view, 5> names{"count", "mean", "deviation", "least",
                                                    "largest"};
    for (const OutputColumn& column : finished.study.outputs) {
        if (column.name == one.subject) {
            return one.name.starts_with("quantile") ||
                   std::find(names.begin(), names.end(), one.name) != names.end();
        }
    }
    return false;
}

void writeFragility(SheetWriter& writer, const FinishedStudy& finished) {
    const Study& study = finished.study;
    const Variable& along = study.variables[study.along];
    for (const LimitState& limit : study.limits) {
        Table table{
            .caption = "Probability of “" + limit.name + "” along " + along.name,
            .columns = {{titleOf(along, study.units)}, {"Probability"}, {"95 % from"}, {"to"}}};
        for (const FragilityPoint& point : finished.fragility(limit.name)) {
            table.rows.push_back(
                {cell(point.value), cell(point.probability), cell(point.low), cell(point.high)});
        }
        writer.table(table);
    }
}

/// Of a fragility the outputs at each value, a table each.
void writeOutputsAlong(SheetWriter& writer, const FinishedStudy& finished) {
    const Study& study = finished.study;
    const Variable& along = study.variables[study.along];
    std::vector<double> values = along.values;
    std::sort(values.begin(), values.end());
    for (const OutputColumn& column : study.outputs) {
        Table table{.caption = titleOf(column, study.units) + " along " + along.name,
                    .columns = {{titleOf(along, study.units)}}};
        for (const OutputNumber& number : OutputNumbers) {
            table.columns.push_back({number.title});
        }
        for (const double value : values) {
            std::string at = " at ";
            appendShortest(at, value);
            table.rows.push_back({cell(value)});
            for (const OutputNumber& number : OutputNumbers) {
                table.rows.back().push_back(cell(number.of(finished, column.name, at)));
            }
        }
        writer.table(table);
    }
}

void writeFurther(SheetWriter& writer, const FinishedStudy& finished) {
    const bool isTarget = finished.study.method == Method::Target; // held between two outputs
    Table table{.caption = isTarget ? "Target" : "Limit states and indices",
                .columns = {{"Of"},
                            {"Number"},
                            {"Value"},
                            {isTarget ? "between" : "95 % from"},
                            {isTarget ? "and" : "to"}}};
    for (const Statistic& one : finished.statistics) {
        if (!isToldElsewhere(finished, one)) {
            table.rows.push_back({writer.text(one.subject), writer.text(one.name), cell(one.value),
                                  cell(one.low), cell(one.high)});
        }
    }
    if (!table.rows.empty()) {
        writeTable(writer, table, 2);
    }
}

std::string mathLine(std::string_view content, std::string_view label) {
    return "<p class=\"f\"><span>" + escaped(label) + "</span> <math>" + std::string(content) +
           "</math></p>\n";
}

std::string mathNumberOf(double value) {
    return std::isfinite(value) ? mathNumber(value) : "<mtext>–</mtext>";
}

constexpr std::string_view MeanFormula =
    "<msub><mi>t</mi><mrow><mn>0.975</mn><mo>,</mo><mi>n</mi><mo>−</mo><mn>1</mn></mrow></msub>"
    "<mfrac><mi>s</mi><msqrt><mi>n</mi></msqrt></mfrac>";
constexpr std::string_view IndexFormula =
    "<msub><mi>S</mi><mi>i</mi></msub><mo>=</mo><mfrac><mrow><mi>V</mi><mo>(</mo><mi>E</mi>"
    "<mo>(</mo><mi>Y</mi><mo>|</mo><msub><mi>X</mi><mi>i</mi></msub><mo>)</mo><mo>)</mo></mrow>"
    "<mrow><mi>V</mi><mo>(</mo><mi>Y</mi><mo>)</mo></mrow></mfrac>";
constexpr std::string_view TotalFormula =
    "<msub><mi>T</mi><mi>i</mi></msub><mo>=</mo><mn>1</mn><mo>−</mo><mfrac><mrow><mi>V</mi>"
    "<mo>(</mo><mi>E</mi><mo>(</mo><mi>Y</mi><mo>|</mo><msub><mi>X</mi><mrow><mo>~</mo><mi>i</mi>"
    "</mrow></msub><mo>)</mo><mo>)</mo></mrow><mrow><mi>V</mi><mo>(</mo><mi>Y</mi><mo>)</mo>"
    "</mrow></mfrac>";
constexpr std::string_view WeightFormula =
    "<mi>p</mi><mo>=</mo><mfrac><mn>1</mn><mi>n</mi></mfrac><mo>∑</mo><msub><mi>w</mi><mi>k</mi>"
    "</msub><msub><mi>I</mi><mi>k</mi></msub>";

/// The normal numbers of the variables at the design point, or their squares, one after the other.
std::string scoresOf(const FinishedStudy& finished, const LimitState& limit, bool squared,
                     const std::string& between) {
    std::string scores;
    for (const std::size_t n : finished.random()) {
        const std::string& name = finished.study.variables[n].name;
        const double z = finished.value(limit.name, "normal number " + name);
        scores += (scores.empty() ? "" : between) + mathNumberOf(squared ? z * z : z);
    }
    return scores;
}

/// The length of the design point, below 0 where the median has reached the state: of correlated
/// variables by the correlations R of their normal numbers z.
std::string betaFormula(const FinishedStudy& finished, const LimitState& limit, double beta) {
    const std::string sign = beta < 0 ? "<mo>−</mo>" : "";
    const bool isCorrelated = !finished.study.correlations.empty();
    const std::string length =
        isCorrelated ? "<msup><mi>z</mi><mi>T</mi></msup><msup><mi>R</mi><mrow><mo>−</mo>"
                       "<mn>1</mn></mrow></msup><mi>z</mi>"
                     : "<mo>∑</mo><msubsup><mi>z</mi><mi>i</mi><mn>2</mn></msubsup>";
    const std::string squares = isCorrelated ? ""
                                             : "<mo>=</mo>" + sign + "<msqrt><mrow>" +
                                                   scoresOf(finished, limit, true, "<mo>+</mo>") +
                                                   "</mrow></msqrt>";
    return "<mi>β</mi><mo>=</mo>" + sign + "<msqrt><mrow>" + length + "</mrow></msqrt>" + squares +
           "<mo>=</mo><mrow class=\"r\">" + mathNumberOf(beta) + "</mrow>";
}

std::string scoresFormula(const FinishedStudy& finished, const LimitState& limit) {
    return "<mi>z</mi><mo>=</mo><mo>(</mo>" +
           scoresOf(finished, limit, false, "<mo>,</mo><mspace width=\"0.4em\"/>") + "<mo>)</mo>";
}

std::string probabilityFormula(double probability) {
    return "<mi>p</mi><mo>=</mo><mi>Φ</mi><mo>(</mo><mo>−</mo><mi>β</mi><mo>)</mo><mo>=</mo>"
           "<mrow class=\"r\">" +
           mathNumberOf(probability) + "</mrow>";
}

/// The index and the probability of the first-order method, with their numbers.
void writeFirstOrder(SheetWriter& writer, const FinishedStudy& finished) {
    const bool isCorrelated = !finished.study.correlations.empty();
    for (const LimitState& limit : finished.study.limits) {
        const double beta = finished.value(limit.name, "beta");
        if (std::isfinite(beta)) {
            const double probability = finished.value(limit.name, "probability of first order");
            if (isCorrelated) {
                writer.markup(mathLine(scoresFormula(finished, limit), limit.name));
            }
            writer.markup(mathLine(betaFormula(finished, limit, beta), limit.name));
            writer.markup(mathLine(probabilityFormula(probability), limit.name));
        }
    }
    writer.paragraph("The design point is the most likely point at which the limit state is "
                     "reached; z are the standard normal numbers of its variables, " +
                     std::string(isCorrelated
                                     ? "R their correlations, and the importance factors the "
                                       "squares of z as shares of their sum. "
                                     : "and the importance factors their squares over β². ") +
                     "A border that curves away from the plane through that point makes the "
                     "probability a first approximation.");
}

void writeFormulas(SheetWriter& writer, const FinishedStudy& finished) {
    const Study& study = finished.study;
    const bool isSample = study.method == Method::Sample || study.method == Method::Sensitivity ||
                          (study.method == Method::Reliability && finished.rows > 0);
    if (study.method == Method::Reliability) {
        writeFirstOrder(writer, finished);
    }
    if (isWeighted(study)) {
        writer.markup(mathLine(WeightFormula, "Importance sampling"));
        writer.paragraph("The sample is drawn around the design points; w is the ratio of the "
                         "density of the distributions to that of the sample, I is 1 where the "
                         "limit state is reached. Without an interval: a few variants carry the "
                         "variance, or the sample hardly comes to parts of the limit state.");
    } else if (isSample) {
        writer.markup(
            mathLine("<mover><mi>y</mi><mo>¯</mo></mover><mo>±</mo>" + std::string(MeanFormula),
                     "Interval of a mean"));
    }
    if (study.method == Method::Sensitivity) {
        writer.markup(mathLine(IndexFormula, "First-order index"));
        writer.markup(mathLine(TotalFormula, "Total index"));
        writer.paragraph("Statistics of the outputs are those of the first sample.");
    }
    const bool counts = (isSample && !isWeighted(study)) || study.method == Method::Fragility;
    if (counts && !study.limits.empty()) {
        writer.paragraph(
            std::string("Probabilities are shares of the variants") +
            (haveIntervals(study) ? ", with the interval of Clopper and Pearson." : "."));
    }
    if (study.sample.design == Design::LatinHypercube) {
        writer.paragraph("Intervals are those of independent draws: of a Latin hypercube they are "
                         "upper bounds.");
    } else if (!haveIntervals(study)) {
        writer.paragraph("One Sobol’ sequence tells nothing of its own error: means, quantiles, "
                         "probabilities and indices have no intervals.");
    }
}

void writeStatistics(SheetWriter& writer, const FinishedStudy& finished) {
    writer.section(5, "Statistics");
    if (finished.study.method != Method::Fragility) {
        writeOutputs(writer, finished);
    }
    if (finished.study.method == Method::Fragility) {
        writeFragility(writer, finished);
        writeOutputsAlong(writer, finished);
    } else {
        writeFurther(writer, finished);
    }
    writeFormulas(writer, finished);
}

void writeEndings(SheetWriter& writer, const FinishedStudy& finished) {
    writer.section(6, "Variants without a solution");
    if (finished.lost == 0) {
        writer.paragraph(finished.rows == 0 ? "No variants are stored by this method."
                                            : "All variants were solved.");
        return;
    }
    writer.paragraph(std::to_string(finished.lost) + " of " + std::to_string(finished.rows) +
                     " variants have no solution. They are rows of the results like all others; "
                     "statistics of outputs leave them out.");
    Table table{
        .columns = {{"Outcome"}, {"Reason"}, {"In the first one"}, {"Variants"}, {"First one"}}};
    std::uint64_t shown = 0;
    for (const Ending& ending : finished.endings) {
        table.rows.push_back({writer.text(ending.outcome),
                              writer.text(ending.reason),
                              writer.text(ending.example == ending.reason ? "" : ending.example),
                              {std::to_string(ending.count), true},
                              {std::to_string(ending.first), true}});
        shown += ending.count;
    }
    writeTable(writer, table, 3);
    if (shown < finished.lost) {
        writer.paragraph(std::to_string(finished.lost - shown) +
                         " further variants have other reasons.");
    }
}

void writeOrigin(SheetWriter& writer, const FinishedStudy& finished) {
    writer.section(7, "Study file");
    writer.paragraph("The same study file and base give the same rows: study " +
                     finished.store.provenance("study") + ", base " +
                     finished.store.provenance("base") + " (FNV-1a of 64 bits).");
    writer.markup("<p class=\"study\">" + escaped(finished.study.text) + "</p>\n");
}

} // namespace

std::string reportPage(const FinishedStudy& finished, const MomentText& moment) {
    SheetWriter writer(finished.study.units);
    writer.markup(headOf(finished, moment));
    writeTitle(writer, finished, moment);
    writeQuestion(writer, finished);
    writeBase(writer, finished);
    writeVariables(writer, finished);
    writePictures(writer, finished);
    writeStatistics(writer, finished);
    writeEndings(writer, finished);
    writeOrigin(writer, finished);
    return writer.finish() + "</body>\n</html>\n";
}

void writeReport(const std::string& folder) {
    const FinishedStudy finished(folder);
    const std::filesystem::path path = folder;
    saveFile(path / "report.html", reportPage(finished, momentText()));
    saveFile(path / "summary.json", summaryText(finished));
}

} // namespace korvane::study
