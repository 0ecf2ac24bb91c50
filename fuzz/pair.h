// A data file and its text map as one input: what stands before the heading of the map, and the
// rest.

#ifndef VEXEL_FUZZ_PAIR_H_
#define VEXEL_FUZZ_PAIR_H_

#include <algorithm>
#include <string_view>

#include "scratch.h"

namespace vexel::fuzz {

// Writes "in.mdf" and "in.map". The data files of the corpus name the map "in".
inline void WritePair(std::string_view input) {
  const std::size_t end = std::min(input.find("[Map]\n"), input.size());
  WriteInput("in.mdf", input.substr(0, end));
  WriteInput("in.map", input.substr(end));
}

}  // namespace vexel::fuzz

#endif  // VEXEL_FUZZ_PAIR_H_
