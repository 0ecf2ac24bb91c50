// Which areas must be painted after which.

#ifndef VEXEL_APPS_IMPORT_TOPOLOGY_ORDER_H_
#define VEXEL_APPS_IMPORT_TOPOLOGY_ORDER_H_

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "shape.h"

namespace vexel::import {

// The pairs (outer, inner), by place in `shapes` and in ascending order, of shapes whose second
// lies with one of its outlines in a hole of the first. The shapes overlap nowhere.
std::vector<std::pair<std::size_t, std::size_t>> EnclosedPairs(
    std::span<const Shape* const> shapes);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_TOPOLOGY_ORDER_H_
