// Where the guide tells of a window.
#pragma once

#include <QString>

namespace korvane {

/// The heading of the guide for a window of that object name; the guide's beginning for others.
QString helpSection(const QString& window);

} // namespace korvane
