// The user guide and the theory as pages of text, and the search in them.
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

/// One page of the guide or the theory.
struct HelpPage {
    QString name;         ///< of its file
    bool theory = false;  ///< below the theory's first page in the contents
    QString title;        ///< its first heading
    QString markdown;     ///< the whole page as the help shows it
    QStringList sections; ///< the second-level headings
    std::vector<HelpPiece> pieces;
};

/// A piece that holds all words of a search.
struct HelpHit {
    int page = 0; ///< index into the pages
    HelpPiece piece;
};

/// The pages in their order, from the program's own resources: the guide, then the theory.
std::vector<HelpPage> loadHelpPages();

/// Every piece that holds all words of `words` (any case), in the order of the pages.
std::vector<HelpHit> searchHelp(const std::vector<HelpPage>& pages, const QString& words);

/// The page to which a link of a page leads; -1 for another address.
int linkedPage(const std::vector<HelpPage>& pages, const QString& link);

/// The heading that the end of a link names, as the pages' readers on the web make it.
QString linkedSection(const HelpPage& page, const QString& anchor);

} // namespace korvane
