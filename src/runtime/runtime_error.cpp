#include "runtime/runtime_error.h"

#include <utility>

namespace korvane {

namespace {

struct ErrorText {
    int number;
    const char* text;
};

constexpr ErrorText errorTexts[] = {
    {5, "Invalid procedure call or argument"},
    {6, "Overflow"},
    {7, "Out of memory"},
    {9, "Subscript out of range"},
    {11, "Division by zero"},
    {13, "Type mismatch"},
    {51, "Internal error"},
    {52, "Bad file name or number"},
    {53, "File not found"},
    {55, "File already open"},
    {57, "Device I/O error"},
    {61, "Disk full"},
    {62, "Input past end of file"},
    {67, "Too many open files"},
    {70, "Permission denied"},
    {71, "Disk not ready"},
    {75, "Path/File access error"},
    {76, "Path not found"},
    {FolderAsInput, "A folder, not an input file"},
    {DeviceAsInput, "A device, not an input file"},
    {InputTooLarge, "Larger than 64 MiB, too large for an input file"},
    {PipeAsInput, "A pipe or socket, not an input file"},
};

} // namespace

RuntimeError::RuntimeError(int number, std::string fileName)
    : number_(number), fileName_(std::move(fileName)) {}

const char* RuntimeError::what() const noexcept {
    return runtimeErrorText(number_);
}

void throwRuntimeError(int number) {
    throw RuntimeError(number);
}

const char* runtimeErrorText(int number) {
    for (const ErrorText& entry : errorTexts) {
        if (entry.number == number) {
            return entry.text;
        }
    }
    return "Application-defined or object-defined error";
}

std::string runtimeErrorMessage(int number) {
    return "Run-time error '" + std::to_string(number) + "':\n\n" + runtimeErrorText(number);
}

} // namespace korvane
