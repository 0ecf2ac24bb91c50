// A second variable beside the one on show.

#ifndef VEXEL_KIT_SITE_COMPARED_H_
#define VEXEL_KIT_SITE_COMPARED_H_

#include <string>

#include "kit/view/view.h"

namespace vexel {

// The view must outlive it; it may show something else in between.
class VEXEL_API ComparedColumn {
 public:
  // A variable by its name or number. Throws an Error of kind request.
  ComparedColumn(View& view, const std::string& variable);

  int Column() const { return column_; }
  std::string Name() const;

  // The value of an area, as text.
  std::string TextFor(const CMapOb& area) const;

 private:
  View* view_;
  int column_;
};

}  // namespace vexel

#endif  // VEXEL_KIT_SITE_COMPARED_H_
