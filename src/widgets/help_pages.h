// The user guide as pages of text, and the search in it.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace korvane {

/// One page of the guide.
struct HelpPage {
    QString title;        ///< its first heading
    QString markdown;     ///< the whole page
    QStringList sections; ///< the second-level headings
};

/// A place that holds all words of a search.
struct HelpHit {
    int page = 0;    ///< index into the pages
    QString section; ///< the heading above it; the page's title in its head
    QString line;    ///< the line itself
};

/// The pages in their order, from the program's own resources.
std::vector<HelpPage> loadHelpPages();

/// Every line that holds all words of `words` (any case), in the order of the pages.
std::vector<HelpHit> searchHelp(const std::vector<HelpPage>& pages, const QString& words);

} // namespace korvane
