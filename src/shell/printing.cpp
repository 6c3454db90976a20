#include "shell/printing.h"

#include "runtime/file_text.h"
#include "runtime/runtime_error.h"
#include "widgets/shown_text.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>

namespace korvane {

namespace {

constexpr int DeviceFault = 57;
constexpr double TextPoints = 10;
constexpr int PdfResolution = 1200;

QFont printFont() {
    QFont font("Courier New");
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(TextPoints);
    return font;
}

/// A line cut into pieces that fit the page; a piece at least, empty for an empty line.
QStringList wrapped(const QString& line, qsizetype columns) {
    QStringList pieces;
    for (qsizetype at = 0; at < line.size(); at += columns) {
        pieces.append(line.mid(at, columns));
    }
    return pieces.isEmpty() ? QStringList{QString()} : pieces;
}

void drawText(QPagedPaintDevice& device, const std::vector<std::string>& lines) {
    QPainter painter;
    if (!painter.begin(&device)) {
        throw RuntimeError(DeviceFault);
    }
    painter.setFont(printFont());
    const QFontMetricsF metrics(painter.font(), &device);
    const double lineHeight = metrics.lineSpacing();
    const double pageHeight = painter.viewport().height();
    const auto columns = std::max<qsizetype>(
        1, static_cast<qsizetype>(painter.viewport().width() / metrics.horizontalAdvance('0')));
    double y = 0;
    for (const std::string& line : lines) {
        for (const QString& piece : wrapped(shownText(line), columns)) {
            if (y + lineHeight > pageHeight) {
                if (!device.newPage()) {
                    throw RuntimeError(DeviceFault);
                }
                y = 0;
            }
            painter.drawText(QPointF(0, y + metrics.ascent()), piece);
            y += lineHeight;
        }
    }
    if (!painter.end()) {
        throw RuntimeError(DeviceFault);
    }
}

/// Three quarters of an inch all around until the user chooses otherwise.
void setMargins(QPagedPaintDevice& device) {
    device.setPageSize(QPageSize(QPageSize::Letter));
    device.setPageMargins(QMarginsF(0.75, 0.75, 0.75, 0.75), QPageLayout::Inch);
}

/// The whole PDF is made in memory first, so that a failure leaves an old file as it is.
void printToPdf(const QString& path, const QString& documentName, const PageDrawing& draw) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setTitle(documentName);
        writer.setCreator("KORVANE");
        writer.setResolution(PdfResolution);
        setMargins(writer);
        draw(writer);
    }
    const QByteArray& bytes = buffer.data();
    saveFile(bytesOf(path), std::string_view(bytes.data(), static_cast<std::size_t>(bytes.size())));
}

} // namespace

PrintServices systemPrintServices() {
    PrintServices services;
    services.hasPrinter = [] { return !QPrinterInfo::availablePrinterNames().isEmpty(); };
    services.chooseSetup = [](QPrinter& printer, QWidget* parent) {
        QPrintDialog dialog(&printer, parent);
        dialog.setObjectName("printDialog");
        return dialog.exec() == QDialog::Accepted;
    };
    return services;
}

bool printPages(QWidget* parent, const PrintServices& services, const QString& documentName,
                const PageDrawing& draw) {
    if (!services.hasPrinter()) {
        const QString path = services.choosePdf(parent);
        if (path.isEmpty()) {
            return false;
        }
        printToPdf(path, documentName, draw);
        return true;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(documentName);
    setMargins(printer);
    if (!services.chooseSetup(printer, parent)) {
        return false;
    }
    draw(printer);
    if (printer.printerState() == QPrinter::Error) {
        throw RuntimeError(DeviceFault, bytesOf(printer.printerName()));
    }
    return true;
}

PageDrawing textPages(const std::vector<std::string>& lines) {
    return [lines](QPagedPaintDevice& device) { drawText(device, lines); };
}

} // namespace korvane
