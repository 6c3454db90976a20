// What the tests of LAYRDATA share: a desk and the typing of layers.
#pragma once

#include "looks.h"

#include <gtest/gtest.h>

namespace korvane::test {

class LayerTyping : public testing::Test {
  protected:
    Desk desk;

    /// Types a row of strengths: weights, friction, cohesion and, where given, a bottom.
    void typeLayer(int row, const QString& friction, const QString& cohesion,
                   const QString& bottom = {}) {
        const QString index = "_" + QString::number(row - 1);
        desk.type("txtSATWt" + index, "120");
        desk.type("txtMSTWt" + index, "110");
        desk.type("txtIntFrict" + index, friction);
        desk.type("txtCohes" + index, cohesion);
        desk.type("txtElev" + index, bottom);
    }
    std::string finish() {
        desk.click("cmdFinished");
        return desk.lastBox();
    }
    Problem& problem = desk.problem;
};

} // namespace korvane::test
