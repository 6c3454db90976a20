// The desktop of windows: what the commands ask for, done with the toolkit.
#pragma once

#include "commands/desktop.h"
#include "shell/printing.h"
#include "widgets/help_viewer.h"
#include "widgets/screen_table.h"

#include <QPointer>
#include <QUrl>

#include <functional>

namespace korvane {

class ShellWindow;

/// Implements Desktop over the main window. The session is made with it, so it is handed over
/// afterwards by `attach`.
class QtDesktop : public Desktop {
  public:
    explicit QtDesktop(ScreenTable screens);

    void addScreens(ScreenTable screens) { screens_.merge(screens); }
    void attach(Session& session, ShellWindow& window);

    /// Serves an entry of a help menu over the active window.
    void showHelp(QWidget* active, Help what);

    Answer Ask(const MessageBox& box) override;
    std::string ChooseFile(const FileDialog& request) override;
    void ShowScreen(Screen screen, Session& session) override;
    void SetBusy(bool busy) override;
    bool PrintDocument(const std::string& documentName,
                       const std::vector<std::string>& lines) override;
    bool OpenDocument(const std::string& file) override;
    void QuitHelp() override;
    void EndProgram() override;
    void Mirror(const Session& session) override;

    const ScreenTable& screens() const { return screens_; }
    PrintServices printServices =
        systemPrintServices([this](QWidget* over) { showHelp(over, Help::OfWindow); });
    std::function<bool(const QUrl&)> openUrl; ///< with the program that the desktop has for it

  private:
    QWidget* activeWindow() const;

    ScreenTable screens_;
    Session* session_ = nullptr;
    QPointer<ShellWindow> window_;
    HelpService help_;
    bool busy_ = false;
};

/// The toolkit's form of a filter text "caption (pattern)|pattern|caption (pattern)|pattern": its
/// captions, in which "(*.*)" becomes the pattern of every file.
QStringList nameFilters(const std::string& filter);

} // namespace korvane
