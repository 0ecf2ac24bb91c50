// A page with its web page and its report.

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"
#include "kit/report/summary.h"
#include "kit/report/write_page.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/json_request.h"
#include "kit/view/view.h"
#include "other_program.h"
#include "program.h"

namespace vexel::cli {

namespace {

std::vector<std::string_view> MediaNames() {
  std::vector<std::string_view> names;
  for (const Medium& medium : Media()) names.push_back(medium.name);
  return names;
}

// The medium that --format or else the picture's name asks for. A name that promises another
// picture, or a terminal, gets none.
const Medium& MediumFor(const std::string& format, const std::string& name) {
  if (IsStandard(name) && ::isatty(STDOUT_FILENO) != 0) {
    throw WrongRequest("a picture is nothing for a terminal: -o PAGE.gif, or redirect the output");
  }
  const Medium* const said = FindMedium(format);
  if (said == nullptr && !format.empty()) {
    throw WrongRequest("--format: " + Quoted(format) + " is none of " + Joined(MediaNames()) +
                       Hint(format, MediaNames()));
  }
  const Medium* const promised = MediumOfFile(name);
  const Medium& medium = said != nullptr       ? *said
                         : promised != nullptr ? *promised
                                               : *FindMedium(kProgram.medium);
  constexpr std::array<std::string_view, 6> kOthers{".jpg", ".jpeg", ".webp",
                                                    ".tif", ".tiff", ".bmp"};
  const std::string extension = std::filesystem::path(name).extension();
  const bool isOther = std::any_of(kOthers.begin(), kOthers.end(), [&](std::string_view other) {
    return EqualNoCase(other, extension);
  });
  if (!isOther && (promised == nullptr || promised == &medium)) return medium;
  throw WrongRequest(name + ": a name that ends in " + extension +
                     " would not be true; pages are " +
                     (isOther ? "of the formats " + Joined(MediaNames())
                              : "of that format with --format " + std::string(promised->name)));
}

// Has the program that draws the medium do all of it. A view that was read from standard input
// cannot be read again, so that what it has come to goes there.
int RunPrinter(const Medium& medium, const Request& request, const std::string& viewFile,
               const char* const* argv) {
  std::string name(medium.name);
  std::transform(name.begin(), name.end(), name.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return RunOtherProgram(std::string(medium.program), name + " pages are drawn by", argv,
                         IsStandard(viewFile) ? JsonText(request) : "");
}

void CheckStrictly(const CliHost& host, const Request& request) {
  const std::size_t doubts = host.GetRemarkCount();
  const std::size_t lost = host.GetLostRows().size();
  if (doubts == 0 && lost == 0) return;
  throw Failed(request.data, Counted(doubts, "doubtful place") + " and " +
                                 Counted(lost, "lost row") + ", of which --strict takes none");
}

// No two outputs go to one file, and none to a file that is read.
void CheckOutputs(const PageFiles& files, const std::vector<std::string>& inputs) {
  const std::array<const std::string*, 4> outputs{&files.picture, &files.html, &files.report,
                                                  &files.view};
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    const std::string& output = *outputs[i];
    if (output.empty()) continue;
    const auto isIt = [&](const std::string& other) { return IsSameFile(other, output); };
    if (std::any_of(outputs.begin() + i + 1, outputs.end(),
                    [&](const std::string* other) { return isIt(*other); })) {
      throw WrongRequest(output + " cannot be written as two things");
    }
    if (!IsStandard(output) && std::any_of(inputs.begin(), inputs.end(), isIt)) {
      throw WrongRequest(output + " would take the place of a file that the page is made from");
    }
  }
  if (IsStandard(files.picture) && !files.html.empty()) {
    throw WrongRequest("--html needs a picture with a name: -o PAGE.gif");
  }
}

// The map in either form, whichever was loaded.
std::vector<std::string> FormsOf(const CVELAMap& map) {
  const std::string file(map.GetFileStatus().fullName.View());
  if (file.empty()) return {};
  return {file, WithExtension(file, ".map"), WithExtension(file, ".mpc")};
}

// The picture's name when none is given: that of the data file, in the working folder.
std::string PictureFor(const std::string& data, const std::string& format) {
  const std::string extension = '.' + std::string(format.empty() ? kProgram.medium : format);
  if (IsStandard(data)) return "page" + extension;
  return WithExtension(data.substr(FolderOf(data).size()), extension);
}

}  // namespace

int Render(int argc, const char* const* argv, CliHost& host) {
  Request request;
  PageFiles files;
  bool quiet = false;
  bool strict = false;
  std::string format;
  Arguments arguments(std::string(kProgram.render),
                      "Draw a map page: a GIF, or a page for publication as SVG, PDF or PNG, by how"
                      " the picture's name ends. Without -o the picture gets the name of DATA and"
                      " stands in the working folder; - is standard output. All files are whole"
                      " before the first takes its place; a run that is killed just then may leave"
                      " a new picture beside an old web page or report: run it again.",
                      std::string(kProgram.render) +
                          " counties.mdf --level 2 --var \"Unemployment rate 2009\" "
                          "-o page.svg --html page.html");
  arguments.Group("Output");
  arguments.Option("-o,--output", "FILE", "The picture", files.picture);
  arguments.Option("--format", "WORD",
                   "Of the picture: " + Joined(MediaNames()) + " [by its name, else " +
                       std::string(kProgram.medium) + ']',
                   format);
  arguments.Option("--html", "FILE", "A web page around the picture that tells each area's value",
                   files.html);
  arguments.Option("--report", "FILE", "What the page was made from, as JSON", files.report);
  arguments.Option("--save-view", "FILE", "What was asked for, as JSON for --view", files.view);
  arguments.Flag("--quiet", "No summary, no notes on the page and no progress", quiet);
  arguments.Flag("--strict", "Refuse doubtful input, and rows whose area the map does not have",
                 strict);
  arguments.RequestOptions(request);
  if (!arguments.Parse(argc, argv)) return kDone;
  GroupingOf(request);
  if (files.picture.empty()) files.picture = PictureFor(request.data, format);
  const Medium& medium = MediumFor(format, files.picture);
  CheckOutputs(files, {request.data, request.map, arguments.ViewFile()});
  if (medium.name == "pdf" && !files.html.empty()) {
    throw WrongRequest("--html: a browser shows no PDF in a page; take SVG or PNG");
  }
  const Painter paint = PainterOf(medium);
  if (paint == nullptr && !medium.program.empty()) {
    return RunPrinter(medium, request, arguments.ViewFile(), argv);
  }
  host.SetProgressWanted(!quiet);
  host.SetRemarksWanted(!quiet);

  // Kept to the end of the process, whose memory goes faster as a whole than node by node.
  static View& view = *std::make_unique<View>(request, &host).release();
  CheckOutputs(files, FormsOf(view.map));
  if (strict) CheckStrictly(host, request);
  // Once the files stand in their places nothing may fail any more.
  const std::string summary = quiet ? "" : SummaryText(view);
  if (paint == nullptr) {
    WritePage(view, files);
  } else {
    WritePublication(view, files, paint);
  }
  if (quiet) return kDone;
  for (const std::string& note : view.notes) Say(note);
  std::fputs(summary.c_str(), stderr);
  return kDone;
}

}  // namespace vexel::cli
