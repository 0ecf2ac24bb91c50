// How pages about a view look, behind kBaseStyle. Widths of the map: a picture of vectors grows
// with the window in steps, one of pixels never grows.

#ifndef VEXEL_KIT_SITE_STYLE_H_
#define VEXEL_KIT_SITE_STYLE_H_

#include <string_view>

namespace vexel {

inline constexpr std::string_view kSiteStyle = R"css(
:root{--card:0 1px 3px rgb(0 0 0/.18),0 0 0 1px var(--rule)}
html{scrollbar-gutter:stable}
body{margin:0;font:.95rem/1.45 system-ui,sans-serif;color:var(--text);background:var(--page)}
header.top{display:flex;justify-content:space-between;align-items:center;gap:1rem;min-height:1.9rem;padding:.3rem 1.25rem;font-size:.9rem;background:var(--panel);border-bottom:1px solid var(--rule)}
main{max-width:150rem;margin:0 auto;padding:.75rem 1.25rem 2rem}
main:focus{outline:none}
main[aria-busy=true]{cursor:progress}
h1{margin:.1rem 0 .6rem;font-size:1.4rem;line-height:1.25;overflow-wrap:anywhere}
h2{margin:0 0 .4rem;font-size:1.05rem;overflow-wrap:anywhere}
a{text-underline-offset:.15em;text-decoration-thickness:1px}
td a,th a,.path a{text-decoration-color:color-mix(in srgb,currentColor 45%,transparent)}
a:hover{text-decoration-thickness:2px}
.aside{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%);white-space:nowrap}
.path{display:flex;flex-wrap:wrap;margin:0;padding:0;list-style:none;font-size:.9rem}
.path li+li::before{content:"\203a";margin:0 .5rem;color:var(--soft)}
.notes{margin:0 0 .75rem;padding:.4rem .75rem .4rem 1.75rem;background:var(--lit);border-left:4px solid var(--mark);overflow-wrap:anywhere}
#choices{display:flex;flex-wrap:wrap;gap:.5rem .8rem;align-items:end;margin-bottom:1rem;padding:.55rem .8rem .65rem;background:var(--panel);border:1px solid var(--rule);border-radius:4px}
.field{display:flex;flex-direction:column;gap:.1rem;min-width:0;max-width:100%}
.field>label,.label{font-size:.8rem;color:var(--soft)}
select{font:inherit;color:inherit;max-width:15rem;padding:.15rem .3rem;background:var(--page);border:1px solid var(--edge);border-radius:3px}
select,input,button,summary{min-height:1.6rem}
.field select,.field input{box-sizing:border-box;height:1.85rem}
.check{display:inline-flex;gap:.35rem;align-items:center;height:1.85rem}
.check input{min-height:0;margin:0}
#choices>button{height:1.85rem;background:var(--mark);color:var(--page);border-color:var(--mark);padding:.1rem .9rem}
summary{width:fit-content;cursor:pointer}
#palettes{position:relative}
#palettes summary{display:flex;align-items:center;gap:.5rem;box-sizing:border-box;height:1.85rem;padding:0 .5rem;background:var(--page);border:1px solid var(--edge);border-radius:3px;list-style:none}
#palettes summary::after{content:"\25be";color:var(--soft)}
#palettes fieldset{position:absolute;z-index:4;top:100%;left:0;display:grid;grid-template-columns:repeat(3,max-content);gap:.1rem 1.2rem;max-height:60vh;overflow:auto;margin:.25rem 0 0;padding:.6rem .8rem;background:var(--page);border:1px solid var(--edge);border-radius:4px;box-shadow:0 4px 16px rgb(0 0 0/.25)}
#palettes legend{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%)}
.palette{display:flex;align-items:center;gap:.4rem;white-space:nowrap}
.palette input{min-height:0;margin:0}
#palettes .soft{grid-column:1/-1;margin:.3rem 0 0}
.safe{font-size:.75rem;color:var(--soft)}
.strip{width:5.2rem;height:1rem;border:1px solid var(--edge);forced-color-adjust:none}
.more>div{display:flex;flex-wrap:wrap;gap:.5rem .8rem;align-items:end;padding-top:.4rem}
.more[open]{flex-basis:100%}
.body{display:grid;grid-template-columns:minmax(0,1fr);gap:1.25rem 2rem;align-items:start}
.panel{display:flex;flex-wrap:wrap;gap:1rem 1.5rem;align-items:flex-start}
.panel>h2{flex-basis:100%;margin:0}
.view{min-width:0}
.view.two{display:grid;grid-template-columns:minmax(0,1fr);gap:1.25rem}
.sheet{position:relative;flex:none;width:fit-content;max-width:100%;background:#fff;border-radius:2px;box-shadow:var(--card)}
.sheet img{display:block;max-width:100%;height:auto}
.sheet a{display:block}
#map:focus-visible{outline-offset:3px}
#map[data-place]{cursor:crosshair}
#map.leads{cursor:pointer}
.side{flex:1 1 15rem;min-width:min(15rem,100%);max-width:26rem}
.legend{width:100%;margin-bottom:1rem}
.legend a{display:flex;align-items:center;color:inherit;text-decoration:none}
.legend a:hover span{text-decoration:underline}
.legend a[aria-current]{font-weight:600}
.swatch{flex:none;width:.9em;height:.9em;margin-right:.5em;border:1px solid var(--edge);vertical-align:-.12em;forced-color-adjust:none}
.histogram{display:block;width:100%;overflow:visible;forced-color-adjust:none}
.histogram rect{stroke:var(--edge);stroke-width:.6}
.histogram .bound{stroke:var(--text);stroke-width:1;stroke-dasharray:3 2;fill:none}
.histogram .axis{stroke:var(--edge)}
.histogram text{font-size:13px;fill:var(--soft)}
.histogram .end{text-anchor:end}
.histogram .middle{text-anchor:middle}
#areas:focus{outline:none}
#areas,#files{min-width:0}
.tools{display:flex;flex-wrap:wrap;gap:.4rem .8rem;align-items:center;margin:.3rem 0}
.pager{display:flex;flex-wrap:wrap;gap:.2rem .9rem;margin:.3rem 0;font-size:.9rem;color:var(--soft)}
#rows{width:fit-content;max-width:100%;max-height:min(44rem,80vh);overflow:auto;position:relative;border:1px solid var(--rule);border-radius:3px}
.areas{font-size:.92rem}
.areas caption{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%)}
.areas thead th{position:sticky;top:0;z-index:1;padding-top:.35rem;background:var(--panel);vertical-align:bottom}
.areas th,.areas td{padding-left:.6rem}
.areas td:last-child,.areas td.n{white-space:nowrap}
[aria-sort] a::after{content:" \25b4";text-decoration:none}
[aria-sort=descending] a::after{content:" \25be"}
tr.lit>th a,tr.lit>td a{color:inherit}
.names{columns:14rem;margin:.3rem 0;padding-left:1.2rem;font-size:.92rem}
.files{display:flex;flex-wrap:wrap;gap:.4rem 1.1rem;margin:0 0 .5rem;padding:0;list-style:none}
.command{display:flex;gap:.6rem;align-items:start;margin-top:.2rem}
.command code{flex:0 1 auto;min-width:0;padding:.3rem .6rem;background:var(--panel);border:1px solid var(--rule);border-radius:3px;overflow-wrap:anywhere}
.sets{padding:0;list-style:none;font-size:1.05rem}
.sets li{padding:.35rem 0;border-bottom:1px solid var(--rule)}
.trouble{color:var(--mark)}
#tip{line-height:1.35}
#tip b{font-weight:600}
#tip .swatch{margin-left:.1em}
#fade{opacity:0}
#fade.on{opacity:1}
#fade path{fill:#fff;fill-opacity:.88}
#fade.dim path{fill:#767676;fill-opacity:.9}
@media (prefers-reduced-motion:no-preference){#fade{transition:opacity .12s}}
dialog{max-width:30rem;padding:1rem 1.5rem;color:var(--text);background:var(--page);border:1px solid var(--edge);border-radius:4px}
dialog::backdrop{background:rgb(0 0 0/.4)}
dl{display:grid;grid-template-columns:max-content 1fr;gap:.25rem 1rem;margin:0 0 1rem}
dt{font-weight:600}
dd{margin:0}
@media (scripting:none){.sheet{overflow-x:auto}.sheet img{max-width:none}}
@media (max-width:45rem){main{padding:.6rem .75rem 2rem}header.top{padding:.3rem .75rem}.side{max-width:none}#choices{display:grid;grid-template-columns:repeat(2,minmax(0,1fr))}select,.field input{width:100%;max-width:100%}#choices .more[open]{grid-column:1/-1}#choices>button{justify-self:start}.field:has(#palettes[open]){grid-column:1/-1}#palettes summary{overflow:hidden;max-width:100%}#palettes summary .strip{flex:0 1 4rem;min-width:0}#palettes{position:static}#palettes fieldset{position:static;grid-template-columns:repeat(auto-fill,minmax(9.5rem,1fr));min-width:0}.command{flex-direction:column}}
@media (min-width:64rem){.view.two{grid-template-columns:repeat(2,minmax(0,1fr))}.two .side{flex-basis:100%;max-width:none;display:grid;grid-template-columns:minmax(11rem,1fr) minmax(0,1fr);gap:1.5rem;align-items:start}}
@media (min-width:100rem) and (min-height:45rem){.view:not(.two) .vectors img{width:960px}}
@media (min-width:120rem){.body{grid-template-columns:minmax(0,1fr) minmax(32rem,46rem);grid-template-rows:auto 1fr}#areas{grid-column:2;grid-row:1/span 2}#rows{max-height:min(70rem,85vh)}}
@media (min-width:150rem) and (min-height:60rem){.view:not(.two) .vectors img{width:1200px}}
@media print{header.top,#choices,.tools,.pager,#files,#tip{display:none}#rows{max-height:none;overflow:visible}}
)css";

}  // namespace vexel

#endif  // VEXEL_KIT_SITE_STYLE_H_
