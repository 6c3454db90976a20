// SURFACE: the ground on either side of the wall.
#pragma once

#include "screens/data_screen.h"
#include "screens/field_table.h"

#include <memory>

namespace korvane {

/// Up to eleven points of distance and elevation a side.
class SurfaceScreen : public DataScreen {
    Q_OBJECT

  public:
    explicit SurfaceScreen(ScreenContext& context);

  protected:
    void finishStage() override;
    void takeCounts(Problem& typed) override;

  private:
    FieldTable& table(int side) { return *tables_[static_cast<std::size_t>(side - 1)]; }
    /// True where all rows of a side are read; else a box was shown.
    bool readSide(int side);
    bool readRows(int side);
    void fault(const MessageBox& box);

    std::unique_ptr<FieldTable> tables_[2];
};

} // namespace korvane
