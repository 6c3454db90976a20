#include "widgets/gate.h"

#include "commands/commands.h"
#include "commands/recovery.h"
#include "runtime/run_guarded.h"
#include "widgets/message_box.h"

#include <cstdlib>

namespace korvane {

namespace {

constexpr int RuntimeErrorStatus = 70;

[[noreturn]] void endWith(Session& session, QWidget* parent, const RuntimeError& error) {
    MessageBox box;
    box.text = runtimeErrorMessage(error.number());
    if (!error.fileName().empty()) {
        box.text += "\n" + error.fileName();
    }
    box.icon = Icon::Critical;
    // A fault of the rescue itself must not hide the fault that is told here.
    runGuarded([&] {
        const std::string kept = rescueInput(session);
        if (!kept.empty()) {
            box.text += "\nYour input was kept in " + kept;
        } else if (hasRescueData(session)) {
            box.text += "\nYour input could not be kept.";
        }
    });
    askBox(parent, box);
    endEarly(session);
    std::_Exit(RuntimeErrorStatus);
}

} // namespace

void enter(Session& session, QWidget* parent, const std::function<void()>& body) {
    if (const auto fault = runGuarded(body)) {
        endWith(session, parent, *fault);
    }
}

void enterPaint(const std::function<void()>& body) {
    runGuarded(body);
}

} // namespace korvane
