#include "study/study.h"
#include "study/study_checks.h"
#include "study/toml_table.h"
#include "study/variable_values.h"

#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "runtime/runtime_error.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>

namespace korvane::study {

namespace {

const std::initializer_list<std::string_view> MethodNames = {
    "grid", "one-at-a-time", "sample", "sensitivity", "reliability", "target", "fragility"};

const std::initializer_list<std::string_view> ChangeNames = {"set", "add", "multiply"};

/// Columns of the table of variants that are there besides.
constexpr std::array<std::string_view, 4> OwnColumns{"id", "outcome", "reason", "weight"};

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// A name that columns and limit states can bear.
bool isName(std::string_view name) {
    const auto letter = [](unsigned char c) { return std::isalpha(c) != 0 || c == '_'; };
    return !name.empty() && letter(static_cast<unsigned char>(name.front())) &&
           std::all_of(name.begin(), name.end(),
                       [&](unsigned char c) { return letter(c) || std::isdigit(c) != 0; });
}

std::vector<std::string_view> split(std::string_view text) {
    std::vector<std::string_view> parts;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = text.find('.');
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parts;
}

/// "*" stands for any side or entry.
bool matches(std::string_view pattern, std::string_view name) {
    const auto wanted = split(pattern);
    const auto parts = split(name);
    return wanted.size() == parts.size() &&
           std::equal(wanted.begin(), wanted.end(), parts.begin(),
                      [](std::string_view a, std::string_view b) { return a == "*" || a == b; });
}

/// Reads one study file; throws StudyFault.
class StudyReader {
  public:
    /// With `hasBase` the text of the base is there already.
    StudyReader(Study& study, bool hasBase) : study_(study), hasBase_(hasBase) {}

    void read() {
        const toml::table file = parse();
        const TomlTable top(file, "the study",
                            {"study", "variable", "correlation", "tie", "limit", "target"});
        const toml::table* head = file["study"].as_table();
        if (head == nullptr) {
            throw StudyFault{1, "a table [study] is missing"};
        }
        headLine_ = lineOf(*head);
        readHead(*head);
        forEach(file, "variable", [this](const toml::table& table) { readVariable(table); });
        forEach(file, "correlation", [this](const toml::table& table) { readCorrelation(table); });
        forEach(file, "tie", [this](const toml::table& table) { readTie(table); });
        orderTies(study_);
        forEach(file, "limit", [this](const toml::table& table) { readLimit(table); });
        readOutputs(*head);
        readAlong(*head);
        readTarget(file);
        forEach(file, "limit", [this](const toml::table& table) { checkLimitName(table); });
        checkStudy(study_, plainTable(*head));
    }

  private:
    toml::table parse() const {
        try {
            return toml::parse(study_.text);
        } catch (const toml::parse_error& error) {
            throw StudyFault{static_cast<int>(error.source().begin.line),
                             std::string(error.description())};
        }
    }

    template <class Read>
    void forEach(const toml::table& file, std::string_view name, Read readOne) const {
        const toml::node* node = file.get(name);
        if (node == nullptr) {
            return;
        }
        const toml::array* tables = node->as_array();
        if (tables == nullptr || !tables->is_homogeneous(toml::node_type::table)) {
            throw StudyFault{lineOf(*node), "\"" + std::string(name) + "\" must be written [[" +
                                                std::string(name) + "]]"};
        }
        for (const toml::node& table : *tables) {
            readOne(*table.as_table());
        }
    }

    void readHead(const toml::table& table) {
        const TomlTable head(table, "[study]",
                             {"base", "method", "design", "size", "seed", "wedge", "amendments",
                              "units", "outputs", "algorithm", "along", "maxFs"});
        study_.baseName = head.requiredText("base");
        head.requiredText("method");
        study_.method = static_cast<Method>(head.choice("method", MethodNames, 0));
        study_.sample.design = static_cast<Design>(
            head.choice("design", {"monte-carlo", "latin-hypercube", "sobol"}, 0));
        study_.algorithm = static_cast<Algorithm>(
            head.choice("algorithm", {"form", "monte-carlo", "importance"}, 0));
        study_.sample.size = wholeFrom(head, "size", 1, 0);
        study_.sample.seed = wholeFrom(head, "seed", 0, 1);
        study_.wedge = head.choice("wedge", {"sweep", "fixed"}, 0) == 0 ? "sweep" : "fixed";
        study_.options.wedge =
            study_.wedge == "sweep" ? WedgeMethod::Sweep : WedgeMethod::FixedSurface;
        study_.options.factorLimit.largest = head.number("maxFs").value_or(20);
        if (!(study_.options.factorLimit.largest > 0)) {
            head.fail("maxFs", "must be above 0");
        }
        study_.amendments = head.texts("amendments");
        for (const std::string& name : study_.amendments) {
            if (!amend(study_.options.amendments, name)) {
                std::vector<std::string_view> known;
                known.reserve(AmendmentNames.size());
                for (const AmendmentName& amendment : AmendmentNames) {
                    known.push_back(amendment.name);
                }
                throw StudyFault{head.line("amendments"),
                                 "[study]: " + unknownText("amendment", name, known)};
            }
        }
        readBase(head);
        const std::size_t units = head.choice("units", {"us", "si"}, 2);
        study_.units = units == 2 ? study_.units : units == 0 ? UnitSystem::US : UnitSystem::SI;
    }

    static std::uint64_t wholeFrom(const TomlTable& table, std::string_view key, long long least,
                                   long long usual) {
        const long long number = table.whole(key).value_or(usual);
        if (number < least && table.has(key)) {
            table.fail(key, "must be at least " + std::to_string(least));
        }
        if (key == "size" && static_cast<double>(number) > MostVariants) {
            table.fail(key, "must be at most 1E15");
        }
        return static_cast<std::uint64_t>(number);
    }

    /// The base stands beside the study file.
    void readBase(const TomlTable& head) {
        namespace fs = std::filesystem;
        const fs::path path = fs::path(study_.file).parent_path() / study_.baseName;
        study_.basePath = path.string();
        try {
            if (!hasBase_) {
                study_.baseText = readInputFile(path);
            }
            InputFault fault;
            clearProblemData(study_.base);
            const ReadResult result =
                readProblem(study_.base, study_.baseText, study_.basePath, &fault);
            if (!result.complete) {
                head.fail("base", study_.basePath + " is refused: " + faultText(fault));
            }
            study_.units = result.units;
        } catch (const RuntimeError& error) {
            head.fail("base", study_.basePath + ": " + error.what());
        }
    }

    void readVariable(const toml::table& table) {
        const TomlTable entry(table, "[[variable]]",
                              {"name", "fields", "layers", "change", "values", "range", "low",
                               "high", "distribution", "bounds"});
        Variable variable;
        variable.line = entry.line();
        variable.name = entry.requiredText("name");
        checkName(entry, variable.name);
        variable.change = static_cast<Change>(entry.choice("change", ChangeNames, 0));
        readFields(entry, variable);
        readValues(entry, variable);
        study_.variables.push_back(std::move(variable));
    }

    void checkName(const TomlTable& entry, const std::string& name) {
        if (!isName(name)) {
            entry.fail("name", "must have letters, digits and _ alone: \"" + name + "\"");
        }
        const std::string plain = lower(name);
        const auto isTaken = [&](std::string_view other) {
            return lower(std::string(other)) == plain;
        };
        if (std::any_of(OwnColumns.begin(), OwnColumns.end(), isTaken) || plain == "and" ||
            plain == "or" || plain == "abs") {
            entry.fail("name", "\"" + name + "\" has a meaning of its own");
        }
        if (isOutput(plain)) {
            entry.fail("name", "\"" + name + "\" is the name of an output");
        }
        if (std::any_of(names_.begin(), names_.end(), isTaken)) {
            entry.fail("name", "\"" + name + "\" is there already");
        }
        names_.push_back(name);
    }

    /// Whether a name in small letters is that of an output's column: SQL knows no case.
    bool isOutput(const std::string& plain) const {
        for (const std::string_view output : outputNames(study_.base)) {
            for (const LevelSuffix& level : levelSuffixes(study_.base)) {
                const std::string name = lower(std::string(output));
                for (const std::string& column :
                     {name, name + level.suffix, name + "elev" + level.suffix, name + "elev"}) {
                    if (column == plain) {
                        return true;
                    }
                }
            }
        }
        return plain == lower(results::bottomElev.name);
    }

    void readFields(const TomlTable& entry, Variable& variable) {
        const std::size_t layers = entry.choice("layers", {"sand", "clay"}, 2);
        for (const std::string& text : entry.texts("fields")) {
            if (text.find('*') == std::string::npos) {
                if (layers != 2) {
                    entry.fail("layers", "needs fields with *, not \"" + text + "\"");
                }
                variable.fields.push_back(address(entry, "fields", text));
                continue;
            }
            const std::size_t before = variable.fields.size();
            for (const FieldAddress& place : addressesIn(study_.base)) {
                if (matches(text, addressName(place)) && isOfLayers(place, layers)) {
                    variable.fields.push_back(place);
                }
            }
            if (variable.fields.size() == before) {
                entry.fail("fields", "\"" + text + "\" names nothing that the base has");
            }
        }
        if (entry.has("fields") && variable.fields.empty()) {
            entry.fail("fields", "names nothing");
        }
        for (const FieldAddress& place : variable.fields) {
            variable.quantity = quantityOf(place);
            if (variable.quantity != quantityOf(variable.fields.front())) {
                entry.fail("fields", "measure different things: " + addressName(place) + " and " +
                                         addressName(variable.fields.front()));
            }
        }
        if (variable.change == Change::Multiply || variable.fields.empty()) {
            variable.quantity = Quantity::Number;
        }
    }

    /// Sand has friction, clay none.
    bool isOfLayers(const FieldAddress& place, std::size_t layers) const {
        if (layers == 2 || !addressName(place).starts_with("Soil")) {
            return layers == 2;
        }
        return (study_.base.SoilFriction(place.side, place.row) > 0) == (layers == 0);
    }

    FieldAddress address(const TomlTable& entry, std::string_view key, const std::string& text) {
        const ReadAddress read = readAddress(text);
        if (!read.fault.empty()) {
            entry.fail(key, read.fault);
        }
        const std::string missing = absence(read.address, study_.base);
        if (!missing.empty()) {
            entry.fail(key, text + ": " + missing);
        }
        return read.address;
    }

    std::size_t variableNamed(const TomlTable& entry, std::string_view key,
                              const std::string& name) const {
        std::vector<std::string_view> known;
        for (const Variable& variable : study_.variables) {
            if (variable.name == name) {
                return known.size();
            }
            known.emplace_back(variable.name);
        }
        throw StudyFault{entry.line(key), unknownText("variable", name, known)};
    }

    void readCorrelation(const toml::table& table) {
        const TomlTable entry(table, "[[correlation]]", {"between", "rank"});
        const std::vector<std::string> names = entry.texts("between");
        if (names.size() != 2 || names[0] == names[1]) {
            entry.fail("between", "must name two variables");
        }
        Correlation correlation{variableNamed(entry, "between", names[0]),
                                variableNamed(entry, "between", names[1]),
                                entry.requiredNumber("rank"), entry.line()};
        for (const std::size_t index : {correlation.first, correlation.second}) {
            if (!study_.variables[index].isRandom()) {
                entry.fail("between", study_.variables[index].name + " has no distribution");
            }
        }
        for (const Correlation& other : study_.correlations) {
            if (std::minmax(other.first, other.second) ==
                std::minmax(correlation.first, correlation.second)) {
                throw StudyFault{entry.line("between"), "between " + names[0] + " and " + names[1] +
                                                            " there is a correlation already"};
            }
        }
        if (!(std::abs(correlation.rank) < 1)) {
            entry.fail("rank", "must be above -1 and below 1");
        }
        study_.correlations.push_back(correlation);
    }

    void readTie(const toml::table& table) {
        const TomlTable entry(table, "[[tie]]", {"field", "to", "factor", "add"});
        const Tie tie{address(entry, "field", entry.requiredText("field")),
                      address(entry, "to", entry.requiredText("to")),
                      entry.number("factor").value_or(1), entry.number("add").value_or(0),
                      entry.line()};
        if (quantityOf(tie.field) != quantityOf(tie.to)) {
            entry.fail("to", "measures something else than the field");
        }
        checkTie(study_, tie);
        study_.ties.push_back(tie);
    }

    void readLimit(const toml::table& table) {
        const TomlTable entry(table, "[[limit]]", {"name", "state", "noSolution"});
        LimitState limit;
        limit.name = entry.requiredText("name");
        const std::string plain = lower(limit.name);
        const auto isPlain = [&](std::string_view other) {
            return lower(std::string(other)) == plain;
        };
        if (plain.empty() || std::any_of(names_.begin(), names_.end(), isPlain) ||
            std::any_of(OwnColumns.begin(), OwnColumns.end(), isPlain) || isOutput(plain)) {
            entry.fail("name", "\"" + limit.name + "\" is taken");
        }
        names_.push_back(limit.name);
        limit.text = entry.requiredText("state");
        limit.line = entry.line("state");
        limit.noSolutionFails = entry.choice("noSolution", {"fails", "safe"}, 0) == 0;
        std::vector<std::string> variables;
        for (const Variable& variable : study_.variables) {
            variables.push_back(variable.name);
        }
        ReadCondition read = readCondition(limit.text, variables, study_.base);
        if (!read.fault.empty()) {
            entry.fail("state", read.fault);
        }
        limit.condition = std::move(read.condition);
        if (study_.method == Method::Reliability || study_.method == Method::Fragility) {
            limit.condition.askDesign();
            if (limit.condition.names(results::factorOfSafety.name)) {
                entry.fail("state", "may compare factorOfSafety with 1 alone: probabilities are "
                                    "worked out by the design depth at factor 1");
            }
        }
        study_.limits.push_back(std::move(limit));
    }

    /// No column has the name of a limit state; notes are columns only where they are asked for.
    void checkLimitName(const toml::table& table) const {
        const std::string name = table["name"].value_or(std::string());
        for (const OutputColumn& column : study_.outputs) {
            if (lower(column.name) == lower(name)) {
                throw StudyFault{lineOf(*table.get("name")),
                                 "[[limit]]: name \"" + name + "\" is taken"};
            }
        }
    }

    std::vector<OutputColumn> outputColumns(const TomlTable& entry, std::string_view key,
                                            const std::string& name) const {
        std::vector<OutputColumn> columns = columnsOf(name, study_.base);
        if (columns.empty()) {
            const bool isNote = name.starts_with(NotePrefix);
            throw StudyFault{
                entry.line(key),
                isNote ? unknownText("note", name.substr(NotePrefix.size()), noteCodes())
                       : unknownText("output", name, outputNames(study_.base)) + ", note.CODE"};
        }
        return columns;
    }

    /// Under another name as well: "bottom" is "bottomElev".
    static bool isSame(const OutputColumn& a, const OutputColumn& b) {
        return a.output == b.output && a.level == b.level && a.isElev == b.isElev &&
               a.note == b.note;
    }

    void readOutputs(const toml::table& table) {
        const TomlTable head = plainTable(table);
        std::vector<std::string> names = head.texts("outputs");
        if (names.empty()) {
            names = {"penetration", "maxMoment"};
        }
        for (const std::string& name : names) {
            for (OutputColumn& column : outputColumns(head, "outputs", name)) {
                const bool isThere =
                    std::any_of(study_.outputs.begin(), study_.outputs.end(),
                                [&](const OutputColumn& other) { return isSame(column, other); });
                if (!isThere) {
                    study_.outputs.push_back(std::move(column));
                }
            }
        }
    }

    /// The head once more, whose keys have been seen.
    static TomlTable plainTable(const toml::table& table) {
        return TomlTable(table, "[study]",
                         {"base", "method", "design", "size", "seed", "wedge", "amendments",
                          "units", "outputs", "algorithm", "along", "maxFs"});
    }

    void readAlong(const toml::table& table) {
        const TomlTable head = plainTable(table);
        if (study_.method != Method::Fragility) {
            if (head.has("along")) {
                head.fail("along", "belongs to the method fragility");
            }
            return;
        }
        study_.along = variableNamed(head, "along", head.requiredText("along"));
        if (study_.variables[study_.along].isRandom()) {
            head.fail("along", "must have values or a range");
        }
    }

    void readTarget(const toml::table& file) {
        const toml::node* node = file.get("target");
        if ((node != nullptr) != (study_.method == Method::Target)) {
            throw StudyFault{node == nullptr ? headLine_ : lineOf(*node),
                             node == nullptr ? "the method target needs a table [target]"
                                             : "[target] belongs to the method target"};
        }
        if (node == nullptr) {
            return;
        }
        if (!node->is_table()) {
            throw StudyFault{lineOf(*node), "\"target\" must be written [target]"};
        }
        const TomlTable entry(*node->as_table(), "[target]", {"output", "value"});
        const std::string name = entry.requiredText("output");
        const std::vector<OutputColumn> columns = outputColumns(entry, "output", name);
        if (columns.front().level != columns.back().level) {
            entry.fail("output", "must be one of " + name + "_free, " + name + "_fixed");
        }
        study_.target = Target{columns.front(), entry.requiredNumber("value")};
        // Its column is there even where it was not asked for.
        const std::string& column = study_.target->output.name;
        if (std::none_of(study_.outputs.begin(), study_.outputs.end(),
                         [&](const OutputColumn& other) { return other.name == column; })) {
            study_.outputs.push_back(study_.target->output);
        }
    }

    Study& study_;
    bool hasBase_;
    int headLine_ = 0;
    std::vector<std::string> names_;
};

} // namespace

const char* methodName(Method method) {
    return (MethodNames.begin() + static_cast<int>(method))->data();
}

const char* changeName(Change change) {
    return (ChangeNames.begin() + static_cast<int>(change))->data();
}

bool isWeighted(const Study& study) {
    return study.method == Method::Reliability && study.algorithm == Algorithm::Importance;
}

bool Study::asksForNotes() const {
    return std::any_of(outputs.begin(), outputs.end(),
                       [](const OutputColumn& column) { return column.output == nullptr; });
}

namespace {

ReadStudy readTexts(ReadStudy read, bool hasBase) {
    try {
        StudyReader(read.study, hasBase).read();
    } catch (const StudyFault& fault) {
        read.fault = read.study.file + ":" +
                     (fault.line > 0 ? std::to_string(fault.line) + ":" : "") + " " + fault.text;
    }
    return read;
}

} // namespace

ReadStudy readStudy(const std::string& file) {
    ReadStudy read;
    read.study.file = file;
    read.study.text = readInputFile(file);
    return readTexts(std::move(read), false);
}

ReadStudy readStudy(const std::string& file, const std::string& text, const std::string& baseText) {
    ReadStudy read;
    read.study.file = file;
    read.study.text = text;
    read.study.baseText = baseText;
    return readTexts(std::move(read), true);
}

} // namespace korvane::study
