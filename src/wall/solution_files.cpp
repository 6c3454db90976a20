#include "wall/solution_files.h"

#include "runtime/file_text.h"

#include <bit>
#include <cstdint>
#include <filesystem>
#include <string_view>

namespace korvane {

namespace {

constexpr int ActiveMarks = 1;
constexpr int PassiveMarks = 2;

/// The bytes of a solution file: doubles of 8 bytes and 16-bit integers, the lowest byte first
/// whatever the machine, and marks without a length.
class ByteWriter {
  public:
    template <class Unsigned>
    void put(Unsigned value) {
        for (std::size_t byte = 0; byte < sizeof value; ++byte) {
            bytes_.push_back(static_cast<char>((value >> (8 * byte)) & 0xFFU));
        }
    }
    template <class Doubles>
    void putAll(const Doubles& values) {
        for (const double value : values) {
            put(std::bit_cast<std::uint64_t>(value));
        }
    }
    void putText(std::string_view text) { bytes_ += text; }
    const std::string& bytes() const { return bytes_; }

  private:
    std::string bytes_;
};

/// Reads back what ByteWriter wrote; RuntimeError 62 where the file ends too early.
class ByteReader {
  public:
    ByteReader(std::string_view bytes, std::string fileName)
        : bytes_(bytes), fileName_(std::move(fileName)) {}

    template <class Unsigned>
    Unsigned take() {
        Unsigned value = 0;
        const std::string_view text = takeText(sizeof value);
        for (std::size_t byte = 0; byte < sizeof value; ++byte) {
            value = static_cast<Unsigned>(
                value |
                static_cast<Unsigned>(static_cast<Unsigned>(static_cast<unsigned char>(text[byte]))
                                      << (8 * byte)));
        }
        return value;
    }
    template <class Doubles>
    void takeAll(Doubles& values) {
        for (double& value : values) {
            value = std::bit_cast<double>(take<std::uint64_t>());
        }
    }
    std::string_view takeText(std::size_t length) {
        if (bytes_.size() - position_ < length) {
            throw RuntimeError(62, fileName_);
        }
        position_ += length;
        return bytes_.substr(position_ - length, length);
    }
    std::size_t position() const { return position_; }

  private:
    std::string_view bytes_;
    std::string fileName_;
    std::size_t position_ = 0;
};

/// Makes the first free file ZZ + level + number, lists it for deletion and returns its name.
std::string makeSolutionFile(TemporaryFiles& files, int level) {
    std::string& listed = files.ScratchFileList(files.ScratchFileCount + 1);
    for (int number = 0;; ++number) {
        std::string name = (std::filesystem::path(files.TempFolder) /
                            ("ZZ" + std::to_string(level) + std::to_string(number)))
                               .string();
        if (createExclusively(name)) {
            ++files.ScratchFileCount;
            listed = files.ScratchFileName(level) = name;
            return name;
        }
    }
}

void putMarks(ByteWriter& out, const Array<bool, 2, 301>& marks, TemporaryFiles& files, int level,
              int kind) {
    for (const int side : {Right, Left}) {
        for (int i = 1; i <= 301; ++i) {
            out.putText(markText(marks(side, i)));
            files.MarkLength(level, kind, side, i) = marks(side, i) ? 1 : 0;
        }
    }
}

void takeMarks(ByteReader& in, Array<bool, 2, 301>& marks, const TemporaryFiles& files, int level,
               int kind) {
    for (const int side : {Right, Left}) {
        for (int i = 1; i <= 301; ++i) {
            const int length = files.MarkLength(level, kind, side, i);
            marks(side, i) = !in.takeText(static_cast<std::size_t>(length)).empty();
        }
    }
}

} // namespace

void WriteSolutionFile(State& state, int level) {
    const ResultDiagrams& results = state.results;
    const Pressures& pressures = state.pressures;
    TemporaryFiles& files = state.files;
    ByteWriter out;
    out.putAll(results.ResultElev);
    out.putAll(results.ResultMoment);
    out.putAll(results.ResultShear);
    out.putAll(results.ResultDeflection);
    out.putAll(results.ResultPressure);
    out.put(static_cast<std::uint16_t>(state.grid.NumElevs));
    out.putAll(state.grid.ElevGrid);
    out.putAll(pressures.ActivePressures);
    out.putAll(pressures.PassivePressures);
    putMarks(out, pressures.ActiveMark, files, level, ActiveMarks);
    putMarks(out, pressures.PassiveMark, files, level, PassiveMarks);
    out.putAll(pressures.WaterPressures);
    writeFile(makeSolutionFile(files, level), out.bytes());
}

void LoadResultLevel(State& state, int level) {
    ResultDiagrams& results = state.results;
    Pressures& pressures = state.pressures;
    const TemporaryFiles& files = state.files;
    const std::string& name = files.ScratchFileName(level);
    const std::string bytes = readFile(name);
    ByteReader in(bytes, name);
    in.takeAll(results.ResultElev);
    in.takeAll(results.ResultMoment);
    in.takeAll(results.ResultShear);
    in.takeAll(results.ResultDeflection);
    in.takeAll(results.ResultPressure);
    state.grid.NumElevs = in.take<std::uint16_t>();
    in.takeAll(state.grid.ElevGrid);
    in.takeAll(pressures.ActivePressures);
    in.takeAll(pressures.PassivePressures);
    takeMarks(in, pressures.ActiveMark, files, level, ActiveMarks);
    takeMarks(in, pressures.PassiveMark, files, level, PassiveMarks);

    // The water pressures go the other way: those in memory stay and are written, deliberately.
    ByteWriter water;
    water.putAll(pressures.WaterPressures);
    overwriteFile(name, in.position(), water.bytes());
}

void KeepSolvedLevel(State& state, int level) {
    const ResultDiagrams& results = state.results;
    SolvedLevel& kept = state.solved(level);
    kept.solved = true;
    kept.rowCount = state.solution.BottomIndex(level);
    kept.grid = state.grid;
    kept.pressures = state.pressures;
    kept.NetActive = state.net.NetActive;
    kept.NetPassive = state.net.NetPassive;
    kept.ResultElev = results.ResultElev;
    kept.ResultMoment = results.ResultMoment;
    kept.ResultShear = results.ResultShear;
    kept.ResultDeflection = results.ResultDeflection;
    kept.ResultPressure = results.ResultPressure;
}

void forgetSolvedLevels(State& state) {
    for (SolvedLevel& level : state.solved) {
        level.solved = false;
    }
}

} // namespace korvane
