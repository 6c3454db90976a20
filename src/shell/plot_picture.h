// The picture of a plot window: a diagram mapped by one factor, and where the pointer is in it.
#pragma once

#include "plots/plot_screen.h"

#include <QTransform>
#include <QWidget>

namespace korvane {

/// Draws the diagram of a view at its upper edge, all of it and as large as it can be. What
/// the data refer to and the view must outlive it.
class PlotPicture : public QWidget {
    Q_OBJECT

  public:
    PlotPicture(QWidget* parent, const PlotData& shown, const PlotView& view);

    /// From the drawing's twips to pixels of the widget.
    QTransform mapping() const;

  signals:
    /// The pointer stands at a height of the drawing (twips).
    void pointedAt(double y);
    void pointerLeft();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    const PlotData data_; ///< by value: references that stay with the session
    const PlotView& view_;
};

} // namespace korvane
