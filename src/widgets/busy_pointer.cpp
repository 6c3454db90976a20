#include "widgets/busy_pointer.h"

#include <QApplication>
#include <QCursor>

namespace korvane {

BusyPointerOff::BusyPointerOff() {
    if (const QCursor* cursor = QApplication::overrideCursor()) {
        shape_ = cursor->shape();
        wasBusy_ = true;
        QApplication::restoreOverrideCursor();
    }
}

BusyPointerOff::~BusyPointerOff() {
    if (wasBusy_) {
        QApplication::setOverrideCursor(shape_);
    }
}

} // namespace korvane
