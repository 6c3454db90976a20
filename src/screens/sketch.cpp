#include "screens/sketch.h"

#include "widgets/gate.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>

namespace korvane {

namespace {

// ---- the loads
// -----------------------------------------------------------------------------------

constexpr OutlinePoint lineOutline[] = {{420, 130}};
constexpr Measure lineMeasures[] = {{420, "Distance"}};

constexpr OutlinePoint uniformOutline[] = {{0, 80}, {1000, 80}};

constexpr OutlinePoint stripOutline[] = {{300, 0}, {300, 100}, {720, 100}, {720, 0}};
constexpr Measure startEndMeasures[] = {{300, "Start"}, {720, "End"}};

constexpr OutlinePoint rampOutline[] = {{300, 0}, {720, 110}, {1000, 110}};

constexpr OutlinePoint triangleOutline[] = {{260, 0}, {520, 130}, {820, 0}};
constexpr Measure triangleMeasures[] = {{260, "Start"}, {520, "Peak"}, {820, "End"}};

constexpr OutlinePoint variableOutline[] = {{200, 0},  {200, 60},  {450, 120},
                                            {700, 50}, {900, 100}, {900, 0}};
constexpr Measure variableMeasures[] = {{200, "Distance 1"}, {450, "Distance 2"}, {700, "..."}};

constexpr OutlinePoint horizontalLineOutline[] = {{120, 240}};
constexpr Measure horizontalLineMeasures[] = {{120, "Elevation"}};

constexpr OutlinePoint distributedOutline[] = {{60, 0}, {60, 90}, {150, 220}, {270, 160}, {270, 0}};
constexpr Measure distributedMeasures[] = {{60, "Elevation 1"}, {150, "Elevation 2"}, {270, "..."}};

// ---- the drawing
// ---------------------------------------------------------------------------------

constexpr double Width = 1300; // of the drawing, in the sketches' units
constexpr double Height = 430;
constexpr double Text = 42;     // height of letters
constexpr double WallX = 240;   // of the ground sketches
constexpr double GroundY = 195; // of the right side there
constexpr double LowerGroundY = 330;
constexpr double WallHalf = 9;  // half of its thickness
constexpr double MiddleX = 560; // of the wall in the wall sketches
constexpr double WallTopY = 45;
constexpr double ArrowSpacing = 70; // between the arrows of a load with a length
constexpr double MeasureStep = 55;  // from one measure to the next

const QColor loadColour(0, 70, 160);
const QColor soilColour(236, 224, 200);

/// Where a point of the load stands on the drawing.
QPointF onDrawing(const Sketch& sketch, double along, double out) {
    return sketch.onGround ? QPointF(WallX + along, GroundY - out)
                           : QPointF(MiddleX + WallHalf + out, WallTopY + along);
}

/// An arrow with its head at `tip`.
void drawArrow(QPainter& painter, QPointF tail, QPointF tip) {
    const QPointF way = tip - tail;
    const double length = std::hypot(way.x(), way.y());
    if (length < 1) {
        return;
    }
    constexpr double headLength = 22;
    constexpr double headHalf = 8;
    const QPointF unit = way / length;
    const QPointF across(-unit.y(), unit.x());
    const QPointF base = tip - unit * std::min(headLength, length);
    painter.drawLine(tail, base);
    painter.drawPolygon(QPolygonF({tip, base + across * headHalf, base - across * headHalf}));
}

/// Height of the outline by straight lines; the higher of two points at one place.
double heightAt(std::span<const OutlinePoint> outline, double along) {
    double height = 0;
    for (std::size_t i = 1; i < outline.size(); ++i) {
        const auto& a = outline[i - 1];
        const auto& b = outline[i];
        if (a.along <= along && along <= b.along) {
            const double share = b.along > a.along ? (along - a.along) / (b.along - a.along) : 1;
            height = std::max(height, a.out + share * (b.out - a.out));
        }
    }
    return height;
}

void drawLoad(QPainter& painter, const Sketch& sketch) {
    const auto outline = sketch.outline;
    painter.setPen(QPen(loadColour, 4));
    painter.setBrush(loadColour);
    if (outline.size() == 1) {
        drawArrow(painter, onDrawing(sketch, outline[0].along, outline[0].out),
                  onDrawing(sketch, outline[0].along, 0));
        return;
    }
    for (double along = outline.front().along; along <= outline.back().along;
         along += ArrowSpacing) {
        constexpr double shortest = 20;
        if (const double height = heightAt(outline, along); height >= shortest) {
            drawArrow(painter, onDrawing(sketch, along, height), onDrawing(sketch, along, 0));
        }
    }
    QPolygonF line;
    for (const OutlinePoint& point : outline) {
        line.append(onDrawing(sketch, point.along, point.out));
    }
    painter.drawPolyline(line);
}

void drawWord(QPainter& painter, QPointF middle, const char* word) {
    const QRectF room(middle.x() - Width / 2, middle.y() - Text, Width, 2 * Text);
    painter.drawText(room, Qt::AlignCenter, word);
}

/// Distances from the wall, one below the other.
void drawDistances(QPainter& painter, const Sketch& sketch) {
    double y = GroundY + 50;
    for (const Measure& measure : sketch.measures) {
        const double x = WallX + measure.along;
        painter.setPen(QPen(Qt::darkGray, 2));
        painter.drawLine(QPointF(x, GroundY), QPointF(x, y + 12));
        painter.setPen(QPen(Qt::black, 2));
        painter.setBrush(Qt::black);
        drawArrow(painter, {WallX + WallHalf, y}, {x, y});
        const double width = painter.fontMetrics().horizontalAdvance(measure.text) + 20.0;
        painter.drawText(QRectF(x + 16, y - Text * 0.7, width, Text * 1.4),
                         Qt::AlignLeft | Qt::AlignVCenter, measure.text);
        y += MeasureStep;
    }
}

void drawElevations(QPainter& painter, const Sketch& sketch) {
    painter.setPen(QPen(Qt::black, 2));
    for (const Measure& measure : sketch.measures) {
        const double y = WallTopY + measure.along;
        painter.drawLine(QPointF(MiddleX - 110, y), QPointF(MiddleX - WallHalf, y));
        painter.drawText(QRectF(MiddleX - 420, y - Text * 0.7, 300, Text * 1.4),
                         Qt::AlignRight | Qt::AlignVCenter, measure.text);
    }
}

void drawGround(QPainter& painter, const Sketch& sketch) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(soilColour);
    if (sketch.onGround) {
        painter.drawRect(QRectF(WallX, GroundY, Width - WallX, Height - GroundY));
        painter.drawRect(QRectF(0, LowerGroundY, WallX, Height - LowerGroundY));
        painter.setPen(QPen(Qt::black, 3));
        painter.drawLine(QPointF(WallX, GroundY), QPointF(Width, GroundY));
        painter.drawLine(QPointF(0, LowerGroundY), QPointF(WallX, LowerGroundY));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const double x = sketch.onGround ? WallX : MiddleX;
    const double top = sketch.onGround ? GroundY - 25 : WallTopY - 25;
    painter.drawRect(QRectF(x - WallHalf, top, 2 * WallHalf, Height - top));
}

void drawSketch(QPainter& painter, const Sketch& sketch) {
    QFont letters = painter.font();
    letters.setPixelSize(static_cast<int>(Text));
    painter.setFont(letters);
    drawGround(painter, sketch);
    drawLoad(painter, sketch);
    if (sketch.onGround) {
        drawDistances(painter, sketch);
    } else {
        drawElevations(painter, sketch);
    }
    painter.setPen(loadColour);
    const double height = sketch.outline.size() == 1 ? sketch.outline[0].out
                                                     : heightAt(sketch.outline, sketch.load.along);
    const QPointF word = onDrawing(sketch, sketch.load.along, height);
    drawWord(painter, word + (sketch.onGround ? QPointF(0, -Text * 0.7) : QPointF(Text * 1.8, 0)),
             sketch.load.text);
}

} // namespace

const Sketch LineLoadSketch{true, lineOutline, lineMeasures, {420, "Load"}};
const Sketch UniformLoadSketch{true, uniformOutline, {}, {500, "Load"}};
const Sketch StripLoadSketch{true, stripOutline, startEndMeasures, {510, "Load"}};
const Sketch RampLoadSketch{true, rampOutline, startEndMeasures, {860, "Load"}};
const Sketch TriangularLoadSketch{true, triangleOutline, triangleMeasures, {520, "Peak load"}};
const Sketch VariableLoadSketch{true, variableOutline, variableMeasures, {450, "Load 2"}};
const Sketch HorizontalLineSketch{
    false, horizontalLineOutline, horizontalLineMeasures, {120, "Load"}};
const Sketch HorizontalDistributedSketch{
    false, distributedOutline, distributedMeasures, {150, "Load 2"}};

SketchView::SketchView(QWidget* parent, const QString& name, const Sketch* sketch)
    : QWidget(parent), sketch_(*sketch) {
    setObjectName(name);
}

void SketchView::paintEvent(QPaintEvent*) {
    enterPaint([this] {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        painter.setRenderHint(QPainter::Antialiasing);
        const double scale = std::min(width() / Width, height() / Height);
        painter.translate((width() - Width * scale) / 2, (height() - Height * scale) / 2);
        painter.scale(scale, scale);
        drawSketch(painter, sketch_);
    });
}

} // namespace korvane
