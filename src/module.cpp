// Start and stop of the library: its class records go into the registry when it is loaded and out
// again when it is unloaded. Nothing else happens at start.

#include <algorithm>
#include <array>

#include "data/areadata.h"
#include "data/dataset.h"
#include "map/map.h"
#include "map/mapob.h"
#include "map/polygon.h"
#include "map/rect.h"
#include "platform/object.h"
#include "render/gif.h"
#include "render/mapgif.h"

namespace {

class ExtensionModule {
 public:
  ExtensionModule() { std::for_each(records_.begin(), records_.end(), AfxClassInit); }
  ~ExtensionModule() { std::for_each(records_.rbegin(), records_.rend(), AfxClassTerm); }
  ExtensionModule(const ExtensionModule&) = delete;
  ExtensionModule& operator=(const ExtensionModule&) = delete;

 private:
  std::array<CRuntimeClass*, 8> records_{CAreaData::GetThisClass(), CVELAData::GetThisClass(),
                                         CPolygon::GetThisClass(),  CMapOb::GetThisClass(),
                                         CVELAMap::GetThisClass(),  CRectF::GetThisClass(),
                                         CGif::GetThisClass(),      CMapGif::GetThisClass()};
};

const ExtensionModule module;

}  // namespace
