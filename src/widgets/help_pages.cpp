#include "widgets/help_pages.h"

#include "widgets/help_markup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>

namespace korvane {

namespace {

/// Takes the document of a page apart; blocks in one row of a table make one piece.
void takeApart(HelpPage& page) {
    QTextDocument document;
    document.setMarkdown(page.markdown);
    const QTextTable* lastTable = nullptr;
    int lastRow = -1;
    QString section;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString text = block.text().remove(QChar::ObjectReplacementCharacter);
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

/// Appends the pages of a folder of the resources.
void readPages(const QString& folder, const QStringList& filters, bool theory,
               std::vector<HelpPage>& pages) {
    const QDir directory(":/" + folder);
    for (const QString& name : directory.entryList(filters, QDir::Files, QDir::Name)) {
        QFile file(directory.filePath(name));
        HelpPage page{name, theory, {}, {}, {}, {}};
        if (file.open(QIODevice::ReadOnly)) {
            page.markdown =
                helpMarkup(QString::fromUtf8(file.readAll()), folder, folder == "theory");
        }
        takeApart(page);
        pages.push_back(std::move(page));
    }
}

bool holdsAll(const QString& text, const QStringList& words) {
    return std::all_of(words.begin(), words.end(), [&](const QString& word) {
        return text.contains(word, Qt::CaseInsensitive);
    });
}

} // namespace

std::vector<HelpPage> loadHelpPages() {
    std::vector<HelpPage> pages;
    readPages("guide", {"*.md"}, false, pages);
    readPages("theory", {"README.md"}, false, pages);
    readPages("theory", {"[0-9]*.md"}, true, pages);
    return pages;
}

int linkedPage(const std::vector<HelpPage>& pages, const QString& link) {
    const QString name = QFileInfo(link.section('#', 0, 0)).fileName();
    const auto found = std::find_if(pages.begin(), pages.end(),
                                    [&](const HelpPage& page) { return page.name == name; });
    return found == pages.end() || link.contains("://") ? -1
                                                        : static_cast<int>(found - pages.begin());
}

QString linkedSection(const HelpPage& page, const QString& anchor) {
    static const QRegularExpression dropped("[^\\w\\- ]");
    for (const QString& section : page.sections) {
        if (section.toLower().remove(dropped).replace(' ', '-') == anchor) {
            return section;
        }
    }
    return {};
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
