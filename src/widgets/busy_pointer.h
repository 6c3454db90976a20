// The busy pointer taken off while the user is asked something.
#pragma once

#include <Qt>

namespace korvane {

/// Takes a busy pointer off for the life of the object and puts it back after.
class BusyPointerOff {
  public:
    BusyPointerOff();
    ~BusyPointerOff();
    BusyPointerOff(const BusyPointerOff&) = delete;
    BusyPointerOff& operator=(const BusyPointerOff&) = delete;

  private:
    bool wasBusy_ = false;
    Qt::CursorShape shape_ = Qt::ArrowCursor;
};

} // namespace korvane
