// The catalogue's files: what every language must have, and what dialogs and messages rely on.
#include <gtest/gtest.h>

#include <algorithm>
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
    std::string id;
    Entry entry;
    std::getline(fields, id, '\t');
    std::getline(fields, entry.buttons, '\t');
    std::getline(fields, entry.icon, '\t');
    std::getline(fields, entry.text);
    EXPECT_TRUE(catalogue.emplace(std::stoi(id), entry).second) << id << " stands twice in " << language;
  }
  return catalogue;
}

/// The letter behind "&", in lower case; NUL when there is none.
char AccessKey(const std::string& caption) {
  const std::size_t at = caption.find('&');
  if (at == std::string::npos || at + 1 == caption.size()) return '\0';
  return static_cast<char>(std::tolower(static_cast<unsigned char>(caption[at + 1])));
}

std::set<std::string> Insertions(const std::string& text) {
  std::set<std::string> found;
  for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 1)) {
    found.insert(text.substr(at, 2));
  }
  return found;
}

TEST(Catalogue, SaysTheSameInBothLanguages) {
  const Catalogue english = Read("english"), german = Read("german");
  ASSERT_GT(english.size(), 150U);
  EXPECT_EQ(english.size(), german.size());
  for (const auto& [id, entry] : english) {
    const auto other = german.find(id);
    ASSERT_NE(other, german.end()) << id;
    EXPECT_EQ(entry.buttons + entry.icon, other->second.buttons + other->second.icon) << id;
    EXPECT_EQ(Insertions(entry.text), Insertions(other->second.text)) << id;
    EXPECT_FALSE(entry.text.empty() || other->second.text.empty()) << id;
  }
}

TEST(Catalogue, AsksWithTwoButtonsExactlyInPrompts) {
  for (const auto& [id, entry] : Read("english")) {
    const bool isPrompt = id >= 64000 && id < 65000;
    EXPECT_EQ(entry.buttons, isPrompt ? "2" : "1") << id;
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
      {"message", {67002, 67003}},
  };
  for (const char* language : {"english", "german"}) {
    const Catalogue catalogue = Read(language);
    for (const auto& [dialog, ids] : dialogs) {
      std::set<char> keys;
      for (const int id : ids) {
        ASSERT_TRUE(catalogue.contains(id)) << id;
        const char key = AccessKey(catalogue.at(id).text);
        EXPECT_TRUE(key == '\0' || keys.insert(key).second) << language << ", " << dialog << ": " << id;
      }
    }
  }
}

}  // namespace
