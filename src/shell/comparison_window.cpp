#include "shell/comparison_window.h"

#include "shell/result_table.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace korvane {

namespace {

/// Title and method stand left, numbers right.
constexpr int LeftColumns = 2;

QString headingOf(const ComparisonColumn& column) {
    const QString heading = QString::fromStdString(column.heading);
    const QString unit = QString::fromStdString(column.unit);
    return heading.isEmpty() ? unit : unit.isEmpty() ? heading : heading + "\n" + unit;
}

} // namespace

ComparisonWindow::ComparisonWindow(ScreenContext& context)
    : ScreenWindow(context, "COMPARE", "Comparison") {
    createMenus();
    createContent();
}

void ComparisonWindow::createMenus() {
    QAction* finished = menuBar()->addAction("&Finished");
    finished->setObjectName("mnuFinished");
    connect(finished, &QAction::triggered, this, [this] { frameClose(); });
    QAction* copies = menuBar()->addAction("&Copy");
    copies->setObjectName("mnuCopy");
    connect(copies, &QAction::triggered, this, [this] { run([this] { copy(); }); });
    addHelpMenu();
}

void ComparisonWindow::createContent() {
    state_ = new QLabel;
    state_->setObjectName("lblState");
    state_->setTextFormat(Qt::PlainText);
    state_->setWordWrap(true);
    bar_ = new QProgressBar;
    bar_->setObjectName("barRows");
    bar_->setAccessibleName("Rows worked out");
    cmdCancel_ = new QPushButton("C&ancel");
    cmdCancel_->setObjectName("cmdCancel");
    cmdCancel_->setAutoDefault(true);
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { cancel(); });
    table_ = createResultTable(
        "tblRows", "Comparison of the wall, differences in percent to the wall as given");
    auto* progress = new QHBoxLayout;
    progress->addWidget(bar_, 1);
    progress->addWidget(cmdCancel_);
    auto* layout = new QVBoxLayout(canvas());
    layout->addWidget(state_);
    layout->addLayout(progress);
    layout->addWidget(table_, 1);
    cmdCancel_->setFocus();
}

void ComparisonWindow::showEvent(QShowEvent* event) {
    ScreenWindow::showEvent(event);
    if (!started_) {
        started_ = true;
        QTimer::singleShot(0, this, [this] { run([this] { work(); }); });
    }
}

void ComparisonWindow::work() {
    Options options;
    options.wedge = wedge_ = session().wedge.value_or(WedgeMethod::Sweep);
    options.factorLimit.largest = session().notes.options.factorLimit.largest; // as accepted
    working_ = true;
    const ComparisonProgress progress = [this](int done, int total) {
        bar_->setMaximum(total);
        bar_->setValue(done);
        // The bar moves, Cancel is heard; the window cannot go before the work has ended.
        QApplication::processEvents();
        return !cancelled_;
    };
    // A copy: what is typed elsewhere meanwhile is none of it.
    const Problem compared = problem();
    mode_ = compared.ProgramMode;
    comparison_ = compareWall({.problem = compared, .options = options}, workspace_, progress);
    working_ = false;
    if (closing_) {
        accept();
        return;
    }
    finish();
}

void ComparisonWindow::finish() {
    cells_ = comparisonTable(comparison_, mode_, session().units);
    fillTable();
    QString text = comparison_.cancelled
                       ? QString("Cancelled after %1 rows. ").arg(comparison_.rows.size())
                       : QString();
    text += "Percentages are differences to the wall as given";
    text += wedge_ == WedgeMethod::Sweep ? "; wedges by the sweep search."
                                         : "; wedges by the fixed surface.";
    state_->setText(text);
    bar_->hide();
    cmdCancel_->hide();
    table_->setFocus();
}

void ComparisonWindow::fillTable() {
    const int columns = static_cast<int>(cells_.columns.size());
    table_->setColumnCount(columns);
    table_->setRowCount(static_cast<int>(cells_.lines.size()));
    for (int column = 0; column < columns; ++column) {
        const ComparisonColumn& heading = cells_.columns[static_cast<std::size_t>(column)];
        table_->setHorizontalHeaderItem(column, new QTableWidgetItem(headingOf(heading)));
    }
    for (int row = 0; row < table_->rowCount(); ++row) {
        const ComparisonLine& line = cells_.lines[static_cast<std::size_t>(row)];
        const bool fails = !line.reason.empty();
        const int cells = fails ? LeftColumns : columns;
        for (int column = 0; column < cells; ++column) {
            const bool isReason = fails && column == 1;
            const std::string& text =
                isReason ? line.reason : line.cells[static_cast<std::size_t>(column)];
            auto* item = new QTableWidgetItem(shownText(text));
            item->setTextAlignment(Qt::AlignVCenter |
                                   (column < LeftColumns ? Qt::AlignLeft : Qt::AlignRight));
            QFont font = item->font();
            font.setBold(line.row == 0);
            font.setItalic(isReason);
            item->setFont(font);
            table_->setItem(row, column, item);
        }
        if (fails) {
            table_->item(row, 1)->setToolTip(table_->item(row, 1)->text());
        }
    }
    // A reason reaches over all cells; the widths come from the numbers alone.
    table_->resizeColumnsToContents();
    for (int row = 0; row < table_->rowCount(); ++row) {
        if (!cells_.lines[static_cast<std::size_t>(row)].reason.empty() && columns > LeftColumns) {
            table_->setSpan(row, 1, 1, columns - 1);
        }
    }
    if (columns > LeftColumns) {
        table_->setColumnWidth(1, pixels(1300));
    }
    table_->setCurrentCell(0, 0);
}

void ComparisonWindow::cancel() {
    cancelled_ = true;
    state_->setText("Cancelling ...");
}

void ComparisonWindow::frameClose() {
    closing_ = true;
    if (working_) {
        cancel();
    } else {
        accept();
    }
}

/// Cells that are selected, or all where it is at most one.
void ComparisonWindow::copy() {
    const auto ranges = table_->selectedRanges();
    QString text;
    const bool part =
        ranges.size() == 1 && (ranges[0].rowCount() > 1 || ranges[0].columnCount() > 1);
    if (!part) {
        text = QString::fromStdString(comparisonCells(cells_));
    } else {
        for (int row = ranges[0].topRow(); row <= ranges[0].bottomRow(); ++row) {
            for (int column = ranges[0].leftColumn(); column <= ranges[0].rightColumn(); ++column) {
                const QTableWidgetItem* item = table_->item(row, column);
                text += column > ranges[0].leftColumn() ? "\t" : "";
                text += item != nullptr ? item->text() : QString();
            }
            text += "\n";
        }
    }
    QApplication::clipboard()->setText(text);
}

void ComparisonWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        run([this] { copy(); });
        return;
    }
    ScreenWindow::keyPressEvent(event);
}

} // namespace korvane
