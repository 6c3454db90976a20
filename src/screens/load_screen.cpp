#include "screens/load_screen.h"

#include "screens/sketch.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace korvane {

namespace {

// All in twips.
constexpr double Margin = 150;
constexpr double SketchTop = 360;
constexpr double SketchWidth = 4950;
constexpr double SketchHeight = 1650;
constexpr double LeastSideWidth = 3600;
constexpr double ColumnWidth = 1080;
constexpr double NumbersWidth = 390;
constexpr double TitleHeight = 330;
constexpr double LabelHeight = 495;
constexpr double Pitch = 285;
constexpr double NoticeHeight = 510; // two lines
constexpr double ButtonHeight = 465;
constexpr double FinishedWidth = 1260;
constexpr double DeleteWidth = 2700;

bool hasSideFrames(const LoadKind& kind) {
    return kind.side[0].frame != nullptr;
}

QString controlName(const LoadColumn& column, int side) {
    return side == Left ? column.leftControl : column.right.control;
}

FieldMeaning meaningOf(const LoadColumn& column, int side, bool sided) {
    FieldMeaning meaning = meaningOf(column.right, side);
    if (sided) {
        meaning.name.prepend(side == Right ? "Rightside " : "Leftside ");
    }
    return meaning;
}

QString labelText(const LoadColumn& column, int side) {
    return side == Left && column.leftLabel != nullptr ? column.leftLabel : column.right.label;
}

} // namespace

/// Where the parts of a kind stand on its frame, in twips.
struct LoadScreen::Arrangement {
    explicit Arrangement(const LoadKind& kind) {
        const double title = kind.columnsTitle != nullptr ? TitleHeight : 0;
        const bool framed = hasSideFrames(kind);
        rows = {.count = kind.load.mostRows(), .pitch = Pitch};
        labelTop = (*kind.side[0].title != '\0' ? TitleHeight : 0) + (framed ? title : 0);
        rows.firstTop = labelTop + LabelHeight;
        sideTop = SketchTop + SketchHeight + Margin + (framed ? 0 : title);
        sideWidth =
            std::max(LeastSideWidth, NumbersWidth + 2 * Margin +
                                         static_cast<double>(kind.columns.size()) * ColumnWidth);
        sideHeight = rows.firstTop + rows.height() + Margin;
        width =
            std::max(SketchWidth, kind.load.sides() * (sideWidth + Margin) - Margin) + 2 * Margin;
        sidesLeft = (width - kind.load.sides() * (sideWidth + Margin) + Margin) / 2;
        buttonTop = sideTop + sideHeight + 30 + NoticeHeight + 30;
    }

    double sideLeft(int side) const { return sidesLeft + (side - 1) * (sideWidth + Margin); }

    TableRows rows;
    double labelTop; ///< on the frame of a side
    double sideTop, sideWidth, sideHeight, sidesLeft;
    double width, buttonTop;
};

LoadScreen::LoadScreen(ScreenContext& context, const char* name, const char* title,
                       std::span<const LoadRules> shown)
    : DataScreen(context, name, title), kind_(loadKind(shown, context.session.LoadKind)) {
    const Arrangement at(kind_);
    QFrame* frame = makeGroup(canvas(), kind_.frame, kind_.title,
                              {0, 0, at.width, at.buttonTop + ButtonHeight + Margin});
    auto* sketch = new SketchView(frame, kind_.picture, kind_.sketch);
    sketch->setAccessibleName(QString("Sketch of ") + kind_.title);
    place(sketch, {(at.width - SketchWidth) / 2, SketchTop, SketchWidth, SketchHeight});
    if (kind_.columnsTitle != nullptr && !hasSideFrames(kind_)) {
        makeLabel(frame, "Label11", kind_.columnsTitle,
                  {Margin, at.sideTop - TitleHeight, at.width - 2 * Margin, TitleHeight});
    }
    for (int side = 1; side <= kind_.load.sides(); ++side) {
        createSide(frame, side, at);
    }
    createButtons(frame, at);
    if (kind_.load.sides() == 2) {
        setSides(tables_[0].get(), tables_[1].get());
    }
    keepCentred(frame, Centre::Both);

    watchFields();
    std::vector<QWidget*> order;
    for (int side = 1; side <= kind_.load.sides(); ++side) {
        fillSide(side);
        table(side).whenEdited(this, [this, side] { deleteButton(side)->show(); });
        const auto fields = table(side).focusOrder();
        order.insert(order.end(), fields.begin(), fields.end());
    }
    order.push_back(finished_);
    for (QPushButton* button : deletes_) {
        if (button != nullptr) {
            order.push_back(button);
        }
    }
    setFocusOrder(order);
    order.front()->setFocus(Qt::TabFocusReason);
}

bool LoadScreen::sharesDelete() const {
    return kind_.load.sides() == 2 && kind_.side[1].deleteName == nullptr;
}

void LoadScreen::createSide(QWidget* frame, int side, const Arrangement& at) {
    const LoadSide& spec = kind_.side[side - 1];
    const Place where{at.sideLeft(side), at.sideTop, at.sideWidth, at.sideHeight};
    QWidget* parent = nullptr;
    if (spec.frame != nullptr) {
        parent = makeGroup(frame, spec.frame, spec.title, where);
    } else {
        parent = new QWidget(frame);
        place(parent, where);
    }
    auto& rows = tables_[side - 1];
    rows = std::make_unique<FieldTable>(at.rows);
    if (kind_.load.mostRows() > 1) {
        rows->addRowNumbers(parent, Margin, NumbersWidth - Margin / 2);
    }
    const double left = Margin + NumbersWidth;
    const auto columns = static_cast<double>(kind_.columns.size());
    const double width = (at.sideWidth - left - Margin) / columns;
    double place = left;
    for (const LoadColumn& column : kind_.columns) {
        rows->addColumn(parent, {.control = controlName(column, side),
                                 .label = labelText(column, side),
                                 .meaning = meaningOf(column, side, kind_.load.sides() == 2),
                                 .left = place,
                                 .width = width - Margin / 3,
                                 .labelTop = at.labelTop,
                                 .labelName = column.labelName[side - 1]});
        place += width;
    }
    rows->addNotice(frame, rows->field(0, 1)->objectName() + "_refused",
                    {where.left, where.top + where.height + 30, where.width, NoticeHeight});
    if (kind_.columnsTitle != nullptr && spec.frame != nullptr) {
        makeLabel(parent, QString(spec.frame) + "_distances", kind_.columnsTitle,
                  {left, at.labelTop - TitleHeight, width * (columns - 1), TitleHeight});
    }
}

void LoadScreen::createDelete(QWidget* frame, int side, const Place& where) {
    const LoadSide& spec = kind_.side[side - 1];
    deletes_[side - 1] = addButton(frame, spec.deleteName, spec.deleteCaption, where,
                                   [this, side] { clickDelete(side); });
    deletes_[side - 1]->hide();
}

/// Two delete buttons stand under their sides with Finished between them, one beside it.
void LoadScreen::createButtons(QWidget* frame, const Arrangement& at) {
    double finishedLeft = (at.width - FinishedWidth) / 2;
    if (kind_.load.sides() == 2 && !sharesDelete()) {
        const double room = finishedLeft - 2 * Margin;
        const double width = std::min(DeleteWidth, room);
        createDelete(frame, Right,
                     {Margin + (room - width) / 2, at.buttonTop, width, ButtonHeight});
        createDelete(frame, Left,
                     {at.width - Margin - (room + width) / 2, at.buttonTop, width, ButtonHeight});
    } else {
        finishedLeft = (at.width - FinishedWidth - Margin - DeleteWidth) / 2;
        createDelete(
            frame, Right,
            {finishedLeft + FinishedWidth + Margin, at.buttonTop, DeleteWidth, ButtonHeight});
    }
    finished_ = addButton(frame, kind_.finishedName, "&Finished",
                          {finishedLeft, at.buttonTop, FinishedWidth, ButtonHeight},
                          [this] { finishStage(); });
}

void LoadScreen::fillSide(int side) {
    for (int row = 1; row <= count(side); ++row) {
        int column = 0;
        for (const LoadColumn& spec : kind_.columns) {
            table(side).field(column++, row)->showNumber(spec.right.value(problem(), side, row));
        }
    }
    if (count(side) > 0) {
        deleteButton(side)->show();
    }
}

void LoadScreen::clickDelete(int side) {
    deletes_[side - 1]->hide();
    if (sharesDelete()) {
        deleteSide(Right);
        deleteSide(Left);
    } else {
        deleteSide(side);
    }
}

void LoadScreen::deleteSide(int side) {
    touch();
    if (count(side) > 0) {
        dataChanged();
    }
    count(side) = 0;
    table(side).clear();
}

void LoadScreen::takeCounts(Problem& typed) {
    for (int side = 1; side <= kind_.load.sides(); ++side) {
        rulesOf(kind_.load.count).at(typed, side) = table(side).lastFilledRow();
    }
}

Fault LoadScreen::readSide(int side) {
    const int rows = table(side).lastFilledRow();
    count(side) = kind_.countsWhenRead ? 0 : rows;
    if (rows > 0 && rows < leastOf(kind_.load.count, ByScreen)) {
        failAt(table(side).field(0, rows + 1));
        return Fault::Invalid;
    }
    for (int row = 1; row <= rows; ++row) {
        int column = 0;
        for (const LoadColumn& spec : kind_.columns) {
            failAt(table(side).field(column, row));
            const Fault fault =
                readEntry(table(side).entry(column++, row), spec.right, problem(), side, row);
            if (fault != Fault::None) {
                return fault;
            }
        }
    }
    count(side) = rows;
    return Fault::None;
}

void LoadScreen::finishStage() {
    Fault fault = Fault::None;
    for (int side = 1; side <= kind_.load.sides() && fault == Fault::None; ++side) {
        fault = readSide(side);
    }
    if (fault != Fault::None) {
        const bool missing = fault == Fault::Missing;
        const BoxText& box = missing ? kind_.missing : kind_.invalid;
        const char* choices =
            missing && kind_.missingChoices != nullptr ? kind_.missingChoices : kind_.choices;
        if (goesOn(okCancelBox(box.title, std::string(box.text) + choices))) {
            return;
        }
        for (int side = 1; side <= kind_.load.sides(); ++side) {
            count(side) = 0;
        }
        if (kind_.cancelIsFailure) {
            session().SolutionFailed = 1;
        }
    }
    accept();
}

} // namespace korvane
