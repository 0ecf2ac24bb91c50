// The whole road: the first bytes choose the view, the rest is a data file and its map.

#include <cstring>

#include "page.h"
#include "pair.h"
#include "scratch.h"

namespace {

using namespace vexel::fuzz;

constexpr int kWidth = 200;
constexpr int kHeight = 150;

static_assert(sizeof(View) == 7 && std::is_trivially_copyable_v<View>);

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  View view;
  if (size < sizeof view) return -1;
  std::memcpy(&view, bytes, sizeof view);
  QuietHost host;
  WritePair(AsText(bytes + sizeof view, size - sizeof view));
  Model model;
  const bool loaded = model.data.Build(PathOf("in.mdf"), 1, 0) == 1;
  model.map.SetAreaDataPointers(&model.data);
  DrawPage(model, view, kWidth, kHeight);
  if (loaded) DrawPage(model, View{}, kHeight, kWidth);
  return 0;
}
