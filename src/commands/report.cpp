#include "commands/report.h"

#include "commands/files.h"
#include "reports/solution_report.h"

namespace korvane {

namespace {

void writeParts(Session& session, const Solved& solved) {
    writeReport(session.report.next, session.problem, session.sections, solved,
                [&session](const PrintLines& lines) { appendReport(session, lines); });
}

} // namespace

void startReport(Session& session) {
    session.report.OutputLineCount = 0;
    session.report.text.clear();
    session.report.next = ReportPart::Echo;
    writeParts(session, {});
}

void continueReport(Session& session) {
    writeParts(session, session.notes.solved);
}

void appendReport(Session& session, const PrintLines& lines) {
    if (lines.lineCount() == 0) {
        return;
    }
    const std::string& name = session.report.CurrentOutputName;
    appendFile(name, lines.content(), linksTo(session, name));
    session.report.text += lines.content();
    session.report.OutputLineCount += lines.lineCount();
}

} // namespace korvane
