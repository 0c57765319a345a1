#include "app/tappora/page_parts.h"

#include "drawing/svg_text.h"

namespace tappora {
namespace {

constexpr std::string_view style = R"css(
:root { color-scheme: light dark; --paper: #ffffff; --card: #f6f5f2; --ink: #1d1b18; --soft: #5c574f; --line: #d9d5cc;
  --cold: #e9e6df; --accent: #a3431f; }
@media screen and (prefers-color-scheme: dark) { :root { --paper: #161513; --card: #211f1c; --ink: #f1eee8; --soft: #b5aea3;
  --line: #3b3833; --cold: #2c2a26; --accent: #f0936b; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--paper); color: var(--ink); font: 16px/1.5 system-ui, sans-serif; }
header, main, footer { max-width: 72rem; margin: 0 auto; padding: 1rem clamp(1rem, 4vw, 2.5rem); }
h1 { font-size: clamp(1.6rem, 4vw, 2.4rem); line-height: 1.2; margin: 1rem 0 0; }
h2 { font-size: 1.2rem; margin: 0 0 .75rem; }
header p, footer, .hint { color: var(--soft); }
section { margin: 0 0 1.5rem; padding: 1.25rem; background: var(--card); border: 1px solid var(--line); border-radius: 14px;
  break-inside: avoid; }
ol.findings { margin: 0; padding-left: 1.4rem; font-size: 1.08rem; }
ol.findings li + li { margin-top: .4rem; }
dl.figures { display: grid; grid-template-columns: repeat(auto-fill, minmax(8.6rem, 1fr)); gap: 1rem .6rem; margin: 0; }
dl.figures div { display: flex; flex-direction: column-reverse; justify-content: flex-end; }
dl.figures dd { margin: 0; font-size: 1.5rem; font-weight: 600; font-variant-numeric: tabular-nums; }
dl.figures dt { color: var(--soft); font-size: .9rem; }
.scroll { overflow-x: auto; }
.scroll:focus-visible, summary:focus-visible, .key:focus-visible { outline: 3px solid var(--accent); outline-offset: 2px; }
svg { display: block; width: 100%; min-width: 36rem; height: auto; }
@media print { svg { min-width: 0; } }
svg text { fill: var(--ink); font: 12px system-ui, sans-serif; }
svg .soft { fill: var(--soft); }
svg .bar { fill: var(--accent); }
svg .gap { fill: none; stroke: var(--line); stroke-dasharray: 3 3; }
svg .axis { stroke: var(--line); }
.h0 { fill: var(--cold); }
svg .tip { visibility: hidden; font-size: 15px; font-weight: 600; }
.key:hover .tip, .key:focus .tip { visibility: visible; }
.key { outline: none; }
.key:focus path { stroke: var(--ink); stroke-width: 2; }
.key:hover path { stroke: var(--soft); stroke-width: 1.5; }
svg .face { font-size: 13px; font-weight: 600; }
table { border-collapse: collapse; width: 100%; font-variant-numeric: tabular-nums; }
caption { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); white-space: nowrap; }
th, td { padding: .3rem .6rem; border-bottom: 1px solid var(--line); text-align: left; font-weight: 400; }
thead th { color: var(--soft); font-size: .9rem; }
.number { text-align: right; }
details { margin-top: .75rem; }
summary { cursor: pointer; color: var(--accent); width: fit-content; }
.two { display: grid; grid-template-columns: repeat(auto-fit, minmax(min(20rem, 100%), 1fr)); gap: 0 1.5rem; align-items: start; }
@media print { :root { color-scheme: light; } @page { margin: 14mm; } body { background: #fff; font-size: 11pt; } section { border-radius: 0; padding: .6rem 0;
  background: none; border-width: 1px 0 0; } details:not([open]) { display: none; } .hint { display: none; }
  .two { grid-template-columns: 1fr 1fr; } * { print-color-adjust: exact; -webkit-print-color-adjust: exact; } }
)css";

std::string cell(std::string_view tag, std::string_view attributes, const PageCell& content) {
    const std::string number = content.isNumber ? " class=\"number\"" : "";
    return "<" + std::string(tag) + std::string(attributes) + number + ">" + escaped(content.text) + "</" +
           std::string(tag) + ">";
}

}  // namespace

std::string escaped(std::string_view text) { return drawing::svgEscaped(text); }

std::string html(const PageTable& table) {
    std::string text = "<div class=\"scroll\" tabindex=\"0\" role=\"group\" aria-label=\"" +
                       escaped(table.caption) + "\"><table>\n";
    text += "<caption>" + escaped(table.caption) + "</caption>\n<thead><tr>";
    for (const PageCell& each : table.header) text += cell("th", " scope=\"col\"", each);
    text += "</tr></thead>\n<tbody>\n";
    for (const auto& row : table.rows) {
        text += "<tr>";
        for (std::size_t i = 0; i < row.size(); ++i)
            text += i == 0 ? cell("th", " scope=\"row\"", row[i]) : cell("td", "", row[i]);
        text += "</tr>\n";
    }
    return text + "</tbody></table></div>\n";
}

std::string behindButton(const PageTable& table, const tapcore::Words& words) {
    return "<details><summary>" + escaped(words.text("report.page.table")) + "</summary>\n" + html(table) +
           "</details>\n";
}

std::string section(std::string_view id, std::string_view heading, std::string_view content) {
    if (content.empty()) return "";
    const std::string name(id);
    return "<section aria-labelledby=\"" + name + "\"><h2 id=\"" + name + "\">" + escaped(heading) +
           "</h2>\n" + std::string(content) + "</section>\n";
}

std::string styleSheet(std::string_view heatColours) { return std::string(style) + std::string(heatColours); }

}  // namespace tappora
