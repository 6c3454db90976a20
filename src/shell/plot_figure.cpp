// Diagrams on paper and in files.
#include "plots/figures.h"
#include "runtime/runtime_error.h"
#include "shell/figure_file.h"
#include "shell/painter_surface.h"
#include "shell/plot_window.h"

#include <algorithm>

namespace korvane {

namespace {

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

} // namespace

std::string figureFile(const PlotData& data, const PlotView& view, const std::string& name) {
    const PlotReadings readings = plotReadings(data, view);
    return figureFile(
        FileFigure{.title = readings.title,
                   .description = plotDescription(view, readings),
                   .draw = [&](Surface& surface) { drawPlot(surface, data, view, Medium::Paper); },
                   .reach =
                       [&](const Surface& metrics) {
                           return plotBounds(metrics, data, view, Medium::Paper);
                       }},
        name);
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
