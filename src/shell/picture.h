// The picture of the main window's client area.
#pragma once

#include <QWidget>

namespace korvane {

/// A sheet-pile wall between its pressure diagrams, drawn in the colours of the theme.
class Picture : public QWidget {
    Q_OBJECT

  public:
    explicit Picture(QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace korvane
