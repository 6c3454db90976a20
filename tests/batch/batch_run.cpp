#include "batch_run.h"

#include "batch/run_batch.h"
#include "runtime/file_text.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace korvane::test {

namespace fs = std::filesystem;

const char* const refusedInput = "'AN INPUT THAT IS REFUSED: ITS CONTROL LINE HAS NO MODE\n"
                                 "CONTROL CANTILEVER\nWALL 10\nFINISHED\n";

// As much soil on the left as on the right: nothing drives the wall.
const char* const failingInput = "'LEVEL GROUND ON BOTH SIDES OF THE WALL, WHICH NOTHING DRIVES\n"
                                 "CONTROL CANTILEVER DESIGN 1.00 1.50\nWALL 10\n"
                                 "SURFACE RIGHTSIDE 1 0 10\nSURFACE LEFTSIDE 1 0 10\n"
                                 "SOIL BOTH STRENGTHS 1\n 120 110 30 0 0 0\nFINISHED\n";

const char* const fatalInput = "'A LONE V WHERE LOADS MAY STAND\n"
                               "CONTROL CANTILEVER DESIGN 1.00 1.50\nWALL 10\n"
                               "SURFACE RIGHTSIDE 1 0 10\nSURFACE LEFTSIDE 1 0 0\n"
                               "SOIL BOTH STRENGTHS 1\n 120 110 30 0 0 0\nV\nFINISHED\n";

BatchOffice::BatchOffice() {
    setenv("temp", temporary.path().c_str(), 1);
    setenv("SOURCE_DATE_EPOCH", "1795305907", 1);
}

BatchRun BatchOffice::run(const std::vector<std::string>& arguments, bool terminal) const {
    std::ostringstream out;
    std::ostringstream err;
    const int status = batch::runBatch(arguments, out, err, terminal);
    return {status, out.str(), err.str()};
}

std::string BatchOffice::copy(const std::string& source, const std::string& name) const {
    fs::copy_file(sourceFile(source), user.path() / name);
    return file(name);
}

std::string BatchOffice::write(const std::string& name, const std::string& text) const {
    writeFile(user.path() / name, text);
    return file(name);
}

std::string BatchOffice::file(const std::string& name) const {
    return (user.path() / name).string();
}

std::string BatchOffice::read(const std::string& name) const {
    return readFile(user.path() / name);
}

std::set<std::string> BatchOffice::files() const {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(user.path())) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

int BatchOffice::temporaryFileCount() const {
    return static_cast<int>(std::distance(fs::directory_iterator(temporary.path()), {}));
}

std::string sourceFile(const std::string& name) {
    return std::string(KORVANE_SOURCE_DIR) + "/" + name;
}

} // namespace korvane::test
