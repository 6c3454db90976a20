#include "commands/recovery.h"

#include "commands/commands.h"
#include "problem/problem_text.h"
#include "runtime/dates.h"
#include "runtime/run_guarded.h"

#include <optional>
#include <string_view>

namespace korvane {

namespace {

constexpr std::string_view FirstLine = "KORVANE RECOVERY 2";

/// A recovery copy that was read.
struct Recovered {
    std::string moment;
    std::string file; ///< the user's file that the data were from, or empty
    UnitSystem fileUnits = UnitSystem::US;
    Problem problem;
};

std::string copyHead(const Session& session) {
    const MomentText moment = momentText();
    return std::string(FirstLine) + "\n" + moment.date + " " + moment.time + "\n" +
           session.ProblemFile + "\n" + unitsName(session.fileUnits) + "\n";
}

/// Takes a line from the front of a text, without its end.
std::string takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string line(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

std::optional<Recovered> readCopy(std::string_view text) {
    if (takeLine(text) != FirstLine) {
        return std::nullopt;
    }
    Recovered recovered;
    recovered.moment = takeLine(text);
    recovered.file = takeLine(text);
    const auto units = unitsNamed(takeLine(text));
    const auto problem = readProblemText(text);
    if (!units || !problem) {
        return std::nullopt;
    }
    recovered.fileUnits = *units;
    recovered.problem = *problem;
    return recovered;
}

MessageBox recoveryQuestion(const Recovered& recovered) {
    std::string text = "KORVANE ended without saving the input data of\n" + recovered.moment;
    if (recovered.problem.NumHeadingLines > 0) {
        text += ":\n" + recovered.problem.HeadingLines(1);
    }
    text += "\n\nDo you want to go on with these data?";
    return {.text = text,
            .title = "RECOVER INPUT DATA?",
            .buttons = Buttons::YesNo,
            .icon = Icon::Question};
}

bool hasUnsavedData(const Session& session) {
    return session.DataChanged != 0 || session.inputFileStale || session.ProblemFile.empty();
}

} // namespace

void listTemporaryFiles(Session& session) noexcept {
    if (session.record != nullptr) {
        runGuarded([&] { session.record->list(session.files); });
    }
}

bool keepTypedData(Session& session) noexcept {
    if (session.record == nullptr) {
        return false;
    }
    listTemporaryFiles(session);
    return !runGuarded([&] {
        if (session.DataChanged != 0) {
            session.record->keep(copyHead(session), problemText(session.problem));
        }
    });
}

bool keepAtRest(Session& session) noexcept {
    const bool kept = keepTypedData(session);
    if (session.record != nullptr && session.DataChanged == 0) {
        runGuarded([&] { session.record->dropCopy(); });
    }
    return kept;
}

void offerRecovery(Session& session, Desktop& desktop, const std::vector<DeadRun>& runs) {
    for (const DeadRun& run : runs) {
        const auto recovered = readCopy(run.text);
        if (!recovered) {
            continue;
        }
        const bool taken = desktop.Ask(recoveryQuestion(*recovered)) == Answer::Yes;
        if (taken) {
            goOnWithEnteredData(session, desktop, recovered->problem, recovered->file,
                                recovered->fileUnits);
            if (!keepAtRest(session)) {
                return; // without a copy of this program's own the old one stays
            }
        }
        run.claim.removeAll();
        if (taken) {
            return;
        }
    }
}

void endEarly(Session& session) noexcept {
    removeTemporaryFiles(session.files);
    if (session.record != nullptr) {
        session.record->endEarly();
    }
}

void rescueAtSignal(Session& session) noexcept {
    if (hasUnsavedData(session)) {
        rescueInput(session);
    }
    endEarly(session);
}

} // namespace korvane
