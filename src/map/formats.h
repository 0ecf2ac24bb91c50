// What the files of a map are called and what they call themselves.

#ifndef VEXEL_MAP_FORMATS_H_
#define VEXEL_MAP_FORMATS_H_

#include <string_view>

#include "platform/export.h"
#include "platform/string.h"

namespace vexel {

// The Version of the text forms of maps and data files: what is written, and what older data files
// have, in which the code 0 stands for none.
inline constexpr std::string_view kTextVersion = "Ortex 3.2";
inline constexpr std::string_view kOldTextVersion = "TAVO 4.1";

// How compiled maps begin, in any letter case: what is written, and what older ones have, in which
// the code 0 stands for none. A byte 0x1A follows.
inline constexpr std::string_view kCompiledTag = "Ortex 3.1";
inline constexpr std::string_view kOldCompiledTag = "TAVO MPC1";
inline constexpr char kBehindCompiledTag = '\x1A';

// Whether the name of a file makes it a compiled map: its last three characters are "mpc" in any
// letter case.
VEXEL_API bool IsCompiledMapName(std::string_view path) noexcept;

// The map that stands for a name without extension: of the compiled map NAME.mpc and the text map
// NAME.map the one changed last, with equal times the compiled one; empty when neither is a file.
VEXEL_API CString NewerMapFile(const CString& name);

}  // namespace vexel

#endif  // VEXEL_MAP_FORMATS_H_
