// Printing of text lines.
#pragma once

#include <QPagedPaintDevice>
#include <QString>

#include <functional>
#include <string>
#include <vector>

class QPrinter;
class QWidget;

namespace korvane {

/// How the program reaches paper. Tests put their own functions in place.
struct PrintServices {
    /// True where the system has a printer.
    std::function<bool()> hasPrinter;
    /// Lets the user set up the printer; false when cancelled.
    std::function<bool(QPrinter&, QWidget*)> chooseSetup;
    /// Path of a PDF file to print to; empty when cancelled.
    std::function<QString(QWidget*)> choosePdf;
};

/// The print dialog of the toolkit. The choice of a PDF file is the desktop's, which fills it in.
PrintServices systemPrintServices();

/// Draws on a paged device, which is open; RuntimeError 57 where a page cannot be had.
using PageDrawing = std::function<void(QPagedPaintDevice&)>;

/// Prints: to the printer that the user sets up, or to a PDF file where there is none. False when
/// the user cancelled. RuntimeErrors where printing or writing fails; an old PDF file then stays.
bool printPages(QWidget* parent, const PrintServices& services, const QString& documentName,
                const PageDrawing& draw);

/// The lines in "Courier New" at 10 points: pages break by line height, wide lines wrap.
PageDrawing textPages(const std::vector<std::string>& lines);

} // namespace korvane
