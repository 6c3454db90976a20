#include "shell/study_answer.h"

#include "shell/result_table.h"
#include "shell/study_picture.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace korvane {

StudyAnswer::StudyAnswer(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    outcome_ = new QLabel;
    outcome_->setObjectName("lblOutcome");
    outcome_->setTextFormat(Qt::PlainText);
    outcome_->setWordWrap(true);
    outcome_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(outcome_);
    auto* first = new QHBoxLayout;
    output_ = addChoice(first, "cboOutput", "&Look at");
    cutRow_ = new QWidget;
    auto* cutLayout = new QHBoxLayout(cutRow_);
    cutLayout->setContentsMargins(0, 0, 0, 0);
    along_ = addChoice(cutLayout, "cboAlong", "A&xis");
    by_ = addChoice(cutLayout, "cboBy", "Curv&es for");
    first->addWidget(cutRow_);
    first->addStretch(1);
    layout->addLayout(first);
    placeRow_ = new QHBoxLayout;
    where_ = new QLabel("&Where");
    placeRow_->addWidget(where_);
    placeRow_->addStretch(1);
    layout->addLayout(placeRow_);
    splitter_ = new QSplitter(Qt::Vertical);
    splitter_->setChildrenCollapsible(false);
    picture_ = new StudyPicture;
    splitter_->addWidget(picture_);
    table_ = createResultTable("tblAnswer", "The numbers of the figure");
    splitter_->addWidget(table_);
    splitter_->setStretchFactor(0, 1); // the figure takes the room that a larger window has
    splitter_->setStretchFactor(1, 0);
    layout->addWidget(splitter_, 1);
}

QComboBox* StudyAnswer::addChoice(QHBoxLayout* row, const char* name, const QString& caption) {
    auto* label = new QLabel(caption);
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->setAccessibleName(QString(caption).remove('&'));
    label->setBuddy(box);
    row->addWidget(label);
    row->addWidget(box);
    connect(box, &QComboBox::currentIndexChanged, this, [this] {
        if (!offering_) {
            choose();
        }
    });
    return box;
}

void StudyAnswer::showAnswer(const study::Question& question, study::StudyRows rows) {
    question_ = question;
    rows_ = std::move(rows);
    outcome_->setText(shownText(study::outcomeText(rows_)));
    offering_ = true;
    offer();
    offering_ = false;
    choose();
    shareRoom();
}

void StudyAnswer::offer() {
    const bool grid = question_.asking == study::Asking::Grid;
    for (QComboBox* box : {output_, along_, by_}) {
        box->clear();
    }
    for (const study::OutputColumn& column : rows_.columns) {
        output_->addItem(shownText(study::columnTitle(column)));
    }
    by_->addItem("one only");
    for (const study::AskedVariable& variable : question_.variables) {
        const QString title = QString::fromStdString(study::variableTitle(variable));
        along_->addItem(title);
        by_->addItem(title);
    }
    by_->setCurrentIndex(question_.variables.size() > 1 ? 2 : 0);
    cutRow_->setVisible(grid);
    offerPlaces();
}

/// A choice of its value for each variable of a grid, to begin with the middle one.
void StudyAnswer::offerPlaces() {
    for (QComboBox* box : places_) {
        delete box;
    }
    places_.clear();
    if (question_.asking != study::Asking::Grid) {
        return;
    }
    for (const study::AskedVariable& variable : question_.variables) {
        const QString title = QString::fromStdString(study::variableTitle(variable));
        auto* box = new QComboBox;
        box->setObjectName("cboPlace_" + QString::fromStdString(study::variableName(variable)));
        box->setAccessibleName("Value of " + title);
        for (const double value : study::valuesOf(variable)) {
            box->addItem(title + " " +
                         shownText(study::numberWithUnit(variable, value, question_.units)));
        }
        box->setCurrentIndex(variable.steps / 2);
        placeRow_->insertWidget(placeRow_->count() - 1, box);
        connect(box, &QComboBox::currentIndexChanged, this, [this] { choose(); });
        places_.push_back(box);
    }
}

study::GridCut StudyAnswer::cut() const {
    study::GridCut cut{.column = static_cast<std::size_t>(std::max(0, output_->currentIndex())),
                       .along = static_cast<std::size_t>(std::max(0, along_->currentIndex()))};
    if (by_->currentIndex() > 0 && by_->currentIndex() - 1 != along_->currentIndex()) {
        cut.by = static_cast<std::size_t>(by_->currentIndex() - 1);
    }
    for (const QComboBox* box : places_) {
        cut.values.push_back(static_cast<std::size_t>(box->currentIndex()));
    }
    return cut;
}

void StudyAnswer::choose() {
    const study::GridCut shown = cut();
    QComboBox* first = nullptr;
    for (std::size_t n = 0; n < places_.size(); ++n) {
        const bool stands = n != shown.along && n != shown.by;
        places_[n]->setVisible(stands);
        first = first == nullptr && stands ? places_[n] : first;
    }
    where_->setVisible(first != nullptr);
    where_->setBuddy(first);
    if (question_.asking == study::Asking::Grid) {
        const study::Curves curves = study::curvesOf(question_, rows_, shown);
        cells_ = tableOf(curves);
        picture_->showFigure([curves](double width, double height) {
            return study::figureOf(curves, width, height);
        });
    } else {
        const study::Tornado tornado = study::tornadoOf(question_, rows_, shown.column);
        cells_ = tableOf(tornado);
        picture_->showFigure(
            [tornado](double width, double) { return study::figureOf(tornado, width); });
    }
    fillTable();
}

study::SizedFigure StudyAnswer::figure() const {
    return picture_->forFile();
}

void StudyAnswer::fillTable() {
    const auto columns = static_cast<int>(cells_.headings.size());
    table_->clear();
    table_->setColumnCount(columns);
    table_->setRowCount(static_cast<int>(cells_.lines.size()));
    for (int column = 0; column < columns; ++column) {
        const std::string& heading = cells_.headings[static_cast<std::size_t>(column)];
        table_->setHorizontalHeaderItem(column, new QTableWidgetItem(shownText(heading)));
        for (int row = 0; row < table_->rowCount(); ++row) {
            const std::string& text =
                cells_.lines[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            auto* item = new QTableWidgetItem(shownText(text));
            const bool isText = column == 0 && question_.asking == study::Asking::OneAtATime;
            item->setTextAlignment(Qt::AlignVCenter | (isText ? Qt::AlignLeft : Qt::AlignRight));
            item->setToolTip(item->text()); // a reason can be longer than its column
            table_->setItem(row, column, item);
        }
    }
    table_->resizeColumnsToContents();
    const QHeaderView& headings = *table_->horizontalHeader();
    for (int column = 1; column < columns; ++column) {
        const int limited = std::min(table_->columnWidth(column), pixels(2600));
        table_->setColumnWidth(column, std::max(limited, headings.sectionSizeHint(column)));
    }
    table_->setCurrentCell(0, 0);
}

void StudyAnswer::shareRoom() {
    const int needed =
        table_->horizontalHeader()->sizeHint().height() + table_->verticalHeader()->length() +
        table_->horizontalScrollBar()->sizeHint().height() + 2 * table_->frameWidth();
    const int table = std::min(needed, pixels(2100));
    splitter_->setSizes({std::max(splitter_->height() - table, pixels(1800)), table});
}

} // namespace korvane
