// A temporary folder to run the archiver in, with what the tests ask of it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "cabarc/Commands.h"
#include "cabarc/Status.h"

namespace fs = std::filesystem;
using cabarc::ExitCode;

namespace cabarc {

inline void PrintTo(ExitCode code, std::ostream* out) {
  *out << "exit code " << static_cast<int>(code);
}

}  // namespace cabarc

/// What a tree holds: relative path with "/" to contents, preceded by "R" for a read-only file and "." for others.
using Tree = std::map<std::string, std::string>;

/// Every test begins in an empty folder, which is the current one.
class Workspace : public testing::Test {
 protected:
  struct RunResult {
    ExitCode code = ExitCode::Ok;
    std::string out, err;
  };

  Workspace() {
    std::string name = fs::temp_directory_path() / "cabarc-test.XXXXXX";
    folder_ = mkdtemp(name.data());
    fs::create_directory(folder_ / "work");
    fs::current_path(folder_ / "work");
  }

  ~Workspace() override {
    // Whatever a test extracted stays in its folder; only "work" may stand beside nothing else.
    EXPECT_EQ(1, std::distance(fs::directory_iterator(folder_), {})) << "something was written outside";
    fs::current_path(folder_.parent_path());
    fs::remove_all(folder_);
  }

  static void Write(const fs::path& path, const std::string& bytes) {
    if (path.has_parent_path()) fs::create_directories(path.parent_path());
    ASSERT_TRUE(std::ofstream(path, std::ios::binary) << bytes << std::flush) << path;
  }

  static std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  static Tree Read(const fs::path& folder = ".") {
    Tree tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
      if (!entry.is_regular_file()) continue;
      const bool writable = (entry.status().permissions() & fs::perms::owner_write) != fs::perms::none;
      tree[fs::relative(entry.path(), folder)] = (writable ? "." : "R") + ReadFile(entry.path());
    }
    return tree;
  }

  /// Runs the archiver in this process. An argument with a blank stands between apostrophes.
  static RunResult Cabarc(const std::string& commandLine) {
    std::istringstream words(commandLine);
    std::vector<std::string> arguments;
    for (std::string word; words >> std::quoted(word, '\'', '\0');) arguments.push_back(word);
    std::ostringstream out, err;
    const int code = cabarc::Run(arguments, out, err);
    return {ExitCode{code}, out.str(), err.str()};
  }

  static void Fails(ExitCode code, const std::string& commandLine) {
    const RunResult result = Cabarc(commandLine);
    EXPECT_EQ(code, result.code) << commandLine << '\n' << result.err;
    EXPECT_EQ(code == ExitCode::Ok, result.err.empty()) << commandLine;
  }
  static void Succeeds(const std::string& commandLine) { Fails(ExitCode::Ok, commandLine); }

  /// Extracts to an emptied folder "out"; what it holds afterwards is the result.
  static Tree Extracted(const std::string& cabinet, ExitCode expectedCode = ExitCode::Ok) {
    fs::remove_all("out");
    Fails(expectedCode, "-p x " + cabinet + " out\\");
    return fs::exists("out") ? Read("out") : Tree();
  }

  /// The same with a cabinet of these bytes, which stays as "raw.cab".
  static Tree ExtractedBytes(const std::string& bytes, ExitCode expectedCode = ExitCode::Ok) {
    Write("raw.cab", bytes);
    return Extracted("raw.cab", expectedCode);
  }

  /// What another archiver's command extracts into an empty folder beside the cabinets.
  static Tree ExtractedByPeer(const std::string& command) {
    fs::remove_all("peer");
    fs::create_directory("peer");
    EXPECT_TRUE(Runs("cd peer && " + command)) << command;
    return Read("peer");
  }

  /// `size` bytes without any pattern, always the same for a seed.
  static std::string Noise(std::size_t size, unsigned seed) {
    std::string text(size, '\0');
    std::generate(text.begin(), text.end(), std::mt19937(seed));
    return text;
  }

  /// Whether a command of the shell succeeds.
  static bool Runs(const std::string& command) { return std::system(command.c_str()) == 0; }
  static bool Installed(const std::string& program) { return Runs("command -v " + program + " >/dev/null"); }

 private:
  fs::path folder_;
};
