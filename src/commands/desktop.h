// What a shell offers to the commands: the desktop program or a test's script.
#pragma once

#include "commands/prompts.h"
#include "plots/plot_screen.h"

#include <compare>
#include <string>
#include <variant>
#include <vector>

namespace korvane {

struct Session;

/// A modal screen that commands show, by the name that the system gives it: one of the plots or
/// another.
class Screen {
  public:
    enum class Other {
        KEYIN,    ///< section selector of the data entry
        HEADCONT, ///< heading, control and wall data
        LAYRDATA, ///< soil layers
        SURFACE,  ///< soil surface
        WATER,    ///< water
        SURCHCON, ///< kinds of vertical surcharge
        SURCHARG, ///< one kind of vertical surcharge
        HORCON,   ///< kinds of horizontal load
        HORLOAD,  ///< one kind of horizontal load
        WEDGMETH, ///< the choice of the wedge method
        ROWEPILE, ///< sheet pile sections
        VUINPTFL, ///< text of the input file
        VUINECHO, ///< text of the output file
        NOTES,    ///< text of the notes
        COMPARE,  ///< the wall under other factors, methods and water
        STUDY,    ///< a question that needs many solutions of the wall
        VERIFY,   ///< text of the verification
    };
    using enum Other;
    using enum PlotScreenName;

    constexpr Screen(Other name) : name_(name) {}
    constexpr Screen(PlotScreenName name) : name_(name) {}

    auto operator<=>(const Screen&) const = default;

  private:
    std::variant<Other, PlotScreenName> name_;
};

/// An open or save dialog. `filter` holds captions and patterns in turn, parted by "|":
/// "Input files(*.dat)|*.dat|All files (*.*)|*.*".
struct FileDialog {
    enum class Kind { Open, Save };

    Kind kind = Kind::Open;
    std::string title;
    std::string filter;
    int filterIndex = 1; ///< the filter selected first, counted from 1
    std::string initialFolder = {};
    std::string fileName = {}; ///< proposed name, usually empty
};

/// A shell. Faults of files and devices leave its members as RuntimeErrors; a member that runs an
/// event loop lets no exception through that loop.
class Desktop : public Prompts {
  public:
    /// Lets the user choose a file: its path, or the empty text when the dialog is cancelled. A
    /// save dialog asks no overwrite question of its own and completes a name without extension by
    /// the selected filter's.
    virtual std::string ChooseFile(const FileDialog& dialog) = 0;

    /// Shows a screen and returns when it has closed.
    virtual void ShowScreen(Screen screen, Session& session) = 0;

    /// Puts the busy pointer on or takes it off.
    virtual void SetBusy(bool busy) = 0;

    /// Prints lines in a fixed-width font. False when the user cancelled: nothing was printed.
    /// `documentName` is the path of the file that the lines come from.
    virtual bool PrintDocument(const std::string& documentName,
                               const std::vector<std::string>& lines) = 0;

    /// Shows a file of the user's in the program for its kind; false where none could be started.
    virtual bool OpenDocument(const std::string& file) = 0;

    /// Closes the help window, if there is one.
    virtual void QuitHelp() = 0;

    /// Ends the program. It may return; the command that called it then returns at once too.
    virtual void EndProgram() = 0;

    /// Mirrors the session's menus and panels in the middle of a command, before a long stage or a
    /// modal screen. After a command the caller mirrors them itself.
    virtual void Mirror(const Session& session) = 0;
};

} // namespace korvane
