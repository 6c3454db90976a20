// A plain reader of XML that tells whether markup is well-formed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvane::test {

/// What is wrong with an element and all in it; empty where it is well-formed. No comments,
/// sections or declarations are known.
inline std::string markupFault(std::string_view text) {
    std::vector<std::string> open;
    std::size_t at = 0;
    const auto here = [&] { return " at '" + std::string(text.substr(at, 60)) + "'"; };
    while (at < text.size()) {
        if (text[at] == '&') {
            const auto end = text.find(';', at);
            if (end == std::string_view::npos || end - at > 8) {
                return "reference" + here();
            }
        } else if (text[at] == '<') {
            auto end = at + 1;
            bool quoted = false;
            for (; end < text.size() && (quoted || text[end] != '>'); ++end) {
                quoted = quoted != (text[end] == '"');
                if (text[end] == '<') {
                    return "< within a tag" + here();
                }
            }
            if (end >= text.size()) {
                return "open tag" + here();
            }
            const std::string_view tag = text.substr(at + 1, end - at - 1);
            const std::string name(tag.substr(0, tag.find_first_of(" /\n", 1)));
            if (tag.starts_with('/')) {
                if (open.empty() || "/" + open.back() != name) {
                    return "closing tag" + here();
                }
                open.pop_back();
            } else if (!tag.ends_with('/')) {
                open.push_back(name);
            }
            at = end;
        } else if (static_cast<unsigned char>(text[at]) < ' ' && text[at] != '\n') {
            return "control character" + here();
        }
        ++at;
    }
    return open.empty() ? "" : "never closed: " + open.back();
}

} // namespace korvane::test
