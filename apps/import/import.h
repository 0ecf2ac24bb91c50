// The whole of an import: from files that are read to files that stand.

#ifndef VEXEL_APPS_IMPORT_IMPORT_H_
#define VEXEL_APPS_IMPORT_IMPORT_H_

#include "account.h"
#include "host.h"
#include "options.h"

namespace vexel::import {

// Reads everything that the options name, and then writes all files; what goes wrong before leaves
// none. Throws an Error. With `strict` an account of any loss is told instead.
Account Import(const Options& options, cli::CliHost& host);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_IMPORT_H_
