#include "sheet/sheet_style.h"

#include "runtime/utf8_text.h"
#include "sheet/figure_style.h"

namespace korvane::sheet {

namespace {

constexpr std::string_view Style = R"(
:root { color-scheme: light dark; --ink: #16202a; --soft: #5a6672; --paper: #fff; --line: #c3ccd4;
 --band: #eef2f5; --accent: #14507a; --bad: #b3261e; --badband: #fbe9e7; --good: #1d6b3a;
 --soil: #d9c7a5; --soilline: #7a6336; --water: #2f7fb5; --wall: #3b4650; --load: #a4431a;
 --active: #b3541e; --passive: #2c6e49; }
@media (prefers-color-scheme: dark) { :root { --ink: #e4e9ed; --soft: #a3afb9; --paper: #14191e;
 --line: #3b464f; --band: #1f272e; --accent: #86c1ea; --bad: #ff9d94; --badband: #40201d;
 --good: #86d3a2; --soil: #4a4028; --soilline: #c4ab74; --water: #6fb7e4; --wall: #c2ccd4;
 --load: #ee9b74; --active: #eda374; --passive: #82cfa3; } }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1.5rem; max-width: 62rem; background: var(--paper);
 color: var(--ink); font: 15px/1.45 "Liberation Sans", Arial, Helvetica, sans-serif; }
h1 { font-size: 1.5rem; margin: 0 0 .6rem; }
h2 { font-size: 1.22rem; margin: 2.2rem 0 .6rem; padding-bottom: .2rem;
 border-bottom: 2px solid var(--accent); color: var(--accent); }
h3 { font-size: 1.02rem; margin: 1.4rem 0 .4rem; }
h4 { font-size: .93rem; margin: 1rem 0 .3rem; color: var(--soft); }
p { margin: .45rem 0; max-width: 48rem; }
p.f { margin: .3rem 0 .3rem 1.2rem; max-width: none; line-height: 1.9; }
p.f span { color: var(--soft); margin-right: .4rem; }
p.f math + math { margin-left: .22em; }
math, p.f b { font-family: "STIX Two Math", "Latin Modern Math", "Cambria Math", "Libertinus Math",
 "DejaVu Math TeX Gyre", math, "Liberation Serif", serif; font-size: 1.06em; }
p.f math { math-style: normal; }
p.f mfrac > * { math-depth: 0; math-style: normal; padding: .06em 0; }
.soft { color: var(--soft); }
.t { overflow-x: auto; margin: .6rem 0; }
table { border-collapse: collapse; font-size: .87rem; font-variant-numeric: tabular-nums; }
caption { text-align: left; font-weight: bold; padding: .3rem 0; }
th { background: var(--band); text-align: right; vertical-align: bottom; font-weight: 600; }
th:first-child { text-align: left; }
th small { display: block; font-weight: normal; color: var(--soft); }
th, td { border-bottom: 1px solid var(--line); padding: .16rem .5rem; }
td { text-align: right; white-space: nowrap; }
td.w, .l td:first-child { text-align: left; white-space: normal; }
table.wide { font-size: .78rem; }
table.wide th, table.wide td { padding: .06rem .4rem; }
tr.fail td { background: var(--badband); color: var(--bad); font-weight: bold; }
#checks td:first-child { text-align: left; white-space: normal; }
tr.pass td:last-child { color: var(--good); }
table.block { width: 100%; border: 1px solid var(--line); margin: 0 0 1rem; }
table.block th { text-align: left; width: 8rem; vertical-align: top; }
table.block td { text-align: left; white-space: pre-line; }
.bad { border-left: 4px solid var(--bad); background: var(--badband); padding: .5rem .8rem; }
.note { border-left: 4px solid var(--line); padding: .1rem .8rem; margin: .6rem 0; }
.note.unsafe { border-color: var(--bad); }
.note.caution { border-color: var(--load); }
figure { margin: .8rem 0; }
svg + svg { margin-left: 1rem; }
figcaption { font-size: .85rem; color: var(--soft); }
svg { max-width: 100%; height: auto; }
.q path { stroke: var(--accent); fill: var(--accent); stroke-width: 1.6; }
.q .R { stroke: var(--soft); fill: var(--soft); }
.q .P { stroke: var(--load); fill: var(--load); }
.q text { font-size: 12px; text-anchor: middle; }
svg text { fill: var(--ink); font-family: "Liberation Sans", Arial, Helvetica, sans-serif; }
@media print {
 :root { --ink: #000; --soft: #444; --paper: #fff; --line: #999; --band: #eee; --accent: #14507a;
  --bad: #b3261e; --badband: #fbe9e7; --good: #1d6b3a; --soil: #d9c7a5; --soilline: #7a6336;
  --water: #2f7fb5; --wall: #3b4650; --load: #a4431a; --active: #b3541e; --passive: #2c6e49;
  color-scheme: light; }
 body { max-width: none; padding: 0; font-size: 9.5pt; -webkit-print-color-adjust: exact;
  print-color-adjust: exact; }
 h2, h3, h4, caption { break-after: avoid; }
 tr, p.f, figure, .note { break-inside: avoid; }
 thead { display: table-header-group; }
 .t { overflow: visible; }
 table.wide { font-size: 7pt; }
}
)";

/// A text as the CSS string that shows it; no character of it can end the string or the element.
std::string cssString(std::string_view bytes) {
    std::string text = "\"";
    for (const char c : utf8Text(bytes)) {
        const bool plain = c != '"' && c != '\\' && c != '<' && c != '>' && c != '&' &&
                           static_cast<unsigned char>(c) >= ' ';
        if (plain) {
            text += c;
        } else {
            constexpr std::string_view hex = "0123456789abcdef";
            const auto code = static_cast<unsigned char>(c);
            text += {'\\', hex[code / 16U], hex[code % 16U], ' '};
        }
    }
    return text + "\"";
}

/// Without the blanks that a reader of this file wants.
std::string compact(std::string_view css) {
    std::string text;
    for (const char c : css) {
        const bool blank = c == ' ' || c == '\n';
        const bool needless =
            text.empty() || std::string_view("{};:, ").find(text.back()) < std::string_view::npos;
        if (c == '{' && !text.empty() && text.back() == ' ') {
            text.back() = c;
        } else if (!blank || !needless) {
            text += blank ? ' ' : c;
        }
    }
    return text;
}

} // namespace

std::string sheetStyle(std::string_view title, std::string_view running) {
    std::string style = compact(Style) + compact(figureStyle());
    style += "@page { margin: 16mm 14mm 17mm;\n";
    style += " @top-left { content: " + cssString(title) + "; font: 8pt sans-serif; }\n";
    style += " @bottom-left { content: " + cssString(running) + "; font: 8pt sans-serif; }\n";
    style += " @bottom-right { content: \"page \" counter(page) \" of \" counter(pages);"
             " font: 8pt sans-serif; } }\n";
    return style;
}

} // namespace korvane::sheet
