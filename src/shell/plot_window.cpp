#include "shell/plot_window.h"

#include "commands/command_scope.h"
#include "commands/files.h"
#include "commands/problem_name.h"
#include "plots/figures.h"
#include "plots/rowe_plot.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"
#include "shell/figure_file.h"
#include "shell/plot_picture.h"
#include "widgets/gate.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>

namespace korvane {

namespace {

constexpr SaveDialog FigureDialog{FigureDialogTitle, FigureFilter, nullptr, FigureExtensions};

QString entryName(const PlotEntry& entry) {
    return entry.index < 0 ? QString(entry.objectName)
                           : QString("%1_%2").arg(entry.objectName).arg(entry.index);
}

} // namespace

PlotWindow::PlotWindow(ScreenContext& context, PlotScreenName name, const PrintServices* services)
    : ScreenWindow(context, {}, plotScreen(name).title), screen_(plotScreen(name)),
      services_(services), view_(openPlotScreen(session().plotData(), name)) {
    setObjectName(screen_.objectName);
    createMenus();
    createPictures();
    createBand();
    createLabelsAndButtons();
    createSectionTable();
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
    choice_ = new QLabel(canvas());
    choice_->setObjectName("lblChoice");
    choice_->setTextFormat(Qt::PlainText);
    choice_->setAlignment(Qt::AlignCenter);
    choice_->setWordWrap(true);
    choice_->setMargin(pixels(720));
    layout->addWidget(choice_, 1);
    for (int number = 1; number <= screen_.pictureCount; ++number) {
        auto* picture = new PlotPicture(canvas(), session().plotData(), view_);
        picture->setObjectName(QString("Picture%1").arg(number));
        connect(picture, &PlotPicture::pointedAt, this, [this](double y) { point(y); });
        connect(picture, &PlotPicture::pointerLeft, this, [this] { point({}); });
        layout->addWidget(picture);
        pictures_.push_back(picture);
    }
}

void PlotWindow::createBand() {
    const auto add = [this](const char* name) {
        auto* label = new QLabel(canvas());
        label->setObjectName(name);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setContentsMargins(pixels(240), 0, pixels(240), 0);
        qobject_cast<QVBoxLayout*>(canvas()->layout())->addWidget(label);
        return label;
    };
    extremes_ = add("lblExtremes");
    extremes_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    pointed_ = add("lblPointed");
}

void PlotWindow::createSectionTable() {
    if (screen_.name != PlotScreenName::ROWECURV) {
        canvas()->layout()->addItem(
            new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding));
        return;
    }
    const auto sections = roweSections(session().sections, session().workspace.reduction());
    auto* table = new QTableWidget(static_cast<int>(sections.size()), 4, canvas());
    table->setObjectName("tblSections");
    table->setAccessibleName("Sections and their places in the picture");
    table->setHorizontalHeaderLabels({"Section", "LOG(H^4/EI)", "M/Mo", "In the picture"});
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    int row = 0;
    for (const RoweSection& section : sections) {
        const QString texts[] = {shownText(section.name),
                                 QString::fromStdString(formatNumber(section.logRigidity, "0.00")),
                                 QString::fromStdString(formatNumber(section.momentRatio, "0.00")),
                                 section.leftOut.empty()
                                     ? QString("yes")
                                     : "left out: " + QString::fromStdString(section.leftOut)};
        for (int column = 0; column < 4; ++column) {
            auto* item = new QTableWidgetItem(texts[column]);
            if (column == 1 || column == 2) {
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            }
            table->setItem(row, column, item);
        }
        ++row;
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    constexpr int rowsAtLeast = 4; // the heads among them
    table->setMinimumHeight(rowsAtLeast * table->verticalHeader()->defaultSectionSize());
    qobject_cast<QVBoxLayout*>(canvas()->layout())->addWidget(table, 1);
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
    choice_->setVisible(!view_.showing);
    choice_->setText(choiceText());
    mirrorBand();
    for (QPushButton* button : {cmdDone_, cmdPrint_, cmdSave_}) {
        button->setVisible(view_.showing);
    }
    if (view_.showing) {
        cmdDone_->setFocus();
    }
}

QString PlotWindow::choiceText() const {
    QStringList names;
    for (const auto& [action, entry] : entries_) {
        const bool inBar = *entry->menu == '\0' && entry->kind != PlotEntry::Kind::Finish;
        if (inBar && action->isEnabled()) {
            names.append(action->text().remove('&'));
        }
    }
    return "Choose a diagram from the menu above: " + names.join(", ") + ".";
}

void PlotWindow::mirrorBand() {
    readings_ = view_.showing ? plotReadings(session().plotData(), view_) : PlotReadings();
    QStringList lines;
    for (const std::string& line : extremeLines(readings_, session().units)) {
        lines.append(shownText(line));
    }
    extremes_->setText(lines.join('\n'));
    extremes_->setVisible(!lines.empty());
    pointed_->setVisible(!lines.empty());
    point({});
    if (view_.showing) {
        QWidget* picture = pictures_.at(static_cast<std::size_t>(view_.PlotNumber - 1));
        picture->setAccessibleName(shownText(readings_.title));
        picture->setAccessibleDescription(shownText(plotDescription(view_, readings_)));
    }
}

void PlotWindow::point(std::optional<double> y) {
    const QString text = y ? shownText(valueLine(readings_, *y, session().units)) : QString();
    pointed_->setText(text.isEmpty() ? "Point at the diagram for its values." : text);
}

void PlotWindow::resizeEvent(QResizeEvent* event) {
    ScreenWindow::resizeEvent(event);
    for (QWidget* picture : pictures_) {
        picture->setFixedHeight(static_cast<int>(std::lround(height() * screen_.pictureShare)));
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
        const PrintedDocument document{
            shownText(readings_.title + " - " + documentTitle(session())),
            shownText(problemStem(session()) + "-" + figureName(view_))};
        printPages(this, *services_, document, plotPage(session().plotData(), view_));
    });
    context().desktop.SetBusy(false);
    mirror();
    cmdPrint_->setFocus();
}

void PlotWindow::saveFigure() {
    runCommand(session(), context().desktop, [this] {
        const std::string name = chooseSaveName(session(), context().desktop, FigureDialog,
                                                problemStem(session()) + "-" + figureName(view_));
        if (!name.empty()) {
            saveFile(name, figureFile(session().plotData(), view_, name));
        }
    });
}

} // namespace korvane
