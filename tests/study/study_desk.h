// A folder with example walls, study files and results, and the commands of korvane-study.
#pragma once

#include "study/study.h"
#include "support/support.h"

#include <string>
#include <vector>

namespace korvane::study::test {

/// What a command left.
struct CommandRun {
    int status = -1;
    std::string out;
    std::string err;
};

/// A row of a query, each value as SQLite's text of it; "NULL" for nothing, numbers in full
/// (hexadecimal, so that two are equal to the bit or differ).
using TextRow = std::vector<std::string>;

class StudyDesk {
  public:
    /// Copies the examples that tests study.
    StudyDesk();

    std::string file(const std::string& name) const;
    std::string write(const std::string& name, const std::string& text) const;
    std::string read(const std::string& name) const;

    /// Runs a command in this process.
    static CommandRun run(const std::vector<std::string>& arguments);
    /// Writes a study, runs it into the folder `output` and expects status 0.
    void runStudy(const std::string& text, const std::string& output,
                  const std::vector<std::string>& more = {}) const;

    /// Rows of a query on DIR/results.sqlite or another file of the folder.
    std::vector<TextRow> rows(const std::string& output, const std::string& sql,
                              const std::string& name = "results.sqlite") const;
    /// All variants in the order of their ids.
    std::vector<TextRow> variants(const std::string& output) const;
    /// A number of a query that has one.
    double number(const std::string& output, const std::string& sql) const;
    /// A statistic; fails the test where there is none.
    double statistic(const std::string& output, const std::string& subject, const std::string& name,
                     const std::string& column = "value") const;

  private:
    korvane::test::TemporaryFolder folder_;
};

/// A study of an example by its name, from text; fails the test where there is a fault.
Study studyOf(const std::string& text, const std::string& name = "cantilever-dry-sand.dat");
/// The fault of a study; fails the test where there is none.
std::string faultOf(const std::string& text, const std::string& name = "cantilever-dry-sand.dat");

/// "[study]" with the base "wall.dat", a method and further lines.
std::string head(const std::string& method, const std::string& more = {});
/// A [[variable]] with the name and further lines.
std::string variable(const std::string& name, const std::string& lines);
/// Friction of the plain cantilever wall on both sides.
std::string friction(const std::string& lines);
std::string limit(const std::string& name, const std::string& state, const std::string& more = {});

/// The text of an example.
std::string example(const std::string& name);

} // namespace korvane::study::test
