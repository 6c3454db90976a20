#include "verification_page.h"

namespace korvane::test {

namespace {

/// A cell of a table in Markdown.
std::string cell(std::string text) {
    for (std::size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2)) {
        text.replace(at, 1, "\\|");
    }
    return text + " | ";
}

void addCase(std::string& page, const VerifiedCase& verified) {
    const VerificationCase& wanted = verified.wanted;
    page += "\n## " + wanted.name + "\n\n" + wanted.title + "\n\n- Source: " + wanted.source + "\n";
    if (!wanted.input.empty()) {
        page += "- Wall: `" + wanted.input + "`\n";
    }
    for (const std::string& note : wanted.notes) {
        page += "- " + note + "\n";
    }
    for (const std::string& figure : wanted.leftOut) {
        page += "- Not compared: " + figure + "\n";
    }
    page +=
        "\n| Quantity | Published | Ours | Difference | Tolerance | Result | Why this tolerance "
        "|\n|---|---|---|---|---|---|---|\n";
    for (const VerifiedFigure& figure : verified.figures) {
        page += "| " + cell(figure.quantityWithUnit()) + cell(figure.published) +
                cell(figure.ours) + cell(differenceText(figure)) + cell(toleranceText(figure)) +
                cell(figure.pass ? "pass" : "**FAIL**") + figure.reason + " |\n";
    }
}

} // namespace

std::string verificationPage(const Verification& verification) {
    std::string page = "# Verification\n\n"
                       "Published results and closed forms beside what the program finds, as "
                       "`korvane-batch --verify`\n"
                       "and Tools, Verify show them on your machine. The cases are plain text, in "
                       "`cases/` of the\n"
                       "source and `share/korvane/cases` of an installed program; `README.md` "
                       "there tells how to add one.\n"
                       "Written by `scripts/verification`.\n\n" +
                       std::to_string(verification.passCount()) + " of " +
                       std::to_string(verification.figureCount()) + " figures in " +
                       std::to_string(verification.cases.size()) +
                       " cases hold. A figure holds where the difference is at most its tolerance, "
                       "which comes from\n"
                       "the digits of the source unless the last column says otherwise.\n";
    for (const VerifiedCase& verified : verification.cases) {
        addCase(page, verified);
    }
    return page;
}

} // namespace korvane::test
