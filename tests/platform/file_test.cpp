#include "platform/file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/exceptions.h"
#include "support/files.h"
#include "support/recording_host.h"

namespace vexel::test {
namespace {

constexpr unsigned kWrite = CFile::modeCreate | CFile::modeWrite;

TEST(File, ReplacesItsTargetOnlyWhenClosed) {
  const TempDir dir;
  dir.Write("a", "old");
  const std::string taken = "a.tmp" + std::to_string(::getpid()) + "-0";
  dir.Write(taken, "of somebody else");
  CFile file;
  ASSERT_NE(file.Open(dir.Path("a").c_str(), kWrite), 0);
  const std::string large(1'000'000, 'x');
  file.Write("new", 3);
  file.Write(large.data(), large.size());
  EXPECT_EQ(dir.Read("a"), "old");
  EXPECT_NE(file.Close(), 0);
  EXPECT_EQ(dir.Read("a"), "new" + large);
  ASSERT_NE(file.Open(dir.Path("a").c_str(), kWrite), 0);
  file.Write("gone", 4);
  file.Abort();
  EXPECT_EQ(dir.Read("a").size(), 1'000'003U);
  EXPECT_EQ(dir.Read(taken), "of somebody else");
  EXPECT_EQ(dir.List(), (std::vector<std::string>{"a", taken}));
}

TEST(File, DestructionKeepsWhatWasWrittenUnlessAnExceptionPasses) {
  const TempDir dir;
  const auto write = [&](bool fails) {
    CStdioFile file;
    ASSERT_NE(file.Open(dir.Path("a").c_str(), kWrite), 0);
    file.WriteString(fails ? "torn" : "whole");
    if (fails) throw std::runtime_error("in the middle");
  };
  write(false);
  EXPECT_EQ(dir.Read("a"), "whole");
  EXPECT_THROW(write(true), std::runtime_error);
  EXPECT_EQ(dir.Read("a"), "whole");
  EXPECT_EQ(dir.List(), std::vector<std::string>{"a"});
  // An exception that passed already when the file was opened is none of its own.
  struct WriteAtExit {
    std::string path;
    ~WriteAtExit() {
      CStdioFile file;
      file.Open(path.c_str(), kWrite);
      file.WriteString("last words");
    }
  };
  try {
    const WriteAtExit atExit{dir.Path("b")};
    throw std::runtime_error("on the way");
  } catch (const std::runtime_error&) {
    EXPECT_EQ(dir.Read("b"), "last words");
  }
}

TEST(File, KeepsLinksAndPermissionsAndRefusesFolders) {
  const TempDir dir;
  dir.Write("real", "old");
  ::chmod(dir.Path("real").c_str(), 0640);
  std::filesystem::create_symlink("real", dir.Path("link"));
  std::filesystem::create_symlink("dangling", dir.Path("toDangling"));
  std::filesystem::create_symlink("later", dir.Path("dangling"));
  std::filesystem::create_symlink("circle", dir.Path("circle"));
  for (const char* name : {"link", "toDangling", "dangling"}) {
    CFile file;
    ASSERT_NE(file.Open(dir.Path(name).c_str(), kWrite), 0);
    file.Write("new", 3);
    EXPECT_NE(file.Close(), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(dir.Path(name)));
  }
  EXPECT_EQ(dir.Read("real"), "new");
  EXPECT_EQ(dir.Read("later"), "new");
  struct stat status {};
  ASSERT_EQ(::stat(dir.Path("real").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
  CFile file;
  EXPECT_EQ(file.Open("", kWrite), 0);
  EXPECT_EQ(file.Open(dir.Path("circle").c_str(), kWrite), 0);
  EXPECT_EQ(file.Open(dir.Path("").c_str(), CFile::modeRead), 0);
  EXPECT_EQ(file.Open(dir.Path("").c_str(), kWrite), 0);
  EXPECT_EQ(file.Open(dir.Path("none/a").c_str(), kWrite), 0);
  EXPECT_EQ(file.Open(dir.Path("none").c_str(), CFile::modeRead), 0);
}

// Root may write everything, and so a process without its rights is asked.
TEST(File, ThatMayNotBeWrittenIsNotReplaced) {
  const TempDir dir;
  dir.Write("a", "old");
  ::chmod(dir.Path("").c_str(), 0777);
  ::chmod(dir.Path("a").c_str(), 0444);
  const pid_t child = ::fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && ::setresuid(kNobody, kNobody, kNobody) != 0) ::_exit(1);
    CFile file;
    const bool opens = file.Open(dir.Path("a").c_str(), kWrite) != 0;
    ::_exit(!opens && file.GetReason() == "Permission denied" ? 0 : 1);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(dir.List(), std::vector<std::string>{"a"});
}

// A name so long that nothing can be put behind it takes no file beside it.
TEST(File, IsWrittenInPlaceWhereNoFileCanBeMadeBesideIt) {
  const TempDir dir;
  RecordingHost host;
  const std::string name(250, 'n');
  CFile file;
  EXPECT_EQ(file.Open(dir.Path(name).c_str(), kWrite), 0);
  EXPECT_EQ(file.GetReason(), "File name too long");
  EXPECT_EQ(host.TakeRemarks(), "");
  dir.Write(name, "an old and long text");
  const std::string large(1'000'000, 'x');
  for (const bool isKept : {false, true}) {
    ASSERT_NE(file.Open(dir.Path(name).c_str(), kWrite), 0);
    EXPECT_EQ(host.TakeRemarks(), "0 written-in-place: ; ; \n");
    file.Write("new", 3);
    if (!isKept) {
      file.Write(large.data(), large.size());
      file.Abort();
      EXPECT_EQ(dir.Read(name), "an old and long text");
      continue;
    }
    EXPECT_NE(file.Close(), 0);
    EXPECT_EQ(file.GetReason(), "");
  }
  EXPECT_EQ(dir.Read(name), "new");
  EXPECT_EQ(dir.List(), std::vector<std::string>{name});
}

TEST(File, LeavesNothingBehindWhenItsProcessIsKilled) {
  const TempDir dir;
  const int nameless = ::open(dir.Path("").c_str(), O_WRONLY | O_TMPFILE, 0600);
  if (nameless < 0) GTEST_SKIP() << "no files without a name here";
  ::close(nameless);
  dir.Write("a", "old");
  const pid_t child = ::fork();
  if (child == 0) {
    CFile file;
    file.Open(dir.Path("a").c_str(), kWrite);
    file.Write(std::string(1'000'000, 'x').data(), 1'000'000);
    ::kill(::getpid(), SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(dir.Read("a"), "old");
  EXPECT_EQ(dir.List(), std::vector<std::string>{"a"});
}

TEST(File, WhatIsNoRegularFileIsRefusedAtOnce) {
  const TempDir dir;
  ASSERT_EQ(::mkfifo(dir.Path("pipe").c_str(), 0600), 0);
  for (const std::string& path : {dir.Path("pipe"), std::string("/dev/zero")}) {
    CFile file;
    EXPECT_EQ(file.Open(path.c_str(), CFile::modeRead), 0);
    EXPECT_EQ(file.GetReason(), "Is no regular file");
  }
  CFile folder;
  EXPECT_EQ(folder.Open(dir.Path("").c_str(), CFile::modeRead), 0);
  EXPECT_EQ(folder.GetReason(), "Is a directory");
}

TEST(File, TellsPositionLengthTimeAndWhatCouldNotBeRead) {
  const TempDir dir;
  CFile file;
  CFileStatus status;
  EXPECT_EQ(CFile::GetStatus(dir.Path("a").c_str(), status), 0);
  ASSERT_NE(file.Open(dir.Path("a").c_str(), kWrite), 0);
  file.Write("twelve bytes", 12);
  EXPECT_EQ(file.GetLength(), 12);
  EXPECT_NE(file.Close(), 0);
  const auto written = std::filesystem::file_time_type::clock::now() - std::chrono::hours(48);
  std::filesystem::last_write_time(dir.Path("a"), written);
  ASSERT_NE(CFile::GetStatus(dir.Path("a").c_str(), status), 0);
  EXPECT_EQ(status.size, 12);
  EXPECT_LT(status.mtime + std::chrono::hours(47), status.ctime);
  ASSERT_NE(file.Open(dir.Path("a").c_str(), CFile::modeRead), 0);
  char bytes[8];
  EXPECT_EQ(file.Read(bytes, 8), 8U);
  EXPECT_EQ(file.Read(bytes, 8), 4U);
  EXPECT_EQ(file.GetPosition(), 12);
  EXPECT_FALSE(file.HasFailed());
  ASSERT_NE(file.Open("/proc/self/mem", CFile::modeRead), 0);  // its first page is never mapped
  EXPECT_EQ(file.Read(bytes, 8), 0U);
  EXPECT_TRUE(file.HasFailed());
}

}  // namespace
}  // namespace vexel::test
