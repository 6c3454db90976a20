#include "screens/screens.h"

#include "screens/heading_screen.h"
#include "screens/keyin_screen.h"
#include "screens/layer_screen.h"
#include "screens/load_lists.h"
#include "screens/load_screen.h"
#include "screens/pile_screen.h"
#include "screens/surface_screen.h"
#include "screens/water_screen.h"

namespace korvane {

ScreenTable dataScreens() {
    return {
        {Screen::KEYIN, makes<KeyinScreen>()},
        {Screen::HEADCONT, makes<HeadingScreen>()},
        {Screen::SURFACE, makes<SurfaceScreen>()},
        {Screen::LAYRDATA, makes<LayerScreen>()},
        {Screen::WATER, makes<WaterScreen>()},
        {Screen::SURCHCON, makes<SectionScreen>(&surchargeList())},
        {Screen::SURCHARG, makes<LoadScreen>("SURCHARG", "SURFACE SURCHARGES", GroundLoads)},
        {Screen::HORCON, makes<SectionScreen>(&horizontalLoadList())},
        {Screen::HORLOAD, makes<LoadScreen>("HORLOAD", "HORIZONTAL LOADS", WallLoads)},
        {Screen::ROWEPILE, makes<PileScreen>()},
    };
}

} // namespace korvane
