// No text is cut off, faint or covered, and no strip stands empty, at any scale in light and dark
// (ctest runs this file at 1, 1.5 and 2). With KORVANE_SCREENSHOTS set to a folder each screen is
// drawn to a picture there.
#include "contrast.h"
#include "looks.h"
#include "screenshots.h"

#include <QApplication>
#include <QFrame>
#include <QLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

/// Room that a control's text needs.
QSize neededSize(const QWidget* control) {
    const QFontMetrics metrics(control->font());
    if (const auto* label = qobject_cast<const QLabel*>(control)) {
        const int flags = label->wordWrap() ? Qt::TextWordWrap : 0;
        const QRect room(0, 0, label->contentsRect().width(), 10000);
        // As labels are drawn: a unit such as (FT/FT) stays on one line.
        const QString drawn = label->text().simplified().replace('/', QString("/\u2060"));
        return metrics.boundingRect(room, flags, drawn).size() + label->size() -
               label->contentsRect().size();
    }
    if (const auto* button = qobject_cast<const QPushButton*>(control)) {
        const QSize text = metrics.size(Qt::TextShowMnemonic, button->text());
        return text + QSize(10, 4);
    }
    if (const auto* option = qobject_cast<const QRadioButton*>(control)) {
        return option->minimumSizeHint();
    }
    if (qobject_cast<const QLineEdit*>(control) != nullptr) {
        return {0, control->minimumSizeHint().height()};
    }
    return {};
}

std::string nameOf(const QWidget* control) {
    std::string name = control->objectName().toStdString();
    if (const auto* label = qobject_cast<const QLabel*>(control)) {
        name += " \"" + label->text().toStdString() + "\"";
    }
    return name;
}

void expectRoom(const QWidget* control) {
    const QSize needed = neededSize(control);
    EXPECT_LE(needed.width(), control->width()) << nameOf(control);
    EXPECT_LE(needed.height(), control->height()) << nameOf(control);
    const QRect inside = control->parentWidget()->rect();
    EXPECT_TRUE(inside.contains(control->geometry())) << nameOf(control) << " leaves its parent";
}

/// The ground of a control; the groups of the layer table share their edges.
QRect groundOf(const QWidget* control) {
    const bool isGroup = control->metaObject() == &QFrame::staticMetaObject;
    return isGroup ? control->geometry().adjusted(1, 1, -1, -1) : control->geometry();
}

void expectApart(const QList<QWidget*>& siblings) {
    for (qsizetype one = 0; one < siblings.size(); ++one) {
        for (qsizetype other = one + 1; other < siblings.size(); ++other) {
            EXPECT_FALSE(groundOf(siblings[one]).intersects(groundOf(siblings[other])))
                << nameOf(siblings[one]) << " and " << nameOf(siblings[other]);
        }
    }
}

void checkLayout(const QWidget* parent) {
    QList<QWidget*> shown;
    for (QWidget* child : parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isVisible()) {
            shown.push_back(child);
            expectRoom(child);
            if (qobject_cast<QLineEdit*>(child) == nullptr) {
                checkLayout(child);
            }
        }
    }
    expectApart(shown);
}

} // namespace

namespace {

/// The scroll area, the line for remarks right below it, and nothing else down to the window's
/// edge; what scrolls reaches from edge to edge of its view.
void expectNoBlankStrip(Desk& desk) {
    QApplication::processEvents();
    const QWidget* remark = desk.find("lblRemark");
    auto* scroll = desk.top().findChild<QScrollArea*>();
    const QWidget* view = scroll->viewport();
    EXPECT_LE(remark->y() - scroll->geometry().bottom() - 1, desk.top().layout()->spacing());
    EXPECT_EQ(remark->geometry().bottom(), desk.top().rect().bottom());
    EXPECT_LE(remark->height(), remark->heightForWidth(remark->width()));
    QScrollBar* bar = scroll->verticalScrollBar();
    bar->setValue(bar->maximum());
    const QRect canvas = scroll->widget()->geometry();
    EXPECT_TRUE(canvas.contains(view->rect()));
    EXPECT_EQ(canvas.bottom(), view->rect().bottom());
    const int bars =
        scroll->horizontalScrollBar()->isVisible() ? scroll->horizontalScrollBar()->height() : 0;
    EXPECT_EQ(view->height() + bars, scroll->height());
}

} // namespace

TEST(Layout, NoStripStandsEmptyBelowTheScrollArea) {
    for (const Look& look : allLooks()) {
        SCOPED_TRACE(look.name);
        Desk desk;
        look.reach(desk);
        expectNoBlankStrip(desk);
        desk.top().resize(500, 300);
        expectNoBlankStrip(desk);
    }
}

TEST(Layout, TextsStandOutFromTheirGround) {
    for (const Look& look : allLooks()) {
        SCOPED_TRACE(look.name);
        Desk desk;
        look.reach(desk);
        expectReadable(desk.top());
    }
}

TEST(Layout, OnASmallWindowTheStagesScrollAndCoverNoHeading) {
    for (const Look& look : allLooks()) {
        SCOPED_TRACE(look.name);
        Desk desk;
        look.reach(desk);
        desk.top().resize(500, 300); // about 1024 by 768 pixels at 200 %, or less
        QApplication::processEvents();
        checkLayout(desk.find("canvas"));
    }
}

TEST(Layout, NoTextIsCutOffAndNothingOverlaps) {
    for (const Look& look : allLooks()) {
        SCOPED_TRACE(look.name);
        Desk desk;
        look.reach(desk);
        checkLayout(desk.find("canvas"));
        keepScreenshot(desk.top(), QString::fromStdString(look.name));
    }
}

} // namespace korvane::test
