#include "batch/verify_cases.h"

#include "batch/options.h"
#include "runtime/json_text.h"
#include "runtime/utf8_text.h"
#include "verification/verification.h"

#include <ostream>

namespace korvane::batch {

namespace {

/// The code of a failure stands as a text in place of numbers.
void writeFigure(JsonText& json, const VerifiedCase& verified, const VerifiedFigure& figure) {
    const bool number = figure.publishedValue.has_value();
    json.object([&] {
        json.member("case", utf8Text(verified.wanted.name));
        json.member("source", utf8Text(verified.wanted.source));
        json.member("quantity", utf8Text(figure.quantityWithUnit()));
        if (number) {
            json.member("published", figure.publishedValue);
            json.member("ours", figure.ourValue);
            json.member("tolerance", figure.tolerance);
        } else {
            json.member("published", utf8Text(figure.published));
            json.member("ours", utf8Text(figure.ours));
            json.member("tolerance", nullptr);
        }
        json.member("pass", figure.pass);
    });
}

std::string jsonOf(const Verification& verification) {
    JsonText json;
    json.array([&] {
        for (const VerifiedCase& verified : verification.cases) {
            for (const VerifiedFigure& figure : verified.figures) {
                writeFigure(json, verified, figure);
            }
        }
    });
    return json.take();
}

} // namespace

int verifyShippedCases(bool json, std::ostream& out, std::ostream& err) {
    const auto cases = shippedCases();
    if (cases.empty()) {
        err << "korvane-batch: " << messageText(noCasesText()) << "\n";
        return StatusFailed;
    }
    const Verification verification = verifyCases(cases);
    err << messageText(verificationMessages(verification)) << std::flush;
    out << (json ? jsonOf(verification) : utf8Text(verificationTable(verification)));
    if (!out.flush()) {
        err << "korvane-batch: standard output cannot be written.\n";
        return StatusFailed;
    }
    return verification.holds() ? StatusSolved : StatusFailed;
}

} // namespace korvane::batch
