// Reading the text form of a map.

#ifndef VEXEL_MAP_TEXT_READER_H_
#define VEXEL_MAP_TEXT_READER_H_

#include <span>
#include <string_view>
#include <vector>

#include "brindle/specfile.h"
#include "map/map.h"
#include "messages/messages.h"
#include "platform/remark.h"

namespace vexel {

// All headings and keywords of a map, as the documents write them.
std::span<const std::string_view> MapWords() noexcept;

// Reads from where its file is. Each operation takes lines until one that is not its own, which it
// gives back. What stops a load is told to the user, what is doubtful to the host; cancelling stops
// it without a word.
class MapReader {
 public:
  // `progress` may be null: no progress, no cancelling.
  MapReader(CSpecFile& spec, CProgressDlg* progress) noexcept : spec_(spec), progress_(progress) {}

  // What stands behind the heading of a map, to the end of the file. False when the load stops.
  bool ReadMap(CVELAMap& map);

  void ReadLevels(CVELAMap& map);

  // The section of one node with all below it. False when the load stops.
  bool ReadNode(CMapOb& node, bool isGroup, CRectF& fileBounds);

  // The lines of a polygon: sets `polygonBounds` and widens `fileBounds`, both with the smallest y
  // in `top`. False when the load stops.
  bool ReadPolygon(CPolygon& polygon, CRectF& polygonBounds, CRectF& fileBounds);

 private:
  // How the section of a node ends; `open` while it goes on.
  enum class NodeEnd { open, endGroup, nextNode, otherHeading, endOfFile, stopped };
  enum class LineKind { point, hole, heading, endOfFile, bad };

  bool ReadKeyword(CVELAMap& map, const CSpecFile::Line& line);
  bool ReadTree(CVELAMap& map);
  NodeEnd ReadLines(CMapOb& node, bool isGroup, CRectF& fileBounds);
  NodeEnd TakeHeading(CMapOb& node, const CSpecFile::Line& line, bool isGroup, CRectF& fileBounds);
  bool ReadChild(CMapOb& parent, bool isGroup, CRectF& fileBounds);
  bool ReadPolygonOf(CMapOb& node, CRectF& fileBounds);
  bool ReadKey(CMapOb& node, std::string_view codes);
  LineKind ReadLine(CPolygon& polygon, double& x, double& y);
  double ReadCoordinate(std::string_view text, const char* name);

  bool IsCancelled();
  void TellLine(Message number, std::string_view found);
  void RemarkHere(RemarkInfo remark) { RemarkAt(spec_.lineNumber, remark); }
  void RemarkAt(int line, RemarkInfo remark);
  void RemarkOnName(std::string_view name);
  void RemarkOnWord(std::string_view line);  // one that is not known
  void RemarkOnNode(const CMapOb& node, bool isGroup, NodeEnd end, int headingLine);
  void RemarkOnHole(const CSpecFile::Line& line);
  void RemarkOnRing(const CPolygon& polygon, const CRectF& bounds, int headingLine, int lastLine);
  void RemarkOnFrame(const CRectF& bounds);

  CSpecFile& spec_;
  CProgressDlg* progress_;
  const CMapOb* root_ = nullptr;
  const CMapOb* node_ = nullptr;  // whose section is read
  int depth_ = 0;                 // of groups around it
  bool inDegrees_ = false;
  std::vector<int> lines_;  // of the headings of all nodes below the root
};

}  // namespace vexel

#endif  // VEXEL_MAP_TEXT_READER_H_
