#include "commands/recent_files.h"

#include "runtime/file_text.h"
#include "runtime/run_guarded.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace korvane {

namespace {

namespace fs = std::filesystem;

/// The value of a variable that names a whole path; empty otherwise.
fs::path folderOf(const char* variable) {
    const char* value = std::getenv(variable);
    const fs::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : fs::path();
}

/// A path that fits on a line of the store.
bool isStorable(const std::string& path) {
    return fs::path(path).is_absolute() && path.find_first_of("\r\n") == std::string::npos;
}

void addTo(std::vector<std::string>& paths, const std::string& path) {
    if (paths.size() < RecentLimit && isStorable(path) &&
        std::find(paths.begin(), paths.end(), path) == paths.end()) {
        paths.push_back(path);
    }
}

} // namespace

std::string recentStore() {
    fs::path folder = folderOf("XDG_STATE_HOME");
    if (folder.empty()) {
        folder = folderOf("HOME");
        if (folder.empty()) {
            return {};
        }
        folder = folder / ".local" / "state";
    }
    return (folder / "korvane" / "recent").string();
}

std::vector<std::string> readRecent(const std::string& store) {
    std::vector<std::string> paths;
    runGuarded([&] {
        for (const std::string& line : splitLines(readPlainFile(store, Links::Follow))) {
            addTo(paths, line);
        }
    });
    return paths;
}

void noteRecent(Session& session, const std::string& path) {
    const std::string plain = fs::path(path).lexically_normal().string();
    std::vector<std::string> paths;
    addTo(paths, plain);
    for (const std::string& other :
         session.recentStore.empty() ? session.recentFiles : readRecent(session.recentStore)) {
        addTo(paths, other);
    }
    session.recentFiles = paths;
    if (session.recentStore.empty()) {
        return;
    }
    std::string text;
    for (const std::string& kept : paths) {
        text += kept + "\n";
    }
    std::error_code ignored;
    fs::create_directories(fs::path(session.recentStore).parent_path(), ignored);
    runGuarded([&] { saveFile(session.recentStore, text); });
}

} // namespace korvane
