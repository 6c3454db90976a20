// ROWEPILE: acceptance of the default sections and additional ones.
#include "looks.h"

#include "rowe/pile_sections.h"
#include "screens/controls.h"

#include <QLineEdit>

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test {

namespace {

const std::string invalid =
    described({.text = "At least one data value is invalid."
                       "\n"
                       "\n     Choose OK to continue SHEET PILE DATA entry."
                       "\n     Choose CANCEL to return to DEFAULT DATA values.",
               .title = "INVALID DATA",
               .buttons = Buttons::OkCancel});

class PileTest : public testing::Test {
  protected:
    Desk desk;
    PileSections& sections = desk.session->sections;

    void SetUp() override { desk.open(Screen::ROWEPILE); }
    void typeRow(int row, const std::vector<std::string>& texts) {
        static const char* const names[] = {"txtName", "txtSectMod", "txtInertia", "txtAllow",
                                            "txtEMod"};
        for (std::size_t column = 0; column < texts.size(); ++column) {
            desk.type(QString("%1_%2").arg(names[column]).arg(row - 1),
                      QString::fromStdString(texts[column]));
        }
    }
    void expectFirstLook() {
        EXPECT_EQ(desk.text("Label2"), "Change allowable stress and modulus of eLLASTicity for "
                                       "default piles if desired.");
        EXPECT_EQ(textColour(), PlainColour);
        EXPECT_EQ(desk.text("txtDefAllow"), "24.0E3");
        EXPECT_EQ(desk.text("txtDefEMod"), "29.0E6");
        for (int row = 0; row < 8; ++row) {
            EXPECT_EQ(desk.text(QString("lblAllow_%1").arg(row)), "24.0E3");
            EXPECT_EQ(desk.text(QString("lblEMod_%1").arg(row)), "29.0E6");
        }
        EXPECT_TRUE(desk.isShown("frmDefAllE"));
        EXPECT_TRUE(desk.isShown("cmdDefAccept"));
        EXPECT_FALSE(desk.isShown("frmAddData"));
        EXPECT_FALSE(desk.isShown("cmdDone"));
    }
    QColor textColour() { return desk.find("Label2")->palette().color(QPalette::WindowText); }
};

} // namespace

TEST_F(PileTest, OpensWithTheDefaultSections) {
    expectFirstLook();
    EXPECT_EQ(desk.text("lblName_0"), "PZ40");
    EXPECT_EQ(desk.text("lblSectMod_0"), " 60.7");
    EXPECT_EQ(desk.text("lblInertia_0"), " 490.8");
    EXPECT_EQ(desk.text("lblName_7"), "PLZ23");
    EXPECT_EQ(desk.text("lblInertia_7"), " 203.75");
    EXPECT_EQ(desk.tabOrder("txtDefAllow"),
              (std::vector<std::string>{"txtDefAllow", "txtDefEMod", "cmdDefAccept"}));
}

TEST_F(PileTest, TheRowsFollowTheDefaultFieldsAsTheyAreTyped) {
    desk.type("txtDefAllow", "3x");
    EXPECT_EQ(desk.text("lblAllow_0"), "3x");
    EXPECT_EQ(desk.text("lblAllow_7"), "3x");
    EXPECT_EQ(desk.text("lblEMod_7"), "29.0E6");
    desk.type("txtDefEMod", "30E6");
    EXPECT_EQ(desk.text("lblEMod_3"), "30E6");
}

TEST_F(PileTest, DoneWithoutAdditionsLeavesEightSections) {
    sections.PileSectionCount = 0;
    desk.click("cmdDefAccept");
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_EQ(desk.text("Label2"), "Enter data for additional pile sections if desired.");
    EXPECT_EQ(textColour(), RequiredColour);
    EXPECT_EQ(desk.text("lblAllow_0"), " 24000");
    EXPECT_EQ(desk.text("lblEMod_7"), " 29000000");
    EXPECT_FALSE(desk.isShown("frmDefAllE"));
    EXPECT_FALSE(desk.isShown("cmdDefAccept"));
    EXPECT_TRUE(desk.isShown("frmDefData"));
    desk.click("cmdDone");
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(sections.PileSectionCount, 8);
    EXPECT_EQ(desk.session->DataChanged, 0);
}

TEST_F(PileTest, AcceptedValuesHoldForAllDefaultSections) {
    desk.type("txtDefAllow", "36E3");
    desk.type("txtDefEMod", "-1"); // no test of its sign
    desk.click("cmdDefAccept");
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_EQ(sections.PileAllowStress(1), 36000);
    EXPECT_EQ(sections.PileAllowStress(8), 36000);
    EXPECT_EQ(sections.PileModulus(8), -1);
}

TEST_F(PileTest, AnInvalidDefaultKeepsTheEntryOrReturnsToTheDefaults) {
    for (const char* text : {"", "0", "-5", "24 KSI"}) {
        desk.type("txtDefAllow", text);
        desk.click("cmdDefAccept");
        EXPECT_EQ(desk.lastBox(), invalid) << text;
        EXPECT_EQ(desk.text("txtDefAllow"), text);
    }
    desk.type("txtDefAllow", "1");
    desk.type("txtDefEMod", "x");
    desk.answers = {Answer::Cancel};
    desk.click("cmdDefAccept");
    EXPECT_EQ(desk.lastBox(), invalid);
    EXPECT_TRUE(desk.isOpen());
    expectFirstLook();
}

TEST_F(PileTest, AdditionalSectionsFollowTheDefaultOnes) {
    desk.click("cmdDefAccept");
    typeRow(1, {"AZ 26", "48.4", "406.5", "25000", "3E7"});
    typeRow(2, {"OWN", "1", "2", "3", "4"});
    desk.click("cmdDone");
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_EQ(sections.PileSectionCount, 10);
    EXPECT_EQ(sections.PileName(9), "AZ 26");
    EXPECT_EQ(sections.PileSectionData(9, 1), 48.4);
    EXPECT_EQ(sections.PileSectionData(9, 2), 406.5);
    EXPECT_EQ(sections.PileAllowStress(9), 25000);
    EXPECT_EQ(sections.PileModulus(9), 3e7);
    EXPECT_EQ(sections.PileModulus(10), 4);
}

TEST_F(PileTest, ReadingStopsAtTheFirstEmptyName) {
    desk.click("cmdDefAccept");
    typeRow(2, {"SECOND", "1", "2", "3", "4"});
    desk.click("cmdDone");
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_EQ(sections.PileSectionCount, 8);
}

TEST_F(PileTest, ABadRowDoesNotSurviveTheReturnToTheDefaults) {
    desk.click("cmdDefAccept");
    typeRow(1, {"BAD", "10", "0", "3", "4"});
    desk.click("cmdDone");
    EXPECT_EQ(desk.lastBox(), invalid);
    EXPECT_TRUE(desk.isOpen());
    EXPECT_EQ(sections.PileSectionCount, 9); // grown before the row was tested
    EXPECT_EQ(desk.text("txtName_0"), "BAD");
    desk.answers = {Answer::Cancel};
    desk.click("cmdDone");
    EXPECT_EQ(desk.lastBox(), invalid);
    expectFirstLook();
    EXPECT_EQ(sections.PileSectionCount, 8);
    desk.click("cmdDefAccept");
    EXPECT_EQ(desk.text("txtName_0"), "");
    EXPECT_EQ(desk.text("txtSectMod_0"), "");
}

TEST_F(PileTest, EachNumberOfARowMustBeThereAndAboveZero) {
    desk.click("cmdDefAccept");
    for (const char* field : {"txtSectMod_0", "txtInertia_0", "txtAllow_0", "txtEMod_0"}) {
        for (const char* text : {"", "0", "-1", "x"}) {
            typeRow(1, {"ROW", "1", "2", "3", "4"});
            desk.type(field, text);
            desk.click("cmdDone");
            EXPECT_EQ(desk.lastBox(), invalid) << field << " " << text;
        }
    }
}

TEST_F(PileTest, SectionsThatWereAddedAreOfferedAgainAndThoseTakenOutAreNot) {
    desk.click("cmdDefAccept");
    typeRow(1, {"ONE", "1", "2", "3", "4"});
    typeRow(2, {"TWO", "5", "6", "7", "8.5"});
    desk.click("cmdDone");
    desk.reopen(Screen::ROWEPILE);
    expectFirstLook();
    desk.click("cmdDefAccept");
    EXPECT_EQ(desk.text("txtName_1"), "TWO");
    EXPECT_EQ(desk.text("txtEMod_1"), " 8.5");
    desk.type("txtName_1", "");
    desk.click("cmdDone");
    EXPECT_EQ(sections.PileSectionCount, 9);
    desk.reopen(Screen::ROWEPILE);
    desk.click("cmdDefAccept");
    EXPECT_EQ(desk.text("txtName_0"), "ONE");
    EXPECT_EQ(desk.text("txtName_1"), "");
}

TEST_F(PileTest, TheAdditionalRowsAreNumbered) {
    desk.click("cmdDefAccept");
    for (int row = 1; row <= 5; ++row) {
        const QWidget* field = desk.find(QString("txtName_%1").arg(row - 1));
        const QLabel* number = nullptr;
        for (const QLabel* label : desk.find("frmAddData")->findChildren<QLabel*>()) {
            if (label->text() == QString::number(row)) {
                number = label;
            }
        }
        ASSERT_NE(number, nullptr) << row;
        EXPECT_EQ(number->y(), field->y());
        EXPECT_LT(number->geometry().right(), field->x());
    }
}

namespace {

/// Where the points of drawn numbers stand: the left edge of what is behind the last digit before
/// the point. `right` is the right edge of the text on its control.
int pointAt(const QWidget* control, const QString& text, int right) {
    const QString number = text.trimmed();
    const qsizetype point = number.indexOf('.');
    const QFontMetrics letters(control->font());
    return right - (point < 0 ? 0 : letters.horizontalAdvance(number.mid(point)));
}

} // namespace

TEST_F(PileTest, NumbersStandRightAlignedOnTheirDecimals) {
    for (const char* array : {"lblSectMod", "lblInertia", "lblAllow", "lblEMod"}) {
        std::vector<int> points;
        for (int row = 0; row < 8; ++row) {
            const auto* label = desk.find<QLabel>(QString("%1_%2").arg(array).arg(row));
            EXPECT_TRUE(label->alignment().testFlag(Qt::AlignRight));
            points.push_back(pointAt(label, label->text(), label->contentsRect().right()));
        }
        EXPECT_EQ(std::count(points.begin(), points.end(), points[0]), 8) << array;
    }
    desk.click("cmdDefAccept");
    desk.typeDown("txtInertia", {"406.25", "1234", "7.5"});
    std::vector<int> points;
    for (int row = 0; row < 3; ++row) {
        const auto* field = desk.find<QLineEdit>(QString("txtInertia_%1").arg(row));
        EXPECT_TRUE(field->alignment().testFlag(Qt::AlignRight));
        points.push_back(pointAt(field, field->text(), -field->textMargins().right()));
    }
    EXPECT_EQ(std::count(points.begin(), points.end(), points[0]), 3);
}

TEST_F(PileTest, ALongNumberIsRatherSeenWholeThanInLine) {
    desk.click("cmdDefAccept");
    desk.typeDown("txtEMod", {"0.12345678", "30000000"});
    for (int row = 0; row < 2; ++row) {
        const auto* field = desk.find<QLineEdit>(QString("txtEMod_%1").arg(row));
        const int text = QFontMetrics(field->font()).horizontalAdvance(field->text());
        constexpr int insides = 10; // frame and margins of the toolkit, pixels
        EXPECT_LE(text + field->textMargins().right() + insides, field->width()) << row;
    }
}

TEST_F(PileTest, TheFramesCrossIsTheButtonOnShow) {
    desk.closeFrame();
    EXPECT_TRUE(desk.isOpen());
    EXPECT_TRUE(desk.isShown("cmdDone"));
    desk.closeFrame();
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(sections.PileSectionCount, 8);
}

} // namespace korvane::test
