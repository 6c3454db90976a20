// ROWEPILE: the sheet pile sections of the moment reduction.
#pragma once

#include "screens/data_screen.h"
#include "screens/field_table.h"

#include <array>

namespace korvane {

/// First the stress and modulus of the default sections are accepted, then up to five sections are
/// added. It changes nothing of the problem.
class PileScreen : public DataScreen {
    Q_OBJECT

  public:
    explicit PileScreen(ScreenContext& context);

  protected:
    void finishStage() override;
    void frameClose() override { finishStage(); }

  private:
    static constexpr int Columns = 5; ///< name, section modulus, inertia, stress, modulus

    PileSections& sections() { return session().sections; }
    void createDefaults(QWidget* sheet);
    void createDefaultFields(QWidget* sheet);
    void createAdditions(QWidget* sheet);
    void showDefaults();
    /// Every default row shows the text of its field.
    void followField(int column);
    /// The points of a column's numbers stand in one line.
    void alignDefaults(int column);
    void alignAdditions(int column);
    void showAdditions();
    void showStage(bool accepted);

    void acceptDefaultFields();
    void finish();
    QWidget* firstBadAddition() const;
    /// After an invalid value: OK keeps all, Cancel returns to the defaults.
    void offerDefaults();

    bool accepted_ = false;
    QLabel* prompt_ = nullptr;
    QFrame* defaultFields_ = nullptr;
    QFrame* addition_ = nullptr;
    QPushButton* cmdDefAccept_ = nullptr;
    QPushButton* cmdDone_ = nullptr;
    FieldTable rows_;
    Field* defaultField_[2] = {};                           ///< stress, modulus
    std::array<std::vector<QLabel*>, Columns> defaultRows_; ///< by column
};

} // namespace korvane
