// What the screens tell to one who does not see them.
#include "looks.h"

#include "screens/field.h"

#include <QAccessible>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace korvane::test {

namespace {

QString told(QWidget* control, QAccessible::Text kind) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(control);
    return interface == nullptr ? QString() : interface->text(kind);
}

/// The units of all controls that hold a quantity, as the screens label them; "" without a unit.
const std::map<QString, QString>& units() {
    static const std::map<QString, QString> all = {
        {"txtHead", ""},
        {"txtWallTop", "FT"},
        {"txtAnchorEl", "FT"},
        {"txtFSA1", ""},
        {"txtFSP1", ""},
        {"txtFSAAnalysis", ""},
        {"txtWallBot", "FT"},
        {"txtWallE", "PSI"},
        {"txtWallI", "IN^4"},
        {"txtRightDist", "FT"},
        {"txtRightElev", "FT"},
        {"txtLeftDist", "FT"},
        {"txtLeftElev", "FT"},
        {"txtFSA2", ""},
        {"txtFSP2", ""},
        {"txtSATWt", "PCF"},
        {"txtMSTWt", "PCF"},
        {"txtIntFrict", "DEG"},
        {"txtCohes", "PSF"},
        {"txtWallFrict", "DEG"},
        {"txtAdhes", "PSF"},
        {"txtAK", ""},
        {"txtPK", ""},
        {"txtElev", "FT"},
        {"txtSlope", "FT/FT"},
        {"txtFSA3", ""},
        {"txtFSP3", ""},
        {"txtWaterWt", "PCF"},
        {"txtWaterElR", "FT"},
        {"txtWaterElL", "FT"},
        {"txtSeepEl", "FT"},
        {"txtSeepGrad", "FT/FT"},
        {"txtELWPR", "FT"},
        {"txtWPR", "PSF"},
        {"txtDLLR", "FT"},
        {"txtQLLR", "PLF"},
        {"txtDLLL", "FT"},
        {"txtQLLL", "PLF"},
        {"txtQUR", "PSF"},
        {"txtQUL", "PSF"},
        {"txtDS1R", "FT"},
        {"txtDS2R", "FT"},
        {"txtQSR", "PSF"},
        {"txtDS1L", "FT"},
        {"txtDS2L", "FT"},
        {"txtQSL", "PSF"},
        {"txtDR1R", "FT"},
        {"txtDR2R", "FT"},
        {"txtQRR", "PSF"},
        {"txtDR1L", "FT"},
        {"txtDR2L", "FT"},
        {"txtQRL", "PSF"},
        {"txtDT1R", "FT"},
        {"txtDT2R", "FT"},
        {"txtDT3R", "FT"},
        {"txtQTR", "PSF"},
        {"txtDT1L", "FT"},
        {"txtDT2L", "FT"},
        {"txtDT3L", "FT"},
        {"txtQTL", "PSF"},
        {"txtRightLoad", "PSF"},
        {"txtLeftLoad", "PSF"},
        {"txtElevHorLine", "FT"},
        {"txtHorLine", "PLF"},
        {"txtElHorDist", "FT"},
        {"txtHorDist", "PSF"},
        {"txtName", ""},
        {"txtSectMod", "IN^3"},
        {"txtInertia", "IN^4"},
        {"txtAllow", "PSI"},
        {"txtEMod", "PSI"},
        {"txtDefAllow", "PSI"},
        {"txtDefEMod", "PSI"},
    };
    return all;
}

QString arrayOf(const QWidget* field) {
    return field->objectName().section('_', 0, 0);
}

} // namespace

TEST(Accessibility, NoTwoFieldsHaveOneNameAndNoneLacksItsUnit) {
    std::map<QString, QString> screenOf; // by name
    std::set<QString> arrays;
    for (const Look& look : allLooks()) {
        SCOPED_TRACE(look.name);
        Desk desk;
        look.reach(desk);
        const QString screen = desk.top().objectName();
        std::map<QString, int> names;
        for (Field* field : desk.top().findChildren<Field*>()) {
            if (!field->isVisible()) {
                continue; // another stage, side or kind of data
            }
            const QString array = arrayOf(field);
            const QString name = told(field, QAccessible::Name);
            EXPECT_FALSE(name.isEmpty()) << field->objectName().toStdString();
            EXPECT_EQ(++names[name], 1) << name.toStdString();
            // On all screens a name means one control.
            const QString control = screen + "." + field->objectName();
            const auto [known, isNew] = screenOf.emplace(name, control);
            EXPECT_EQ(known->second, control) << name.toStdString();
            ASSERT_TRUE(units().contains(array)) << array.toStdString();
            const QString unit = units().at(array);
            EXPECT_EQ(name.contains("("), !unit.isEmpty()) << name.toStdString();
            EXPECT_TRUE(unit.isEmpty() || name.contains("(" + unit + ")")) << name.toStdString();
            if (field->objectName().contains('_')) {
                const int row = field->objectName().section('_', 1).toInt() + 1;
                EXPECT_TRUE(name.endsWith(QString(" %1").arg(row))) << name.toStdString();
            }
            arrays.insert(array);
        }
    }
    EXPECT_EQ(arrays.size(), units().size()); // every field of every screen was seen
}

TEST(Accessibility, NamesTellSideLabelUnitAndRow) {
    Desk desk;
    desk.problem = fullProblem();
    desk.session->HeadContDataValid = 1;
    const auto name = [&](const char* field) {
        return told(desk.find(field), QAccessible::Name).toStdString();
    };
    desk.open(Screen::SURFACE);
    EXPECT_EQ(name("txtRightDist_0"), "Rightside, distance from wall (FT), row 1");
    EXPECT_EQ(name("txtLeftElev_10"), "Leftside, elevation (FT), row 11");
    desk.reopen(Screen::HEADCONT);
    EXPECT_EQ(name("txtHead_0"), "Heading, line 1");
    desk.reopen(Screen::LAYRDATA);
    desk.click("cmdEnterLeftside");
    EXPECT_EQ(name("txtFSA2"), "Leftside, level 2 safety factor, active");
    desk.click("cmdOK");
    EXPECT_EQ(name("txtSATWt_0"), "Saturated unit weight (PCF), row 1");
    EXPECT_EQ(told(desk.find("txtSATWt_0"), QAccessible::Description).toStdString(),
              "Leftside soil; above 0");
    desk.reopen(Screen::WATER);
    EXPECT_EQ(name("txtWaterElR"), "Rightside water elevation (FT)");
    desk.reopen(Screen::SURCHARG, Load::Line);
    EXPECT_EQ(name("txtDLLL_4"), "Leftside line load, distance from wall (FT), row 5");
}

TEST(Accessibility, LabelsAreTheBuddiesOfTheirFields) {
    for (const Look& look : allLooks()) {
        SCOPED_TRACE(look.name);
        Desk desk;
        look.reach(desk);
        std::set<QWidget*> labelled;
        for (const QLabel* label : desk.top().findChildren<QLabel*>()) {
            if (label->buddy() != nullptr) {
                labelled.insert(label->buddy());
            }
        }
        for (Field* field : desk.top().findChildren<Field*>()) {
            // The first row's, since a label has one buddy; the option stands for its field.
            const bool first =
                !field->objectName().contains('_') || field->objectName().endsWith("_0");
            if (first && field->objectName() != "txtFSAAnalysis") {
                EXPECT_TRUE(labelled.contains(field)) << field->objectName().toStdString();
            }
        }
    }
}

TEST(Accessibility, TheButtonTellsThatDataAreAvailable) {
    Desk desk;
    desk.problem = fullProblem();
    desk.session->HeadContDataValid = 1;
    desk.open(Screen::KEYIN);
    EXPECT_EQ(told(desk.find("cmdHeadCont"), QAccessible::Description), "data are available");
    EXPECT_EQ(told(desk.find("panHeadCont"), QAccessible::Description), "");
    desk.problem.WaterDataKind = WaterData::None;
    desk.click("cmdWaterData"); // the rule is asked again
    EXPECT_EQ(told(desk.find("cmdWaterData"), QAccessible::Description), "");
    desk.reopen(Screen::SURCHCON);
    EXPECT_EQ(told(desk.find("cmdRamps"), QAccessible::Description), "data are available");
    desk.problem = Problem();
    desk.reopen(Screen::LAYRDATA);
    EXPECT_EQ(told(desk.find("cmdEnterRightside"), QAccessible::Description), "");
}

} // namespace korvane::test
