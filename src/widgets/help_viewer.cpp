#include "widgets/help_viewer.h"

#include "widgets/find_bar.h"
#include "widgets/geometry.h"
#include "widgets/help_browser.h"
#include "widgets/help_sections.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextOption>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace korvane {

namespace {

constexpr int PageRole = Qt::UserRole;
constexpr int SectionRole = Qt::UserRole + 1;
constexpr int PositionRole = Qt::UserRole + 2;

/// Position of a heading's block in the shown page; -1 where the page has no such heading.
int headingPosition(const QTextDocument& document, const QString& heading) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && block.text() == heading) {
            return block.position();
        }
    }
    return -1;
}

/// What a list of hits shows of a piece: the words around the first one that was searched for.
QString excerpt(const QString& text, const QString& words) {
    constexpr qsizetype longest = 160; // letters
    constexpr qsizetype before = 60;
    if (text.size() <= longest) {
        return text;
    }
    const QString first = words.section(' ', 0, 0, QString::SectionSkipEmpty);
    const qsizetype found = text.indexOf(first, 0, Qt::CaseInsensitive);
    qsizetype start = std::clamp<qsizetype>(found - before, 0, text.size() - longest);
    start = start == 0 ? 0 : text.indexOf(' ', start) + 1; // from a whole word on
    QString shown = (start > 0 ? "... " : "") + text.mid(start, longest).section(' ', 0, -2);
    return start + longest < text.size() ? shown + " ..." : shown;
}

} // namespace

HelpViewer::HelpViewer(QWidget* parent) : QDialog(parent), pages_(loadHelpPages()) {
    setObjectName("helpViewer");
    setWindowTitle("KORVANE Help");
    setModal(false);
    tabs_ = new QTabWidget;
    tabs_->setObjectName("helpTabs");
    QWidget* reader = createReader();
    createContents();
    createSearch();
    auto* splitter = new QSplitter;
    splitter->addWidget(tabs_);
    splitter->addWidget(reader);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({pixels(3600), pixels(7600)});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    resize(QSize(pixels(11200), pixels(7600)).boundedTo(screenRoom(this)));
    // A current item from the start: the focus alone must not change the page later.
    contents_->setCurrentItem(contents_->topLevelItem(0));
}

QWidget* HelpViewer::createReader() {
    auto* reader = new QWidget;
    back_ = new QPushButton("&Back");
    back_->setObjectName("helpBack");
    back_->setAutoDefault(false);
    back_->setEnabled(false);
    connect(back_, &QPushButton::clicked, this, &HelpViewer::goBack);
    connect(new QShortcut(QKeySequence::Back, this), &QShortcut::activated, this,
            &HelpViewer::goBack);
    browser_ = new HelpBrowser;
    browser_->setObjectName("helpPage");
    browser_->setOpenLinks(false);
    // The names of fields in tables stay whole; else the width of a column would split them.
    browser_->setWordWrapMode(QTextOption::WordWrap);
    connect(browser_, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& link) { follow(link.toString()); });
    keepSelectionVisible(browser_);
    auto* layout = new QVBoxLayout(reader);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(back_, 0, Qt::AlignLeft);
    layout->addWidget(browser_, 1);
    layout->addWidget(new FindBar(this, finderIn<QTextEdit>(browser_)));
    return reader;
}

void HelpViewer::createContents() {
    contents_ = new QTreeWidget;
    contents_->setObjectName("helpContents");
    contents_->setHeaderHidden(true);
    QTreeWidgetItem* theory = nullptr; // the page before those of the theory heads them
    for (std::size_t place = 0; place < pages_.size(); ++place) {
        const QStringList title = {pages_[place].title};
        auto* top = pages_[place].theory ? new QTreeWidgetItem(theory, title)
                                         : theory = new QTreeWidgetItem(contents_, title);
        top->setData(0, PageRole, static_cast<int>(place));
        for (const QString& section : pages_[place].sections) {
            auto* item = new QTreeWidgetItem(top, {section});
            item->setData(0, PageRole, static_cast<int>(place));
            item->setData(0, SectionRole, section);
        }
    }
    connect(contents_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item != nullptr) {
            openPage(item->data(0, PageRole).toInt(), item->data(0, SectionRole).toString());
        }
    });
    tabs_->addTab(contents_, "&Contents");
}

void HelpViewer::createSearch() {
    auto* panel = new QWidget;
    words_ = new QLineEdit;
    words_->setObjectName("helpWords");
    words_->setPlaceholderText("Words to search for");
    hits_ = new QListWidget;
    hits_->setObjectName("helpHits");
    hits_->setWordWrap(true); // each hit whole, in as many lines as the width asks for
    hits_->setTextElideMode(Qt::ElideNone);
    hits_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    hits_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    hits_->setResizeMode(QListView::Adjust);
    hits_->setSpacing(3);
    hits_->setAlternatingRowColors(true);
    words_->installEventFilter(this);
    auto* layout = new QVBoxLayout(panel);
    layout->addWidget(words_);
    layout->addWidget(hits_);
    connect(words_, &QLineEdit::textChanged, this, &HelpViewer::search);
    connect(hits_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item != nullptr) {
            openAt(item->data(PageRole).toInt(), item->data(PositionRole).toInt());
            browser_->find(words_->text().section(' ', 0, 0, QString::SectionSkipEmpty));
        }
    });
    tabs_->addTab(panel, "&Search");
}

void HelpViewer::search(const QString& words) {
    hits_->clear();
    for (const HelpHit& hit : searchHelp(pages_, words)) {
        const QString& title = pages_[static_cast<std::size_t>(hit.page)].title;
        const HelpPiece& piece = hit.piece;
        // The cells of a table's row follow each other as sentences do.
        const QString text = piece.text.split(" | ", Qt::SkipEmptyParts).join(" - ");
        const QString place = piece.section == title ? title : piece.section + " (" + title + ")";
        auto* item = new QListWidgetItem(place + "\n" + excerpt(text, words), hits_);
        item->setData(PageRole, hit.page);
        item->setData(PositionRole, piece.position);
    }
    if (hits_->count() == 0 && !words.trimmed().isEmpty()) {
        auto* none = new QListWidgetItem("No paragraph holds all these words.", hits_);
        none->setFlags(Qt::NoItemFlags);
    }
}

void HelpViewer::stepHits(int step) {
    const int count = hits_->count();
    const bool found = count > 0 && hits_->item(0)->flags() != Qt::NoItemFlags;
    if (found) {
        const int row = hits_->currentRow();
        hits_->setCurrentRow(row < 0 ? (step > 0 ? 0 : count - 1) : (row + step + count) % count);
    }
}

/// Arrows and Enter in the field for the words go through the hits.
bool HelpViewer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == words_ && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) { // the type tells the class
        case Qt::Key_Up:
            stepHits(-1);
            return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            stepHits(1);
            return true;
        default:
            break;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void HelpViewer::openPage(int page, const QString& section) {
    if (page >= 0 && page < static_cast<int>(pages_.size())) {
        QTextDocument document;
        document.setMarkdown(pages_[static_cast<std::size_t>(page)].markdown);
        goTo({page, std::max(0, headingPosition(document, section))});
    }
}

void HelpViewer::openAt(int page, int position) {
    goTo({page, position});
}

void HelpViewer::goTo(Place place) {
    if (place.page < 0 || place.page >= static_cast<int>(pages_.size())) {
        return;
    }
    const bool elsewhere = place.page != place_.page || place.position != place_.position;
    if (place_.page >= 0 && elsewhere) {
        before_.push_back(place_);
    }
    showPlace(place);
}

void HelpViewer::goBack() {
    if (!before_.empty()) {
        const Place place = before_.back();
        before_.pop_back();
        showPlace(place);
    }
}

void HelpViewer::showPlace(Place place) {
    const bool other = place.page != place_.page;
    place_ = place;
    if (other) {
        loadPage();
    }
    back_->setEnabled(!before_.empty());
    scrollTo(place.position);
}

void HelpViewer::loadPage() {
    pictureWidth_ = browser_->pictureWidth();
    // Filled before it is shown: a document on show lays a table out anew with every row.
    auto* page = new QTextDocument(browser_);
    page->setDefaultFont(browser_->font());
    page->setMarkdown(pages_[static_cast<std::size_t>(place_.page)].markdown);
    const QPointer<QTextDocument> before = browser_->document();
    browser_->setDocument(page); // takes away the document that it began with
    delete before;
}

void HelpViewer::follow(const QString& link) {
    const int page = linkedPage(pages_, link);
    if (page >= 0) {
        openPage(page, linkedSection(pages_[static_cast<std::size_t>(page)], link.section('#', 1)));
    }
}

void HelpViewer::scrollTo(int position) {
    QTextCursor cursor(browser_->document());
    cursor.movePosition(QTextCursor::End);
    browser_->setTextCursor(cursor); // from the end, so that the place comes to the top
    cursor.setPosition(position);
    browser_->setTextCursor(cursor);
    browser_->ensureCursorVisible();
}

/// The place that was opened last stays at the top; a window manager may resize a window that
/// opens.
void HelpViewer::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    QTimer::singleShot(0, browser_, [this] { // when the page has its new lines
        const int anchor = browser_->textCursor().anchor();
        const int position = browser_->textCursor().position();
        if (place_.page >= 0 && pictureWidth_ != browser_->pictureWidth()) {
            loadPage(); // pictures fill the new width
        }
        scrollTo(std::min(anchor, position));
        QTextCursor cursor(browser_->document());
        cursor.setPosition(anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        browser_->setTextCursor(cursor);
    });
}

void HelpViewer::showContents() {
    tabs_->setCurrentIndex(0);
    contents_->setFocus();
}

void HelpViewer::showSearch() {
    tabs_->setCurrentIndex(1);
    words_->setFocus();
    words_->selectAll();
}

void HelpViewer::showSection(const QString& section) {
    tabs_->setCurrentIndex(0);
    const auto found = contents_->findItems(section, Qt::MatchExactly | Qt::MatchRecursive);
    if (!found.isEmpty()) {
        contents_->setCurrentItem(found.front());
        openPage(found.front()->data(0, PageRole).toInt(), // also where it was current before
                 found.front()->data(0, SectionRole).toString());
        browser_->setFocus();
    }
}

void HelpService::show(QWidget* active, Help what) {
    if (viewer_ == nullptr) {
        viewer_ = new HelpViewer(active);
    }
    moveTo(active);
    viewer_->show(); // first, since a page scrolls only where it has its size
    if (what == Help::OfWindow) {
        viewer_->showSection(helpSection(active->objectName()));
    } else if (what == Help::Contents) {
        viewer_->showContents();
    } else {
        viewer_->showSearch();
    }
    viewer_->raise();
    viewer_->activateWindow();
}

void HelpService::follow(QWidget* screen) {
    if (viewer_ != nullptr && viewer_->isVisible()) {
        moveTo(screen);
    }
}

void HelpService::moveTo(QWidget* parent) {
    if (viewer_->parentWidget() != parent) {
        // The page and the window's place are kept; the screen keeps the focus.
        const bool open = viewer_->isVisible();
        const QRect place = viewer_->geometry();
        viewer_->setParent(parent, viewer_->windowFlags());
        viewer_->setGeometry(place);
        viewer_->setAttribute(Qt::WA_ShowWithoutActivating);
        viewer_->setVisible(open);
        viewer_->setAttribute(Qt::WA_ShowWithoutActivating, false);
        if (open) {
            parent->activateWindow();
        }
    }
    // When a modal screen closes the help goes on over the screen below.
    if (auto* screen = qobject_cast<QDialog*>(parent)) {
        connect(
            screen, &QDialog::finished, this,
            [this, screen] {
                if (viewer_ != nullptr && viewer_->parentWidget() == screen) {
                    moveTo(screen->parentWidget());
                }
            },
            Qt::SingleShotConnection);
    }
}

void HelpService::quit() {
    delete viewer_;
}

} // namespace korvane
