// The one gate from the toolkit into the code without a toolkit.
#pragma once

#include "commands/session.h"

#include <functional>

class QWidget;

namespace korvane {

/// Every slot and event handler enters the commands through here. A RuntimeError that comes out
/// keeps the input (see rescueInput), shows the box of a run-time error over `parent` and ends the
/// process at once with status 70; no exception ever reaches the event loop.
void enter(Session& session, QWidget* parent, const std::function<void()>& body);

/// The same for a paint: a fault skips what is left of the drawing.
void enterPaint(const std::function<void()>& body);

} // namespace korvane
