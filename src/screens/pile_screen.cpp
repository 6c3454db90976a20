#include "screens/pile_screen.h"

#include "commands/pile_entry.h"
#include "rowe/pile_sections.h"
#include "runtime/number_text.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace korvane {

namespace {

constexpr int AddedRows = 5;

// All in twips.
constexpr double ColumnLeft = 600;
constexpr double ColumnPitch = 1680;
constexpr double ColumnWidth = 1590;
constexpr double NumbersRight = 360; // free behind the numbers of the default sections
constexpr double FieldMargins = 180; // frame and margins of the toolkit, both sides
constexpr double DefaultTop = 840;
constexpr double DefaultPitch = 255;
constexpr TableRows AddedPlace{.count = AddedRows, .firstTop = 840, .pitch = 285};

struct PileColumn {
    const char* label;   ///< heading of both tables
    const char* shown;   ///< labels of the default sections
    const char* entered; ///< fields of the additional ones
    const char* name;    ///< for one who hears it, behind the kind of section
    const char* limits;
};

constexpr PileColumn pileColumns[] = {
    {"Pile Name", "lblName", "txtName", "pile name", "the first row without a name ends the table"},
    {"Section Modulus (IN^3)", "lblSectMod", "txtSectMod", "section modulus (IN^3)",
     "above 0; per foot of wall"},
    {"Moment of Inertia (IN^4)", "lblInertia", "txtInertia", "moment of inertia (IN^4)",
     "above 0; per foot of wall"},
    {"Allowable Stress (PSI)", "lblAllow", "txtAllow", "allowable stress (PSI)", "above 0"},
    {"Modulus of Elasticity (PSI)", "lblEMod", "txtEMod", "modulus of elasticity (PSI)", "above 0"},
};
constexpr int Name = 0;
constexpr const char* DefaultModulusLimits = "any number";
constexpr int Stress = 3;
constexpr int Modulus = 4;

constexpr const char* FirstPrompt =
    "Change allowable stress and modulus of eLLASTicity for default piles if desired.";
constexpr const char* SecondPrompt = "Enter data for additional pile sections if desired.";

bool isPositive(const std::string& text) {
    return isNumeric(text) && numericValue(text) > 0;
}

QString general(double value) {
    return shownText(generalForm(value));
}

/// Width of what stands behind the point of a number, and of the point.
int decimalsWidth(const QString& text, const QFontMetrics& letters) {
    const QString number = text.trimmed();
    const qsizetype point = number.indexOf('.');
    return point < 0 ? 0 : letters.horizontalAdvance(number.mid(point));
}

/// The four numbers of a section in the order of their columns.
std::array<double, 4> numbersOf(const PileSections& sections, int p) {
    return {sections.PileSectionData(p, 1), sections.PileSectionData(p, 2),
            sections.PileAllowStress(p), sections.PileModulus(p)};
}

} // namespace

PileScreen::PileScreen(ScreenContext& context)
    : DataScreen(context, "ROWEPILE", "SHEET PILE DATA FOR ROWE'S MOMENT REDUCTION"),
      rows_(AddedPlace) {
    QWidget* sheet = makeSheet(9450, 7560);
    prompt_ = makeLabel(sheet, "Label2", {}, {180, 120, 9090, 420});
    prompt_->setAlignment(Qt::AlignCenter);
    createDefaults(sheet);
    createDefaultFields(sheet);
    createAdditions(sheet);
    watchRemarks();

    std::vector<QWidget*> order{defaultField_[0], defaultField_[1], cmdDefAccept_};
    const auto fields = rows_.focusOrder();
    order.insert(order.end(), fields.begin(), fields.end());
    order.push_back(cmdDone_);
    setFocusOrder(order);
    showDefaults();
    showAdditions();
    showStage(false);
}

// ---- building
// ------------------------------------------------------------------------------------

void PileScreen::createDefaults(QWidget* sheet) {
    QFrame* frame =
        makeGroup(sheet, "frmDefData", "Default Sheet Pile Data", {180, 660, 9090, 3510});
    double left = ColumnLeft;
    for (int column = 0; column < Columns; ++column) {
        const PileColumn& spec = pileColumns[column];
        makeLabel(frame, QString(spec.shown) + "_label", spec.label,
                  {left, 330, ColumnWidth, DefaultTop - 330});
        for (int row = 0; row < DefaultSectionCount; ++row) {
            QLabel* label =
                makeLabel(frame, QString("%1_%2").arg(spec.shown).arg(row), {},
                          {left, DefaultTop + row * DefaultPitch, ColumnWidth, DefaultPitch});
            label->setAlignment(Qt::AlignCenter);
            label->setWordWrap(false);
            defaultRows_[static_cast<std::size_t>(column)].push_back(label);
        }
        left += ColumnPitch;
    }
    cmdDefAccept_ = addButton(frame, "cmdDefAccept", "&Accept", {3645, 2970, 1800, 465},
                              [this] { acceptDefaultFields(); });
}

void PileScreen::createDefaultFields(QWidget* sheet) {
    defaultFields_ = makeGroup(sheet, "frmDefAllE", {}, {4950, 4320, 4320, 1200});
    static constexpr const char* names[] = {"txtDefAllow", "txtDefEMod"};
    double left = 180;
    for (int number = 0; number < 2; ++number) {
        const int column = Stress + number;
        const QString label = pileColumns[column].label;
        auto* field = new Field(defaultFields_, names[number]);
        makeLabel(defaultFields_, QString(names[number]) + "_label", label, {left, 60, 1890, 570})
            ->setBuddy(field);
        place(field, {left + 150, 660, 1590, 300});
        field->setMeaning(
            {.name = QString("Default sections, ") + pileColumns[column].name,
             .limits = column == Modulus ? DefaultModulusLimits : pileColumns[column].limits});
        defaultField_[number] = field;
        connect(field, &Field::textEdited, this, [this, column] { followField(column); });
        left += 2070;
    }
}

void PileScreen::createAdditions(QWidget* sheet) {
    addition_ =
        makeGroup(sheet, "frmAddData", "Additional Sheet Pile Data", {180, 4260, 9090, 2640});
    rows_.addRowNumbers(addition_, 120, 420);
    double left = ColumnLeft;
    for (const PileColumn& spec : pileColumns) {
        rows_.addColumn(addition_, {.control = spec.entered,
                                    .label = spec.label,
                                    .meaning = {.name = QString("Additional section, ") + spec.name,
                                                .limits = spec.limits,
                                                .isText = &spec == &pileColumns[Name]},
                                    .left = left,
                                    .width = ColumnWidth,
                                    .labelTop = 330});
        left += ColumnPitch;
    }
    rows_.addNotice(addition_, "additions_refused", {600, 2295, 8310, 300});
    for (int column = Name + 1; column < Columns; ++column) {
        for (int row = 1; row <= AddedRows; ++row) {
            connect(rows_.field(column, row), &Field::textChanged, this,
                    [this, column] { alignAdditions(column); });
        }
    }
    cmdDone_ = addButton(sheet, "cmdDone", "&Done", {3825, 6990, 1800, 465}, [this] { finish(); });
}

// ---- showing
// -------------------------------------------------------------------------------------

void PileScreen::showDefaults() {
    for (int p = 1; p <= DefaultSectionCount; ++p) {
        const auto row = static_cast<std::size_t>(p - 1);
        const auto numbers = numbersOf(sections(), p);
        defaultRows_[0][row]->setText(shownText(sections().PileName(p)));
        defaultRows_[1][row]->setText(general(numbers[0]));
        defaultRows_[2][row]->setText(general(numbers[1]));
    }
    alignDefaults(1);
    alignDefaults(2);
    defaultField_[0]->setText(DefaultAllowStressText);
    defaultField_[1]->setText(DefaultModulusText);
    followField(Stress);
    followField(Modulus);
}

void PileScreen::followField(int column) {
    for (QLabel* shown : defaultRows_[static_cast<std::size_t>(column)]) {
        shown->setText(defaultField_[column - Stress]->text());
    }
    alignDefaults(column);
}

void PileScreen::alignDefaults(int column) {
    const auto& labels = defaultRows_[static_cast<std::size_t>(column)];
    const QFontMetrics letters = labels.front()->fontMetrics();
    int widest = 0;
    for (const QLabel* label : labels) {
        widest = std::max(widest, decimalsWidth(label->text(), letters));
    }
    for (QLabel* label : labels) {
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const int behind = widest - decimalsWidth(label->text(), letters);
        label->setContentsMargins(0, 0, pixels(NumbersRight) + behind, 0);
    }
}

void PileScreen::alignAdditions(int column) {
    const QFontMetrics letters = rows_.field(column, 1)->fontMetrics();
    int widest = 0;
    for (int row = 1; row <= AddedRows; ++row) {
        widest = std::max(widest, decimalsWidth(rows_.field(column, row)->text(), letters));
    }
    for (int row = 1; row <= AddedRows; ++row) {
        Field* field = rows_.field(column, row);
        const int behind = widest - decimalsWidth(field->text(), letters);
        // A long number is rather seen whole than in line.
        const int free =
            field->width() - letters.horizontalAdvance(field->text()) - pixels(FieldMargins);
        field->setAlignment(Qt::AlignRight);
        field->setTextMargins(0, 0, std::clamp(behind, 0, std::max(0, free)), 0);
    }
}

/// The sections that were added before, without a gap.
void PileScreen::showAdditions() {
    rows_.clear();
    for (int row = 1; row <= AddedRows; ++row) {
        const int p = DefaultSectionCount + row;
        if (sections().PileName(p).empty()) {
            return;
        }
        rows_.field(0, row)->setText(shownText(sections().PileName(p)));
        int column = 1;
        for (const double number : numbersOf(sections(), p)) {
            rows_.field(column++, row)->showNumber(number);
        }
    }
}

void PileScreen::showStage(bool accepted) {
    accepted_ = accepted;
    prompt_->setText(accepted ? SecondPrompt : FirstPrompt);
    paintGround(prompt_, GroundColour, accepted ? RequiredColour : PlainColour);
    defaultFields_->setVisible(!accepted);
    cmdDefAccept_->setVisible(!accepted);
    addition_->setVisible(accepted);
    cmdDone_->setVisible(accepted);
    if (accepted) {
        rows_.moveFocus(0, 1);
    } else {
        defaultField_[0]->setFocus(Qt::TabFocusReason);
    }
}

// ---- steps
// ---------------------------------------------------------------------------------------

void PileScreen::acceptDefaultFields() {
    if (!acceptDefaultTexts(sections(), defaultField_[0]->entry(), defaultField_[1]->entry())) {
        failAt(defaultField_[isPositive(defaultField_[0]->entry()) ? 1 : 0]);
        offerDefaults();
        return;
    }
    for (int p = 1; p <= DefaultSectionCount; ++p) {
        const auto row = static_cast<std::size_t>(p - 1);
        defaultRows_[Stress][row]->setText(general(sections().PileAllowStress(p)));
        defaultRows_[Modulus][row]->setText(general(sections().PileModulus(p)));
    }
    alignDefaults(Stress);
    alignDefaults(Modulus);
    showStage(true);
}

QWidget* PileScreen::firstBadAddition() const {
    for (int row = 1; row <= AddedRows && !rows_.entry(Name, row).empty(); ++row) {
        for (int column = Name + 1; column < Columns; ++column) {
            if (!isPositive(rows_.entry(column, row))) {
                return rows_.field(column, row);
            }
        }
    }
    return nullptr;
}

void PileScreen::finish() {
    std::array<PileEntry, AddedRows> entries;
    int row = 0;
    for (PileEntry& entry : entries) {
        ++row;
        entry = {rows_.entry(0, row), rows_.entry(1, row), rows_.entry(2, row), rows_.entry(3, row),
                 rows_.entry(4, row)};
    }
    if (!addSections(sections(), entries)) {
        failAt(firstBadAddition());
        offerDefaults();
        return;
    }
    // What was taken out of the rows does not come back the next time.
    for (int p = sections().PileSectionCount + 1; p <= DefaultSectionCount + AddedRows; ++p) {
        sections().PileName(p).clear();
    }
    accept();
}

void PileScreen::offerDefaults() {
    if (!goesOn(invalidSectionsBox())) {
        LoadPileDefaults(sections());
        showDefaults();
        showAdditions();
        showStage(false);
    }
}

void PileScreen::finishStage() {
    if (accepted_) {
        finish();
    } else {
        acceptDefaultFields();
    }
}

} // namespace korvane
