#include "commands/report.h"

#include "commands/files.h"
#include "reports/input_echo.h"

namespace korvane {

void startReport(Session& session) {
    session.report.OutputLineCount = 0;
    session.report.text.clear();
    appendReport(session, inputEcho(session.problem));
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
