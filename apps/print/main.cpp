// The program `vexel-print`: the command `vexel render` with the media that take libraries of their
// own.

#include <glib.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "commands.h"
#include "host.h"
#include "kit/publish/svg.h"
#include "page_pdf.h"
#include "page_png.h"
#include "program.h"
#include "texts.h"
#include "vexel/version.h"

namespace vexel::cli {

const Program kProgram{"vexel-print", "vexel-print", "png"};

Painter PainterOf(const Medium& medium) {
  if (medium.name == "svg") {
    return [](const Drawing& drawing, double /*scale*/) { return SvgText(drawing); };
  }
  if (medium.name != "png" && medium.name != "pdf") return nullptr;
  // While the map is read.
  print::PrepareFonts();
  return medium.name == "png" ? print::PagePng : print::PagePdf;
}

namespace {

// What GLib tells, which ends the program behind its worst news.
GLogWriterOutput TellOfGlib(GLogLevelFlags level, const GLogField* fields, gsize count,
                            gpointer /*data*/) {
  if ((level & (G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING)) == 0) {
    return G_LOG_WRITER_HANDLED;
  }
  std::string_view message;
  for (gsize i = 0; i < count; ++i) {
    if (std::string_view(fields[i].key) != "MESSAGE") continue;
    message = static_cast<const char*>(fields[i].value);
  }
  const bool isMemory = message.find("failed to allocate") != std::string_view::npos;
  Say(isMemory ? kNoMemory : message);
  if ((level & G_LOG_LEVEL_ERROR) != 0) std::_Exit(kFailed);
  return G_LOG_WRITER_HANDLED;
}

int Run(int argc, const char* const* argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--version") {
    std::puts("vexel-print " VEXEL_VERSION);
    return kDone;
  }
  g_log_set_writer_func(TellOfGlib, nullptr, nullptr);
  CliHost host;
  const CurrentHost current(host);
  const int status = Render(argc, argv, host);
  host.TellOfMoreRemarks();
  return status;
}

}  // namespace

}  // namespace vexel::cli

int main(int argc, char** argv) { return vexel::cli::RunToStatus(vexel::cli::Run, argc, argv, ""); }
