// Reads a problem from a keyword input file.
#pragma once

#include "problem/problem.h"

#include <string>
#include <string_view>

namespace korvane {

/// What the reader tells: nothing where the problem is complete, else one message.
struct ReadResult {
    bool complete = false;
    std::string title; ///< of the message box; empty when complete
    std::string text;  ///< lines parted by one line feed

    bool operator==(const ReadResult&) const = default;
};

/// The place at which a file was refused, for the one who corrects it.
struct InputFault {
    int line = 0;            ///< of the file, from 1; of a file that ends too early its last one
    std::string field = {};  ///< as in JSON; the section where it is no matter of one field
    int side = 0;            ///< 0 where the field has no sides
    int index = 0;           ///< 0 where the field is no list
    std::string read = {};   ///< the word as typed, or the whole line; "" where nothing follows
    std::string needed = {}; ///< to stand behind "must be": "0 to 45"
};

/// `12: SoilFriction: read "46", must be 0 to 45`.
std::string faultText(const InputFault& fault);

/// Reads `fileText` into a cleared problem. `fileName` stands in the messages. On a failure the
/// fields read so far stay. Faults that no message covers are thrown: RuntimeError 5 where a token
/// is taken that does not exist, 9 for a given seepage gradient. With a message comes its place, to
/// `fault` if that is given.
ReadResult readProblem(Problem& problem, std::string_view fileText, const std::string& fileName,
                       InputFault* fault = nullptr);

} // namespace korvane
