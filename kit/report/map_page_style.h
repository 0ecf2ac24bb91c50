// How the web page around a publication page looks, behind kBaseStyle; the colours of the groups
// come behind it.

#ifndef VEXEL_KIT_REPORT_MAP_PAGE_STYLE_H_
#define VEXEL_KIT_REPORT_MAP_PAGE_STYLE_H_

#include <string_view>

namespace vexel {

inline constexpr std::string_view kMapPageStyle = R"css(
body{margin:0;padding:1rem;font:1rem/1.5 system-ui,sans-serif;color:var(--text);background:var(--page)}
main{max-width:90rem;margin:0 auto}
h1{margin:0 0 .5rem;font-size:1.4rem;line-height:1.25;overflow-wrap:anywhere}
h2{margin:0 0 .5rem;font-size:1.1rem;overflow-wrap:anywhere}
#shown{position:sticky;top:0;z-index:1;margin:0 0 .75rem;padding:.4rem .75rem;height:1.5em;overflow:hidden;background:var(--panel);border-left:4px solid var(--mark)}
#shown b,#tip b{font-weight:600}
@media (max-width:40rem){#shown{height:3em}}
.view{display:flex;flex-wrap:wrap;gap:1.5rem;align-items:flex-start;margin-bottom:2rem}
.view>figure{margin:0;min-width:0;max-width:100%}
.view>section{flex:0 1 18rem;min-width:0}
#map{position:relative;width:fit-content;max-width:100%;background:#fff;border-radius:2px;box-shadow:0 0 0 1px var(--rule)}
#map img{display:block;max-width:100%;height:auto;will-change:transform}
#fade{opacity:0;will-change:opacity}
#fade.on{opacity:1}
#fade.dim>rect{fill:#767676}
@media (prefers-reduced-motion:no-preference){#fade{transition:opacity .12s}}
td i,th i{display:inline-block;flex:none;width:1em;height:1em;margin-right:.5em;border:1px solid var(--edge);vertical-align:-.12em;forced-color-adjust:none}
th button{padding:0;text-align:left;background:none;border:0}
thead button{font-weight:600;text-decoration:underline}
#legend table{width:100%}
#legend th button{display:flex;align-items:center;width:100%}
tr.has>th{box-shadow:inset 4px 0 var(--mark)}
summary{width:fit-content;padding:.25rem 0;cursor:pointer}
.tools{display:flex;flex-wrap:wrap;gap:.5rem 1rem;align-items:center;margin:.5rem 0}
#rows{width:fit-content;max-width:100%;max-height:min(40rem,80vh);overflow:auto;position:relative}
#rows thead th{position:sticky;top:0;background:var(--page)}
@media print{#shown,#tip,.tools,#help{display:none}#rows{max-height:none}}
)css";

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_MAP_PAGE_STYLE_H_
