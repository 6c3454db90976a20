// What several test programs share.
#pragma once

#include "state/kept_work.h"
#include "state/results.h"
#include "wall/factor_search.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace korvane::test {

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

/// A problem, the working values of its solution and what came of it. Large, hence on the heap.
struct Bench {
    std::unique_ptr<Problem> heldProblem = std::make_unique<Problem>();
    Problem& problem = *heldProblem;
    std::unique_ptr<KeptWork> kept = std::make_unique<KeptWork>();
    std::unique_ptr<State> state = std::make_unique<State>(problem, *kept);
    std::unique_ptr<Results> results = std::make_unique<Results>();
    std::vector<Answer> answers;   ///< to the question of a large factor, from the front; then Yes
    std::vector<MessageBox> asked; ///< the questions that came up

    /// The record's seepage for the procedures behind the preparation.
    void takeSeepage();
    /// Answers like a person: a limit on the factor of safety that is reached.
    FactorLimit limit();
    /// True where the level has its results.
    bool solved(int level) const { return level <= results->levelCount; }
    /// The questions, and the box that tells why the solution ended, if it did.
    std::vector<MessageBox> told() const;
};

/// A cleared problem of the plainest kind: a design of a cantilever wall, top at elevation 0, level
/// ground at 0 on the right and at -10 on the left, one layer of dry sand (120 PCF, 30 degrees) on
/// both sides, factors of safety 1 and 1.
Problem plainCantilever();

/// The path of an input file among the examples.
std::string examplePath(const std::string& name);

} // namespace korvane::test
