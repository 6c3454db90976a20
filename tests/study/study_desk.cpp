#include "study_desk.h"

#include "runtime/file_text.h"
#include "study/command_line.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <sstream>

namespace korvane::study::test {

namespace fs = std::filesystem;

StudyDesk::StudyDesk() {
    for (const char* name : {"cantilever-dry-sand.dat", "anchored-sand.dat",
                             "analysis-cantilever.dat", "cantilever-metric.dat"}) {
        write(name, example(name));
    }
    write("wall.dat", example("cantilever-dry-sand.dat"));
}

std::string StudyDesk::file(const std::string& name) const {
    return (folder_.path() / name).string();
}

std::string StudyDesk::write(const std::string& name, const std::string& text) const {
    writeFile(file(name), text);
    return file(name);
}

std::string StudyDesk::read(const std::string& name) const {
    return readFile(file(name));
}

CommandRun StudyDesk::run(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    CommandRun run;
    run.status = runCommand(arguments, out, err, false);
    run.out = out.str();
    run.err = err.str();
    return run;
}

void StudyDesk::runStudy(const std::string& text, const std::string& output,
                         const std::vector<std::string>& more) const {
    std::vector<std::string> arguments{"run", write(output + ".toml", text), "--output",
                                       file(output), "--quiet"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const CommandRun done = run(arguments);
    EXPECT_EQ(done.status, 0) << done.err;
}

namespace {

std::string valueText(sqlite3_stmt* statement, int column) {
    const int type = sqlite3_column_type(statement, column);
    if (type == SQLITE_NULL) {
        return "NULL";
    }
    if (type == SQLITE_FLOAT) {
        std::array<char, 40> text{};
        std::snprintf(text.data(), text.size(), "%a", sqlite3_column_double(statement, column));
        return text.data();
    }
    return reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
}

} // namespace

std::vector<TextRow> StudyDesk::rows(const std::string& output, const std::string& sql,
                                     const std::string& name) const {
    std::vector<TextRow> all;
    sqlite3* database = nullptr;
    const std::string path = (fs::path(file(output)) / name).string();
    EXPECT_EQ(sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK)
        << path;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    while (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW) {
        TextRow row;
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            row.push_back(valueText(statement, column));
        }
        all.push_back(std::move(row));
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return all;
}

std::vector<TextRow> StudyDesk::variants(const std::string& output) const {
    return rows(output, "SELECT * FROM variants ORDER BY id");
}

double StudyDesk::number(const std::string& output, const std::string& sql) const {
    const std::vector<TextRow> found = rows(output, sql);
    if (found.size() != 1 || found[0][0] == "NULL") {
        ADD_FAILURE() << sql << " has " << found.size() << " rows";
        return std::nan("");
    }
    return std::stod(found[0][0]);
}

double StudyDesk::statistic(const std::string& output, const std::string& subject,
                            const std::string& name, const std::string& column) const {
    return number(output, "SELECT " + column + " FROM statistics WHERE subject = '" + subject +
                              "' AND name = '" + name + "'");
}

Study studyOf(const std::string& text, const std::string& name) {
    ReadStudy read = readStudy("/nowhere/s.toml", text, example(name));
    EXPECT_EQ(read.fault, "") << text;
    return std::move(read.study);
}

std::string faultOf(const std::string& text, const std::string& name) {
    const ReadStudy read = readStudy("s.toml", text, example(name));
    EXPECT_NE(read.fault, "") << text;
    return read.fault;
}

std::string head(const std::string& method, const std::string& more) {
    return "[study]\nbase = \"wall.dat\"\nmethod = \"" + method + "\"\n" + more + "\n";
}

std::string variable(const std::string& name, const std::string& lines) {
    return "[[variable]]\nname = \"" + name + "\"\n" + lines + "\n";
}

std::string friction(const std::string& lines) {
    return variable("friction",
                    "fields = [\"SoilFriction.left.1\", \"SoilFriction.right.1\"]\n" + lines);
}

std::string limit(const std::string& name, const std::string& state, const std::string& more) {
    return "[[limit]]\nname = \"" + name + "\"\nstate = \"" + state + "\"\n" + more + "\n";
}

std::string example(const std::string& name) {
    return readFile(korvane::test::examplePath(name.substr(0, name.rfind('.'))));
}

} // namespace korvane::study::test
