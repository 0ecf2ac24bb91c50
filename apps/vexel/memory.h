// How the program gets its memory from the system.

#ifndef VEXEL_APPS_VEXEL_MEMORY_H_
#define VEXEL_APPS_VEXEL_MEMORY_H_

namespace vexel::cli {

// Asks for large pages under everything that is allocated from now on, where the system has them. A
// command lives for some milliseconds, and a good part of them would go into being handed its
// memory in pieces of 4 KiB. Changes nothing but time.
void PreferLargePages();

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_MEMORY_H_
