#include "study/csv.h"

#include "study/store.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace korvane::study {

namespace {

namespace fs = std::filesystem;

/// Bytes that go to the file at once.
constexpr std::size_t Portion = std::size_t{1} << 16;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// A file that is gone with the object unless it was put in its place.
class BesideFile {
  public:
    explicit BesideFile(const fs::path& target)
        : target_(target), beside_(target.parent_path() / ("." + target.filename().string())),
          file_(std::fopen(beside_.c_str(), "wb")) {
        if (!file_) {
            fail();
        }
    }
    ~BesideFile() {
        if (file_) {
            std::error_code ignored;
            fs::remove(beside_, ignored);
        }
    }
    BesideFile(const BesideFile&) = delete;
    BesideFile& operator=(const BesideFile&) = delete;

    void write(const std::string& text) {
        if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size()) {
            fail();
        }
    }
    void place() {
        if (std::fflush(file_.get()) != 0 || std::rename(beside_.c_str(), target_.c_str()) != 0) {
            fail();
        }
        file_.reset();
    }

  private:
    [[noreturn]] void fail() const {
        const int code = errno;
        std::error_code ignored;
        fs::remove(beside_, ignored);
        throw StoreFault{target_.string() + ": " + std::generic_category().message(code)};
    }

    fs::path target_;
    fs::path beside_;
    std::unique_ptr<std::FILE, CloseFile> file_;
};

void appendCell(std::string& line, const std::string& cell) {
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
        line += cell;
        return;
    }
    line += '"';
    for (const char c : cell) {
        line += c == '"' ? "\"\"" : std::string(1, c);
    }
    line += '"';
}

} // namespace

void writeCsv(const std::string& folder, const std::string& fileName) {
    const fs::path source = fs::path(folder) / fileName;
    const Store store(source.string(), Store::Look::Briefly);
    BesideFile file(fs::path(source).replace_extension(".csv"));
    std::string text;
    store.queryCells("SELECT * FROM variants ORDER BY id",
                     [&](const std::vector<std::string>& cells) {
                         for (std::size_t n = 0; n < cells.size(); ++n) {
                             text += n == 0 ? "" : ",";
                             appendCell(text, cells[n]);
                         }
                         text += "\r\n";
                         if (text.size() >= Portion) {
                             file.write(text);
                             text.clear();
                         }
                     });
    file.write(text);
    file.place();
}

} // namespace korvane::study
