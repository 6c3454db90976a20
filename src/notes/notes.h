// What an experienced colleague would say of a wall: notes on its input and on its solution. They
// change no number; where a formula is doubtful the wall is solved once more without it.
//
//     NoteWorkspace second;
//     for (const Note& note : notesOnSolution({.problem = problem}, solved, options, second)) ...
#pragma once

#include "problem/input_reader.h"
#include "problem/quantities.h"
#include "solution/solution.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

enum class Severity {
    Remark,  ///< what the results rest on
    Caution, ///< look at it before the wall is built
    Unsafe,  ///< the results are wrong or not on the safe side
};

/// "remark", "caution", "unsafe".
const char* severityName(Severity severity);

/// "cantilever", "free earth", "fixed earth".
const char* solutionMethodName(SolutionMethod method);

/// A level of a wall that was solved once more. Units as in LevelResult.
struct SecondLevel {
    SolutionMethod method = SolutionMethod::Cantilever;
    double penetration = 0;
    double bottomElev = 0;
    double anchorForce = 0; ///< anchored walls
    double maxMoment = 0;
    double factorOfSafety = 0; ///< analysis
};

/// What a second solve comes to: levels, or why there are none.
struct SecondOpinion {
    Failure failure;
    int levelCount = 0; ///< 0 after a failure
    Array<SecondLevel, 2> levels;
};

struct Note {
    std::string_view code = {}; ///< "surface-limit"
    Severity severity = Severity::Remark;
    int side = 0;                    ///< 0 where the note belongs to none
    int layer = 0;                   ///< from 1 on; 0 for none
    std::optional<double> elev = {}; ///< FT
    /// What `value` and `limit` measure; they are US customary units as in the records.
    Quantity quantity = Quantity::Number;
    std::optional<double> value = {}; ///< what made the note speak
    std::optional<double> limit = {}; ///< the limit of its rule
    std::string text = {};            ///< one or two sentences, in the units asked for
    std::string_view source = {};     ///< of the rule: author and year
    std::optional<SecondOpinion> second = {};
};

/// Which notes are worked out.
enum class NoteWork {
    None,
    UnsafeOnly, ///< no second solve for any other
    All,
};

struct NoteRequest {
    const Problem& problem;
    NoteWork work = NoteWork::All;
    UnitSystem units = UnitSystem::US; ///< of the texts
    /// Of a problem that was read from a file and not changed since.
    const std::vector<ReadRemark>* read = nullptr;
};

/// Where walls are solved once more; takes its memory with the first of them. To be used again and
/// again, by one thread at a time.
class NoteWorkspace {
  public:
    Workspace& get();

  private:
    std::optional<Workspace> workspace_;
};

/// Notes that need no solution; unsafe ones first, then cautions.
std::vector<Note> notesOnInput(const NoteRequest& request);

/// Those on the input and those on a told run as far as it has come, failed ones included;
/// `options` are its own. Questions of the told run are not asked again: a search for a factor of
/// safety in a second solve ends where `options` say without them.
std::vector<Note> notesOnSolution(const NoteRequest& request, const Solved& solved,
                                  const Options& options, NoteWorkspace& second);

/// The codes of all notes that there are, in the order of the rules.
std::vector<std::string_view> noteCodes();

/// How many notes are of a severity.
int countOf(const std::vector<Note>& notes, Severity severity);

} // namespace korvane
