#include "platform/profile.h"

#include "platform/host.h"

namespace vexel {

namespace {

char FirstCharacter(const char* key, const char* defaultText, char whenEmpty) {
  const CString text = CHost::GetCurrent().GetProfileText("intl", key, defaultText);
  if (text.IsEmpty()) return whenEmpty;
  // Of what is no ASCII, such as a narrow no-break space, a first byte alone would break the text.
  const char first = text.GetAt(0);
  return static_cast<unsigned char>(first) < 0x80 ? first : ' ';
}

}  // namespace

NumberSeparators MachineSeparators(NumberSeparators whenEmpty) {
  return {FirstCharacter("sThousand", ",", whenEmpty.thousand),
          FirstCharacter("sDecimal", ".", whenEmpty.decimal)};
}

}  // namespace vexel
