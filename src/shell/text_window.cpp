#include "shell/text_window.h"

#include "commands/commands.h"
#include "widgets/find_bar.h"
#include "widgets/shown_text.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace korvane {

namespace {

constexpr double FontPoints = 10;

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

TextWindow::TextWindow(ScreenContext& context, TextKind kind)
    : ScreenWindow(context, kind == TextKind::Input ? "VUINPTFL" : "VUINECHO", {}) {
    const TextView view = kind == TextKind::Input ? inputFileView(session())
                                                  : outputFileView(session(), context.desktop);
    setWindowTitle(shownText(view.title));
    QAction* finished = menuBar()->addAction("&Finished");
    finished->setObjectName("mnuFinished");
    connect(finished, &QAction::triggered, this, [this] { accept(); });
    addHelpMenu();
    auto* text = new QPlainTextEdit(canvas());
    text->setObjectName(kind == TextKind::Input ? "txtINPTFILE" : "txtINECHO");
    QFont font("Courier New");
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(FontPoints);
    text->setFont(font);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setPlainText(shownText(view.text));
    text->installEventFilter(this);
    auto* layout = new QVBoxLayout(canvas());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text);
    layout->addWidget(new FindBar(this, finderIn(text)));
    keepSelectionVisible(text);
    text->setFocus();
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
