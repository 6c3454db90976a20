#include "shell/printing.h"

#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "runtime/runtime_error.h"
#include "widgets/busy_pointer.h"
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

/// A line cut into pieces that fit the width; a piece at least, empty for an empty line. Letters
/// that the fixed-width font lacks may be wider than its own: pieces are measured.
QStringList wrapped(const QString& line, const QFontMetricsF& metrics, double width) {
    const auto columns =
        std::max<qsizetype>(1, static_cast<qsizetype>(width / metrics.horizontalAdvance('0')));
    QStringList pieces;
    qsizetype at = 0;
    do {
        QString piece = line.mid(at, columns);
        while (piece.size() > 1 && metrics.horizontalAdvance(piece) > width + 0.5) {
            piece.chop(1);
        }
        at += piece.size();
        pieces.append(piece);
    } while (at < line.size());
    return pieces;
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
    const double pageWidth = painter.viewport().width();
    double y = 0;
    for (const std::string& line : lines) {
        for (const QString& piece : wrapped(shownText(line), metrics, pageWidth)) {
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
QPageLayout defaultLayout() {
    return {QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF(0.75, 0.75, 0.75, 0.75),
            QPageLayout::Inch};
}

/// The whole PDF is made in memory first, so that a failure leaves an old file as it is.
void printToPdf(const QString& path, const QString& documentName, const QPageLayout& layout,
                const PageDrawing& draw) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setTitle(documentName);
        writer.setCreator("KORVANE");
        writer.setResolution(PdfResolution);
        writer.setPageLayout(layout);
        draw(writer);
    }
    const QByteArray& bytes = buffer.data();
    saveFile(bytesOf(path), std::string_view(bytes.data(), static_cast<std::size_t>(bytes.size())));
}

/// The answer of a dialog, at which the pointer is not busy.
template <class Dialog>
auto askedFor(const Dialog& dialog) {
    const BusyPointerOff pointer;
    return dialog();
}

void printOnPaper(QPrinter& printer, const PageDrawing& draw) {
    const std::string name = bytesOf(printer.printerName());
    if (const auto fault = runGuarded([&] { draw(printer); })) {
        throw RuntimeError(fault->number(), name);
    }
    if (printer.printerState() == QPrinter::Error) {
        throw RuntimeError(DeviceFault, name);
    }
}

} // namespace

PrintServices systemPrintServices() {
    PrintServices services;
    services.hasPrinter = [] { return !QPrinterInfo::availablePrinterNames().isEmpty(); };
    services.chooseSetup = [](QPrinter& printer, QWidget* parent) {
        QPrintDialog dialog(&printer, parent);
        dialog.setObjectName("printDialog");
        dialog.setOption(QPrintDialog::PrintPageRange, false); // a report is printed whole
        return dialog.exec() == QDialog::Accepted;
    };
    return services;
}

bool printPages(QWidget* parent, const PrintServices& services, const QString& documentName,
                const PageDrawing& draw) {
    if (!services.hasPrinter()) {
        const QString path = askedFor([&] { return services.choosePdf(parent); });
        if (path.isEmpty()) {
            return false;
        }
        printToPdf(path, documentName, defaultLayout(), draw);
        return true;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(documentName);
    printer.setPageLayout(defaultLayout());
    if (!askedFor([&] { return services.chooseSetup(printer, parent); })) {
        return false;
    }
    if (printer.outputFileName().isEmpty()) {
        printOnPaper(printer, draw);
    } else { // the dialog's "Print to File (PDF)"
        printToPdf(printer.outputFileName(), documentName, printer.pageLayout(), draw);
    }
    return true;
}

PageDrawing textPages(const std::vector<std::string>& lines) {
    return [lines](QPagedPaintDevice& device) { drawText(device, lines); };
}

} // namespace korvane
