#include "apps/serve/route.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

#include "kit/request/markup.h"
#include "kit/request/query.h"
#include "kit/request/values.h"

namespace vexel::serve {

namespace {

// First segments of paths.
constexpr std::string_view kAssets = "assets";
constexpr std::string_view kHealth = "health";
constexpr std::string_view kMetrics = "metrics";

constexpr std::size_t kCodeLength = 3;  // "%2F"

// The text with its codes resolved; nothing when a "%" begins none.
std::optional<std::string> Decoded(std::string_view text) {
  constexpr int kHex = 16;
  std::string decoded;
  decoded.reserve(text.size());
  while (!text.empty()) {
    if (text.front() != '%') {
      decoded += text.front();
      text.remove_prefix(1);
      continue;
    }
    unsigned byte = 0;
    const char* const end = text.data() + std::min(kCodeLength, text.size());
    if (text.size() < kCodeLength || std::from_chars(text.data() + 1, end, byte, kHex).ptr != end) {
      return std::nullopt;
    }
    decoded += static_cast<char>(byte);
    text.remove_prefix(kCodeLength);
  }
  return decoded;
}

bool IsControl(char c) {
  constexpr char kDelete = 0x7F;
  return (c >= 0 && c < ' ') || c == kDelete;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::string_view before = text;
    if (NextCharacter(text) != kReplacement) continue;
    constexpr std::string_view kItself = "\uFFFD";
    if (!before.starts_with(kItself)) return false;
  }
  return true;
}

// A path must be spelled well; in a query a lone "%" stands for itself.
bool IsWellFormed(std::string_view path, std::string_view query) {
  if (std::any_of(path.begin(), path.end(), IsControl)) return false;
  if (std::any_of(query.begin(), query.end(), IsControl)) return false;
  const std::optional<std::string> plain = Decoded(path);
  if (!plain || !IsUtf8(*plain) || std::any_of(plain->begin(), plain->end(), IsControl)) {
    return false;
  }
  const std::string said = PercentDecoded(query);
  return IsUtf8(said) && said.find('\0') == std::string::npos;
}

bool HasDots(std::string_view path) {
  const std::string plain = Decoded(path).value_or("");
  const auto segments = Split(plain, '/');
  return std::any_of(segments.begin(), segments.end(),
                     [](std::string_view segment) { return segment == "." || segment == ".."; });
}

Route Nowhere(Status status) {
  Route route;
  route.status = status;
  return route;
}

// A page must not take the memory of all others.
void CutDown(Show& show) {
  PageSize& size = show.request.size;
  if (size.width > kLongestSide || size.height > kLongestSide) {
    size = {std::min(size.width, kLongestSide), std::min(size.height, kLongestSide)};
    show.problems.push_back("size: pages are at most " + std::to_string(kLongestSide) +
                            " pixels wide and high here");
  }
  double& scale = show.request.publication.scale;
  const double most = std::sqrt(kMostPixelsPrinted / size.width / size.height);
  if (scale > most) {
    scale = std::max(std::floor(most), 1.0);
    show.problems.push_back("scale: so large a page is scaled by " + NumberText(scale) +
                            " at most here");
  }
}

Route RouteBelow(std::string_view target) {
  Route route;
  const std::string_view path = target.substr(1, std::min(target.find('?'), target.size()) - 1);
  const std::size_t slash = std::min(path.find('/'), path.size());
  const std::string_view behind = path.substr(std::min(slash + 1, path.size()));
  if (path.empty()) {
    route.place = Place::catalog;
  } else if (path == kHealth) {
    route.place = Place::health;
  } else if (path == kMetrics) {
    route.place = Place::metrics;
  } else if (!behind.empty() && path.substr(0, slash) == kAssets) {
    route.place = Place::asset;
    route.asset = behind;
  }
  if (route.place != Place::nowhere) return route;
  std::optional<Target> read = ReadTarget(target);
  if (!read || IsReserved(read->show.set)) return Nowhere(Status::notFound);
  route.place = Place::show;
  route.target = *std::move(read);
  CutDown(route.target.show);
  return route;
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return lower;
}

// Without a port, a dot at the end of a name, and the brackets of an address.
std::string_view HostAlone(std::string_view host) {
  const bool isAddress = host.starts_with('[');
  const std::size_t end = isAddress ? host.find(']') : std::min(host.find(':'), host.size());
  if (end == std::string_view::npos) return {};
  const std::string_view port = host.substr(isAddress ? end + 1 : end);
  const bool isPort =
      port.empty() ||
      (port.starts_with(':') && port.find_first_not_of("0123456789", 1) == std::string_view::npos);
  if (!isPort) return {};
  if (isAddress) return host.substr(1, end - 1);
  host = host.substr(0, end);
  if (host.ends_with('.')) host.remove_suffix(1);
  return host;
}

}  // namespace

bool IsReserved(std::string_view name) {
  return name == kAssets || name == kHealth || name == kMetrics;
}

Route RouteOf(std::string_view target, std::string_view base) {
  if (!target.starts_with('/')) return Nowhere(Status::badRequest);
  const std::size_t end = std::min(target.find('?'), target.size());
  const std::string_view path = target.substr(0, end);
  if (!IsWellFormed(path, target.substr(end))) return Nowhere(Status::badRequest);
  if (HasDots(path) || !path.starts_with(base)) return Nowhere(Status::notFound);
  const std::string_view below = target.substr(base.size());
  if (below.starts_with('/')) return RouteBelow(below);
  // The base path itself, without the slash behind it.
  if (below.empty() || below.starts_with('?')) return RouteBelow("/");
  return Nowhere(Status::notFound);
}

HostNames::HostNames(std::vector<std::string> more) : names_(std::move(more)) {
  for (std::string& name : names_) name = Lower(name);
  names_.insert(names_.end(), {"localhost", "127.0.0.1", "::1"});
}

bool HostNames::Has(std::string_view host) const {
  const std::string name = Lower(HostAlone(host));
  return !name.empty() && std::find(names_.begin(), names_.end(), name) != names_.end();
}

}  // namespace vexel::serve
