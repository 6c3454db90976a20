// Runs korvane-study beside the desktop program.
#pragma once

#include <QObject>
#include <QProcess>
#include <QString>
#include <QTimer>

namespace korvane {

/// The study program: beside this one, else in PATH, else in a build folder. Empty where there is
/// none.
QString studyProgram();

/// One command of the study program at a time. It ends with the object, and with this process
/// however that ends.
class StudyProcess : public QObject {
    Q_OBJECT

  public:
    enum class End { Well, Cancelled, Fault };

    explicit StudyProcess(QObject* parent = nullptr);
    ~StudyProcess() override;

    void start(const QStringList& arguments);
    bool isRunning() const { return process_.state() != QProcess::NotRunning; }
    /// Ends it as Ctrl+C does, and at once where it does not heed that.
    void cancel();

  signals:
    /// Variants that are done, of all.
    void progressed(double done, double size);
    /// The command has ended. `fault` tells what went wrong, in the program's own words where it
    /// has some.
    void ended(korvane::StudyProcess::End end, const QString& fault);

  private:
    void readLines();
    void takeLine(const QString& line);
    void finish(int status, QProcess::ExitStatus how);

    QProcess process_;
    QTimer patience_; ///< after a cancel
    QString rest_;    ///< of a line that is not whole yet
    QString told_;    ///< lines other than progress
    bool cancelled_ = false;
};

} // namespace korvane
