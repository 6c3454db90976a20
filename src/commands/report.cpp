#include "commands/report.h"

#include "reports/input_echo.h"
#include "runtime/file_text.h"

#include <algorithm>

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
    const auto& own = session.files.ScratchFileList;
    const bool isOwn = std::find(own.begin(), own.end(), name) != own.end();
    appendFile(name, lines.content(), isOwn ? Links::Refuse : Links::Follow);
    session.report.text += lines.content();
    session.report.OutputLineCount += lines.lineCount();
}

} // namespace korvane
