// The publication page of a view: the same areas, classes, colours and titles as on its GIF page,
// in a composition of its own.

#ifndef VEXEL_KIT_PUBLISH_COMPOSE_H_
#define VEXEL_KIT_PUBLISH_COMPOSE_H_

#include "kit/publish/drawing.h"
#include "kit/view/view.h"

namespace vexel {

// Lays the page out in the size that the request says. Vertices lie a tenth of a page pixel apart
// at least, a quarter where the map has so many areas that they are a few pixels wide. What a user
// might not expect of the result is added to the view's notes. Throws an Error of kind request for
// a label that names nothing on show.
VEXEL_API Drawing Compose(View& view);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_COMPOSE_H_
