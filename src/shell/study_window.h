// The window of studies: a question about the wall, its run by korvane-study, the answer.
#pragma once

#include "shell/study_process.h"
#include "survey/question.h"
#include "widgets/screen_window.h"

#include <QTemporaryDir>

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace korvane {

class StudyAnswer;
class StudyTable;

/// The question stands on one page, the answer on another. Files are made in a temporary folder
/// that goes with the window, until the user saves them.
class StudyWindow : public ScreenWindow {
    Q_OBJECT

  public:
    explicit StudyWindow(ScreenContext& context);
    ~StudyWindow() override;

  protected:
    /// Also cancels: the window closes once the program has ended.
    void frameClose() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    enum class Work { None, Variants, Report };

    QAction* addEntry(const char* name, const QString& caption, void (StudyWindow::*slot)());
    void createMenus();
    QWidget* createQuestion();
    QWidget* createOutputs();
    void createContent();

    study::Question question();
    std::string file(const char* name) const;
    /// Seconds that a variant takes here.
    double measured();
    /// Buttons, entries and the line below the question.
    void mirror();
    QString stateText(const study::Question& asked) const;

    void start();
    void cancel();
    void progressed(double done, double size);
    void ended(StudyProcess::End end, const QString& fault);
    void takeAnswer();
    void fail(const QString& fault);

    void saveStudy();
    void saveReport();
    void takeReport();
    void saveFigure();
    void copy();

    QTemporaryDir folder_;
    StudyProcess process_;
    Work work_ = Work::None;
    study::Question asked_; ///< of the run at work and of the answer
    bool answered_ = false;
    bool closing_ = false;   ///< as soon as the work ends
    std::string reportName_; ///< chosen for the report at work
    double seconds_ = 0;     ///< of a variant
    QString losses_;         ///< what the study's wall differs in

    QTabWidget* pages_ = nullptr;
    QRadioButton* grid_ = nullptr;
    StudyTable* table_ = nullptr;
    QListWidget* outputs_ = nullptr;
    QLabel* state_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QPushButton* cmdRun_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    StudyAnswer* answer_ = nullptr;
    QAction* saveStudy_ = nullptr;
    QAction* saveReport_ = nullptr;
    QAction* saveFigure_ = nullptr;
    QAction* copy_ = nullptr;
};

} // namespace korvane
