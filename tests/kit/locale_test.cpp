// A host may live in any locale: files are read and written the same in one with a decimal comma
// and letters beyond ASCII.

#include <gtest/gtest.h>
#include <vexel/brindle/specfile.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <map>

#include "kit/report/write_page.h"
#include "kit/request/query.h"
#include "kit/view/view.h"
#include "support/files.h"

namespace vexel::test {
namespace {

#ifdef VEXEL_COMMA_LOCALE

// What a user's environment brings to a host that takes it over, for C and for C++.
class EnvironmentLocale {
 public:
  EnvironmentLocale() {
    ::setenv("LOCPATH", VEXEL_LOCALES_DIR, 1);
    ::setenv("LC_ALL", VEXEL_COMMA_LOCALE, 1);
    std::locale::global(std::locale(""));
  }
  EnvironmentLocale(const EnvironmentLocale&) = delete;
  EnvironmentLocale& operator=(const EnvironmentLocale&) = delete;
  ~EnvironmentLocale() { std::locale::global(std::locale::classic()); }
};

// Every kind of file that can be made of a map in degrees with its data, by name.
std::map<std::string, std::string> Products() {
  const std::string sample = std::string(VEXEL_SAMPLES_DIR) + "/us-conus.mdf";
  const TempDir folder;
  Request request;
  ReadQuery(request,
            "level=2&var=4&groups=4&intervals=bounds&bounds=0,7.25,9.5,1234.5&legend-counts&box=6&"
            "box=48&size=1000x700");
  request.data = sample;
  View view(request);
  WritePage(view, {folder.Path("page.gif"), folder.Path("page.html"), folder.Path("report.json"),
                   folder.Path("view.json")});

  CVELAMap map;
  CVELAData data;
  map.data = &data;
  data.map = &map;
  EXPECT_EQ(data.Build(sample.c_str(), 1, 0), 1);
  map.SaveMap(folder.Path("text.map").c_str(), nullptr);
  EXPECT_EQ(map.SaveMpc(folder.Path("compiled.mpc").c_str()), 1);
  CSpecFile file(0);
  EXPECT_EQ(file.Open(folder.Path("data.mdf").c_str(), 1), 1);
  map.SaveMdfSpec(file);
  EXPECT_EQ(file.Close(), 1);
  EXPECT_EQ(map.WriteTreeFile(folder.Path("tree.html").c_str(), "/show"), 1);

  std::map<std::string, std::string> products;
  for (const std::string& name : folder.List()) products[name] = folder.Read(name);
  return products;
}

TEST(Locale, ChangesNoFile) {
  // First with the comma, so that nothing has been settled in the plain locale.
  std::map<std::string, std::string> withComma;
  {
    const EnvironmentLocale locale;
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    ASSERT_STREQ(text, "1,5");
    withComma = Products();
  }
  const std::map<std::string, std::string> plain = Products();
  ASSERT_EQ(plain.size(), 8U);
  ASSERT_EQ(withComma.size(), plain.size());
  for (const auto& [name, bytes] : plain) {
    EXPECT_FALSE(bytes.empty()) << name;
    EXPECT_TRUE(withComma[name] == bytes) << name;
  }
}

#else

TEST(Locale, ChangesNoFile) { GTEST_SKIP() << "no localedef, or no sources of locales"; }

#endif

}  // namespace
}  // namespace vexel::test
