// Any damage to the data of a cabinet of ours: whatever is salvaged under its own name is what was packed, unless it is
// said to be doubtful.
//
// Each four bytes of the input are one change: where (three bytes), and what.
#include <map>
#include <random>
#include <sstream>

#include "FuzzTarget.h"
#include "cabarc/Commands.h"
#include "cabinet/Format.h"

namespace {

using Tree = std::map<std::string, std::string>;

std::string Cabarc(std::vector<std::string> arguments) {
  std::ostringstream out, err;
  const int code = cabarc::Run(arguments, out, err);
  fuzz::Require(code == 0 || code == 3, "the cabinet is whole, or damaged");
  return out.str();
}

std::string Read(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Tree ReadTree(const fs::path& folder) {
  Tree tree;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    tree[entry.path().filename()] = Read(entry.path());
  }
  return tree;
}

// Noise, text, and a cabinet, in a cabinet.
struct Original {
  Original() {
    fs::create_directory("set");
    std::mt19937 random(1);
    for (int i = 0; i < 12; ++i) {
      std::ofstream file("set/" + std::to_string(i), std::ios::binary);
      for (int k = 0; k < 9000; ++k) file.put(static_cast<char>(i % 3 == 0 ? random() : 'a' + random() % 4));
      if (i == 5) file << bytes;
      file.close();
      Cabarc({"-t", "1", "n", "own.cab", "set"});
      bytes = Read("own.cab");
    }
    tree = ReadTree("set");
    const auto* const header = reinterpret_cast<const std::uint8_t*>(bytes.data());
    dataAt = cabinet::Get32(header + cabinet::kCrcAt + 4);
  }

  Tree tree;
  std::string bytes;
  std::size_t dataAt = 0;
};

// Such changes as checksums can tell: none undoes in a block's checksum what another did, and no block moves whole.
constexpr std::size_t kMostChanges = 8;

void Change(std::string& bytes, std::size_t dataAt, const std::uint8_t* change, std::size_t number) {
  if (bytes.size() <= dataAt) return;
  const std::size_t place = change[0] + change[1] * 256u + change[2] * 65536u;
  const std::size_t at = dataAt + place % (bytes.size() - dataAt);
  const std::size_t amount = change[3] / 4u + 1u;
  switch (change[3] % 4) {
    case 0:
      bytes[at] = static_cast<char>(bytes[at] ^ 1 << number);
      break;
    case 1:
      bytes.replace(at, amount * 64, std::min(amount * 64, bytes.size() - at), '\0');
      break;
    case 2:
      bytes.erase(at, amount * 16);
      break;
    default:
      bytes.insert(at, amount * 16, 'x');
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::Scratch scratch;
  static const Original original;
  std::string bytes = original.bytes;
  for (std::size_t i = 0; i < kMostChanges && 4 * i + 4 <= size; ++i) {
    Change(bytes, original.dataAt, data + 4 * i, i);
  }
  std::ofstream("in.cab", std::ios::binary) << bytes;
  const std::string said = Cabarc({"--salvage", "x", "in.cab", "out/"});
  for (const auto& [name, contents] : ReadTree("out")) {
    if (said.find("doubtful " + name + ":") != std::string::npos) continue;
    const auto found = original.tree.find(name);
    fuzz::Require(found != original.tree.end() && found->second == contents, "what is salvaged is what was packed");
  }
  fs::remove_all("out");
  return 0;
}
