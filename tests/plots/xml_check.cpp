#include "xml_check.h"

#include "runtime/utf8_text.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <stdexcept>

namespace korvane::test {

namespace {

class Reader {
  public:
    explicit Reader(const std::string& document) : rest_(document) {}

    std::vector<XmlElement> read() {
        require(startsWith("<?xml "), "no declaration");
        skipPast("?>");
        do {
            readTag();
            const std::string characters = resolved(upTo('<'));
            require(!open_.empty() || isBlank(characters), "characters outside the root element");
            if (justOpened_) {
                elements_.back().text = characters;
            }
        } while (at_ < rest_.size());
        require(open_.empty(), "an element is not closed");
        return elements_;
    }

  private:
    static void require(bool holds, const char* fault) {
        if (!holds) {
            throw std::runtime_error(fault);
        }
    }
    static bool isBlank(const std::string& text) {
        return text.find_first_not_of(" \n") == std::string::npos;
    }
    bool startsWith(const std::string& piece) const {
        return rest_.compare(at_, piece.size(), piece) == 0;
    }
    void skipPast(const std::string& piece) {
        const std::size_t found = rest_.find(piece, at_);
        require(found != std::string::npos, "a tag is not closed");
        at_ = found + piece.size();
        at_ = std::min(rest_.find_first_not_of(" \n", at_), rest_.size());
    }
    std::string upTo(char end) {
        const std::size_t found = std::min(rest_.find(end, at_), rest_.size());
        std::string piece = rest_.substr(at_, found - at_);
        at_ = found;
        return piece;
    }
    std::string name() {
        const std::size_t start = at_;
        while (at_ < rest_.size() && (std::isalnum(static_cast<unsigned char>(rest_[at_])) != 0 ||
                                      rest_[at_] == '-' || rest_[at_] == ':')) {
            ++at_;
        }
        require(at_ > start, "a name is missing");
        return rest_.substr(start, at_ - start);
    }
    void readTag() {
        require(startsWith("<"), "no tag where one must be");
        ++at_;
        if (startsWith("/")) {
            ++at_;
            require(!open_.empty() && open_.back() == name(), "tags do not match");
            open_.pop_back();
            justOpened_ = false;
            require(startsWith(">"), "a closing tag goes on");
            ++at_;
            return;
        }
        require(!open_.empty() || elements_.empty(), "a second root element");
        XmlElement element;
        element.name = name();
        while (startsWith(" ")) {
            ++at_;
            readAttribute(element);
        }
        const bool empty = startsWith("/>");
        require(empty || startsWith(">"), "a tag does not end");
        at_ += empty ? 2 : 1;
        justOpened_ = !empty;
        if (!empty) {
            open_.push_back(element.name);
        }
        elements_.push_back(element);
    }
    void readAttribute(XmlElement& element) {
        const std::string key = name();
        require(element.attribute(key).empty(), "an attribute stands twice");
        require(startsWith("=\""), "an attribute without quotes");
        at_ += 2;
        const std::string value = upTo('"');
        require(value.find('<') == std::string::npos, "a bare < in an attribute");
        element.attributes.emplace_back(key, resolved(value));
        require(startsWith("\""), "an attribute does not end");
        ++at_;
    }
    static std::string resolved(const std::string& raw) {
        std::string text;
        for (std::size_t i = 0; i < raw.size(); ++i) {
            const auto c = static_cast<unsigned char>(raw[i]);
            require(c >= 0x20 || c == '\n', "a character that XML forbids");
            if (c != '&') {
                text += raw[i];
                continue;
            }
            const std::size_t end = raw.find(';', i);
            require(end != std::string::npos, "a bare &");
            const std::string entity = raw.substr(i + 1, end - i - 1);
            require(entity == "amp" || entity == "lt" || entity == "gt", "an unknown entity");
            text += entity == "amp" ? '&' : (entity == "lt" ? '<' : '>');
            i = end;
        }
        return text;
    }

    const std::string& rest_;
    std::size_t at_ = 0;
    std::vector<std::string> open_;
    bool justOpened_ = false; ///< the last tag opened an element
    std::vector<XmlElement> elements_;
};

} // namespace

std::string XmlElement::attribute(const std::string& key) const {
    for (const auto& [present, value] : attributes) {
        if (present == key) {
            return value;
        }
    }
    return {};
}

std::vector<XmlElement> readXml(const std::string& document) {
    if (utf8Text(document) != document) {
        throw std::runtime_error("bytes that are no UTF-8");
    }
    return Reader(document).read();
}

} // namespace korvane::test
