// The files of a page, each of which is whole before the first of them takes its place.

#ifndef VEXEL_KIT_FILES_OUTPUTS_H_
#define VEXEL_KIT_FILES_OUTPUTS_H_

#include <vexel/platform/file.h>

#include <string>
#include <string_view>

namespace vexel {

// Opens a file to be written. Like the next ones, throws an Error of kind failure that names it.
void OpenOutput(CFile& file, const std::string& path);

[[noreturn]] void ThrowUnwritten(const CFile& file, const std::string& name);

// Makes sure that the file has taken everything, though it does not stand in its place yet. One
// that is not open has nothing to take.
void CheckWhole(CFile& file, const std::string& name);

// Lets it take its place.
void Finish(CFile& file, const std::string& name);

// An output that is one text; none without a name.
struct VEXEL_API TextOutput {
  std::string name;
  std::string text;
  CFile file{};

  // Writes the text, unless that is for standard output, which comes last.
  void Write();

  // Takes no memory.
  void Deliver();
};

}  // namespace vexel

#endif  // VEXEL_KIT_FILES_OUTPUTS_H_
