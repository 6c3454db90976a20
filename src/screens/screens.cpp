#include "screens/screens.h"

#include "screens/heading_screen.h"
#include "screens/keyin_screen.h"
#include "screens/surface_screen.h"

namespace korvane {

ScreenTable dataScreens() {
    return {
        {Screen::KEYIN, makes<KeyinScreen>()},
        {Screen::HEADCONT, makes<HeadingScreen>()},
        {Screen::SURFACE, makes<SurfaceScreen>()},
    };
}

} // namespace korvane
