#include "platform/host.h"

#include <cstdio>
#include <utility>

namespace {

thread_local CHost* currentHost = nullptr;

}  // namespace

int CHost::ShowBox(const CString& text, unsigned /*flags*/) {
  std::fprintf(stderr, "%s\n", text.GetString());
  return answerOk;
}

int CHost::ShowMessage(const vexel::MessageInfo& message) {
  return ShowBox(message.text, message.flags);
}

CString CHost::GetProfileText(const char* /*section*/, const char* /*key*/,
                              const char* defaultText) {
  return defaultText;
}

CHost& CHost::GetCurrent() {
  static CHost defaultHost;
  return currentHost == nullptr ? defaultHost : *currentHost;
}

CHost* CHost::SetCurrent(CHost* host) { return std::exchange(currentHost, host); }

int AfxMessageBox(const CString& text, unsigned flags, unsigned /*help*/) {
  return CHost::GetCurrent().ShowBox(text, flags);
}
