// The catalogue's files: what every language must have, and what dialogs and messages rely on.
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Entry {
  std::string buttons, icon, text;
};

using Catalogue = std::map<int, Entry>;

Catalogue Read(const std::string& language) {
  Catalogue catalogue;
  std::ifstream file(std::string(CATALOGUE_FOLDER) + "/" + language + ".tsv");
  for (std::string line; std::getline(file, line);) {
    std::istringstream fields(line);
    int id = 0;
    Entry entry;
    std::getline(fields >> id >> entry.buttons >> entry.icon >> std::ws, entry.text);
    EXPECT_TRUE(catalogue.emplace(id, entry).second) << id << " stands twice in " << language;
  }
  return catalogue;
}

/// The characters that follow a mark: insertions' numbers behind "%", the access key behind "&", in lower case.
std::set<int> Marked(char mark, const std::string& text) {
  std::set<int> found;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i - 1] == mark) found.insert(std::tolower(static_cast<unsigned char>(text[i])));
  }
  return found;
}

TEST(Catalogue, SaysTheSameInBothLanguages) {
  const Catalogue english = Read("english"), german = Read("german");
  ASSERT_GT(english.size(), 150U);
  EXPECT_EQ(english.size(), german.size());
  for (const auto& [id, entry] : english) {
    ASSERT_TRUE(german.contains(id)) << id;
    const Entry& other = german.at(id);
    EXPECT_EQ(entry.buttons + entry.icon, other.buttons + other.icon) << id;
    EXPECT_EQ(Marked('%', entry.text), Marked('%', other.text)) << id;
    EXPECT_FALSE(entry.text.empty() || other.text.empty()) << id;
    EXPECT_EQ(entry.buttons, id >= 64000 && id < 65000 ? "2" : "1") << id << ", a prompt or not";
  }
}

TEST(Catalogue, GivesEachDialogDistinctAccessKeys) {
  const std::map<std::string, std::vector<int>> dialogs = {
      {"sign-in", {66011, 66012, 66001, 66002}},
      {"main menu", {66021, 66022, 66023, 66003}},
      {"backup", {66031, 66032, 66033, 66034, 66035, 66036, 66004, 66002}},
      {"restore",
       {66051, 66052, 66053, 66054, 66055, 66056, 66057, 66058, 66059, 66060, 66061, 66062, 66063, 66004, 66002}},
      {"maintenance",
       {66101, 66102, 66103, 66104, 66106, 66107, 66108, 66115, 66117, 66118, 66119, 66120, 66004, 66002}},
      {"folder", {66041, 66042, 66005, 66001, 66002}},
      {"message", {67002, 67003}}};
  for (const char* language : {"english", "german"}) {
    const Catalogue catalogue = Read(language);
    for (const auto& [dialog, ids] : dialogs) {
      std::set<int> keys;
      for (const int id : ids) {
        ASSERT_TRUE(catalogue.contains(id)) << id;
        for (const int key : Marked('&', catalogue.at(id).text)) {
          EXPECT_TRUE(keys.insert(key).second) << language << ", " << dialog << ": " << id;
        }
      }
    }
  }
}

}  // namespace
