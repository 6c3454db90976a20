#include "study_hand.h"

#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace korvane::test {

QTableWidget& numbersOf(QDialog& window) {
    return *window.findChild<QTableWidget*>("tblNumbers");
}
QTableWidget& answerOf(QDialog& window) {
    return *window.findChild<QTableWidget*>("tblAnswer");
}
QString stateOf(QDialog& window) {
    return window.findChild<QLabel*>("lblState")->text();
}

int rowOf(QDialog& window, const QString& name) {
    const QTableWidget& table = numbersOf(window);
    for (int row = 0; row < table.rowCount(); ++row) {
        if (table.item(row, 0)->text() == name) {
            return row;
        }
    }
    ADD_FAILURE() << "no number " << name.toStdString();
    return 0;
}

void tick(QDialog& window, const QString& name, Column column) {
    QTableWidgetItem* item = numbersOf(window).item(rowOf(window, name), column);
    ASSERT_TRUE(item->flags().testFlag(Qt::ItemIsUserCheckable)) << name.toStdString();
    item->setCheckState(Qt::Checked);
}
bool isTicked(QDialog& window, const QString& name, Column column) {
    return numbersOf(window).item(rowOf(window, name), column)->checkState() == Qt::Checked;
}
QString cell(QDialog& window, const QString& name, Column column) {
    return numbersOf(window).item(rowOf(window, name), column)->text();
}
void type(QDialog& window, const QString& name, Column column, const QString& text) {
    QTableWidget& table = numbersOf(window);
    table.setCurrentCell(rowOf(window, name), column);
    QTest::keyClick(&table, Qt::Key_F2);
    QWidget* editor = table.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); // what is typed comes then
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void expectFits(const QTableWidget& table, const std::set<int>& cut) {
    for (int column = 0; column < table.columnCount(); ++column) {
        if (table.isColumnHidden(column)) {
            continue;
        }
        EXPECT_GE(table.columnWidth(column), table.horizontalHeader()->sectionSizeHint(column))
            << column;
        if (cut.count(column) == 0) {
            const QAbstractItemView& view = table;
            EXPECT_GE(table.columnWidth(column), view.sizeHintForColumn(column)) << column;
        }
    }
}

void expectFigureInReach(QDialog& window) {
    for (int level = 0; level < 3; ++level) { // layouts within layouts settle one after the other
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
    auto* picture = window.findChild<QScrollArea*>("picAnswer");
    const QSize figure = window.findChild<QWidget*>("picGround")->minimumSize();
    EXPECT_FALSE(figure.isEmpty());
    EXPECT_GE(picture->verticalScrollBar()->maximum() + picture->viewport()->height(),
              figure.height());
    EXPECT_GE(picture->horizontalScrollBar()->maximum() + picture->viewport()->width(),
              figure.width());
}

void run(QDialog& window) {
    pushButton(window, "cmdRun");
}
void atAnswer(Person& person, const std::function<void(QDialog&)>& act) {
    person.expectScreen("STUDY", [&person, act](QDialog& window) {
        if (!window.findChild<QAction*>("mnuCopy")->isEnabled()) {
            atAnswer(person, act);
        } else {
            act(window);
        }
    });
}
void atState(Person& person, const QString& start, const std::function<void(QDialog&)>& act) {
    person.expectScreen("STUDY", [&person, start, act](QDialog& window) {
        if (!stateOf(window).startsWith(start)) {
            atState(person, start, act);
        } else {
            act(window);
        }
    });
}

void askStudy(Person& person, const std::function<void(QDialog&)>& act) {
    person.expectScreen("STUDY", act);
    person.choose(StudyEntryName);
    person.expectNothingLeft();
}

} // namespace korvane::test
