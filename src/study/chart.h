// Axes for curves, bands, points and bars, as a figure in SVG.
#pragma once

#include "sheet/figure.h"

#include <string>
#include <string_view>
#include <vector>

namespace korvane::study {

struct Axis {
    std::string title; ///< with its unit
    double low = 0;
    double high = 1;
};

/// An axis with all numbers and a margin beside them; those that are not finite do not count.
Axis axisOver(std::string title, const std::vector<double>& numbers);

/// A rectangle of a plot in numbers of its axes, drawn in a class of the style.
struct ChartBox {
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
};

/// A plot whose axes must span all that is drawn. Y points up.
class Chart {
  public:
    Chart(Axis x, Axis y, double width = 560, double height = 250);

    void curve(const std::vector<sheet::SvgPoint>& points, std::string_view cssClass = "line");
    /// Straight pieces that do not hang together, two points each.
    void pieces(const std::vector<sheet::SvgPoint>& ends, std::string_view cssClass);
    /// The area between two curves with the same x.
    void band(const std::vector<sheet::SvgPoint>& low, const std::vector<sheet::SvgPoint>& high);
    /// Small marks at many points, as one element.
    void dots(const std::vector<sheet::SvgPoint>& points, std::string_view cssClass);
    void circle(sheet::SvgPoint at, std::string_view cssClass);
    void box(const ChartBox& box, std::string_view cssClass);
    /// A box of a heat map: the darker, the nearer to 1.
    void shade(const ChartBox& box, double darkness);
    /// Boxes from 0 to 1, 1 to 2, ... have these names in place of the numbers of the axes.
    void nameCells(std::vector<std::string> x, std::vector<std::string> y);

    /// A line across the plot at an x, with a label above the plot.
    void markX(double x, const std::string& label, std::string_view cssClass = "mark");
    /// A line across at a y, with a label beside it.
    void markY(double y, const std::string& label, std::string_view cssClass = "mark");
    /// A label right of the plot that points to a place.
    void label(sheet::SvgPoint at, const std::string& text);
    /// A text within the plot, in its middle both ways.
    void text(sheet::SvgPoint at, const std::string& text, std::string_view cssClass = {});

    /// The finished figure; `title` says what it shows.
    std::string finish(std::string_view title);

  private:
    sheet::SvgPoint place(sheet::SvgPoint at) const;
    std::vector<sheet::SvgPoint> places(const std::vector<sheet::SvgPoint>& points) const;
    std::vector<sheet::SvgPoint> corners(const ChartBox& box) const;
    void drawXTicks(sheet::Svg& under);
    void drawYTicks(sheet::Svg& under);
    void placeCellNames();
    void placeMarks();
    void placeTitles(double top);

    Axis x_;
    Axis y_;
    double width_;
    double height_;
    std::vector<std::string> xNames_; ///< of cells; empty for numbers
    std::vector<std::string> yNames_;
    sheet::Svg inside_; ///< on the grid lines
    sheet::Svg over_;   ///< on all of it
    std::vector<sheet::FigureLabel> labels_;
    std::vector<sheet::ColumnLabel> column_;
    struct Mark {
        double x; ///< pixels
        std::string text;
    };
    std::vector<Mark> marks_;
    double highest_ = 0; ///< y of the highest label above the plot
};

/// A row of a bar chart.
struct Bar {
    std::string name;
    double value = 0;
    double low = 0; ///< ends of its interval; not finite where there is none
    double high = 0;
};

/// Bars from zero in rows with their numbers; the title stands below.
std::string barChart(const std::vector<Bar>& bars, const std::string& title,
                     std::string_view description);

/// Styles of the lines of a chart that has several: "line s0" to "line s5".
inline constexpr std::size_t MostSeries = 6;
std::string seriesClass(std::size_t n);

/// CSS rules for all of them, on the colours of the calculation sheet.
std::string_view chartStyle();

} // namespace korvane::study
