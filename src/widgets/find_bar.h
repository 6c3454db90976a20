// Searching in a shown text: Ctrl+F, the next and the previous place.
#pragma once

#include <QTextCursor>
#include <QTextDocument>
#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;

namespace korvane {

/// A line at the foot of a window that holds a text, hidden until Ctrl+F. Enter and F3 go to the
/// next place, Shift with them to the previous one, Escape hides the line.
class FindBar : public QWidget {
    Q_OBJECT

  public:
    /// Looks for words from the text's cursor on, around its end; false where it holds none.
    /// `from` is where the search starts: behind the place found last or, while the words are still
    /// being typed, at it.
    enum class From { Behind, Before, Here };
    using Finder = std::function<bool(const QString& words, From from)>;

    FindBar(QWidget* window, Finder finder);

    void open();
    void next() { find(From::Behind); }
    void previous() { find(From::Before); }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void find(From from);

    Finder finder_;
    QLineEdit* words_;
    QLabel* told_;
};

/// A finder for a text window of the toolkit, which keeps what it finds in sight. The window must
/// outlive it.
template <class TextEdit>
FindBar::Finder finderIn(TextEdit* text) {
    return [text](const QString& words, FindBar::From from) {
        const QTextCursor before = text->textCursor();
        QTextDocument::FindFlags flags;
        flags.setFlag(QTextDocument::FindBackward, from == FindBar::From::Before);
        QTextCursor start = before;
        if (from == FindBar::From::Here) {
            start.setPosition(before.selectionStart());
            text->setTextCursor(start);
        }
        if (text->find(words, flags)) {
            return true;
        }
        start.movePosition(from == FindBar::From::Before ? QTextCursor::End : QTextCursor::Start);
        text->setTextCursor(start);
        if (text->find(words, flags)) {
            return true;
        }
        text->setTextCursor(before);
        return false;
    };
}

/// Shows the place found as clearly while the focus is elsewhere.
void keepSelectionVisible(QWidget* text);

} // namespace korvane
