#include "plots/readings.h"

#include "state/result_fields.h"

#include <algorithm>
#include <optional>

namespace korvane {

namespace {

std::string elevationText(double elevation, UnitSystem units) {
    return quantityWithUnit(results::elev.quantity, elevation, units);
}

bool isSmaller(const CurvePoint& a, const CurvePoint& b) {
    return a.value < b.value;
}

/// Nothing above the first point or below the last one; at a step the value below it.
std::optional<double> valueAt(const PlotCurve& curve, double elevation) {
    const auto& points = curve.points;
    for (std::size_t i = points.size(); i-- > 0;) {
        const CurvePoint& upper = points[i];
        if (upper.elevation < elevation) {
            continue;
        }
        if (upper.elevation == elevation) {
            return upper.value;
        }
        if (i + 1 == points.size()) {
            return {};
        }
        const CurvePoint& lower = points[i + 1];
        const double part = (upper.elevation - elevation) / (upper.elevation - lower.elevation);
        return upper.value + part * (lower.value - upper.value);
    }
    return {};
}

} // namespace

std::vector<CurvePoint> gridPoints(const ElevationGrid& grid, const Array<double, 301, 2>& values,
                                   double bottom, int lastRow) {
    const auto& ElevGrid = grid.ElevGrid;
    std::vector<CurvePoint> points{{ElevGrid(1), values(1, 1)}};
    for (int i = 2; i <= lastRow; ++i) {
        points.push_back({ElevGrid(i), values(i, 2)});
        if (ElevGrid(i) <= bottom || i == lastRow) {
            break;
        }
        points.push_back({ElevGrid(i), values(i, 1)});
    }
    return points;
}

std::vector<std::string> extremeLines(const PlotReadings& readings, UnitSystem units) {
    std::vector<std::string> lines;
    for (const PlotCurve& curve : readings.curves) {
        if (curve.points.empty()) {
            continue;
        }
        const auto& points = curve.points;
        const auto largest = std::max_element(points.begin(), points.end(), isSmaller);
        const auto smallest = std::min_element(points.begin(), points.end(), isSmaller);
        lines.push_back((curve.name.empty() ? "Largest " : curve.name + ": largest ") +
                        quantityWithUnit(readings.quantity, largest->value, units) +
                        " at elevation " + elevationText(largest->elevation, units) +
                        ", smallest " +
                        quantityWithUnit(readings.quantity, smallest->value, units) + " at " +
                        elevationText(smallest->elevation, units));
    }
    return lines;
}

std::string valueLine(const PlotReadings& readings, double y, UnitSystem units) {
    const ElevationAxis& axis = readings.elevations;
    if (!axis.drawable() || y < BoxTop || y > BoxBottom) {
        return {};
    }
    const double elevation = axis.top - (y - BoxTop) / BoxHeight * (axis.top - axis.bottom);
    std::string line;
    for (const PlotCurve& curve : readings.curves) {
        if (const auto value = valueAt(curve, elevation)) {
            line += line.empty() ? "At elevation " + elevationText(elevation, units) + ": " : ", ";
            line += (curve.name.empty() ? "" : curve.name + " ") +
                    quantityWithUnit(readings.quantity, *value, units);
        }
    }
    return line;
}

} // namespace korvane
