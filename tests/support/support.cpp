#include "support/support.h"

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <utility>

#include <unistd.h>

namespace korvane::test {

void Bench::takeSeepage() {
    state->preparation.SeepageKind = problem.SeepageKind;
    state->preparation.SeepageGradient = problem.SeepageGradient;
}

FactorLimit Bench::limit() {
    return {.ask = [this](double limit) {
        asked.push_back(factorQuestion(limit));
        if (answers.empty()) {
            return true;
        }
        const Answer answer = answers.front();
        answers.erase(answers.begin());
        return answer == Answer::Yes;
    }};
}

std::vector<MessageBox> Bench::told() const {
    std::vector<MessageBox> boxes = asked;
    if (state->failed() && hasBox(state->failure)) {
        boxes.push_back(failureBox(state->failure));
    }
    return boxes;
}

TemporaryFolder::TemporaryFolder() {
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("korvane-test-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
    std::filesystem::create_directories(path_);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

namespace {

void setVariable(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name.c_str(), value->c_str(), 1);
    } else {
        unsetenv(name.c_str());
    }
    tzset(); // the variable may be the time zone
}

} // namespace

EnvironmentVariable::EnvironmentVariable(std::string name, const std::optional<std::string>& value)
    : name_(std::move(name)) {
    if (const char* old = std::getenv(name_.c_str())) {
        old_ = old;
    }
    setVariable(name_, value);
}

EnvironmentVariable::~EnvironmentVariable() {
    setVariable(name_, old_);
}

Problem plainCantilever() {
    Problem problem;
    clearProblemData(problem);
    problem.NumHeadingLines = 1;
    problem.HeadingLines(1) = "'PLAIN CANTILEVER ";
    problem.WallType = WallKind::Cantilever;
    problem.ProgramMode = Mode::Design;
    problem.FSActive = 1.0;
    problem.FSPassive = 1.0;
    problem.WallTopElev = 0;
    for (const int side : {Right, Left}) {
        problem.SurfacePointCount(side) = 1;
        problem.SurfaceDist(side, 1) = 0;
        problem.SurfaceElev(side, 1) = side == Right ? 0 : -10;
        problem.SoilDataKind(side) = SoilData::Strengths;
        problem.SoilLayerCount(side) = 1;
        problem.SoilSatWeight(side, 1) = 120;
        problem.SoilMoistWeight(side, 1) = 120;
        problem.SoilFriction(side, 1) = 30;
        problem.SoilBottomElev(side, 1) = NoLayerBottom;
    }
    return problem;
}

std::string examplePath(const std::string& name) {
    return std::string(KORVANE_SOURCE_DIR) + "/examples/" + name + ".dat";
}

} // namespace korvane::test
