// The plot screens: a PlotView of the plots room in a window.
#pragma once

#include "plots/plot_screen.h"
#include "shell/printing.h"
#include "widgets/screen_window.h"

#include <optional>
#include <utility>
#include <vector>

class QLabel;
class QPushButton;

namespace korvane {

/// The screens of PlotScreenName.
class PlotWindow : public ScreenWindow {
    Q_OBJECT

  public:
    PlotWindow(ScreenContext& context, PlotScreenName name, const PrintServices* services);

  protected:
    void frameClose() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void createMenus();
    void createPictures();
    void createBand();
    void createLabelsAndButtons();
    /// ROWECURV: all sections, and why some are not in the picture.
    void createSectionTable();
    /// Two labels for heading lines, whatever the problem has; ROWECURV has one for each line.
    std::size_t headingLabelCount() const;
    /// Brings menus, pictures, labels and buttons in line with the view.
    void mirror();
    void mirrorBand();
    QString choiceText() const;
    /// Tells the values at a height of the drawing (twips), or how to get at them.
    void point(std::optional<double> y);
    void choose(int plotNumber);
    void endPlot();
    void print();
    void saveFigure();

    const PlotScreen& screen_;
    const PrintServices* services_;
    PlotView view_;
    PlotReadings readings_; ///< of the diagram on show
    std::vector<std::pair<QAction*, const PlotEntry*>> entries_;
    std::vector<QWidget*> pictures_; ///< Picture1 first
    std::vector<QLabel*> labels_;
    QLabel* choice_ = nullptr;   ///< what to do while no diagram is on show
    QLabel* extremes_ = nullptr; ///< below the picture
    QLabel* pointed_ = nullptr;  ///< likewise, at the pointer
    QPushButton* cmdDone_ = nullptr;
    QPushButton* cmdPrint_ = nullptr;
    QPushButton* cmdSave_ = nullptr;
};

/// The paper drawing of the diagram on show as the content of a PNG, SVG or PDF file, by the
/// extension of `name`; all of the drawing and no more. RuntimeError 5 for any other extension.
std::string figureFile(const PlotData& data, const PlotView& view, const std::string& name);

/// Draws the diagram on show on a page; a page smaller than the drawing shrinks it uniformly.
PageDrawing plotPage(const PlotData& data, const PlotView& view);

} // namespace korvane
