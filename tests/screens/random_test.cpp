// Random texts, keys and clicks on every screen, and solutions of what came of them.
#include "looks.h"
#include "problem/validate.h"
#include "record_rules.h"

#include "../commands/scripted_desktop.h"
#include "screens/field.h"
#include "support/random_problem.h"

#include <QApplication>
#include <QClipboard>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace korvane::test {

namespace {

/// More rounds, and other seeds, for a longer search than a test's.
int rounds(int usual) {
    return usual * std::max(1, qEnvironmentVariableIntValue("KORVANE_RANDOM_FACTOR"));
}
unsigned seed(unsigned usual) {
    return usual + static_cast<unsigned>(qEnvironmentVariableIntValue("KORVANE_RANDOM_SEED"));
}

struct Target {
    Screen screen;
    std::optional<Load> loadKind;
};

const std::vector<Target> targets = {
    {Screen::HEADCONT, {}},
    {Screen::LAYRDATA, {}},
    {Screen::SURFACE, {}},
    {Screen::WATER, {}},
    {Screen::SURCHARG, Load::Line},
    {Screen::SURCHARG, Load::Uniform},
    {Screen::SURCHARG, Load::Strip},
    {Screen::SURCHARG, Load::Ramp},
    {Screen::SURCHARG, Load::Triangle},
    {Screen::SURCHARG, Load::Variable},
    {Screen::HORLOAD, Load::HorizontalLine},
    {Screen::HORLOAD, Load::Distributed},
    {Screen::ROWEPILE, {}},
};

/// Title and first line of every box that a data screen may show.
const std::set<std::pair<std::string, std::string>> knownBoxes = {
    {"DATA MISSING", "The following required data are missing:"},
    {"DATA MISSING", "At least one required data value is missing."},
    {"DATA MISSING", "At least one required data values i missing."},
    {"DATA MISSING", "At least one soil layer is required."},
    {"DATA MISSING", "At least one SURFACE point is required for the right side."},
    {"DATA MISSING", "At least one SURFACE point is required for the left side."},
    {"INVALID DATA", "At least one data value is invalid."},
    {"INVALID DATA", "At least one required data value is invalid."},
    {"INVALID DATA", "At least one RIGHT SIDE SURFACE DATA value is invalid."},
    {"INVALID DATA", "At least one LEFT SIDE SURDACE DATA value is invalid."},
    {"INVALID DATA ITEM", "At least one data value is invalid."},
    {"INSUFFICIENT DATA", "Insufficient SOIL LAYER DATA have been provided."},
    {"CHANGE SOIL DATA TYPE?", "Current data are for SOIL STRENGTH DATA."},
    {"CHANGE SOIL DATA TYPE?", "Current data are for SOIL PRESSURE COEFFICIENTS."},
    {"INCONSISTENT WATER ELEVATIONS", "For seepage effects to be included, rightside"},
    {"INCONSISTENT WATER ELEVATIONS",
     "Seepage elevation must be less than therightside water elevation."},
    {"INCONSISTENT WATER ELEVATIONS", "Seepage gradient must be in the range"},
    {"POSSIBLE INCONSISTENT SEEPAGE ELVATION", "WARNING     WARNING     WARNING"},
};

class Chance {
  public:
    explicit Chance(unsigned seed) : engine_(seed) {}

    int whole(int low, int high) {
        return low + static_cast<int>(engine_() % static_cast<unsigned>(high - low + 1));
    }
    bool oneIn(int n) { return whole(1, n) == 1; }
    template <class T>
    const T& of(const std::vector<T>& list) {
        return list[static_cast<std::size_t>(whole(0, static_cast<int>(list.size()) - 1))];
    }
    QString number() {
        static const std::vector<QString> special = {"0",     "-0",     "1",     "45",     "1e2",
                                                     "-1E-3", "1.5E+1", "1e300", "-1e300", "1e-300",
                                                     ".5",    "5.",     "+3",    "1e308",  "-2e5"};
        if (oneIn(3)) {
            return of(special);
        }
        return QString::number(whole(-400, 4000) / 20.0);
    }
    QString text() {
        static const std::vector<QString> rubbish = {"",
                                                     " ",
                                                     "   12 ",
                                                     "12x",
                                                     "x",
                                                     "--1",
                                                     "1e",
                                                     "1e999",
                                                     "nan",
                                                     "inf",
                                                     "0x1F",
                                                     "1,5",
                                                     "'",
                                                     "''QUAY",
                                                     "\u0661\u0662",
                                                     "\u4e00\u4e8c",
                                                     "\u00bd",
                                                     "1 2",
                                                     "\u00e4\u00f6\u00fc",
                                                     "\t5",
                                                     "5\n6",
                                                     "1\t2",
                                                     "1\t2\n3\t4\n5\t6"};
        if (oneIn(150)) {
            return QString(whole(1000, 40000), QChar('7'));
        }
        return oneIn(2) ? number() : of(rubbish);
    }

  private:
    std::mt19937 engine_;
};

/// One person at one screen.
class Monkey {
  public:
    Monkey(Desk& desk, Chance& chance, Target target)
        : desk_(desk), chance_(chance), target_(target) {}

    /// Acts until the screen closes itself, or for so many acts.
    void play(int acts) {
        cancelled_ = false;
        desk_.onAsk = [this](const MessageBox& box) { return answer(box); };
        desk_.reopen(target_.screen, target_.loadKind);
        for (int act = 0; act < acts && desk_.isOpen(); ++act) {
            this->act();
        }
    }
    bool cancelled() const { return cancelled_; }

  private:
    Answer answer(const MessageBox& box) {
        const std::string line = box.text.substr(0, box.text.find('\n'));
        EXPECT_TRUE(knownBoxes.contains({box.title, line})) << box.title << ": " << box.text;
        if (box.buttons == Buttons::YesNo) {
            return chance_.oneIn(2) ? Answer::Yes : Answer::No;
        }
        if (box.buttons == Buttons::OkCancel && chance_.oneIn(6)) {
            cancelled_ = true;
            return Answer::Cancel;
        }
        return Answer::Ok;
    }

    template <class Control>
    Control* any() {
        std::vector<Control*> controls;
        for (auto* control : desk_.top().findChildren<Control*>()) {
            if (control->isVisible() && control->isEnabled()) {
                controls.push_back(control);
            }
        }
        return controls.empty() ? nullptr : chance_.of(controls);
    }

    void act() {
        if (chance_.oneIn(6)) {
            if (auto* button = any<QPushButton>(); button != nullptr) {
                button->click();
            }
        } else if (chance_.oneIn(6)) {
            if (auto* option = any<QRadioButton>(); option != nullptr) {
                option->click();
            }
        } else if (chance_.oneIn(30)) {
            desk_.closeFrame();
        } else if (auto* field = any<Field>(); field != nullptr) {
            work(*field);
        }
    }

    void work(Field& field) {
        static const std::vector<Qt::Key> keys = {Qt::Key_Return, Qt::Key_Up,       Qt::Key_Down,
                                                  Qt::Key_Tab,    Qt::Key_Escape,   Qt::Key_Delete,
                                                  Qt::Key_Enter,  Qt::Key_Backspace};
        field.setFocus();
        if (chance_.oneIn(8)) {
            QTest::keyClick(&field, chance_.of(keys));
            return;
        }
        field.selectAll();
        field.pasteText(chance_.text());
        EXPECT_EQ(field.text().count('\n'), 0);
    }

    Desk& desk_;
    Chance& chance_;
    Target target_;
    bool cancelled_ = false;
};

/// From the written input to the end of a solution, whatever comes of it.
void expectSolveEnds(const Problem& problem) {
    for (const Finding& finding : validate(problem)) {
        EXPECT_FALSE(finding.isFatal()) << findingText(finding); // what screens accept is solved
    }
    Office office;
    office.enter(problem);
    office.desktop.answers.assign(1000, Answer::No); // a large factor is not followed
    solveProblem(*office.session, office.desktop);
    if (office.session->stage == FlowStage::Review) {
        continueSolution(*office.session, office.desktop);
    }
    EXPECT_EQ(office.session->stage, FlowStage::Finished);
    acceptResults(*office.session);
    EXPECT_EQ(office.session->stage, FlowStage::Rest);
}

} // namespace

TEST(RandomTyping, ScreensKeepTheirPromisesWhateverIsTyped) {
    Chance chance(seed(4711));
    RandomProblems problems(seed(4711));
    int closedByFinished = 0;
    for (int round = 0; round < rounds(400); ++round) {
        SCOPED_TRACE(round);
        Desk desk;
        if (!chance.oneIn(3)) {
            desk.problem = chance.oneIn(2) ? fullProblem() : problems.next();
            desk.session->HeadContDataValid = 1;
        }
        const Target target = chance.of(targets);
        Monkey monkey(desk, chance, target);
        monkey.play(chance.whole(1, 60));
        ASSERT_TRUE(countsInRange(desk.problem));
        if (!desk.isOpen() && !monkey.cancelled() && desk.session->DataChanged != 0) {
            ++closedByFinished;
            ASSERT_TRUE(meetsTests(desk.problem, target.screen, target.loadKind))
                << desk.top().objectName().toStdString()
                << static_cast<int>(target.loadKind.value_or(Load::Line));
        }
    }
    EXPECT_GT(closedByFinished, 20); // the last rule was put to work
}

TEST(RandomTyping, WhatPassesAllScreensEndsItsSolution) {
    Chance chance(seed(1147));
    RandomProblems problems(seed(1147));
    int solved = 0;
    for (int round = 0; round < rounds(120); ++round) {
        SCOPED_TRACE(round);
        Desk desk;
        desk.problem = problems.next();
        desk.session->HeadContDataValid = 1;
        desk.session->DataChanged = 0;
        for (const Target& target : targets) {
            if (!chance.oneIn(4) || target.screen == Screen::ROWEPILE) {
                continue;
            }
            const Problem before = desk.problem;
            desk.reopen(target.screen, target.loadKind);
            if (target.screen == Screen::LAYRDATA) {
                desk.click(chance.oneIn(2) ? "cmdEnterRightside" : "cmdEnterLeftside");
                desk.click("cmdOK");
            } else if (target.screen == Screen::WATER) {
                desk.click(desk.problem.WaterDataKind == WaterData::Pressures ? "cmdWaterPres"
                                                                              : "cmdWaterEls");
            }
            std::vector<Field*> fields;
            for (auto* field : desk.top().findChildren<Field*>()) {
                if (field->isVisible() && field->isEnabled() && !field->text().isEmpty()) {
                    fields.push_back(field);
                }
            }
            if (!fields.empty()) {
                chance.of(fields)->enter(chance.number());
            }
            for (int finish = 0; finish < 3 && desk.isOpen(); ++finish) {
                desk.closeFrame(); // the Finished of each stage
            }
            if (desk.isOpen()) { // refused: the next screen begins from what passed
                desk.problem = before;
                desk.session->HeadContDataValid = 1;
            }
        }
        desk.reopen(Screen::KEYIN);
        desk.click("cmdFinished");
        if (desk.isOpen()) {
            continue;
        }
        ++solved;
        expectSolveEnds(desk.problem);
    }
    EXPECT_GT(solved, 40);
}

} // namespace korvane::test
