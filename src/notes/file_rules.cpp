// Rules on an input file: what its reader passed over or settled by itself.
#include "notes/rules.h"

#include "runtime/number_text.h"
#include "runtime/utf8_text.h"

namespace korvane {

namespace {

/// The first remark of a kind, with the number of all.
struct Found {
    const ReadRemark* first = nullptr;
    int count = 0;
};

Found find(const Wall& wall, ReadRemark::Kind kind) {
    Found found;
    if (wall.request.read == nullptr) {
        return found;
    }
    for (const ReadRemark& remark : *wall.request.read) {
        if (remark.kind == kind) {
            found.first = found.count == 0 ? &remark : found.first;
            ++found.count;
        }
    }
    return found;
}

/// The line of a remark as it may be shown, and how many more there are.
std::string lineText(const Found& found) {
    constexpr std::size_t longest = 60;
    std::string line = messageText(std::string(trimmed(found.first->line)).substr(0, longest));
    line = "\"" + line + "\"";
    return found.count > 1 ? line + " and " + std::to_string(found.count - 1) + " more" : line;
}

template <ReadRemark::Kind kind>
void tell(const Wall& wall, NoteSink& notes, const char* before, const char* after) {
    if (const Found found = find(wall, kind); found.first != nullptr) {
        notes.add({.side = found.first->side,
                   .layer = found.first->layer,
                   .text = before + lineText(found) + after});
    }
}

void lookForWords(const Wall& wall, NoteSink& notes) {
    tell<ReadRemark::Kind::WordsIgnored>(wall, notes,
                                         "Words at the end of a line are ignored: ", ".");
}

void lookAtLastLayer(const Wall& wall, NoteSink& notes) {
    tell<ReadRemark::Kind::LastLayerFactors>(
        wall, notes,
        "Numbers behind a last layer are read as its factors of safety, as it has no bottom: ",
        ".");
}

void lookForPassiveFactors(const Wall& wall, NoteSink& notes) {
    tell<ReadRemark::Kind::PassiveFactorAlone>(
        wall, notes,
        "A passive factor of safety is given alone; the active one is taken from the "
        "side or the control line: ",
        ".");
}

void lookForSlopes(const Wall& wall, NoteSink& notes) {
    tell<ReadRemark::Kind::SlopeDropped>(wall, notes, "The slope of a layer's bottom is dropped: ",
                                         "; only the data entry screens take slopes.");
}

void lookForDefaults(const Wall& wall, NoteSink& notes) {
    tell<ReadRemark::Kind::DefaultFactors>(
        wall, notes,
        "No factors of safety are given; 1.0 is taken for active and 1.5 for passive pressures: ",
        ".");
    tell<ReadRemark::Kind::OneFactorForBoth>(
        wall, notes, "One factor of safety is taken for active and passive pressures alike: ", ".");
}

constexpr const char* Format = "the rules of the input file";

constexpr NoteRule Rules[] = {
    {"words-ignored", Severity::Remark, Needs::Input, lookForWords, Format},
    {"last-layer-factors", Severity::Remark, Needs::Input, lookAtLastLayer, Format},
    {"passive-factor-alone", Severity::Remark, Needs::Input, lookForPassiveFactors, Format},
    {"slope-dropped", Severity::Remark, Needs::Input, lookForSlopes, Format},
    {"defaults-taken", Severity::Remark, Needs::Input, lookForDefaults, Format},
};

} // namespace

std::span<const NoteRule> fileRules() {
    return Rules;
}

} // namespace korvane
