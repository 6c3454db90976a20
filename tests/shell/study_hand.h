// The window of studies under a person's hands.
#pragma once

#include "person.h"

#include <QString>
#include <QTableWidget>

#include <functional>
#include <set>

namespace korvane::test {

/// The entry of the Tools menu.
inline constexpr const char* StudyEntryName = "mnuToolsItem_4";

/// Columns of the table of the question.
enum Column { Number, Both, Present, UnitName, Low, High, Steps };

QTableWidget& numbersOf(QDialog& window);
QTableWidget& answerOf(QDialog& window);
QString stateOf(QDialog& window);

/// The row of a number in the table of the question.
int rowOf(QDialog& window, const QString& name);

void tick(QDialog& window, const QString& name, Column column = Number);
bool isTicked(QDialog& window, const QString& name, Column column = Number);
QString cell(QDialog& window, const QString& name, Column column);
/// Types over a cell as a person does.
void type(QDialog& window, const QString& name, Column column, const QString& text);

/// Expects every cell and heading of a table to be as wide as its text, but in columns whose cells
/// may be cut.
void expectFits(const QTableWidget& table, const std::set<int>& cut = {});
/// Expects to come to all of the figure, by scroll bars where there is no room for it.
void expectFigureInReach(QDialog& window);

/// Opens the window, does something there and expects that it has been closed.
void askStudy(Person& person, const std::function<void(QDialog&)>& act);
/// Runs the study. Something is done once it is over: the answer has come, or the line below the
/// question begins with a text.
void run(QDialog& window);
void atAnswer(Person& person, const std::function<void(QDialog&)>& act);
void atState(Person& person, const QString& start, const std::function<void(QDialog&)>& act);

} // namespace korvane::test
