// Shared by the tests of the input file reader.
#pragma once

#include "problem/input_reader.h"
#include "problem/problem.h"
#include "runtime/runtime_error.h"

#include <filesystem>
#include <ostream>
#include <string>

namespace korvane {

inline std::ostream& operator<<(std::ostream& out, const ReadResult& result) {
    return out << (result.complete ? "complete" : "[" + result.title + "] " + result.text);
}

} // namespace korvane

namespace korvane::test {

/// What came of one reading into a cleared problem.
struct Outcome {
    ReadResult result;
    int runtimeError = 0;
    Problem problem;
};

inline Outcome readText(const std::string& text, const std::string& fileName = "wall.dat") {
    Outcome outcome;
    clearProblemData(outcome.problem);
    try {
        outcome.result = readProblem(outcome.problem, text, fileName);
    } catch (const RuntimeError& error) {
        outcome.runtimeError = error.number();
    }
    return outcome;
}

/// The message of a faulty field or keyword; `line` as cleaned, without its trailing blank.
inline ReadResult dataError(const std::string& section, const std::string& line,
                            const std::string& fileName = "wall.dat") {
    return {false, "DATA ERROR IN INPUT FILE: " + fileName,
            "Error detected while attempting to process " + section +
                "\nCurrent input line is:\n\n" + line + " \n\nUnable to continue."};
}

inline ReadResult incompleteFile(const std::string& fileName = "wall.dat") {
    return {false, "INCOMPLETE INPUT FILE!",
            "File:  " + fileName + "  is incomplete.\n\n     Unable to continue."};
}

/// A complete file of the plainest kind around the given lines between soil and end line.
inline std::string plainFile(const std::string& optionalLines = "") {
    return "'HEADING\n"
           "CONTROL  CANTILEVER  DESIGN\n"
           "WALL  10\n"
           "SURFACE RIGHTSIDE  1  0  10\n"
           "SURFACE LEFTSIDE  1  0  0\n"
           "SOIL BOTH  STRENGTHS  1\n"
           "  120  110  30  0  0  0\n" +
           optionalLines + "FINISHED\n";
}

inline std::filesystem::path sourceFolder() {
    return KORVANE_SOURCE_DIR;
}

} // namespace korvane::test
