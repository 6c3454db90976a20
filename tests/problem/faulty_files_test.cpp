// Faulty input files: each must end with exactly its message or run-time error.

#include "reading_helpers.h"

#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"
#include "support/input_cases.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::test;

namespace {

const std::filesystem::path badInput = sourceFolder() / "tests/data/bad-input";

std::string withLineEnds(const std::string& text, const std::string& lineEnd) {
    std::string result;
    for (const char c : text) {
        result += c == '\n' ? lineEnd : std::string(1, c);
    }
    return result;
}

/// Full files of many kinds.
std::vector<std::string> fullFiles() {
    std::vector<std::string> texts;
    for (const char* name : {"design.dat", "analysis.dat", "anchored-analysis.dat"}) {
        texts.push_back(readFile(badInput / name));
    }
    for (const char* name : {"anchored-design-9001", "loads-9004", "loads-9001", "pressures-9001",
                             "wedge-9003", "cantilever-analysis-9001"}) {
        texts.push_back(
            readFile(sourceFolder() / "tests/reference" / (std::string(name) + ".dat")));
    }
    return texts;
}

/// The words of a line in upper case; none for an empty line or a comment.
std::vector<std::string> significantWords(const std::string& line) {
    std::vector<std::string> words(1);
    for (const char c : line) {
        if (c != ' ') {
            words.back() += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    if (words.back().empty()) {
        words.pop_back();
    }
    return words.empty() || words.front().front() == '(' ? std::vector<std::string>{} : words;
}

} // namespace

TEST(FaultyFiles, EveryRowOfTheTableGivesItsMessageOrError) {
    const std::vector<InputCase> cases = inputCases(badInput / "faults.txt");
    int faulty = 0;
    for (const InputCase& input : cases) {
        SCOPED_TRACE(input.base + ": " + input.name);
        faulty += input.accepted() ? 0 : 1;
        const Outcome outcome = readText(input.text, "faulty.dat");
        EXPECT_EQ(outcome.runtimeError, input.runtimeError());
        if (input.runtimeError() == 0) {
            EXPECT_EQ(outcome.result, input.expected("faulty.dat"));
        }
    }
    EXPECT_GE(faulty, 150);
}

TEST(FaultyFiles, LineEndsAndUtf8MarkChangeNothing) {
    for (const InputCase& input : inputCases(badInput / "faults.txt")) {
        SCOPED_TRACE(input.name);
        const std::string withoutEnd = input.text.substr(0, input.text.size() - 1);
        const Outcome plain = readText(input.text);
        for (const std::string& text :
             {withLineEnds(input.text, "\r\n"), withLineEnds(input.text, "\r"), withoutEnd,
              "\xEF\xBB\xBF" + withLineEnds(input.text, "\r\n")}) {
            const Outcome other = readText(text);
            EXPECT_EQ(other.result, plain.result);
            EXPECT_EQ(other.runtimeError, plain.runtimeError);
            EXPECT_EQ(other.problem, plain.problem);
        }
    }
}

TEST(FaultyFiles, TruncationAtEveryLineIsTheIncompleteFileOrError5AfterSideR) {
    for (const std::string& text : fullFiles()) {
        const std::vector<std::string> lines = splitLines(text);
        std::string head;
        bool afterRight = false; // the last significant line is a line or ramp load of side R
        bool finished = false;
        for (std::size_t i = 0; i <= lines.size(); ++i) {
            SCOPED_TRACE(head);
            const Outcome outcome = readText(head);
            EXPECT_EQ(outcome.runtimeError, afterRight && !finished ? 5 : 0);
            EXPECT_EQ(outcome.result.complete, finished);
            if (!finished && !afterRight) {
                EXPECT_EQ(outcome.result, incompleteFile());
            }
            if (i == lines.size()) {
                EXPECT_TRUE(finished);
                break;
            }
            head += lines[i] + "\n";
            const std::vector<std::string> words = significantWords(lines[i]);
            if (!words.empty()) {
                finished = finished || words[0].front() == 'F';
                afterRight = words[0].front() == 'V' &&
                             (words[1].front() == 'L' || words[1].front() == 'R') &&
                             words[2].front() == 'R';
            }
        }
    }
}

TEST(FaultyFiles, TruncationAtEveryByteEndsOrderly) {
    for (const std::string& text : fullFiles()) {
        const std::size_t endLine = text.find_last_of("fF");
        for (std::size_t length = 0; length <= text.size(); ++length) {
            const Outcome outcome = readText(text.substr(0, length));
            const bool told = outcome.result.complete || !outcome.result.title.empty() ||
                              outcome.runtimeError == 5;
            EXPECT_TRUE(told) << text.substr(0, length);
            EXPECT_EQ(outcome.result.complete, length > endLine);
        }
    }
}

TEST(FaultyFiles, NothingAtAllIsIncomplete) {
    for (const char* text : {"", "\n", "\r\n\r\n", "   ", "(", "\xEF\xBB\xBF", "\xEF\xBB\xBF\n"}) {
        EXPECT_EQ(readText(text).result, incompleteFile());
    }
}

TEST(FaultyFiles, BinaryRubbishIsRefused) {
    std::mt19937_64 engine(20261121);
    for (int round = 0; round < 300; ++round) {
        std::string rubbish(static_cast<std::size_t>(engine() % 4000), '\0');
        for (char& c : rubbish) {
            c = static_cast<char>(engine() % 256);
        }
        const Outcome outcome = readText(rubbish);
        EXPECT_FALSE(outcome.result.complete);
        EXPECT_TRUE(!outcome.result.title.empty() || outcome.runtimeError != 0);
        const Outcome control = readText("'HEADING\n\x01" + rubbish);
        EXPECT_EQ(control.result.title, "DATA ERROR IN INPUT FILE: wall.dat");
        // What stands behind the end line is not read.
        EXPECT_TRUE(readText(plainFile() + rubbish).result.complete);
    }
    const std::string zeros(5000, '\0');
    const ReadResult noHeading{
        false, "INPUT DATA ERRORS",
        "At least one HEADING LINE is required.\nCurrent input line is:\n\n" + zeros +
            " \n\nUnable to continue."};
    EXPECT_EQ(readText(zeros).result, noHeading);
}

TEST(FaultyFiles, BytesChangedByChanceAreNeverMoreThanAMessageOrError) {
    const std::string letters = "0123456789.+-E'( \n\tVLRSTHXFCAD\xFF";
    std::mt19937_64 engine(7);
    int complete = 0;
    int refused = 0;
    int errors = 0;
    for (const std::string& original : fullFiles()) {
        for (int round = 0; round < 400; ++round) {
            std::string text = original;
            for (int change = 0; change <= round % 4; ++change) {
                text[engine() % text.size()] = letters[engine() % letters.size()];
            }
            const Outcome outcome = readText(text);
            if (outcome.runtimeError != 0) {
                EXPECT_TRUE(outcome.runtimeError == 5 || outcome.runtimeError == 9) << text;
                ++errors;
            } else if (outcome.result.complete) {
                ++complete;
            } else {
                EXPECT_FALSE(outcome.result.title.empty());
                EXPECT_FALSE(outcome.result.text.empty());
                ++refused;
            }
        }
    }
    EXPECT_GT(complete, 100); // the changes do reach all three ends
    EXPECT_GT(refused, 100);
    EXPECT_GT(errors, 0);
}

TEST(FaultyFiles, VeryLongLinesAreReadOrRefused) {
    const std::size_t megabyte = 1 << 20;
    const std::string blanks(megabyte, ' ');
    const std::string digits(megabyte, '1');
    std::string words;
    while (words.size() < megabyte) {
        words += " 1";
    }
    // Blanks between words, words behind the last one needed and a long comment are no fault.
    EXPECT_TRUE(
        readText(plainFile("VERTICAL" + blanks + "UNIFORM" + blanks + "100\n")).result.complete);
    EXPECT_TRUE(readText(plainFile("VERTICAL UNIFORM 100 0" + words + "\n")).result.complete);
    EXPECT_TRUE(readText(plainFile("(" + digits + "\n")).result.complete);
    // A heading is held whole.
    const Outcome heading = readText("'" + digits + "\n" + plainFile());
    EXPECT_TRUE(heading.result.complete);
    EXPECT_EQ(heading.problem.HeadingLines(1), "'" + digits + " ");
    // A number of a million digits is beyond a double; the message shows the line whole.
    EXPECT_EQ(readText(plainFile("VERTICAL UNIFORM " + digits + "\n")).result,
              dataError("VERTICAL UNIFORM LOADS", "VERTICAL UNIFORM " + digits));
    EXPECT_EQ(readText(plainFile(digits + "\n")).result, dataError("TERMINATION", digits));
    // A hundred thousand empty lines and comments.
    std::string lines;
    for (int i = 0; i < 50000; ++i) {
        lines += "\n(\n";
    }
    EXPECT_TRUE(readText(plainFile(lines)).result.complete);
}

TEST(FaultyFiles, EveryNumberMadeAWordIsRefusedOnItsLine) {
    RandomProblems problems(3);
    int replaced = 0;
    for (int round = 0; round < 40; ++round) {
        const std::string text = inputFileText(problems.next());
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = text.find_first_of(" \n", start);
            const std::size_t line = text.rfind('\n', start) + 1; // npos + 1 on the first line
            if (text[line] != '\'' && isNumeric(text.substr(start, end - start))) {
                const std::string changed = text.substr(0, start) + "?" + text.substr(end);
                const std::string shown =
                    trimmed(changed.substr(line, changed.find('\n', line) - line));
                const Outcome outcome = readText(changed);
                EXPECT_EQ(outcome.result.title, "DATA ERROR IN INPUT FILE: wall.dat");
                EXPECT_NE(outcome.result.text.find("\n\n" + shown + " \n\n"), std::string::npos)
                    << outcome.result.text << "\nnot for " << shown;
                ++replaced;
            }
            start = end + 1;
        }
    }
    EXPECT_GT(replaced, 1000);
}
