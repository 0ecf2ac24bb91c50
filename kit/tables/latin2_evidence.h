// Whether a text with one byte a letter is in a western encoding or in that of central Europe.

#ifndef VEXEL_KIT_TABLES_LATIN2_EVIDENCE_H_
#define VEXEL_KIT_TABLES_LATIN2_EVIDENCE_H_

#include <string_view>

namespace vexel {

// True when more letters stand as they do in Czech, Slovak, Polish, Croatian or Hungarian words in
// ISO 8859-2 than as in western words in windows-1252. Never with a byte between 0x80 and 0x9F,
// where only the latter has letters and quotes.
bool SpeaksForLatin2(std::string_view bytes) noexcept;

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_LATIN2_EVIDENCE_H_
