// What was packed comes out again, here and from other archivers.
#include <ctime>

#include "RawCabinet.h"
#include "Workspace.h"

namespace {

class RoundTrip : public Workspace {
 protected:
  // Noise, numbers, text or zeros. Numbers pack well though hardly anything in them repeats, which some archivers'
  // readers take badly when it is written in the shortest way.
  static std::string Contents(unsigned kind, std::size_t size, unsigned seed) {
    if (kind == 0) return Noise(size, seed);
    if (kind == 3) return std::string(size, '\0');
    std::string text;
    for (unsigned i = 0; text.size() < size; ++i) text += kind == 1 ? std::to_string(i) + "\n" : "the quick brown fox ";
    return text.substr(0, size);
  }

  static void MakeTree(unsigned seed) {
    std::mt19937 random(seed);
    const std::size_t sizes[] = {0, 1, 5, 4096, 32767, 32768, 32769, 65536, 300000};
    const std::string folders[] = {"", "Images/", "Images/a b/", "Images/a/b/c/d/e/f/", "Menü Ωж/", ".d/", "Empty/"};
    const std::string names[] = {"a.ddo", "no extension", "x", "été.txt", "日本.dat", "UPPER.TXT", ".hidden", "a.b.c"};
    for (unsigned i = 0; i < 25; ++i) {
      const std::string path = "tree/" + folders[random() % 6] + names[random() % 8] + (random() % 2 ? "" : "_");
      if (fs::exists(path)) continue;
      Write(path, Contents(random() % 4, sizes[random() % 9], seed + i));
      if (random() % 5 == 0) fs::permissions(path, fs::perms::owner_write, fs::perm_options::remove);
    }
    fs::create_directories("tree/Empty");
  }

  static Tree WithoutAttributes(Tree tree) {
    for (auto& [name, text] : tree) text[0] = '.';
    return tree;
  }

  static void Pack(const std::string& cabinet, const std::string& options) {
    fs::current_path("tree");
    Succeeds("-r -p " + options + " n ../" + cabinet + " *.*");
    fs::current_path("..");
  }
};

TEST_F(RoundTrip, TreesComeOutAsTheyWentInWhateverTheThreadsAndPeers) {
  ASSERT_TRUE(Installed("cabextract")) << "this test needs cabextract";
  const bool gcab = Installed("gcab");
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    const bool zip = seed % 4 != 0;
    MakeTree(seed);
    Pack("1.cab", zip ? "-t 1 -m MSZIP" : "-t 1 -m NONE");
    for (const std::string threads : {"2", "8"}) {
      Pack("n.cab", "-t " + threads + (zip ? " -m mszip" : " -m none"));
      EXPECT_TRUE(ReadFile("1.cab") == ReadFile("n.cab")) << threads << " threads make other bytes";
    }
    const Tree tree = Read("tree");
    EXPECT_TRUE(Extracted("1.cab") == tree);
    EXPECT_TRUE(WithoutAttributes(ExtractedByPeer("cabextract -q ../1.cab")) == WithoutAttributes(tree));
    if (gcab) {
      EXPECT_TRUE(WithoutAttributes(ExtractedByPeer("gcab -x ../1.cab >/dev/null")) == WithoutAttributes(tree));
    }
    fs::remove_all("tree");
  }
}

TEST_F(RoundTrip, ReadsWhatGcabWrites) {
  if (!Installed("gcab")) GTEST_SKIP() << "gcab is not installed";
  MakeTree(1);
  EXPECT_TRUE(Runs("cd tree && find . -type f -printf '%P\\n' | sort | tr '\\n' '\\0' | xargs -0 gcab -c -z ../g.cab"));
  EXPECT_TRUE(WithoutAttributes(Extracted("g.cab")) == WithoutAttributes(Read("tree")));
}

TEST_F(RoundTrip, KeepsTheTimeInStepsOfTwoSeconds) {
  Write("a", "x");
  Write("old", "x");
  std::tm time{};
  std::istringstream("2024-07-31 23:59:59") >> std::get_time(&time, "%Y-%m-%d %H:%M:%S");
  time.tm_isdst = -1;
  const auto moment = std::chrono::file_clock::from_sys(std::chrono::system_clock::from_time_t(std::mktime(&time)));
  fs::last_write_time("a", moment);
  fs::last_write_time("old", moment - std::chrono::years(60));
  Succeeds("n t.cab a old");
  Extracted("t.cab");
  EXPECT_EQ(moment - std::chrono::seconds(1), fs::last_write_time("out/a"));
  const std::string list = Cabarc("l t.cab").out;
  EXPECT_NE(std::string::npos, list.find("2024-07-31 23:59:58")) << list;
  EXPECT_NE(std::string::npos, list.find("1980-01-01 00:00:00")) << list;
}

// 31 February is no date: such a file keeps the time at which it was written.
TEST_F(RoundTrip, ADateThatThereIsNotIsLeftOut) {
  std::string bytes = PlainCabinet("a", "x").Build();
  Write("c.cab", bytes.replace(44 + 10, 2, Number((44 << 9) | (2 << 5) | 31, 2)));
  Extracted("c.cab");
  EXPECT_LT(fs::file_time_type::clock::now() - fs::last_write_time("out/a"), std::chrono::hours(1));
}

}  // namespace
