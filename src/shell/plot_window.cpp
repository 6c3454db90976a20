#include "shell/plot_window.h"

#include "commands/command_scope.h"
#include "commands/files.h"
#include "runtime/file_text.h"
#include "shell/painter_surface.h"
#include "widgets/gate.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>

namespace korvane {

namespace {

constexpr SaveDialog FigureDialog{
    "SAVE FIGURE",
    "PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg|PDF document (*.pdf)|*.pdf"};

/// One picture: the drawing at its upper edge, mapped by one factor so that its view fits.
class PlotPicture : public QWidget {
  public:
    PlotPicture(QWidget* parent, const PlotData& shown, const PlotView& view)
        : QWidget(parent), data_(shown), view_(view) {}

  protected:
    void paintEvent(QPaintEvent*) override {
        enterPaint([this] {
            QPainter painter(this);
            painter.fillRect(rect(), QColor(PictureBack.red, PictureBack.green, PictureBack.blue));
            const double viewWidth = PictureView.b.x - PictureView.a.x;
            const double viewHeight = PictureView.b.y - PictureView.a.y;
            const double factor = std::min(width() / viewWidth, height() / viewHeight);
            painter.translate((width() - factor * viewWidth) / 2, 0);
            painter.scale(factor, factor);
            PainterSurface surface(painter);
            drawPlot(surface, data_, view_, Medium::Screen);
        });
    }

  private:
    const PlotData data_; ///< references: they stay with the session
    const PlotView& view_;
};

QString entryName(const PlotEntry& entry) {
    return entry.index < 0 ? QString(entry.objectName)
                           : QString("%1_%2").arg(entry.objectName).arg(entry.index);
}

} // namespace

PlotWindow::PlotWindow(ScreenContext& context, PlotScreenName name, const PrintServices* services)
    : ScreenWindow(context, {}, plotScreen(name).title), screen_(plotScreen(name)),
      services_(services), view_(openPlotScreen(session().plotData(), name)) {
    static constexpr const char* names[] = {"CANPLOT",  "FREEPLOT", "FIXDPLOT",
                                            "VUSOLPLT", "VUINPLOT", "ROWECURV"};
    setObjectName(names[static_cast<int>(name)]);
    createMenus();
    createPictures();
    createLabelsAndButtons();
    mirror();
}

void PlotWindow::createMenus() {
    std::map<std::string_view, QMenu*> menus;
    for (const PlotEntry& entry : screen_.entries) {
        QAction* action = nullptr;
        if (entry.kind == PlotEntry::Kind::Menu) {
            QMenu* menu = menuBar()->addMenu(entry.caption);
            menu->setObjectName(entry.objectName);
            menus[entry.objectName] = menu;
            action = menu->menuAction();
        } else {
            const std::string_view menu = entry.menu;
            action = menu.empty() ? menuBar()->addAction(entry.caption)
                                  : menus.at(menu)->addAction(entry.caption);
            action->setObjectName(entryName(entry));
            connect(action, &QAction::triggered, this, [this, &entry] {
                run([&] {
                    if (entry.kind == PlotEntry::Kind::Finish) {
                        accept();
                    } else {
                        choose(entry.plotNumber);
                    }
                });
            });
        }
        entries_.emplace_back(action, &entry);
    }
    addHelpMenu();
}

void PlotWindow::createPictures() {
    auto* layout = new QVBoxLayout(canvas());
    layout->setContentsMargins(0, 0, 0, 0);
    for (int number = 1; number <= screen_.pictureCount; ++number) {
        auto* picture = new PlotPicture(canvas(), session().plotData(), view_);
        picture->setObjectName(QString("Picture%1").arg(number));
        layout->addWidget(picture);
        pictures_.push_back(picture);
    }
}

std::size_t PlotWindow::headingLabelCount() const {
    constexpr std::size_t PlotLabels = 2;
    return screen_.name == PlotScreenName::ROWECURV ? view_.headings.size() : PlotLabels;
}

void PlotWindow::createLabelsAndButtons() {
    auto* layout = qobject_cast<QVBoxLayout*>(canvas()->layout());
    auto* row = new QHBoxLayout;
    row->setContentsMargins(pixels(240), pixels(60), pixels(240), pixels(60));
    auto* headings = new QVBoxLayout;
    for (std::size_t place = 0; place < headingLabelCount(); ++place) {
        auto* label = new QLabel(canvas());
        label->setObjectName(QString("Label1_%1").arg(place));
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true); // a long line must not make the picture wider than the window
        if (place < view_.headings.size()) {
            label->setText(shownText(view_.headings[place]));
        }
        headings->addWidget(label);
        labels_.push_back(label);
    }
    row->addLayout(headings, 1);
    const auto button = [&](const char* name, const char* caption, void (PlotWindow::*slot)()) {
        auto* made = new QPushButton(caption, canvas());
        made->setObjectName(name);
        made->setAutoDefault(true);
        row->addWidget(made);
        connect(made, &QPushButton::clicked, this, [this, slot] { run([&] { (this->*slot)(); }); });
        return made;
    };
    cmdDone_ = button("cmdDone", DoneCaption, &PlotWindow::endPlot);
    cmdPrint_ = button("cmdPrint", PrintCaption, &PlotWindow::print);
    cmdSave_ = button("cmdSave", SaveCaption, &PlotWindow::saveFigure);
    layout->addLayout(row);
    layout->addStretch();
}

void PlotWindow::mirror() {
    for (const auto& [action, entry] : entries_) {
        const bool enabled = korvane::isEnabled(view_, *entry);
        action->setEnabled(enabled);
        // A disabled entry gives its mnemonic up, so that Alt+D reaches Done and not Deflections.
        QString caption = entry->caption;
        action->setText(enabled ? caption : caption.remove('&'));
    }
    for (std::size_t place = 0; place < pictures_.size(); ++place) {
        const bool shown = view_.showing && static_cast<int>(place) + 1 == view_.PlotNumber;
        pictures_[place]->setVisible(shown);
    }
    for (QLabel* label : labels_) {
        label->setVisible(view_.showing);
    }
    for (QPushButton* button : {cmdDone_, cmdPrint_, cmdSave_}) {
        button->setVisible(view_.showing);
    }
    if (view_.showing) {
        cmdDone_->setFocus();
    }
}

void PlotWindow::resizeEvent(QResizeEvent* event) {
    ScreenWindow::resizeEvent(event);
    for (QWidget* picture : pictures_) {
        picture->setFixedHeight(static_cast<int>(std::lround(height() * PictureHeightShare)));
    }
}

void PlotWindow::choose(int plotNumber) {
    choosePlot(view_, plotNumber);
    mirror();
}

void PlotWindow::endPlot() {
    if (finishPlot(view_)) {
        accept();
        return;
    }
    mirror();
}

void PlotWindow::frameClose() {
    if (closePlotFrame(view_)) {
        accept();
        return;
    }
    mirror();
}

void PlotWindow::print() {
    for (QPushButton* button : {cmdDone_, cmdPrint_, cmdSave_}) {
        button->hide();
    }
    context().desktop.SetBusy(true);
    runCommand(session(), context().desktop, [this] {
        printPages(this, *services_, windowTitle(), plotPage(session().plotData(), view_));
    });
    context().desktop.SetBusy(false);
    mirror();
    cmdPrint_->setFocus();
}

void PlotWindow::saveFigure() {
    runCommand(session(), context().desktop, [this] {
        const std::string name = chooseSaveName(session(), context().desktop, FigureDialog);
        if (!name.empty()) {
            saveFile(name, figureFile(session().plotData(), view_, name));
        }
    });
}

} // namespace korvane
