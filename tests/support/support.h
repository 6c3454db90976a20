// What several test programs share.
#pragma once

#include "state/state.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace korvane::test {

/// Answers boxes from a list (then with the first button's answer) and keeps what was asked.
class ScriptedPrompts : public Prompts {
  public:
    Answer Ask(const MessageBox& box) override;

    std::vector<MessageBox> asked;
    std::vector<Answer> answers; ///< taken from the front
};

/// A new folder that is removed with the object.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// Sets an environment variable, or removes it, and puts the old state back at the end.
class EnvironmentVariable {
  public:
    EnvironmentVariable(std::string name, const std::optional<std::string>& value);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    std::string name_;
    std::optional<std::string> old_;
};

/// A state with scripted prompts. Large, hence on the heap.
struct Bench {
    ScriptedPrompts prompts;
    std::unique_ptr<State> state = std::make_unique<State>(prompts);
    Problem& problem = state->problem;
};

/// A cleared problem of the plainest kind: a design of a cantilever wall, top at elevation 0, level
/// ground at 0 on the right and at -10 on the left, one layer of dry sand (120 PCF, 30 degrees) on
/// both sides, factors of safety 1 and 1.
Problem plainCantilever();

/// The path of an input file among the examples.
std::string examplePath(const std::string& name);

} // namespace korvane::test
