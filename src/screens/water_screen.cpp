#include "screens/water_screen.h"

#include "problem/counts.h"
#include "problem/validate.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace korvane {

namespace {

constexpr int PressureRows = mostOf(ProblemCount::WaterPressCount);
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

// Limits that have boxes of their own, after the value is stored, are told here in words.
constexpr FieldSpec fieldSpecs[] = {
    {"fraWaterProps",
     nullptr,
     {"txtWaterWt", "Water Unit Weight (PCF)", "Water unit weight (PCF)",
      ProblemField::WaterUnitWeight},
     {150, 60, 1800, 495},
     {450, 570, 1200, 300}},
    {"fraWaterElevs",
     nullptr,
     {"txtWaterElR", "Rightside", "Rightside water elevation (FT)", ProblemField::WaterElev},
     {150, 330, 1200, 240},
     {150, 570, 1200, 300}},
    {"fraWaterElevs",
     nullptr,
     {"txtWaterElL", "Leftside", "Leftside water elevation (FT)", ProblemField::WaterElev},
     {1500, 330, 1200, 240},
     {1500, 570, 1200, 300}},
    {"fraSeepData",
     "lblSeepEl",
     {"txtSeepEl", "Seepage Elevation (FT)", "Seepage elevation (FT)", ProblemField::SeepageElev,
      "not above the rightside water elevation"},
     {150, 210, 1500, 495},
     {300, 720, 1200, 300}},
    {"fraSeepData",
     "lblSeepGrad",
     {"txtSeepGrad", "Seepage Gradient (FT/FT)", "Seepage gradient (FT/FT)",
      ProblemField::SeepageGradient, "above 0 and below 1"},
     {1800, 210, 1500, 495},
     {1950, 720, 1200, 300}},
};

constexpr Column pressureColumns[] = {
    {"txtELWPR", " Elevation (FT)", "Water pressure, elevation (FT)", ProblemField::WaterPressElev},
    {"txtWPR", "Pressure (PSF)", "Water pressure (PSF)", ProblemField::WaterPressure,
     "any number, positive toward the left; at least two rows"},
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
    openedForm_ = elevationsControl_.button;
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
        field->setMeaning(meaningOf(spec.column, number == ElevLeft ? Left : Right));
        labels_[number]->setBuddy(field);
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
    pressureFrame_ = makeGroup(canvas(), "fraWaterPres", "Water Pressure Data", {0, 0, 4200, 5250});
    pressures_.addRowNumbers(pressureFrame_, 120, 360);
    double left = 510;
    for (const Column& column : pressureColumns) {
        pressures_.addColumn(pressureFrame_, {.control = column.control,
                                              .label = column.label,
                                              .meaning = meaningOf(column),
                                              .left = left,
                                              .width = 1620,
                                              .labelTop = 330});
        left += 1740;
    }
    pressures_.addNotice(pressureFrame_, "pressures_refused", {120, 4035, 3960, 510});
    std::vector<QWidget*> order = pressures_.focusOrder();
    order.push_back(addButton(pressureFrame_, "cmdFinishedWatPres", "&Finished",
                              {1200, 4590, 1800, 495}, [this] { finishPressures(); }));
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
        openedForm_->setFocus(Qt::TabFocusReason);
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
        fields_[number]->showNumber(fieldSpecs[number].column.value(problem(), side, 1));
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
    openedForm_ = pressuresControl_.button;
    pressures_.clear();
    if (waterIs(session(), WaterData::Pressures)) {
        const int rows = std::min(problem().WaterPressCount, PressureRows);
        for (int row = 1; row <= rows; ++row) {
            int place = 0;
            for (const Column& column : pressureColumns) {
                pressures_.field(place++, row)->showNumber(column.value(problem(), Right, row));
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

Answer WaterScreen::offerToDelete(const MessageBox& box) {
    const Answer answer = offer(box);
    if (answer == Answer::Cancel) {
        dropData();
    }
    return answer;
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
    fields_[SeepGradient]->setVisible(given); // no field without its label
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
    failAt(fields_[number]);
    return readEntry(fields_[number]->entry(), fieldSpecs[number].column, problem(), side, 1);
}

void WaterScreen::finishElevations() {
    if (isEmpty(UnitWeight) && isEmpty(ElevRight) && isEmpty(ElevLeft)) {
        dropData();
        return;
    }
    if (!elevationsComplete() || !readElevations()) {
        offerToDelete(missingBox()); // deliberately also where a number is bad
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
    std::vector<Number> needed{UnitWeight, ElevRight, ElevLeft};
    if (isSet(Seepage::Automatic) || isSet(Seepage::Given)) {
        needed.push_back(SeepElev);
    }
    if (isSet(Seepage::Given)) {
        needed.push_back(SeepGradient);
    }
    const auto missing = std::find_if(needed.begin(), needed.end(),
                                      [this](Number number) { return isEmpty(number); });
    if (missing != needed.end()) {
        failAt(fields_[*missing]);
        // Without a type of seepage the elevations alone are read.
        return !isSet(Seepage::None) && needed.size() == 3;
    }
    if (isSet(Seepage::Automatic)) {
        problem().SeepageKind = Seepage::Automatic;
    } else if (isSet(Seepage::Given)) {
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
    failAt(option(Seepage::None));
    return std::any_of(std::begin(options_), std::end(options_),
                       [](const QRadioButton* option) { return option->isChecked(); });
}

bool WaterScreen::readSeepage() {
    const Problem& record = problem();
    if (!limitsBetween(ProblemField::WaterElev, ByScreen, record, Left)
             .hold(record.WaterElev(Left))) {
        failAt(fields_[ElevRight]);
        if (offerToDelete(inconsistentBox("For seepage effects to be included, rightside"
                                          "\nwater elevation must be greater than the"
                                          "\nleftside water elevation.")) == Answer::Ok) {
            problem().SeepageKind = Seepage::None;
            setOption(option(Seepage::Automatic), false);
            setOption(option(Seepage::Given), false);
            seepage_->hide();
        }
        return false;
    }
    if (read(SeepElev) != Fault::None) {
        offerToDelete(missingBox());
        return false;
    }
    // Deliberately an OK goes on with the value as it stands.
    if (record.SeepageElev > record.WaterElev(Right) &&
        offerToDelete(inconsistentBox("Seepage elevation must be less than the"
                                      "rightside water elevation.")) != Answer::Ok) {
        return false;
    }
    if (record.SeepageElev < record.WaterElev(Left)) {
        ask(lowSeepageWarning());
    }
    return record.SeepageKind != Seepage::Given || readGradient();
}

bool WaterScreen::readGradient() {
    if (const Fault fault = read(SeepGradient); fault != Fault::None) {
        offerToDelete(fault == Fault::Missing ? missingBox() : invalidBox());
        return false;
    }
    if (limitsBetween(ProblemField::SeepageGradient, ByScreen, problem())
            .hold(problem().SeepageGradient(1))) {
        return true;
    }
    offerToDelete(inconsistentBox("Seepage gradient must be in the range"
                                  "\n           0 < gradient < 1."));
    return false;
}

// ---- pressures
// -----------------------------------------------------------------------------------

Fault WaterScreen::readPressures() {
    if (problem().WaterPressCount < leastOf(ProblemCount::WaterPressCount, ByScreen)) {
        failAt(pressures_.field(0, problem().WaterPressCount + 1));
        return Fault::Missing;
    }
    for (int row = 1; row <= problem().WaterPressCount; ++row) {
        int place = 0;
        for (const Column& column : pressureColumns) {
            failAt(pressures_.field(place, row));
            const Fault fault =
                readEntry(pressures_.entry(place++, row), column, problem(), Right, row);
            if (fault != Fault::None) {
                return fault;
            }
        }
    }
    return Fault::None;
}

void WaterScreen::takeCounts(Problem& typed) {
    if (stage_ == Stage::Pressures) {
        typed.WaterPressCount = pressures_.lastFilledRow();
    }
}

void WaterScreen::finishPressures() {
    problem().WaterPressCount = pressures_.lastFilledRow();
    if (problem().WaterPressCount == 0) {
        dropData();
        return;
    }
    if (const Fault fault = readPressures(); fault != Fault::None) {
        offerToDelete(fault == Fault::Missing ? missingBox() : invalidBox());
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
