#include "shell/study_table.h"

#include "runtime/number_text.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr Qt::ItemFlags ReadOnly = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
constexpr Qt::ItemFlags Typed = ReadOnly | Qt::ItemIsEditable;
constexpr Qt::ItemFlags Tick = ReadOnly | Qt::ItemIsUserCheckable;

QString numberText(double value) {
    constexpr int digits = 6;
    std::string text;
    appendShortest(text, roundedTo(value, digits));
    return QString::fromStdString(text);
}

/// Why a number is outside its limits: "must be above 0 and at most 45".
QString limitsText(const Limits& limits) {
    QStringList parts;
    if (std::isfinite(limits.low)) {
        parts.append((limits.lowOpen ? "above " : "at least ") + numberText(limits.low));
    }
    if (std::isfinite(limits.high)) {
        parts.append((limits.highOpen ? "below " : "at most ") + numberText(limits.high));
    }
    return "must be " + parts.join(" and ");
}

} // namespace

void frameTicks(QAbstractItemView& view) {
    constexpr int HalfLight = 128;
    QPalette palette = view.palette();
    if (palette.color(QPalette::Base).lightness() < HalfLight) {
        palette.setColor(QPalette::Window, palette.color(QPalette::Text));
        view.setPalette(palette);
        for (QWidget* bar : {view.verticalScrollBar(), view.horizontalScrollBar()}) {
            bar->setPalette(QApplication::palette());
        }
    }
}

StudyTable::StudyTable(const Problem& problem, UnitSystem units, QWidget* parent)
    : QTableWidget(0, ColumnCount, parent), problem_(problem), units_(units) {
    setObjectName("tblNumbers");
    setAccessibleName("Numbers of the wall that may vary");
    setHorizontalHeaderLabels({"Number", "Both sides", "Present", "Unit", "Low", "High", "Values"});
    frameTicks(*this);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + pixels(120));
    setTabKeyNavigation(false);
    setWordWrap(false);
    setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked |
                    QAbstractItemView::EditKeyPressed);
    const QSignalBlocker silent(this);
    std::string section;
    for (const study::Varying& varying : study::varyingIn(problem, units)) {
        if (varying.section != section) {
            section = varying.section;
            addHeading(QString::fromStdString(section));
        }
        addLine(varying);
    }
    resizeColumnsToContents();
    setMinimumWidth(horizontalHeader()->length() + verticalScrollBar()->sizeHint().width() +
                    2 * frameWidth());
    horizontalHeader()->setSectionResizeMode(Number, QHeaderView::Stretch);
    setCurrentCell(1, Number);
    connect(this, &QTableWidget::cellChanged, this, &StudyTable::take);
}

void StudyTable::addHeading(const QString& title) {
    const int row = rowCount();
    setRowCount(row + 1);
    QTableWidgetItem* item = put(row, Number, title, Qt::ItemIsEnabled);
    QFont font = item->font();
    font.setBold(true);
    item->setFont(font);
    item->setBackground(palette().alternateBase());
    setSpan(row, Number, 1, ColumnCount);
}

QTableWidgetItem* StudyTable::put(int row, Column column, const QString& text,
                                  Qt::ItemFlags flags) {
    auto* made = new QTableWidgetItem(text);
    made->setFlags(flags);
    const bool left = column == Number || column == UnitName;
    made->setTextAlignment(Qt::AlignVCenter | (left ? Qt::AlignLeft : Qt::AlignRight));
    setItem(row, column, made);
    return made;
}

void StudyTable::addLine(const study::Varying& varying) {
    const int row = rowCount();
    setRowCount(row + 1);
    const QString name = QString::fromStdString(addressName(varying.address));
    const QString unit = unitOf(quantityOf(varying.address), units_).name;
    put(row, Number, name, Tick)->setCheckState(Qt::Unchecked);
    QTableWidgetItem* both = put(row, Both, {}, varying.hasTwin ? Tick : Qt::NoItemFlags);
    if (varying.hasTwin) {
        both->setCheckState(Qt::Unchecked);
        both->setData(Qt::AccessibleTextRole, name + ", both sides");
    }
    put(row, Present, numberText(varying.present), ReadOnly);
    put(row, UnitName, unit, ReadOnly);
    for (const auto& [column, words] :
         {std::pair{Low, "low"}, std::pair{High, "high"}, std::pair{Steps, "values"}}) {
        const QString behind = unit.isEmpty() || column == Steps ? QString() : ", " + unit;
        put(row, column, {}, Typed)
            ->setData(Qt::AccessibleDescriptionRole, name + ", " + words + behind);
    }
    lines_.emplace_back(row, Line{.varying = varying, .low = varying.low, .high = varying.high});
    writeNumbers(row, lines_.back().second);
}

void StudyTable::writeNumbers(int row, const Line& line) {
    item(row, Low)->setText(numberText(line.low));
    item(row, High)->setText(numberText(line.high));
    item(row, Steps)->setText(QString::number(line.steps));
}

StudyTable::Line* StudyTable::lineAt(int row) {
    const auto found = std::find_if(lines_.begin(), lines_.end(),
                                    [row](const auto& entry) { return entry.first == row; });
    return found == lines_.end() ? nullptr : &found->second;
}

int StudyTable::rowOf(const FieldAddress& address) const {
    const auto found = std::find_if(lines_.begin(), lines_.end(), [&](const auto& entry) {
        return entry.second.varying.address == address;
    });
    return found == lines_.end() ? -1 : found->first;
}

bool StudyTable::isTicked(int row, Column column) const {
    return item(row, column)->checkState() == Qt::Checked;
}

std::vector<study::AskedVariable> StudyTable::asked() const {
    std::vector<study::AskedVariable> variables;
    for (const auto& [row, line] : lines_) {
        if (isTicked(row, Number)) {
            variables.push_back({.address = line.varying.address,
                                 .bothSides = isTicked(row, Both),
                                 .low = line.low,
                                 .high = line.high,
                                 .steps = line.steps});
        }
    }
    return variables;
}

QString StudyTable::takeNumber(Line& line, int column, const QString& text) {
    const std::string typed = bytesOf(text);
    const double value = isNumeric(typed) ? numericValue(typed) : std::nan("");
    if (column == Steps) {
        const int steps = text.trimmed().toInt();
        if (steps < study::LeastSteps || steps > study::MostSteps) {
            return QString("The values of a grid are a number from %1 to %2.")
                .arg(study::LeastSteps)
                .arg(study::MostSteps);
        }
        line.steps = steps;
        return {};
    }
    const QString name = QString::fromStdString(addressName(line.varying.address));
    if (std::isnan(value)) {
        return "\"" + text + "\" is no number.";
    }
    const Limits limits = study::limitsOf(problem_, line.varying.address, units_);
    if (!limits.hold(value)) {
        const QString unit = unitOf(quantityOf(line.varying.address), units_).name;
        return name + " " + limitsText(limits) + (unit.isEmpty() ? "." : " " + unit + ".");
    }
    (column == Low ? line.low : line.high) = value;
    return {};
}

void StudyTable::mirrorTwin(int row, const Line& line) {
    if (!line.varying.hasTwin) {
        return;
    }
    const int twin = rowOf(study::twinOf(line.varying.address));
    const bool moves = isTicked(row, Both) && isTicked(row, Number);
    QTableWidgetItem* left = item(twin, Number);
    left->setFlags(moves ? Qt::ItemIsSelectable : Tick);
    if (moves) {
        left->setCheckState(Qt::Unchecked);
    }
    for (const Column column : {Low, High, Steps}) {
        item(twin, column)->setFlags(moves ? Qt::ItemIsSelectable : Typed);
    }
}

void StudyTable::take(int row, int column) {
    Line* line = lineAt(row);
    if (line == nullptr || writing_) {
        return;
    }
    writing_ = true;
    QString why;
    if (column >= Low) {
        why = takeNumber(*line, column, item(row, column)->text());
        writeNumbers(row, *line);
        if (const int missing = sizeHintForColumn(column) - columnWidth(column); missing > 0) {
            setMinimumWidth(minimumWidth() + missing);
            setColumnWidth(column, columnWidth(column) + missing);
        }
        if (why.isEmpty()) {
            item(row, Number)->setCheckState(Qt::Checked); // whoever sets it means it
        }
    } else if (column == Both) {
        if (isTicked(row, Both)) {
            item(row, Number)->setCheckState(Qt::Checked);
        }
    }
    mirrorTwin(row, *line);
    writing_ = false;
    emit changed();
    if (!why.isEmpty()) {
        emit refused(why);
    }
}

} // namespace korvane
