// A data file with its map. What loads is written, and what was written loads again with as many
// rows.

#include "page.h"
#include "pair.h"
#include "platform/exceptions.h"
#include "scratch.h"

namespace {

using namespace vexel::fuzz;

void CheckWritten(Model& model) {
  model.data.SetMapFile(CVELAString(PathOf("out")));
  try {
    model.map.SaveMdf(CVELAString(PathOf("out.mdf")));
  } catch (const CInvalidArgException&) {
    return;  // a file that names its map twice gives the polygons their integers twice
  }
  Model again;
  Require(again.data.Build(PathOf("out.mdf"), 1, 0) == 1, "a written data file loads");
  Require(again.data.GetNumAreas() == model.data.GetNumAreas(), "with all its rows");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  QuietHost host;
  WritePair(AsText(bytes, size));
  for (const int quiet : {0, 1}) {
    Model model;
    if (model.data.Build(PathOf("in.mdf"), 1, quiet) == 0) continue;
    model.map.SetAreaDataPointers(&model.data);
    const bool isWhole = model.map.GetNumMapLevels() > 0 && model.data.GetNumAreas() > 0;
    if (quiet == 0 && isWhole) CheckWritten(model);
  }
  return 0;
}
