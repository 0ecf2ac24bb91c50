#include "flat_page.h"

#include <array>
#include <cstdio>
#include <stdexcept>

namespace vexel {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File OpenFile(const std::string& path, const char* mode) {
  File file(std::fopen(path.c_str(), mode));
  if (!file) throw std::runtime_error("cannot open the file of the page");
  return file;
}

template <typename Element>
void Put(std::FILE* file, const Element* elements, std::size_t count) {
  if (std::fwrite(elements, sizeof(Element), count, file) != count) {
    throw std::runtime_error("the file of the page cannot be written");
  }
}

template <typename Element>
void Take(std::FILE* file, Element* elements, std::size_t count) {
  if (std::fread(elements, sizeof(Element), count, file) != count) {
    throw std::runtime_error("the file of the page ends early");
  }
}

int AllocateColor(gdImage* image, std::uint32_t color) {
  const auto part = [color](unsigned shift) { return static_cast<int>(color >> shift & 0xFFU); };
  return gdImageColorAllocate(image, part(0), part(8), part(16));
}

}  // namespace

void WriteFlatPage(const FlatPage& page, const std::string& path) {
  const File file = OpenFile(path, "wb");
  const std::array<int, 5> sizes = {page.width, page.height, static_cast<int>(page.colors.size()),
                                    static_cast<int>(page.polygons.size()),
                                    static_cast<int>(page.points.size())};
  Put(file.get(), sizes.data(), sizes.size());
  Put(file.get(), page.colors.data(), page.colors.size());
  Put(file.get(), page.polygons.data(), page.polygons.size());
  Put(file.get(), page.points.data(), page.points.size());
}

FlatPage ReadFlatPage(const std::string& path) {
  const File file = OpenFile(path, "rb");
  std::array<int, 5> sizes{};
  Take(file.get(), sizes.data(), sizes.size());
  FlatPage page{.width = sizes[0],
                .height = sizes[1],
                .colors = std::vector<std::uint32_t>(static_cast<std::size_t>(sizes[2])),
                .polygons = std::vector<FlatPage::Polygon>(static_cast<std::size_t>(sizes[3])),
                .points = std::vector<gdPoint>(static_cast<std::size_t>(sizes[4]))};
  Take(file.get(), page.colors.data(), page.colors.size());
  Take(file.get(), page.polygons.data(), page.polygons.size());
  Take(file.get(), page.points.data(), page.points.size());
  return page;
}

GdCanvas::GdCanvas(FlatPage& page) : page_(page), image_(gdImageCreate(page.width, page.height)) {
  gdImageColorAllocate(image_.get(), 0xFF, 0xFF, 0xFF);
  black_ = gdImageColorAllocate(image_.get(), 0, 0, 0);
  for (const std::uint32_t color : page.colors) {
    colors_.push_back(AllocateColor(image_.get(), color));
  }
}

void GdCanvas::Draw() {
  for (const FlatPage::Polygon& polygon : page_.polygons) {
    Fill(polygon);
    Outline(polygon);
  }
}

void GdCanvas::Fill() {
  for (const FlatPage::Polygon& polygon : page_.polygons) Fill(polygon);
}

void GdCanvas::Outline() {
  for (const FlatPage::Polygon& polygon : page_.polygons) Outline(polygon);
}

void GdCanvas::Fill(const FlatPage::Polygon& polygon) {
  gdImageFilledPolygon(image_.get(), Points(polygon), polygon.count,
                       colors_[static_cast<std::size_t>(polygon.color)]);
}

void GdCanvas::Outline(const FlatPage::Polygon& polygon) {
  gdImagePolygon(image_.get(), Points(polygon), polygon.count, black_);
}

gdPoint* GdCanvas::Points(const FlatPage::Polygon& polygon) {
  return page_.points.data() + polygon.first;
}

void GdCanvas::Save(const std::string& path) {
  int size = 0;
  const std::unique_ptr<void, void (*)(void*)> bytes(gdImageGifPtr(image_.get(), &size), gdFree);
  if (!bytes) throw std::runtime_error("gd made no picture");
  const File file = OpenFile(path, "wb");
  Put(file.get(), static_cast<const char*>(bytes.get()), static_cast<std::size_t>(size));
}

}  // namespace vexel
