#include "plots/sheet.h"

namespace korvane {

void Sheet::text(double x, Across across, double y, Down down, std::string_view text) {
    const double width = across == Across::LeftEdge ? 0 : surface_.textWidth(text);
    const double height = down == Down::UpperEdge ? 0 : surface_.textHeight();
    const double left = x - (across == Across::Middle ? width / 2 : width);
    const double upper = y - (down == Down::Middle ? height / 2 : height);
    surface_.text(moved({left, upper}), text);
}

} // namespace korvane
