// The raster canvas: a palette image that becomes a GIF file.

#ifndef VEXEL_RENDER_GIF_H_
#define VEXEL_RENDER_GIF_H_

#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "map/polygon.h"
#include "platform/export.h"
#include "platform/file.h"
#include "platform/geometry.h"
#include "platform/object.h"
#include "platform/string.h"
#include "render/vertex_buffer.h"

struct gdImageStruct;

namespace vexel {
class Axis;
class PolygonFiller;
struct Ring;
}  // namespace vexel

// Holds one image of gd's, a cache from colours to palette indexes, and the vertices of the polygon
// at work. Pixels have y growing downward from 0 at the top left. Colours are 0x00BBGGRR; the
// fourth byte is normally 0 but tells colours apart. What lies outside the image is dropped.
//
// Palette index 0 is white, the background, and index 1 is black. Drawing and saving without an
// image throws CInvalidArgException.
class VEXEL_API CGif : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  // An empty canvas, without an image.
  CGif();

  // An image of that size. A side outside 1 to 65535 throws CInvalidArgException.
  CGif(int imageWidth, int imageHeight, const CString& file);

  // An image for a source rectangle in the working space (y growing upward), 500 pixels on its
  // longer side. Throws CInvalidArgException for a rectangle without extent, or one so slender that
  // its shorter side is no pixel.
  CGif(const CRect& source, const CString& file);

  CGif(const CGif&) = delete;
  CGif& operator=(const CGif&) = delete;
  ~CGif() override;

  // The palette index of a colour, taking a new entry on first use. Past 256 entries it is the one
  // that comes closest.
  int GetRGB(unsigned long color);

  void SetPixel(int x, int y, unsigned long color);

  // The palette index of a pixel; -1 outside the image.
  int GetPixel(int x, int y) const;

  // Makes the polygon's integer points, scaled from the source rectangle, the polygon at work. The
  // ring begins at the first of those last vertices that lie on the row of vertex 0. Throws
  // CInvalidArgException for a polygon without points.
  void SetPolygon(const CPolygon* polygon);

  // The polygon at work: its outline in black or in a colour, and its inside by the even-odd rule.
  void DrawPolygon();
  void DrawOutlinePolygon(unsigned long color);
  void FillPolygon(unsigned long color);

  // The host's open file for area lines. It stays the host's and must outlive the drawing.
  void SetHtmlFile(CStdioFile* file) { htmlFile = file; }

  // The image as a GIF87a file.
  std::vector<unsigned char> GetFileBytes();

  // Writes the image as GIF87a under the canvas's file name. Nonzero when the file stands whole;
  // else the user has been told, and an earlier file stands as it was.
  int Save();

 protected:
  // Makes the image, white all over, in the size of `width` and `height`; one that is there already
  // goes.
  void CreateImage();
  void DestroyImage();

  // Sets `points` to the vertices of `ring`, each axis scaled on its own. The start vertex is told
  // by the rows that `startRow` gives.
  void SetRing(std::span<const CPoint> ring, const vexel::Axis& column, const vexel::Axis& row,
               const vexel::Axis& startRow);

  // The polygon at work; good until `points` changes.
  std::span<const CPoint> GetVertices() const;
  vexel::Ring GetRing() const;

  // The same without the vertices that make no difference to a pixel; good until the next one.
  vexel::Ring GetDistinctRing();

  gdImageStruct& GetImage();
  void OutlineIn(const vexel::Ring& ring, int paletteIndex);
  void FillIn(const vexel::Ring& ring, int paletteIndex);

  int ownsImage = 0;
  gdImageStruct* image = nullptr;
  int width = 0;
  int height = 0;
  vexel::VertexBuffer points;  // vertices of the polygon at work, in pixels: `numPoints` of them
  int numPoints = 0;
  std::vector<unsigned long> colorRgb;
  std::vector<int> colorIndex;
  int numColors = 0;
  int white = 0;
  int black = 0;
  CRect rect;
  CStdioFile* htmlFile = nullptr;
  CString fileName;

 private:
  std::unordered_map<std::uint32_t, int> indexes_;  // the colour cache once more, for looking up
  std::unique_ptr<vexel::PolygonFiller> filler_;
  vexel::VertexBuffer distinct_;
};

#endif  // VEXEL_RENDER_GIF_H_
