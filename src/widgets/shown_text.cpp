#include "widgets/shown_text.h"

#include <QStringDecoder>

namespace korvane {

QString shownText(std::string_view bytes) {
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decode(view);
    return decode.hasError() ? QString::fromLatin1(view) : text;
}

std::string bytesOf(const QString& text) {
    return text.toStdString();
}

} // namespace korvane
