// What all screens of the data entry share: stages centred on the screen, options, one line for
// remarks, and what counts as a change.
#pragma once

#include "screens/controls.h"
#include "widgets/screen_window.h"

#include <vector>

class QFrame;
class QLabel;
class QPushButton;
class QRadioButton;

namespace korvane {

class DataScreen : public ScreenWindow {
    Q_OBJECT

  public:
    DataScreen(ScreenContext& context, const QString& name, const QString& title);

  protected:
    // ---- building ----

    enum class Centre { Across, Both };
    /// Keeps a child of the canvas centred; the canvas scrolls where it has no room.
    void keepCentred(QWidget* widget, Centre how);
    /// A sheet of a size in twips, centred across, on which the controls of a screen stand.
    QWidget* makeSheet(double width, double height, double top = 0);
    /// After a change of what is shown: centres anew.
    void arrange();

    /// A button whose click runs `body` through the gate.
    QPushButton* addButton(QWidget* parent, const QString& name, const QString& caption,
                           const Place& where, std::function<void()> body);

    /// An option whose `effect` runs only when a person turns it from off to on.
    QRadioButton* addOption(QWidget* parent, const QString& name, const QString& caption,
                            const Place& where, std::function<void()> effect);
    /// Sets or clears by code: without effect.
    void setOption(QRadioButton* option, bool on);

    /// Makes every field on the screen report changes of the data by a person. Call it when all
    /// are made.
    void watchFields();
    /// Likewise for fields that hold no data of the problem.
    void watchRemarks();

    static void setFocusOrder(const std::vector<QWidget*>& order);

    // ---- changes ----

    /// A person has changed data: DataChanged is 1.
    void dataChanged();
    /// A person has done something that DataChanged does not tell.
    void touch() { touched_ = true; }

    /// A line under the screen; empty takes it away.
    void remark(const QString& text);

    /// The frame's cross: untouched, the record goes back to what it was on opening and the screen
    /// closes; else it is the Finished of the stage on show.
    void frameClose() override;
    virtual void finishStage() = 0;

    /// Asks a box with OK and Cancel. True where the answer is OK: the entry goes on.
    bool goesOn(const MessageBox& box) { return ask(box) == Answer::Ok; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Centred {
        QWidget* widget;
        Centre how;
    };

    std::vector<Centred> centred_;
    QLabel* remark_;
    Problem opened_;
    int openedHeadContDataValid_;
    bool touched_ = false;
    bool settingOption_ = false;
};

} // namespace korvane
