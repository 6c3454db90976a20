// The page that the help shows, with its figures and formulas.
#pragma once

#include <QTextBrowser>

namespace korvane {

/// Figures and formulas are drawn in the colours of the palette, as wide as there is room.
class HelpBrowser : public QTextBrowser {
    Q_OBJECT

  public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override;

    /// Pixels for pictures.
    qreal pictureWidth() const;
};

} // namespace korvane
