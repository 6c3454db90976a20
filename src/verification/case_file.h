// Case files: a wall or a formula with published or derived results, as plain text.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace korvane {

struct CaseQuantity;

/// A figure of a source, and what it is compared with.
struct CaseCheck {
    const CaseQuantity* quantity = nullptr; ///< never null
    std::vector<double> arguments;          ///< as the quantity wants them; a side is Right or Left
    std::string text;                       ///< the quantity with its arguments, as written
    std::string published;                  ///< the figure as written
    double value = 0;                       ///< of `published`
    std::string unit;                       ///< "" where there is none
    double tolerance = 0;                   ///< in the unit of the figure
    std::string reason;                     ///< for the tolerance
    int line = 0;                           ///< of the case file
};

/// What a case file holds.
struct VerificationCase {
    std::string name; ///< of the file, without extension
    std::filesystem::path file;
    std::string title;
    std::string source;
    std::vector<std::string> notes;
    std::vector<std::string> leftOut; ///< figures of the source that are not compared, and why
    std::string input;                ///< file of the wall, "" where no wall is needed
    bool fixedSurface = false;        ///< the wedge method
    std::string fails;                ///< code of the failure that the wall ends with, "" solved
    int inputLine = 0;
    std::vector<CaseCheck> checks;
};

/// What is wrong with a case file; line 0 where that is the file as a whole.
struct CaseFault {
    std::filesystem::path file;
    int line = 0;
    std::string text;
};

/// "FILE:LINE: text"
std::string faultLine(const CaseFault& fault);

/// Reads a case file; a fault where it cannot be read or understood.
std::optional<CaseFault> readCase(const std::filesystem::path& file, VerificationCase& result);

} // namespace korvane
