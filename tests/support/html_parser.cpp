#include "support/html_parser.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>
#include <vector>

namespace korvane::test {

namespace {

const std::set<std::string, std::less<>> blocks{
    "html",       "head",  "body",  "section", "div", "h1", "h2", "h3",      "h4",
    "p",          "table", "thead", "tbody",   "tr",  "th", "td", "caption", "figure",
    "figcaption", "title", "style", "meta",    "ul",  "ol", "li"};
const std::set<std::string, std::less<>> inlines{
    "span",    "small", "strong", "b",       "em",       "br",     "sub",     "sup",
    "math",    "mi",    "mn",     "mo",      "mrow",     "mfrac",  "msup",    "msub",
    "msubsup", "msqrt", "mover",  "mtext",   "mspace",   "mtable", "mtr",     "mtd",
    "svg",     "g",     "path",   "line",    "rect",     "circle", "polygon", "polyline",
    "text",    "tspan", "defs",   "pattern", "clipPath", "desc",   "use"};
const std::set<std::string, std::less<>> empties{"br",   "meta", "mspace", "path",     "line",
                                                 "rect", "use",  "circle", "polyline", "polygon"};
/// Elements and the only ones in which they may stand.
const std::vector<std::pair<std::string_view, std::set<std::string, std::less<>>>> parents{
    {"tr", {"thead", "tbody"}}, {"td", {"tr"}},       {"th", {"tr"}},
    {"thead", {"table"}},       {"tbody", {"table"}}, {"caption", {"table"}},
    {"figcaption", {"figure"}}, {"head", {"html"}},   {"body", {"html"}},
    {"h2", {"section", "body"}}};

class Parser {
  public:
    explicit Parser(std::string_view html) : html_(html) {}

    std::string fault() {
        constexpr std::string_view doctype = "<!DOCTYPE html>\n";
        if (!html_.starts_with(doctype)) {
            return "no document type";
        }
        at_ = doctype.size();
        while (fault_.empty() && at_ < html_.size()) {
            html_[at_] == '<' ? tag() : text();
        }
        if (fault_.empty() && !open_.empty()) {
            fail("not closed: " + open_.back());
        }
        return fault_;
    }

  private:
    void fail(const std::string& what) {
        if (fault_.empty()) {
            fault_ = what + " near: " + std::string(html_.substr(at_ > 60 ? at_ - 60 : 0, 160));
        }
    }

    void text() {
        const std::size_t end = std::min(html_.find('<', at_), html_.size());
        const std::string_view part = html_.substr(at_, end - at_);
        const bool blank = part.find_first_not_of(" \n\t") == std::string_view::npos;
        if (open_.empty() && !blank) {
            fail("text outside of all elements");
        }
        if (!open_.empty() && open_.back() != "style") {
            references(part);
        }
        at_ = end;
    }

    void references(std::string_view part) {
        for (std::size_t i = part.find('&'); i != std::string_view::npos;
             i = part.find('&', i + 1)) {
            const std::string_view name = part.substr(i, part.find(';', i) - i);
            if (name != "&lt" && name != "&gt" && name != "&amp" && name != "&quot") {
                fail("reference " + std::string(name.substr(0, 20)));
            }
        }
        for (const char c : part) {
            if (static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t') {
                fail("control character");
            }
        }
    }

    void tag() {
        const std::size_t end = html_.find('>', at_);
        if (end == std::string_view::npos) {
            fail("tag without an end");
            return;
        }
        std::string_view inner = html_.substr(at_ + 1, end - at_ - 1);
        if (inner.starts_with("/")) {
            close(inner.substr(1));
        } else {
            const bool empty = inner.ends_with("/");
            inner.remove_suffix(empty ? 1 : 0);
            start(inner, empty);
        }
        at_ = end + 1;
    }

    /// A fraction, a power and a subscript have two parts.
    void countPart() {
        if (!parts_.empty()) {
            ++parts_.back();
        }
    }

    void close(std::string_view name) {
        if (open_.empty() || open_.back() != name) {
            fail("closes " + std::string(name));
            return;
        }
        const bool pair = name == "mfrac" || name == "msup" || name == "msub";
        if (pair && parts_.back() != 2) {
            fail(std::to_string(parts_.back()) + " parts of " + std::string(name));
        }
        open_.pop_back();
        parts_.pop_back();
    }

    void start(std::string_view inner, bool empty) {
        const std::string name(inner.substr(0, inner.find_first_of(" \n")));
        const bool block = blocks.count(name) != 0;
        const bool inSvg = std::count(open_.begin(), open_.end(), "svg") != 0;
        if (!block && inlines.count(name) == 0) {
            fail("element " + name);
        }
        if (block && !(inSvg && name == "title") && inParagraph()) {
            fail("block in a paragraph: " + name);
        }
        for (const auto& [child, allowed] : parents) {
            if (child == name && (open_.empty() || allowed.count(open_.back()) == 0)) {
                fail("misplaced " + name);
            }
        }
        if (!inSvg && empty != (empties.count(name) != 0)) {
            fail("empty or not: " + name);
        }
        attributes(inner.substr(name.size()));
        countPart();
        if (!empty) {
            open_.push_back(name);
            parts_.push_back(0);
        }
    }

    bool inParagraph() const {
        for (const char* name : {"p", "h1", "h2", "h3", "h4", "caption", "figcaption", "span"}) {
            if (std::count(open_.begin(), open_.end(), name) != 0) {
                return true;
            }
        }
        return false;
    }

    void attributes(std::string_view rest) {
        std::set<std::string, std::less<>> names;
        while (true) {
            const std::size_t begin = rest.find_first_not_of(" \n");
            if (begin == std::string_view::npos) {
                return;
            }
            rest.remove_prefix(begin);
            const std::size_t equals = rest.find("=\"");
            const std::size_t end =
                equals == std::string_view::npos ? equals : rest.find('"', equals + 2);
            if (end == std::string_view::npos) {
                fail("attribute " + std::string(rest));
                return;
            }
            const std::string name(rest.substr(0, equals));
            const std::string value(rest.substr(equals + 2, end - equals - 2));
            if (!names.insert(name).second) {
                fail("attribute twice: " + name);
            }
            attribute(name, value);
            rest.remove_prefix(end + 1);
        }
    }

    void attribute(const std::string& name, const std::string& value) {
        references(value);
        if (name == "id" && !ids_.insert(value).second) {
            fail("identifier twice: " + value);
        }
        const bool link = name == "href" || name == "xlink:href";
        if (name == "src" || (link && !value.starts_with("#")) || name.starts_with("on")) {
            fail("attribute " + name);
        }
        if (value.find("://") != std::string::npos && name != "xmlns") {
            fail("from outside: " + value);
        }
    }

    std::string_view html_;
    std::size_t at_ = 0;
    std::string fault_;
    std::vector<std::string> open_;
    std::vector<int> parts_; ///< elements so far, of each open one
    std::set<std::string, std::less<>> ids_;
};

} // namespace

std::string htmlFault(std::string_view html) {
    for (const char* word : {"<script", "<link", "<iframe", "<img", "@import", "javascript:"}) {
        if (html.find(word) != std::string_view::npos) {
            return word;
        }
    }
    // A paint or clip of the document itself is no reference to another one.
    for (std::size_t i = html.find("url("); i != std::string_view::npos;
         i = html.find("url(", i + 1)) {
        if (!html.substr(i).starts_with("url(#")) {
            return "url( of another document";
        }
    }
    return Parser(html).fault();
}

} // namespace korvane::test
