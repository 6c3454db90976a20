// A figure in SVG, built element by element. Colours come by classes from the sheet's style.
#pragma once

#include "sheet/labels.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace korvane::sheet {

struct SvgPoint {
    double x = 0;
    double y = 0;
};

/// Where a text stands from its point.
enum class TextAnchor { Start, Middle, End };

class Svg {
  public:
    void line(SvgPoint from, SvgPoint to, std::string_view cssClass);
    /// Several lines as one element.
    void lines(const std::vector<std::vector<SvgPoint>>& lines, std::string_view cssClass);
    void polyline(const std::vector<SvgPoint>& points, std::string_view cssClass);
    void polygon(const std::vector<SvgPoint>& points, std::string_view cssClass,
                 std::string_view fill = {});
    void circle(SvgPoint middle, double radius, std::string_view cssClass);
    /// A line with a filled head at its end; several of them as one element.
    void arrow(SvgPoint from, SvgPoint to, std::string_view cssClass) {
        arrows({{from, to}}, cssClass);
    }
    void arrows(const std::vector<std::pair<SvgPoint, SvgPoint>>& ends, std::string_view cssClass);
    /// A line of text that stands on its point's y. Any bytes.
    void text(SvgPoint at, TextAnchor anchor, std::string_view text,
              std::string_view cssClass = {});
    void markup(std::string_view elements) { body_ += elements; }
    /// All elements so far.
    const std::string& body() const { return body_; }
    /// Opens a group of a class, cut at the clip path of an id if one is named; `end` closes it.
    void group(std::string_view cssClass, std::string_view clipId = {});
    void end() { body_ += "</g>\n"; }

    /// The whole element: what it shows in words, and the part of the plane that it takes.
    std::string finish(const LabelBox& view, std::string_view cssClass,
                       std::string_view title) const;

  private:
    std::string body_;
};

/// A number of a figure: one place behind the point at most.
std::string svgNumber(double value);

/// The points of a line but those within `noise` of the line between their neighbours.
std::vector<SvgPoint> withoutStraightOnes(const std::vector<SvgPoint>& points, double noise);

/// Evenly spaced round numbers within two limits, `most` of them at the most.
std::vector<double> roundTicks(double low, double high, int most);

} // namespace korvane::sheet
