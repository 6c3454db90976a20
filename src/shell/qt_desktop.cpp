#include "shell/qt_desktop.h"

#include "commands/files.h"
#include "commands/problem_name.h"
#include "commands/recovery.h"
#include "shell/main_window.h"
#include "shell/title_window.h"
#include "widgets/geometry.h"
#include "widgets/message_box.h"
#include "widgets/shown_text.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QShortcut>
#include <QSplitter>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace korvane {

namespace {

constexpr SaveDialog PdfDialog{"PRINT TO PDF FILE", "PDF documents (*.pdf)|*.pdf", nullptr, ".PDF"};

/// Icons and kinds of files by their names alone: the toolkit's own looks into each file, which
/// hangs in folders of the system whose files wait for their readers.
class PlainFileIcons : public QFileIconProvider {
  public:
    using QFileIconProvider::icon;
    QIcon icon(const QFileInfo& file) const override {
        return icon(file.isDir() ? IconType::Folder : IconType::File);
    }
    QString type(const QFileInfo& file) const override { return file.isDir() ? "Folder" : "File"; }
};

/// The shipped examples, of the installed program or of its source folder; empty where there are
/// none.
QString examplesFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* place : {KORVANE_EXAMPLES, "../../../../examples"}) {
        QString folder = QDir::cleanPath(program.filePath(place));
        if (QFileInfo(folder).isDir()) {
            return folder;
        }
    }
    return {};
}

QList<QUrl> sidebarFolders(const std::string& current) {
    QList<QUrl> folders;
    for (const QString& folder : {QDir::homePath(), shownText(current), examplesFolder()}) {
        const QUrl url = QUrl::fromLocalFile(folder);
        if (!folder.isEmpty() && !folders.contains(url)) {
            folders.append(url);
        }
    }
    return folders;
}

/// Whether a name ends in what looks like an extension of some other kind: ".jpg", not ".5".
bool hasForeignExtension(const QString& path) {
    constexpr qsizetype longest = 5;
    const QString suffix = QFileInfo(path).suffix();
    return !suffix.isEmpty() && suffix.size() <= longest && suffix.front().isLetter() &&
           std::all_of(suffix.begin(), suffix.end(), [](QChar c) { return c.isLetterOrNumber(); });
}

/// Extension without its point of a filter "caption (*.dat)"; empty for all files.
QString filterExtension(const QString& filter) {
    const qsizetype open = filter.lastIndexOf("(*.");
    return open < 0 ? QString() : filter.mid(open + 3).chopped(1);
}

/// Whether a name can stay as it is: where all files are offered any extension will do, else it
/// must be one of the filters'.
bool hasExtension(const QString& path, const QStringList& filters) {
    const QString suffix = QFileInfo(path).suffix();
    return std::any_of(filters.begin(), filters.end(), [&](const QString& filter) {
        const QString wanted = filterExtension(filter);
        return wanted.isEmpty() ? !suffix.isEmpty()
                                : suffix.compare(wanted, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

QStringList nameFilters(const std::string& filter) {
    const QStringList parts = shownText(filter).split('|');
    QStringList filters;
    for (qsizetype part = 0; part + 1 < parts.size(); part += 2) {
        filters.append(QString(parts[part]).replace("(*.*)", "(*)"));
    }
    return filters;
}

QtDesktop::QtDesktop(ScreenTable screens)
    : openUrl(QDesktopServices::openUrl), screens_(std::move(screens)) {
    printServices.choosePdf = [this](QWidget*, const QString& suggestion) {
        return shownText(chooseSaveName(*session_, *this, PdfDialog, bytesOf(suggestion)));
    };
}

void QtDesktop::attach(Session& session, ShellWindow& window) {
    session_ = &session;
    window_ = &window;
}

QWidget* QtDesktop::activeWindow() const {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : window_.data();
}

void QtDesktop::showHelp(QWidget* active, Help what) {
    session_->HelpCommand = what;
    if (what == Help::About) {
        TitleWindow::showAbout(active, [this](QWidget* about) { showHelp(about, Help::OfWindow); });
    } else {
        help_.show(active, what);
    }
}

Answer QtDesktop::Ask(const MessageBox& box) {
    return askBox(activeWindow(), box, [this](QWidget* over) { showHelp(over, Help::OfWindow); });
}

std::string QtDesktop::ChooseFile(const FileDialog& request) {
    const bool opening = request.kind == FileDialog::Kind::Open;
    PlainFileIcons icons; // before the dialog looks into any other folder
    QFileDialog dialog(activeWindow(), shownText(request.title), QDir::rootPath());
    dialog.setIconProvider(&icons);
    dialog.setDirectory(shownText(request.initialFolder));
    dialog.setSidebarUrls(sidebarFolders(request.initialFolder));
    dialog.resize(QSize(pixels(10800), pixels(7200)).boundedTo(screenRoom(&dialog)));
    if (auto* splitter = dialog.findChild<QSplitter*>("splitter"); splitter != nullptr) {
        splitter->setSizes({pixels(2400), pixels(8400)}); // the folders' names can be read
    }
    dialog.setObjectName("CMDialog1");
    dialog.setAcceptMode(opening ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(opening ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // the program asks itself
    // Dialogs of desktops tell extensions apart by the case of their letters.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    const QStringList filters = nameFilters(request.filter);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(request.filterIndex - 1));
    if (!request.fileName.empty()) {
        dialog.selectFile(shownText(request.fileName));
    }
    QObject::connect(new QShortcut(Qt::Key_F1, &dialog), &QShortcut::activated,
                     [&] { showHelp(&dialog, Help::OfWindow); });
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    QString path = dialog.selectedFiles().value(0);
    const QString extension = filterExtension(dialog.selectedNameFilter());
    if (!opening && !extension.isEmpty() && !hasExtension(path, filters) &&
        !hasForeignExtension(path)) {
        path += (path.endsWith('.') ? "" : ".") + extension;
    }
    return bytesOf(path);
}

void QtDesktop::ShowScreen(Screen screen, Session& session) {
    const auto found = screens_.find(screen);
    if (found == screens_.end()) {
        throw RuntimeError(5);
    }
    ScreenContext context{session, *this, window_.data(),
                          [this](QWidget* active, Help what) { showHelp(active, what); }};
    const bool wasBusy = busy_;
    SetBusy(false);
    const auto window = found->second(context);
    QTimer::singleShot(0, window.get(), [this, &window] { help_.follow(window.get()); });
    window->exec();
    keepTypedData(session);
    SetBusy(wasBusy);
}

void QtDesktop::SetBusy(bool busy) {
    if (busy == busy_) {
        return;
    }
    busy_ = busy;
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

bool QtDesktop::PrintDocument(const std::string& documentName,
                              const std::vector<std::string>& lines) {
    const std::string ending = documentName == session_->CurrentInputName ? "-input" : "";
    const PrintedDocument document{shownText(documentTitle(*session_)),
                                   shownText(problemStem(*session_) + ending)};
    return printPages(activeWindow(), printServices, document, textPages(lines));
}

bool QtDesktop::OpenDocument(const std::string& file) {
    return openUrl(QUrl::fromLocalFile(shownText(file)));
}

void QtDesktop::QuitHelp() {
    help_.quit();
}

void QtDesktop::EndProgram() {
    if (window_ != nullptr) {
        window_->endWithoutQuestion();
        window_->close();
    }
    QApplication::quit();
}

void QtDesktop::Mirror(const Session&) {
    if (window_ != nullptr) {
        window_->mirror();
        window_->repaint();
    }
}

} // namespace korvane
