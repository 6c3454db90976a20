#include "shell/study_process.h"

#include "widgets/shown_text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <csignal>

#include <sys/prctl.h>

namespace korvane {

namespace {

constexpr const char* ProgramName = "korvane-study";
constexpr int PatienceMilliseconds = 5000;

/// In the new process: this program waits for its signals, the other takes them as they come; it
/// ends with this one.
void prepareChild() {
    sigset_t all;
    sigfillset(&all);
    ::sigprocmask(SIG_UNBLOCK, &all, nullptr);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
}

double numberOf(QString digits) {
    return digits.remove(',').toDouble();
}

} // namespace

QString studyProgram() {
    const QDir here(QCoreApplication::applicationDirPath());
    QString beside = QStandardPaths::findExecutable(ProgramName, {here.path()});
    if (!beside.isEmpty()) {
        return beside;
    }
    const QString inPath = QStandardPaths::findExecutable(ProgramName);
    return !inPath.isEmpty()
               ? inPath
               : QStandardPaths::findExecutable(ProgramName, {here.filePath("../study")});
}

StudyProcess::StudyProcess(QObject* parent) : QObject(parent) {
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setChildProcessModifier(prepareChild);
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, &process_, &QProcess::kill);
    connect(&process_, &QProcess::readyReadStandardError, this, &StudyProcess::readLines);
    connect(&process_, &QProcess::finished, this, &StudyProcess::finish);
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            emit ended(End::Fault, QString("%1 cannot be started: %2.")
                                       .arg(process_.program(), process_.errorString()));
        }
    });
}

StudyProcess::~StudyProcess() {
    disconnect(&process_, nullptr, this, nullptr);
    if (isRunning()) {
        process_.kill();
        process_.waitForFinished();
    }
}

void StudyProcess::start(const QStringList& arguments) {
    rest_.clear();
    told_.clear();
    cancelled_ = false;
    process_.start(studyProgram(), arguments, QIODevice::ReadOnly);
}

void StudyProcess::cancel() {
    if (isRunning() && !cancelled_) {
        cancelled_ = true;
        process_.terminate();
        patience_.start(PatienceMilliseconds);
    }
}

void StudyProcess::readLines() {
    const QByteArray bytes = process_.readAllStandardError();
    rest_ += shownText(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    for (qsizetype end = rest_.indexOf('\n'); end >= 0; end = rest_.indexOf('\n')) {
        takeLine(rest_.left(end));
        rest_.remove(0, end + 1);
    }
}

void StudyProcess::takeLine(const QString& line) {
    static const QRegularExpression progress("^([\\d,]+) of ([\\d,]+), ");
    const auto match = progress.match(line);
    if (match.hasMatch()) {
        emit progressed(numberOf(match.captured(1)), numberOf(match.captured(2)));
    } else if (!line.trimmed().isEmpty()) {
        told_ += (told_.isEmpty() ? "" : "\n") + line;
    }
}

void StudyProcess::finish(int status, QProcess::ExitStatus how) {
    patience_.stop();
    readLines();
    takeLine(rest_);
    rest_.clear();
    if (how == QProcess::NormalExit && status == 0) {
        emit ended(End::Well, {});
    } else if (cancelled_) {
        emit ended(End::Cancelled, {});
    } else {
        const QString ending = how == QProcess::CrashExit
                                   ? QString("korvane-study was ended from outside.")
                                   : QString("korvane-study ended with status %1.").arg(status);
        emit ended(End::Fault, told_.isEmpty() ? ending : told_);
    }
}

} // namespace korvane
