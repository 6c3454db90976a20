// A command that a file fault can take back as a whole.
#pragma once

#include "commands/session.h"
#include "runtime/runtime_error.h"

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace korvane {

/// While one stands, files that the session deletes are set aside under another name, and files
/// that it makes are remembered, so that a file fault leaves problem, files, menus and names as
/// they were. What the user has saved stays saved: `checkpoint` moves the start behind it.
class CommandScope {
  public:
    explicit CommandScope(Session& session);
    ~CommandScope();
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;

    /// A file that cannot get another name keeps its own until the command has ended well.
    void setAside(const std::filesystem::path& file);
    void remember(const std::filesystem::path& madeFile);

    /// Makes everything so far final: the command now begins here.
    void checkpoint();
    /// What was entered on the screens is kept, whatever happens later, and can be saved from
    /// memory. Problem and report would no longer fit together, so nothing is solved or plotted
    /// from there before the data are written again.
    void keepEnteredData();
    /// Brings back what stood when the command began.
    void takeBack();

  private:
    struct Before {
        explicit Before(const Session& session);
        MainWindow window;
        Problem problem;
        PileSections sections;
        TemporaryFiles files;
        Report report;
        ProblemNotes notes;
        int SolutionFailed;
        int DataChanged;
        int HeadContDataValid;
    };

    void deleteSetAside();

    Session& session_;
    CommandScope* outer_;
    Before before_;
    std::vector<std::pair<std::filesystem::path, std::filesystem::path>> aside_; ///< from, to
    std::vector<std::filesystem::path> made_;
};

/// Runs a command. A file fault shows the box "FILE ERROR" and takes the command back; false then.
/// Files that could not be removed, here or before, are told and stop nothing. Every other fault is
/// passed on.
bool runCommand(Session& session, Desktop& desktop, const std::function<void()>& body);

/// Deletes a file that this session made, in a command such that it can come back, and blanks its
/// name in the lists at once: another program may take the name the moment it is free. A file that
/// is not there is none to delete. Outside a command it is removed as by removeOwnFile.
void deleteOwnFile(Session& session, const std::string& listed);

} // namespace korvane
