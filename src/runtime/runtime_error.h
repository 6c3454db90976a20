// Run-time errors: the one exception type of what solves, reports, draws and shows.
#pragma once

#include <exception>
#include <string>

namespace korvane {

inline constexpr int OutOfMemory = 7;
inline constexpr int InternalError = 51;
inline constexpr int DeviceFault = 57;
/// What a file is that cannot be an input has numbers of its own.
inline constexpr int FolderAsInput = 1001;
inline constexpr int DeviceAsInput = 1002;
inline constexpr int InputTooLarge = 1003;
inline constexpr int PipeAsInput = 1004;

/// A fault that ends the procedure it happens in: an invalid argument, an overflow, a subscript
/// beyond an array, a zero divisor, a file or device that does not answer.
///
/// The numbers in use: 5 invalid procedure call or argument, 6 overflow, 7 out of memory,
/// 9 subscript out of range, 11 division by zero, 13 type mismatch, 51 internal error (an exception
/// that nobody foresaw), 52 bad file name or number, 53 file not found, 55 file
/// already open, 57 device I/O error, 61 disk full, 62 input past end of file, 67 too many
/// open files, 70 permission denied, 71 disk not ready, 75 path/file access error, 76 path not
/// found.
class RuntimeError : public std::exception {
  public:
    /// `fileName` names the file of a file fault and is empty for all others.
    explicit RuntimeError(int number, std::string fileName = {});

    int number() const { return number_; }
    const std::string& fileName() const { return fileName_; }
    /// True for the faults of files, folders and devices (52 and above).
    bool isFileFault() const { return number_ >= 52; }
    /// The standard text of the number, for example "Subscript out of range".
    const char* what() const noexcept override;

  private:
    int number_;
    std::string fileName_;
};

/// Throws RuntimeError(number), out of the way of the code that runs when all is well.
[[noreturn, gnu::cold]] void throwRuntimeError(int number);

/// The standard text of a run-time error number; an unknown number gives "Application-defined or
/// object-defined error".
const char* runtimeErrorText(int number);

/// The box text of a run-time error: "Run-time error '11':", an empty line, "Division by zero".
std::string runtimeErrorMessage(int number);

} // namespace korvane
