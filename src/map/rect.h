// The float rectangle of a map.

#ifndef VEXEL_MAP_RECT_H_
#define VEXEL_MAP_RECT_H_

#include "platform/export.h"
#include "platform/object.h"

// Four floats in map units. Which of top and bottom is the larger depends on the user; the bound of
// a node keeps the largest y in `top`.
class VEXEL_API CRectF : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  CRectF() = default;
  CRectF(float l, float t, float r, float b) : left(l), top(t), right(r), bottom(b) {}

  // Puts left and right, and top and bottom, into ascending order; unordered values stay.
  void NormalizeRect();

  float Width() const { return right - left; }
  float Height() const { return bottom - top; }  // negative on the bound of a node

  // Becomes the smallest rectangle around both, component by component; both are taken as ordered,
  // and a null rectangle counts as its four zeros. This rectangle may be one of the two.
  void UnionRect(const CRectF* a, const CRectF* b);

  // 1 when all four are exactly 0.
  int IsRectNull() const;

  float left = 0.0F;
  float top = 0.0F;
  float right = 0.0F;
  float bottom = 0.0F;
};

#endif  // VEXEL_MAP_RECT_H_
