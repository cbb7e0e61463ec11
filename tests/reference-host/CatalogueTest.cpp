// The catalogue's files: what every language must have, and what messages rely on.
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

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

// What the program inserts: the filter's code as the second text; the number of Warnings, a folder or a document as the
// third.
TEST(Catalogue, InsertsWhatTheProgramGivesAndNothingElse) {
  for (const auto& [id, entry] : Read("english")) {
    std::set<int> insertions = Marked('%', entry.text);
    std::erase_if(insertions, [](int character) { return !std::isdigit(character); });
    const bool tellsMore = id == 61300 || id == 61400 || id == 61401 || id == 61450 || id == 61500;
    const std::set<int> given = tellsMore ? std::set<int>{'3'} : id == 60521 ? std::set<int>{'2'} : std::set<int>{};
    EXPECT_EQ(insertions, given) << id;
  }
}

// Those of the dialogs are compared where their controls are known, in tests/windows.
TEST(Catalogue, GivesTheMessagesButtonsDistinctAccessKeys) {
  for (const char* language : {"english", "german"}) {
    Catalogue catalogue = Read(language);
    EXPECT_NE(Marked('&', catalogue[67002].text), Marked('&', catalogue[67003].text)) << language;
  }
}

}  // namespace
