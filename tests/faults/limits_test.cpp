// Numbers that are none or too many, wherever they stand in a compiled map.

#include <sys/resource.h>
#include <unistd.h>

#include <fstream>

#include "faults/model.h"

namespace vexel::test {
namespace {

using namespace std::string_view_literals;

using Numbers = MapTest;

// Memory for data can grow by so much while it lives.
class MemoryLimit {
 public:
  explicit MemoryLimit(rlim_t bytes) {
    ::getrlimit(RLIMIT_DATA, &before_);
    rlim_t pages = 0;
    std::ifstream statm("/proc/self/statm");
    for (int field = 0; field < 6; ++field) statm >> pages;  // the sixth is of data and stack
    const rlimit limit{pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + bytes,
                       before_.rlim_max};
    ::setrlimit(RLIMIT_DATA, &limit);
  }
  MemoryLimit(const MemoryLimit&) = delete;
  MemoryLimit& operator=(const MemoryLimit&) = delete;
  ~MemoryLimit() { ::setrlimit(RLIMIT_DATA, &before_); }

 private:
  rlimit before_{};
};

// Whatever number stands at whatever place of a compiled map: a count that promises two thousand
// million entries, a coordinate or an angle that is none. What loads is drawn and written.
TEST_F(Numbers, AnywhereInACompiledMapTakeNoMemoryBeforeTheirBytesCome) {
  Model model;
  ASSERT_EQ(Load(model.map, kSmallMap), 1);
  ASSERT_EQ(model.map.SaveMpc(Path("m.mpc")), 1);
  const std::string whole = dir.Read("m.mpc");
  constexpr rlim_t kRoom = 16 << 20;
  int refused = 0;
  int pages = 0;
  for (const std::string_view number : {"\xFF\xFF\xFF\x77"sv, "\xFF\xFF\xFF\x7F"sv, "\0\0\0\x80"sv,
                                        "\0\0\xC0\x7F"sv, "\0\0\x80\xFF"sv}) {
    for (std::size_t at = 10; at + 4 <= whole.size(); ++at) {
      std::string damaged = whole;
      Put("d.mpc", damaged.replace(at, 4, number));
      const MemoryLimit limit(kRoom);
      Model own;
      try {
        own.map.Build(Path("d.mpc"), 1, 0);
      } catch (const CArchiveException&) {
        ++refused;
      }
      pages += UseAll(own);
    }
  }
  EXPECT_GT(refused, 100);
  EXPECT_GT(pages, 1000);
}

}  // namespace
}  // namespace vexel::test
