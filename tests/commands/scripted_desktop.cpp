#include "scripted_desktop.h"

#include "runtime/file_text.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace korvane::test {

namespace fs = std::filesystem;

const char* const twoLayerInput = "'TWO LAYERS\n"
                                  "CONTROL CANTILEVER DESIGN 1.00 1.00\n"
                                  "WALL 10\n"
                                  "SURFACE RIGHTSIDE 1 0 10\n"
                                  "SURFACE LEFTSIDE 1 0 0\n"
                                  "SOIL BOTH STRENGTHS 2\n"
                                  " 120 110 30 0 0 0 -2 0\n"
                                  " 125 115 33 0 0 0\n"
                                  "FINISHED\n";

Answer ScriptedDesktop::Ask(const MessageBox& box) {
    boxes.push_back(box);
    if (onBox) {
        onBox(box);
    }
    if (box.buttons != Buttons::YesNo && box.buttons != Buttons::YesNoCancel) {
        return Answer::Ok;
    }
    if (answers.empty()) {
        return box.title.rfind("SAVE ", 0) == 0 ? Answer::No : Answer::Yes;
    }
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

std::string ScriptedDesktop::ChooseFile(const FileDialog& dialog) {
    dialogs.push_back(dialog);
    if (chosenFiles.empty()) {
        return {};
    }
    std::string name = chosenFiles.front();
    chosenFiles.pop_front();
    return name;
}

void ScriptedDesktop::ShowScreen(Screen screen, Session& session) {
    screens.push_back(screen);
    if (screen == Screen::WEDGMETH) {
        session.wedge = WedgeMethod::Sweep;
    } else if (screen == Screen::ROWEPILE) {
        acceptDefaultSections(session);
    } else if (screen == Screen::KEYIN) { // as the screen does on opening
        session.SolutionFailed = 0;
        session.DataChanged = 0;
    }
    if (onScreen) {
        onScreen(screen, session);
    }
}

bool ScriptedDesktop::PrintDocument(const std::string& documentName,
                                    const std::vector<std::string>& lines) {
    if (printerAccepts) {
        prints.push_back({documentName, lines});
    }
    return printerAccepts;
}

std::vector<std::string> ScriptedDesktop::titles() const {
    std::vector<std::string> result;
    for (const MessageBox& box : boxes) {
        result.push_back(box.title);
    }
    return result;
}

int ScriptedDesktop::shown(Screen screen) const {
    return static_cast<int>(std::count(screens.begin(), screens.end(), screen));
}

Office::Office() {
    setenv("temp", temporary.path().c_str(), 1);
    setenv("SOURCE_DATE_EPOCH", "1795305907", 1);
    session = std::make_unique<Session>();
    startSession(*session);
}

Office::~Office() {
    DeleteTempFiles(*session, desktop);
}

void Office::open(const std::string& name) {
    desktop.chosenFiles.push_back(fs::path(name).is_absolute() ? name : examplePath(name));
    openFile(*session, desktop);
}

void Office::enter(const Problem& problem) {
    desktop.onScreen = [&problem](Screen screen, Session& of) {
        if (screen == Screen::KEYIN) {
            of.problem = problem;
            of.HeadContDataValid = 1;
            of.DataChanged = 1;
        }
    };
    editData(*session, desktop);
    desktop.onScreen = nullptr;
}

std::string Office::userFile(const std::string& name) const {
    return (user.path() / name).string();
}

std::string Office::write(const std::string& name, const std::string& text) const {
    writeFile(user.path() / name, text);
    return userFile(name);
}

void Office::solve() {
    solveProblem(*session, desktop);
    if (session->stage == FlowStage::Review) {
        continueSolution(*session, desktop);
    }
    acceptResults(*session);
}

std::string Office::report() const {
    return readFile(outputName());
}

std::set<std::string> Office::temporaryFiles() const {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(temporary.path())) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

} // namespace korvane::test
