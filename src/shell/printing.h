// Printing of texts and drawings, to a printer or a PDF file.
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
    /// Path of a PDF file to print to, for which a name is suggested; empty when cancelled.
    std::function<QString(QWidget*, const QString& suggestion)> choosePdf;
};

/// What a print is called.
struct PrintedDocument {
    QString title;
    QString stem; ///< of the name that is suggested for a PDF file
};

/// The print dialog of the toolkit, over which F1 calls `help`. The choice of a PDF file is the
/// desktop's, which fills it in.
PrintServices systemPrintServices(const std::function<void(QWidget*)>& help);

/// Draws on a paged device, which is open; RuntimeError 57 where a page cannot be had.
using PageDrawing = std::function<void(QPagedPaintDevice&)>;

/// Prints: to the printer that the user sets up, or to a PDF file where there is none. False when
/// the user cancelled. RuntimeErrors where printing or writing fails; an old PDF file then stays.
bool printPages(QWidget* parent, const PrintServices& services, const PrintedDocument& document,
                const PageDrawing& draw);

/// The lines in "Courier New" at 10 points: pages break by line height, wide lines wrap. The page's
/// number stands in the lower margin, where there is one.
PageDrawing textPages(const std::vector<std::string>& lines);

} // namespace korvane
