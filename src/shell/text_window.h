// The text windows: input file, output file, notes and verification.
#pragma once

#include "widgets/screen_window.h"

class QPlainTextEdit;

namespace korvane {

struct TextView;

struct PrintServices;

/// What a text window shows.
enum class TextKind { Input, Output, Notes, Verification };

/// A text in which Ctrl+F searches. What is typed is ignored, and a message says so. What no entry
/// of the File menu prints can be copied and printed here.
class TextWindow : public ScreenWindow {
    Q_OBJECT

  public:
    /// `services` prints what can be printed here.
    TextWindow(ScreenContext& context, TextKind kind, const PrintServices* services = nullptr);

  protected:
    void frameClose() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void addTextMenus(const PrintServices* services);
    void copy();
    void print(const PrintServices& services);
    void tellIgnored();

    TextKind kind_;
    QPlainTextEdit* text_;
    bool telling_ = false;
};

} // namespace korvane
