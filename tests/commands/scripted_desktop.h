// A desktop that follows a script and keeps what happened.
#pragma once

#include "commands/commands.h"
#include "commands/files.h"
#include "support/support.h"

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace korvane::test {

/// A print that reached the printer.
struct Printed {
    std::string documentName;
    std::vector<std::string> lines;
};

class ScriptedDesktop : public Desktop {
  public:
    Answer Ask(const MessageBox& box) override;
    std::string ChooseFile(const FileDialog& dialog) override;
    void ShowScreen(Screen screen, Session& session) override;
    void SetBusy(bool on) override { busy = on; }
    bool PrintDocument(const std::string& documentName,
                       const std::vector<std::string>& lines) override;
    bool OpenDocument(const std::string& file) override {
        opened.push_back(file);
        return hasBrowser;
    }
    void QuitHelp() override { ++helpQuits; }
    void EndProgram() override { ended = true; }
    void Mirror(const Session& session) override { mirrored = session.menus; }

    // The script.
    std::deque<Answer> answers;          ///< of Yes/No boxes; then No to a save question, Yes else
    std::deque<std::string> chosenFiles; ///< from the front; then the dialog is cancelled
    std::function<void(const MessageBox&)> onBox;
    std::function<void(Screen, Session&)> onScreen; ///< after the screen's own default
    bool printerAccepts = true;
    bool hasBrowser = true;

    // What happened.
    std::vector<MessageBox> boxes;
    std::vector<FileDialog> dialogs;
    std::vector<Screen> screens;
    std::vector<Printed> prints;
    std::vector<std::string> opened; ///< documents
    Menus mirrored;
    int helpQuits = 0;
    bool busy = false;
    bool ended = false;

    /// The titles of all boxes so far, in order.
    std::vector<std::string> titles() const;
    int shown(Screen screen) const;
};

/// A session that has started in a temporary folder of its own, and a folder for the user's files.
struct Office {
    Office();
    ~Office();

    /// Opens an input file; an example's name stands for its path.
    void open(const std::string& name);
    /// Edit, with a problem entered on the screens.
    void enter(const Problem& problem);
    /// The path of a file in the user's folder, written with a text.
    std::string write(const std::string& name, const std::string& text) const;
    std::string userFile(const std::string& name) const;
    /// From Solve to the button of the last panel.
    void solve();
    std::string report() const;
    /// Names of the files in the temporary folder.
    std::set<std::string> temporaryFiles() const;
    const std::string& outputName() const { return session->report.CurrentOutputName; }

    TemporaryFolder temporary;
    TemporaryFolder user;
    ScriptedDesktop desktop;
    std::unique_ptr<Session> session;
};

/// An input of a cantilever wall with two layers on each side that no wedge is needed for.
extern const char* const twoLayerInput;

} // namespace korvane::test
