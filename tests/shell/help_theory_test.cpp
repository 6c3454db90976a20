// The theory in the help: its formulas and figures.
#include "person.h"
#include "screenshots.h"

#include "runtime/file_text.h"
#include "support/support.h"
#include "widgets/formula.h"
#include "widgets/formula_picture.h"
#include "widgets/help_browser.h"
#include "widgets/help_markup.h"
#include "widgets/help_pages.h"
#include "widgets/help_viewer.h"

#include <QElapsedTimer>
#include <QImage>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextImageFormat>
#include <QTextLayout>
#include <QTextTable>
#include <QTreeWidget>
#include <QUrl>

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

std::string htmlOf(const char* tex) {
    return formulaHtml(readFormula(tex)).toStdString();
}

TEST(Formula, StandsInOneLineAsRichText) {
    EXPECT_EQ(htmlOf("K_a"), "<i>K</i><sub><i>a</i></sub>");
    EXPECT_EQ(htmlOf("x^2 - 3"), "<i>x</i><sup>2</sup> − 3");
    EXPECT_EQ(htmlOf("\\sigma' = -12.5"), "<i>σ</i>′ = −12.5");
    EXPECT_EQ(htmlOf("\\frac{a + b}{2}"), "(<i>a</i> + <i>b</i>)/2");
    EXPECT_EQ(htmlOf("\\sqrt{x}\\text{ PSF}"), "√<i>x</i> PSF");
    EXPECT_EQ(htmlOf("1{,}497.6\\cdot 2"), "1,497.6 · 2");
    EXPECT_EQ(htmlOf("\\left(\\tfrac12 p_1\\right)^{2}"), "(1/2<i>p</i><sub>1</sub>)<sup>2</sup>");
    EXPECT_EQ(htmlOf("a < b"), "<i>a</i>&lt;<i>b</i>");
}

TEST(Formula, TellsACommandThatItDoesNotKnow) {
    EXPECT_EQ(htmlOf("\\overbrace x"), "\\overbrace<i>x</i>");
}

TEST(Formula, OfAnyBeginningEndsTheReading) {
    const QString whole = "\\frac{a_{b}^{c}}{\\sqrt{\\left(x\\right)}} + \\text{ab}";
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        (void)formulaHtml(readFormula(whole.left(length)));
    }
}

FormulaLook lookOf(qreal width, const QColor& ink = Qt::black) {
    return {QFont("Liberation Sans", 10), ink, width, 1};
}

/// The inked part of a picture.
QRect inked(const QImage& picture) {
    QRect all;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) > 60) {
                all |= QRect(x, y, 1, 1);
            }
        }
    }
    return all;
}

TEST(FormulaPicture, HasFractionsAboveEachOtherAndBreaksWhereThereIsNoRoom) {
    const QImage plain = formulaPicture(readFormula("a"), lookOf(400));
    const QImage fraction = formulaPicture(readFormula("\\frac{a}{b}"), lookOf(400));
    EXPECT_GT(inked(fraction).height(), 1.8 * inked(plain).height());
    const Formula sum = readFormula("a = b + c + d + e + f + g + h + i + j + k + l + m + n + o");
    const QImage wide = formulaPicture(sum, lookOf(1000));
    const QImage narrow = formulaPicture(sum, lookOf(120));
    EXPECT_LE(narrow.width(), 120);
    EXPECT_GT(wide.width(), 120);
    EXPECT_GT(narrow.height(), 2 * wide.height());
    for (const QImage& picture : {fraction, wide, narrow}) {
        EXPECT_TRUE(picture.rect().adjusted(1, 1, -1, -1).contains(inked(picture)))
            << "nothing is cut off";
    }
}

TEST(FormulaPicture, BreaksOutsideBracketsThenBetweenThemThenWithin) {
    // Each picture is as wide as its first line, the longest.
    const auto width = [](const char* tex, int room) {
        return formulaPicture(readFormula(tex), lookOf(room)).width();
    };
    const auto whole = [&](const char* tex) { return width(tex, 10000); };
    const char* sum = "a = (b + c)(d + e)^2 + (f + g)";
    EXPECT_EQ(width(sum, whole(sum) - 1), whole("a = (b + c)(d + e)^2"));
    const char* product = "a = (b + c + d)(e + f)";
    EXPECT_EQ(width(product, whole(product) - 1), whole("a = (b + c + d)"));
    const char* bracket = "a = (b + c + d + e + f)";
    EXPECT_EQ(width(bracket, whole(bracket) - 1), whole("a = (b + c + d + e"));
    // A term that needs two lines leaves nothing of its second one to the next term.
    const auto height = [](const char* tex, int room) {
        return formulaPicture(readFormula(tex), lookOf(room)).height();
    };
    const int line = height(product, 10000);
    const int next = height(product, whole(product) - 1) - line;
    EXPECT_NEAR(height("a = (b + c + d + e)(f) + (g + h)(i + j + k)", whole("a = (b + c + d + e)")),
                line + 3 * next, 3);
}

TEST(FormulaPicture, TakesInkAndScale) {
    FormulaLook look = lookOf(400, Qt::red);
    const QImage once = formulaPicture(readFormula("\\sqrt{a}"), look);
    look.scale = 2;
    const QImage twice = formulaPicture(readFormula("\\sqrt{a}"), look);
    EXPECT_EQ(twice.size(), once.size() * 2);
    const QRect place = inked(once);
    for (int x = place.left(); x <= place.right(); ++x) {
        const QColor colour = once.pixelColor(x, place.center().y());
        if (colour.alpha() > 60) {
            EXPECT_GT(colour.red(), 240);
            EXPECT_LT(colour.blue(), 15);
        }
    }
}

TEST(HelpFigure, FitsItsWidthAndTheGround) {
    const std::string text = readFile(KORVANE_SOURCE_DIR "/docs/theory/figures/grid.svg");
    const QByteArray figure = QByteArray::fromStdString(text);
    const QImage light = helpFigure(figure, false, 10000, 1);
    const QImage dark = helpFigure(figure, true, 10000, 1);
    EXPECT_EQ(light.size(), QSize(710, 420)); // of its view box
    EXPECT_EQ(helpFigure(figure, false, 355, 1).size(), QSize(355, 210));
    EXPECT_EQ(helpFigure(figure, false, 355, 2).size(), QSize(710, 420));
    // The wall, a stroke 5 wide from (220, 40) to (220, 360).
    EXPECT_LT(light.pixelColor(220, 245).lightness(), 60);
    EXPECT_GT(dark.pixelColor(220, 245).lightness(), 200);
    EXPECT_TRUE(helpFigure("no picture", false, 100, 1).isNull());
}

TEST(HelpMarkup, KeepsEmptyCellsAndTakesCommentsAway) {
    const QString shown = helpMarkup("<!-- run -->\n\n| a | b |\n|---|---|\n| c | |\n\n"
                                     "![x](figures/y.png) $K_a$\n",
                                     "guide", false);
    EXPECT_FALSE(shown.contains("<!--"));
    EXPECT_TRUE(shown.contains("![x](qrc:/guide/figures/y.png) $K_a$"));
    QTextDocument page;
    page.setMarkdown(shown);
    const auto* table = qobject_cast<QTextTable*>(page.rootFrame()->childFrames().value(0));
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->cellAt(1, 0).columnSpan(), 1);
}

TEST(Theory, StandsBehindTheGuideWithoutMarks) {
    int count = 0;
    for (const HelpPage& page : loadHelpPages()) {
        EXPECT_FALSE(page.markdown.contains("<!--")) << page.name.toStdString();
        if (!page.theory) {
            EXPECT_EQ(count, 0) << "the theory stands last";
            continue;
        }
        ++count;
        static const QRegularExpression marks("[$\\\\]");
        EXPECT_FALSE(page.markdown.contains(marks)) << page.name.toStdString();
        static const QRegularExpression formulas("formula:([\\w-]+)");
        for (auto all = formulas.globalMatch(page.markdown); all.hasNext();) {
            const QString tex = formulaOfPicture(all.next().captured(0));
            EXPECT_FALSE(tex.isEmpty());
            EXPECT_FALSE(formulaHtml(readFormula(tex)).contains('\\')) << tex.toStdString();
        }
    }
    EXPECT_EQ(count, 12);
    const auto hits = searchHelp(loadHelpPages(), "moment reduction in clay Rowe 1957");
    EXPECT_FALSE(hits.empty());
}

class TheoryInTheViewer : public ::testing::Test {
  protected:
    TheoryInTheViewer() : viewer(nullptr) {
        viewer.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&viewer));
    }
    HelpViewer viewer;
    HelpBrowser* page = viewer.findChild<HelpBrowser*>("helpPage");
};

TEST_F(TheoryInTheViewer, ShowsEveryPictureOfEveryPage) {
    const auto pages = loadHelpPages();
    int pictures = 0;
    for (std::size_t place = 0; place < pages.size(); ++place) {
        viewer.openPage(static_cast<int>(place), {});
        for (QTextBlock block = page->document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextImageFormat format = part.fragment().charFormat().toImageFormat();
                if (format.isValid()) {
                    const auto image =
                        page->loadResource(QTextDocument::ImageResource, QUrl(format.name()));
                    EXPECT_FALSE(image.value<QImage>().isNull())
                        << pages[place].name.toStdString() << format.name().toStdString();
                    EXPECT_LE(image.value<QImage>().deviceIndependentSize().width(),
                              page->viewport()->width());
                    ++pictures;
                }
            }
        }
        keepScreenshot(viewer, "help-" + pages[place].name);
    }
    EXPECT_GT(pictures, 18 + 60); // figures and formulas
}

TEST_F(TheoryInTheViewer, StandsBelowItsFirstPageAndLinksLeadFromPageToPage) {
    auto* contents = viewer.findChild<QTreeWidget*>("helpContents");
    const auto theory = contents->findItems("Theory", Qt::MatchExactly);
    ASSERT_EQ(theory.size(), 1);
    EXPECT_EQ(theory.front()->childCount(), 12);
    contents->setCurrentItem(theory.front()->child(0));
    const auto heading = [&] { return page->document()->begin().text().toStdString(); };
    EXPECT_EQ(heading(), "Conventions and the grid");
    emit page->anchorClicked(QUrl("03-coefficients.md#cohesion-and-tension"));
    EXPECT_EQ(heading(), "Pressures by coefficients");
    EXPECT_EQ(page->textCursor().block().text(), "Cohesion and tension");
    emit page->anchorClicked(QUrl("../guide/04-input-file.md"));
    EXPECT_EQ(heading(), "The input file");
    emit page->anchorClicked(QUrl("https://example.org/04-input-file.md"));
    emit page->anchorClicked(QUrl("no-such-page.md"));
    EXPECT_EQ(heading(), "The input file");
}

TEST_F(TheoryInTheViewer, LongTablesOpenAtOnce) {
    const auto pages = loadHelpPages();
    const int inputFile = linkedPage(pages, "04-input-file.md");
    QElapsedTimer time;
    time.start();
    viewer.openPage(inputFile, "All sections in one table");
    EXPECT_LT(time.elapsed(), 5000) << "laid out once, not with every row";
    keepScreenshot(viewer, "help-sections-table");
}

/// Words of the page that a line ends within.
std::vector<std::string> splitWords(const QTextDocument& page) {
    std::vector<std::string> words;
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        for (int line = 0; line + 1 < block.layout()->lineCount(); ++line) {
            const QTextLine ended = block.layout()->lineAt(line);
            const int next = ended.textStart() + ended.textLength();
            if (text.at(next - 1).isLetterOrNumber() && text.at(next).isLetterOrNumber()) {
                words.push_back(text.mid(ended.textStart(), 80).toStdString());
            }
        }
    }
    return words;
}

TEST_F(TheoryInTheViewer, TheTableOfSectionsSplitsNoNameAndFitsTheFirstWidth) {
    const int inputFile = linkedPage(loadHelpPages(), "04-input-file.md");
    const int first = viewer.width();
    for (const int width : {560, first, 1400}) { // pixels
        viewer.resize(width, viewer.height());
        viewer.openPage(inputFile, "All sections in one table");
        EXPECT_EQ(splitWords(*page->document()), std::vector<std::string>{}) << width;
        keepScreenshot(viewer, QString("help-sections-%1").arg(width));
        if (width >= first) {
            EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0) << width;
        }
    }
}

TEST_F(TheoryInTheViewer, PicturesFillANarrowerWindow) {
    const auto pages = loadHelpPages();
    const auto conventions =
        std::find_if(pages.begin(), pages.end(), [](const HelpPage& each) { return each.theory; });
    viewer.openPage(static_cast<int>(conventions - pages.begin()), "The grid");
    const QUrl figure("qrc:/theory/figures/signs.svg");
    const auto width = [&] {
        return page->document()
            ->resource(QTextDocument::ImageResource, figure)
            .value<QImage>()
            .width();
    };
    const int before = width();
    ASSERT_GT(before, 0);
    viewer.resize(viewer.width() - 120, viewer.height());
    EXPECT_TRUE(QTest::qWaitFor([&] { return width() < before; }));
    EXPECT_LE(width(), page->viewport()->width());
    EXPECT_EQ(page->textCursor().block().text().toStdString(), "The grid") << "the place stays";
}

} // namespace
} // namespace korvane::test
