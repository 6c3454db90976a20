#include "reports/report_file.h"

#include "runtime/file_text.h"

namespace korvane {

void appendReport(State& state, const PrintLines& lines) {
    appendFile(state.report.CurrentOutputName, lines.content());
    state.report.OutputLineCount += lines.lineCount();
}

} // namespace korvane
