// The user's locale decides between which digits commas and dots stand, and nothing else.

#include "cli_fixture.h"

namespace vexel::test {
namespace {

TEST_F(Cli, TakesSeparatorsFromTheEnvironment) {
#ifdef VEXEL_COMMA_LOCALE
  RunOptions abroad;
  abroad.environment = {"LOCPATH=" VEXEL_LOCALES_DIR, "LC_ALL=" VEXEL_COMMA_LOCALE};
  const std::string page = "render land.mdf --level 2 --var 2 -o a.gif --html a.html --quiet";
  ASSERT_EQ(Call(page, abroad).status, 0);
  const std::string picture = folder.Read("a.gif");
  const std::string html = folder.Read("a.html");
  EXPECT_NE(html.find("1,5"), html.npos);
  ASSERT_EQ(Call(page + " --separators .,").status, 0);
  EXPECT_TRUE(folder.Read("a.gif") == picture);
  EXPECT_TRUE(folder.Read("a.html") == html);

  const std::string written = Call("convert land.mdf -o -", abroad).out;
  EXPECT_NE(written.find("Thousands=Dot\nDecimal=Comma\n"), written.npos) << written;
  EXPECT_NE(written.find("\t1,5"), written.npos) << written;
#else
  GTEST_SKIP() << "no localedef, or no sources of locales";
#endif
}

}  // namespace
}  // namespace vexel::test
