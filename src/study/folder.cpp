#include "study/folder.h"

#include "study/store.h"

#include "runtime/file_text.h"
#include "runtime/runtime_error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvane::study {

namespace {

namespace fs = std::filesystem;

/// "part-3-of-8.sqlite": 8; 0 for any other name.
std::uint64_t partsOf(const std::string& name) {
    unsigned long long part = 0;
    unsigned long long parts = 0;
    if (std::sscanf(name.c_str(), "part-%llu-of-%llu.sqlite", &part, &parts) != 2 ||
        name != fileOfPart(part, parts)) {
        return 0;
    }
    return parts;
}

/// The files of rows in a folder.
std::vector<fs::path> rowFilesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code fault;
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end;
         entry.increment(fault)) {
        const std::string name = entry->path().filename().string();
        if (name == fileOfPart(1, 1) || partsOf(name) != 0) {
            files.push_back(entry->path());
        }
    }
    return files;
}

/// The last line tells that the file is whole.
constexpr const char* LastLine = "\nend\n";

std::string identityOf(const Study& study) {
    std::string text = "KORVANE study";
    for (const auto& [key, value] : provenanceOf(study)) {
        if (!key.ends_with("Text")) { // their hashes do
            (((text += '\n') += key) += ' ') += value;
        }
    }
    return text + LastLine;
}

/// Empty where there is no whole one.
std::string identityIn(const fs::path& file) {
    try {
        std::string text = fs::exists(file) ? readFile(file.string()) : "";
        return text.ends_with(LastLine) ? text : "";
    } catch (const RuntimeError&) {
        return {};
    }
}

/// Every file of rows that can be read must be the study's; whether all could be.
bool checkRows(const fs::path& folder, const Study& study) {
    bool all = true;
    for (const fs::path& file : rowFilesIn(folder)) {
        try {
            Store(file.string(), Store::Look::Briefly).checkSame(study);
        } catch (const OtherStudyFault&) {
            throw;
        } catch (const EmptyFileFault&) {
            continue; // made and not written to, before a kill or at this moment
        } catch (const StoreFault&) {
            all = false; // damage is told of where the file is used
        }
    }
    return all;
}

/// Puts the file in its place at once; false where another process has been faster.
bool place(const fs::path& file, const std::string& text, bool replaces) {
    const fs::path beside = file.string() + "." + std::to_string(getpid());
    std::error_code ignored;
    try {
        writeFile(beside.string(), text);
    } catch (const RuntimeError& fault) {
        fs::remove(beside, ignored);
        throw StoreFault{file.string() + ": " + fault.what()};
    }
    std::error_code fault;
    if (!replaces) {
        fs::create_hard_link(beside, file, fault);
        if (!fault || fault == std::errc::file_exists) {
            fs::remove(beside, ignored);
            return !fault;
        }
    }
    fs::rename(beside, file, fault); // of file systems without links as well
    if (fault) {
        fs::remove(beside, ignored);
        throw StoreFault{file.string() + ": " + fault.message()};
    }
    return true;
}

} // namespace

std::string fileOfPart(std::uint64_t part, std::uint64_t parts) {
    return parts == 1 ? "results.sqlite"
                      : "part-" + std::to_string(part) + "-of-" + std::to_string(parts) + ".sqlite";
}

std::uint64_t partsIn(const std::string& folder) {
    std::uint64_t parts = 0;
    for (const fs::path& file : rowFilesIn(folder)) {
        const std::uint64_t here = partsOf(file.filename().string());
        if (here != 0 && parts != 0 && here != parts) {
            throw StoreFault{folder + " holds parts of " + std::to_string(parts) + " and of " +
                             std::to_string(here)};
        }
        parts = here != 0 ? here : parts;
    }
    if (parts == 0) {
        throw StoreFault{folder + " holds no parts of a study"};
    }
    return parts;
}

void claimFolder(const std::string& folder, const Study& study) {
    std::error_code fault;
    fs::create_directories(folder, fault);
    if (!fs::is_directory(folder)) {
        throw StoreFault{folder + ": " + (fault ? fault.message() : "is no folder")};
    }
    const fs::path file = fs::path(folder) / "study.id";
    const std::string ours = identityOf(study);
    constexpr int Tries = 3;
    for (int n = 0; n < Tries; ++n) {
        const std::string there = identityIn(file);
        if (there == ours) {
            return;
        }
        const bool all = checkRows(folder, study);
        if (!there.empty() && !all) {
            throw OtherStudyFault{{folder + " holds rows of another study"}};
        }
        if (place(file, ours, fs::exists(file))) {
            return;
        }
    }
}

CollectionLock::CollectionLock(const std::string& folder)
    : path_((fs::path(folder) / "collect.lock").string()) {
    while (file_ < 0) {
        file_ = open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666); // NOLINT: POSIX
        struct flock whole {};
        whole.l_type = F_WRLCK;
        if (file_ < 0 || fcntl(file_, F_OFD_SETLK, &whole) != 0) { // NOLINT: POSIX
            const int reason = errno;
            if (file_ >= 0) {
                close(file_);
            }
            throw StoreFault{reason == EAGAIN || reason == EACCES
                                 ? folder + " is being collected by another run"
                                 : path_ + ": " + std::strerror(reason)};
        }
        // Whoever had it before has taken the file away with it.
        struct stat ours {};
        struct stat there {};
        if (fstat(file_, &ours) != 0 || stat(path_.c_str(), &there) != 0 ||
            ours.st_ino != there.st_ino) {
            close(file_);
            file_ = -1;
        }
    }
}

CollectionLock::~CollectionLock() {
    unlink(path_.c_str());
    close(file_);
}

} // namespace korvane::study
