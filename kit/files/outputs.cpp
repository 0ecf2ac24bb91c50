#include "kit/files/outputs.h"

#include "kit/files/files.h"
#include "kit/request/error.h"

namespace vexel {

void OpenOutput(CFile& file, const std::string& path) {
  if (file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite) == 0) {
    const std::string reason = file.GetReason();
    throw Failed(path, "cannot be opened for writing" + (reason.empty() ? "" : ": " + reason));
  }
}

void ThrowUnwritten(const CFile& file, const std::string& name) {
  const std::string reason = file.GetReason();
  throw Failed(name, "cannot be written" + (reason.empty() ? "" : ": " + reason));
}

void CheckWhole(CFile& file, const std::string& name) {
  if (!file.IsOpen()) return;
  file.Flush();
  if (file.HasFailed()) ThrowUnwritten(file, name);
}

void Finish(CFile& file, const std::string& name) {
  if (file.Close() == 0) ThrowUnwritten(file, name);
}

void TextOutput::Write() {
  if (name.empty() || IsStandard(name)) return;
  OpenOutput(file, name);
  file.Write(text.data(), text.size());
  CheckWhole(file, name);
}

void TextOutput::Deliver() {
  if (name.empty()) return;
  if (IsStandard(name)) {
    WriteText(name, text);
  } else {
    Finish(file, name);
  }
}

}  // namespace vexel
