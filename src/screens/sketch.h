// The small drawings that explain the loads, sharp at any size.
#pragma once

#include <QWidget>

#include <span>

namespace korvane {

/// A point of a load's outline: its distance along what it acts on, and its height.
struct OutlinePoint {
    double along;
    double out;
};

/// A measure to a place of the load, or a word at one.
struct Measure {
    double along;
    const char* text;
};

/// A load in units of its own: 1000 along the ground from the wall, or 340 down the wall. A single
/// point is a line load.
struct Sketch {
    bool onGround;                         ///< else on the wall itself
    std::span<const OutlinePoint> outline; ///< in the order of `along`
    std::span<const Measure> measures;     ///< distances from the wall, or elevations
    Measure load;                          ///< the word for the load and where it stands
};

extern const Sketch LineLoadSketch;
extern const Sketch UniformLoadSketch;
extern const Sketch StripLoadSketch;
extern const Sketch RampLoadSketch;
extern const Sketch TriangularLoadSketch;
extern const Sketch VariableLoadSketch;
extern const Sketch HorizontalLineSketch;
extern const Sketch HorizontalDistributedSketch;

class SketchView : public QWidget {
    Q_OBJECT

  public:
    SketchView(QWidget* parent, const QString& name, const Sketch* sketch);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const Sketch& sketch_;
};

} // namespace korvane
