// The rows of a study in a SQLite file.
#pragma once

#include "study/evaluation.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace korvane::study {

/// What a file of rows cannot do: full disk, damage, another study's rows.
struct StoreFault {
    std::string text;
};
/// The file holds rows of another study, share or version.
struct OtherStudyFault : StoreFault {};
/// The file is there and nothing is in it: a process was killed before it wrote to it.
struct EmptyFileFault : StoreFault {};
/// What cannot be asked of a study.
struct UsageFault : StoreFault {};

/// A number of the table `statistics`; low and high end its interval, NaN where it has none.
struct Statistic {
    std::string subject; ///< an output, a limit state, a variable, an outcome
    std::string name;
    double value = 0;
    double low = 0;
    double high = 0;
};

/// A file with the tables variants, variables, statistics and provenance. What is not committed is
/// not there after a kill. Faults are thrown as StoreFault.
class Store {
  public:
    /// Opens or makes the file for a study and its share of the indices. A file of another study,
    /// of another share or another version is refused by OtherStudyFault and stays as it is.
    Store(const std::string& path, const Study& study, std::uint64_t from, std::uint64_t to);
    /// How closely a file is looked at when it is opened.
    enum class Look { Whole, Briefly };
    /// Opens a file that is there, to read or to finish it; briefly where only its provenance is
    /// read. EmptyFileFault where nothing is in it.
    explicit Store(const std::string& path, Look look = Look::Whole);
    ~Store();
    Store(Store&&) noexcept;

    /// Rows follow one another from `from` on; the index of the first that is missing.
    std::uint64_t next() const;
    bool isComplete() const;
    std::string provenance(const std::string& key) const;
    /// OtherStudyFault where the file holds rows of another study or version.
    void checkSame(const Study& study) const;
    /// The same, and of another share.
    void checkSame(const Study& study, std::uint64_t from, std::uint64_t to) const;

    void begin();
    void append(const Study& study, const Row& row);
    void commit();

    /// Rows of another file are added behind those that are there.
    void take(const std::string& path);

    /// Tables `variables` and `statistics` anew.
    void writeVariables(const Study& study);
    void writeStatistics(const std::vector<Statistic>& statistics);
    void setProvenance(const std::string& key, const std::string& value);
    std::vector<Statistic> statistics() const;

    /// Calls `row` with the numbers of each row of a query; NaN for nothing.
    void query(const std::string& sql, const std::function<void(const std::vector<double>&)>& row,
               const std::vector<double>& arguments = {}) const;
    /// Calls `row` with the cells of each row of a query as text, first with the names of the
    /// columns. Numbers are the shortest digits that read back to the same; nothing is "".
    void queryCells(const std::string& sql,
                    const std::function<void(const std::vector<std::string>&)>& row) const;
    /// Calls with the first column as text and the second as a number.
    void queryTexts(const std::string& sql,
                    const std::function<void(const std::string&, double)>& row) const;

    struct Contents;

  private:
    std::unique_ptr<Contents> contents_;
};

/// A name as SQL wants it: in quotation marks.
std::string quoted(const std::string& name);

/// What tells one study from another: seed, texts of study and base, version.
std::vector<std::pair<std::string, std::string>> provenanceOf(const Study& study);

} // namespace korvane::study
