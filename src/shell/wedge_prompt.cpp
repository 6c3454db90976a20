#include "shell/wedge_prompt.h"

#include "commands/commands.h"
#include "widgets/geometry.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace korvane {

namespace {

QLabel* makeLabel(const char* name, const char* text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setFrameStyle(QFrame::Panel | QFrame::Raised);
    label->setMargin(pixels(180));
    return label;
}

} // namespace

WedgePrompt::WedgePrompt(ScreenContext& context)
    : ScreenWindow(context, "WEDGMETH", "WEDGE METHOD?") {
    // No cross that would be refused.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    addHelpMenu();
    auto* fixed = new QPushButton("&Fixed Surface");
    fixed->setObjectName("cmdFixed");
    auto* sweep = new QPushButton("&Sweep Search");
    sweep->setObjectName("cmdSweep");
    const auto choose = [this](WedgeMethod method) {
        run([&] {
            session().wedge = method;
            accept();
        });
    };
    connect(fixed, &QPushButton::clicked, this, [choose] { choose(WedgeMethod::FixedSurface); });
    connect(sweep, &QPushButton::clicked, this, [choose] { choose(WedgeMethod::Sweep); });

    auto* layout = new QVBoxLayout(canvas());
    layout->setSpacing(pixels(180));
    layout->addWidget(makeLabel("panWedgMeth", "WEDGE METHOD REQUIRED FOR SOIL PRESSURES"));
    layout->addWidget(makeLabel("Panel3D3", "Select Desired Wedge Method"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {fixed, sweep}) {
        button->setAutoDefault(true);
        button->setMinimumHeight(pixels(495));
        buttons->addWidget(button);
    }
    layout->addLayout(buttons);
    resize(pixels(6600), menuBar()->sizeHint().height() + layout->sizeHint().height());
    fixed->setFocus();
}

void WedgePrompt::showEvent(QShowEvent* event) {
    ScreenWindow::showEvent(event);
    centreOnScreen(this);
}

} // namespace korvane
