// The compiled form of a map, with and without its float half. What loads is drawn and written.

#include "page.h"
#include "platform/exceptions.h"
#include "scratch.h"

namespace {

using namespace vexel::fuzz;

bool Load(CVELAMap& map, int loadFloats) {
  try {
    return map.Build(PathOf("in.mpc"), loadFloats, 0) == 1;
  } catch (const CArchiveException&) {
    return false;  // the file ends early
  }
}

void Save(CVELAMap& map) {
  if (map.GetFloatsLoaded() == 0) return;
  map.SaveMap(CVELAString(PathOf("out.map")), nullptr);
  if (map.SaveMpc(CVELAString(PathOf("out.mpc"))) == 0) return;
  CVELAMap again;
  Require(again.Build(PathOf("out.mpc"), 1, 0) == 1, "a compiled map that was saved loads");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  QuietHost host;
  WriteInput("in.mpc", AsText(bytes, size));
  for (const int loadFloats : {0, 1}) {
    Model model;
    const bool loaded = Load(model.map, loadFloats);
    model.map.WriteTreeFile(CVELAString(PathOf("tree.txt")), "list?");
    if (loaded) Save(model.map);
    View view;
    view.level = loadFloats == 0 ? 1 : 2;
    DrawPage(model, view, 40, 30);
  }
  return 0;
}
