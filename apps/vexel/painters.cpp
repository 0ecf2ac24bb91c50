// The media of the program `vexel`: those that take no library of their own.

#include "commands.h"
#include "kit/publish/svg.h"
#include "program.h"

namespace vexel::cli {

const Program kProgram{"vexel", "vexel render", "gif"};

Painter PainterOf(const Medium& medium) {
  if (medium.name != "svg") return nullptr;
  return [](const Drawing& drawing, double /*scale*/) { return SvgText(drawing); };
}

}  // namespace vexel::cli
