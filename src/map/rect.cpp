#include "map/rect.h"

#include <algorithm>
#include <utility>

CObject* CRectF::CreateObject() { return new CRectF; }

CRuntimeClass* CRectF::GetThisClass() {
  static constinit CRuntimeClass record{"CRectF", &CRectF::CreateObject, &CObject::GetThisClass};
  return &record;
}

CRuntimeClass* CRectF::GetRuntimeClass() const { return GetThisClass(); }

void CRectF::NormalizeRect() {
  if (left > right) std::swap(left, right);
  if (top > bottom) std::swap(top, bottom);
}

void CRectF::UnionRect(const CRectF* a, const CRectF* b) {
  const CRectF united(std::min(a->left, b->left), std::min(a->top, b->top),
                      std::max(a->right, b->right), std::max(a->bottom, b->bottom));
  *this = united;
}

int CRectF::IsRectNull() const {
  return left == 0.0F && top == 0.0F && right == 0.0F && bottom == 0.0F ? 1 : 0;
}
