#include "screens/load_lists.h"

#include "problem/loads.h"

namespace korvane {

namespace {

constexpr const char* EnterTitle = "Select Data Section to be Entered";

template <Load Kind>
bool isGiven(const Session& session) {
    return rulesOf(Kind).isGiven(session.problem);
}

} // namespace

const SectionList& surchargeList() {
    static const SectionList list{
        .screen = "SURCHCON",
        .windowTitle = "SURCHARGE",
        .titlePanel = "panSurchHeading",
        .title = EnterTitle,
        .frame = "fraSurchSects",
        .sections =
            {{{"cmdVertLine", "Vertical &Line Loads", "panVertLine", false, isGiven<Load::Line>},
              Screen::SURCHARG,
              Load::Line},
             {{"cmdUniform", "Vertical &Uniform Loads", "panUniform", false,
               isGiven<Load::Uniform>},
              Screen::SURCHARG,
              Load::Uniform},
             {{"cmdStrips", "Vertical &Strip Loads", "panStrips", false, isGiven<Load::Strip>},
              Screen::SURCHARG,
              Load::Strip},
             {{"cmdRamps", "Vertical &Ramp Loads", "panRamps", false, isGiven<Load::Ramp>},
              Screen::SURCHARG,
              Load::Ramp},
             {{"cmdTriangs", "Vertical &Triangular Loads", "panTriangs", false,
               isGiven<Load::Triangle>},
              Screen::SURCHARG,
              Load::Triangle},
             {{"cmdVertVar", "Vertical &Variable Loads", "panVertVar", false,
               isGiven<Load::Variable>},
              Screen::SURCHARG,
              Load::Variable}},
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
                       isGiven<Load::HorizontalLine>},
                      Screen::HORLOAD,
                      Load::HorizontalLine},
                     {{"cmdHorizDist", "Horizontal &Distributed Loads", "panHorizDist", false,
                       isGiven<Load::Distributed>},
                      Screen::HORLOAD,
                      Load::Distributed}},
    };
    return list;
}

} // namespace korvane
