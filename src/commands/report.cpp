#include "commands/report.h"

#include "reports/input_echo.h"
#include "runtime/file_text.h"

namespace korvane {

void startReport(Session& session) {
    session.report.OutputLineCount = 0;
    appendReport(session, inputEcho(session.problem));
}

void appendReport(Session& session, const PrintLines& lines) {
    appendFile(session.report.CurrentOutputName, lines.content());
    session.report.OutputLineCount += lines.lineCount();
}

} // namespace korvane
