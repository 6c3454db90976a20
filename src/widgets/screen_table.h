// Which screens exist, and who makes them.
#pragma once

#include "widgets/screen_window.h"

#include <map>
#include <memory>

namespace korvane {

using ScreenMaker = std::function<std::unique_ptr<ScreenWindow>(ScreenContext&)>;

/// The screens that the program has. A command whose screen is missing here is shown disabled.
using ScreenTable = std::map<Screen, ScreenMaker>;

/// A maker for a screen class whose constructor takes the context and further arguments.
template <class Window, class... Arguments>
ScreenMaker makes(Arguments... arguments) {
    return [arguments...](ScreenContext& context) -> std::unique_ptr<ScreenWindow> {
        return std::make_unique<Window>(context, arguments...);
    };
}

} // namespace korvane
