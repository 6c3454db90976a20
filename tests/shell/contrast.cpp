#include "contrast.h"

#include <QAbstractButton>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyleOption>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace korvane::test {

namespace {

constexpr double LeastContrast = 4.5; // WCAG 2.1, 1.4.3: text of ordinary size

double linear(int channel) {
    static const auto all = [] { // pictures have many pixels
        std::array<double, 256> values{};
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double share = static_cast<double>(i) / 255;
            values[i] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        }
        return values;
    }();
    return all[static_cast<std::size_t>(channel)];
}

/// Relative luminance by WCAG 2.1, 0 black to 1 white.
double luminance(QRgb colour) {
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
           0.0722 * linear(qBlue(colour));
}

/// Between the lightest and the darkest pixel: strokes and ground, where nothing else is there.
double contrastIn(const QImage& picture) {
    double least = 1;
    double most = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const double light = luminance(picture.pixel(x, y));
            least = std::min(least, light);
            most = std::max(most, light);
        }
    }
    return (most + 0.05) / (least + 0.05);
}

/// The text of a control and the part of the control that it stands in, without frame and mark.
struct ShownText {
    QString text;
    QRect place;
};

ShownText textOf(const QWidget& control) {
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        return {label->text(), label->contentsRect()};
    }
    if (const auto* line = qobject_cast<const QLineEdit*>(&control)) {
        // A selection has the colours of the toolkit, or of the user's theme.
        return {line->hasSelectedText() ? QString() : line->text(),
                line->rect().adjusted(4, 4, -4, -4)};
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
        QRect place = button->rect().adjusted(4, 4, -4, -4);
        if (const auto* option = qobject_cast<const QRadioButton*>(button)) {
            QStyleOptionButton style;
            style.initFrom(option);
            place = option->style()->subElementRect(QStyle::SE_RadioButtonContents, &style, option);
        }
        return {button->text(), place};
    }
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(&control)) {
        return {text->toPlainText(), text->viewport()->geometry()};
    }
    return {};
}

} // namespace

void expectReadable(QWidget& window) {
    const QImage picture = window.grab().toImage();
    const double scale = picture.devicePixelRatio();
    int texts = 0;
    for (const QWidget* control : window.findChildren<QWidget*>()) {
        const ShownText shown = textOf(*control);
        const QRect seen = control->visibleRegion().boundingRect() & shown.place;
        if (shown.text.trimmed().isEmpty() || !control->isEnabled() || seen != shown.place) {
            continue; // also what a scroll area cuts
        }
        const QRect place(control->mapTo(&window, seen.topLeft()), seen.size());
        const QRect pixels(QPointF(place.topLeft() * scale).toPoint(), place.size() * scale);
        EXPECT_GE(contrastIn(picture.copy(pixels)), LeastContrast)
            << window.objectName().toStdString() << " " << control->objectName().toStdString()
            << " \"" << shown.text.toStdString() << "\"";
        ++texts;
    }
    EXPECT_GT(texts, 0) << window.objectName().toStdString();
}

} // namespace korvane::test
