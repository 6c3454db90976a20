#include "desk.h"

#include "../shell/person.h"

#include "rowe/pile_sections.h"
#include "screens/controls.h"
#include "screens/screens.h"
#include "widgets/geometry.h"

#include <QLineEdit>

namespace korvane::test {

Desk::Desk()
    : session(std::make_unique<Session>()),
      problem(session->problem), context_{
                                     *session, *this, &mainWindow,
                                     [this](QWidget*, Help item) { helpItems.push_back(item); }} {
    clearProblemData(problem);
    LoadPileDefaults(session->sections);
    mainWindow.resize(pixels(11600), pixels(8200));
    mainWindow.show();
}

Desk::~Desk() {
    while (!screens_.empty()) { // each is the parent of the one above
        screens_.pop_back();
    }
}

void Desk::open(Screen screen, std::optional<Load> loadKind) {
    if (loadKind) {
        session->LoadKind = *loadKind;
    }
    screens_.push_back(dataScreens().at(screen)(context_));
    ScreenWindow& window = *screens_.back();
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        throw std::runtime_error("the screen does not become active");
    }
}

bool Desk::isOpen() const {
    return !screens_.empty() && screens_.back()->isVisible();
}

ScreenWindow& Desk::top() {
    if (screens_.empty()) {
        throw std::runtime_error("no screen is open");
    }
    return *screens_.back();
}

std::string Desk::text(const QString& name) {
    QWidget* control = find(name);
    if (auto* label = qobject_cast<QLabel*>(control)) {
        return label->text().toStdString();
    }
    if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        return button->text().toStdString();
    }
    return find<QLineEdit>(name)->text().toStdString();
}

bool Desk::isHighlighted(const QString& panel) {
    const QColor colour = find(panel)->palette().color(QPalette::Window);
    if (colour != DataColour && colour != NoDataColour) {
        throw std::runtime_error("no panel " + panel.toStdString());
    }
    return colour == DataColour;
}

std::string Desk::focused() {
    QWidget* control = top().focusWidget();
    return control == nullptr ? "" : control->objectName().toStdString();
}

std::vector<std::string> Desk::tabOrder(const QString& first) {
    std::vector<std::string> names;
    auto* start = workable<QWidget>(first);
    start->setFocus();
    do {
        names.push_back(focused());
        QTest::keyClick(top().focusWidget(), Qt::Key_Tab);
    } while (top().focusWidget() != start && names.size() < 200);
    return names;
}

void Desk::type(const QString& field, const QString& text) {
    typeInto(top(), field, text);
}

void Desk::typeDown(const QString& array, const std::vector<std::string>& texts) {
    for (std::size_t row = 0; row < texts.size(); ++row) {
        if (texts[row] != ".") {
            type(QString("%1_%2").arg(array).arg(row), QString::fromStdString(texts[row]));
        }
    }
}

void Desk::press(const QString& control, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    auto* found = workable<QWidget>(control);
    found->setFocus();
    QTest::keyClick(found, key, modifiers);
}

void Desk::click(const QString& control) {
    pushButton(top(), control);
}

std::string Desk::lastBox() {
    if (looked_ == boxes.size()) {
        return noBox;
    }
    if (boxes.size() != looked_ + 1) {
        throw std::runtime_error("more than one box");
    }
    looked_ = boxes.size();
    return described(boxes.back());
}

Answer Desk::Ask(const MessageBox& box) {
    boxes.push_back(box);
    if (onAsk) {
        return onAsk(box);
    }
    if (answers.empty()) {
        return box.buttons == Buttons::YesNo ? Answer::No : Answer::Ok;
    }
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

void Desk::ShowScreen(Screen screen, Session&) {
    shown.push_back(screen);
    if (onShow) {
        onShow(screen);
    }
}

const std::string noBox = "(no box)";

std::string okCancel(const std::string& title, const std::string& text) {
    return described(
        {.text = text, .title = title, .buttons = Buttons::OkCancel, .icon = Icon::Exclamation});
}

std::string described(const MessageBox& box) {
    static constexpr const char* buttons[] = {"OK", "OK Cancel", "Yes No"};
    static constexpr const char* icons[] = {"", " !", " ?", " i", " x"};
    return box.title + " [" + buttons[static_cast<int>(box.buttons)] +
           icons[static_cast<int>(box.icon)] + "]\n" + box.text;
}

} // namespace korvane::test
