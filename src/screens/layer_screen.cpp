#include "screens/layer_screen.h"

#include "problem/counts.h"
#include "screens/layer_columns.h"
#include "widgets/geometry.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace korvane {

namespace {

// All in twips.
constexpr int LayerRows = mostOf(ProblemCount::SoilLayerCount);
constexpr double SheetWidth = 9450;
constexpr double GroupTop = 1080;
constexpr double GroupHeight = 3885;
constexpr double GroupMargin = 60;
constexpr double NumbersWidth = 210;
constexpr double NoticeHeight = 300;
constexpr double FinishedTop = GroupHeight + 390;
constexpr double LabelTop = 465; ///< under a title of two lines
constexpr double RowPitch = 270;
constexpr TableRows LayerPlace{
    .count = LayerRows,
    .firstTop = GroupHeight - GroupMargin - LayerRows * RowPitch,
    .pitch = RowPitch,
};

struct SideWords {
    const char* name;
    const char* capitals;
};
constexpr SideWords sideWords[] = {{"Rightside", "RIGHTSIDE"}, {"Leftside", "LEFTSIDE"}};

const SideWords& wordsOf(int side) {
    return sideWords[side - 1];
}

constexpr Column factorColumns[] = {
    {"txtFSA2", "Active", "Level 2 safety factor, active", ProblemField::Level2FSActive, nullptr,
     IfEmpty::Zero, "empty means the level 1 factor"},
    {"txtFSP2", "Passive", "Level 2 safety factor, passive", ProblemField::Level2FSPassive, nullptr,
     IfEmpty::Zero, "empty means the level 1 factor"},
};

constexpr const char* LayerChoices = "\n\n     Choose OK to continue SOIL LAYER"
                                     "\n          DATA entry."
                                     "\n     Choose CANCEL to delete ALL SOIL LAYER"
                                     "\n          DATA and exit.";

MessageBox layerBox(Fault fault) {
    const bool missing = fault == Fault::Missing;
    return okCancelBox(
        missing ? "DATA MISSING" : "INVALID DATA",
        std::string(missing ? ValueMissing : "At least one required data value is invalid.") +
            LayerChoices);
}

MessageBox changeKindBox(SoilData chosen) {
    return {.text = chosen == SoilData::Coefficients
                        ? "Current data are for SOIL STRENGTH DATA."
                          "\nDo you want to change to SOIL PRESSURE COEFFICIENTS?"
                        : "Current data are for SOIL PRESSURE COEFFICIENTS."
                          "\nDo you want to change to SOIL STRENGTH DATA?",
            .title = "CHANGE SOIL DATA TYPE?",
            .buttons = Buttons::YesNo,
            .icon = Icon::Question};
}

} // namespace

LayerScreen::LayerScreen(ScreenContext& context)
    : DataScreen(context, "LAYRDATA", "SOIL LAYER DATA"), table_(LayerPlace) {
    heading_ = makeTitle(canvas(), "panHeading", {}, {0, 240, 4800, 480});
    keepCentred(heading_, Centre::Across);
    createSideStage();
    createControlStage();
    createLayerStage();
    useRoom(canvas()->size());
    watchFields();
    show(Stage::Sides);
}

// ---- building
// ------------------------------------------------------------------------------------

void LayerScreen::createSideStage() {
    const bool edit = problem().SoilLayerCount(Right) != 0; // of the right side for both
    sideFrame_ = makeGroup(canvas(), "fraSoilDataAction", {}, {0, 0, 4335, 3495});
    makeTitle(sideFrame_, "panSoilDataAction", "Select Desired Action", {240, 150, 3855, 450});
    double top = 750;
    std::vector<QWidget*> order;
    for (const int side : {Right, Left}) {
        const std::string name = wordsOf(side).name;
        const std::string button = "cmdEnter" + name;
        const std::string panel = "pan" + name;
        sideControl(side) = makeSectionControl(
            sideFrame_, {.name = button.c_str(), .caption = "", .panel = panel.c_str()},
            {240, top, 3855, 630});
        captionSide(side, edit);
        highlight(sideControl(side).panel, edit);
        connect(sideControl(side).button, &QPushButton::clicked, this,
                [this, side] { run([&] { chooseSide(side); }); });
        order.push_back(sideControl(side).button);
        top += 720;
    }
    makeLabel(sideFrame_, "Label3", HighlightNote, {60, top + 60, 4215, 450});
    order.push_back(addButton(sideFrame_, "cmdFinishedAction", "&Finished", {1365, 2850, 1605, 465},
                              [this] { finishSides(); }));
    nextAction_ = order.front();
    setFocusOrder(order);
    keepCentred(sideFrame_, Centre::Both);
}

void LayerScreen::createControlStage() {
    control_ = makeGroup(canvas(), "panControlData", " ", {0, 0, 5925, 2415});
    controlTitle_ = control_->findChild<QLabel*>("panControlData_title");
    QFrame* type = makeGroup(control_, "fraSoilType", "Soil Data Type", {240, 420, 2100, 1260});
    strengths_ = addOption(type, "optStrengths", "Strengths", {150, 390, 1800, 330},
                           [this] { chooseKind(SoilData::Strengths); });
    coefficients_ = addOption(type, "optCoefficients", "Coefficients", {150, 750, 1800, 330},
                              [this] { chooseKind(SoilData::Coefficients); });
    factors_ = makeGroup(control_, "fraSafety2", "Level 2 Safety Factors", {2580, 420, 3105, 1260});
    std::vector<QWidget*> order{strengths_, coefficients_};
    double left = 240;
    int number = 0;
    for (const Column& column : factorColumns) {
        auto* field = new Field(factors_, column.control);
        makeLabel(factors_, QString(column.control) + "_label", column.label,
                  {left, 330, 1200, 360})
            ->setBuddy(field);
        place(field, {left, 720, 1200, 300});
        factorFields_[number++] = field;
        order.push_back(field);
        left += 1425;
    }
    order.push_back(
        addButton(control_, "cmdOK", "&OK", {2362, 1815, 1200, 465}, [this] { finishControl(); }));
    setFocusOrder(order);
    keepCentred(control_, Centre::Both);
}

void LayerScreen::createLayerStage() {
    layerSheet_ = makeSheet(SheetWidth, GroupHeight + 960, GroupTop);
    for (const LayerGroup& group : layerGroups()) {
        const double width =
            group.strengthsWidth > 0 ? group.strengthsWidth : group.coefficientsWidth;
        QFrame* frame =
            makeGroup(layerSheet_, group.frame, group.title, {0, 0, width, GroupHeight});
        if (table_.columnCount() == 0) {
            table_.addRowNumbers(frame, GroupMargin / 2, NumbersWidth);
        }
        for (const LayerColumn& column : layerColumns()) {
            if (column.frame == std::string(group.frame)) {
                table_.addColumn(frame,
                                 {.control = column.column.control,
                                  .label = column.column.label,
                                  .meaning = meaningOf(column.column),
                                  .labelTop = *group.title != '\0' ? LabelTop : GroupMargin});
            }
        }
    }
    table_.addNotice(layerSheet_, "layers_refused", {});
    cmdFinished_ = addButton(layerSheet_, "cmdFinished", {}, {3225, FinishedTop, 3000, 495},
                             [this] { finishLayers(); });
    std::vector<QWidget*> order = table_.focusOrder();
    order.push_back(cmdFinished_);
    setFocusOrder(order);
}

/// The groups of a kind in their proportions across the sheet, the columns across their groups.
void LayerScreen::arrangeGroups() {
    const bool ofStrengths = kind() == SoilData::Strengths;
    int number = 0;
    for (const LayerGroup& group : layerGroups()) {
        const double left = stretch_ * (ofStrengths ? group.strengthsLeft : group.coefficientsLeft);
        const double width =
            stretch_ * (ofStrengths ? group.strengthsWidth : group.coefficientsWidth);
        auto* frame = layerSheet_->findChild<QFrame*>(group.frame);
        frame->setVisible(width > 0);
        place(frame, {left, 0, width, GroupHeight});
        const auto columns = std::count_if(
            layerColumns().begin(), layerColumns().end(),
            [&](const LayerColumn& column) { return column.frame == std::string(group.frame); });
        const double first = GroupMargin + (number == 0 ? NumbersWidth : 0);
        const double each = (width - first - GroupMargin) / static_cast<double>(columns);
        for (int column = 0; column < columns; ++column) {
            if (width > 0) {
                table_.placeColumn(number, first + column * each, each);
            }
            ++number;
        }
        if (auto* title = frame->findChild<QLabel*>(QString(group.frame) + "_title")) {
            title->resize(frame->width() - 2 * title->x(), title->height());
        }
    }
    table_.placeNotice(
        {stretch_ * 180, GroupHeight + 30, stretch_ * (SheetWidth - 360), NoticeHeight});
    place(cmdFinished_, {(stretch_ * SheetWidth - 3000) / 2, FinishedTop, 3000, 495});
}

/// The layers' sheet takes what width the window has.
void LayerScreen::useRoom(QSize room) {
    if (layerSheet_ == nullptr) {
        return;
    }
    stretch_ = std::max(1.0, static_cast<double>(room.width()) / pixels(SheetWidth));
    layerSheet_->resize(std::max(pixels(SheetWidth), room.width()), layerSheet_->height());
    arrangeGroups();
}

void LayerScreen::captionSide(int side, bool edit) {
    sideControl(side).button->setText(
        QString("%1 &%2 Soil Data").arg(edit ? "Edit" : "Enter").arg(wordsOf(side).name));
}

void LayerScreen::show(Stage stage) {
    stage_ = stage;
    sideFrame_->setVisible(stage == Stage::Sides);
    heading_->setVisible(stage != Stage::Sides);
    control_->setVisible(stage == Stage::Control);
    layerSheet_->setVisible(stage == Stage::Layers);
    arrange();
    switch (stage) {
    case Stage::Sides:
        nextAction_->setFocus(Qt::TabFocusReason);
        break;
    case Stage::Control:
        (coefficients_->isChecked() ? coefficients_ : strengths_)->setFocus(Qt::TabFocusReason);
        break;
    case Stage::Layers:
        table_.moveFocus(0, 1);
        break;
    }
}

// ---- stage 1
// -------------------------------------------------------------------------------------

void LayerScreen::chooseSide(int side) {
    SideIndex_ = side;
    // After the right side comes the left one, and then the end.
    nextAction_ = side == Right ? sideControl(Left).button
                                : sideFrame_->findChild<QPushButton*>("cmdFinishedAction");
    const bool edit = layers() != 0;
    heading_->setText(
        QString("%1 %2 Soil Data").arg(edit ? "Edit" : "Enter").arg(wordsOf(side).capitals));
    controlTitle_->setText(QString("Control Data for %1 Soil").arg(wordsOf(side).name));
    setOption(strengths_, edit && kind() == SoilData::Strengths);
    setOption(coefficients_, edit && kind() == SoilData::Coefficients);
    for (int number = 0; number < 2; ++number) {
        const double factor = factorColumns[number].value(problem(), side, 1);
        FieldMeaning meaning = meaningOf(factorColumns[number], side);
        meaning.name =
            QString(wordsOf(side).name) + ", " + meaning.name.at(0).toLower() + meaning.name.mid(1);
        factorFields_[number]->setMeaning(meaning);
        factorFields_[number]->setText({});
        if (edit && factor != 0) {
            factorFields_[number]->showNumber(factor);
        }
    }
    show(Stage::Control);
}

void LayerScreen::finishSides() {
    if (problem().SoilLayerCount(Right) != 0 && problem().SoilLayerCount(Left) != 0) {
        accept();
        return;
    }
    failAt(sideControl(problem().SoilLayerCount(Right) == 0 ? Right : Left).button);
    if (!goesOn(okCancelBox("INSUFFICIENT DATA", "Insufficient SOIL LAYER DATA have been provided."
                                                 "\n\n     Choose OK to continue SOIL LAYER"
                                                 "\n          DATA entry."
                                                 "\n     Choose CANCEL to DELETE ALL SOIL LAYER"
                                                 "\n          DATA and exit."))) {
        dropLayers(true);
    }
}

void LayerScreen::dropLayers(bool andKinds) {
    problem().SoilLayerCount.fill(0);
    if (andKinds) {
        problem().SoilDataKind.fill(SoilData::None);
    }
    accept();
}

// ---- stage 2
// -------------------------------------------------------------------------------------

/// A side that has layers of the other kind loses them if that is confirmed. Deliberately a No
/// leaves the option as clicked.
void LayerScreen::chooseKind(SoilData chosen) {
    const SoilData other =
        chosen == SoilData::Coefficients ? SoilData::Strengths : SoilData::Coefficients;
    if (layers() == 0 || kind() != other || ask(changeKindBox(chosen)) != Answer::Yes) {
        return;
    }
    dataChanged();
    layers() = 0;
    captionSide(SideIndex_, false);
    factors_->setVisible(chosen == SoilData::Coefficients);
    if (chosen == SoilData::Coefficients) {
        factorFields_[0]->setText({});
        factorFields_[1]->setText({});
    }
}

void LayerScreen::finishControl() {
    kind() = coefficients_->isChecked() ? SoilData::Coefficients
             : strengths_->isChecked()  ? SoilData::Strengths
                                        : SoilData::None;
    if (kind() == SoilData::None) {
        return; // deliberately without a message
    }
    for (int number = 0; number < 2; ++number) {
        failAt(factorFields_[number]);
        if (readEntry(factorFields_[number]->entry(), factorColumns[number], problem(),
                      SideIndex_) != Fault::None) {
            if (!goesOn(okCancelBox("INVALID DATA",
                                    std::string(ValueInvalid) +
                                        "\n\nChoose OK to continue DATA entry."
                                        "\nChoose CANCEL to DELETE ALL DATA on this form"
                                        "\n     and exit."))) {
                dropLayers(true);
            }
            return;
        }
    }
    arrangeGroups();
    fillLayers();
    for (int column = 0; column < table_.columnCount(); ++column) {
        for (int row = 1; row <= LayerRows; ++row) {
            Field* field = table_.field(column, row);
            FieldMeaning meaning = field->meaning();
            meaning.side = SideIndex_;
            field->setMeaning(meaning);
            field->setAccessibleDescription(QString("%1 soil; ").arg(wordsOf(SideIndex_).name) +
                                            meaning.limits);
        }
    }
    cmdFinished_->setText(QString("Finished With &%1 Soil").arg(wordsOf(SideIndex_).name));
    show(Stage::Layers);
}

// ---- stage 3
// -------------------------------------------------------------------------------------

void LayerScreen::fillLayers() {
    table_.clear();
    for (int layer = 1; layer <= layers(); ++layer) {
        int place = 0;
        for (const LayerColumn& column : layerColumns()) {
            const double value = column.column.value(problem(), SideIndex_, layer);
            if (column.isOf(kind()) && !(column.notOfLast && layer == layers()) &&
                !(column.emptyIfZero && value == 0)) {
                table_.field(place, layer)->showNumber(value);
            }
            ++place;
        }
    }
}

int LayerScreen::filledLayers() {
    std::vector<int> counting;
    int place = 0;
    for (const LayerColumn& column : layerColumns()) {
        if (column.countsRow && column.isOf(kind())) {
            counting.push_back(place);
        }
        ++place;
    }
    return table_.lastFilledRow(counting);
}

/// In each layer first what both kinds have, then the kind's own columns.
Fault LayerScreen::readLayers() {
    for (int layer = 1; layer <= layers(); ++layer) {
        for (const bool ofBoth : {true, false}) {
            int place = -1;
            for (const LayerColumn& column : layerColumns()) {
                ++place;
                const bool common =
                    column.isOf(SoilData::Strengths) && column.isOf(SoilData::Coefficients);
                if (common != ofBoth || !column.isOf(kind()) ||
                    (column.notOfLast && layer == layers())) {
                    continue;
                }
                failAt(table_.field(place, layer));
                const Fault fault = readEntry(table_.entry(place, layer), column.column, problem(),
                                              SideIndex_, layer);
                if (fault != Fault::None) {
                    return fault;
                }
            }
        }
    }
    return Fault::None;
}

/// On the way to further layers none is the last one yet, which has no bottom.
void LayerScreen::takeCounts(Problem& typed) {
    int& count = typed.SoilLayerCount(SideIndex_);
    if (stage_ == Stage::Control) {
        typed.SoilDataKind(SideIndex_) =
            coefficients_->isChecked() ? SoilData::Coefficients : SoilData::Strengths;
        count = std::max(count, 1);
    } else if (stage_ == Stage::Layers) {
        count = kind() == SoilData::Strengths ? LayerRows : filledLayers();
    }
}

void LayerScreen::finishLayers() {
    layers() = filledLayers();
    if (layers() == 0) {
        failAt(table_.field(0, 1));
        if (!goesOn(
                okCancelBox("DATA MISSING",
                            std::string("At least one soil layer is required.") + LayerChoices))) {
            dropLayers(true);
        }
        return;
    }
    if (const Fault fault = readLayers(); fault != Fault::None) {
        if (!goesOn(layerBox(fault))) {
            dropLayers(false); // the kinds deliberately stay here
        }
        return;
    }
    captionSide(SideIndex_, true);
    highlight(sideControl(SideIndex_).panel, true);
    problem().SoilBottomElev(SideIndex_, layers()) = NoLayerBottom;
    show(Stage::Sides);
}

void LayerScreen::finishStage() {
    switch (stage_) {
    case Stage::Sides:
        finishSides();
        break;
    case Stage::Control:
        finishControl();
        break;
    case Stage::Layers:
        finishLayers();
        break;
    }
}

} // namespace korvane
