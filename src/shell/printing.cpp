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
#include <QShortcut>

#include <algorithm>

namespace korvane {

namespace {

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

/// In the middle of the lower margin, unless that is too low for a line.
void drawPageNumber(QPainter& painter, const QPagedPaintDevice& device, qsizetype page,
                    qsizetype pages) {
    const double margin = device.pageLayout().marginsPixels(device.logicalDpiY()).bottom();
    const QFontMetricsF metrics = painter.fontMetrics();
    if (margin >= metrics.height()) {
        const QRectF foot(0, painter.viewport().height(), painter.viewport().width(), margin);
        painter.drawText(foot, Qt::AlignCenter, QString("Page %1 of %2").arg(page).arg(pages));
    }
}

void drawText(QPagedPaintDevice& device, const std::vector<std::string>& lines) {
    QPainter painter;
    if (!painter.begin(&device)) {
        throw RuntimeError(DeviceFault);
    }
    painter.setFont(printFont());
    const QFontMetricsF metrics(painter.font(), &device);
    const double pageWidth = painter.viewport().width();
    QStringList pieces;
    for (const std::string& line : lines) {
        pieces += wrapped(shownText(line), metrics, pageWidth);
    }
    const auto perPage = std::max<qsizetype>(
        1, static_cast<qsizetype>(painter.viewport().height() / metrics.lineSpacing()));
    const qsizetype pages = std::max<qsizetype>(1, (pieces.size() + perPage - 1) / perPage);
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        const qsizetype row = i % perPage;
        if (row == 0) {
            if (i > 0 && !device.newPage()) {
                throw RuntimeError(DeviceFault);
            }
            drawPageNumber(painter, device, i / perPage + 1, pages);
        }
        painter.drawText(
            QPointF(0, static_cast<double>(row) * metrics.lineSpacing() + metrics.ascent()),
            pieces[i]);
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

PrintServices systemPrintServices(const std::function<void(QWidget*)>& help) {
    PrintServices services;
    services.hasPrinter = [] { return !QPrinterInfo::availablePrinterNames().isEmpty(); };
    services.chooseSetup = [help](QPrinter& printer, QWidget* parent) {
        QPrintDialog dialog(&printer, parent);
        dialog.setObjectName("printDialog");
        QObject::connect(new QShortcut(Qt::Key_F1, &dialog), &QShortcut::activated,
                         [&] { help(&dialog); });
        dialog.setOption(QPrintDialog::PrintPageRange, false); // a report is printed whole
        return dialog.exec() == QDialog::Accepted;
    };
    return services;
}

bool printPages(QWidget* parent, const PrintServices& services, const PrintedDocument& document,
                const PageDrawing& draw) {
    if (!services.hasPrinter()) {
        const QString path =
            askedFor([&] { return services.choosePdf(parent, document.stem + ".pdf"); });
        if (path.isEmpty()) {
            return false;
        }
        printToPdf(path, document.title, defaultLayout(), draw);
        return true;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(document.title);
    printer.setPageLayout(defaultLayout());
    if (!askedFor([&] { return services.chooseSetup(printer, parent); })) {
        return false;
    }
    if (printer.outputFileName().isEmpty()) {
        printOnPaper(printer, draw);
    } else { // the dialog's "Print to File (PDF)"
        printToPdf(printer.outputFileName(), document.title, printer.pageLayout(), draw);
    }
    return true;
}

PageDrawing textPages(const std::vector<std::string>& lines) {
    return [lines](QPagedPaintDevice& device) { drawText(device, lines); };
}

} // namespace korvane
