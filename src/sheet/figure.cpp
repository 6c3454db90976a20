#include "sheet/figure.h"

#include "problem/quantities.h"
#include "runtime/number_format.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace korvane::sheet {

namespace {

// Pixels
constexpr double LabelGap = 5; // between labels of a column, half above and half below
constexpr double Slant = 15;   // of a leader beside the drawing
constexpr double TextGap = 4;  // between leader and text
constexpr double Baseline = 10;
constexpr double Margin = 6;

} // namespace

std::string tickText(double value) {
    constexpr double longest = 1e6;
    constexpr int digits = 4;
    std::string text;
    if (std::fabs(value) < longest) {
        appendShortest(text, roundedTo(value, digits));
        return text;
    }
    const double exponent = std::floor(std::log10(std::fabs(value)));
    appendShortest(text, roundedTo(value / std::pow(10, exponent), digits));
    return text + "e" + std::to_string(static_cast<int>(exponent));
}

LabelBox labelBox(const std::vector<std::string>& lines, SvgPoint innerTop, TextAnchor anchor) {
    double width = 0;
    for (const std::string& line : lines) {
        width = std::max(width, textWidth(line, FigureType));
    }
    const double left = anchor == TextAnchor::Start ? innerTop.x
                        : anchor == TextAnchor::End ? innerTop.x - width
                                                    : innerTop.x - width / 2;
    return {left, innerTop.y, width, static_cast<double>(lines.size()) * FigureLine};
}

namespace {

void drawText(Svg& svg, const FigureLabel& label) {
    const double x = label.anchor == TextAnchor::Start ? label.box.left
                     : label.anchor == TextAnchor::End ? label.box.right()
                                                       : label.box.left + label.box.width / 2;
    for (std::size_t i = 0; i < label.lines.size(); ++i) {
        std::string classes = label.cssClass;
        if (label.lines.size() > 1 && i == 0) {
            classes += classes.empty() ? "name" : " name";
        }
        svg.text({x, label.box.top + Baseline + static_cast<double>(i) * FigureLine}, label.anchor,
                 label.lines[i], classes);
    }
}

} // namespace

void drawLabels(Svg& svg, const std::vector<FigureLabel>& labels) {
    std::vector<std::vector<SvgPoint>> leaders;
    for (const FigureLabel& label : labels) {
        if (!label.leader.empty()) {
            leaders.push_back(label.leader);
        }
    }
    svg.lines(leaders, "leader");
    for (const FigureLabel& label : labels) {
        drawText(svg, label);
    }
}

std::vector<FigureLabel> placeColumn(std::vector<ColumnLabel> labels, const LabelColumn& column) {
    std::stable_sort(labels.begin(), labels.end(),
                     [](const ColumnLabel& a, const ColumnLabel& b) { return a.tip.y < b.tip.y; });
    std::vector<LabelSlot> slots;
    double room = 0;
    for (const ColumnLabel& label : labels) {
        const double height = static_cast<double>(label.lines.size()) * FigureLine + LabelGap;
        slots.push_back({label.tip.y, height});
        room += height;
    }
    const auto middles = spreadSlots(slots, column.low, std::max(column.high, column.low + room));
    const double outward = column.toRight ? 1 : -1;
    const double bend = column.edge + outward * Slant;
    const TextAnchor anchor = column.toRight ? TextAnchor::Start : TextAnchor::End;
    std::vector<FigureLabel> placed;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const double top = middles[i] - (slots[i].size - LabelGap) / 2;
        const SvgPoint tip = labels[i].tip;
        placed.push_back({labelBox(labels[i].lines, {bend + outward * TextGap, top}, anchor),
                          labels[i].lines,
                          anchor,
                          {tip, {column.edge, tip.y}, {bend, middles[i]}}});
    }
    return placed;
}

LabelBox viewOf(double width, double height, const std::vector<FigureLabel>& labels) {
    double left = 0;
    double top = 0;
    double right = width;
    double bottom = height;
    for (const FigureLabel& label : labels) {
        left = std::min(left, label.box.left);
        top = std::min(top, label.box.top);
        right = std::max(right, label.box.right());
        bottom = std::max(bottom, label.box.bottom());
    }
    return {left - Margin, top - Margin, right - left + 2 * Margin, bottom - top + 2 * Margin};
}

} // namespace korvane::sheet
