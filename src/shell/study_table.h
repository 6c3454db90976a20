// The table of the study window: every number of the wall with its low and its high one.
#pragma once

#include "survey/question.h"
#include "survey/varying.h"

#include <QTableWidget>

namespace korvane {

/// Boxes to tick that are seen on a dark ground too: the style frames them darker than a window.
void frameTicks(QAbstractItemView& view);

/// Ticked rows are the variables of a question. What is typed must be a number that the wall may
/// have, or it is told and the old one comes back.
class StudyTable : public QTableWidget {
    Q_OBJECT

  public:
    enum Column { Number, Both, Present, UnitName, Low, High, Steps, ColumnCount };

    StudyTable(const Problem& problem, UnitSystem units, QWidget* parent = nullptr);

    /// A column of values for a grid.
    void showSteps(bool shown) { setColumnHidden(Steps, !shown); }
    std::vector<study::AskedVariable> asked() const;

  signals:
    void changed();
    /// Why what was typed is not taken.
    void refused(const QString& why);

  private:
    /// A row of the table that is no heading.
    struct Line {
        study::Varying varying;
        double low;
        double high;
        int steps = 5;
    };

    void addHeading(const QString& title);
    void addLine(const study::Varying& varying);
    QTableWidgetItem* put(int row, Column column, const QString& text, Qt::ItemFlags flags);
    Line* lineAt(int row);
    int rowOf(const FieldAddress& address) const;
    bool isTicked(int row, Column column) const;
    void take(int row, int column);
    /// Takes a typed number; why not, where it cannot.
    QString takeNumber(Line& line, int column, const QString& text);
    void writeNumbers(int row, const Line& line);
    /// A left number that moves with the right one has no tick of its own.
    void mirrorTwin(int row, const Line& line);

    const Problem& problem_;
    UnitSystem units_;
    std::vector<std::pair<int, Line>> lines_; ///< with their rows
    bool writing_ = false;
};

} // namespace korvane
