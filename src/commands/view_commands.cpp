// The commands of the View menu and the texts that they show.
#include "commands/command_scope.h"
#include "commands/commands.h"
#include "commands/files.h"
#include "verification/verification.h"

#include <cstddef>

namespace korvane {

namespace {

constexpr std::size_t longestText = 48000; // bytes of the output that the text window takes

} // namespace

void viewScreen(Session& session, Desktop& desktop, Screen screen) {
    runCommand(session, desktop, [&] { desktop.ShowScreen(screen, session); });
}

TextView inputFileView(const Session& session) {
    TextView view{session.CurrentInputName, readSessionFile(session, session.CurrentInputName)};
    if (!view.text.empty()) {
        view.text.pop_back();
    }
    return view;
}

TextView outputFileView(const Session& session, Desktop& desktop) {
    const std::string& CurrentOutputName = session.report.CurrentOutputName;
    TextView view{CurrentOutputName, readSessionFile(session, CurrentOutputName)};
    if (view.text.size() > longestText) {
        desktop.Ask({.text = "The current output file: " + CurrentOutputName +
                             "\n  is too long to display in its entirety."
                             "\nTo see the entire file, save the file as a permanent"
                             "\nfile and view it after after exiting KORVANE."});
        view.text.resize(longestText);
    }
    return view;
}

TextView verificationView() {
    const auto cases = shippedCases();
    if (cases.empty()) {
        return {"Verification", noCasesText() + "\n"};
    }
    const Verification verification = verifyCases(cases);
    const std::string messages = verificationMessages(verification);
    return {"Verification: " + verificationOutcome(verification),
            messages + (messages.empty() ? "" : "\n") + verificationTable(verification)};
}

} // namespace korvane
