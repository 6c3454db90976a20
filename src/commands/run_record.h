// What a running desktop program keeps in the temporary folder for the next start, should it die.
//
// From it a later start clears up behind the dead program and brings back what had been typed.
// Each program holds a file KORVANE-RUN-n, locked as long as its process lives: the lock, not the
// number of a process, tells the living from the dead. It lists the temporary files of the program
// and the folder of its study.
// KORVANE-RECOVERY-n.txt beside it is the recovery copy.
#pragma once

#include "commands/session.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

/// A locked KORVANE-RUN-n and the name of its copy. The lock goes with the object, both files stay.
class RunClaim {
  public:
    RunClaim(int handle, const std::filesystem::path& folder, int number);
    ~RunClaim();
    RunClaim(RunClaim&& other) noexcept;
    RunClaim& operator=(RunClaim&&) = delete;

    int handle() const { return handle_; }
    const std::filesystem::path& copy() const { return copy_; }
    /// Removes both files, or the record alone.
    void removeAll() const noexcept;
    void removeRecord() const noexcept;

  private:
    int handle_;
    std::filesystem::path record_;
    std::filesystem::path copy_;
};

/// The record of this process.
class RunRecord {
  public:
    /// Under the lowest number that is free. File faults are RuntimeErrors.
    explicit RunRecord(const std::filesystem::path& folder);
    /// A program that ends well leaves neither record nor copy.
    ~RunRecord();
    RunRecord(const RunRecord&) = delete;
    RunRecord& operator=(const RunRecord&) = delete;

    /// Brings the list of temporary files up to date.
    void list(const TemporaryFiles& files);
    /// Makes or replaces the copy, whole at any moment and readable by the user alone. The text
    /// behind `head` decides whether there is anything new.
    void keep(std::string_view head, const std::string& text);
    /// A copy that cannot be removed is told once and goes with the program.
    void dropCopy() noexcept;
    /// The process is about to end without destructors: removes the files listed and those set
    /// aside. A copy stays for the next start, with the record.
    void endEarly() noexcept;

  private:
    std::filesystem::path folder_;
    RunClaim claim_;
    std::string listed_;
    std::string kept_;
    bool hasCopy_ = false;
    bool isStuck_ = false; ///< it could not be removed
};

/// A recovery copy of a process that died, held so that no other program offers it.
struct DeadRun {
    RunClaim claim;
    std::string text; ///< of the copy
};

/// Sweeps what dead programs of this user have left in a folder: their temporary files, those set
/// aside, the folders of their studies, and their records. What is not this user's, has another
/// content than it was listed with or belongs to a living program stays, as do rescue files.
/// Recovery copies are claimed.
std::vector<DeadRun> claimDeadRuns(const std::filesystem::path& temporaryFolder);

} // namespace korvane
