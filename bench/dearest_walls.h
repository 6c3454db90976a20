// Input files of the walls that cost most to solve, for measurements.
#pragma once

#include <string>
#include <utility>

namespace korvane::bench {

/// What a dearest wall is to be.
struct DearestWall {
    std::string control = "CANTILEVER DESIGN 1.00 1.50";
    std::string wall = "30";      ///< numbers of the WALL line
    std::string automaticWater{}; ///< the WATER line, if any
    bool wedge = true; ///< 11 layers under 11 surface points; else level ground for coefficients
};

inline std::string number(double value) {
    return " " + std::to_string(value);
}

/// Right ground at 30, left ground at 0, both rising and falling by turns with `wedge`.
inline std::string dearestSurface(const std::string& side, double elev, bool wedge) {
    if (!wedge) {
        return "SURFACE " + side + " 1 0" + number(elev) + "\n";
    }
    std::string text = "SURFACE " + side + " 11 0" + number(elev) + "\n";
    for (int point = 1; point <= 10; ++point) {
        text += number(9 * point) + number(elev + (point % 3 == 0 ? 0.5 : 0.25 * point)) + "\n";
    }
    return text;
}

/// Eleven layers of 5 FT below `elev`, stronger downward.
inline std::string dearestSoil(const std::string& side, double elev, bool wedge) {
    std::string text = "SOIL " + side + " STRENGTHS 11\n";
    for (int layer = 1; layer <= 11; ++layer) {
        text += number(120 + layer) + number(110 + layer) + number(28 + 0.5 * layer) + " 0" +
                number(10 + 0.25 * layer) + " 0";
        text +=
            layer == 11 ? " 0\n" : number(elev - 5 * layer) + number(wedge ? 0.02 : 0.0) + " 0\n";
    }
    return text;
}

/// Every kind of vertical load on both sides, as many as there may be.
inline std::string dearestLoads() {
    std::string lines = "VERTICAL LINE BOTH 5";
    std::string strips = "VERTICAL STRIP BOTH 5";
    std::string triangles = "VERTICAL TRIANGULAR BOTH 5";
    std::string variable = "VERTICAL VARIABLE BOTH 11";
    for (int load = 1; load <= 5; ++load) {
        lines += number(4 * load) + " 100";
        strips += number(6 * load) + number(6 * load + 4) + " 40\n";
        triangles += number(5 * load) + number(5 * load + 2) + number(5 * load + 5) + " 30\n";
    }
    for (int point = 1; point <= 11; ++point) {
        variable += number(4 * point) + number(20 + point) + (point > 1 ? "\n" : "");
    }
    return lines + "\nVERTICAL UNIFORM 20 10\n" + strips + "VERTICAL RAMP BOTH 10 30 25\n" +
           triangles + variable;
}

inline std::string dearestInput(const DearestWall& wall) {
    std::string text = "'DEAREST WALL\nCONTROL " + wall.control + "\nWALL " + wall.wall + "\n";
    for (const auto& [side, elev] : {std::pair("RIGHTSIDE", 30.0), std::pair("LEFTSIDE", 0.0)}) {
        text += dearestSurface(side, elev, wall.wedge);
    }
    for (const auto& [side, elev] : {std::pair("RIGHTSIDE", 30.0), std::pair("LEFTSIDE", 0.0)}) {
        text += dearestSoil(side, elev, wall.wedge);
    }
    if (!wall.automaticWater.empty()) {
        text += "WATER ELEVATIONS " + wall.automaticWater + "\n";
    }
    return text + dearestLoads() + "FINISHED\n";
}

} // namespace korvane::bench
