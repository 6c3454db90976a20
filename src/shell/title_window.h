// The title window: title screen, disclaimer and About box.
#pragma once

#include <QDialog>

#include <functional>

class QEventLoop;
class QFrame;
class QLabel;
class QPushButton;
class QScrollArea;

namespace korvane {

/// splash_form. As title screen and disclaimer it stands before the main window; Escape and the
/// frame's cross decline. As About box it is modal and anything closes it. It stays within its
/// screen: the picture shrinks, and a text that does not fit scrolls above its buttons.
class TitleWindow : public QDialog {
    Q_OBJECT

  public:
    explicit TitleWindow(QWidget* parent = nullptr);

    /// Shows the title for a while (three seconds in the shipped program; it cannot be skipped),
    /// then the disclaimer until it is answered. True when it was accepted.
    bool runAtStart(int titleMilliseconds);

    /// Turns the window into the disclaimer.
    void ShowDisclaimer();

    /// Shows the About box modally over `parent`; F1 asks for the guide over it. (There is none
    /// before the disclaimer is answered.)
    static void showAbout(QWidget* parent, const std::function<void(QWidget* active)>& showGuide);

    /// 0 no answer yet, 1 accepted, -1 declined.
    int DisclaimerAnswer = 0;

  signals:
    void answered();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class Use { Title, Disclaimer, About };

    void createLabels();
    void createAnswerPanel();
    void becomeAbout();
    void showText(const char* text);
    void answer(int value);
    void leave();

    Use use_ = Use::Title;
    std::function<void(QWidget* active)> showGuide_;
    QFrame* Panel3D1_ = nullptr;
    QLabel* okpanel_ = nullptr;
    QScrollArea* okscroll_ = nullptr; ///< around okpanel
    QPushButton* okbutton_[2] = {nullptr, nullptr};
};

} // namespace korvane
