// A folder of its own for a test.

#ifndef VEXEL_TESTS_SUPPORT_FILES_H_
#define VEXEL_TESTS_SUPPORT_FILES_H_

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexel::test {

// Made empty, and removed with everything in it.
class TempDir {
 public:
  TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vexel-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = pattern;
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string Path(const std::string& name) const { return (path_ / name).string(); }

  void Write(const std::string& name, std::string_view bytes) const {
    std::ofstream file(Path(name), std::ios::binary);
    file << bytes;
  }

  std::string Read(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
  }

  // The names of what is in it, in order.
  std::vector<std::string> List() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace vexel::test

#endif  // VEXEL_TESTS_SUPPORT_FILES_H_
