#include "screens/load_lists.h"

namespace korvane {

namespace {

constexpr const char* EnterTitle = "Select Data Section to be Entered";

template <auto Count>
bool onEitherSide(const Session& session) {
    const auto& count = session.problem.*Count;
    return count(Right) + count(Left) > 0;
}

} // namespace

const SectionList& surchargeList() {
    static const SectionList list{
        .screen = "SURCHCON",
        .windowTitle = "SURCHARGE",
        .titlePanel = "panSurchHeading",
        .title = EnterTitle,
        .frame = "fraSurchSects",
        .sections = {{{"cmdVertLine", "Vertical &Line Loads", "panVertLine", false,
                       onEitherSide<&Problem::VLineCount>},
                      Screen::SURCHARG,
                      1},
                     {{"cmdUniform", "Vertical &Uniform Loads", "panUniform", false,
                       onEitherSide<&Problem::VUniformCount>},
                      Screen::SURCHARG,
                      2},
                     {{"cmdStrips", "Vertical &Strip Loads", "panStrips", false,
                       onEitherSide<&Problem::VStripCount>},
                      Screen::SURCHARG,
                      3},
                     {{"cmdRamps", "Vertical &Ramp Loads", "panRamps", false,
                       onEitherSide<&Problem::VRampCount>},
                      Screen::SURCHARG,
                      4},
                     {{"cmdTriangs", "Vertical &Triangular Loads", "panTriangs", false,
                       onEitherSide<&Problem::VTriCount>},
                      Screen::SURCHARG,
                      5},
                     {{"cmdVertVar", "Vertical &Variable Loads", "panVertVar", false,
                       onEitherSide<&Problem::VVarCount>},
                      Screen::SURCHARG,
                      6}},
    };
    return list;
}

const SectionList& horizontalLoadList() {
    static const SectionList list{
        .screen = "HORCON",
        .windowTitle = "HORIZONTAL LOADS",
        .titlePanel = "panHorizontal",
        .title = EnterTitle,
        .frame = "fraHorLoadSects",
        .sections = {{{"cmdHorizLine", "Horizontal &Line Loads", "panHorizLine", false,
                       [](const Session& session) { return session.problem.HLineCount > 0; }},
                      Screen::HORLOAD,
                      1},
                     {{"cmdHorizDist", "Horizontal &Distributed Loads", "panHorizDist", false,
                       [](const Session& session) { return session.problem.HDistCount > 0; }},
                      Screen::HORLOAD,
                      2}},
    };
    return list;
}

} // namespace korvane
