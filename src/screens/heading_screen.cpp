#include "screens/heading_screen.h"

#include "problem/counts.h"
#include "runtime/number_text.h"
#include "widgets/shown_text.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <utility>

namespace korvane {

namespace {

constexpr int HeadingRows = mostOf(ProblemCount::NumHeadingLines);
constexpr TableRows HeadingPlace{.count = HeadingRows, .firstTop = 390, .pitch = 300};

struct GroupSpec {
    const char* name;
    const char* title;
    Place place;
};

// The two groups of safety factors share one place.
constexpr GroupSpec groups[] = {
    {"fraHeading", "Heading", {180, 810, 9090, 1740}},
    {"fraWallType", "Wall Type", {180, 2880, 1860, 1260}},
    {"fraMode", "Mode", {2220, 2880, 1620, 1260}},
    {"fraWallTop", "Wall Top", {4020, 2880, 1800, 1260}},
    {"fraAnchor", "Anchor", {180, 4320, 1860, 1260}},
    {"fraWallProps", "Wall Properties", {2220, 4320, 4200, 1620}},
    {"fraSafety", "Level 1 Safety Factors", {6000, 2880, 3270, 1260}},
    {"fraFSOption", "Safety Factor Option", {6000, 2880, 3270, 1260}},
};

struct OptionSpec {
    const char* frame;
    const char* name;
    const char* caption;
    Place place;
};

constexpr OptionSpec optionSpecs[] = {
    {"fraWallType", "optCantilever", "Cantilever", {120, 420, 1650, 330}},
    {"fraWallType", "optAnchored", "Anchored", {120, 780, 1650, 330}},
    {"fraMode", "optDesign", "Design", {120, 420, 1410, 330}},
    {"fraMode", "optAnalysis", "Analysis", {120, 780, 1410, 330}},
    {"fraFSOption", "optFSOption1", "Active FS = Passive FS", {120, 420, 3060, 330}},
    {"fraFSOption", "optFSOption2", "Active FS Input", {120, 780, 1950, 330}},
};

bool isAnchored(const Problem& problem) {
    return problem.WallType == WallKind::Anchored;
}

struct FieldSpec {
    const char* frame;
    const char* labelName; ///< where the system names the label
    Column column;
    Place label;
    Place place;
};

constexpr FieldSpec fieldSpecs[] = {
    {"fraWallTop",
     nullptr,
     {"txtWallTop", "Elevation (FT)", "Wall top elevation (FT)", ProblemField::WallTopElev},
     {90, 330, 1620, 360},
     {300, 720, 1200, 300}},
    {"fraAnchor",
     nullptr,
     {"txtAnchorEl", "Elevation (FT)", "Anchor elevation (FT)", ProblemField::AnchorElev,
      "not above the wall top"},
     {90, 330, 1680, 360},
     {330, 720, 1200, 300}},
    {"fraSafety",
     "lblActive",
     {"txtFSA1", "Active", "Level 1 safety factor, active", ProblemField::FSActive, "not below 0",
      IfEmpty::Missing, "empty or 0 means 1.0"},
     {330, 330, 1200, 360},
     {330, 720, 1200, 300}},
    {"fraSafety",
     "lblPassive",
     {"txtFSP1", "Passive", "Level 1 safety factor, passive", ProblemField::FSPassive,
      "not below 0", IfEmpty::Missing,
      "empty or 0 means the active factor (in a file without factors it is 1.5)"},
     {1740, 330, 1200, 360},
     {1740, 720, 1200, 300}},
    {"fraFSOption",
     nullptr,
     {"txtFSAAnalysis", "", "Safety factor option, active factor", ProblemField::FSActive, nullptr,
      IfEmpty::Invalid},
     {},
     {2130, 795, 1020, 300}},
    {"fraWallProps",
     nullptr,
     {"txtWallBot", "Elevation at Bottom (FT)", "Wall elevation at bottom (FT)",
      ProblemField::WallBottomElev, "below the wall top and the anchor"},
     {120, 405, 2850, 300},
     {2985, 405, 1110, 300}},
    {"fraWallProps",
     nullptr,
     {"txtWallE", "Modulus of Elasticity (PSI)", "Wall modulus of elasticity (PSI)",
      ProblemField::WallModulus},
     {120, 765, 2850, 300},
     {2985, 765, 1110, 300}},
    {"fraWallProps",
     nullptr,
     {"txtWallI", "Moment of Inertia (IN^4)", "Wall moment of inertia (IN^4)",
      ProblemField::WallInertia},
     {120, 1125, 2850, 300},
     {2985, 1125, 1110, 300}},
};

MessageBox missingBox(const std::string& list) {
    return okCancelBox("DATA MISSING", "The following required data are missing:\n\n" + list +
                                           "\n\n     Choose OK to continue DATA entry."
                                           "\n     Choose CANCEL to DELETE ALL DATA"
                                           "\n          on this form and exit.");
}

MessageBox invalidBox() {
    return okCancelBox("INVALID DATA", "At least one data value is invalid."
                                       "\n\n   Choose OK to continue data entry."
                                       "\n   Choose CANCEL to DELETE ALL DATA"
                                       "\n          on this form and exit.");
}

} // namespace

HeadingScreen::HeadingScreen(ScreenContext& context)
    : DataScreen(context, "HEADCONT", "HEADING, CONTROL AND WALL DATA"), headings_(HeadingPlace) {
    createGroups();
    createFields();
    createOptions();
    watchFields();

    std::vector<QWidget*> order = headings_.focusOrder();
    for (const Option option : {Cantilever, Anchored, Design, Analysis}) {
        order.push_back(options_[option]);
    }
    order.push_back(fields_[WallTop]);
    order.push_back(fields_[FSActive]);
    order.push_back(fields_[FSPassive]);
    order.push_back(options_[OneFactor]);
    order.push_back(options_[GivenFactor]);
    for (const Number number : {FSGiven, Anchor, WallBottom, Modulus, Inertia}) {
        order.push_back(fields_[number]);
    }
    order.push_back(cmdFinished_);
    setFocusOrder(order);
    fill();
    order.front()->setFocus(Qt::TabFocusReason);
}

void HeadingScreen::createGroups() {
    QWidget* sheet = makeSheet(9450, 6780);
    title_ = makeTitle(sheet, "panHeadCont", {}, {2325, 240, 4800, 480});
    for (const GroupSpec& group : groups) {
        makeGroup(sheet, group.name, group.title, group.place);
    }
    cmdFinished_ = addButton(sheet, "cmdFinished", "&Finished", {3825, 6120, 1800, 495},
                             [this] { finishStage(); });
    headings_.addColumn(findChild<QFrame*>("fraHeading"),
                        {.control = "txtHead",
                         .label = {},
                         .meaning = {.name = "Heading",
                                     .limits = "one to four lines; a line without an apostrophe is "
                                               "given one",
                                     .isText = true},
                         .left = 120,
                         .width = 8850,
                         .rowWord = "line"});
    headings_.addNotice(sheet, "fraHeading_refused", {180, 2565, 9090, 300});
    findChild<QLabel*>("fraHeading_title")->setBuddy(headings_.field(0, 1));
}

void HeadingScreen::createFields() {
    std::size_t number = 0;
    for (const FieldSpec& spec : fieldSpecs) {
        auto* frame = findChild<QFrame*>(spec.frame);
        const QString control = spec.column.control;
        const QString label = spec.column.label;
        auto* field = new Field(frame, control);
        if (!label.isEmpty()) {
            const bool beside = spec.label.top == spec.place.top;
            makeLabel(frame, spec.labelName != nullptr ? spec.labelName : control + "_label", label,
                      spec.label, beside ? LabelSide::Beside : LabelSide::Above)
                ->setBuddy(field);
        }
        place(field, spec.place);
        field->setMeaning(meaningOf(spec.column));
        fields_[number++] = field;
    }
}

void HeadingScreen::createOptions() {
    std::size_t number = 0;
    for (const OptionSpec& spec : optionSpecs) {
        const auto option = static_cast<Option>(number);
        options_[number++] = addOption(findChild<QFrame*>(spec.frame), spec.name, spec.caption,
                                       spec.place, [this, option] { choose(option); });
    }
}

void HeadingScreen::showMode(bool design) {
    findChild<QFrame*>("fraSafety")->setVisible(design);
    findChild<QFrame*>("fraFSOption")->setVisible(!design);
    findChild<QFrame*>("fraWallProps")->setVisible(!design);
}

void HeadingScreen::choose(Option option) {
    dataChanged();
    switch (option) {
    case Cantilever:
    case Anchored:
        problem().WallType = option == Anchored ? WallKind::Anchored : WallKind::Cantilever;
        findChild<QFrame*>("fraAnchor")->setVisible(option == Anchored);
        break;
    case Design:
    case Analysis:
        problem().ProgramMode = option == Design ? Mode::Design : Mode::Analysis;
        showMode(option == Design);
        break;
    case OneFactor:
        problem().FSKind = FactorKind::OneForBoth;
        fields_[FSGiven]->setText({});
        fields_[FSGiven]->setEnabled(false);
        break;
    case GivenFactor:
        problem().FSKind = FactorKind::ActiveGiven;
        fields_[FSGiven]->setEnabled(true);
        break;
    }
}

void HeadingScreen::fill() {
    for (const char* frame : {"fraSafety", "fraFSOption", "fraAnchor", "fraWallProps"}) {
        findChild<QFrame*>(frame)->hide();
    }
    fields_[FSGiven]->setEnabled(false);
    fields_[FSActive]->showNumber(problem().FSActive);
    fields_[FSPassive]->showNumber(problem().FSPassive);
    if (session().HeadContDataValid == 0) {
        fillBlank();
    } else {
        fillEditing();
    }
}

void HeadingScreen::fillBlank() {
    title_->setText("Enter Heading and Control Data");
    problem().ProgramMode = Mode::None;
    problem().WallType = WallKind::None;
    problem().FSKind = FactorKind::None;
}

void HeadingScreen::fillEditing() {
    const auto show = [this](Number number) {
        fields_[number]->showNumber(fieldSpecs[number].column.value(problem(), Right, 1));
    };
    title_->setText("Edit Heading and Control Data");
    for (int row = 1; row <= problem().NumHeadingLines; ++row) {
        std::string& line = shownHeadings_.at(static_cast<std::size_t>(row - 1));
        line = problem().HeadingLines(row);
        headings_.field(0, row)->setText(shownText(line));
    }
    show(WallTop);
    if (isAnchored(problem())) {
        setOption(options_[Anchored], true);
        findChild<QFrame*>("fraAnchor")->show();
        show(Anchor);
    } else if (problem().WallType == WallKind::Cantilever) {
        setOption(options_[Cantilever], true);
    }
    const bool design = problem().ProgramMode == Mode::Design;
    setOption(options_[design ? Design : Analysis], true);
    showMode(design);
    if (design) {
        problem().FSKind = FactorKind::None; // a later change to analysis demands a choice
        return;
    }
    for (const Number number : {WallBottom, Modulus, Inertia}) {
        show(number);
    }
    if (problem().FSKind == FactorKind::OneForBoth) {
        setOption(options_[OneFactor], true);
        return;
    }
    problem().FSKind = FactorKind::ActiveGiven;
    setOption(options_[GivenFactor], true);
    fields_[FSGiven]->setEnabled(true);
    show(FSGiven);
}

// ---- remarks
// -------------------------------------------------------------------------------------

/// A design's empty or zero factors stand for others; the heading lines move up over empty ones.
void HeadingScreen::takeCounts(Problem& typed) {
    if (typed.ProgramMode == Mode::Design) {
        typed.FSActive = typed.FSActive == 0 ? 1.0 : typed.FSActive;
        typed.FSPassive = typed.FSPassive == 0 ? typed.FSActive : typed.FSPassive;
    }
    typed.NumHeadingLines = 0;
    for (int row = 1; row <= HeadingRows; ++row) {
        if (std::string line = headings_.entry(0, row); !line.empty()) {
            typed.HeadingLines(++typed.NumHeadingLines) = std::move(line);
        }
    }
}

const void* HeadingScreen::placeOf(const Field& field, Problem& typed) {
    if (field.table() != &headings_ || field.entry().empty()) {
        return DataScreen::placeOf(field, typed);
    }
    int line = 0;
    for (int row = 1; row <= field.row(); ++row) {
        line += headings_.entry(0, row).empty() ? 0 : 1;
    }
    return &typed.HeadingLines(line);
}

// ---- finishing
// -----------------------------------------------------------------------------------

void HeadingScreen::finishStage() {
    session().HeadContDataValid = 0;
    readHeading();
    std::string missing = missingItems();
    if (missing.empty()) {
        if (readFactors() != Fault::None || readWall(missing) != Fault::None) {
            if (!goesOn(invalidBox())) {
                accept();
            }
            return;
        }
    }
    if (!missing.empty()) {
        if (!goesOn(missingBox(missing))) {
            accept();
        }
        return;
    }
    session().HeadContDataValid = 1;
    accept();
}

void HeadingScreen::readHeading() {
    int& lines = problem().NumHeadingLines;
    lines = 0;
    for (int row = 1; row <= HeadingRows; ++row) {
        // A line that was left alone keeps its bytes, of whatever encoding.
        const std::string& shown = shownHeadings_.at(static_cast<std::size_t>(row - 1));
        const bool leftAlone = headings_.field(0, row)->text() == shownText(shown);
        std::string line = leftAlone ? trimmed(shown) : headings_.entry(0, row);
        if (line.empty()) {
            continue;
        }
        if (line.front() != '\'') {
            line.insert(0, 1, '\'');
        }
        problem().HeadingLines(++lines) = std::move(line);
    }
}

std::string HeadingScreen::missingItems() {
    const Problem& record = problem();
    std::string list;
    const auto add = [&](bool isMissing, const char* item, QWidget* control) {
        if (isMissing) {
            if (list.empty()) {
                failAt(control);
            }
            list += (list.empty() ? "     " : "\n     ") + std::string(item);
        }
    };
    add(record.NumHeadingLines == 0, "HEADING", headings_.field(0, 1));
    add(record.WallType != WallKind::Anchored && record.WallType != WallKind::Cantilever,
        "WALL TYPE", options_[Cantilever]);
    add(fields_[WallTop]->entry().empty(), "WALL TOP ELEVATION", fields_[WallTop]);
    add(record.ProgramMode != Mode::Design && record.ProgramMode != Mode::Analysis, "MODE",
        options_[Design]);
    add(isAnchored(record) && fields_[Anchor]->entry().empty(), "ANCHOR ELEVATION",
        fields_[Anchor]);
    return list;
}

Fault HeadingScreen::read(Number number) {
    failAt(fields_[number]);
    return readEntry(fields_[number]->entry(), fieldSpecs[number].column, problem());
}

/// No factor and a factor of 0 stand for the fallback.
Fault HeadingScreen::readDesignFactor(Number number, double fallback) {
    const std::string text = fields_[number]->entry();
    if (text.empty() || (isNumeric(text) && numericValue(text) == 0)) {
        rulesOf(fieldSpecs[number].column.field).at(problem(), Right, 1) = fallback;
        return Fault::None;
    }
    return read(number);
}

Fault HeadingScreen::readFactors() {
    if (problem().ProgramMode == Mode::Design) {
        const Fault fault = readDesignFactor(FSActive, 1.0);
        return fault != Fault::None ? fault : readDesignFactor(FSPassive, problem().FSActive);
    }
    return problem().FSKind == FactorKind::ActiveGiven ? read(FSGiven) : Fault::None;
}

Fault HeadingScreen::readWall(std::string& missing) {
    if (read(WallTop) != Fault::None) {
        return Fault::Invalid;
    }
    if (isAnchored(problem()) && read(Anchor) != Fault::None) {
        return Fault::Invalid;
    }
    if (problem().ProgramMode != Mode::Analysis) {
        return Fault::None;
    }
    constexpr std::pair<Number, const char*> needed[] = {
        {WallBottom, "0\nELEVATION AT BOTTOM OF WALL"}, // the "0" is deliberate
        {Modulus, "\nMODULUS OF ELLASTICITY"},
        {Inertia, "\nMOMENT OF INERTIA"},
    };
    QWidget* firstMissing = options_[OneFactor];
    for (const auto& [number, item] : needed) {
        switch (read(number)) {
        case Fault::Missing:
            if (missing.empty()) {
                firstMissing = fields_[number];
            }
            missing += item;
            break;
        case Fault::Invalid:
            return Fault::Invalid;
        case Fault::None:
            break;
        }
    }
    if (problem().FSKind == FactorKind::None) {
        missing += "\nFACTOR OF SAFETY OPTION FOR ANALYSIS";
    }
    failAt(firstMissing);
    return Fault::None;
}

} // namespace korvane
