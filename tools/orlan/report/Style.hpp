#pragma once

#include <string_view>

namespace orlan::report {

/// The page's style sheet: light and dark by the reader's preference.
inline constexpr std::string_view styleSheet = R"css(
:root{--ink:#1d2430;--soft:#5b6675;--paper:#f6f4ef;--card:#fff;--line:#d9d5ca;--water:#2f6fb0;--green:#2e8b57;
--red:#c8452f;--gold:#c98a12;--area:#9db8a4}
@media(prefers-color-scheme:dark){:root{--ink:#e8e6e1;--soft:#9aa4b2;--paper:#171a20;--card:#21262e;--line:#39404b;
--water:#6aa9e8;--green:#58c08a;--red:#ee7b66;--gold:#e2b04f;--area:#4e6656}}
*{box-sizing:border-box}body{margin:0;background:var(--paper);color:var(--ink);font:16px/1.5 system-ui,"DejaVu Sans",sans-serif}
main{max-width:1040px;margin:0 auto;padding:32px 24px 64px}h1{font-size:28px;margin:0}h2{font-size:18px;margin:36px 0 12px}
.when{color:var(--soft);margin:4px 0 20px}.numbers{display:flex;flex-wrap:wrap;gap:12px}
.numbers div{background:var(--card);border:1px solid var(--line);border-radius:10px;padding:10px 18px;min-width:110px}
.numbers b{display:block;font-size:24px}.numbers span{color:var(--soft);font-size:13px}
svg{width:100%;height:auto;background:var(--card);border:1px solid var(--line);border-radius:12px;display:block}
.area{fill:var(--area);fill-opacity:.18;stroke:var(--area);stroke-width:1}.area.touched{fill-opacity:.45;stroke-width:2}
.region{fill:none;stroke:var(--gold);stroke-dasharray:5 4;stroke-width:1.5}
.track{fill:none;stroke:var(--water);stroke-width:2.5;stroke-linejoin:round;stroke-linecap:round}
.name{paint-order:stroke;stroke:var(--card);stroke-width:3px;stroke-opacity:.6;font-size:13px;fill:var(--soft);text-anchor:middle}
.mark{stroke:var(--card);stroke-width:2}.mark.entry{fill:var(--green)}.mark.exit{fill:var(--red)}
.mark.background{stroke:var(--gold)}.pin{paint-order:stroke;stroke:var(--card);stroke-width:3px;font-size:13px;font-weight:700;fill:var(--ink);text-anchor:middle}
.lane,.tick{font-size:12px;fill:var(--soft)}.tick{text-anchor:middle}.tick.last{text-anchor:end}.rule{stroke:var(--line)}
.pocket{fill:var(--ink);fill-opacity:.07}
.inside{fill:var(--green);fill-opacity:.55;stroke:var(--card);stroke-width:1.5}.inside.background{fill:var(--gold)}.dot.notification{fill:var(--gold)}.dot.request{fill:var(--water)}
.dot.failed,.dot.error{fill:var(--red)}.dot{fill:var(--soft);fill-opacity:.85}
.legend{color:var(--soft);font-size:13px;margin:8px 0 0}.legend i{display:inline-block;width:10px;height:10px;border-radius:50%;margin:0 5px 0 14px}
i.entry{background:var(--green)}i.exit{background:var(--red)}i.track{background:var(--water)}i.region{border:1.5px dashed var(--gold)}i.seen{border:2px solid var(--gold)}
i.pocket{background:var(--ink);opacity:.18;border-radius:2px}i.inside{background:var(--green);opacity:.55;border-radius:2px}
.phone{display:grid;grid-template-columns:repeat(auto-fill,minmax(290px,1fr));gap:14px}
.note{background:var(--card);border:1px solid var(--line);border-radius:16px;padding:12px 16px;display:flex;gap:12px}
.note:target{outline:2px solid var(--gold)}.note .icon{flex:none;width:34px;height:34px;border-radius:9px;background:var(--water);
color:#fff;display:grid;place-items:center;font-weight:700}.note p{margin:2px 0 0;white-space:pre-line;overflow-wrap:anywhere}.note b{overflow-wrap:anywhere}
.note small{color:var(--soft)}.nothing{color:var(--soft)}details{margin-top:12px}summary{cursor:pointer;color:var(--water)}
table{border-collapse:collapse;width:100%;font-size:14px;margin-top:8px}td,th{text-align:left;padding:4px 10px 4px 0;border-bottom:1px solid var(--line);vertical-align:top;overflow-wrap:anywhere}
td:first-child{white-space:nowrap;font-variant-numeric:tabular-nums}td.entry{color:var(--green)}td.exit,td.failed,td.error{color:var(--red)}td.notification{color:var(--gold)}
)css";

}  // namespace orlan::report
