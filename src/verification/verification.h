// Runs the shipped cases: what books and closed forms tell beside what this program finds.
#pragma once

#include "verification/case_file.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace korvane {

/// A row of the verification.
struct VerifiedFigure {
    std::string quantity;                 ///< with its arguments: "penetration 1"
    std::string unit;                     ///< "" where there is none
    std::string published;                ///< as the source has it
    std::string ours;                     ///< six digits; "none" where there is no value
    std::optional<double> publishedValue; ///< nothing: the figure is the code of a failure
    std::optional<double> ourValue;
    double tolerance = 0;
    bool pass = false;
    std::string reason; ///< for the tolerance

    /// "penetration 1, FT"
    std::string quantityWithUnit() const {
        return unit.empty() ? quantity : quantity + ", " + unit;
    }
};

/// A case with its rows.
struct VerifiedCase {
    VerificationCase wanted;
    std::vector<VerifiedFigure> figures;
    std::string failure; ///< why the wall has no solution although it should; "" it has one
};

struct Verification {
    std::vector<VerifiedCase> cases; ///< in the order of their names
    std::vector<CaseFault> faults;   ///< of files that could not be read or worked out

    int figureCount() const;
    int passCount() const;
    /// No fault, and every figure within its tolerance.
    bool holds() const;
};

/// Where the cases that come with the program may be: beside the installed program, else in its
/// source folder.
std::vector<std::filesystem::path> caseFolders();

/// The cases (*.case) of a folder by name; empty where it is none or cannot be read.
std::vector<std::filesystem::path> casesIn(const std::filesystem::path& folder);

/// Those of the first of caseFolders() that has any.
std::vector<std::filesystem::path> shippedCases();

/// Solves the walls of the cases and compares. A fault of one case stops no other.
Verification verifyCases(const std::vector<std::filesystem::path>& cases);

/// The table, 83 columns wide where names and sources allow: for each case its name, its source and
/// its rows with quantity, published figure, ours, difference, tolerance and result; at the end the
/// number of figures that hold. Lines end with a line feed.
std::string verificationTable(const Verification& verification);

/// "122 of 122 figures hold", with the number of damaged case files, if there are any.
std::string verificationOutcome(const Verification& verification);

/// What is wrong beyond figures that fail, a line each: faults of case files as "FILE:LINE: text",
/// walls without a solution as "CASE: no solution: text".
std::string verificationMessages(const Verification& verification);

/// Why there is nothing to verify.
std::string noCasesText();

/// Six significant digits, as rows have them.
std::string sixDigits(double value);
/// The difference of a row, two significant digits; "" where there is none.
std::string differenceText(const VerifiedFigure& figure);
/// The tolerance of a row; "" where there is none.
std::string toleranceText(const VerifiedFigure& figure);

} // namespace korvane
