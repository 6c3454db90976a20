#include "shell/study_window.h"

#include "commands/command_scope.h"
#include "commands/files.h"
#include "commands/problem_name.h"
#include "commands/recovery.h"
#include "problem/input_writer.h"
#include "problem/save_losses.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "shell/figure_file.h"
#include "shell/study_answer.h"
#include "shell/study_table.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <set>

namespace korvane {

namespace {

namespace fs = std::filesystem;

constexpr const char* BaseName = "wall.dat";
constexpr const char* StudyName = "study.toml";
constexpr const char* ResultsFolder = "results";

constexpr SaveDialog StudyDialog{"SAVE STUDY", "Study file (*.toml)|*.toml", nullptr, ".TOML"};
constexpr SaveDialog ReportDialog{"SAVE REPORT", "Report (*.html)|*.html", nullptr, ".HTML|.HTM"};
constexpr SaveDialog FigureDialog{FigureDialogTitle, FigureFilter, nullptr, FigureExtensions};

/// Outputs that are ticked to begin with.
constexpr std::string_view UsualOutputs[] = {"penetration", "anchorForce", "factorOfSafety",
                                             "maxMoment"};

QString durationText(double seconds) {
    constexpr double minute = 60;
    if (seconds < 1) {
        return "less than a second";
    }
    if (seconds < 2 * minute) {
        return QString("about %1 s").arg(std::ceil(seconds));
    }
    return QString("about %1 min").arg(std::ceil(seconds / minute));
}

/// What the study's wall differs in from the one in memory, a line for each rule.
QString lossesText(const Problem& problem) {
    std::set<const SaveRule*> told;
    QString text;
    for (const SaveLoss& loss : lossesOfSave(problem)) {
        const bool isHeading = loss.rule == saveRules().data();
        if (!isHeading && told.insert(loss.rule).second) {
            text += QString("%1: %2.\n").arg(loss.rule->value, loss.rule->effect);
        }
    }
    return text.isEmpty() ? text
                          : "The study is made of the wall as an input file holds it.\n" + text;
}

} // namespace

StudyWindow::StudyWindow(ScreenContext& context)
    : ScreenWindow(context, "STUDY", "Study"),
      folder_(QDir(shownText(session().files.TempFolder)).filePath("korvane-study-XXXXXX")),
      seconds_(measured()), losses_(lossesText(problem())) {
    session().files.StudyFolder = bytesOf(folder_.isValid() ? folder_.path() : QString());
    listTemporaryFiles(session());
    createMenus();
    createContent();
    connect(&process_, &StudyProcess::progressed, this, &StudyWindow::progressed);
    connect(
        &process_, &StudyProcess::ended, this,
        [this](StudyProcess::End end, const QString& fault) { run([&] { ended(end, fault); }); });
    mirror();
    table_->setFocus();
}

StudyWindow::~StudyWindow() {
    session().files.StudyFolder.clear(); // it goes with this object
}

QAction* StudyWindow::addEntry(const char* name, const QString& caption,
                               void (StudyWindow::*slot)()) {
    QAction* action = menuBar()->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [this, slot] { run([&] { (this->*slot)(); }); });
    return action;
}

void StudyWindow::createMenus() {
    addEntry("mnuFinished", "&Finished", &StudyWindow::frameClose);
    saveStudy_ = addEntry("mnuSaveStudy", "&Save study...", &StudyWindow::saveStudy);
    saveReport_ = addEntry("mnuSaveReport", "Save re&port...", &StudyWindow::saveReport);
    saveFigure_ = addEntry("mnuSaveFigure", "Save fig&ure...", &StudyWindow::saveFigure);
    copy_ = addEntry("mnuCopy", "&Copy", &StudyWindow::copy);
    addHelpMenu();
}

QWidget* StudyWindow::createOutputs() {
    auto* side = new QWidget;
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    outputs_ = new QListWidget;
    outputs_->setObjectName("lstOutputs");
    outputs_->setAccessibleName("Outputs");
    frameTicks(*outputs_);
    for (const std::string_view name : study::outputNames(problem())) {
        auto* item = new QListWidgetItem(shownText(name), outputs_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        const bool usual = std::find(std::begin(UsualOutputs), std::end(UsualOutputs), name) !=
                           std::end(UsualOutputs);
        item->setCheckState(usual ? Qt::Checked : Qt::Unchecked);
    }
    outputs_->setCurrentRow(0);
    outputs_->setFixedWidth(outputs_->sizeHintForColumn(0) + pixels(600));
    connect(outputs_, &QListWidget::itemChanged, this, [this] { mirror(); });
    auto* label = new QLabel("Outpu&ts");
    label->setBuddy(outputs_);
    layout->addWidget(label);
    layout->addWidget(outputs_, 1);
    return side;
}

QWidget* StudyWindow::createQuestion() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* kinds = new QHBoxLayout;
    auto* single = new QRadioButton("&One at a time: low and high of each number (tornado)");
    single->setObjectName("optOneAtATime");
    single->setChecked(true);
    grid_ = new QRadioButton("&Grid: every value with every other (curves)");
    grid_->setObjectName("optGrid");
    kinds->addWidget(single);
    kinds->addWidget(grid_);
    kinds->addStretch(1);
    layout->addLayout(kinds);
    table_ = new StudyTable(problem(), session().units);
    auto* label = new QLabel("Numbers that &vary");
    label->setBuddy(table_);
    auto* numbers = new QVBoxLayout;
    numbers->addWidget(label);
    numbers->addWidget(table_, 1);
    auto* middle = new QHBoxLayout;
    middle->addLayout(numbers, 1);
    middle->addWidget(createOutputs());
    layout->addLayout(middle, 1);
    state_ = new QLabel;
    state_->setObjectName("lblState");
    state_->setTextFormat(Qt::PlainText);
    state_->setWordWrap(true);
    layout->addWidget(state_);
    connect(grid_, &QRadioButton::toggled, this, [this](bool isGrid) {
        table_->showSteps(isGrid);
        mirror();
    });
    connect(table_, &StudyTable::changed, this, [this] { mirror(); });
    connect(table_, &StudyTable::refused, this, [this](const QString& why) {
        state_->setText(why);
        QApplication::beep();
    });
    table_->showSteps(false);
    return page;
}

void StudyWindow::createContent() {
    bar_ = new QProgressBar;
    bar_->setObjectName("barVariants");
    bar_->setAccessibleName("Variants worked out");
    cmdCancel_ = new QPushButton("Ca&ncel");
    cmdCancel_->setObjectName("cmdCancel");
    cmdCancel_->setAutoDefault(true);
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { cancel(); });
    cmdRun_ = new QPushButton("&Run");
    cmdRun_->setObjectName("cmdRun");
    cmdRun_->setAutoDefault(true);
    connect(cmdRun_, &QPushButton::clicked, this, [this] { run([this] { start(); }); });
    answer_ = new StudyAnswer;
    pages_ = new QTabWidget;
    pages_->setObjectName("tabPages");
    pages_->addTab(createQuestion(), "&Question");
    pages_->addTab(answer_, "&Answer");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(bar_, 1);
    buttons->addStretch(0);
    buttons->addWidget(cmdCancel_);
    buttons->addWidget(cmdRun_);
    auto* layout = new QVBoxLayout(canvas());
    layout->addWidget(pages_, 1);
    layout->addLayout(buttons);
}

study::Question StudyWindow::question() {
    study::Question asked{.asking =
                              grid_->isChecked() ? study::Asking::Grid : study::Asking::OneAtATime,
                          .variables = table_->asked(),
                          .outputs = {},
                          .wedge = session().wedge.value_or(WedgeMethod::Sweep),
                          .units = session().units};
    for (int row = 0; row < outputs_->count(); ++row) {
        if (outputs_->item(row)->checkState() == Qt::Checked) {
            asked.outputs.push_back(bytesOf(outputs_->item(row)->text()));
        }
    }
    return asked;
}

std::string StudyWindow::file(const char* name) const {
    return bytesOf(folder_.filePath(name));
}

double StudyWindow::measured() {
    Options options;
    options.wedge = session().wedge.value_or(WedgeMethod::Sweep);
    Workspace workspace;
    const auto start = std::chrono::steady_clock::now();
    // A wall without a solution takes its time as well.
    static_cast<void>(runGuarded(
        [&] { static_cast<void>(solve(problem(), options, session().sections, workspace)); }));
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

QString StudyWindow::stateText(const study::Question& asked) const {
    const std::string fault = questionFault(asked);
    if (!fault.empty()) {
        return shownText(fault);
    }
    const double variants = variantsOf(asked);
    return QString("%1 variants, %2.")
        .arg(variants, 0, 'f', 0)
        .arg(durationText(variants * seconds_));
}

void StudyWindow::mirror() {
    const study::Question asked = question();
    const bool idle = work_ == Work::None;
    const bool sound = questionFault(asked).empty();
    state_->setText(losses_ + stateText(asked));
    cmdRun_->setEnabled(idle && sound);
    cmdCancel_->setVisible(!idle);
    bar_->setVisible(!idle);
    pages_->widget(0)->setEnabled(idle);
    pages_->setTabEnabled(1, answered_);
    saveStudy_->setEnabled(idle && sound);
    for (QAction* action : {saveReport_, saveFigure_, copy_}) {
        action->setEnabled(idle && answered_);
    }
}

// ---- the run ------------------------------------------------------------------------------------

void StudyWindow::start() {
    asked_ = question();
    answered_ = false;
    const bool written = runCommand(session(), context().desktop, [this] {
        if (!folder_.isValid()) {
            throw RuntimeError(76, session().files.TempFolder);
        }
        QDir(folder_.filePath(ResultsFolder)).removeRecursively();
        writeFile(file(BaseName), inputFileText(problem()));
        writeFile(file(StudyName), studyText(asked_, BaseName));
    });
    if (written) {
        work_ = Work::Variants;
        bar_->setMaximum(0); // busy, until the first numbers come
        process_.start({"run", folder_.filePath(StudyName), "--output",
                        folder_.filePath(ResultsFolder), "--csv", "--progress", "0.2"});
    }
    mirror();
    if (work_ != Work::None) {
        cmdCancel_->setFocus();
    }
}

void StudyWindow::cancel() {
    state_->setText("Cancelling ...");
    process_.cancel();
}

void StudyWindow::progressed(double done, double size) {
    bar_->setMaximum(static_cast<int>(size));
    bar_->setValue(static_cast<int>(done));
}

void StudyWindow::ended(StudyProcess::End end, const QString& fault) {
    const Work ended = work_;
    work_ = Work::None;
    if (closing_) {
        accept();
        return;
    }
    mirror();
    if (end == StudyProcess::End::Cancelled) {
        state_->setText("Cancelled. " + state_->text());
    } else if (end == StudyProcess::End::Fault) {
        fail(fault);
    } else if (ended == Work::Variants) {
        takeAnswer();
    } else {
        takeReport();
    }
    (answered_ ? static_cast<QWidget*>(pages_) : cmdRun_)->setFocus();
}

void StudyWindow::takeAnswer() {
    runCommand(session(), context().desktop, [this] {
        const std::string text = readFile(file(ResultsFolder) + "/results.csv");
        study::ReadRows read = readRows(text, asked_, problem());
        if (!read.fault.empty()) {
            fail(shownText(read.fault));
            return;
        }
        answer_->showAnswer(asked_, std::move(read.rows));
        answered_ = true;
        mirror();
        pages_->setCurrentIndex(1);
    });
}

void StudyWindow::fail(const QString& fault) {
    state_->setText(fault);
    ask({.text = bytesOf(fault), .title = "STUDY", .icon = Icon::Exclamation});
}

void StudyWindow::frameClose() {
    closing_ = true;
    if (work_ != Work::None) {
        cancel();
    } else {
        accept();
    }
}

// ---- what can be taken away ---------------------------------------------------------------------

void StudyWindow::saveStudy() {
    runCommand(session(), context().desktop, [this] {
        const std::string name = chooseSaveName(session(), context().desktop, StudyDialog,
                                                problemStem(session()) + "-study.toml");
        if (name.empty()) {
            return;
        }
        const fs::path base = fs::path(name).replace_extension(".dat");
        const std::string wall = inputFileText(problem());
        if (fs::exists(base) && readFile(base) != wall &&
            ask({.text = "File: " + base.string() +
                         " exists.\nThe study needs the wall there. Do you want to write over it?",
                 .title = "OVERWRITE?",
                 .buttons = Buttons::YesNo,
                 .icon = Icon::Question}) != Answer::Yes) {
            return;
        }
        saveFile(base, wall);
        saveFile(name, studyText(question(), base.filename().string()));
    });
}

void StudyWindow::saveReport() {
    runCommand(session(), context().desktop, [this] {
        reportName_ = chooseSaveName(session(), context().desktop, ReportDialog,
                                     problemStem(session()) + "-study.html");
    });
    if (!reportName_.empty()) {
        work_ = Work::Report;
        bar_->setMaximum(0);
        process_.start({"report", folder_.filePath(ResultsFolder)});
        mirror();
    }
}

void StudyWindow::takeReport() {
    runCommand(session(), context().desktop,
               [this] { saveFile(reportName_, readFile(file(ResultsFolder) + "/report.html")); });
}

void StudyWindow::saveFigure() {
    runCommand(session(), context().desktop, [this] {
        const study::SizedFigure figure = answer_->figure();
        const std::string name = chooseSaveName(session(), context().desktop, FigureDialog,
                                                problemStem(session()) + "-" + figure.figure.name);
        if (name.empty()) {
            return;
        }
        saveFile(name, figureFile({.title = figure.figure.title,
                                   .description = figure.figure.description,
                                   .draw = figure.figure.draw,
                                   .reach =
                                       [&](const Surface&) {
                                           return Corners{{0, 0}, {figure.width, figure.height}};
                                       }},
                                  name));
    });
}

void StudyWindow::copy() {
    QApplication::clipboard()->setText(shownText(answer_->tableText()));
}

void StudyWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy) && copy_->isEnabled()) {
        run([this] { copy(); });
        return;
    }
    ScreenWindow::keyPressEvent(event);
}

} // namespace korvane
