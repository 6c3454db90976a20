// A reader of the small part of XML that drawings use, to show that a file is well formed.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace korvane::test {

struct XmlElement {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text; ///< characters up to the next tag, entities resolved

    /// The value of an attribute; empty where it has none of that name.
    std::string attribute(const std::string& key) const;
};

/// All elements in document order. Throws std::runtime_error at the first fault: tags that do not
/// match, an attribute without quotes or twice, a bare '&' or '<', a character that XML forbids,
/// bytes that are no UTF-8, anything behind the root element.
std::vector<XmlElement> readXml(const std::string& document);

} // namespace korvane::test
