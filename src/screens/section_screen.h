// The screens that are lists of sections: KEYIN, SURCHCON, HORCON.
#pragma once

#include "problem/loads.h"
#include "screens/data_screen.h"
#include "screens/section_buttons.h"

#include <optional>

namespace korvane {

/// A line of a list: its button and the screen that the button shows.
struct ListedSection {
    SectionButton button;
    Screen screen;
    std::optional<Load> loadKind = {}; ///< what the screen of a load is told to show
};

struct SectionList {
    const char* screen;
    const char* windowTitle;
    const char* titlePanel;
    const char* title;
    const char* frame;
    std::vector<ListedSection> sections;
    const char* requiredNote = nullptr; ///< Label2, under the buttons
};

/// Shows a list. Finished and the frame's cross are one.
class SectionScreen : public DataScreen {
    Q_OBJECT

  public:
    SectionScreen(ScreenContext& context, const SectionList* list);

  protected:
    /// Paints each panel by its rule.
    void highlightAll();
    void setTitle(const QString& title);
    QPushButton* button(int section) const {
        return controls_.at(static_cast<std::size_t>(section)).button;
    }
    QFrame* panel(int section) const {
        return controls_.at(static_cast<std::size_t>(section)).panel;
    }

    void frameClose() override { finishStage(); }
    void finishStage() override { accept(); }

  private:
    void openSection(int section);

    const SectionList& list_;
    std::vector<SectionControl> controls_;
    QLabel* title_ = nullptr;
};

} // namespace korvane
