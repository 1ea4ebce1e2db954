// Style and script of all reports.
#pragma once

namespace dax::tool {

inline constexpr const char* kReportStyle = R"(
:root { color-scheme: light dark; --page: #f6f7f9; --panel: #fff; --text: #1b2330; --dim: #5d6878; --line: #dfe3e9;
  --mark: #fff0cf; --accent: #b46a00; }
@media (prefers-color-scheme: dark) { :root { --page: #12161c; --panel: #1a2029; --text: #e4e9f0; --dim: #97a3b4;
  --line: #2c3542; --mark: #43341a; --accent: #ffb833; } }
* { box-sizing: border-box; }
body { margin: 0; padding: 1.25rem; background: var(--page); color: var(--text);
  font: 15px/1.45 system-ui, sans-serif; }
header { margin-bottom: 1rem; }
h1 { margin: 0; font-size: 1.3rem; overflow-wrap: anywhere; }
header p { margin: .15rem 0 0; color: var(--dim); }
main { display: grid; grid-template-columns: minmax(0, 1fr) fit-content(60%); gap: 1.25rem; align-items: start; }
@media (max-width: 75rem) { main { grid-template-columns: minmax(0, 1fr); } }
figure, .table { margin: 0; background: var(--panel); border: 1px solid var(--line); border-radius: 8px;
  overflow: auto; }
figure { position: sticky; top: 1.25rem; }
@media (max-width: 75rem) { figure { z-index: 1; top: 0; } .picture { max-height: 55vh; }
  .table { max-height: none; } }
.picture { display: block; width: 100%; max-height: calc(100vh - 2.5rem); }
.table { max-height: calc(100vh - 2.5rem); }
table { border-collapse: collapse; width: 100%; font-size: .8rem; font-variant-numeric: tabular-nums; }
th, td { padding: .32rem .42rem; text-align: right; white-space: nowrap; }
th { position: sticky; top: 0; background: var(--panel); color: var(--dim); font-weight: 600;
  box-shadow: inset 0 -1px var(--line); }
tbody tr { border-bottom: 1px solid var(--line); scroll-margin-top: 2.2rem; }
tbody tr[tabindex] { cursor: pointer; }
tbody tr:last-child { border-bottom: 0; }
@media (max-width: 75rem) { tbody tr { scroll-margin-top: 58vh; } }
tr.marked { background: var(--mark); }
tr:focus { outline: 2px solid var(--accent); outline-offset: -2px; }
table.rejected { margin-top: 1.5rem; color: var(--dim); }
table.index { width: auto; }
table.index :is(th, td) { text-align: left; }
tr.bad td { color: var(--accent); }
a { color: inherit; }
footer { margin-top: 1rem; color: var(--dim); font-size: .8rem; overflow-wrap: anywhere; }
footer p { margin: .2rem 0; }
.none { padding: 1rem; color: var(--dim); }
.blob { cursor: pointer; }
.blob path, .blob rect { vector-effect: non-scaling-stroke; fill: none; }
.blob .halo { stroke: rgba(0, 0, 0, .55); stroke-width: 3.5; }
.blob .contour { stroke: #29e69e; stroke-width: 1.7; fill: transparent; pointer-events: all; }
.blob .box { stroke: #ffb833; stroke-width: 1.1; }
.blob text { fill: #fff; stroke: rgba(0, 0, 0, .75); stroke-width: .22em; paint-order: stroke; font-weight: 700;
  text-anchor: middle; dominant-baseline: central; font-family: system-ui, sans-serif; pointer-events: none; }
.many .blob text { visibility: hidden; }
.many .blob.marked text { visibility: visible; }
.blob.marked .contour { stroke: #ffd76b; stroke-width: 3; fill: rgba(255, 184, 51, .38); }
)";

// Rows have one tab stop; arrow keys, Home and End move within them. The mark follows the pointer, then the focus.
inline constexpr const char* kReportScript = R"(
const rows = [...document.querySelectorAll('tbody tr[tabindex]')];
const shapes = [...document.querySelectorAll('.blob')];
let marked = -1;
function mark(i) {
  for (const list of [rows, shapes]) {
    list[marked]?.classList.remove('marked');
    list[i]?.classList.add('marked');
  }
  marked = i;
}
function focusRow(i) {
  const row = rows[Math.max(0, Math.min(i, rows.length - 1))];
  for (const other of rows) other.tabIndex = other === row ? 0 : -1;
  row.focus();
  row.scrollIntoView({ block: 'nearest' });
}
const back = () => mark(rows.indexOf(document.activeElement));
rows.forEach((row, i) => {
  row.addEventListener('mouseenter', () => mark(i));
  row.addEventListener('mouseleave', back);
  row.addEventListener('focus', () => mark(i));
  row.addEventListener('blur', () => mark(-1));
  row.addEventListener('click', () => focusRow(i));
  row.addEventListener('keydown', event => {
    const to = { ArrowDown: i + 1, ArrowUp: i - 1, Home: 0, End: rows.length - 1 }[event.key];
    if (event.key === 'Escape') row.blur();
    if (to === undefined) return;
    event.preventDefault();
    focusRow(to);
  });
});
shapes.forEach((shape, i) => {
  shape.addEventListener('mouseenter', () => { mark(i); rows[i].scrollIntoView({ block: 'nearest' }); });
  shape.addEventListener('mouseleave', back);
  shape.addEventListener('click', () => focusRow(i));
});
)";

}  // namespace dax::tool
