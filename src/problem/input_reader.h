// Reads a problem from a keyword input file.
#pragma once

#include "problem/problem.h"
#include "problem/quantities.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

/// What the reader tells: nothing where the problem is complete, else one message.
struct ReadResult {
    bool complete = false;
    std::string title;                 ///< of the message box; empty when complete
    std::string text;                  ///< lines parted by one line feed
    UnitSystem units = UnitSystem::US; ///< of the file's numbers

    bool operator==(const ReadResult&) const = default;
};

/// A number that the reader has taken from a file.
struct FileNumber {
    std::size_t line = 0;   ///< from 1
    std::size_t column = 0; ///< bytes before it in its line
    std::size_t length = 0; ///< bytes
    Quantity quantity = Quantity::Number;
};

/// All numbers of a file in their order, counts of points and layers aside.
struct FileNumbers {
    UnitSystem units = UnitSystem::US;
    std::size_t unitsLine = 0; ///< of "UNITS", from 1; 0 where the file has none
    std::vector<FileNumber> numbers;
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

/// What the reader passed over or settled by itself in a line.
struct ReadRemark {
    enum class Kind {
        WordsIgnored,       ///< words behind those that the line takes
        LastLayerFactors,   ///< numbers behind a side's last layer, read as factors of safety
        PassiveFactorAlone, ///< a passive factor of side or layer without an active one
        SlopeDropped,       ///< the slope of a layer's bottom
        DefaultFactors,     ///< a design without factors of safety takes 1.0 and 1.5
        OneFactorForBoth,   ///< a design with one factor of safety
    };
    Kind kind = Kind::WordsIgnored;
    int side = 0;     ///< 0 where the line belongs to none
    int layer = 0;    ///< likewise
    std::string line; ///< cleaned

    bool operator==(const ReadRemark&) const = default;
};

/// Reads `fileText` into a cleared problem. `fileName` stands in the messages. On a failure the
/// fields read so far stay. Faults that no message covers are thrown: RuntimeError 5 where a token
/// is taken that does not exist, 9 for a given seepage gradient. With a message comes its place, to
/// `fault` if that is given.
///
/// A file whose first line (comments and empty lines aside) is "UNITS SI" has metric numbers:
/// elevations in m, unit weights in kN/m3, and so on (`unitOf`). They are converted as they are
/// read; the limits count behind the conversion. "UNITS US" says what holds without such a line.
/// `numbers`, if given, takes the file's units and where its numbers stand; remarks are added to
/// `remarks`.
ReadResult readProblem(Problem& problem, std::string_view fileText, const std::string& fileName,
                       InputFault* fault = nullptr, FileNumbers* numbers = nullptr,
                       std::vector<ReadRemark>* remarks = nullptr);

} // namespace korvane
