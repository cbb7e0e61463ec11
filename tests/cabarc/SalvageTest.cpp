// What can be saved of damaged cabinets: no less than another archiver saves, and nothing that is wrong.
#include <cstdio>
#include <set>

#include "RawCabinet.h"
#include "Workspace.h"
#include "cabinet/Format.h"

namespace {

using cabinet::Get16;
using cabinet::Get32;

// Text of which 32 KB pack to some 6 KB.
std::string Lines(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  std::string text;
  while (text.size() < size)
    text += std::to_string(random() % 100000) + " is a line of file " + std::to_string(seed) + "\n";
  return text.substr(0, size);
}

std::string Flipped(std::string bytes, std::size_t at, int bit) {
  bytes[at] = static_cast<char>(bytes[at] ^ 1 << bit);
  return bytes;
}

// Where things stand in a cabinet of one folder.
struct Places {
  explicit Places(const std::string& cabinet) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(cabinet.data());
    folder = (Get16(bytes + 30) & cabinet::kFlagReserve) == 0 ? 36u : 40u + Get16(bytes + 36);
    data = Get32(bytes + folder);
    for (std::size_t at = Get32(bytes + 16); at < data; at = cabinet.find('\0', at + 16) + 1) records.push_back(at);
    for (std::size_t at = data; at < cabinet.size(); at += 8u + Get16(bytes + at + 4)) blocks.push_back(at);
  }

  std::size_t folder = 0, data = 0;
  std::vector<std::size_t> records, blocks;
};

class Salvage : public Workspace {
 protected:
  struct Saved {
    std::size_t right = 0;  // files with their own names and bytes
    Tree others;
    std::string words;
  };

  void MakeFiles(std::size_t count, std::size_t size) {
    for (unsigned i = 0; i < count; ++i) Write("set/file " + std::to_string(1000 + i), Lines(size, i));
    files_ = Read("set");
  }

  Saved Judged(const Tree& tree) const {
    Saved saved;
    for (const auto& [name, text] : tree) {
      const auto found = files_.find(name);
      found != files_.end() && found->second == text ? void(++saved.right) : void(saved.others[name] = text);
    }
    return saved;
  }

  Saved Salvaged(const std::string& bytes, const std::string& options = "--salvage") const {
    Write("damaged.cab", bytes);
    fs::remove_all("out");
    const RunResult result = Cabarc(options + " -p x damaged.cab out\\");
    Saved saved = Judged(fs::exists("out") ? Read("out") : Tree());
    saved.words = result.out + result.err;
    EXPECT_EQ(result.code == ExitCode::Ok, result.err.empty()) << saved.words;
    EXPECT_TRUE(result.code == ExitCode::Ok || result.code == ExitCode::Broken) << saved.words;
    return saved;
  }

  std::size_t SavedByPeer(const std::string& command) const {
    fs::remove_all("peer");
    fs::create_directory("peer");
    static_cast<void>(Runs("cd peer && " + command + " ../damaged.cab >/dev/null 2>&1"));
    return Judged(Read("peer")).right;
  }

  Tree files_;
};

// Each kind of damage, done to a cabinet of ours and to one that gcab made of the same files.
TEST_F(Salvage, BringsBackNoLessThanOthersDo) {
  MakeFiles(100, 40000);
  Succeeds("n own.cab set");
  std::vector<std::string> cabinets = {"own.cab"};
  if (Installed("gcab") && Runs("cd set && gcab -c -z ../gcab.cab * >/dev/null")) cabinets.push_back("gcab.cab");
  for (const std::string& name : cabinets) {
    const std::string whole = ReadFile(name);
    const Places at(whole);
    const std::tuple<const char*, std::string, std::size_t> cases[] = {
        {"a bit in block 1", Flipped(whole, at.data + 500, 0), name == "own.cab" ? 100u : 99u},
        {"four bytes in block 1", std::string(whole).replace(at.data + 501, 4, "wxyz"), name == "own.cab" ? 100u : 99u},
        {"12 bytes in block 1", std::string(whole).replace(at.data + 501, 12, "much damaged"), 99},
        {"a byte appended", whole + 'x', 100},
        {"a reserved bit of the header", Flipped(whole, 30, 4), 100},
        {"cut in the middle", whole.substr(0, at.blocks[60]), 49},
        {"the folder's record", Flipped(whole, at.folder, 3), 100},
        {"a file's record", Flipped(whole, at.records[2] + 3, 6), 100},
        {"the sizes of block 3", Flipped(Flipped(whole, at.blocks[2] + 4, 3), at.blocks[2] + 7, 7), 100},
        {"100,000 bytes of zeros", std::string(whole).replace(at.blocks[7] + 9, 100000, 100000, '\0'), 78}};
    for (const auto& [what, bytes, expected] : cases) {
      const Saved saved = Salvaged(bytes);
      EXPECT_LE(expected, saved.right) << name << ", " << what << ": " << saved.words;
      EXPECT_TRUE(saved.others.empty()) << name << ", " << what << ": a file that is not whole";
      std::size_t cabextract = SavedByPeer("cabextract -f -q"), gcab = SavedByPeer("gcab -x");
      EXPECT_LE(cabextract, saved.right) << name << ", " << what;
      EXPECT_LE(gcab, saved.right) << name << ", " << what;
      std::printf("%-8s | %-28s | %3zu | %3zu | %3zu |\n", name.c_str(), what, saved.right, cabextract, gcab);
    }
  }
}

TEST_F(Salvage, OneWrongBitCostsNothing) {
  MakeFiles(6, 20000);
  Succeeds("n own.cab set");
  const std::string whole = ReadFile("own.cab");
  const Places at(whole);
  const auto step = [&](std::size_t i) {  // every byte of the records and of the blocks' headers, some of the others
    const bool header =
        std::any_of(at.blocks.begin(), at.blocks.end(), [i](std::size_t b) { return i >= b && i < b + 10; });
    return header || i < at.data ? 1u : 97u;
  };
  for (std::size_t i = 0; i < whole.size(); i += step(i)) {
    const Saved saved = Salvaged(Flipped(whole, i, static_cast<int>(i % 8)));
    EXPECT_TRUE(saved.others.empty()) << "at " << i << ": " << saved.words;
    EXPECT_EQ(6u, saved.right) << "at " << i << ": " << saved.words;
  }
  for (std::size_t size = 0; size < whole.size(); size += 1009) {
    EXPECT_TRUE(Salvaged(whole.substr(0, size)).others.empty()) << "cut to " << size;
  }
}

TEST_F(Salvage, SaysWhatBecameOfEachAndTakesNames) {
  MakeFiles(6, 20000);
  Succeeds("n own.cab set");
  const std::string whole = ReadFile("own.cab");
  const Places at(whole);
  const std::string damaged = std::string(whole).replace(at.blocks[1] + 100, 8, "damaged!");  // bytes 32,768 to 65,535
  Saved saved = Salvaged(damaged);
  EXPECT_EQ(3u, saved.right);
  for (const char* line : {"whole    file 1000\n", "partial  file 1001: 12768 of 20000 bytes\n",
                           "lost     file 1002: its data are damaged\n", "partial  file 1003: 14464 of 20000 bytes\n",
                           "whole    file 1005\n", "3 files whole, 2 partial, 1 lost"}) {
    EXPECT_NE(std::string::npos, saved.words.find(line)) << line << saved.words;
  }
  saved = Salvaged(damaged, "--partial");
  const std::string second = files_["file 1003"];
  EXPECT_EQ((Tree{{"file 1001.partial", files_["file 1001"].substr(0, 1 + 12768)},
                  {"file 1003.partial", "." + std::string(5536, '\0') + second.substr(1 + 5536)}}),
            saved.others);
  for (const std::string name : {"'file 1005'", "'file 1000'"}) {
    Fails(ExitCode::Broken, "--salvage x damaged.cab " + name + " one\\");
  }
  EXPECT_EQ(2u, Read("one").size());
  Fails(ExitCode::Files, "--salvage x damaged.cab nobody one\\");
  Fails(ExitCode::Files, "--salvage x damaged.cab one\\");  // they are there already
  Succeeds("--salvage x own.cab all\\");
  EXPECT_EQ(files_, Read("all"));
}

TEST_F(Salvage, NamesAreMadeSafeAndDifferent) {
  RawCabinet raw = PlainCabinet("..\\..\\a", "123456789");
  raw.members = {{"..\\..\\a", 1},     {"C:\\b", 1, 1}, {"a\nb", 1, 2},
                 {"x", 1, 3},          {"X", 1, 4},     {"x\\inside", 1, 5},
                 {"\\abs\\NUL", 1, 6}, {"", 1, 7},      {"\xFF", 1, 8, 0, 0x80}};
  Write("raw.cab", raw.Build());
  Fails(ExitCode::Broken, "--salvage -p x raw.cab out\\");
  std::set<std::string> contents;
  for (const auto& [name, text] : Read("out")) contents.insert(text);
  EXPECT_EQ(9u, contents.size());
}

// What refers to a lost block is lost with it, and what no longer does is not.
TEST_F(Salvage, DataThatReferToLostOnesAreLost) {
  const auto stored = [](const std::string& text) {
    return "CK\x01" + Number(text.size(), 2) + Number(~text.size(), 2) + text;
  };
  RawCabinet raw;
  raw.method = 1;
  const std::string start = Noise(32768, 1), end = Noise(32768, 2);
  // One byte as it is, then 258 bytes that begin 32,768 before: into the block before this one.
  std::string bits =
                  "110"
                  "00110000"
                  "11000101"
                  "11101"
                  "1111111111111",
              copy = "CK";
  bits += "00000000000";
  for (std::size_t i = 0; i + 8 <= bits.size(); i += 8) {
    int byte = 0;
    for (std::size_t k = 0; k < 8; ++k) byte |= (bits[i + k] - '0') << k;
    copy += static_cast<char>(byte);
  }
  raw.blocks = {{stored(start), 32768}, {copy, 259}, {stored(end), 32768}};
  raw.members = {{"start", 32768}, {"copy", 259, 32768}, {"end", 32768, 33027}};
  const std::string whole = raw.Build();
  ASSERT_EQ(3u, ExtractedBytes(whole).size());
  files_ = Read("out");
  const Places at(whole);
  const Saved saved = Salvaged(Flipped(whole, at.data + 1000, 2));
  EXPECT_EQ(1u, saved.right) << saved.words;
  EXPECT_TRUE(saved.others.empty());
}

// A cabinet within a cabinet is full of blocks; behind damage none of them may be taken for one of the outer cabinet's.
TEST_F(Salvage, ACabinetWithinTheCabinetIsNoWayOn) {
  for (int i = 0; i < 9; ++i) Write("inner/" + std::to_string(i), Noise(30000, static_cast<unsigned>(i)));
  fs::create_directory("set");
  Succeeds("n set/inner.cab inner");
  Write("set/behind", "text");
  files_ = Read("set");
  Succeeds("n own.cab set/inner.cab set/behind");
  const std::string whole = ReadFile("own.cab");
  const Places at(whole);
  for (const std::size_t block : {0u, 2u, 5u}) {
    std::string damaged = whole;
    damaged.replace(at.blocks[block], 20, 20, '\xFF');
    const Saved saved = Salvaged(damaged);
    EXPECT_EQ(1u, saved.right) << saved.words;
    EXPECT_TRUE(saved.others.empty()) << saved.words;
  }
}

// Two sets of pieces of the same size, of which one piece was exchanged: all checksums fit.
TEST_F(Salvage, DataOfAnotherCabinetAreToldFrom) {
  std::string bytes[2];
  for (unsigned i = 0; i < 2; ++i) {
    Write("a", Noise(100000, i));
    Succeeds("n own.cab a");
    bytes[i] = ReadFile("own.cab");
  }
  ASSERT_EQ(bytes[0].size(), bytes[1].size());
  const Places at(bytes[0]);
  Write("mixed.cab", bytes[0].replace(at.blocks[1], 32783, bytes[1].substr(at.blocks[1], 32783)));
  const RunResult result = Cabarc("--salvage x mixed.cab out\\");
  EXPECT_EQ(ExitCode::Broken, result.code);
  EXPECT_NE(std::string::npos, result.out.find("doubtful a")) << result.out;
}

}  // namespace
