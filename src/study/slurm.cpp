#include "study/slurm.h"

#include "study/run.h"

#include "runtime/file_text.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace korvane::study {

namespace {

namespace fs = std::filesystem;

/// A word of a shell: nothing in it has a meaning.
std::string shellWord(const std::string& text) {
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return word + "'";
}

/// Logs go by the script: a directive of Slurm would read "%" and blanks in a path its own way.
std::string header(const std::string& name, const std::string& more, const fs::path& scripts) {
    return "#!/bin/bash\n"
           "#SBATCH --job-name=" +
           name + "\n#SBATCH --ntasks=1\n#SBATCH --output=/dev/null\n" + more +
           "set -u\nexec </dev/null >>" + shellWord((scripts / name).string()) +
           "\"${SLURM_ARRAY_TASK_ID:+-$SLURM_ARRAY_TASK_ID}.log\" 2>&1\n";
}

/// A task whose program was killed from outside (no memory, a failing node) is put into the queue
/// again, three times at most; its rows stay.
std::string partsScript(const SlurmRequest& request, const fs::path& scripts) {
    const std::string count = std::to_string(request.parts);
    return header("korvane-parts",
                  "#SBATCH --array=1-" + count + "\n#SBATCH --cpus-per-task=" +
                      std::to_string(request.jobs) + "\n#SBATCH --requeue\n",
                  scripts) +
           shellWord(request.program) + " run " + shellWord(request.study) + " --output " +
           shellWord(request.folder) + " --part \"$SLURM_ARRAY_TASK_ID/" + count + "\" --jobs " +
           std::to_string(request.jobs) +
           " --quiet\n"
           "status=$?\n"
           "killed=137\n"
           "if [ \"$status\" -eq \"$killed\" ] && [ \"${SLURM_RESTART_COUNT:-0}\" -lt 3 ]; then\n"
           "    scontrol requeue \"$SLURM_JOB_ID\" && sleep 60\n"
           "fi\n"
           "exit \"$status\"\n";
}

std::string collectScript(const SlurmRequest& request, const fs::path& scripts) {
    return header("korvane-collect", "", scripts) + "exec " + shellWord(request.program) +
           " collect " + shellWord(request.folder) + "\n";
}

std::string submitScript(const fs::path& scripts) {
    return "#!/bin/bash\n"
           "# Submits the parts and, behind them, their collection; tells the numbers of both "
           "jobs.\n"
           "set -eu\n"
           "parts=$(sbatch --parsable " +
           shellWord((scripts / "parts.sh").string()) +
           ")\n"
           "collect=$(sbatch --parsable --dependency=\"afterok:${parts%%;*}\" \\\n"
           "    --kill-on-invalid-dep=yes " +
           shellWord((scripts / "collect.sh").string()) +
           ")\n"
           "echo \"parts ${parts%%;*}, collection ${collect%%;*}\"\n";
}

} // namespace

std::string writeSlurmJobs(const Study& study, const SlurmRequest& request) {
    if (Plan(study).size() == 0) {
        throw UsageFault{{std::string("the method ") + methodName(study.method) +
                          " has no variants to share between parts"}};
    }
    SlurmRequest absolute = request;
    absolute.study = fs::absolute(request.study).lexically_normal().string();
    absolute.folder = fs::absolute(request.folder).lexically_normal().string();
    const fs::path scripts = fs::path(absolute.folder) / "slurm";
    std::error_code fault;
    fs::create_directories(scripts, fault);
    if (!fs::is_directory(scripts)) {
        throw StoreFault{scripts.string() + ": " + (fault ? fault.message() : "is no folder")};
    }
    saveFile(scripts / "parts.sh", partsScript(absolute, scripts));
    saveFile(scripts / "collect.sh", collectScript(absolute, scripts));
    saveFile(scripts / "submit.sh", submitScript(scripts));
    return (scripts / "submit.sh").string();
}

void submitSlurmJobs(const std::string& script) {
    std::string shell = "/bin/bash";
    std::string file = script;
    char* const words[] = {shell.data(), file.data(), nullptr};
    pid_t child = 0;
    const int fault = posix_spawn(&child, shell.c_str(), nullptr, nullptr, words, environ);
    int end = 0;
    if (fault == 0) {
        while (waitpid(child, &end, 0) < 0 && errno == EINTR) {
        }
    }
    if (fault != 0 || !WIFEXITED(end) || WEXITSTATUS(end) != 0) {
        throw StoreFault{script + " has failed" +
                         (fault == 0 ? "" : ": " + std::generic_category().message(fault))};
    }
}

} // namespace korvane::study
