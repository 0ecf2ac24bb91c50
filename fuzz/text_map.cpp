// The text form of a map. What loads is drawn, and written in both forms; what was written loads
// again and is written the same once more.

#include "page.h"
#include "scratch.h"

namespace {

using namespace vexel::fuzz;

void WriteText(CVELAMap& map, std::string_view name) {
  map.SaveMap(CVELAString(PathOf(name)), nullptr);
}

void CheckTextForm(CVELAMap& map) {
  WriteText(map, "first.map");
  CVELAMap again;
  Require(again.Build(PathOf("first.map"), 1, 0) == 1, "a written map loads");
  WriteText(again, "second.map");
  Require(ReadBack("first.map") == ReadBack("second.map"), "a written map is written the same");
}

void CheckCompiledForm(CVELAMap& map) {
  Require(map.SaveMpc(CVELAString(PathOf("first.mpc"))) == 1, "a text map can be compiled");
  CVELAMap again;
  Require(again.Build(PathOf("first.mpc"), 1, 0) == 1, "a compiled map loads");
  Require(again.SaveMpc(CVELAString(PathOf("second.mpc"))) == 1, "and can be compiled");
  Require(ReadBack("first.mpc") == ReadBack("second.mpc"), "a compiled map is written the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  QuietHost host;
  WriteInput("in.map", AsText(bytes, size));
  Model model;
  const bool loaded = model.map.Build(PathOf("in.map"), 1, 1) == 1;
  model.map.WriteTreeFile(CVELAString(PathOf("tree.txt")), "list?");
  if (loaded) {
    CheckTextForm(model.map);
    CheckCompiledForm(model.map);
  } else {
    WriteText(model.map, "first.map");
  }
  DrawPage(model, View{}, 40, 30);
  return 0;
}
