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

class Field;
class FieldTable;

class DataScreen : public ScreenWindow {
    Q_OBJECT

  public:
    DataScreen(ScreenContext& context, const QString& name, const QString& title);

  protected:
    // ---- building ----

    enum class Centre { Across, Both };
    /// Keeps a child of the canvas centred; the canvas scrolls where it has no room for the size
    /// that the child has now.
    void keepCentred(QWidget* widget, Centre how);
    /// A sheet of a size in twips, centred across, on which the controls of a screen stand.
    QWidget* makeSheet(double width, double height, double top = 0);
    /// After a change of what is shown: centres anew.
    void arrange();
    /// The canvas has become so large (pixels): a screen may give its sheets more room.
    virtual void useRoom(QSize) {}

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
    /// The tables of the right and the left side, between which F6 goes.
    void setSides(FieldTable* right, FieldTable* left);

    // ---- changes ----

    /// A person has changed data: DataChanged is 1.
    void dataChanged();
    /// A person has done something that DataChanged does not tell.
    void touch() { touched_ = true; }

    // ---- remarks ----

    /// What is typed on the screen, on top of the problem: texts as the numbers at their heads, and
    /// the counts that go with them. No test is made.
    Problem typedProblem();
    /// The counts and kinds that the texts of the screen mean; empty fields have given 0.
    virtual void takeCounts(Problem&) {}
    /// Where a field's value stands in a problem; null where it has none there.
    virtual const void* placeOf(const Field& field, Problem& typed);

    // ---- boxes ----

    /// The frame's cross: untouched, the record goes back to what it was on opening and the screen
    /// closes; else it is the Finished of the stage on show.
    void frameClose() override;
    virtual void finishStage() = 0;

    /// Notes the control whose value has failed.
    void failAt(QWidget* control) { failed_ = control; }
    /// Asks a box with OK and Cancel. But for Cancel the entry goes on at the control that failed.
    Answer offer(const MessageBox& box);
    bool goesOn(const MessageBox& box) { return offer(box) != Answer::Cancel; }

    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    struct Centred {
        QWidget* widget;
        Centre how;
        QSize least;
    };

    void remarkOnFocus();
    void remark(const QString& text, bool warning);
    /// What a saved file would make of a field's value; empty where it keeps it.
    QString lossAt(const Field& field);
    void goToOtherSide();

    std::vector<Centred> centred_;
    QLabel* remark_;
    FieldTable* sides_[2] = {};
    QWidget* failed_ = nullptr;
    Problem opened_;
    int openedHeadContDataValid_;
    bool touched_ = false;
    bool settingOption_ = false;
};

} // namespace korvane
