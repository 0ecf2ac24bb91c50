// What comes in: standard input, files that are none, names that steer a terminal, and far too much
// of something.

#include <sys/stat.h>

#include <array>
#include <filesystem>

#include "cli_fixture.h"

namespace vexel::test {
namespace {

class Input : public Cli {
 protected:
  // Starts the program with pipes as its standard input and output.
  void Start(std::vector<std::string> arguments) {
    std::filesystem::create_directory(folder.Path("tmp"));
    std::vector<char*> argv{const_cast<char*>(VEXEL_CLI)};
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    RunOptions options;
    options.folder = folder.Path("");
    options.environment = {"TMPDIR=" + folder.Path("tmp")};
    ASSERT_EQ(::pipe(in_.data()), 0);
    ASSERT_EQ(::pipe(out_.data()), 0);
    child_ = ::fork();
    ASSERT_GE(child_, 0);
    if (child_ == 0) {
      for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) ::signal(signal, SIG_DFL);
      ::dup2(in_[0], STDIN_FILENO);
      ::dup2(out_[1], STDOUT_FILENO);
      for (const int end : {in_[0], in_[1], out_[0], out_[1]}) ::close(end);
      BecomeProgram(argv, options);
    }
    ::close(in_[0]);
    ::close(out_[1]);
  }

  void Feed(std::string_view text) const {
    ASSERT_EQ(::write(in_[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void CloseInput() const { ::close(in_[1]); }
  void CloseOutput() const { ::close(out_[0]); }
  void Kill(int signal) const { ::kill(child_, signal); }

  // The signal that ended it.
  int Ending() const {
    int status = 0;
    ::waitpid(child_, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

  std::vector<std::string> LeftBehind() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path("tmp"))) {
      names.push_back(entry.path().string());
    }
    return names;
  }

  const std::string data = DataFor("land", kLandRows);

 private:
  std::array<int, 2> in_{};
  std::array<int, 2> out_{};
  pid_t child_ = -1;
};

TEST_F(Input, LeavesNothingBehindWhateverEndsTheProgram) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGKILL}) {
    Start({"render", "-", "-o", "page.gif"});
    Feed(data);
    Feed(std::string(1'000'000, ' '));  // more than a pipe holds: most of it has been read
    Kill(signal);
    EXPECT_EQ(Ending(), signal);
    EXPECT_EQ(LeftBehind(), std::vector<std::string>());
    CloseInput();
    CloseOutput();
  }
  Start({"render", "-", "-o", "-", "--quiet"});
  CloseOutput();
  Feed(data);
  CloseInput();
  EXPECT_EQ(Ending(), SIGPIPE);
  EXPECT_EQ(LeftBehind(), std::vector<std::string>());
}

TEST_F(Input, IsARegularFileOrStandardInput) {
  for (const char* pipe : {"pipe", "pipe.map", "pipe.mpc"}) {
    ASSERT_EQ(::mkfifo(folder.Path(pipe).c_str(), 0600), 0);
  }
  std::filesystem::create_directory(folder.Path("folder.map"));
  folder.Write("names.mdf", DataFor("pipe", kLandRows));
  for (const char* arguments :
       {"render pipe", "render land.mdf --map pipe.map", "render land.mdf --map pipe.mpc",
        "render names.mdf", "render /dev/zero", "info pipe", "info pipe.mpc", "check pipe",
        "check names.mdf", "compile pipe.map", "decompile pipe.mpc -o m.map",
        "tree pipe.map -o t "
        "--base-url u",
        "locate pipe 4,3", "convert /dev/zero -o c.mdf"}) {
    const RunResult done = Call(arguments);
    EXPECT_EQ(done.status, 1) << arguments;
    EXPECT_EQ(CountOf(done.err + done.out, "is no regular file\n"), 1U) << arguments << done.err;
  }
  EXPECT_EQ(Call("render land.mdf --map folder.map").err,
            "vexel: folder.map: is a folder, not a file\n");
  // A regular file under another name is one.
  RunOptions options;
  options.input = data;
  EXPECT_EQ(Call("render /dev/stdin --map land.map --quiet", options).err, "");
}

TEST_F(Input, NamesCannotSteerATerminal) {
  const std::string name = "A\x1B[2J\x07\u009B1m\u202Egnp\u2066\u200F\u2028\x7F\x9B\u00FC";
  const std::string shown = "A?[2J??1m?gnp?????\u00FC";
  folder.Write("odd.map", "[Map]\nMapName=" + name + "\n[AreaLevels]\nName=" + name +
                              "\n[GeoUnit]\nName=" + name +
                              "\nAreaStructure=1\n[Polygon]\n0 0\n9 0\n9 9\n0 9\n");
  folder.Write("odd.mdf",
               "[MapDataFile]\nMapFile=odd\nAreaLevels=1\nVariables=1\nMapLabel=~\n[Data]\n~\tArea "
               "Name\t" +
                   name + "\n1\t~\t5\n2\t" + name + "\t5\n");
  for (const char* arguments :
       {"render odd.mdf -o page.gif", "info odd.mdf", "info odd.map", "locate odd.mdf 400,300",
        "check odd.mdf", "convert odd.mdf -o c.mdf"}) {
    const RunResult done = Call(arguments);
    const std::string all = done.out + done.err;
    EXPECT_GT(CountOf(all, shown), 0U) << arguments;
    for (const char* part :
         {"\x1B", "\x07", "\x7F", "\u009B", "\u202E", "\u2066", "\u200F", "\u2028", "\x9B\u00FC"}) {
      EXPECT_EQ(CountOf(all, part), 0U) << arguments;
    }
  }
  EXPECT_GT(CountOf(Call("locate odd.mdf 400,300 --json").out, "\u202Egnp"), 0U);
  EXPECT_GT(CountOf(folder.Read("c.mdf"), name), 0U);
}

TEST_F(Input, OfBadLinesTheFirstAreToldAndTheRestCounted) {
  std::string head = "[MapDataFile]\nMapFile=land\n";
  for (int i = 0; i < 1500; ++i) head += "Bad=1\n";
  folder.Write("bad.mdf", head + "AreaLevels=2\nVariables=2\n" + data.substr(data.find("[Data]")));
  folder.Write("refused.mdf", head + "[Data]\n");
  const RunResult goesOn = Call("render bad.mdf --quiet");
  EXPECT_EQ(goesOn.status, 0);
  EXPECT_EQ(CountOf(goesOn.err, "\n"), 21U);
  EXPECT_TRUE(goesOn.err.ends_with("\nvexel: and 1,480 more\n")) << goesOn.err;
  const RunResult stops = Call("render refused.mdf --quiet");
  EXPECT_EQ(stops.status, 1);
  EXPECT_EQ(CountOf(stops.err, "\n"), 22U);
  EXPECT_TRUE(
      stops.err.ends_with("\nvexel: and 1,480 more\n"
                          "vexel: refused.mdf:1503: Missing AreaLevels statement\n"))
      << stops.err;
}

TEST_F(Input, AFullDiskUnderAWebPageIsToldByItsName) {
  RunOptions options;
  options.fileLimit = 100'000;
  const RunResult done =
      Call("render " + kSample + ".mdf --level 2 -o p.gif --html p.html --quiet", options);
  EXPECT_EQ(done.status, 1);
  EXPECT_TRUE(done.err.starts_with("vexel: p.html: cannot be written: File too large\n"))
      << done.err;
  EXPECT_FALSE(std::filesystem::exists(folder.Path("p.gif")));
}

}  // namespace
}  // namespace vexel::test
