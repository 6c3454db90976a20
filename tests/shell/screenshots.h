// Pictures of what the tests show, for looking at them: only with KORVANE_SCREENSHOTS set to a
// folder. With KORVANE_DARK set all windows have a dark theme.
#pragma once

#include <QObject>
#include <QWidget>

namespace korvane::test {

/// Writes FOLDER/NAME.png; nothing without a folder.
void keepScreenshot(QWidget& window, const QString& name);

/// Gives the application a dark theme where KORVANE_DARK asks for it.
void takeTheme();

/// Keeps a picture of every window that is shown while it lives, under its object name; of a
/// message box under its title.
class Screenshots : public QObject {
  public:
    Screenshots();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace korvane::test
