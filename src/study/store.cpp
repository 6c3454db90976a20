#include "study/store.h"

#include "study/draws.h"
#include "study/interruption.h"
#include "study/row_digest.h"

#include "runtime/number_format.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <utility>

namespace korvane::study {

namespace {

[[noreturn]] void fail(sqlite3* database, const std::string& path) {
    if (database == nullptr) {
        throw StoreFault{path + ": out of memory"};
    }
    const std::string reason = sqlite3_errmsg(database);
    switch (sqlite3_errcode(database) & 0xFF) {
    case SQLITE_INTERRUPT:
        throw Interrupted{};
    case SQLITE_BUSY:
        throw StoreFault{path + " is in use by another run (" + reason + ")"};
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        throw StoreFault{path + " is damaged (" + reason + ")"};
    default:
        throw StoreFault{path + ": " + reason};
    }
}

/// Milliseconds for which a file in use is waited for: where it is needed, where it is looked at.
constexpr int LongPatience = 5000;
constexpr int ShortPatience = 500;

/// While it lives, a signal ends the statement at work. Not of statements that store rows.
class Interruptible {
  public:
    explicit Interruptible(sqlite3* database) : database_(database) {
        constexpr int Steps = 20000; // of SQLite's machine, between two looks
        sqlite3_progress_handler(
            database, Steps, [](void*) { return signalSeen() != 0 ? 1 : 0; }, nullptr);
    }
    ~Interruptible() { sqlite3_progress_handler(database_, 0, nullptr, nullptr); }
    Interruptible(const Interruptible&) = delete;
    Interruptible& operator=(const Interruptible&) = delete;

  private:
    sqlite3* database_;
};

/// A prepared statement.
class Statement {
  public:
    Statement() = default;
    Statement(sqlite3* database, const std::string& path, const std::string& sql)
        : database_(database), path_(path) {
        if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
            fail(database, path);
        }
    }
    ~Statement() { sqlite3_finalize(statement_); }
    Statement(Statement&& other) noexcept
        : database_(other.database_), path_(std::move(other.path_)),
          statement_(std::exchange(other.statement_, nullptr)) {}
    Statement& operator=(Statement&& other) noexcept {
        std::swap(database_, other.database_);
        std::swap(path_, other.path_);
        std::swap(statement_, other.statement_);
        return *this;
    }

    explicit operator bool() const { return statement_ != nullptr; }

    void bind(int place, double number) {
        check(std::isnan(number) ? sqlite3_bind_null(statement_, place)
                                 : sqlite3_bind_double(statement_, place, number));
    }
    void bind(int place, std::int64_t number) {
        check(sqlite3_bind_int64(statement_, place, number));
    }
    /// The text must outlive the step.
    void bind(int place, const std::string& text) {
        check(sqlite3_bind_text(statement_, place, text.data(), static_cast<int>(text.size()),
                                SQLITE_STATIC));
    }

    /// True where there is a row.
    bool step() {
        const int code = sqlite3_step(statement_);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            fail(database_, path_);
        }
        return code == SQLITE_ROW;
    }
    void reset() { sqlite3_reset(statement_); }
    /// Without a row.
    void run() {
        step();
        reset();
    }

    double number(int column) const {
        return sqlite3_column_type(statement_, column) == SQLITE_NULL
                   ? std::numeric_limits<double>::quiet_NaN()
                   : sqlite3_column_double(statement_, column);
    }
    std::int64_t whole(int column) const { return sqlite3_column_int64(statement_, column); }
    std::string text(int column) const {
        const auto* bytes = sqlite3_column_text(statement_, column);
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
        return bytes == nullptr ? "" : std::string(reinterpret_cast<const char*>(bytes), size);
    }
    /// As text; numbers by the shortest digits.
    std::string cell(int column) const {
        const int type = sqlite3_column_type(statement_, column);
        if (type != SQLITE_FLOAT) {
            return text(column);
        }
        std::string digits;
        appendShortest(digits, sqlite3_column_double(statement_, column));
        return digits;
    }
    void addTo(RowDigest& digest, int column) const {
        switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_INTEGER:
            digest.add(whole(column));
            break;
        case SQLITE_TEXT:
            digest.add(text(column));
            break;
        default:
            digest.add(number(column));
        }
    }
    int columns() const { return sqlite3_column_count(statement_); }
    std::string columnName(int column) const { return sqlite3_column_name(statement_, column); }

  private:
    void check(int code) {
        if (code != SQLITE_OK) {
            fail(database_, path_);
        }
    }

    sqlite3* database_ = nullptr;
    std::string path_;
    sqlite3_stmt* statement_ = nullptr;
};

/// The columns of `variants` behind the id, with their types.
std::string variantColumns(const Study& study) {
    std::string columns = "id INTEGER PRIMARY KEY";
    for (const Variable& variable : study.variables) {
        columns += ", " + quoted(variable.name) + " REAL";
    }
    for (const OutputColumn& output : study.outputs) {
        columns += ", " + quoted(output.name) + " REAL";
    }
    for (const LimitState& limit : study.limits) {
        columns += ", " + quoted(limit.name) + " INTEGER";
    }
    return columns + (isWeighted(study) ? ", weight REAL" : "") +
           ", outcome TEXT NOT NULL, reason TEXT";
}

} // namespace

std::string quoted(const std::string& name) {
    std::string text = "\"";
    for (const char c : name) {
        text += c == '"' ? "\"\"" : std::string(1, c);
    }
    return text + "\"";
}

std::vector<std::pair<std::string, std::string>> provenanceOf(const Study& study) {
    return {{"program", "KORVANE " KORVANE_VERSION},
            {"method", methodName(study.method)},
            {"units", unitsName(study.units)},
            {"seed", std::to_string(study.sample.seed)},
            {"study", hashOf(study.text)},
            {"base", hashOf(study.baseText)},
            {"studyText", study.text},
            {"baseText", study.baseText}};
}

struct Store::Contents {
    std::string path;
    sqlite3* database = nullptr;
    Statement insert;
    std::uint64_t next = 0;
    std::uint64_t digest = 0; ///< sum of those of the rows

    explicit Contents(std::string file) : path(std::move(file)) {}
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;
    ~Contents() {
        insert = {};
        sqlite3_close(database);
    }

    /// Others may look at the file for a moment, which is waited for.
    void open(int flags, int patience) {
        // One thread uses it.
        if (sqlite3_open_v2(path.c_str(), &database, flags | SQLITE_OPEN_NOMUTEX, nullptr) !=
            SQLITE_OK) {
            fail(database, path);
        }
        sqlite3_busy_timeout(database, patience);
        run("PRAGMA threads = 2"); // of large sorts
    }
    Statement prepare(const std::string& sql) const { return {database, path, sql}; }
    void run(const std::string& sql) const { prepare(sql).run(); }
    bool hasTable(const std::string& which = "name = 'provenance'") const {
        return prepare("SELECT 1 FROM sqlite_master WHERE " + which).step();
    }
    void checkWhole() const {
        const Interruptible work(database);
        Statement check = prepare("PRAGMA quick_check(1)");
        if (!check.step() || check.text(0) != "ok") {
            throw StoreFault{path + " is damaged (" + check.text(0) + ")"};
        }
    }
    /// All tables, and rows that follow one another within the share.
    void checkRows() const {
        const Interruptible work(database);
        for (const char* name : {"variants", "variables", "statistics"}) {
            if (!hasTable("name = '" + std::string(name) + "'")) {
                throw StoreFault{path + " is damaged (it has no table " + name + ")"};
            }
        }
        const std::uint64_t from = wholeOf("from");
        const std::uint64_t to = wholeOf("to");
        Statement get = prepare("SELECT count(*), min(id), max(id) FROM variants");
        get.step();
        const auto count = static_cast<std::uint64_t>(get.whole(0));
        const auto first = static_cast<std::uint64_t>(get.whole(1));
        const auto behind = static_cast<std::uint64_t>(get.whole(2)) + 1;
        const bool isSearch = from == to; // as many rows as it takes
        if (count > 0 && (first < from || (behind > to && !isSearch))) {
            throw StoreFault{path + " is damaged (it has rows beyond its share)"};
        }
        const bool isComplete = !isSearch && provenance("complete") == "yes";
        if ((count > 0 && behind - from != count) || (isComplete && count != to - from)) {
            throw StoreFault{path + " is damaged (rows are missing)"};
        }
        checkDigest();
    }
    void checkDigest() const {
        Statement get = prepare("SELECT * FROM variants");
        std::uint64_t sum = 0;
        while (get.step()) {
            RowDigest row;
            for (int n = 0; n < get.columns(); ++n) {
                get.addTo(row, n);
            }
            sum += row.value();
        }
        if (provenance("rows") != hashDigits(sum)) {
            throw StoreFault{path + " is damaged (rows have changed)"};
        }
    }
    /// A number of the provenance.
    std::uint64_t wholeOf(const std::string& key) const {
        const std::string text = provenance(key);
        std::uint64_t number = 0;
        const auto end = std::from_chars(text.data(), text.data() + text.size(), number).ptr;
        if (text.empty() || end != text.data() + text.size()) {
            throw StoreFault{path + " is damaged (it does not tell its share)"};
        }
        return number;
    }
    std::string provenance(const std::string& key) const {
        Statement get = prepare("SELECT value FROM provenance WHERE key = ?");
        get.bind(1, key);
        return get.step() ? get.text(0) : "";
    }
    void setProvenance(const std::string& key, const std::string& value) const {
        Statement set = prepare("INSERT OR REPLACE INTO provenance VALUES (?, ?)");
        set.bind(1, key);
        set.bind(2, value);
        set.run();
    }
    void makeTables(const Study& study, std::uint64_t from, std::uint64_t to) const {
        run("CREATE TABLE variants (" + variantColumns(study) + ")");
        run("CREATE TABLE variables (name TEXT PRIMARY KEY, fields TEXT, change TEXT, unit TEXT, "
            "distribution TEXT, mean REAL, deviation REAL, low REAL, high REAL)");
        run("CREATE TABLE statistics (subject TEXT, name TEXT, value REAL, low REAL, high REAL)");
        run("CREATE TABLE provenance (key TEXT PRIMARY KEY, value TEXT)");
        for (const auto& [key, value] : provenanceOf(study)) {
            setProvenance(key, value);
        }
        setProvenance("from", std::to_string(from));
        setProvenance("to", std::to_string(to));
        setProvenance("complete", "no");
        setProvenance("rows", hashDigits(0));
    }
    using Entries = std::vector<std::pair<std::string, std::string>>;
    void checkSame(const Entries& expected) const {
        for (const auto& [key, value] : expected) {
            const std::string there = provenance(key);
            if (there != value) {
                std::string fault = path + " holds rows of another study";
                if (!key.ends_with("Text")) {
                    ((((fault += ": ") += key) += " is ") += there) += ", not " + value;
                }
                throw OtherStudyFault{{fault}};
            }
        }
    }
    static Entries ofShare(const Study& study, std::uint64_t from, std::uint64_t to) {
        Entries entries = provenanceOf(study);
        entries.emplace_back("from", std::to_string(from));
        entries.emplace_back("to", std::to_string(to));
        return entries;
    }
    /// New tables, or those that are there where they are the study's.
    void takeTables(const Study& study, std::uint64_t from, std::uint64_t to) const {
        if (!hasTable()) {
            if (hasTable("1")) {
                throw OtherStudyFault{{path + " is no file of a study"}};
            }
            makeTables(study, from, to);
            return;
        }
        checkSame(ofShare(study, from, to));
        checkWhole();
        checkRows();
    }
    /// The index behind the last row, and the digest of all.
    void findNext() {
        const std::string digits = provenance("rows");
        std::from_chars(digits.data(), digits.data() + digits.size(), digest, 16);
        Statement last = prepare("SELECT max(id) + 1 FROM variants");
        last.step();
        if (!std::isnan(last.number(0))) {
            next = static_cast<std::uint64_t>(last.whole(0));
            return;
        }
        next = wholeOf("from");
    }
};

Store::Store(const std::string& path, const Study& study, std::uint64_t from, std::uint64_t to)
    : contents_(std::make_unique<Contents>(path)) {
    contents_->open(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, LongPatience);
    // A writer keeps others out until it ends: two runs on one file would spoil each other.
    contents_->run("PRAGMA locking_mode = EXCLUSIVE");
    contents_->run("BEGIN EXCLUSIVE");
    contents_->takeTables(study, from, to);
    contents_->run("COMMIT");
    contents_->findNext();
    std::string places = "?";
    for (std::size_t n = study.variables.size() + study.outputs.size() + study.limits.size() +
                         (isWeighted(study) ? 3 : 2);
         n > 0; --n) {
        places += ", ?";
    }
    contents_->insert = contents_->prepare("INSERT INTO variants VALUES (" + places + ")");
}

Store::Store(const std::string& path, Look look) : contents_(std::make_unique<Contents>(path)) {
    contents_->open(SQLITE_OPEN_READWRITE, look == Look::Whole ? LongPatience : ShortPatience);
    if (look == Look::Whole) {
        contents_->checkWhole();
    }
    if (!contents_->hasTable("1")) {
        throw EmptyFileFault{{path + " is not finished"}};
    }
    if (!contents_->hasTable()) {
        throw OtherStudyFault{{path + " is no file of a study"}};
    }
    if (look == Look::Whole) {
        contents_->checkRows();
        contents_->findNext();
    }
}

Store::~Store() = default;
Store::Store(Store&&) noexcept = default;

std::uint64_t Store::next() const {
    return contents_->next;
}
bool Store::isComplete() const {
    return provenance("complete") == "yes";
}
std::string Store::provenance(const std::string& key) const {
    return contents_->provenance(key);
}
void Store::checkSame(const Study& study) const {
    contents_->checkSame(provenanceOf(study));
}
void Store::checkSame(const Study& study, std::uint64_t from, std::uint64_t to) const {
    contents_->checkSame(Contents::ofShare(study, from, to));
}
void Store::setProvenance(const std::string& key, const std::string& value) {
    contents_->setProvenance(key, value);
}

void Store::begin() {
    contents_->run("BEGIN");
}
void Store::commit() {
    contents_->setProvenance("rows", hashDigits(contents_->digest));
    contents_->run("COMMIT");
}

void Store::append(const Study& study, const Row& row) {
    Statement& insert = contents_->insert;
    RowDigest digest;
    int place = 1;
    const auto bind = [&](const auto& value) {
        insert.bind(place++, value);
        digest.add(value);
    };
    bind(static_cast<std::int64_t>(row.id));
    for (const double number : row.numbers) {
        bind(number);
    }
    for (const double output : row.outputs) {
        bind(output);
    }
    for (const bool limit : row.limits) {
        bind(std::int64_t{limit ? 1 : 0});
    }
    if (isWeighted(study)) {
        bind(row.weight);
    }
    const std::string outcome = outcomeName(row.outcome);
    bind(outcome);
    if (row.reason.empty()) {
        bind(std::numeric_limits<double>::quiet_NaN());
    } else {
        bind(row.reason);
    }
    insert.run();
    contents_->digest += digest.value();
    contents_->next = row.id + 1;
}

void Store::take(const std::string& path) {
    Statement attach = contents_->prepare("ATTACH ? AS part");
    attach.bind(1, path);
    attach.run();
    const Interruptible work(contents_->database);
    contents_->run("BEGIN");
    contents_->run("INSERT INTO variants SELECT * FROM part.variants ORDER BY id");
    Statement rows = contents_->prepare("SELECT value FROM part.provenance WHERE key = 'rows'");
    std::uint64_t digest = 0;
    if (rows.step()) {
        const std::string digits = rows.text(0);
        std::from_chars(digits.data(), digits.data() + digits.size(), digest, 16);
    }
    rows = {};
    contents_->digest += digest;
    commit();
    contents_->run("DETACH part");
    contents_->findNext();
}

void Store::writeVariables(const Study& study) {
    contents_->run("DELETE FROM variables");
    Statement insert =
        contents_->prepare("INSERT INTO variables VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (const Variable& variable : study.variables) {
        std::string fields;
        for (const FieldAddress& place : variable.fields) {
            fields += (fields.empty() ? "" : " ") + addressName(place);
        }
        const std::string unit = unitOf(variable.quantity, study.units).name;
        insert.bind(1, variable.name);
        insert.bind(2, fields);
        const std::string change = changeName(variable.change);
        insert.bind(3, change);
        insert.bind(4, unit);
        insert.bind(5, variable.distribution);
        constexpr double none = std::numeric_limits<double>::quiet_NaN();
        DistributionFigures figures{none, none, none, none};
        if (variable.isRandom()) {
            figures = figuresOf(variable);
        } else {
            const auto [least, largest] =
                std::minmax_element(variable.values.begin(), variable.values.end());
            figures.low = *least;
            figures.high = *largest;
        }
        insert.bind(6, figures.mean);
        insert.bind(7, figures.deviation);
        insert.bind(8, figures.low);
        insert.bind(9, figures.high);
        insert.run();
    }
}

void Store::writeStatistics(const std::vector<Statistic>& statistics) {
    contents_->run("DELETE FROM statistics");
    Statement insert = contents_->prepare("INSERT INTO statistics VALUES (?, ?, ?, ?, ?)");
    for (const Statistic& statistic : statistics) {
        insert.bind(1, statistic.subject);
        insert.bind(2, statistic.name);
        insert.bind(3, statistic.value);
        insert.bind(4, statistic.low);
        insert.bind(5, statistic.high);
        insert.run();
    }
}

std::vector<Statistic> Store::statistics() const {
    std::vector<Statistic> all;
    Statement get =
        contents_->prepare("SELECT subject, name, value, low, high FROM statistics ORDER BY rowid");
    while (get.step()) {
        all.push_back({get.text(0), get.text(1), get.number(2), get.number(3), get.number(4)});
    }
    return all;
}

void Store::query(const std::string& sql,
                  const std::function<void(const std::vector<double>&)>& row,
                  const std::vector<double>& arguments) const {
    const Interruptible work(contents_->database);
    Statement get = contents_->prepare(sql);
    for (std::size_t n = 0; n < arguments.size(); ++n) {
        get.bind(static_cast<int>(n) + 1, arguments[n]);
    }
    std::vector<double> numbers(static_cast<std::size_t>(get.columns()));
    while (get.step()) {
        for (std::size_t n = 0; n < numbers.size(); ++n) {
            numbers[n] = get.number(static_cast<int>(n));
        }
        row(numbers);
    }
}

void Store::queryCells(const std::string& sql,
                       const std::function<void(const std::vector<std::string>&)>& row) const {
    const Interruptible work(contents_->database);
    Statement get = contents_->prepare(sql);
    std::vector<std::string> cells;
    cells.reserve(static_cast<std::size_t>(get.columns()));
    for (int n = 0; n < get.columns(); ++n) {
        cells.push_back(get.columnName(n));
    }
    row(cells);
    while (get.step()) {
        for (int n = 0; n < get.columns(); ++n) {
            cells[static_cast<std::size_t>(n)] = get.cell(n);
        }
        row(cells);
    }
}

void Store::queryTexts(const std::string& sql,
                       const std::function<void(const std::string&, double)>& row) const {
    const Interruptible work(contents_->database);
    Statement get = contents_->prepare(sql);
    while (get.step()) {
        row(get.text(0), get.number(1));
    }
}

} // namespace korvane::study
