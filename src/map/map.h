// The root of an area tree: a map.

#ifndef VEXEL_MAP_MAP_H_
#define VEXEL_MAP_MAP_H_

#include <array>
#include <string_view>

#include "map/mapob.h"
#include "platform/array.h"
#include "platform/export.h"
#include "platform/file.h"

class CLegend;

namespace vexel {
class DataFileReader;
class TableReader;
}  // namespace vexel

// A map: the root node at level 0, the names of its levels, and what is on show of it.
//
// The host links a data set and a legend by writing `data` and `legend`; the map owns neither. What
// is on show is the subtree of the draw root, which is the map itself at first, at the draw level.
class VEXEL_API CVELAMap : public CMapOb {
 public:
  static constexpr int kMostLevels = 8;  // the map's own name and seven levels

  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  CVELAMap() = default;

  // Loads a map: a compiled one when the last three characters of the path are "mpc" in any letter
  // case, else a text map. The map is not emptied first. `loadFloats` reads the float half of a
  // compiled map too; `showProgress` shows a dialog with a cancel button over a text map.
  //
  // 1 when the map is loaded: its levels and parents are set, it is at draw level 1 and has integer
  // coordinates. 0 otherwise: the user has been told, except of a text file that cannot be opened,
  // and what was read before a failure stays, in working order. A compiled file that ends early
  // throws CArchiveException.
  int Build(const CString& path, int loadFloats, int showProgress);

  // Writes the map as text, from its float coordinates, with "LongLat" always "No". `progress`, if
  // given, is stepped once for each node below the root. A failure is reported, and an earlier file
  // stays as it was.
  void SaveMap(const CVELAString& path, CProgressDlg* progress);

  // Writes the compiled form, with both halves. Needs float coordinates in memory. 1 on success, 0
  // after a report; an earlier file stays as it was then.
  int SaveMpc(const CVELAString& path);

  // Carries the map to or from a compiled file. After reading, `compiledValid` tells whether it was
  // one; when not, nothing has been changed.
  virtual void Serialize(CArchive& ar, int withFloatPass);
  using CMapOb::Serialize;

  // Writes a data file of the linked data set, and the compiled map beside it when the map has its
  // float coordinates. Failures are reported. (Both stand in data/datafile_writer.cpp.)
  void SaveMdf(const CVELAString& path);
  void SaveMdfSpec(CSpecFile& file);

  // Lists the tree for a web page. Nonzero when the file was opened and stands whole.
  int WriteTreeFile(const CVELAString& path, const CVELAString& baseUrl) const;
  void WriteTreeFile(CSpecFile& file, const CVELAString& baseUrl) const;

  // Turns the float coordinates of the whole tree into integers of the working space. Appends, so
  // it runs once on a tree.
  void NormalizeCoords();

  CMapOb* GetDrawRoot() const { return drawRoot; }
  int GetDrawLevel() const { return drawLevel; }
  void SetDrawLevel(int value) { drawLevel = value; }  // leaves the marks of the nodes alone

  // Sets the draw level and marks exactly its nodes as drawn.
  void PrepareLevelDrawing(int drawnLevel);

  // Makes a node of this map the draw root and draws the level that zoomDrawLevels names for it, or
  // the one below it, as far as the map goes. Returns 1; 0 for null, which changes nothing.
  int ZoomTo(CMapOb* node);

  // Moves the draw root to its parent, with the level for that. 1 when the draw root changed.
  int ZoomOut();

  // The bound in the working space of the map, or of the first node with a key; that of the map
  // when no node has it.
  const CRect& GetBoundRect() const { return CMapOb::GetBoundRect(); }
  const CRect& GetBoundRect(const CAreaStruct& key);

  // Gives every node below the map that has no polygons that bound, and warns the user if there was
  // one. 1 then, else 0.
  int CheckForMissingPolygons(const CRect& rect);

  int GetNumMapLevels() const { return numMapLevels; }  // the map's own name counts
  void SetNumMapLevels(int value) { numMapLevels = value; }

  // Entry 0 is the name of the map, entry n that of tree level n. Indexes and numbers beyond eight
  // throw CInvalidArgException.
  const CVELAString& GetLevelName(int index) const;
  void AddLevelName(const CVELAString& levelName);

  const CFileStatus& GetFileStatus() const { return fileStatus; }
  void SetFileStatus(const CFileStatus& status) { fileStatus = status; }
  void SetTitle(CVELAString title);

  // Nonzero when the float coordinates are in memory; when the map's own are degrees.
  int GetFloatsLoaded() const { return floatsLoaded; }
  int GetLongLat() const { return longLat; }

  // What the page says above the map, from the selection of the linked data set. (This and the
  // next stand in data/titles.cpp.)
  CVELAString GenerateTitle();

  // The selected value of a node as text, "<no data>" when there is none.
  CVELAString GetDataStr(CMapOb* node);

  // The colour, 0x00BBGGRR, that stands out from a legend's colours. (Stands in
  // render/drawing.cpp.)
  static unsigned long GetOutlineColor(const CLegend* legend);

  CVELAData* data = nullptr;
  CLegend* legend = nullptr;

  // The level to draw when a node of level n is the draw root; what is not above n means n + 1.
  std::array<int, kMostLevels> zoomDrawLevels{};

  CVELAString percentChangeLabel = "Percent change";
  CVELAString percentLabel = "Percent";
  CVELAString ratioLabel = "Ratio";
  CVELAString differenceLabel = "Difference";

 protected:
  int mapLoaded = 0;
  int compiledValid = 0;
  int compiledOldFormat = 0;
  int floatsLoaded = 0;
  int longLat = 0;
  int numMapLevels = 0;
  std::array<CVELAString, kMostLevels> levelNames;
  vexel::GrowArray<CVELAString> titleLines;
  CRectF fileBoundsF;
  CMapOb* drawRoot = this;
  int drawLevel = 1;
  CVELAString mdfPath;
  CVELAString mapPath;
  CFileStatus fileStatus;

 private:
  friend class vexel::MapReader;
  friend class vexel::DataFileReader;  // tells whether its file's map was loaded
  friend class vexel::TableReader;     // renames levels

  int BuildCompiled(const CString& path, int loadFloats);
  int BuildText(const CString& path, int showProgress);
  int BuildBehindHeading(CSpecFile& spec, CProgressDlg* progress);
  int PrepareTree();
  int CheckForMissingPolygons(const CRect& rect, std::string_view file);
  void RemarkOnPrecision(std::string_view file) const;
  int Build(CSpecFile& spec, CProgressDlg* progress);
  void BuildAreaLevels(CSpecFile& spec);

  void NormalizePlain(const CRectF& frame);
  void NormalizeConic(const CRectF& frame);
  int LevelFor(const CMapOb& root) const;
  void StoreMap(CArchive& ar, int withFloatPass);
  void LoadMap(CArchive& ar, int withFloatPass);
  bool LoadTag(CArchive& ar);
  bool EndsInFloats(int nodes) const;

  // Of the compiled file loaded last: what its integer half takes, and what stands behind it.
  std::int64_t bytesOfIntegers = 0;
  std::int64_t bytesBehind = 0;
};

#endif  // VEXEL_MAP_MAP_H_
