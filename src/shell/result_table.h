// A table of results.
#pragma once

#include <QTableWidget>

namespace korvane {

/// A table to read: nothing in it is typed, Tab leaves it, its rows are told apart by their ground.
/// `described` is its name for screen readers.
QTableWidget* createResultTable(const char* name, const QString& described);

} // namespace korvane
