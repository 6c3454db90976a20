// WATER: water elevations with seepage, or net water pressures.
#pragma once

#include "screens/data_screen.h"
#include "screens/entry.h"
#include "screens/field_table.h"
#include "screens/section_buttons.h"

namespace korvane {

/// A list leads to one of the two forms of the data or deletes them all.
class WaterScreen : public DataScreen {
    Q_OBJECT

  public:
    explicit WaterScreen(ScreenContext& context);

  protected:
    void finishStage() override;
    void takeCounts(Problem& typed) override;

  private:
    enum class Stage { List, Elevations, Pressures };
    /// Fields by their places in the table of the source file.
    enum Number { UnitWeight, ElevRight, ElevLeft, SeepElev, SeepGradient };

    void createList();
    void createElevations();
    void createPressures();
    void show(Stage stage);
    void highlightKind(WaterData kind);

    void openElevations();
    void openPressures();
    void deleteAll();

    /// The option of a way of seepage.
    QRadioButton*& option(Seepage seepage);
    void chooseSeepage(Seepage seepage);
    /// What the fields of the seepage show and allow.
    void showSeepage(Seepage seepage);

    /// The steps of finishing each form. A false ends it: a box was shown.
    void finishElevations();
    bool elevationsComplete();
    bool readElevations();
    bool readSeepage();
    bool readGradient();
    void finishPressures();
    Fault readPressures();

    bool isEmpty(Number number) const { return fields_[number]->entry().empty(); }
    Fault read(Number number);
    /// Shows a box; Cancel deletes the data and closes.
    Answer offerToDelete(const MessageBox& box);
    void dropData();

    Stage stage_ = Stage::List;
    FieldTable pressures_;

    QFrame* list_ = nullptr;
    QPushButton* openedForm_ = nullptr; ///< of the form that was opened last
    SectionControl elevationsControl_, pressuresControl_, deleteControl_;
    QFrame* elevations_ = nullptr;
    QFrame* seepage_ = nullptr;
    QFrame* pressureFrame_ = nullptr;
    Field* fields_[5] = {};
    QLabel* labels_[5] = {};
    QRadioButton* options_[3] = {};
};

} // namespace korvane
