// What a study asks of each variant.
#pragma once

#include "notes/notes.h"
#include "solution/solution.h"
#include "state/result_fields.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::study {

/// A number of a solved level.
struct LevelOutput {
    ResultField field; ///< its name is that of the output
    double (*value)(const LevelResult&);
    /// Elevation at which an extreme stands; null for what has none.
    double (*elev)(const LevelResult&) = nullptr;
    bool (*applies)(const Problem&); ///< whether walls of this kind have it
    int onlyLevel = 0;               ///< the one level that has it; 0: all have
};

/// The output of a name; "bottom" is "bottomElev". Null where there is none.
const LevelOutput* findOutput(std::string_view name, const Problem& base);

/// The names of all outputs that walls of this kind have, as studies write them.
std::vector<std::string_view> outputNames(const Problem& base);

/// The levels of a wall: "" for its only one, "_free" and "_fixed" for the two of an anchored one.
struct LevelSuffix {
    int level;
    const char* suffix;
};
std::vector<LevelSuffix> levelSuffixes(const Problem& base);

/// A column of the table of variants.
struct OutputColumn {
    std::string name;
    const LevelOutput* output = nullptr; ///< null: whether a note speaks
    int level = 1;
    bool isElev = false;
    std::string note = {}; ///< its code

    Quantity quantity() const;
    /// In the units given; nothing where the wall was not solved. Notes count 0 or 1.
    std::optional<double> value(const Solved& solved, const std::vector<Note>& notes,
                                UnitSystem units) const;
};

/// Before the code of a note that is an output.
inline constexpr std::string_view NotePrefix = "note.";

/// The columns of an output as a study names it: "penetration", "maxMoment_free", "note.CODE".
/// None where there is no such output.
std::vector<OutputColumn> columnsOf(std::string_view name, const Problem& base);

} // namespace korvane::study
