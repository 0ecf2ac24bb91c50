// Room for the vertices of a polygon in pixels.

#ifndef VEXEL_RENDER_VERTEX_BUFFER_H_
#define VEXEL_RENDER_VERTEX_BUFFER_H_

#include <cstddef>
#include <memory>
#include <new>
#include <span>

#include "platform/geometry.h"

namespace vexel {

// Holds 64000 vertices from the start, for a polygon that is written in place, and grows for a
// longer one. What has not been written has no value: the room is taken but not touched, so that a
// page which needs a few vertices does not pay for the rest.
class VertexBuffer {
 public:
  VertexBuffer() : VertexBuffer(kFirstRoom) {}

  // Grows to that size if it is smaller; the vertices are lost then.
  void MakeRoom(std::size_t size) {
    if (size > size_) *this = VertexBuffer(size);
  }

  std::size_t size() const { return size_; }
  CPoint* data() { return room_.get(); }
  const CPoint* data() const { return room_.get(); }
  CPoint* begin() { return data(); }
  const CPoint* begin() const { return data(); }
  CPoint* end() { return data() + size_; }
  const CPoint* end() const { return data() + size_; }
  CPoint& operator[](std::size_t index) { return std::span(*this)[index]; }
  const CPoint& operator[](std::size_t index) const { return std::span(*this)[index]; }

 private:
  static constexpr std::size_t kFirstRoom = 64000;

  struct Release {
    void operator()(CPoint* room) const { ::operator delete(room); }
  };

  explicit VertexBuffer(std::size_t size)
      : room_(static_cast<CPoint*>(::operator new(size * sizeof(CPoint)))), size_(size) {}

  std::unique_ptr<CPoint, Release> room_;
  std::size_t size_;
};

}  // namespace vexel

#endif  // VEXEL_RENDER_VERTEX_BUFFER_H_
