// KEYIN: the sections of a problem.
#pragma once

#include "screens/section_screen.h"

namespace korvane {

/// Opens the sections; its Finished runs the tests across them. SolutionFailed tells how it was
/// left: 0 with all tests passed, 1 by a Cancel.
class KeyinScreen : public SectionScreen {
    Q_OBJECT

  public:
    explicit KeyinScreen(ScreenContext& context);

  protected:
    void finishStage() override;
};

} // namespace korvane
