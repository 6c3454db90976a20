// The window of the comparison: the wall under other factors, methods and water as a table.
#pragma once

#include "comparison/comparison_table.h"
#include "widgets/screen_window.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QTableWidget;

namespace korvane {

/// Works the rows out once it is on show, each as it is solved told by a bar, until they are
/// through or cancelled. The table can be copied, whole or in part, with tabulators between cells.
class ComparisonWindow : public ScreenWindow {
    Q_OBJECT

  public:
    explicit ComparisonWindow(ScreenContext& context);

  protected:
    /// Also cancels: the window closes once the present row is done.
    void frameClose() override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void createMenus();
    void createContent();
    void work();
    void finish();
    void cancel();
    void fillTable();
    void copy();

    Workspace workspace_;
    Comparison comparison_;
    Mode mode_ = Mode::Design; ///< of the problem that is compared, which may change meanwhile
    WedgeMethod wedge_ = WedgeMethod::Sweep;
    ComparisonTable cells_;
    QTableWidget* table_ = nullptr;
    QLabel* state_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    bool started_ = false;
    bool working_ = false;
    bool cancelled_ = false;
    bool closing_ = false; ///< as soon as the work ends
};

} // namespace korvane
