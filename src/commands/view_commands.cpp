// The commands of the View menu and the texts that they show.
#include "commands/command_scope.h"
#include "commands/commands.h"
#include "runtime/file_text.h"

#include <array>
#include <cstddef>

namespace korvane {

namespace {

constexpr std::size_t longestText = 48000; // bytes of the output that the text window takes

constexpr std::array viewScreens{Screen::VUINPTFL, Screen::VUINECHO, Screen::VUINPLOT,
                                 Screen::CANPLOT,  Screen::FREEPLOT, Screen::FIXDPLOT,
                                 Screen::ROWECURV};

} // namespace

void mnuViewItem_Click(Session& session, Desktop& desktop, int index) {
    runCommand(session, desktop, [&] {
        desktop.ShowScreen(viewScreens.at(static_cast<std::size_t>(index)), session);
    });
}

TextView inputFileView(const Session& session) {
    TextView view{session.CurrentInputName, readFile(session.CurrentInputName)};
    if (!view.text.empty()) {
        view.text.pop_back();
    }
    return view;
}

TextView outputFileView(const Session& session, Desktop& desktop) {
    const std::string& CurrentOutputName = session.report.CurrentOutputName;
    TextView view{CurrentOutputName, readFile(CurrentOutputName)};
    if (view.text.size() > longestText) {
        desktop.Ask({.text = "The current output file: " + CurrentOutputName +
                             "\n  is too long to display in its entirety."
                             "\nTo see the entire file, save the file as a permanent"
                             "\nfile and view it after after exiting KORVANE."});
        view.text.resize(longestText);
    }
    return view;
}

} // namespace korvane
