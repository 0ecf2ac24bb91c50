// The answers that take a view of a data set.

#ifndef VEXEL_APPS_SERVE_DRAW_H_
#define VEXEL_APPS_SERVE_DRAW_H_

#include <string>
#include <string_view>

#include "apps/serve/answer.h"
#include "apps/serve/catalog.h"
#include "apps/serve/pages/pages.h"
#include "apps/serve/printer.h"
#include "apps/serve/show.h"

namespace vexel::serve {

// Makes the part of the page that is asked for. For threads of a pool; whatever goes wrong becomes
// an answer that says so.
AnswerPtr Draw(const Site& site, LoadedSet& set, const Target& target, const Printer& printer);

// A page that says what went wrong.
AnswerPtr ErrorAnswer(const Site& site, Status status, std::string_view text);

// Makes a view show a state, or as much of it as there can be, and says what cannot: sentences, or
// nothing. Throws an Error when there is no such area to zoom to.
std::string ShowOn(View& view, const Request& base, const Request& wanted);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_DRAW_H_
