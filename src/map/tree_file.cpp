// The listing of the area tree for a web page.

#include "brindle/specfile.h"
#include "map/map.h"

namespace {

void PutNode(CSpecFile& file, const CMapOb& node) {
  file.PutLine("N", node.GetName());
  file.PutLine("U", node.GetArea().GetURL());
}

}  // namespace

int CVELAMap::WriteTreeFile(const CVELAString& path, const CVELAString& baseUrl) const {
  CSpecFile file(0);
  if (file.Open(path.GetString(), 1) == 0) return 0;
  WriteTreeFile(file, baseUrl);
  return file.Close();
}

void CVELAMap::WriteTreeFile(CSpecFile& file, const CVELAString& baseUrl) const {
  file.PutLine("BaseURL", baseUrl);
  PutNode(file, *this);
  for (const CMapOb* child : children) child->WriteTreeFile(file, baseUrl);
  file.PutLine("[EOF]");
}

void CMapOb::WriteTreeFile(CSpecFile& file, const CVELAString& baseUrl) const {
  const bool isGroup = GetNumChildren() > 0;
  file.PutLine(isGroup ? "[N]" : "[L]");
  PutNode(file, *this);
  if (!isGroup) return;
  for (const CMapOb* child : children) child->WriteTreeFile(file, baseUrl);
  file.PutLine("[EN]");
}
