// What the tests of the drawing recipes share: expectations on a recording surface, and a small
// solved wall with round numbers.
#pragma once

#include "plots/plot_screen.h"
#include "plots/recording_surface.h"
#include "support/result_bench.h"

#include <string>
#include <vector>

namespace korvane::test {

using Drawing = std::vector<Primitive>;

// One expected primitive. Text is told by its middle or edges; the recording surface measures 100
// twips a character and 195 high.
Primitive box(double x1, double y1, double x2, double y2, Colour colour, int width);
Primitive filledBox(double x1, double y1, double x2, double y2);
Primitive line(double x1, double y1, double x2, double y2, Colour colour, int width);
Primitive point(double x, double y, Colour colour, int width);
Primitive circle(double x, double y, double radius, Colour colour, int width);
Primitive textAt(double left, double upper, const std::string& words);
/// Centred on x, upper edge at y.
Primitive centred(double x, double y, const std::string& words);
/// Centred on x and y.
Primitive middle(double x, double y, const std::string& words);
/// Centred on x, lower edge at y.
Primitive lowerEdge(double x, double y, const std::string& words);

/// The lines of a curve through points of one colour and width.
Drawing strokes(const std::vector<Point>& points, Colour colour, int width);

/// All parts one after the other.
Drawing joined(const std::vector<Drawing>& parts);

/// The same drawing, moved.
Drawing moved(Drawing drawing, double dx, double dy);

/// The drawing as it stands on paper by the general rule: 1440 to the right, 4320 down.
Drawing onPaper(Drawing drawing);

/// Compares kind, place, colour, width, text and order. Places agree to 1E-6 twips: the recipes
/// and the expectations round differently in the last bits of a double, no more.
void expectDrawing(const Drawing& drawn, const Drawing& expected);

/// All texts in their order.
std::vector<std::string> textsOf(const Drawing& drawn);

/// The lines of one colour and width, in their order.
Drawing linesOf(const Drawing& drawn, Colour colour, int width);

/// True where every coordinate is finite.
bool isFinite(const Drawing& drawn);

/// A solved wall, worked out by hand: top 0, bottom -20 at level 1 (so that a foot is 216 twips
/// high) and -24 at level 2 (180 twips); ground 0 and -8; layer boundaries -5 and -12; water -4 and
/// -10; anchor -2. Five grid rows at 0, -5, -10, -20 and -30 and five result rows, two of them at
/// -5. Both levels and the review hold the same diagrams, but for the water of level 1, which is
/// nowhere shown. A design of a cantilever wall.
struct SmallWall : ResultBench {
    SmallWall();

    PlotData data() const { return {problem, results, sections, reduction}; }
    LevelResult& level1() { return results.levels(1); }
    ElevationGrid& grid() { return level1().solved.grid; }
    Pressures& pressures() { return level1().solved.pressures; }
    ResultDiagrams& diagrams() { return level1().diagrams; }
    /// What is shown with either level.
    Array<double, 301, 2>& water() { return results.levels(2).solved.pressures.WaterPressures; }
};

} // namespace korvane::test
