// Pages of the documents as the help shows them.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace korvane {

/// A page's Markdown for the help: without comments; pictures by their place in the program's
/// resources, below `folder` ("guide"); with `formulas` those between $ as rich text, those between
/// $$ as pictures named `formula:CODE`, with the rich text's letters for who cannot see them.
QString helpMarkup(const QString& markdown, const QString& folder, bool formulas);

/// TeX of the picture of a formula by its name; empty for other names.
QString formulaOfPicture(const QString& name);

/// A figure of the documents, in the colours for a light or a dark ground, no wider than `width`
/// pixels; a null image where it cannot be read.
QImage helpFigure(const QByteArray& figure, bool dark, qreal width, qreal scale);

} // namespace korvane
