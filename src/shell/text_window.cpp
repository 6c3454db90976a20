#include "shell/text_window.h"

#include "commands/command_scope.h"
#include "commands/commands.h"
#include "commands/problem_name.h"
#include "runtime/file_text.h"
#include "shell/printing.h"
#include "widgets/find_bar.h"
#include "widgets/shown_text.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace korvane {

namespace {

constexpr double FontPoints = 10;

/// Names of a window and its text.
struct TextNames {
    const char* window;
    const char* text;
};

TextNames namesOf(TextKind kind) {
    switch (kind) {
    case TextKind::Input:
        return {"VUINPTFL", "txtINPTFILE"};
    case TextKind::Output:
        return {"VUINECHO", "txtINECHO"};
    case TextKind::Notes:
        return {"NOTES", "txtNotes"};
    case TextKind::Verification:
        break;
    }
    return {"VERIFY", "txtVerify"};
}

TextView viewOf(TextKind kind, Session& session, Desktop& desktop) {
    switch (kind) {
    case TextKind::Input:
        return inputFileView(session);
    case TextKind::Output:
        return outputFileView(session, desktop);
    case TextKind::Notes:
        return notesView(session, desktop);
    case TextKind::Verification:
        break;
    }
    return verificationView();
}

/// Keys that would change the text; arrows, paging, selecting and copying are free.
bool wouldChangeText(const QKeyEvent& key) {
    constexpr QKeySequence::StandardKey changes[] = {QKeySequence::Paste,
                                                     QKeySequence::Cut,
                                                     QKeySequence::Delete,
                                                     QKeySequence::DeleteEndOfLine,
                                                     QKeySequence::DeleteEndOfWord,
                                                     QKeySequence::DeleteCompleteLine,
                                                     QKeySequence::Undo,
                                                     QKeySequence::Redo};
    if (std::any_of(std::begin(changes), std::end(changes),
                    [&](QKeySequence::StandardKey change) { return key.matches(change); })) {
        return true;
    }
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return true;
    default:
        break;
    }
    const bool command = (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0;
    return !command && !key.text().isEmpty() && key.text().at(0).isPrint();
}

} // namespace

TextWindow::TextWindow(ScreenContext& context, TextKind kind, const PrintServices* services)
    : ScreenWindow(context, namesOf(kind).window, {}), kind_(kind),
      text_(new QPlainTextEdit(canvas())) {
    const TextView view = viewOf(kind, session(), context.desktop);
    setWindowTitle(shownText(view.title));
    addTextMenus(services);
    text_->setObjectName(namesOf(kind).text);
    QFont font("Courier New");
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(FontPoints);
    text_->setFont(font);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setPlainText(shownText(view.text));
    text_->installEventFilter(this);
    auto* layout = new QVBoxLayout(canvas());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text_);
    layout->addWidget(new FindBar(this, finderIn(text_)));
    keepSelectionVisible(text_);
    text_->setFocus();
}

void TextWindow::addTextMenus(const PrintServices* services) {
    const auto add = [this](const char* name, const char* caption, auto body) {
        QAction* action = menuBar()->addAction(caption);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, body);
        return action;
    };
    add("mnuFinished", "&Finished", [this] { accept(); });
    if (services != nullptr) {
        add("mnuCopy", "&Copy", [this] { copy(); });
        QAction* printing =
            add("mnuPrint", "&Print", [this, services] { run([&] { print(*services); }); });
        printing->setShortcut(QKeySequence::Print);
    }
    addHelpMenu();
}

/// What is selected, else the whole text.
void TextWindow::copy() {
    const QTextCursor selected = text_->textCursor();
    QApplication::clipboard()->setText(selected.hasSelection() ? selected.selection().toPlainText()
                                                               : text_->toPlainText());
}

void TextWindow::print(const PrintServices& services) {
    const PrintedDocument notes{windowTitle() + ": " + shownText(documentTitle(session())),
                                shownText(problemStem(session())) + "-notes"};
    const PrintedDocument verification{"KORVANE: " + windowTitle(), "korvane-verification"};
    const PrintedDocument& document = kind_ == TextKind::Notes ? notes : verification;
    runCommand(session(), context().desktop, [&] {
        printPages(this, services, document, textPages(splitLines(bytesOf(text_->toPlainText()))));
    });
}

bool TextWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        wouldChangeText(*static_cast<QKeyEvent*>(event))) { // the type tells the class
        tellIgnored();
        return true;
    }
    return ScreenWindow::eventFilter(watched, event);
}

void TextWindow::tellIgnored() {
    if (telling_) {
        return;
    }
    telling_ = true;
    run([this] { ask({.text = "Changes made in this window are ignored."}); });
    telling_ = false;
}

void TextWindow::frameClose() {
    accept();
}

} // namespace korvane
