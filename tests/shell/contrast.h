// Whether texts can be read on what they stand on, measured on the painted pixels.
#pragma once

#include <QWidget>

namespace korvane::test {

/// Expects of each text that can be seen in a window a contrast of at least 4.5 to its ground, as
/// WCAG 2.1 measures it. Controls that are disabled may be fainter.
void expectReadable(QWidget& window);

} // namespace korvane::test
