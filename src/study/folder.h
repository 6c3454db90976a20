// The folder of a study's results: its files, whose it is, and who merges its parts.
#pragma once

#include "study/study.h"

#include <cstdint>
#include <string>

namespace korvane::study {

/// "results.sqlite", or "part-3-of-8.sqlite".
std::string fileOfPart(std::uint64_t part, std::uint64_t parts);

/// How many parts the study in a folder has, by the names of its files. StoreFault where there are
/// none, or those of several counts.
std::uint64_t partsIn(const std::string& folder);

/// Makes the folder, if it is missing, and writes into DIR/study.id whose it is, before any rows
/// are there. OtherStudyFault where it is another study's: by that file, or by rows in it. A
/// folder without rows may be taken over.
void claimFolder(const std::string& folder, const Study& study);

/// One process at a time merges the parts of a folder, as long as this lives; StoreFault where
/// another one does.
class CollectionLock {
  public:
    explicit CollectionLock(const std::string& folder);
    ~CollectionLock();
    CollectionLock(const CollectionLock&) = delete;
    CollectionLock& operator=(const CollectionLock&) = delete;

  private:
    std::string path_;
    int file_ = -1;
};

} // namespace korvane::study
