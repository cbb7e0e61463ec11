// What was packed comes out again, here and from other archivers.
#include <cstdlib>
#include <ctime>
#include <random>

#include "Workspace.h"

namespace fs = std::filesystem;

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
    for (int i = 0; i < 25; ++i) {
      const std::string path = "tree/" + folders[random() % 6] + names[random() % 8] + (random() % 2 ? "" : "_");
      if (fs::exists(path)) continue;
      Write(path, Contents(random() % 4, sizes[random() % 9], seed + static_cast<unsigned>(i)));
      if (random() % 5 == 0) fs::permissions(path, fs::perms::owner_write, fs::perm_options::remove);
    }
    fs::create_directories("tree/Empty");
  }

  static Tree WithoutAttributes(Tree tree) {
    for (auto& [name, text] : tree) text[0] = '.';
    return tree;
  }

  static void Pack(const std::string& cabinet, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"-r", "-p"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.insert(arguments.end(), {"n", "../" + cabinet, "*.*"});
    fs::current_path("tree");
    const RunResult result = Cabarc(arguments);
    fs::current_path("..");
    EXPECT_EQ(0, result.code) << result.err;
  }
};

TEST_F(RoundTrip, TreesComeOutAsTheyWentInWhateverTheThreadsAndPeers) {
  ASSERT_TRUE(Installed("cabextract")) << "this test needs cabextract";
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    const bool zip = seed % 4 != 0;
    MakeTree(seed);
    Pack("1.cab", {"-t", "1", "-m", zip ? "MSZIP" : "NONE"});
    for (const char* threads : {"2", "8"}) {
      Pack("n.cab", {"-t", threads, "-m", zip ? "mszip" : "none"});
      EXPECT_TRUE(ReadBytes("1.cab") == ReadBytes("n.cab")) << threads << " threads make other bytes";
    }
    EXPECT_TRUE(Extracted("1.cab", 0) == Read("tree"));

    fs::create_directory("peer");
    EXPECT_EQ(0, std::system("cabextract -q -d peer 1.cab"));
    EXPECT_TRUE(WithoutAttributes(Read("peer")) == WithoutAttributes(Read("tree")));
    if (Installed("gcab")) {
      fs::remove_all("peer");
      fs::create_directory("peer");
      EXPECT_EQ(0, std::system("cd peer && gcab -x ../1.cab >/dev/null"));
      EXPECT_TRUE(WithoutAttributes(Read("peer")) == WithoutAttributes(Read("tree")));
    }
    fs::remove_all("peer");
    fs::remove_all("tree");
  }
}

TEST_F(RoundTrip, ReadsWhatGcabWrites) {
  if (!Installed("gcab")) GTEST_SKIP() << "gcab is not installed";
  MakeTree(1);
  EXPECT_EQ(0, std::system("cd tree && find . -type f -printf '%P\\n' | sort | tr '\\n' '\\0' | "
                           "xargs -0 gcab -c -z ../g.cab"));
  EXPECT_TRUE(WithoutAttributes(Extracted("g.cab", 0)) == WithoutAttributes(Read("tree")));
}

TEST_F(RoundTrip, KeepsTheTimeInStepsOfTwoSeconds) {
  Write("a", "x");
  Write("old", "x");
  std::tm time{};
  time.tm_year = 124, time.tm_mon = 6, time.tm_mday = 31, time.tm_hour = 23, time.tm_min = 59, time.tm_sec = 59;
  time.tm_isdst = -1;
  const auto moment = std::chrono::file_clock::from_sys(std::chrono::system_clock::from_time_t(std::mktime(&time)));
  fs::last_write_time("a", moment);
  fs::last_write_time("old", moment - std::chrono::years(60));
  EXPECT_EQ(0, Cabarc({"n", "t.cab", "a", "old"}).code);
  Extracted("t.cab", 0);
  EXPECT_EQ(moment - std::chrono::seconds(1), fs::last_write_time("out/a"));
  const std::string list = Cabarc({"l", "t.cab"}).out;
  EXPECT_NE(std::string::npos, list.find("2024-07-31 23:59:58")) << list;
  EXPECT_NE(std::string::npos, list.find("1980-01-01 00:00:00")) << list;
}

}  // namespace
