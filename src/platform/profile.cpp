#include "platform/profile.h"

#include "platform/host.h"

namespace vexel {

namespace {

char FirstCharacter(const char* key, const char* defaultText, char whenEmpty) {
  const CString text = CHost::GetCurrent().GetProfileText("intl", key, defaultText);
  return text.IsEmpty() ? whenEmpty : text.GetAt(0);
}

}  // namespace

NumberSeparators MachineSeparators(NumberSeparators whenEmpty) {
  return {FirstCharacter("sThousand", ",", whenEmpty.thousand),
          FirstCharacter("sDecimal", ".", whenEmpty.decimal)};
}

}  // namespace vexel
