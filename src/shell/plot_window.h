// The plot screens: a PlotView of the plots room in a window.
#pragma once

#include "plots/plot_screen.h"
#include "shell/printing.h"
#include "widgets/screen_window.h"

#include <utility>
#include <vector>

class QLabel;
class QPushButton;

namespace korvane {

/// CANPLOT, FREEPLOT, FIXDPLOT, VUSOLPLT, VUINPLOT and ROWECURV.
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
    void createLabelsAndButtons();
    /// Two labels for heading lines, whatever the problem has; ROWECURV has one for each line.
    std::size_t headingLabelCount() const;
    /// Brings menus, pictures, labels and buttons in line with the view.
    void mirror();
    void choose(int plotNumber);
    void endPlot();
    void print();
    void saveFigure();

    const PlotScreen& screen_;
    const PrintServices* services_;
    PlotView view_;
    std::vector<std::pair<QAction*, const PlotEntry*>> entries_;
    std::vector<QWidget*> pictures_; ///< Picture1 first
    std::vector<QLabel*> labels_;
    QPushButton* cmdDone_ = nullptr;
    QPushButton* cmdPrint_ = nullptr;
    QPushButton* cmdSave_ = nullptr;
};

/// The paper drawing of the diagram on show as the content of a PNG, SVG or PDF file, by the
/// extension of `name`; cropped to its frame. RuntimeError 5 for any other extension.
std::string figureFile(const PlotData& data, const PlotView& view, const std::string& name);

/// Draws the diagram on show on a page; a page smaller than the drawing shrinks it uniformly.
PageDrawing plotPage(const PlotData& data, const PlotView& view);

} // namespace korvane
