#include "commands/recovery.h"

#include "commands/commands.h"
#include "commands/problem_name.h"
#include "commands/told_boxes.h"
#include "problem/problem_text.h"
#include "rowe/pile_sections.h"
#include "runtime/dates.h"
#include "runtime/run_guarded.h"

#include <cstdio>
#include <optional>
#include <string_view>

namespace korvane {

namespace {

constexpr std::string_view FirstLine = "KORVANE RECOVERY 3";

/// A recovery copy that was read.
struct Recovered {
    std::string moment;
    std::string file; ///< the user's file that the data were from, or empty
    UnitSystem fileUnits = UnitSystem::US;
    PileSections sections;
    Problem problem;
};

/// Applies `visit` to the numbers of a section.
template <class Sections, class Visit>
void visitSection(Sections& sections, int p, Visit visit) {
    visit(sections.PileSectionData(p, 1));
    visit(sections.PileSectionData(p, 2));
    visit(sections.PileAllowStress(p));
    visit(sections.PileModulus(p));
}

/// The table of sections has no file of its own: what was typed into it stands here alone.
std::string sectionsText(const PileSections& sections) {
    std::string text = "Sections";
    appendValue(text, sections.PileSectionCount);
    text += '\n';
    for (int p = 1; p <= sections.PileName.size(); ++p) {
        appendLine(text, sections.PileName(p));
        visitSection(sections, p, [&text](double value) { appendValue(text, value); });
        text += '\n';
    }
    return text;
}

bool readSections(ValueReader& reader, PileSections& sections) {
    reader.word("Sections");
    reader.value(sections.PileSectionCount);
    reader.word("\n");
    for (int p = 1; p <= sections.PileName.size(); ++p) {
        reader.line(sections.PileName(p));
        visitSection(sections, p, [&reader](double& value) { reader.value(value); });
        reader.word("\n");
    }
    return reader.sound() && sections.PileSectionCount >= 0 &&
           sections.PileSectionCount <= sections.PileName.size();
}

std::string copyHead(const Session& session) {
    const MomentText moment = momentText();
    return std::string(FirstLine) + "\n" + moment.date + " " + moment.time + "\n" +
           session.ProblemFile + "\n" + unitsName(session.fileUnits) + "\n";
}

std::optional<Recovered> readCopy(std::string_view text) {
    ValueReader reader(text);
    Recovered recovered;
    std::string first;
    std::string units;
    reader.line(first);
    if (first != FirstLine) {
        return std::nullopt;
    }
    reader.line(recovered.moment);
    reader.line(recovered.file);
    reader.line(units);
    const auto fileUnits = unitsNamed(units);
    const bool hasSections = readSections(reader, recovered.sections);
    const auto problem = readProblemText(reader);
    if (!fileUnits || !hasSections || !problem || !reader.atEnd()) {
        return std::nullopt;
    }
    recovered.fileUnits = *fileUnits;
    recovered.problem = *problem;
    return recovered;
}

/// The sections alone were typed: there was no problem.
bool hasNoProblem(const Recovered& recovered) {
    Problem none;
    clearProblemData(none);
    return recovered.problem == none;
}

MessageBox recoveryQuestion(const Recovered& recovered) {
    const char* what = hasNoProblem(recovered) ? "sheet pile sections" : "input data";
    std::string text =
        std::string("KORVANE ended without saving the ") + what + " of\n" + recovered.moment;
    if (recovered.problem.NumHeadingLines > 0) {
        text += ":\n" + recovered.problem.HeadingLines(1);
    }
    if (!hasNoProblem(recovered) && hasAddedSections(recovered.sections)) {
        text += "\nSheet pile sections that you added are among them.";
    }
    text += "\n\nDo you want to go on with these data?";
    return {.text = text,
            .title = "RECOVER INPUT DATA?",
            .buttons = Buttons::YesNo,
            .icon = Icon::Question};
}

/// No file of the user's ever holds the sections.
bool hasDataForCopy(const Session& session) {
    return hasUnsavedInput(session) || hasAddedSections(session.sections);
}

bool hasUnsavedData(const Session& session) {
    return hasUnsavedInput(session) || session.ProblemFile.empty();
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
    const auto fault = runGuarded([&] {
        if (hasDataForCopy(session)) {
            session.record->keep(copyHead(session),
                                 sectionsText(session.sections) + problemText(session.problem));
        }
    });
    session.copyFault = fault ? fault->number() : 0;
    return !fault;
}

bool keepAtRest(Session& session) noexcept {
    const bool kept = keepTypedData(session);
    if (session.record != nullptr && !hasDataForCopy(session)) {
        session.record->dropCopy();
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
            session.sections = recovered->sections;
            if (!hasNoProblem(*recovered)) {
                goOnWithEnteredData(session, desktop, recovered->problem, recovered->file,
                                    recovered->fileUnits);
            }
            if (!keepAtRest(session)) {
                return; // without a copy of this program's own the old one stays
            }
        }
        run.claim.removeAll();
        tellFilesLeft(desktop);
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
    printFilesLeft("korvane");
}

void rescueAtSignal(Session& session) noexcept {
    if (hasUnsavedData(session) && hasRescueData(session) && rescueInput(session).empty()) {
        std::fputs("korvane: the input could not be kept\n", stderr);
    }
    endEarly(session);
}

} // namespace korvane
