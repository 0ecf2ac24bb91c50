// How everything looks that several kinds of web page have.

#ifndef VEXEL_KIT_REPORT_BASE_STYLE_H_
#define VEXEL_KIT_REPORT_BASE_STYLE_H_

#include <string_view>

namespace vexel {

inline constexpr std::string_view kBaseStyle = R"css(
:root{color-scheme:light dark;--page:#fff;--panel:#f0f0f0;--text:#1a1a1a;--soft:#555;--rule:#d9d9d9;--edge:#767676;--mark:#a4005f;--lit:#fbe6f2}
@media (prefers-color-scheme:dark){:root{--page:#17191d;--panel:#25282e;--text:#ececec;--soft:#b8b8b8;--rule:#3b3f46;--edge:#8c8c8c;--mark:#ff8ac4;--lit:#4d1f39}}
[hidden]{display:none!important}
a{color:var(--mark)}
:focus-visible{outline:3px solid var(--mark);outline-offset:2px}
.skip{position:absolute;left:-999rem}
.skip:focus{left:1rem;top:.5rem;z-index:3;padding:.25rem .75rem;background:var(--page)}
#map svg{position:absolute;left:0;top:0;width:100%;height:100%;pointer-events:none}
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
button,input{font:inherit;color:inherit}
button{padding:.15rem .6rem;background:var(--panel);border:1px solid var(--edge);border-radius:3px;cursor:pointer}
button[aria-disabled=true]{color:var(--soft);border-color:var(--rule);cursor:default}
input{padding:.15rem .4rem;max-width:100%;box-sizing:border-box;background:var(--page);border:1px solid var(--edge);border-radius:3px}
tr.lit>*{background:var(--lit)}
tr[aria-current]>th{box-shadow:inset 4px 0 var(--mark)}
)css";

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_BASE_STYLE_H_
