#include "widgets/formula_picture.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <functional>

namespace korvane {

namespace {

using Kind = Formula::Kind;

constexpr double ScriptSize = 0.72;  // of the font of the base
constexpr double StrokeWidth = 0.06; // of the font's height
constexpr double FractionGap = 0.12; // between stroke and parts, of the font's height
constexpr double margin = 3;         // pixels around the picture

/// A part with its room: pixels right of, above and below its origin on the line.
struct Box {
    qreal width = 0;
    qreal ascent = 0;
    qreal descent = 0;
    std::function<void(QPainter&, QPointF)> draw = [](QPainter&, QPointF) {};
};

Box layOut(const Formula& part, const QFont& font);

QFont smaller(QFont font, double factor) {
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

/// Where strokes of fractions and the middle of brackets lie, above the line.
qreal axisOf(const QFontMetricsF& metrics) {
    return metrics.xHeight() * 0.6;
}

QPen strokeOf(const QFont& font, const QPainter& painter) {
    return {painter.pen().color(), std::max(1.0, StrokeWidth * QFontMetricsF(font).height())};
}

Box textBox(const QString& text, const QFont& font) {
    const QFontMetricsF metrics(font);
    return {metrics.horizontalAdvance(text), metrics.capHeight() * 1.15, metrics.descent() * 0.9,
            [=](QPainter& painter, QPointF at) {
                painter.setFont(font);
                painter.drawText(at, text);
            }};
}

Box italicBox(const QString& text, QFont font) {
    font.setItalic(true);
    Box box = textBox(text, font);
    box.width += QFontMetricsF(font).height() * 0.04; // a slanted letter leans over
    return box;
}

/// Boxes one after the other.
Box inLine(const std::vector<Box>& boxes) {
    Box line;
    for (const Box& box : boxes) {
        line.width += box.width;
        line.ascent = std::max(line.ascent, box.ascent);
        line.descent = std::max(line.descent, box.descent);
    }
    line.draw = [boxes](QPainter& painter, QPointF at) {
        for (const Box& box : boxes) {
            box.draw(painter, at);
            at.rx() += box.width;
        }
    };
    return line;
}

Box signBox(const QString& text, const QFont& font) {
    const QString blank = text == QStringView(u"·") ? QStringLiteral(u"\u200A") : " ";
    return textBox(blank + text + blank, font);
}

Box fractionBox(const Formula& part, const QFont& font) {
    const Box upper = layOut(part.parts[0], font);
    const Box lower = layOut(part.parts[1], font);
    const QFontMetricsF metrics(font);
    const qreal axis = axisOf(metrics);
    const qreal gap = FractionGap * metrics.height();
    const qreal side = metrics.height() * 0.1;
    const qreal width = std::max(upper.width, lower.width) + 4 * side;
    return {
        width, axis + gap + upper.descent + upper.ascent, gap + lower.ascent + lower.descent - axis,
        [=](QPainter& painter, QPointF at) {
            const QPointF stroke = at - QPointF(0, axis);
            const QPen pen = painter.pen();
            painter.setPen(strokeOf(font, painter));
            painter.drawLine(stroke + QPointF(side, 0), stroke + QPointF(width - side, 0));
            painter.setPen(pen);
            upper.draw(painter, stroke + QPointF((width - upper.width) / 2, -gap - upper.descent));
            lower.draw(painter, stroke + QPointF((width - lower.width) / 2, gap + lower.ascent));
        }};
}

/// A box with a stroke above it; with `hook` pixels for the sign of a root before it.
Box strokedBox(const Box& inner, const QFont& font, qreal hook) {
    const qreal gap = QFontMetricsF(font).height() * 0.1;
    const qreal top = inner.ascent + gap;
    return {inner.width + hook, top + gap, inner.descent, [=](QPainter& painter, QPointF at) {
                QPainterPath path;
                path.moveTo(at + QPointF(inner.width + hook, -top));
                path.lineTo(at + QPointF(hook, -top));
                if (hook > 0) {
                    const qreal height = top + inner.descent;
                    path.lineTo(at + QPointF(hook * 0.55, inner.descent));
                    path.lineTo(at + QPointF(hook * 0.3, inner.descent - height * 0.45));
                    path.lineTo(at + QPointF(hook * 0.1, inner.descent - height * 0.38));
                }
                const QPen pen = painter.pen();
                painter.setPen(strokeOf(font, painter));
                painter.setBrush(Qt::NoBrush);
                painter.drawPath(path);
                painter.setPen(pen);
                inner.draw(painter, at + QPointF(hook, 0));
            }};
}

/// A bracket as high as what it encloses.
Box bracketBox(QChar sign, const Box& inner, const QFont& font) {
    const QFontMetricsF metrics(font);
    if (inner.ascent + inner.descent < metrics.height() * 1.3) {
        return textBox(QString(sign), font);
    }
    const qreal width = metrics.height() * 0.32;
    const bool opens = sign == '(' || sign == '[';
    const bool round = sign == '(' || sign == ')';
    return {width, inner.ascent, inner.descent, [=](QPainter& painter, QPointF at) {
                const qreal back = opens ? 0.25 * width : 0.75 * width;
                const qreal tip = opens ? 0.85 * width : 0.15 * width;
                const qreal bend = opens ? -0.05 * width : 1.05 * width;
                const QPointF top = at + QPointF(tip, -inner.ascent);
                const QPointF bottom = at + QPointF(tip, inner.descent);
                QPainterPath path(top);
                if (round) {
                    path.quadTo({at.x() + bend, (top.y() + bottom.y()) / 2}, bottom);
                } else {
                    path.lineTo(at.x() + back, top.y());
                    path.lineTo(at.x() + back, bottom.y());
                    path.lineTo(bottom);
                }
                const QPen pen = painter.pen();
                painter.setPen(strokeOf(font, painter));
                painter.setBrush(Qt::NoBrush);
                painter.drawPath(path);
                painter.setPen(pen);
            }};
}

Box scriptBox(const Formula& part, const QFont& font) {
    const Box base = layOut(part.parts[0], font);
    const QFont little = smaller(font, ScriptSize);
    const Box lower = layOut(part.parts[1], little);
    const Box upper = layOut(part.parts[2], little);
    const qreal height = QFontMetricsF(font).height();
    const qreal down = std::max(0.14 * height, base.descent - 0.1 * height);
    const qreal up = std::max(0.3 * height, base.ascent - 0.3 * height);
    return {base.width + std::max(lower.width, upper.width) + 0.04 * height,
            std::max(base.ascent, upper.width > 0 ? up + upper.ascent : 0),
            std::max(base.descent, lower.width > 0 ? down + lower.descent : 0),
            [=](QPainter& painter, QPointF at) {
                base.draw(painter, at);
                lower.draw(painter, at + QPointF(base.width, down));
                upper.draw(painter, at + QPointF(base.width, -up));
            }};
}

std::vector<Box> boxesOf(const std::vector<Formula>& parts, const QFont& font) {
    std::vector<Box> boxes;
    boxes.reserve(parts.size());
    for (const Formula& part : parts) {
        boxes.push_back(layOut(part, font));
    }
    return boxes;
}

Box layOut(const Formula& part, const QFont& font) {
    switch (part.kind) {
    case Kind::Row:
        return inLine(boxesOf(part.parts, font));
    case Kind::Letter:
        return italicBox(part.text, font);
    case Kind::Sign:
        return signBox(part.text, font);
    case Kind::Large:
        return inLine({textBox(part.text, smaller(font, 1.3)), textBox(" ", font)});
    case Kind::Fraction:
        return fractionBox(part, font);
    case Kind::Root:
        return strokedBox(layOut(part.parts[0], font), font, QFontMetricsF(font).height() * 0.6);
    case Kind::Bar:
        return strokedBox(layOut(part.parts[0], font), font, 0);
    case Kind::Fence: {
        const Box inner = layOut(part.parts[0], font);
        return inLine(
            {bracketBox(part.text[0], inner, font), inner, bracketBox(part.text[1], inner, font)});
    }
    case Kind::Script:
        return scriptBox(part, font);
    default:
        return textBox(part.text, font);
    }
}

/// Where a line may end: each only where the pieces between those before it have no room in a line.
enum class Ends { OutsideBrackets, BetweenBrackets, BeforeSigns };

/// A bracket, also one with a power; empty for other parts.
QString bracketOf(const Formula& part) {
    if (part.kind == Kind::Script) {
        return bracketOf(part.parts[0]);
    }
    return part.text == QStringView(u"(") || part.text == QStringView(u")") ? part.text : QString();
}

/// Sets a formula in lines: ended before signs, between brackets and behind wide blanks, the
/// further lines set in.
class LineSetter {
  public:
    LineSetter(const std::vector<Formula>& parts, const FormulaLook& look)
        : parts_(parts), boxes_(boxesOf(parts, look.font)), room_(look.width - 2 * margin),
          indent_(QFontMetricsF(look.font).height() * 2) {
        int depth = 0;
        for (const Formula& part : parts) {
            depth -= bracketOf(part) == QStringView(u")") ? 1 : 0;
            depths_.push_back(depth);
            depth += bracketOf(part) == QStringView(u"(") ? 1 : 0;
        }
        place(0, parts.size(), Ends::OutsideBrackets);
    }

    std::vector<Box> lines() const {
        std::vector<Box> boxes;
        for (const auto& line : lines_) {
            boxes.push_back(inLine(line));
        }
        return boxes;
    }

  private:
    bool mayEndBefore(std::size_t n, Ends ends) const {
        const Formula& before = parts_[n - 1];
        if (before.kind == Kind::Space && before.text.size() > 1) {
            return true;
        }
        if (ends == Ends::BetweenBrackets) {
            return depths_[n] == 0 && bracketOf(parts_[n]) == QStringView(u"(") &&
                   bracketOf(before) == QStringView(u")");
        }
        return parts_[n].kind == Kind::Sign && parts_[n].text != QStringView(u"·") &&
               (depths_[n] == 0 || ends == Ends::BeforeSigns);
    }

    bool isFurther() const { return lines_.size() > 1; }
    bool isEmpty() const { return used_ <= (isFurther() ? indent_ : 0); }

    void place(std::size_t from, std::size_t to, Ends ends) {
        for (std::size_t start = from, end = from; start < to; start = end) {
            do {
                ++end;
            } while (end < to && !mayEndBefore(end, ends));
            const auto box = [this](std::size_t n) {
                return boxes_.begin() + static_cast<std::ptrdiff_t>(n);
            };
            const Box piece = inLine({box(start), box(end)});
            if (used_ + piece.width > room_) {
                const bool needsMore = indent_ + piece.width > room_ && ends != Ends::BeforeSigns;
                // Behind "y =" the rest begins at once, also where it needs several lines.
                if (!isEmpty() && (!needsMore || (ends == Ends::OutsideBrackets && isFurther()))) {
                    lines_.push_back({Box{indent_, 0, 0}});
                    used_ = indent_;
                }
                if (needsMore) {
                    place(start, end, static_cast<Ends>(static_cast<int>(ends) + 1));
                    continue;
                }
            }
            used_ += piece.width;
            lines_.back().push_back(piece);
        }
    }

    const std::vector<Formula>& parts_;
    std::vector<Box> boxes_;
    std::vector<int> depths_; ///< brackets that are open around a part
    qreal room_;
    qreal indent_;
    qreal used_ = 0;
    std::vector<std::vector<Box>> lines_{1};
};

} // namespace

QImage formulaPicture(const Formula& formula, const FormulaLook& look) {
    const std::vector<Box> lines = LineSetter(formula.parts, look).lines();
    const qreal between = QFontMetricsF(look.font).height() * 0.4;
    qreal width = 0;
    qreal height = -between;
    for (const Box& line : lines) {
        width = std::max(width, line.width);
        height += line.ascent + line.descent + between;
    }
    const QSizeF size(std::ceil(width + 2 * margin), std::ceil(height + 2 * margin));
    QImage picture((size * look.scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(look.scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(look.ink);
    QPointF at(margin, margin);
    for (const Box& line : lines) {
        line.draw(painter, at + QPointF(0, line.ascent));
        at.ry() += line.ascent + line.descent + between;
    }
    return picture;
}

} // namespace korvane
