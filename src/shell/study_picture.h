// A figure of a study in a window: drawn for the room at hand, its texts always of one size.
#pragma once

#include "survey/answer.h"

#include <QScrollArea>

#include <functional>

namespace korvane {

/// Scrolls where the figure needs more room than there is.
class StudyPicture : public QScrollArea {
    Q_OBJECT

  public:
    /// Draws a figure for a width and a height (twips); the figure may be higher.
    using Recipe = std::function<study::SizedFigure(double width, double height)>;

    explicit StudyPicture(QWidget* parent = nullptr);

    void showFigure(Recipe recipe);
    /// The figure as files have it: of a size of its own.
    study::SizedFigure forFile() const;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void fit();
    void paint();

    Recipe recipe_;
    study::SizedFigure figure_;
    QWidget* ground_;
};

} // namespace korvane
