// Formulas as pictures.
#pragma once

#include "widgets/formula.h"

#include <QColor>
#include <QFont>
#include <QImage>

namespace korvane {

/// How a formula is drawn.
struct FormulaLook {
    QFont font;
    QColor ink;
    qreal width = 0; ///< pixels; a longer formula goes on in further lines, broken at its signs
    qreal scale = 1; ///< device pixels for one pixel
};

/// The formula on a transparent ground, no wider than its lines.
QImage formulaPicture(const Formula& formula, const FormulaLook& look);

} // namespace korvane
