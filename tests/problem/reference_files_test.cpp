// The reader on the reference problems: complete, or refused with exactly the message told.

#include "reading_helpers.h"

#include "runtime/file_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace korvane;
using namespace korvane::test;

namespace {

/// The first box of a problem: that of the reader, or that of the input accepted.
ReadResult expectedOf(const std::string& boxes, const std::string& fileName) {
    const std::string accepted = "[INPUT COMPLETE] Input file processed: " + fileName;
    if (boxes.starts_with(accepted)) {
        return {true, "", ""};
    }
    const std::size_t end = boxes.find("] ");
    std::string text = boxes.substr(end + 2);
    text.erase(text.find_last_not_of('\n') + 1);
    return {false, boxes.substr(1, end - 1), text};
}

} // namespace

TEST(ReferenceFiles, EachIsReadCompleteOrRefusedWithItsMessage) {
    int accepted = 0;
    int refused = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(sourceFolder() / "tests/reference")) {
        std::filesystem::path path = entry.path();
        if (path.extension() != ".dat") {
            continue;
        }
        const std::string fileName = path.filename().string();
        SCOPED_TRACE(fileName);
        const std::string text = readFile(path);
        const std::string boxes = readFile(path.replace_extension(".msg"));
        const std::string status = readFile(path.replace_extension(".rc"));
        const Outcome outcome = readText(text, fileName);
        EXPECT_EQ(outcome.runtimeError, 0);
        EXPECT_EQ(outcome.result, expectedOf(boxes, fileName));
        if (!outcome.result.complete) {
            EXPECT_EQ(status.front(), '1');
        }
        ++(outcome.result.complete ? accepted : refused);
    }
    EXPECT_GE(accepted, 130);
    EXPECT_GE(refused, 10);
}

TEST(ReferenceFiles, EachExampleIsReadComplete) {
    int examples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(sourceFolder() / "examples")) {
        if (entry.path().extension() == ".dat") {
            const ReadResult result = readText(readFile(entry.path())).result;
            EXPECT_TRUE(result.complete) << entry.path() << result;
            ++examples;
        }
    }
    EXPECT_GE(examples, 6);
}
