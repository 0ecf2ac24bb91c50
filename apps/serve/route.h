// Where the target of a request leads, before anything is looked up.

#ifndef VEXEL_APPS_SERVE_ROUTE_H_
#define VEXEL_APPS_SERVE_ROUTE_H_

#include <string>
#include <string_view>
#include <vector>

#include "apps/serve/answer.h"
#include "apps/serve/show.h"

namespace vexel::serve {

enum class Place { nowhere, catalog, asset, health, metrics, show };

struct Route {
  Place place = Place::nowhere;
  Status status = Status::ok;  // why it leads nowhere
  std::string asset;           // its name
  Target target;               // of `show`
};

// Whether the paths of a data set of that name would be something else's.
bool IsReserved(std::string_view name);

// The sizes of pictures that one request can ask for. What is beyond them is cut down to them and
// told among the problems of the state.
inline constexpr int kLongestSide = 4000;
inline constexpr double kMostPixelsPrinted = 40e6;

// `base` is the base path without a slash at its end. Total: any bytes lead somewhere or nowhere.
Route RouteOf(std::string_view target, std::string_view base);

// The names by which hosts may be asked for, in lower case: loopback's and those given.
class HostNames {
 public:
  explicit HostNames(std::vector<std::string> more);

  // Takes the value of a Host line, with or without a port.
  bool Has(std::string_view host) const;

 private:
  std::vector<std::string> names_;
};

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_ROUTE_H_
