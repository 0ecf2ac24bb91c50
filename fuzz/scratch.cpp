#include "scratch.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <system_error>

namespace vexel::fuzz {

namespace {

class Folder {
 public:
  Folder() {
    const std::filesystem::path memory = "/dev/shm";
    std::string pattern =
        ((std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
         "vexel-fuzz-XXXXXX")
            .string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::filesystem::path PathOf(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

std::filesystem::path FullPath(std::string_view name) {
  static const Folder folder;
  return folder.PathOf(name);
}

}  // namespace

CString PathOf(std::string_view name) { return CString(FullPath(name).string()); }

void WriteInput(std::string_view name, std::string_view bytes) {
  std::ofstream file(FullPath(name), std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string ReadBack(std::string_view name) {
  std::ifstream file(FullPath(name), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

void Require(bool holds, const char* law) {
  if (holds) return;
  std::cerr << "does not hold: " << law << '\n';
  std::abort();
}

}  // namespace vexel::fuzz
