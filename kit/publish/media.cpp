#include "kit/publish/media.h"

#include <algorithm>
#include <array>

#include "kit/request/hints.h"
#include "kit/request/values.h"

namespace vexel {

namespace {

constexpr std::string_view kPrint = "vexel-print";

constexpr std::array kMedia{
    Medium{"gif", ""},
    Medium{"svg", ""},
    Medium{"pdf", kPrint},
    Medium{"png", kPrint},
};

}  // namespace

std::span<const Medium> Media() { return kMedia; }

const Medium& DefaultMedium() { return kMedia.front(); }

const Medium* FindMedium(std::string_view name) {
  const auto* found = std::find_if(kMedia.begin(), kMedia.end(), [=](const Medium& medium) {
    return EqualNoCase(medium.name, name);
  });
  return found == kMedia.end() ? nullptr : found;
}

const Medium* MediumOfFile(std::string_view fileName) {
  const std::size_t dot = fileName.rfind('.');
  return dot == std::string_view::npos ? nullptr : FindMedium(fileName.substr(dot + 1));
}

}  // namespace vexel
