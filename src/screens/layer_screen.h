// LAYRDATA: the soil of either side.
#pragma once

#include "screens/data_screen.h"
#include "screens/entry.h"
#include "screens/field_table.h"
#include "screens/section_buttons.h"

#include <string>

namespace korvane {

/// Three stages: choice of a side, control data of the side, table of its layers.
class LayerScreen : public DataScreen {
    Q_OBJECT

  public:
    explicit LayerScreen(ScreenContext& context);

  protected:
    void finishStage() override;
    void takeCounts(Problem& typed) override;
    void useRoom(QSize room) override;

  private:
    enum class Stage { Sides, Control, Layers };

    void createSideStage();
    void createControlStage();
    void createLayerStage();
    void arrangeGroups();
    void show(Stage stage);

    SectionControl& sideControl(int side) { return sides_[side - 1]; }
    /// The texts of a side's button: Enter or Edit.
    void captionSide(int side, bool edit);
    SoilData& kind() { return problem().SoilDataKind(SideIndex_); }
    int& layers() { return problem().SoilLayerCount(SideIndex_); }

    void chooseSide(int side);
    void chooseKind(SoilData chosen);
    void finishControl();
    void fillLayers();
    void finishLayers();
    int filledLayers();
    Fault readLayers();
    void finishSides();
    /// Both sides are without layers; without kinds too where told.
    void dropLayers(bool andKinds);

    Stage stage_ = Stage::Sides;
    int SideIndex_ = Right;
    double stretch_ = 1; ///< of the layers' sheet across the window
    FieldTable table_;

    QFrame* sideFrame_ = nullptr;
    SectionControl sides_[2];
    QWidget* nextAction_ = nullptr; ///< has the focus when the choice of a side is shown
    QLabel* heading_ = nullptr;
    QFrame* control_ = nullptr;
    QLabel* controlTitle_ = nullptr;
    QFrame* factors_ = nullptr;
    QRadioButton* strengths_ = nullptr;
    QRadioButton* coefficients_ = nullptr;
    Field* factorFields_[2] = {};
    QWidget* layerSheet_ = nullptr;
    QPushButton* cmdFinished_ = nullptr;
};

} // namespace korvane
