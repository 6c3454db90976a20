// Machines that fail: a disk that becomes full, a user whom permissions stop, a locked folder.
#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include <sys/resource.h>
#include <unistd.h>

namespace korvane::test {

/// Files of the process cannot grow beyond a number of bytes: a disk that becomes full.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &old_);
        rlimit small = old_;
        small.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, oldHandler_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

  private:
    rlimit old_{};
    void (*oldHandler_)(int);
};

/// Gives up the rights of the administrator, whom no permission stops.
class OrdinaryUser {
  public:
    OrdinaryUser() : administrator_(geteuid() == 0 && seteuid(65534) == 0) {}
    ~OrdinaryUser() {
        if (administrator_) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    bool administrator_;
};

/// A folder in which no file can be made or removed, but by the administrator.
class LockedFolder {
  public:
    explicit LockedFolder(const std::filesystem::path& folder) : folder_(folder) {
        std::filesystem::permissions(folder_, std::filesystem::perms(0555));
    }
    ~LockedFolder() { std::filesystem::permissions(folder_, std::filesystem::perms(0755)); }
    LockedFolder(const LockedFolder&) = delete;
    LockedFolder& operator=(const LockedFolder&) = delete;

  private:
    std::filesystem::path folder_;
};

} // namespace korvane::test
