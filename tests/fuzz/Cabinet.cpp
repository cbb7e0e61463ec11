// Any bytes as a cabinet: listed, extracted, and, where that went well, packed and extracted again. The first byte of
// the input chooses the options.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "FuzzTarget.h"
#include "Scratch.h"
#include "cabarc/CabinetReader.h"
#include "cabarc/Commands.h"
#include "cabarc/MemberNames.h"

namespace fs = std::filesystem;

namespace {

using Tree = std::map<std::string, std::string>;  // path from the target folder, with "\", and contents

constexpr std::size_t kComparedAtMost = 1 << 20;  // bytes; more takes time and shows nothing new

int Cabarc(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int code = cabinet::Run(arguments, out, err);
  fuzz::Require((code == 0) == err.str().empty(), "a failure, and only that, says why");
  fuzz::Require(code >= 0 && code <= 4 && code != 1, "the exit code is one of those that --help names");
  return code;
}

Tree ReadTree(const fs::path& folder) {
  Tree tree;
  if (!fs::exists(folder)) return tree;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    fuzz::Require(!entry.is_symlink(), "no link is made");
    if (!entry.is_regular_file()) continue;
    std::string name = entry.path().lexically_relative(folder).string();
    std::replace(name.begin(), name.end(), '/', '\\');
    fuzz::Require(entry.file_size() <= UINT32_MAX, "no file is larger than a record can say");
    std::ifstream file(entry.path(), std::ios::binary);
    if (entry.file_size() <= kComparedAtMost) tree[name].assign(std::istreambuf_iterator<char>(file), {});
  }
  return tree;
}

// What the records and the folders' data say, by the shortest way.
Tree Declared(const fs::path& path, bool keepPaths, bool allowUnchecked) {
  Tree tree;
  cabinet::CabinetReader reader;
  if (reader.Open(path).Failed()) return tree;
  std::vector<std::string> data(reader.Records().folders.size());
  std::vector<bool> used(data.size());
  for (const cabinet::MemberRecord& member : reader.Records().members) used[member.folder] = true;
  for (std::size_t i = 0; i < data.size(); ++i) {
    if (!used[i]) continue;
    const auto take = [&](const std::uint8_t* bytes, std::size_t size) {
      if (data[i].size() < kComparedAtMost) data[i].append(bytes, bytes + size);
      return cabinet::Status();
    };
    if (reader.ReadFolder(i, {1, allowUnchecked}, take).Failed()) break;  // what came until then was right
  }
  for (const cabinet::MemberRecord& member : reader.Records().members) {
    const std::string& folder = data[member.folder];
    const std::string name(keepPaths ? member.name : cabinet::BaseName(member.name));
    if (member.size == 0) {
      tree[name] = {};  // wherever it says it stands
    } else if (std::uint64_t{member.at} + member.size <= folder.size()) {
      tree[name] = folder.substr(member.at, member.size);
    }
  }
  return tree;
}

void RequirePackingAgain(const fs::path& work, const Tree& tree) {
  const std::string out = work / "out";
  const int code = Cabarc({"-t", "1", "-r", "-p", "n", work / "again.cab", out + "/*.*"});
  // With the folder before them, names may be unsafe (it is absolute here) or too long: then without.
  fuzz::Require(code == 4 && !fs::exists(work / "again.cab"), "an absolute name is not packed");
  fs::current_path(out);
  const int packed = Cabarc({"-t", "1", "-r", "-p", "n", "../again.cab", "*.*"});
  fs::current_path(work);
  fuzz::Require(packed == 0, "what was extracted can be packed");
  fuzz::Require(Cabarc({"-t", "1", "-p", "X", work / "again.cab", (work / "twice/").string()}) == 0,
                "what was packed can be extracted");
  fuzz::Require(ReadTree(work / "twice") == tree, "packing and extracting changes nothing");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::Scratch scratch;
  if (size == 0) return 0;
  const fs::path work = scratch.Work();
  fs::current_path(work);
  const fs::path file = work / "in.cab";
  std::ofstream(file, std::ios::binary) << fuzz::Text(data + 1, size - 1);
  const bool keepPaths = (data[0] & 1) == 0;
  const bool allowUnchecked = (data[0] & 2) != 0;

  std::vector<std::string> arguments = {"-t", (data[0] & 4) != 0 ? "2" : "1"};
  if (keepPaths) arguments.emplace_back("-p");
  if (allowUnchecked) arguments.emplace_back("--allow-unchecked");
  if ((data[0] & 16) != 0) arguments.emplace_back("--salvage");
  arguments.insert(arguments.end(), {(data[0] & 8) != 0 ? "X" : "x", file, (work / "out/").string()});
  const int code = Cabarc(arguments);
  fuzz::Require(Cabarc({"l", file}) == 0 || code != 0, "what can be extracted can be listed");
  scratch.RequireNothingAbove();

  const Tree tree = ReadTree(work / "out");
  Tree declared = Declared(file, keepPaths, allowUnchecked);
  if (code == 0) fuzz::Require(declared.size() <= tree.size(), "every member comes out");
  for (const auto& [name, contents] : tree) {
    fuzz::Require(!cabinet::WhyUnsafe(name), "an extracted name is safe");
    const auto found = declared.find(name);
    fuzz::Require(found == declared.end() ? contents.size() >= kComparedAtMost : found->second == contents,
                  "a file is a member, whole");
  }
  if (code == 0 && !tree.empty() && size < 2000) RequirePackingAgain(work, tree);
  for (const char* name : {"out", "twice", "again.cab", "in.cab"}) fs::remove_all(work / name);
  fuzz::Require(fs::is_empty(work), "nothing is left beside the target");
  return 0;
}
