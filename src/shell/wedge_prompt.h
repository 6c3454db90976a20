// WEDGMETH: the choice of the wedge method.
#pragma once

#include "widgets/screen_window.h"

namespace korvane {

/// Asks once for both sides; only its two buttons close it.
class WedgePrompt : public ScreenWindow {
    Q_OBJECT

  public:
    explicit WedgePrompt(ScreenContext& context);

  protected:
    void showEvent(QShowEvent* event) override;
};

} // namespace korvane
