// The user guide as pages of text, and the search in it.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace korvane {

/// A heading, a paragraph, a list entry, a line of an example or a row of a table.
struct HelpPiece {
    QString section;  ///< the second-level heading above it; the page's title in its head
    QString text;     ///< without marks; the cells of a row parted by " | "
    int position = 0; ///< of its first letter in the page as a document
};

/// One page of the guide.
struct HelpPage {
    QString title;        ///< its first heading
    QString markdown;     ///< the whole page
    QStringList sections; ///< the second-level headings
    std::vector<HelpPiece> pieces;
};

/// A piece that holds all words of a search.
struct HelpHit {
    int page = 0; ///< index into the pages
    HelpPiece piece;
};

/// The pages in their order, from the program's own resources.
std::vector<HelpPage> loadHelpPages();

/// Every piece that holds all words of `words` (any case), in the order of the pages.
std::vector<HelpHit> searchHelp(const std::vector<HelpPage>& pages, const QString& words);

} // namespace korvane
