// SURCHARG and HORLOAD: the loads of one kind.
#pragma once

#include "screens/data_screen.h"
#include "screens/field_table.h"
#include "screens/load_kinds.h"

#include <memory>

namespace korvane {

/// Shows the kind that the session's LoadKind names, one of those that the screen is for.
class LoadScreen : public DataScreen {
    Q_OBJECT

  public:
    LoadScreen(ScreenContext& context, const char* name, const char* title,
               std::span<const LoadRules> shown);

  protected:
    void finishStage() override;
    void takeCounts(Problem& typed) override;

  private:
    struct Arrangement;

    void createSide(QWidget* frame, int side, const Arrangement& at);
    void createButtons(QWidget* frame, const Arrangement& at);
    void createDelete(QWidget* frame, int side, const Place& where);
    void fillSide(int side);

    FieldTable& table(int side) { return *tables_[static_cast<std::size_t>(side - 1)]; }
    int& count(int side) { return rulesOf(kind_.load.count).at(problem(), side); }
    bool sharesDelete() const;
    /// The delete button that a side's data show.
    QPushButton* deleteButton(int side) { return deletes_[sharesDelete() ? 0 : side - 1]; }
    void clickDelete(int side);
    void deleteSide(int side);
    Fault readSide(int side);

    const LoadKind& kind_;
    std::unique_ptr<FieldTable> tables_[2];
    QPushButton* deletes_[2] = {};
    QPushButton* finished_ = nullptr;
};

} // namespace korvane
