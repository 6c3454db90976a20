#include "widgets/help_markup.h"

#include "widgets/formula.h"

#include <QBuffer>
#include <QImageReader>
#include <QRegularExpression>

#include <algorithm>
#include <functional>

namespace korvane {

namespace {

const QString formulaScheme = "formula:";
constexpr qreal leastShareOfLetters =
    1 / 1.3; // down to here letters do not shrink with their drawing

/// Each match replaced by what `make` makes of its first group.
QString replaced(const QString& text, const QRegularExpression& wanted,
                 const std::function<QString(const QString&)>& make) {
    QString result;
    qsizetype done = 0;
    for (auto matches = wanted.globalMatch(text); matches.hasNext();) {
        const auto match = matches.next();
        result += text.mid(done, match.capturedStart() - done) + make(match.captured(1));
        done = match.capturedEnd();
    }
    return result + text.mid(done);
}

QString pictureOf(const QString& tex) {
    static const QRegularExpression tags("<[^>]*>");
    static const QRegularExpression brackets("[\\[\\]]");
    const QString letters =
        formulaHtml(readFormula(tex)).remove(tags).replace(brackets, " ").simplified();
    const QByteArray code = tex.simplified().toUtf8().toBase64(QByteArray::Base64UrlEncoding |
                                                               QByteArray::OmitTrailingEquals);
    return "\n\n![" + letters + "](" + formulaScheme + QString::fromLatin1(code) + ")\n\n";
}

/// A drawing of ours for a ground, and with letters that can be read where it is drawn smaller. The
/// toolkit reads no media queries: the colours for a dark ground, which stand last in the style,
/// are taken in or left out here.
QByteArray prepared(const QByteArray& drawing, bool dark, qreal share) {
    static const QRegularExpression forDark(
        "@media \\(prefers-color-scheme:dark\\)\\{(.*?\\})\\}\\s*</style>",
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression letters("font-size=\"(\\d+)\"");
    const QString inColours =
        replaced(QString::fromUtf8(drawing), forDark,
                 [dark](const QString& rules) { return (dark ? rules : QString()) + "</style>"; });
    const qreal growth = 1 / std::max(share, leastShareOfLetters);
    return replaced(inColours, letters,
                    [growth](const QString& size) {
                        return QString("font-size=\"%1\"").arg(size.toDouble() * growth);
                    })
        .toUtf8();
}

QSizeF naturalSize(QByteArray bytes) {
    QBuffer buffer(&bytes);
    return QImageReader(&buffer).size();
}

} // namespace

QString helpMarkup(const QString& markdown, const QString& folder, bool formulas) {
    static const QRegularExpression comments("<!--.*?-->\n?",
                                             QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression displayed("\\$\\$(.*?)\\$\\$",
                                              QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression inText("\\$([^$]+)\\$");
    // The toolkit gives the room of an empty cell to the one before it.
    static const QRegularExpression emptyCells("(?<=\\|) +(?=\\|)");
    QString text = markdown;
    text.remove(comments);
    text.replace(emptyCells, QStringLiteral(u" \u00A0 "));
    text.replace("](figures/", "](qrc:/" + folder + "/figures/");
    if (formulas) {
        text = replaced(text, displayed, pictureOf);
        text = replaced(text, inText,
                        [](const QString& tex) { return formulaHtml(readFormula(tex)); });
    }
    return text;
}

QString formulaOfPicture(const QString& name) {
    if (!name.startsWith(formulaScheme)) {
        return {};
    }
    return QString::fromUtf8(QByteArray::fromBase64(name.mid(formulaScheme.size()).toLatin1(),
                                                    QByteArray::Base64UrlEncoding));
}

QImage helpFigure(const QByteArray& figure, bool dark, qreal width, qreal scale) {
    const QSizeF natural = naturalSize(figure);
    if (!natural.isValid()) {
        return {};
    }
    const qreal share = std::min(1.0, width / natural.width());
    QByteArray bytes = figure.startsWith("<svg") ? prepared(figure, dark, share) : figure;
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setScaledSize((natural * share * scale).toSize());
    QImage image = reader.read();
    image.setDevicePixelRatio(scale);
    return image;
}

} // namespace korvane
