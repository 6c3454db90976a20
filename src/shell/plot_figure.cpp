// Diagrams on paper and in files.
#include "commands/files.h"
#include "plots/svg_surface.h"
#include "runtime/runtime_error.h"
#include "shell/painter_surface.h"
#include "shell/plot_window.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>

#include <algorithm>

namespace korvane {

namespace {

constexpr double PngPixelsPerInch = 200;

std::string bytes(const QByteArray& array) {
    return {array.constData(), static_cast<std::size_t>(array.size())};
}

/// A drawing of which all is shown: its place on the page and its size, twips.
struct Crop {
    Point corner;
    QSizeF size;
};

Crop cropOf(const PlotData& data, const PlotView& view) {
    QImage nothing(1, 1, QImage::Format_RGB32); // to measure texts on
    QPainter measure(&nothing);
    const Corners reach = plotBounds(PainterSurface(measure), data, view, Medium::Paper);
    return {reach.a, {reach.b.x - reach.a.x, reach.b.y - reach.a.y}};
}

/// The drawing with the crop's upper left corner at the painter's origin.
void drawCropped(QPainter& painter, const PlotData& data, const PlotView& view, const Crop& crop) {
    painter.setClipRect(QRectF(QPointF(), crop.size));
    painter.translate(-crop.corner.x, -crop.corner.y);
    PainterSurface surface(painter);
    drawPlot(surface, data, view, Medium::Paper);
}

std::string pngFile(const PlotData& data, const PlotView& view) {
    const Crop crop = cropOf(data, view);
    const double factor = PngPixelsPerInch / TwipsPerInch;
    QImage image((crop.size * factor).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(static_cast<int>(PngPixelsPerInch / 0.0254));
    image.setDotsPerMeterY(static_cast<int>(PngPixelsPerInch / 0.0254));
    image.setText("Title", shownText(plotReadings(data, view).title));
    image.setText("Description", shownText(plotDescription(data, view)));
    QPainter painter(&image);
    painter.scale(factor, factor);
    drawCropped(painter, data, view, crop);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        throw RuntimeError(DeviceFault);
    }
    return bytes(buffer.data());
}

/// What readers of a PDF document are told of it; the toolkit writes a title alone.
QByteArray pdfMetadata(const PlotData& data, const PlotView& view) {
    const auto entry = [](const QString& name, const std::string& text) {
        return QString(
                   "<dc:%1><rdf:Alt><rdf:li xml:lang=\"x-default\">%2</rdf:li></rdf:Alt></dc:%1>")
            .arg(name, shownText(text).toHtmlEscaped());
    };
    const QString description = entry("title", plotReadings(data, view).title) +
                                entry("description", plotDescription(data, view));
    return QString("<?xpacket begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
                   "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
                   "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description "
                   "rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\">%1"
                   "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"w\"?>")
        .arg(description)
        .toUtf8();
}

std::string pdfFile(const PlotData& data, const PlotView& view) {
    const Crop crop = cropOf(data, view);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(shownText(plotReadings(data, view).title));
    writer.setCreator("KORVANE");
    writer.setDocumentXmpMetadata(pdfMetadata(data, view));
    writer.setResolution(static_cast<int>(TwipsPerInch));
    writer.setPageSize(QPageSize(crop.size / TwipsPerInch, QPageSize::Inch));
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    if (!painter.begin(&writer)) {
        throw RuntimeError(DeviceFault);
    }
    drawCropped(painter, data, view, crop);
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
    const Corners reach = plotBounds(surface, data, view, Medium::Paper);
    drawPlot(surface, data, view, Medium::Paper);
    return surface.document(reach, plotReadings(data, view).title, plotDescription(data, view));
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
