// Any bytes as a cabinet: listed, extracted, and, where that went well, packed and extracted again. The first byte of
// the input chooses the options.
#include <map>
#include <sstream>

#include "FuzzTarget.h"
#include "cabarc/CabinetReader.h"
#include "cabarc/Commands.h"
#include "cabarc/MemberNames.h"

namespace {

using Tree = std::map<std::string, std::string>;  // path from the target folder, with "\", and contents

constexpr std::size_t kComparedAtMost = 1 << 20;  // bytes; more takes time and shows nothing new

int Cabarc(const std::string& commandLine) {
  std::istringstream words(commandLine);
  std::ostringstream out, err;
  const int code = cabarc::Run({std::istream_iterator<std::string>(words), {}}, out, err);
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
Tree Declared(const std::string& path, bool keepPaths, bool allowUnchecked) {
  Tree tree;
  cabarc::CabinetReader reader;
  if (reader.Open(path).Failed()) return tree;
  std::map<std::size_t, std::string> data;  // of the folders that have members
  for (const cabinet::Member& member : reader.Records().members) data[member.folder];
  for (auto& folder : data) {
    const auto take = [&](const std::uint8_t* bytes, std::size_t size) {
      if (folder.second.size() < kComparedAtMost) folder.second.append(bytes, bytes + size);
      return true;
    };
    if (reader.ReadFolder(folder.first, {1, allowUnchecked}, take).Failed()) break;  // what came until then was right
  }
  for (const cabinet::Member& member : reader.Records().members) {
    const std::string& folder = data[member.folder];
    const std::string name(keepPaths ? member.name : cabarc::BaseName(member.name));
    if (member.size == 0) tree[name] = {};  // wherever it says it stands
    if (std::uint64_t{member.at} + member.size <= folder.size()) tree[name] = folder.substr(member.at, member.size);
  }
  return tree;
}

void RequirePackingAgain(const Tree& tree) {
  fs::current_path("out");
  const int packed = Cabarc("-t 1 -r -p n ../again.cab *.*");
  fs::current_path("..");
  fuzz::Require(packed == 0, "what was extracted can be packed");
  fuzz::Require(Cabarc("-t 1 -p X again.cab twice/") == 0, "what was packed can be extracted");
  fuzz::Require(ReadTree("twice") == tree, "packing and extracting changes nothing");
}

// Where nothing is wrong salvage extracts the same; and wherever something is, safely.
void RequireSalvage(const std::string& options, bool partial, const Tree& tree) {
  const int code = Cabarc((partial ? "--partial" : "--salvage") + options + " x in.cab saved/");
  fuzz::Scratch::RequireNothingAbove();
  const Tree saved = ReadTree("saved");
  for (const auto& [name, contents] : saved) fuzz::Require(!cabarc::WhyUnsafe(name), "a salvaged name is safe");
  if (code == 0) fuzz::Require(saved == tree, "what is whole is salvaged as it is extracted");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::Scratch scratch;
  if (size == 0) return 0;
  std::ofstream("in.cab", std::ios::binary) << std::string(data + 1, data + size);
  const auto chosen = [&](int bit) { return (data[0] & bit) != 0; };
  const bool keepPaths = !chosen(1), allowUnchecked = chosen(2);
  const int code = Cabarc(std::string(chosen(4) ? "-t 2" : "-t 1") + (keepPaths ? " -p" : "") +
                          (allowUnchecked ? " --allow-unchecked" : "") + (chosen(8) ? " X" : " x") + " in.cab out/");
  fuzz::Require(Cabarc("l in.cab") == 0 || code != 0, "what can be extracted can be listed");
  scratch.RequireNothingAbove();

  const Tree tree = ReadTree("out");
  const Tree declared = Declared("in.cab", keepPaths, allowUnchecked);
  if (code == 0) fuzz::Require(declared.size() <= tree.size(), "every member comes out");
  for (const auto& [name, contents] : tree) {
    fuzz::Require(!cabarc::WhyUnsafe(name), "an extracted name is safe");
    const auto found = declared.find(name);
    fuzz::Require(found == declared.end() ? contents.size() >= kComparedAtMost : found->second == contents,
                  "a file is a member, whole");
  }
  if (code == 0 && !tree.empty() && size < 2000) RequirePackingAgain(tree);
  RequireSalvage(std::string(keepPaths ? " -p" : "") + (allowUnchecked ? " --allow-unchecked" : ""), chosen(16), tree);
  for (const char* name : {"out", "saved", "twice", "again.cab", "in.cab"}) fs::remove_all(name);
  fuzz::Require(fs::is_empty("."), "nothing is left beside the target");
  return 0;
}
