#include "screens/water_screen.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace korvane {

namespace {

constexpr int PressureRows = 11;
constexpr TableRows PressurePlace{.count = PressureRows, .firstTop = 840, .pitch = 285};

// ---- elevations
// ----------------------------------------------------------------------------------

bool waterIs(const Session& session, WaterData kind) {
    return session.problem.WaterDataKind == kind;
}

struct FieldSpec {
    const char* frame;
    const char* labelName;
    Column column;
    Place label;
    Place place;
};

/// The gradient's range has a box of its own and is tested after it is stored.
constexpr FieldSpec fieldSpecs[] = {
    {"fraWaterProps",
     nullptr,
     {"txtWaterWt", "Water Unit Weight (PCF)", ProblemField::WaterUnitWeight},
     {150, 60, 1800, 495},
     {450, 570, 1200, 300}},
    {"fraWaterElevs",
     nullptr,
     {"txtWaterElR", "Rightside", ProblemField::WaterElev},
     {150, 330, 1200, 240},
     {150, 570, 1200, 300}},
    {"fraWaterElevs",
     nullptr,
     {"txtWaterElL", "Leftside", ProblemField::WaterElev},
     {1500, 330, 1200, 240},
     {1500, 570, 1200, 300}},
    {"fraSeepData",
     "lblSeepEl",
     {"txtSeepEl", "Seepage Elevation (FT)", ProblemField::SeepageElev},
     {150, 210, 1500, 495},
     {300, 720, 1200, 300}},
    {"fraSeepData",
     "lblSeepGrad",
     {"txtSeepGrad", "Seepage Gradient (FT/FT)", ProblemField::SeepageGradient},
     {1800, 210, 1500, 495},
     {1950, 720, 1200, 300}},
};

constexpr Column pressureColumns[] = {
    {"txtELWPR", " Elevation (FT)", ProblemField::WaterPressElev},
    {"txtWPR", "Pressure (PSF)", ProblemField::WaterPressure},
};

// ---- boxes
// ---------------------------------------------------------------------------------------

constexpr const char* WaterChoices = "     Choose OK to continue WATER DATA entry."
                                     "\n     Choose CANCEL to DELETE ALL WATER"
                                     "\n          DATA and exit.";

MessageBox missingBox() {
    return okCancelBox("DATA MISSING", std::string(ValueMissing) + "\n\n\n\n" + WaterChoices);
}

MessageBox invalidBox() {
    return okCancelBox("INVALID DATA", std::string(ValueInvalid) + "\n\n\n\n" + WaterChoices);
}

MessageBox inconsistentBox(const std::string& text) {
    return okCancelBox("INCONSISTENT WATER ELEVATIONS", text + "\n\n" + WaterChoices);
}

MessageBox lowSeepageWarning() {
    return {.text = "WARNING     WARNING     WARNING"
                    "\nSeepage elevation is less than leftside water"
                    "\nelevation, hence may be inconsistent"
                    "\ndepending on leftside soil surface elevations.",
            .title = "POSSIBLE INCONSISTENT SEEPAGE ELVATION",
            .buttons = Buttons::Ok,
            .icon = Icon::Information};
}

} // namespace

WaterScreen::WaterScreen(ScreenContext& context)
    : DataScreen(context, "WATER", "WATER DATA"), pressures_(PressurePlace) {
    createList();
    createElevations();
    createPressures();
    watchFields();
    highlightKind(problem().WaterDataKind);
    deleteControl_.panel->setVisible(problem().WaterDataKind != WaterData::None);
    show(Stage::List);
}

// ---- building
// ------------------------------------------------------------------------------------

void WaterScreen::createList() {
    list_ = makeGroup(canvas(), "fraWaterSects", {}, {0, 0, 4800, 4350});
    makeTitle(list_, "panWater", "Select Data Section to be Entered", {240, 180, 4320, 450});
    struct Line {
        SectionControl& control;
        SectionButton button;
        void (WaterScreen::*open)();
    };
    const Line lines[] = {
        {elevationsControl_,
         {"cmdWaterEls", "Water &Elevation Data", "panWaterEls"},
         &WaterScreen::openElevations},
        {pressuresControl_,
         {"cmdWaterPres", "Water &Pressure Data", "panWaterPres"},
         &WaterScreen::openPressures},
        {deleteControl_,
         {"cmdDelete", "&Delete All Water Data", "panDelete"},
         &WaterScreen::deleteAll},
    };
    std::vector<QWidget*> order;
    double top = 810;
    for (const Line& line : lines) {
        line.control = makeSectionControl(list_, line.button, {240, top, 4320, 630});
        connect(line.control.button, &QPushButton::clicked, this,
                [this, open = line.open] { run([&] { (this->*open)(); }); });
        order.push_back(line.control.button);
        top += 750;
    }
    makeLabel(list_, "Label5", HighlightNote, {60, top, 4680, 330});
    order.push_back(addButton(list_, "cmdFinishedWaterData", "&Finished",
                              {1500, top + 480, 1800, 495}, [this] { accept(); }));
    setFocusOrder(order);
    keepCentred(list_, Centre::Both);
}

void WaterScreen::createElevations() {
    elevations_ = makeGroup(canvas(), "fraWaterEls", "Water Elevation Data", {0, 0, 5550, 4290});
    makeGroup(elevations_, "fraWaterProps", {}, {180, 420, 2130, 1050});
    makeGroup(elevations_, "fraWaterElevs", "Water Elevations (FT)", {2460, 420, 2910, 1050})
        ->findChild<QLabel*>("fraWaterElevs_title")
        ->setObjectName("lblWaterEl");
    QFrame* type = makeGroup(elevations_, "fraSeepType", "Seepage Type", {180, 1620, 1710, 1650});
    seepage_ = makeGroup(elevations_, "fraSeepData", {}, {2010, 1620, 3360, 1650});

    int number = 0;
    for (const FieldSpec& spec : fieldSpecs) {
        auto* frame = elevations_->findChild<QFrame*>(spec.frame);
        const QString control = spec.column.control;
        labels_[number] =
            makeLabel(frame, spec.labelName != nullptr ? spec.labelName : control + "_label",
                      spec.column.label, spec.label);
        auto* field = new Field(frame, control);
        place(field, spec.place);
        field->setAccessibleName(spec.column.label);
        fields_[number++] = field;
    }
    struct OptionSpec {
        Seepage seepage;
        const char* name;
        const char* caption;
    };
    constexpr OptionSpec optionSpecs[] = {
        {Seepage::None, "optNoSeep", "None"},
        {Seepage::Given, "optSeepEl", "Elev/Grad"},
        {Seepage::Automatic, "optAutoSeep", "Automatic"},
    };
    double top = 390;
    for (const OptionSpec& spec : optionSpecs) {
        option(spec.seepage) =
            addOption(type, spec.name, spec.caption, {120, top, 1500, 330},
                      [this, seepage = spec.seepage] { chooseSeepage(seepage); });
        top += 390;
    }
    QPushButton* finished = addButton(elevations_, "cmdFinishedElevData", "&Finished",
                                      {1875, 3540, 1800, 495}, [this] { finishElevations(); });
    setFocusOrder({fields_[UnitWeight], fields_[ElevRight], fields_[ElevLeft], options_[0],
                   options_[1], options_[2], fields_[SeepElev], fields_[SeepGradient], finished});
    keepCentred(elevations_, Centre::Both);
}

void WaterScreen::createPressures() {
    pressureFrame_ = makeGroup(canvas(), "fraWaterPres", "Water Pressure Data", {0, 0, 4200, 4890});
    pressures_.addRowNumbers(pressureFrame_, 120, 360);
    double left = 510;
    for (const Column& column : pressureColumns) {
        pressures_.addColumn(pressureFrame_, {.control = column.control,
                                              .label = column.label,
                                              .left = left,
                                              .width = 1620,
                                              .labelTop = 330});
        left += 1740;
    }
    std::vector<QWidget*> order = pressures_.focusOrder();
    order.push_back(addButton(pressureFrame_, "cmdFinishedWatPres", "&Finished",
                              {1200, 4185, 1800, 495}, [this] { finishPressures(); }));
    setFocusOrder(order);
    keepCentred(pressureFrame_, Centre::Both);
}

void WaterScreen::show(Stage stage) {
    stage_ = stage;
    list_->setVisible(stage == Stage::List);
    elevations_->setVisible(stage == Stage::Elevations);
    pressureFrame_->setVisible(stage == Stage::Pressures);
    arrange();
    switch (stage) {
    case Stage::List:
        elevationsControl_.button->setFocus(Qt::TabFocusReason);
        break;
    case Stage::Elevations:
        fields_[UnitWeight]->setFocus(Qt::TabFocusReason);
        break;
    case Stage::Pressures:
        pressures_.moveFocus(0, 1);
        break;
    }
}

void WaterScreen::highlightKind(WaterData kind) {
    highlight(elevationsControl_.panel, kind == WaterData::Elevations);
    highlight(pressuresControl_.panel, kind == WaterData::Pressures);
}

// ---- the list
// ------------------------------------------------------------------------------------

void WaterScreen::openElevations() {
    const Seepage seepageKind = problem().SeepageKind;
    for (const Number number : {UnitWeight, ElevRight, ElevLeft}) {
        fields_[number]->setText({});
    }
    for (QRadioButton* option : options_) {
        setOption(option, false);
    }
    seepage_->hide();
    const auto fill = [this](Number number, int side) {
        fields_[number]->showNumber(fieldSpecs[number].column.valueIn(problem(), side, 1));
    };
    if (waterIs(session(), WaterData::Elevations)) {
        fill(UnitWeight, Right);
        fill(ElevRight, Right);
        fill(ElevLeft, Left);
        if (seepageKind != Seepage::None) {
            setOption(option(seepageKind), true);
            showSeepage(seepageKind);
            fill(SeepElev, Right);
            if (seepageKind == Seepage::Given) {
                fill(SeepGradient, 1);
            }
        }
    }
    if (seepageKind == Seepage::None) {
        setOption(option(Seepage::None), true);
    }
    highlightKind(WaterData::Elevations);
    problem().WaterDataKind = WaterData::Elevations; // deliberately before any data are entered
    show(Stage::Elevations);
}

void WaterScreen::openPressures() {
    pressures_.clear();
    if (waterIs(session(), WaterData::Pressures)) {
        const int rows = std::min(problem().WaterPressCount, PressureRows);
        for (int row = 1; row <= rows; ++row) {
            int place = 0;
            for (const Column& column : pressureColumns) {
                pressures_.field(place++, row)->showNumber(column.valueIn(problem(), Right, row));
            }
        }
    }
    problem().WaterDataKind = WaterData::Pressures;
    session().DataChanged = 0; // deliberately cleared and not put back
    show(Stage::Pressures);
}

void WaterScreen::deleteAll() {
    problem().WaterPressCount = 0;
    session().DataChanged = 1;
    dropData();
}

void WaterScreen::dropData() {
    problem().WaterDataKind = WaterData::None;
    problem().SeepageKind = Seepage::None;
    accept();
}

bool WaterScreen::offer(const MessageBox& box) {
    if (goesOn(box)) {
        return true;
    }
    dropData();
    return false;
}

// ---- elevations
// ----------------------------------------------------------------------------------

QRadioButton*& WaterScreen::option(Seepage seepage) {
    return options_[seepage == Seepage::None ? 0 : seepage == Seepage::Given ? 1 : 2];
}

void WaterScreen::showSeepage(Seepage seepage) {
    const bool given = seepage == Seepage::Given;
    seepage_->setVisible(seepage != Seepage::None);
    labels_[SeepElev]->setVisible(seepage != Seepage::None);
    fields_[SeepElev]->setEnabled(true);
    labels_[SeepGradient]->setVisible(given);
    fields_[SeepGradient]->setEnabled(given);
}

void WaterScreen::chooseSeepage(Seepage seepage) {
    problem().SeepageKind = seepage;
    fields_[SeepElev]->setText({});
    fields_[SeepGradient]->setText({});
    showSeepage(seepage);
    if (seepage != Seepage::None) { // deliberately None does not mark a change
        session().DataChanged = 1;
    }
}

Fault WaterScreen::read(Number number) {
    const int side = number == ElevLeft ? Left : Right;
    return readEntry(fields_[number]->entry(), fieldSpecs[number].column, problem(), side, 1);
}

void WaterScreen::finishElevations() {
    if (isEmpty(UnitWeight) && isEmpty(ElevRight) && isEmpty(ElevLeft)) {
        dropData();
        return;
    }
    if (!elevationsComplete() || !readElevations()) {
        offer(missingBox()); // deliberately also where a number is bad
        return;
    }
    if (problem().SeepageKind != Seepage::None) {
        if (!readSeepage()) {
            return;
        }
        highlightKind(WaterData::Elevations);
        deleteControl_.panel->show();
    }
    accept();
}

bool WaterScreen::elevationsComplete() {
    const auto isSet = [this](Seepage seepage) { return option(seepage)->isChecked(); };
    const bool all = !isEmpty(UnitWeight) && !isEmpty(ElevRight) && !isEmpty(ElevLeft);
    if (isSet(Seepage::None)) {
        return all;
    }
    if (isSet(Seepage::Automatic)) {
        if (!all || isEmpty(SeepElev)) {
            return false;
        }
        problem().SeepageKind = Seepage::Automatic;
    } else if (isSet(Seepage::Given)) {
        if (!all || isEmpty(SeepElev) || isEmpty(SeepGradient)) {
            return false;
        }
        problem().SeepageKind = Seepage::Given;
    }
    return true;
}

/// False also where no kind of seepage is chosen; the elevations are stored then all the same.
bool WaterScreen::readElevations() {
    for (const Number number : {UnitWeight, ElevRight, ElevLeft}) {
        if (read(number) != Fault::None) {
            return false;
        }
    }
    return std::any_of(std::begin(options_), std::end(options_),
                       [](const QRadioButton* option) { return option->isChecked(); });
}

bool WaterScreen::readSeepage() {
    const Problem& record = problem();
    if (record.WaterElev(Right) <= record.WaterElev(Left)) {
        if (offer(inconsistentBox("For seepage effects to be included, rightside"
                                  "\nwater elevation must be greater than the"
                                  "\nleftside water elevation."))) {
            problem().SeepageKind = Seepage::None;
            setOption(option(Seepage::Automatic), false);
            setOption(option(Seepage::Given), false);
            seepage_->hide();
        }
        return false;
    }
    if (read(SeepElev) != Fault::None) {
        offer(missingBox());
        return false;
    }
    // Deliberately an OK goes on with the value as it stands.
    if (record.SeepageElev > record.WaterElev(Right) &&
        !offer(inconsistentBox("Seepage elevation must be less than the"
                               "rightside water elevation."))) {
        return false;
    }
    if (record.SeepageElev < record.WaterElev(Left)) {
        ask(lowSeepageWarning());
    }
    return record.SeepageKind != Seepage::Given || readGradient();
}

bool WaterScreen::readGradient() {
    if (const Fault fault = read(SeepGradient); fault != Fault::None) {
        offer(fault == Fault::Missing ? missingBox() : invalidBox());
        return false;
    }
    const double gradient = problem().SeepageGradient(1);
    if (gradient > 0 && gradient < 1) {
        return true;
    }
    offer(inconsistentBox("Seepage gradient must be in the range"
                          "\n           0 < gradient < 1."));
    return false;
}

// ---- pressures
// -----------------------------------------------------------------------------------

Fault WaterScreen::readPressures() {
    if (problem().WaterPressCount < 2) {
        return Fault::Missing;
    }
    for (int row = 1; row <= problem().WaterPressCount; ++row) {
        int place = 0;
        for (const Column& column : pressureColumns) {
            const Fault fault =
                readEntry(pressures_.entry(place++, row), column, problem(), Right, row);
            if (fault != Fault::None) {
                return fault;
            }
        }
    }
    return Fault::None;
}

void WaterScreen::finishPressures() {
    problem().WaterPressCount = pressures_.lastFilledRow();
    if (problem().WaterPressCount == 0) {
        dropData();
        return;
    }
    if (const Fault fault = readPressures(); fault != Fault::None) {
        offer(fault == Fault::Missing ? missingBox() : invalidBox());
        return;
    }
    deleteControl_.panel->show();
    highlightKind(WaterData::Pressures);
    show(Stage::List);
}

void WaterScreen::finishStage() {
    switch (stage_) {
    case Stage::List:
        accept();
        break;
    case Stage::Elevations:
        finishElevations();
        break;
    case Stage::Pressures:
        finishPressures();
        break;
    }
}

} // namespace korvane
