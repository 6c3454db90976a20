// Works the variants of a study out and stores them.
#pragma once

#include "study/folder.h"
#include "study/plan.h"
#include "study/store.h"
#include "study/tally.h"

#include <functional>
#include <string>

namespace korvane::study {

/// How far a run is.
struct Progress {
    std::uint64_t done = 0;   ///< rows of this share, with those of earlier runs
    std::uint64_t size = 0;   ///< of this share
    std::uint64_t before = 0; ///< rows that earlier runs had stored
    double seconds = 0;       ///< since the start
};

struct RunRequest {
    const Study& study;
    std::string folder;
    int jobs = 1;
    std::uint64_t part = 1;
    std::uint64_t parts = 1;
    std::function<void(const Progress&)> tell = {};   ///< now and then
    std::function<void(const std::string&)> say = {}; ///< what is begun, where nothing is counted
    std::function<bool()> stop = {};                  ///< true: end after the rows at hand
};

/// Runs the share of a study that is not stored yet; with one part the statistics as well. False
/// where it was stopped. Faults of the file are thrown as StoreFault, rows stored so far stay.
bool runStudy(const RunRequest& request);

/// Merges the files of all parts of a folder to results.sqlite with its statistics; those that are
/// missing, damaged or unfinished are named in a StoreFault and nothing is written. `say` hears of
/// each step.
void collectParts(const std::string& folder, const std::function<void(const std::string&)>& say);

/// Stores the variants of a share that are not there yet in the order of their indices, worked out
/// by several threads, and counts them.
void runShare(const RunRequest& request, Plan& plan, Store& store, const Share& share,
              Tally& tally);

} // namespace korvane::study
