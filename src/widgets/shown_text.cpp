#include "widgets/shown_text.h"

#include "runtime/utf8_text.h"

namespace korvane {

QString shownText(std::string_view bytes) {
    return QString::fromStdString(utf8Text(bytes));
}

std::string bytesOf(const QString& text) {
    return text.toStdString();
}

} // namespace korvane
