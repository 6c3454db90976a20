#include "widgets/help_pages.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace korvane {

namespace {

const QString guideFolder = ":/guide";

HelpPage readPage(const QString& path) {
    HelpPage page;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        page.markdown = QString::fromUtf8(file.readAll());
    }
    bool inCode = false;
    for (const QString& line : page.markdown.split('\n')) {
        if (line.startsWith("```")) {
            inCode = !inCode;
        } else if (!inCode && line.startsWith("# ")) {
            page.title = line.mid(2);
        } else if (!inCode && line.startsWith("## ")) {
            page.sections.append(line.mid(3));
        }
    }
    return page;
}

bool holdsAll(const QString& line, const QStringList& words) {
    return std::all_of(words.begin(), words.end(), [&](const QString& word) {
        return line.contains(word, Qt::CaseInsensitive);
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
        QString section = pages[place].title;
        for (const QString& line : pages[place].markdown.split('\n')) {
            if (line.startsWith("## ")) {
                section = line.mid(3);
            }
            if (holdsAll(line, wanted)) {
                hits.push_back({static_cast<int>(place), section, line.trimmed()});
            }
        }
    }
    return hits;
}

} // namespace korvane
