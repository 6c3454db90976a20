// Programs that stand in for korvane-study.
#pragma once

#include "runtime/file_text.h"
#include "support/support.h"

#include <filesystem>
#include <string>

namespace korvane::test {

/// PATH with a folder before the usual ones.
inline std::string pathWith(const std::filesystem::path& folder) {
    return folder.string() + ":/usr/bin:/bin";
}

/// A study program of a few lines of shell.
class StandIn {
  public:
    explicit StandIn(const std::string& lines) : path_("PATH", pathWith(folder_.path())) {
        const auto file = folder_.path() / "korvane-study";
        writeFile(file, "#!/bin/sh\n" + lines + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

  private:
    TemporaryFolder folder_;
    EnvironmentVariable path_;
};

/// Lines of one who is at the first of three variants until a signal comes.
inline std::string endless(const std::string& first) {
    return first + "echo '1 of 3, 0 a second' >&2; while :; do sleep 0.05; done";
}

} // namespace korvane::test
