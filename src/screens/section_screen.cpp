#include "screens/section_screen.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace korvane {

namespace {

constexpr double SheetWidth = 6000; // twips, all of these
constexpr double TitleTop = 240;
constexpr double FrameTop = 900;
constexpr double FrameMargin = 240;
constexpr double PanelHeight = 630;
constexpr double PanelPitch = 750;
constexpr double NoteHeight = 330;

} // namespace

SectionScreen::SectionScreen(ScreenContext& context, const SectionList* list)
    : DataScreen(context, list->screen, list->windowTitle), list_(*list) {
    const auto count = static_cast<double>(list_.sections.size());
    const double frameHeight = count * PanelPitch + 2 * FrameMargin - (PanelPitch - PanelHeight);
    QWidget* sheet = makeSheet(SheetWidth, FrameTop + frameHeight + 2 * NoteHeight + 1200);
    title_ = makeTitle(sheet, list_.titlePanel, list_.title,
                       {FrameMargin, TitleTop, SheetWidth - 2 * FrameMargin, 480});
    QFrame* frame = makeGroup(sheet, list_.frame, {}, {0, FrameTop, SheetWidth, frameHeight});

    std::vector<QWidget*> order;
    double top = FrameMargin;
    for (int section = 0; section < static_cast<int>(list_.sections.size()); ++section) {
        const ListedSection& listed = list_.sections[static_cast<std::size_t>(section)];
        controls_.push_back(makeSectionControl(
            frame, listed.button, {FrameMargin, top, SheetWidth - 2 * FrameMargin, PanelHeight}));
        QPushButton* button = controls_.back().button;
        connect(button, &QPushButton::clicked, this,
                [this, section] { run([&] { openSection(section); }); });
        order.push_back(button);
        top += PanelPitch;
    }

    top = FrameTop + frameHeight + 180;
    order.push_back(addButton(sheet, "cmdFinished", "&Finished",
                              {(SheetWidth - 1800) / 2, top, 1800, 495},
                              [this] { finishStage(); }));
    top += 495 + 120;
    if (list_.requiredNote != nullptr) {
        makeLabel(sheet, "Label2", list_.requiredNote, {0, top, SheetWidth, NoteHeight});
        top += NoteHeight;
    }
    makeLabel(sheet, "Label5", HighlightNote, {0, top, SheetWidth, NoteHeight});
    setFocusOrder(order);
    highlightAll();
    order.front()->setFocus(Qt::TabFocusReason);
}

void SectionScreen::highlightAll() {
    for (std::size_t section = 0; section < controls_.size(); ++section) {
        highlight(controls_[section].panel, list_.sections[section].button.hasData(session()));
    }
}

void SectionScreen::setTitle(const QString& title) {
    title_->setText(title);
}

void SectionScreen::openSection(int section) {
    const ListedSection& listed = list_.sections[static_cast<std::size_t>(section)];
    // A click or a letter leaves the focus where it was; the section returns to its own button.
    controls_[static_cast<std::size_t>(section)].button->setFocus(Qt::TabFocusReason);
    if (listed.loadKind) {
        session().LoadKind = *listed.loadKind;
    }
    context().desktop.ShowScreen(listed.screen, session());
    highlight(controls_[static_cast<std::size_t>(section)].panel, listed.button.hasData(session()));
}

} // namespace korvane
