// How the web page around a publication page looks; the colours of the groups come behind it.

#ifndef VEXEL_KIT_REPORT_MAP_PAGE_STYLE_H_
#define VEXEL_KIT_REPORT_MAP_PAGE_STYLE_H_

#include <string_view>

namespace vexel {

inline constexpr std::string_view kMapPageStyle = R"css(
:root{color-scheme:light dark;--page:#fff;--panel:#f0f0f0;--text:#1a1a1a;--soft:#555;--rule:#d9d9d9;--edge:#767676;--mark:#a4005f;--lit:#fbe6f2}
@media (prefers-color-scheme:dark){:root{--page:#17191d;--panel:#25282e;--text:#ececec;--soft:#b8b8b8;--rule:#3b3f46;--edge:#8c8c8c;--mark:#ff8ac4;--lit:#4d1f39}}
[hidden]{display:none!important}
body{margin:0;padding:1rem;font:1rem/1.5 system-ui,sans-serif;color:var(--text);background:var(--page)}
main{max-width:90rem;margin:0 auto}
h1{margin:0 0 .5rem;font-size:1.4rem;line-height:1.25;overflow-wrap:anywhere}
h2{margin:0 0 .5rem;font-size:1.1rem;overflow-wrap:anywhere}
a{color:var(--mark)}
:focus-visible{outline:3px solid var(--mark);outline-offset:2px}
.skip{position:absolute;left:-999rem}
.skip:focus{left:1rem;top:.5rem;z-index:3;padding:.25rem .75rem;background:var(--page)}
#shown{position:sticky;top:0;z-index:1;margin:0 0 .75rem;padding:.4rem .75rem;height:1.5em;overflow:hidden;background:var(--panel);border-left:4px solid var(--mark)}
#shown b,#tip b{font-weight:600}
@media (max-width:40rem){#shown{height:3em}}
.view{display:flex;flex-wrap:wrap;gap:1.5rem;align-items:flex-start;margin-bottom:2rem}
.view>figure{margin:0;min-width:0;max-width:100%}
.view>section{flex:0 1 18rem;min-width:0}
#map{position:relative;width:fit-content;max-width:100%;background:#fff;border-radius:2px;box-shadow:0 0 0 1px var(--rule)}
#map img{display:block;max-width:100%;height:auto;will-change:transform}
#map svg{position:absolute;left:0;top:0;width:100%;height:100%;pointer-events:none}
#fade{opacity:0;will-change:opacity}
#fade.on{opacity:1}
#fade.dim>rect{fill:#767676}
@media (prefers-reduced-motion:no-preference){#fade{transition:opacity .12s}}
#lines{will-change:transform}
#lines path{fill:none;stroke-linejoin:round;vector-effect:non-scaling-stroke}
#lines .rim{stroke:#fff;stroke-width:6}
#lines .line{stroke:#a4005f;stroke-width:3}
#lines .pin{stroke:#1a1a1a;stroke-width:3}
#tip{position:fixed;left:0;top:0;z-index:2;max-width:min(20rem,calc(100vw - 2.5rem));padding:.3rem .6rem;pointer-events:none;overflow-wrap:anywhere;color:var(--text);background:var(--page);border:1px solid var(--edge);border-radius:3px}
.soft{margin:.5rem 0 0;max-width:40rem;font-size:.9rem;color:var(--soft)}
table{border-collapse:collapse}
caption{text-align:left;padding-bottom:.25rem;color:var(--soft)}
th,td{padding:.2rem .9rem .2rem .3rem;text-align:left;font-weight:400;border-bottom:1px solid var(--rule);overflow-wrap:break-word}
tbody th,td{max-width:24rem}
thead th{font-weight:600;border-bottom:2px solid var(--edge)}
.n{text-align:right;font-variant-numeric:tabular-nums}
td i,th i{display:inline-block;flex:none;width:1em;height:1em;margin-right:.5em;border:1px solid var(--edge);vertical-align:-.12em;forced-color-adjust:none}
button,input{font:inherit;color:inherit}
button{padding:.15rem .6rem;background:var(--panel);border:1px solid var(--edge);border-radius:3px;cursor:pointer}
button[aria-disabled=true]{color:var(--soft);border-color:var(--rule);cursor:default}
input{padding:.15rem .4rem;max-width:100%;box-sizing:border-box;background:var(--page);border:1px solid var(--edge);border-radius:3px}
th button{padding:0;text-align:left;background:none;border:0}
thead button{font-weight:600;text-decoration:underline}
#legend table{width:100%}
#legend th button{display:flex;align-items:center;width:100%}
tr.lit>*{background:var(--lit)}
tr.has>th,tr[aria-current]>th{box-shadow:inset 4px 0 var(--mark)}
summary{width:fit-content;padding:.25rem 0;cursor:pointer}
.tools{display:flex;flex-wrap:wrap;gap:.5rem 1rem;align-items:center;margin:.5rem 0}
#rows{width:fit-content;max-width:100%;max-height:min(40rem,80vh);overflow:auto;position:relative}
#rows thead th{position:sticky;top:0;background:var(--page)}
@media print{#shown,#tip,.tools,#help{display:none}#rows{max-height:none}}
)css";

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_MAP_PAGE_STYLE_H_
