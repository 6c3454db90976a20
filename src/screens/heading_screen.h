// HEADCONT: heading, control and wall data.
#pragma once

#include "screens/data_screen.h"
#include "screens/entry.h"
#include "screens/field_table.h"

#include <array>

namespace korvane {

/// What is offered depends on the wall type and the mode and changes with their options.
class HeadingScreen : public DataScreen {
    Q_OBJECT

  public:
    explicit HeadingScreen(ScreenContext& context);

  protected:
    void finishStage() override;
    void takeCounts(Problem& typed) override;
    const void* placeOf(const Field& field, Problem& typed) override;

  private:
    /// Fields and options by their places in the tables of the source file.
    enum Number { WallTop, Anchor, FSActive, FSPassive, FSGiven, WallBottom, Modulus, Inertia };
    enum Option { Cantilever, Anchored, Design, Analysis, OneFactor, GivenFactor };

    void createGroups();
    void createFields();
    void createOptions();
    void fill();
    void fillBlank();
    void fillEditing();
    void showMode(bool design);
    void choose(Option option);

    void readHeading();
    std::string missingItems();
    Fault read(Number number);
    /// An empty or zero factor of a design is replaced by `fallback`.
    Fault readDesignFactor(Number number, double fallback);
    Fault readFactors();
    /// Wall data; what an analysis lacks joins the list.
    Fault readWall(std::string& missing);

    QLabel* title_ = nullptr;
    QPushButton* cmdFinished_ = nullptr;
    FieldTable headings_;
    /// The bytes behind the heading lines as they were filled in.
    std::array<std::string, 4> shownHeadings_;
    std::array<Field*, 8> fields_{};
    std::array<QRadioButton*, 6> options_{};
};

} // namespace korvane
