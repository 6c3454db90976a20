#include "problem/problem_text.h"

#include "runtime/number_format.h"

#include <charconv>
#include <system_error>
#include <type_traits>

namespace korvane {

namespace {

template <class Record, class Visit>
void visitHeadingAndControl(Record& problem, Visit& visit) {
    visit("NumHeadingLines", problem.NumHeadingLines);
    visit("HeadingLines", problem.HeadingLines);
    visit("WallType", problem.WallType);
    visit("ProgramMode", problem.ProgramMode);
    visit("FSActive", problem.FSActive);
    visit("FSPassive", problem.FSPassive);
    visit("FSKind", problem.FSKind);
}

template <class Record, class Visit>
void visitWallAndSurface(Record& problem, Visit& visit) {
    visit("WallTopElev", problem.WallTopElev);
    visit("AnchorElev", problem.AnchorElev);
    visit("WallBottomElev", problem.WallBottomElev);
    visit("WallModulus", problem.WallModulus);
    visit("WallInertia", problem.WallInertia);
    visit("SurfacePointCount", problem.SurfacePointCount);
    visit("SurfaceDist", problem.SurfaceDist);
    visit("SurfaceElev", problem.SurfaceElev);
}

template <class Record, class Visit>
void visitSoil(Record& problem, Visit& visit) {
    visit("SoilDataKind", problem.SoilDataKind);
    visit("SoilLayerCount", problem.SoilLayerCount);
    visit("Level2FSActive", problem.Level2FSActive);
    visit("Level2FSPassive", problem.Level2FSPassive);
    visit("SoilSatWeight", problem.SoilSatWeight);
    visit("SoilMoistWeight", problem.SoilMoistWeight);
    visit("SoilFriction", problem.SoilFriction);
    visit("SoilCohesion", problem.SoilCohesion);
    visit("SoilWallFriction", problem.SoilWallFriction);
    visit("SoilAdhesion", problem.SoilAdhesion);
    visit("SoilBottomElev", problem.SoilBottomElev);
    visit("SoilBottomSlope", problem.SoilBottomSlope);
    visit("SoilFSActive", problem.SoilFSActive);
    visit("SoilFSPassive", problem.SoilFSPassive);
    visit("SoilCoefActive", problem.SoilCoefActive);
    visit("SoilCoefPassive", problem.SoilCoefPassive);
}

template <class Record, class Visit>
void visitWater(Record& problem, Visit& visit) {
    visit("WaterDataKind", problem.WaterDataKind);
    visit("WaterUnitWeight", problem.WaterUnitWeight);
    visit("WaterElev", problem.WaterElev);
    visit("SeepageKind", problem.SeepageKind);
    visit("SeepageElev", problem.SeepageElev);
    visit("SeepageGradient", problem.SeepageGradient);
    visit("WaterPressCount", problem.WaterPressCount);
    visit("WaterPressElev", problem.WaterPressElev);
    visit("WaterPressure", problem.WaterPressure);
}

template <class Record, class Visit>
void visitVerticalLoads(Record& problem, Visit& visit) {
    visit("VLineCount", problem.VLineCount);
    visit("VLineDist", problem.VLineDist);
    visit("VLineLoad", problem.VLineLoad);
    visit("VUniformCount", problem.VUniformCount);
    visit("VUniformLoad", problem.VUniformLoad);
    visit("VStripCount", problem.VStripCount);
    visit("VStripStart", problem.VStripStart);
    visit("VStripEnd", problem.VStripEnd);
    visit("VStripLoad", problem.VStripLoad);
    visit("VRampCount", problem.VRampCount);
    visit("VRampStart", problem.VRampStart);
    visit("VRampEnd", problem.VRampEnd);
    visit("VRampLoad", problem.VRampLoad);
    visit("VTriCount", problem.VTriCount);
    visit("VTriStart", problem.VTriStart);
    visit("VTriPeak", problem.VTriPeak);
    visit("VTriEnd", problem.VTriEnd);
    visit("VTriLoad", problem.VTriLoad);
    visit("VVarCount", problem.VVarCount);
    visit("VVarDist", problem.VVarDist);
    visit("VVarLoad", problem.VVarLoad);
}

template <class Record, class Visit>
void visitHorizontalLoads(Record& problem, Visit& visit) {
    visit("HLineCount", problem.HLineCount);
    visit("HLineElev", problem.HLineElev);
    visit("HLineLoad", problem.HLineLoad);
    visit("HDistCount", problem.HDistCount);
    visit("HDistElev", problem.HDistElev);
    visit("HDistLoad", problem.HDistLoad);
}

/// Every member, in the order of the record.
template <class Record, class Visit>
void visitMembers(Record& problem, Visit visit) {
    visitHeadingAndControl(problem, visit);
    visitWallAndSurface(problem, visit);
    visitSoil(problem, visit);
    visitWater(problem, visit);
    visitVerticalLoads(problem, visit);
    visitHorizontalLoads(problem, visit);
}

// ---- writing ----

void append(std::string& text, double value) {
    appendShortest(text += ' ', value);
}
void append(std::string& text, int value) {
    (text += ' ') += std::to_string(value);
}
/// A heading takes the line to its end and its lists a line for each.
void append(std::string& text, const std::string& value) {
    for (const char c : value) {
        text += c == '\n' || c == '\r' ? ' ' : c;
    }
    text += '\n';
}
template <class Choice>
requires std::is_enum_v<Choice>
void append(std::string& text, Choice value) {
    append(text, static_cast<int>(value));
}
template <class T, int... Extents>
void append(std::string& text, const Array<T, Extents...>& values) {
    for (const T& value : values) {
        append(text, value);
    }
}

// ---- reading ----

/// Takes values from the front of a text; false where they are not there.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool take(std::string_view expected) {
        if (rest_.substr(0, expected.size()) != expected) {
            return false;
        }
        rest_.remove_prefix(expected.size());
        return true;
    }
    bool take(double& value) { return takeNumber(value); }
    bool take(int& value) { return takeNumber(value); }
    bool take(std::string& value) {
        const std::size_t end = rest_.find('\n');
        if (end == std::string_view::npos) {
            return false;
        }
        value = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return true;
    }
    template <class Choice>
    requires std::is_enum_v<Choice>
    bool take(Choice& value) {
        int letter = 0;
        if (!takeNumber(letter)) {
            return false;
        }
        value = static_cast<Choice>(letter);
        return true;
    }
    template <class T, int... Extents>
    bool take(Array<T, Extents...>& values) {
        for (T& value : values) {
            if (!take(value)) {
                return false;
            }
        }
        return true;
    }
    bool atEnd() const { return rest_.empty(); }

  private:
    template <class Number>
    bool takeNumber(Number& value) {
        if (!take(std::string_view(" "))) {
            return false;
        }
        const char* end = rest_.data() + rest_.size();
        const auto [stopped, fault] = std::from_chars(rest_.data(), end, value);
        rest_.remove_prefix(static_cast<std::size_t>(stopped - rest_.data()));
        return fault == std::errc();
    }

    std::string_view rest_;
};

} // namespace

std::string problemText(const Problem& problem) {
    std::string text;
    visitMembers(problem, [&](const char* name, const auto& value) {
        append(text += name, value);
        text += '\n';
    });
    return text;
}

std::optional<Problem> readProblemText(std::string_view text) {
    Problem problem;
    Reader reader(text);
    bool sound = true;
    visitMembers(problem, [&](const char* name, auto& value) {
        sound = sound && reader.take(std::string_view(name)) && reader.take(value) &&
                reader.take(std::string_view("\n"));
    });
    return sound && reader.atEnd() ? std::optional(problem) : std::nullopt;
}

} // namespace korvane
