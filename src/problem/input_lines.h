// The lines of an input file, one after another, cleaned and cut into tokens.
#pragma once

#include "runtime/array.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

/// Most tokens that a line can have; what follows the last one is ignored.
inline constexpr int MaxTokens = 20;

/// A file under reading and its current line.
struct InputLines {
    std::vector<std::string> lines; ///< of the file, as they stand in it
    std::size_t linesRead = 0;
    std::size_t indent = 0;                    ///< blanks before the current line in the file
    std::string InputLine;                     ///< cleaned: trimmed, upper case, one blank appended
    Array<std::size_t, 2, MaxTokens> TokenPos; ///< (1, n) start and (2, n) end column of token n,
                                               ///< from 1; 0 where the token does not exist
    int TokenCount = 0;
    /// The last token of the line that was asked for: what follows it is read for nothing.
    mutable int TokensTaken = 0;
};

/// Takes the next significant line, passing over empty lines and "(" comments, and finds its
/// tokens. False at the end of the file: the old line then stays, without any token.
bool NextInputLine(InputLines& input);

/// True where the current line has the token (1 to MaxTokens).
bool hasToken(const InputLines& input, int token);

/// A token of the current line; RuntimeError 5 where it does not exist.
std::string_view takeToken(const InputLines& input, int token);

} // namespace korvane
