#include "person.h"

#include "commands/files.h"
#include "screens/screens.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace korvane::test {

namespace {

constexpr int PollMilliseconds = 5;
constexpr int PatienceMilliseconds = 2000;

template <class Control>
Control* workable(QWidget& window, const QString& name) {
    auto* found = window.findChild<Control*>(name);
    if (found == nullptr) {
        throw std::runtime_error("no control " + name.toStdString());
    }
    if (!found->isEnabled()) {
        throw std::runtime_error("disabled: " + name.toStdString());
    }
    if (!found->isVisible()) {
        throw std::runtime_error("hidden: " + name.toStdString());
    }
    return found;
}

/// True where the action and every menu above it are enabled.
bool isReachable(const QAction& action) {
    const auto objects = action.associatedObjects();
    return action.isEnabled() && std::all_of(objects.begin(), objects.end(), [](QObject* object) {
               const auto* menu = qobject_cast<QMenu*>(object);
               return menu == nullptr || (menu->isEnabled() && isReachable(*menu->menuAction()));
           });
}

/// Nobody reaches a window behind a modal one.
void expectOnTop(const QWidget& window) {
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal != nullptr && modal != &window) {
        throw std::runtime_error("behind " + modal->objectName().toStdString());
    }
}

QAction* reachable(QWidget& window, const QString& name) {
    expectOnTop(window);
    auto* action = workable<QAction>(window, name);
    if (!isReachable(*action)) {
        throw std::runtime_error("its menu is disabled: " + name.toStdString());
    }
    return action;
}

SeenBox seen(const QMessageBox& box) {
    SeenBox result;
    result.title = box.windowTitle().toStdString();
    result.text = box.text().toStdString();
    result.busy = QApplication::overrideCursor() != nullptr;
    QList<QAbstractButton*> buttons = box.buttons();
    std::sort(buttons.begin(), buttons.end(),
              [](const auto* a, const auto* b) { return a->geometry().x() < b->geometry().x(); });
    for (const QAbstractButton* button : buttons) {
        result.buttons.push_back(button->text().remove('&').toStdString());
    }
    return result;
}

} // namespace

Person::Person(const std::filesystem::path& sharedTemporary)
    : temp_("temp", (sharedTemporary.empty() ? temporary.path() : sharedTemporary).string()),
      date_("SOURCE_DATE_EPOCH", "1795305907"),
      state_("XDG_STATE_HOME", stateHome_.path().string()),
      program(std::make_unique<Program>(dataScreens())) {
    program->desktop.printServices.hasPrinter = [] { return false; };
    window().show();
    window().activateWindow();
    if (!QTest::qWaitForWindowActive(&window())) {
        throw std::runtime_error("the main window does not become active");
    }
    schedule();
}

/// A timer of its own for each look: a timer does not fire again while its slot runs, and a step
/// may open a further modal window.
void Person::schedule() {
    QTimer::singleShot(PollMilliseconds, &looks_, [this] {
        schedule();
        poll();
    });
}

Person::~Person() {
    if (program == nullptr) {
        return;
    }
    if (program->window != nullptr) {
        program->window->endWithoutQuestion();
    }
    DeleteTempFiles(session(), program->desktop);
}

bool Person::leftNothing() {
    namespace fs = std::filesystem;
    const fs::path& folder = temporary.path();
    const auto files = std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    const bool recordAlone = files == 1 && fs::exists(folder / "KORVANE-RUN-0");
    program.reset();
    return recordAlone && fs::is_empty(folder);
}

void Person::expectNothingLeft() {
    EXPECT_TRUE(steps_.empty()) << "not taken: " << (steps_.empty() ? "" : steps_.front().what);
    steps_.clear();
}

/// No exception may pass through the event loop of a window.
void Person::take(const Step& step, QDialog& modal) {
    waited_ = 0;
    try {
        step.act(modal);
    } catch (const std::exception& error) {
        ADD_FAILURE() << step.what << ": " << error.what();
        modal.done(0);
    }
}

/// Takes the next step once the modal window that it is for is on show.
void Person::poll() {
    auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (modal == nullptr || !modal->isVisible()) {
        waited_ = 0;
        return;
    }
    if (const auto* box = qobject_cast<QMessageBox*>(modal)) {
        const auto known = answers_.find(box->windowTitle().toStdString());
        if (known != answers_.end()) {
            take({"answer to " + known->first,
                  {},
                  [&](QDialog&) { pushInBox(*box, known->second); }},
                 *modal);
            return;
        }
    }
    if (!steps_.empty() && steps_.front().fits(*modal)) {
        const Step step = steps_.front();
        steps_.pop_front();
        take(step, *modal);
        return;
    }
    waited_ += PollMilliseconds;
    if (waited_ > PatienceMilliseconds) { // never leave a modal loop hanging
        ADD_FAILURE() << "unexpected window " << modal->objectName().toStdString() << " \""
                      << modal->windowTitle().toStdString() << "\", expected "
                      << (steps_.empty() ? "none" : steps_.front().what);
        waited_ = 0;
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            box->buttons().last()->click(); // No of a question: a Yes would come back for ever
        } else {
            modal->done(0);
        }
    }
}

void Person::expectBox(const std::string& button) {
    steps_.push_back(
        {"box with " + button,
         [](QDialog& modal) { return qobject_cast<QMessageBox*>(&modal) != nullptr; },
         [this, button](QDialog& modal) { pushInBox(static_cast<QMessageBox&>(modal), button); }});
}

void Person::pushInBox(const QMessageBox& box, const std::string& button) {
    boxes.push_back(seen(box));
    for (QAbstractButton* candidate : box.buttons()) {
        if (candidate->text().remove('&').toStdString() == button) {
            candidate->click();
            return;
        }
    }
    throw std::runtime_error("no button " + button);
}

void Person::expectFile(const std::string& path, std::function<void(QFileDialog&)> look) {
    steps_.push_back(
        {"file dialog for " + path,
         [](QDialog& modal) { return qobject_cast<QFileDialog*>(&modal) != nullptr; },
         [path, look = std::move(look)](QDialog& modal) {
             if (look) {
                 look(static_cast<QFileDialog&>(modal));
             }
             if (path.empty()) {
                 modal.reject();
                 return;
             }
             modal.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(path));
             auto* buttons = modal.findChild<QDialogButtonBox*>("buttonBox");
             const auto role = buttons->button(QDialogButtonBox::Open) != nullptr
                                   ? QDialogButtonBox::Open
                                   : QDialogButtonBox::Save;
             buttons->button(role)->click();
         }});
}

void Person::expectScreen(const std::string& name, std::function<void(QDialog&)> act) {
    steps_.push_back({"screen " + name,
                      [name](QDialog& modal) { return modal.objectName().toStdString() == name; },
                      std::move(act)});
}

void Person::choose(const char* item) {
    reachable(window(), item)->trigger();
    QApplication::processEvents();
}

bool Person::canChoose(const char* item) const {
    try {
        reachable(*program->window, item);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

std::string Person::caption(const char* item) const {
    return program->window->findChild<QAction*>(item)->text().toStdString();
}

void Person::push(const char* button) {
    pushButton(window(), button);
    QApplication::processEvents();
}

bool Person::isShown(const char* control) const {
    return program->window->findChild<QWidget*>(control)->isVisible();
}

void Person::open(const std::string& path) {
    expectFile(path);
    expectBox("OK");
    choose("mnuFileItem_1");
}

bool takesKeys(QWidget& window) {
    window.activateWindow();
    return QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; });
}

void pushButton(QWidget& window, const QString& name) {
    expectOnTop(window);
    auto* button = workable<QAbstractButton>(window, name);
    // At its left, since an option takes clicks only as far as its caption goes.
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
}

void typeInto(QWidget& window, const QString& field, const QString& text) {
    expectOnTop(window);
    auto* control = workable<QLineEdit>(window, field);
    control->setFocus();
    control->selectAll();
    QTest::keyClick(control, Qt::Key_Delete);
    QTest::keyClicks(control, text);
}

void chooseAction(QWidget& window, const QString& name) {
    reachable(window, name)->trigger();
}

} // namespace korvane::test
