#include "screens/surface_screen.h"

#include "problem/counts.h"
#include "runtime/number_text.h"
#include "screens/entry.h"

#include <QFrame>
#include <QPushButton>

namespace korvane {

namespace {

constexpr TableRows SurfaceRows{
    .count = mostOf(ProblemCount::SurfacePointCount), .firstTop = 840, .pitch = 285};

constexpr int Distance = 0;
constexpr int Elevation = 1;

constexpr double FrameTop = 960; // of a side, twips
constexpr double SideWidth = 3960;
constexpr double FrameHeight = 4110;
constexpr double NoticeHeight = 510; // twips, two lines under the frame of a side

struct ColumnSpec {
    const char* label;
    const char* name; ///< behind its side
    const char* limits;
    ProblemField field;
    double left;
};
constexpr ColumnSpec columns[] = {
    {"Distance From Wall (FT)", "distance from wall (FT)", "beyond the row above",
     ProblemField::SurfaceDist, 480},
    {"           Elevation (FT)", "elevation (FT)",
     "any number; the first one not above the wall top", ProblemField::SurfaceElev, 2190},
};

struct SideSpec {
    int side;
    const char* name;
    const char* frame;
    const char* title;
    const char* controls[2]; ///< distance, elevation
    const char* labels[2];
    double left;
    BoxText none;
    const char* invalid;
};

// The two sides' boxes are deliberately worded apart.
constexpr SideSpec sides[] = {
    {Right,
     "Rightside",
     "fraSurfRight",
     "Rightside Surface Data",
     {"txtRightDist", "txtRightElev"},
     {"lblRightDist", "lblRightElev"},
     180,
     {"DATA MISSING", "At least one SURFACE point is required for the right side."
                      "\n\nChoose OK to continue SURFACE DATA entry."
                      "\nChoose CANCEL to DELETE ALL SURFACE DATA"
                      "\n     and exit."},
     "At least one RIGHT SIDE SURFACE DATA value is invalid."},
    {Left,
     "Leftside",
     "fraSurfLeft",
     "Leftside Surface Data",
     {"txtLeftDist", "txtLeftElev"},
     {"lblLeftDist", "lblLeftElev"},
     4560,
     {"DATA MISSING", "At least one SURFACE point is required for the left side."
                      "\n\n     Choose OK to continue SURFACE DATA entry."
                      "\nChoose CANCEL to DELETE ALL SURFACE DATA and exit."},
     "At least one LEFT SIDE SURDACE DATA value is invalid."},
};

constexpr const char* InvalidChoices = "\n\nChoose OK to continue data entry."
                                       "\n\n     Choose OK to continue SURFACE"
                                       "\n          DATA entry."
                                       "\nChoose CANCEL to DELETE ALL SURFACE"
                                       "\n          DATA and exit.";

} // namespace

SurfaceScreen::SurfaceScreen(ScreenContext& context)
    : DataScreen(context, "SURFACE", "SURFACE DATA") {
    const bool editing = problem().SurfacePointCount(Right) >= 1;
    QWidget* sheet = makeSheet(8700, 6300);
    makeTitle(sheet, "Panel3D1", editing ? "Edit Surface Data" : "Enter Surface Data",
              {2550, 240, 3600, 480});
    std::vector<QWidget*> order;
    for (const SideSpec& spec : sides) {
        auto& rows = tables_[spec.side - 1];
        rows = std::make_unique<FieldTable>(SurfaceRows);
        QFrame* frame =
            makeGroup(sheet, spec.frame, spec.title, {spec.left, FrameTop, SideWidth, FrameHeight});
        rows->addRowNumbers(frame, 90, 360);
        for (const int number : {Distance, Elevation}) {
            const ColumnSpec& column = columns[number];
            rows->addColumn(frame,
                            {.control = spec.controls[number],
                             .label = column.label,
                             .meaning = {.name = QString("%1, %2").arg(spec.name, column.name),
                                         .limits = column.limits,
                                         .number = column.field,
                                         .side = spec.side},
                             .left = column.left,
                             .width = 1620,
                             .labelTop = 330,
                             .labelName = spec.labels[number]});
        }
        rows->addNotice(sheet, QString(spec.frame) + "_refused",
                        {spec.left, FrameTop + FrameHeight + 30, SideWidth, NoticeHeight});
        const auto fields = rows->focusOrder();
        order.insert(order.end(), fields.begin(), fields.end());
        for (int row = 1; editing && row <= problem().SurfacePointCount(spec.side); ++row) {
            rows->field(Distance, row)->showNumber(problem().SurfaceDist(spec.side, row));
            rows->field(Elevation, row)->showNumber(problem().SurfaceElev(spec.side, row));
        }
    }
    order.push_back(addButton(sheet, "cmdFinished", "&Finished", {3450, 5670, 1800, 495},
                              [this] { finishStage(); }));
    setFocusOrder(order);
    setSides(tables_[0].get(), tables_[1].get());
    watchFields();
    order.front()->setFocus(Qt::TabFocusReason);
}

void SurfaceScreen::takeCounts(Problem& typed) {
    for (const int side : {Right, Left}) {
        typed.SurfacePointCount(side) = table(side).lastFilledRow();
    }
}

void SurfaceScreen::finishStage() {
    if (readSide(Right) && readSide(Left)) {
        accept();
    }
}

bool SurfaceScreen::readSide(int side) {
    const SideSpec& spec = sides[side - 1];
    // Deliberate: filled rows are counted on the right, rows down to the last filled on the left.
    int& count = problem().SurfacePointCount(side);
    count =
        side == Right ? table(side).filledRows(Distance) : table(side).lastFilledRow({Distance});
    if (count == 0) {
        failAt(table(side).field(Distance, 1));
        fault(okCancelBox(spec.none.title, spec.none.text));
        return false;
    }
    if (!readRows(side)) {
        fault(okCancelBox("INVALID DATA", std::string(spec.invalid) + InvalidChoices));
        return false;
    }
    return true;
}

bool SurfaceScreen::readRows(int side) {
    Problem& record = problem();
    for (int row = 1; row <= record.SurfacePointCount(side); ++row) {
        failAt(table(side).field(Distance, row));
        const std::string distance = table(side).entry(Distance, row);
        if (distance.empty()) {
            return false;
        }
        // Deliberate: no numeric test, a text counts as the number at its head.
        const double value = valueAtHead(distance);
        if (!limitsOf(ProblemField::SurfaceDist, ByScreen, record, side, row).hold(value)) {
            return false;
        }
        record.SurfaceDist(side, row) = value;
        failAt(table(side).field(Elevation, row));
        const std::string elevation = table(side).entry(Elevation, row);
        if (elevation.empty()) {
            return false;
        }
        record.SurfaceElev(side, row) = valueAtHead(elevation);
    }
    return true;
}

void SurfaceScreen::fault(const MessageBox& box) {
    if (!goesOn(box)) {
        problem().SurfacePointCount.fill(0);
        accept();
    }
}

} // namespace korvane
