#include "widgets/help_browser.h"

#include "widgets/formula_picture.h"
#include "widgets/help_markup.h"

#include <QFile>
#include <QTextDocument>

#include <algorithm>

namespace korvane {

namespace {

constexpr qreal leastPictureWidth = 240; // pixels

} // namespace

qreal HelpBrowser::pictureWidth() const {
    return std::max(leastPictureWidth, viewport()->width() - 4 * document()->documentMargin());
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
    if (type != QTextDocument::ImageResource) {
        return QTextBrowser::loadResource(type, name);
    }
    const QString tex = formulaOfPicture(name.toString());
    if (!tex.isEmpty()) {
        return formulaPicture(readFormula(tex), {font(), palette().color(QPalette::Text),
                                                 pictureWidth(), devicePixelRatioF()});
    }
    QFile file(":" + name.path());
    if (name.scheme() != "qrc" || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const bool dark = palette().color(QPalette::Base).lightness() < 128;
    // Pictures of windows stand in lists of steps, which are set in.
    const qreal indent = name.path().endsWith(".png") ? document()->indentWidth() : 0;
    return helpFigure(file.readAll(), dark, pictureWidth() - indent, devicePixelRatioF());
}

} // namespace korvane
