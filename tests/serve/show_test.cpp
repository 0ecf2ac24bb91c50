// Addresses: every state has one, it reads back, and any bytes will do.

#include "apps/serve/show.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>

#include "kit/request/parameters.h"

namespace vexel::serve {
namespace {

using Random = std::mt19937;

std::string AnyText(Random& random) {
  constexpr std::array kTexts{"a",  "two words", "48",   "../x",    "a/b?c#d&e=f", "100%",
                              "+-", "Do\u00F1a", "\xFF", "map.gif", "%2F",         "\u05E9"};
  return kTexts[random() % kTexts.size()];
}

CAreaStruct AnyKey(Random& random) {
  CAreaStruct key;
  for (std::size_t i = 0; i <= random() % 3; ++i)
    key.codes[i] = static_cast<int>(random() % 90) - 9;
  return key;
}

Show AnyShow(Random& random) {
  const auto maybe = [&] { return random() % 3 == 0; };
  Show show;
  show.set = AnyText(random);
  if (maybe()) show.request.zoom = AnyKey(random);
  if (maybe()) show.request.variable = AnyText(random);
  if (maybe()) show.request.level = 1 + static_cast<int>(random() % 7);
  if (maybe()) show.request.groups = 1 + static_cast<int>(random() % 7);
  if (maybe()) show.request.bounds = {-1.5, 0.0, 1e21};
  if (maybe()) show.request.groupNames = {"a, b", "c&d", ""};
  if (maybe()) show.request.publication.title = AnyText(random);
  if (maybe()) show.request.outlines = {AnyKey(random), AnyKey(random)};
  if (maybe()) show.request.reverse = true;
  if (maybe()) show.with = AnyText(random);
  if (maybe()) show.sort = kSorts[random() % kSorts.size()];
  show.down = !show.sort.empty() && maybe();
  if (maybe()) show.find = AnyText(random);
  if (maybe()) show.in = static_cast<int>(random() % 8);
  if (maybe()) {
    show.area = AnyKey(random);
  } else if (maybe()) {
    show.rows = 1 + static_cast<int>(random() % 999);
  }
  return show;
}

TEST(Address, ReadsBackAsTheSameState) {
  Random random{1};
  for (int i = 0; i < 2000; ++i) {
    const Show show = AnyShow(random);
    const std::string address = AddressOf(show);
    const auto read = ReadTarget(address);
    ASSERT_TRUE(read) << address;
    EXPECT_EQ(read->part, Part::page) << address;
    EXPECT_EQ(read->show.set, show.set) << address;
    EXPECT_TRUE(AskTheSame(read->show.request, show.request)) << address;
    EXPECT_EQ(std::tie(read->show.with, read->show.sort, read->show.down, read->show.find,
                       read->show.in, read->show.rows, read->show.area),
              std::tie(show.with, show.sort, show.down, show.find, show.in, show.rows, show.area))
        << address;
    EXPECT_EQ(read->show.problems, std::vector<std::string>()) << address;
    EXPECT_EQ(AddressOf(read->show), address);
    for (const Part part : {Part::gif, Part::svg, Part::csv, Part::outlines, Part::at}) {
      const auto other = ReadTarget(AddressOf(show, part));
      ASSERT_TRUE(other) << address;
      EXPECT_EQ(other->part, part);
      EXPECT_TRUE(AskTheSame(other->show.request, show.request)) << address;
    }
  }
}

TEST(Address, TakesAnyBytes) {
  Random random{2};
  for (int i = 0; i < 8000; ++i) {
    std::string address = AddressOf(AnyShow(random), static_cast<Part>(random() % 10));
    for (std::size_t change = random() % 4; change > 0; --change) {
      const std::size_t at = random() % (address.size() + 1);
      address.insert(at, 1,
                     "/?&=%,+;\0\xFF"
                     "0a"[random() % 12]);
    }
    const auto read = ReadTarget(address);
    if (!read) continue;
    const std::string normal = AddressOf(read->show);
    const auto again = ReadTarget(normal);
    ASSERT_TRUE(again) << normal;
    EXPECT_EQ(AddressOf(again->show), normal) << address;
  }
}

TEST(Address, ComesInManyForms) {
  const std::map<std::string, std::string> normal{
      {"/a/", "/a"},
      {"/a/12/3/", "/a/12/3"},
      {"/a/007?var=1", "/a/7"},
      {"/a?zoom=12,3", "/a/12/3"},
      {"/a/5?zoom=12,3", "/a/5"},
      {"/a+b?var=c+d", "/a%2Bb?var=c%20d"},
      // As forms have it: what was left alone, commas, a field for each value.
      {"/a?var=&calc=&groups=&bounds=&midpoint=&find=&in=&rows=", "/a"},
      {"/a?bounds=1%2C+2.50%2C3", "/a?bounds=1,2.5,3"},
      {"/a?group-names=x%2Cy&group-names=z", "/a?group-names=x%2Cy,z"},
      {"/a?title=", "/a?title="},
      {"/a?down=1", "/a"},
      {"/a?sort=name&down", "/a?sort=name&down=1"},
      {"/a?rows=7&area=3", "/a?area=3"},
  };
  for (const auto& [address, wanted] : normal) {
    const auto read = ReadTarget(address);
    ASSERT_TRUE(read) << address;
    EXPECT_EQ(AddressOf(read->show), wanted) << address;
    EXPECT_EQ(read->show.problems, std::vector<std::string>()) << address;
  }
  for (const std::string none :
       {"", "a", "/", "//", "/?a=b", "/a/b", "/a/1/map.gif/2", "/a/map.gif/map.gif",
        "/a/99999999999", "/a//1", "/a/1/2/3/4/5/6/7/8/9"}) {
    EXPECT_FALSE(ReadTarget(none)) << none;
  }
}

TEST(Address, TellsWhatCannotBe) {
  const auto read =
      ReadTarget("/a?sort=size&in=9&rows=0&down=x&area=&key=x&wrong=1&groups=12&var=4");
  ASSERT_TRUE(read);
  EXPECT_EQ(AddressOf(read->show), "/a?var=4");
  ASSERT_EQ(read->show.problems.size(), 7U);
  EXPECT_EQ(read->show.problems.front(), "sort: \"size\" is none of name, value, parent");
}

TEST(Address, NamesAPlaceOfThePicture) {
  for (const std::string address :
       {"/a/go?12,34", "/a/go?level=2?12,34", "/a/go?level=2&x=12&y=34"}) {
    const auto read = ReadTarget(address);
    ASSERT_TRUE(read && read->pixel) << address;
    EXPECT_EQ(*read->pixel, CPoint(12, 34)) << address;
    EXPECT_EQ(read->show.problems, std::vector<std::string>()) << address;
  }
  EXPECT_FALSE(ReadTarget("/a/go?level=2?12,x")->pixel);
  const auto at = ReadTarget("/a/at.json?key=12,3&way=up");
  EXPECT_EQ(at->key->GetLevel(), 2);
  EXPECT_EQ(at->way, Way::up);
}

}  // namespace
}  // namespace vexel::serve
