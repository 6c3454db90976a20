#include "widgets/help_pages.h"

#include <QDir>
#include <QFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>

namespace korvane {

namespace {

const QString guideFolder = ":/guide";

/// Takes the document of a page apart; blocks in one row of a table make one piece.
void takeApart(HelpPage& page) {
    QTextDocument document;
    document.setMarkdown(page.markdown);
    const QTextTable* lastTable = nullptr;
    int lastRow = -1;
    QString section;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        const int level = block.blockFormat().headingLevel();
        if (level == 1) {
            page.title = text;
        } else if (level == 2) {
            page.sections.append(text);
        }
        if (level == 1 || level == 2) {
            section = text;
        }
        const QTextCursor cursor(block);
        const QTextTable* table = cursor.currentTable();
        const int row = table == nullptr ? -1 : table->cellAt(cursor).row();
        if (table != nullptr && table == lastTable && row == lastRow) {
            page.pieces.back().text += " | " + text;
        } else if (table != nullptr || !text.isEmpty()) {
            page.pieces.push_back({section, text, block.position()});
        }
        lastTable = table;
        lastRow = row;
    }
}

HelpPage readPage(const QString& path) {
    HelpPage page;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        page.markdown = QString::fromUtf8(file.readAll());
    }
    takeApart(page);
    return page;
}

bool holdsAll(const QString& text, const QStringList& words) {
    return std::all_of(words.begin(), words.end(), [&](const QString& word) {
        return text.contains(word, Qt::CaseInsensitive);
    });
}

} // namespace

std::vector<HelpPage> loadHelpPages() {
    std::vector<HelpPage> pages;
    const QStringList names = QDir(guideFolder).entryList({"*.md"}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        pages.push_back(readPage(guideFolder + "/" + name));
    }
    return pages;
}

std::vector<HelpHit> searchHelp(const std::vector<HelpPage>& pages, const QString& words) {
    const QStringList wanted = words.split(' ', Qt::SkipEmptyParts);
    std::vector<HelpHit> hits;
    if (wanted.isEmpty()) {
        return hits;
    }
    for (std::size_t place = 0; place < pages.size(); ++place) {
        for (const HelpPiece& piece : pages[place].pieces) {
            if (holdsAll(piece.text, wanted)) {
                hits.push_back({static_cast<int>(place), piece});
            }
        }
    }
    return hits;
}

} // namespace korvane
