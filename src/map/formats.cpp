#include "map/formats.h"

#include "platform/file.h"

namespace vexel {

namespace {

bool IsFile(const CString& path, CFileStatus& status) {
  return CFile::GetStatus(path.GetString(), status) != 0 && !status.isDirectory;
}

}  // namespace

bool IsCompiledMapName(std::string_view path) noexcept {
  constexpr std::string_view kEnd = "mpc";
  return path.size() >= kEnd.size() && EqualNoCase(path.substr(path.size() - kEnd.size()), kEnd);
}

CString NewerMapFile(const CString& name) {
  const CString compiled = name + ".mpc";
  const CString text = name + ".map";
  CFileStatus ofCompiled;
  CFileStatus ofText;
  const bool hasCompiled = IsFile(compiled, ofCompiled);
  const bool hasText = IsFile(text, ofText);
  if (hasText && (!hasCompiled || ofText.mtime > ofCompiled.mtime)) return text;
  return hasCompiled ? compiled : CString();
}

}  // namespace vexel
