#include "render/latin2.h"

#include <gtest/gtest.h>

namespace vexel::test {
namespace {

struct Drawn {
  const char* text;
  const char* bytes;
};

std::ostream& operator<<(std::ostream& out, const Drawn& drawn) { return out << drawn.text; }

class DrawnTextTest : public testing::TestWithParam<Drawn> {};

TEST_P(DrawnTextTest, GivesOneByteForEachCharacterDrawn) {
  EXPECT_EQ(DrawnText(GetParam().text), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(OfTheSet, DrawnTextTest,
                         testing::Values(Drawn{"", ""}, Drawn{"St. Mary's ~ 5%", "St. Mary's ~ 5%"},
                                         Drawn{"Côte d'Ivoire", "C\xF4te d'Ivoire"},
                                         Drawn{"Łódź",
                                               "\xA3\xF3"
                                               "d\xBC"},
                                         Drawn{"Baden-Württemberg", "Baden-W\xFCrttemberg"},
                                         Drawn{"˙ţ°", "\xFF\xFE\xB0"}));

INSTANTIATE_TEST_SUITE_P(OfOtherLetters, DrawnTextTest,
                         testing::Values(Drawn{"Åland", "Aland"}, Drawn{"Doña Ana", "Dona Ana"},
                                         Drawn{"Færøerne", "Faeroerne"},
                                         Drawn{"Đà Nẵng",
                                               "\xD0"
                                               "a Nang"},
                                         Drawn{"Iași, Timiș, Galați",
                                               "Ia\xBAi, Timi\xBA, Gala\xFEi"},
                                         Drawn{"ĿŉſƠẞỹ", "L'nsOSSy"},
                                         Drawn{"ÀÿĀžƀɏʉḀỿ",
                                               "AyA\xBE"
                                               "byuA?"}));

INSTANTIATE_TEST_SUITE_P(OfSigns, DrawnTextTest,
                         testing::Values(Drawn{"“10–20” … ‘x’", "\"10-20\" ... 'x'"},
                                         Drawn{"1\u00A0000\u202F000\u2009m\u00B2", "1 000 000 m2"},
                                         Drawn{"Hawaiʻi ‹a› «b» 5′ 6″", "Hawai'i <a> \"b\" 5' 6\""},
                                         Drawn{"≤ 5 € − ½", "<= 5 EUR - 1/2"},
                                         Drawn{"北京 Москва", "?? ??????"},
                                         Drawn{"\U0001F600", "?"}));

INSTANTIATE_TEST_SUITE_P(OfMarks, DrawnTextTest,
                         testing::Values(Drawn{"Co\u0302te", "Cote"}, Drawn{"\uFEFF"
                                                                            "a\u200B\uFE0F"
                                                                            "b",
                                                                            "ab"}));

// Cut, overlong, surrogate, too large, and bytes that begin nothing: they all stay.
INSTANTIATE_TEST_SUITE_P(OfBrokenBytes, DrawnTextTest,
                         testing::Values(Drawn{"C\xF4te", "C\xF4te"}, Drawn{"a\xC5", "a\xC5"},
                                         Drawn{"\xE2\x80", "\xE2\x80"}, Drawn{"\xC3(", "\xC3("},
                                         Drawn{"\xC0\xAF", "\xC0\xAF"},
                                         Drawn{"\xED\xA0\x80", "\xED\xA0\x80"},
                                         Drawn{"\xF4\x90\x80\x80", "\xF4\x90\x80\x80"},
                                         Drawn{"\xFF\x80", "\xFF\x80"},
                                         Drawn{"\xE2\x80Å",
                                               "\xE2\x80"
                                               "A"}));

}  // namespace
}  // namespace vexel::test
