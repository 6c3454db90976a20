// A parser for the markup of sheets and study reports: XML that is HTML too, and stands by itself.
#pragma once

#include <string>
#include <string_view>

namespace korvane::test {

/// What is wrong with a document: a tag that is not closed, an unknown element or reference, a
/// block in a paragraph, an identifier that comes twice, a script, anything from outside. "" where
/// nothing is.
std::string htmlFault(std::string_view html);

} // namespace korvane::test
