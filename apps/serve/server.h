// The server itself: connections in, answers out, signals.

#ifndef VEXEL_APPS_SERVE_SERVER_H_
#define VEXEL_APPS_SERVE_SERVER_H_

#include <functional>
#include <string>

#include "apps/serve/catalog.h"
#include "apps/serve/options.h"
#include "apps/serve/printer.h"

namespace vexel::serve {

// Serves until a signal ends it: what is under way is answered, for somewhat less than a second.
// Calls `started` with the address once it can be opened. Throws an Error when the port cannot be
// had. When drawing goes on for longer than that, the process ends here, with status 0.
void Serve(const Options& options, Catalog& catalog, Printer printer,
           const std::function<void(const std::string& address)>& started);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_SERVER_H_
