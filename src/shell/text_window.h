// The text windows VUINPTFL and VUINECHO.
#pragma once

#include "widgets/screen_window.h"

namespace korvane {

struct TextView;

/// Which file a text window shows.
enum class TextKind { Input, Output };

/// A file as text, in which Ctrl+F searches. What is typed is ignored, and a message says so.
class TextWindow : public ScreenWindow {
    Q_OBJECT

  public:
    TextWindow(ScreenContext& context, TextKind kind);

  protected:
    void frameClose() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void tellIgnored();

    bool telling_ = false;
};

} // namespace korvane
