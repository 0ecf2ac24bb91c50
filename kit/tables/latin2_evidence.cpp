#include "kit/tables/latin2_evidence.h"

#include <cstddef>
#include <cstdint>

namespace vexel {

namespace {

using Byte = unsigned char;

// The letters of both encodings at once; those above 0xC0 are letters in either.
constexpr bool IsLetter(Byte c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= 0xC0 && c != 0xD7 && c != 0xF7);
}

// Upper and lower case stand 32 apart, from 0xC0 on as in ASCII.
constexpr Byte Lower(Byte c) {
  return (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c < 0xDF) ? c + 32 : c;
}

// Vowels in both, and one that is an e in the one and an i in the other.
constexpr bool IsVowel(Byte c) {
  constexpr std::string_view kVowels = "aeiou\xE1\xE9\xED\xF3\xFA\xEC";
  return kVowels.find(static_cast<char>(Lower(c))) != std::string_view::npos;
}
constexpr bool IsConsonant(Byte c) { return IsLetter(c) && !IsVowel(c) && Lower(c) != 'y'; }

// What a byte below 0xC0 is: a letter of central Europe, a sign in the west.
enum class Place {
  none,
  within,   // says something between two letters only: superscripts follow a word as well
  initial,  // also before a vowel: currency and copyright signs stand before words, too
  final,    // also at the end of a word
};

constexpr Place PlaceOf(Byte c) {
  constexpr std::string_view kWithin = "\xAA\xB1\xB3\xB5\xB6\xB9\xBA";
  constexpr std::string_view kInitial = "\xA3\xA5\xA6\xA9\xAC\xAE\xAF";
  constexpr std::string_view kFinal = "\xBC\xBE\xBF";
  const auto isIn = [c](std::string_view set) {
    return set.find(static_cast<char>(c)) != std::string_view::npos;
  };
  if (isIn(kWithin)) return Place::within;
  if (isIn(kInitial)) return Place::initial;
  return isIn(kFinal) ? Place::final : Place::none;
}

// The letters around one; 0 for what is none.
struct Neighbours {
  Byte before = 0;
  Byte after = 0;
};

int WeightOfSign(Place place, Neighbours of) {
  constexpr int kClear = 3;
  constexpr int kLikely = 2;
  if (of.before != 0 && of.after != 0) return kClear;
  // A sign stands before names as well, which begin with a capital.
  const bool isCapitalNext = of.after >= 'A' && of.after <= 'Z';
  const bool isVowelNext = IsVowel(of.after) || of.after == 'y';
  if (place == Place::initial && of.before == 0 && isVowelNext && !isCapitalNext) return kLikely;
  return place == Place::final && of.before != 0 ? kLikely : 0;
}

// A consonant of central Europe where the west has a vowel: c, r, n with a hook.
int WeightOfConsonant(Neighbours of) {
  if (IsVowel(of.after)) return 1;
  const bool isVowelBefore = IsVowel(of.before) && Lower(of.before) != 'i';
  if (isVowelBefore && of.after != 'y') return 1;
  return IsConsonant(of.before) || IsConsonant(of.after) ? -1 : 0;
}

// An o or u with two acutes, or with a tilde or hat: nothing but a text that has the long a as
// well, as Czech, Slovak and Hungarian do, tells which.
constexpr bool NeedsLongA(Byte c) { return Lower(c) == 0xF5 || Lower(c) == 0xFB; }

// Above 0 for central Europe, below for the west.
int WeightOfLetter(Byte c, Neighbours of) {
  switch (Lower(c)) {
    case 0xE8:  // c with hook, e with grave
    case 0xF8:  // r with hook, o with stroke
    case 0xF2:  // n with hook, o with grave
      return WeightOfConsonant(of);
    case 0xE6:  // c with acute, the letter ae
      return IsVowel(of.before) ? 1 : -1;
    case 0xE0:  // a rare r, a with grave
    case 0xE5:  // a rare l, a with ring
    case 0xFE:  // t with cedilla, thorn
      return -1;
    case 0xE3:  // a with breve, a with tilde
      return of.after == 'o' || of.after == 'e' ? -1 : 0;
    case 0xEC:  // e with hook, i with grave
      return of.before != 0 && of.after != 0 ? 1 : 0;
    case 0xF1:  // n with acute, n with tilde
      return IsVowel(of.after) ? -1 : of.before != 0 ? 1 : 0;
    case 0xF9:  // u with ring, u with grave
      return IsConsonant(of.after) ? 1 : 0;
    default:
      return 0;
  }
}

// What a byte says as the neighbour of another: itself where it is a letter in both encodings.
Byte Neighbour(std::string_view bytes, std::size_t at) {
  if (at >= bytes.size()) return 0;
  const auto c = static_cast<Byte>(bytes[at]);
  return IsLetter(c) ? c : 0;
}

}  // namespace

bool SpeaksForLatin2(std::string_view bytes) noexcept {
  std::int64_t weight = 0;
  std::int64_t weightWithLongA = 0;
  bool hasLongA = false;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const auto c = static_cast<Byte>(bytes[at]);
    if (c < 0x80) continue;
    if (c < 0xA0) return false;
    hasLongA = hasLongA || Lower(c) == 0xE1;
    const Neighbours of{at == 0 ? Byte{0} : Neighbour(bytes, at - 1), Neighbour(bytes, at + 1)};
    const Place place = PlaceOf(c);
    if (place != Place::none) {
      weight += WeightOfSign(place, of);
    } else if (NeedsLongA(c)) {
      weightWithLongA += of.after == 'e' ? -1 : 1;
    } else {
      weight += WeightOfLetter(c, of);
    }
  }
  return weight + (hasLongA ? weightWithLongA : 0) > 0;
}

}  // namespace vexel
