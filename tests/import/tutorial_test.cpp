// The commands of docs/tutorial.md do what it says.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/files.h"
#include "support/run.h"

namespace vexel::test {
namespace {

std::string Commands() {
  std::ifstream document(VEXEL_SAMPLES_DIR "/../docs/tutorial.md");
  std::string commands = "set -e\n";
  bool isCommand = false;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("```")) {
      isCommand = line == "```sh";
    } else if (isCommand) {
      commands += line + '\n';
    }
  }
  return commands;
}

TEST(Tutorial, RunsAsItStands) {
  const TempDir folder;
  std::filesystem::create_directory_symlink(VEXEL_SAMPLES_DIR, folder.Path("samples"));
  const std::string programs = std::filesystem::path(VEXEL_CLI).parent_path().string();
  const RunResult result = RunProgram(
      "/bin/sh", {"-c", Commands()},
      {.folder = folder.Path(""), .environment = {"PATH=" + programs + ":/usr/bin:/bin"}});
  EXPECT_EQ(result.status, 0) << result.err;
  for (const char* said : {"3108 of 3142 rows of samples/tutorial/jobs.csv found their areas",
                           "34 rows found no area: ", "simplified from "}) {
    EXPECT_NE(result.err.find(said), std::string::npos) << result.err;
  }
  for (const char* made : {"first.svg", "page.svg", "page.html", "page.json", "page.pdf",
                           "texas.png", "percent.svg", "us.keys.csv", "us.mpc"}) {
    EXPECT_GT(std::filesystem::file_size(folder.Path(made)), 1000U) << made;
  }
}

}  // namespace
}  // namespace vexel::test
