// A temporary folder to run the archiver in, with what the tests ask of it.
#include "Workspace.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

#include "cabarc/Commands.h"

namespace fs = std::filesystem;

Workspace::Workspace() : before_(fs::current_path()) {
  std::string name = (fs::temp_directory_path() / "cabarc-test.XXXXXX").string();
  folder_ = mkdtemp(name.data());
  fs::create_directory(folder_ / "work");
  fs::current_path(folder_ / "work");
}

Workspace::~Workspace() {
  // Whatever a test extracted stays in its folder; only "work" may stand beside nothing else.
  EXPECT_EQ(1, std::distance(fs::directory_iterator(folder_), {})) << "something was written outside";
  fs::current_path(before_);
  fs::remove_all(folder_);
}

void Workspace::Write(const std::string& path, const std::string& text) {
  if (const fs::path parent = fs::path(path).parent_path(); !parent.empty()) fs::create_directories(parent);
  std::ofstream file(path, std::ios::binary);
  file << text;
  ASSERT_TRUE(file.flush()) << path;
}

void Workspace::WriteBytes(const std::string& path, const Bytes& bytes) {
  Write(path, std::string(bytes.begin(), bytes.end()));
}

Bytes Workspace::ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Tree Workspace::Read(const std::string& folder) {
  Tree tree;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    const Bytes bytes = ReadBytes(entry.path());
    const bool writable = (entry.status().permissions() & fs::perms::owner_write) != fs::perms::none;
    tree[fs::relative(entry.path(), folder)] = (writable ? "." : "R") + std::string(bytes.begin(), bytes.end());
  }
  return tree;
}

RunResult Workspace::Cabarc(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int code = cabinet::Run(arguments, out, err);
  return {code, out.str(), err.str()};
}

Tree Workspace::Extracted(const std::string& cabinet, int expectedCode) {
  fs::remove_all("out");
  const RunResult result = Cabarc({"-p", "x", cabinet, "out\\"});
  EXPECT_EQ(expectedCode, result.code) << result.err;
  EXPECT_EQ(expectedCode != 0, !result.err.empty());
  return fs::exists("out") ? Read("out") : Tree();
}

std::string Workspace::Noise(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  std::string text(size, '\0');
  for (char& character : text) character = static_cast<char>(random());
  return text;
}

bool Workspace::Installed(const std::string& program) {
  return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
}
