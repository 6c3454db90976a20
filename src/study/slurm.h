// The shares of a study as tasks of a Slurm cluster.
#pragma once

#include "study/store.h"

#include <cstdint>
#include <string>

namespace korvane::study {

struct SlurmRequest {
    std::string study;   ///< the file
    std::string folder;  ///< of the results, seen by all nodes under the same path
    std::string program; ///< korvane-study, likewise
    std::uint64_t parts = 1;
    int jobs = 1; ///< processors of a task
};

/// Writes DIR/slurm/parts.sh (an array job, one task a part), collect.sh (to run when all tasks
/// have ended well) and submit.sh, which submits both; returns the path of the last. The texts hold
/// absolute paths. UsageFault where a study has no variants to share; RuntimeError where a file
/// cannot be written.
std::string writeSlurmJobs(const Study& study, const SlurmRequest& request);

/// Runs submit.sh; StoreFault where it fails.
void submitSlurmJobs(const std::string& script);

} // namespace korvane::study
