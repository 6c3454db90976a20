// Diagrams on paper and in files.
#include "commands/files.h"
#include "plots/svg_surface.h"
#include "runtime/runtime_error.h"
#include "shell/painter_surface.h"
#include "shell/plot_window.h"
#include "widgets/geometry.h"

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>

#include <algorithm>

namespace korvane {

namespace {

constexpr double PngPixelsPerInch = 200;
constexpr int DeviceFault = 57;

const double frameWidth = FigureView.b.x - FigureView.a.x;
const double frameHeight = FigureView.b.y - FigureView.a.y;

std::string bytes(const QByteArray& array) {
    return {array.constData(), static_cast<std::size_t>(array.size())};
}

/// The frame's drawing with its upper left corner at the painter's origin.
void drawFramed(QPainter& painter, const PlotData& data, const PlotView& view) {
    painter.setClipRect(QRectF(0, 0, frameWidth, frameHeight));
    painter.translate(-FigureView.a.x, -FigureView.a.y);
    PainterSurface surface(painter);
    drawPlot(surface, data, view, Medium::Paper);
}

std::string pngFile(const PlotData& data, const PlotView& view) {
    const double factor = PngPixelsPerInch / TwipsPerInch;
    QImage image(static_cast<int>(frameWidth * factor), static_cast<int>(frameHeight * factor),
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(static_cast<int>(PngPixelsPerInch / 0.0254));
    image.setDotsPerMeterY(static_cast<int>(PngPixelsPerInch / 0.0254));
    QPainter painter(&image);
    painter.scale(factor, factor);
    drawFramed(painter, data, view);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        throw RuntimeError(DeviceFault);
    }
    return bytes(buffer.data());
}

std::string pdfFile(const PlotData& data, const PlotView& view) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(plotScreen(view.screen).title);
    writer.setCreator("KORVANE");
    writer.setResolution(static_cast<int>(TwipsPerInch));
    writer.setPageSize(QPageSize(QSizeF(frameWidth, frameHeight) / TwipsPerInch, QPageSize::Inch));
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    if (!painter.begin(&writer)) {
        throw RuntimeError(DeviceFault);
    }
    drawFramed(painter, data, view);
    if (!painter.end()) {
        throw RuntimeError(DeviceFault);
    }
    return bytes(buffer.data());
}

/// Device units of a twip. The drawing needs a page that holds its frame; on a smaller one it
/// shrinks until some room stays beyond the frame.
double paperFactor(const QPagedPaintDevice& device) {
    constexpr double Room = 240;
    const double perTwip = device.logicalDpiX() / TwipsPerInch;
    if (device.width() >= PaperFrame.b.x * perTwip && device.height() >= PaperFrame.b.y * perTwip) {
        return perTwip;
    }
    return std::min({perTwip, device.width() / (PaperFrame.b.x + Room),
                     device.height() / (PaperFrame.b.y + Room)});
}

std::string svgFile(const PlotData& data, const PlotView& view) {
    SvgSurface surface;
    drawPlot(surface, data, view, Medium::Paper);
    return surface.document(FigureView);
}

} // namespace

std::string figureFile(const PlotData& data, const PlotView& view, const std::string& name) {
    if (endsIn(name, ".PNG")) {
        return pngFile(data, view);
    }
    if (endsIn(name, ".SVG")) {
        return svgFile(data, view);
    }
    if (endsIn(name, ".PDF")) {
        return pdfFile(data, view);
    }
    throw RuntimeError(5);
}

PageDrawing plotPage(const PlotData& data, const PlotView& view) {
    return [data, view](QPagedPaintDevice& device) {
        QPageLayout layout = device.pageLayout();
        layout.setMode(QPageLayout::FullPageMode); // the drawing's origin is the page's corner
        device.setPageLayout(layout);
        QPainter painter;
        if (!painter.begin(&device)) {
            throw RuntimeError(DeviceFault);
        }
        const double factor = paperFactor(device);
        painter.scale(factor, factor);
        PainterSurface surface(painter);
        drawPlot(surface, data, view, Medium::Paper);
        if (!painter.end()) {
            throw RuntimeError(DeviceFault);
        }
    };
}

} // namespace korvane
