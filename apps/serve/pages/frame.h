// What stands around every page.

#ifndef VEXEL_APPS_SERVE_PAGES_FRAME_H_
#define VEXEL_APPS_SERVE_PAGES_FRAME_H_

#include <string>
#include <string_view>

#include "apps/serve/pages/pages.h"

namespace vexel::serve {

struct Frame {
  std::string title;      // plain text
  std::string canonical;  // the address in its normal form; empty: none
  std::string main;       // markup
  std::string skip;       // the id that the first link leads to, and what it is called; empty: none
  std::string skipText;
  bool hasScript = false;
};

std::string Framed(const Site& site, const Frame& frame);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_PAGES_FRAME_H_
