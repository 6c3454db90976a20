#include "shell/figure_file.h"

#include "commands/files.h"
#include "plots/svg_surface.h"
#include "runtime/runtime_error.h"
#include "shell/painter_surface.h"
#include "widgets/shown_text.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

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

Crop cropOf(const FileFigure& figure) {
    QImage nothing(1, 1, QImage::Format_RGB32); // to measure texts on
    QPainter measure(&nothing);
    const Corners reach = figure.reach(PainterSurface(measure));
    return {reach.a, {reach.b.x - reach.a.x, reach.b.y - reach.a.y}};
}

/// The drawing with the crop's upper left corner at the painter's origin.
void drawCropped(QPainter& painter, const FileFigure& figure, const Crop& crop) {
    painter.setClipRect(QRectF(QPointF(), crop.size));
    painter.translate(-crop.corner.x, -crop.corner.y);
    PainterSurface surface(painter);
    figure.draw(surface);
}

std::string pngFile(const FileFigure& figure) {
    const Crop crop = cropOf(figure);
    const double factor = PngPixelsPerInch / TwipsPerInch;
    QImage image((crop.size * factor).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(static_cast<int>(PngPixelsPerInch / 0.0254));
    image.setDotsPerMeterY(static_cast<int>(PngPixelsPerInch / 0.0254));
    image.setText("Title", shownText(figure.title));
    image.setText("Description", shownText(figure.description));
    QPainter painter(&image);
    painter.scale(factor, factor);
    drawCropped(painter, figure, crop);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        throw RuntimeError(DeviceFault);
    }
    return bytes(buffer.data());
}

/// What readers of a PDF document are told of it; the toolkit writes a title alone.
QByteArray pdfMetadata(const FileFigure& figure) {
    const auto entry = [](const QString& name, const std::string& text) {
        return QString(
                   "<dc:%1><rdf:Alt><rdf:li xml:lang=\"x-default\">%2</rdf:li></rdf:Alt></dc:%1>")
            .arg(name, shownText(text).toHtmlEscaped());
    };
    const QString description =
        entry("title", figure.title) + entry("description", figure.description);
    return QString("<?xpacket begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
                   "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
                   "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description "
                   "rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\">%1"
                   "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"w\"?>")
        .arg(description)
        .toUtf8();
}

std::string pdfFile(const FileFigure& figure) {
    const Crop crop = cropOf(figure);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(shownText(figure.title));
    writer.setCreator("KORVANE");
    writer.setDocumentXmpMetadata(pdfMetadata(figure));
    writer.setResolution(static_cast<int>(TwipsPerInch));
    writer.setPageSize(QPageSize(crop.size / TwipsPerInch, QPageSize::Inch));
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    if (!painter.begin(&writer)) {
        throw RuntimeError(DeviceFault);
    }
    drawCropped(painter, figure, crop);
    if (!painter.end()) {
        throw RuntimeError(DeviceFault);
    }
    return bytes(buffer.data());
}

std::string svgFile(const FileFigure& figure) {
    SvgSurface surface;
    const Corners reach = figure.reach(surface);
    figure.draw(surface);
    return surface.document(reach, figure.title, figure.description);
}

} // namespace

std::string figureFile(const FileFigure& figure, const std::string& name) {
    if (endsIn(name, ".PNG")) {
        return pngFile(figure);
    }
    if (endsIn(name, ".SVG")) {
        return svgFile(figure);
    }
    if (endsIn(name, ".PDF")) {
        return pdfFile(figure);
    }
    throw RuntimeError(5);
}

} // namespace korvane
