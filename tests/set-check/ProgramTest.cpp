// The checker as a command, on real folders: shelves, bad media, floppies' images, and what it takes out of a set.
#include <gtest/gtest.h>

#include "base/Text.h"
#include "fakes/Cabinet.h"
#include "set-check/MemorySet.h"
#include "set-check/Program.h"
#include "set-check/SetCheck.h"

namespace {

using setcheck::ExitCode;

class Answers : public setcheck::Output {
 public:
  bool Answer(std::string_view text) override {
    said += text;
    return true;
  }
  void Complain(std::string_view text) override { complaint += text; }
  void ShowProgress(std::string_view) override {}

  std::string said;
  std::string complaint;
};

void Lay(const Files& files, const fs::path& folder) {
  for (const auto& [name, bytes] : files) WriteFile(folder / name, bytes);
}

std::size_t Count(const std::string& text, const std::string& what) {
  std::size_t count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

class SetCheckProgram : public testing::Test {
 protected:
  SetCheckProgram() { Lay(MakeSystem(), "system"); }
  ~SetCheckProgram() override { EXPECT_TRUE(folder_.IsAlone()) << "something was written outside"; }

  Answers Check(std::vector<std::string> arguments, ExitCode expected) {
    Answers answers;
    EXPECT_EQ(setcheck::Run(arguments, answers), expected) << answers.said << answers.complaint;
    return answers;
  }

  TemporaryFolder folder_;
  const Files set_ = MakeSet(1);
};

TEST_F(SetCheckProgram, AnswersForEverySetOfAShelf) {
  Lay(set_, "shelf/\u65e5\u672c/sound");
  Files damaged = set_;
  damaged["ReportData.cab"].resize(3000);
  Lay(damaged, "shelf/a/b/damaged");
  Files headless = set_;
  headless.erase(kDescriptor);
  Lay(headless, "shelf/headless");
  Lay({{kDescriptor, set_.at(kDescriptor)}, {"MAINTENANCE.cab", Archived({{"log", "text"}})}}, "shelf/empty");
  const std::vector<Files> pile = MakePile(set_);
  for (std::size_t i = 0; i < pile.size(); ++i) Lay(pile[i], "shelf/pile/" + std::to_string(i));
  fs::create_directory_symlink("..", "shelf/a/loop");
  WriteFile("shelf/notes.txt", "no set");

  const Answers words = Check({"shelf"}, ExitCode::NotRestorable);
  EXPECT_EQ(words.said.find("IN PART: 3 of 4 kinds of data can be restored: shelf/a/b/damaged\n"), 0u) << words.said;
  for (const char* const line : {"YES: all of it can be restored, 4 of 4 kinds of data: shelf/\u65e5\u672c/sound\n",
                                 "NO: it cannot be restored, BackupInfo.ini: not there: shelf/headless\n",
                                 "YES: all of it can be restored, 4 of 4 kinds of data: shelf/pile/0\n",
                                 "lost     Report\\2.dat", "5 sets: 2 can be restored, 1 in part, 2 not\n"}) {
    EXPECT_NE(words.said.find(line), std::string::npos) << line << words.said;
  }

  const std::string json = Check({"--json", "shelf"}, ExitCode::NotRestorable).said;
  EXPECT_EQ(Count(json, "\"restorable\":"), 5u);
  EXPECT_EQ(Count(json, "{"), Count(json, "}"));
  EXPECT_NE(json.find("\"summary\":{\"sets\":5,\"yes\":2,\"part\":1,\"no\":2,\"exit\":2}"), std::string::npos) << json;
  EXPECT_NE(Check({"--list", "shelf/\u65e5\u672c/sound"}, ExitCode::Sound).said.find("Menu\\b.dat"), std::string::npos);
  EXPECT_NE(Check({"system"}, ExitCode::NotRestorable).said.find("NO: no set is there: system"), std::string::npos);
}

TEST_F(SetCheckProgram, MaintenanceLogsAreWholeOrNot) {
  const std::string log = Archived({{"log", "text"}, {"more", Noise(40'000, 1)}});
  Files bundle = {{kDescriptor, "AppVersion=\r\nCABFile=MAINTENANCE.cab;\r\n"}, {"MAINTENANCE.cab", log}};
  Lay(bundle, "bundle");
  EXPECT_NE(Check({"bundle"}, ExitCode::Sound).said.find("YES: the maintenance log is whole"), std::string::npos);
  bundle["MAINTENANCE.cab"].resize(36'000);
  Lay(bundle, "bundle");
  EXPECT_NE(Check({"bundle"}, ExitCode::PartsLost).said.find("IN PART"), std::string::npos);
  Lay(set_, "set");
  WriteFile("set/MAINTENANCE.cab", log);  // beside a set it says nothing of the set
  Check({"--application", "Tapir", "set"}, ExitCode::NotRestorable);
}

TEST_F(SetCheckProgram, TellsWhatAWorkstationWouldOffer) {
  Lay(set_, "set");
  Check({"--workstation", "system", "--application", "Tarsus", "--version", "3.10", "set"}, ExitCode::Sound);
  EXPECT_NE(Check({"--version", "4.00", "set"}, ExitCode::NotRestorable).said.find("made with version 3.00"),
            std::string::npos);
  Files system = MakeSystem();
  system["BackupVersion.ini"] = base::Replaced(system["BackupVersion.ini"], "MenuData=V2.1", "MenuData=V2.2");
  system["BackupList.ini"] = base::Replaced(system["BackupList.ini"], "[USER_RESTORE]", "[USERS]");
  Lay(system, "system");
  const std::string said = Check({"--workstation", "system", "set"}, ExitCode::PartsLost).said;
  EXPECT_NE(said.find("2 of 4 kinds"), std::string::npos) << said;
  EXPECT_NE(said.find("BackupList.ini has no section USER_RESTORE"), std::string::npos) << said;

  Lay(MakeSystem(), "system");
  WriteFile("system/Directory.ini", "Param=C:\\Tarsus\\Param\r\n");
  EXPECT_NE(Check({"--workstation", "system", "set"}, ExitCode::PartsLost).said.find("Directory.ini has no Config"),
            std::string::npos);
  fs::remove("system/Directory.ini");  // who has only the job file knows less, and complains of nothing
  Check({"--workstation", "system", "set"}, ExitCode::Sound);
}

TEST_F(SetCheckProgram, TakesOutWhatIsLeftAndNothingLeavesTheTarget) {
  Files set = set_;
  set["ReportData.cab"][set["ReportData.cab"].size() - 3] ^= 1;
  set["ReportData.cab"][set["ReportData.cab"].size() - 90] ^= 1;
  set["MenuData.cab"] = fakes::MakeCabinet({{"..\\..\\..\\evil", "1"}, {"C:\\evil", "2"}, {"good", "3"}});
  Lay(set, "set");
  const Answers answers = Check({"--unpack", "out", "set"}, ExitCode::PartsLost);
  EXPECT_EQ(ReadFile("out/MenuData/good"), "3") << answers.said;
  EXPECT_TRUE(ReadFile("out/ReportData/Report/1.txt.partial").starts_with(std::string(32'768, 'r'))) << answers.said;
  EXPECT_FALSE(fs::exists("out/ReportData/Report/2.dat")) << "nothing is left of it";
  EXPECT_EQ(ReadFile("out/UserData/User/x/y"), "");
  Check({"--unpack", "out", "set"}, ExitCode::WrongUse);  // it is not empty any more

  const std::vector<Files> pile = MakePile(set_);
  Lay(pile[0], "pile/1");
  Check({"--unpack", "floppies", "pile"}, ExitCode::Sound);
  EXPECT_EQ(ReadFile("floppies/UserData/Users.db"), "users");
}

TEST_F(SetCheckProgram, ComparesWithWhatIsAlive) {
  Lay(set_, "set");
  Lay({{"Data/Menu/a.ini", "menu 1"}, {"Data/Menu/b.dat", Noise(900, 1)}, {"Database/Users.db", "USERS"}}, "live");
  const std::string said = Check({"--workstation", "system", "--compare", "live", "set"}, ExitCode::PartsLost).said;
  EXPECT_NE(said.find("MenuData.cab: 2 files are the same, 0 differ"), std::string::npos) << said;
  EXPECT_NE(said.find("Database\\Users.db differs"), std::string::npos) << said;
  EXPECT_NE(said.find("Param\\param.mdb is not there"), std::string::npos) << said;
}

TEST_F(SetCheckProgram, WrongUseIsToldApart) {
  Lay(set_, "set");
  const std::vector<std::vector<std::string>> wrong = {{},
                                                       {"nowhere"},
                                                       {"--such", "set"},
                                                       {"--unpack"},
                                                       {"--compare", "set", "set"},
                                                       {"--json", "--unpack", "out", "set"},
                                                       {"--workstation", "set", "set"}};
  for (const std::vector<std::string>& arguments : wrong) {
    EXPECT_FALSE(Check(arguments, ExitCode::WrongUse).complaint.empty());
  }
  EXPECT_FALSE(Check({"--help"}, ExitCode::Sound).said.empty());
  EXPECT_FALSE(fs::exists("out"));
}

/// A medium that answers with errors from somewhere on: what was read until then counts, the rest is damage.
TEST(SetCheckMedium, ReadErrorsAreDamage) {
  const TemporaryFolder temporary;
  const Files files = MakeSet(1, 300'000);
  setcheck::NoHost noHost;
  setcheck::SetCheck check(noHost, nullptr, {}, [](std::uint64_t) {});
  MemoryFolder folder(files);
  folder.unreadable["ReportData.cab"] = 150'000;
  const setcheck::SetReport report = check.Check(folder);
  EXPECT_EQ(report.Verdict(), setcheck::Restorable::InPart);
  const std::string words = setcheck::InWords(report);
  EXPECT_NE(words.find("its data cannot be read"), std::string::npos) << words;
  EXPECT_NE(words.find("1 of 2 files are whole"), std::string::npos) << words;
  MemoryFolder dark(files);
  dark.unreadable[kDescriptor] = 100;
  EXPECT_EQ(check.Check(dark).Verdict(), setcheck::Restorable::NotAtAll);
}

/// A FAT12 disk of the usual size with these files in its root folder, under long names, their clusters far apart.
std::string MakeFloppy(const Files& files) {
  constexpr std::size_t kSector = 512, kFatAt = kSector, kFatSize = 9 * kSector, kRootAt = 19 * kSector;
  constexpr std::size_t kDataAt = 33 * kSector, kClusters = 2847;
  std::string image(setcheck::kFloppySize, '\0');
  auto* const bytes = reinterpret_cast<std::uint8_t*>(image.data());
  cabinet::Put16(bytes + 11, kSector);
  bytes[13] = 1;
  cabinet::Put16(bytes + 14, 1);
  bytes[16] = 2;
  cabinet::Put16(bytes + 17, 224);
  cabinet::Put16(bytes + 22, 9);
  const auto link = [&](unsigned from, unsigned to) {
    std::uint8_t* const at = bytes + kFatAt + from + from / 2;
    const unsigned old = cabinet::Get16(at);
    cabinet::Put16(at, from % 2 == 0 ? (old & 0xF000) | to : (old & 0x000F) | to << 4);
  };
  // Every second cluster on the way up, the others behind them.
  std::vector<unsigned> order;
  for (unsigned first : {2u, 3u})
    for (unsigned one = first; one < kClusters + 2; one += 2) order.push_back(one);
  std::size_t taken = 0;
  std::uint8_t* entry = bytes + kRootAt;
  for (const auto& [name, contents] : files) {
    for (std::size_t pieces = (name.size() + 12) / 13, number = pieces; number > 0; --number, entry += 32) {
      entry[0] = static_cast<std::uint8_t>(number | (number == pieces ? 0x40 : 0));
      entry[11] = 0x0F;
      std::size_t at = 13 * (number - 1);
      for (const int unit : {1, 3, 5, 7, 9, 14, 16, 18, 20, 22, 24, 28, 30}) {
        cabinet::Put16(entry + unit, at < name.size()    ? static_cast<unsigned char>(name[at])
                                     : at == name.size() ? 0
                                                         : 0xFFFF);
        ++at;
      }
    }
    std::memcpy(entry, "SHORT~1 INI", 11);
    cabinet::Put16(entry + 26, order[taken]);
    cabinet::Put32(entry + 28, static_cast<std::uint32_t>(contents.size()));
    entry += 32;
    for (std::size_t at = 0; at < contents.size(); at += kSector, ++taken) {
      image.replace(kDataAt + (order[taken] - 2) * kSector, std::min(kSector, contents.size() - at), contents, at,
                    kSector);
      link(order[taken], at + kSector < contents.size() ? order[taken + 1] : 0xFFF);
    }
  }
  image.replace(kFatAt + kFatSize, kFatSize, image, kFatAt, kFatSize);
  return image;
}

TEST_F(SetCheckProgram, ReadsFloppiesFromTheirImages) {
  const std::vector<Files> pile = MakePile(MakeSet(1, 1'500'000));
  ASSERT_EQ(pile.size(), 2u);
  WriteFile("images/a.img", MakeFloppy(pile[1]));
  const std::string first = MakeFloppy(pile[0]);
  WriteFile("images/b.img", first);
  WriteFile("images/letters.img", MakeFloppy({{"letter.txt", "of no set"}}));
  Check({"images"}, ExitCode::Sound);
  Check({"images/letters.img"}, ExitCode::NotRestorable);
  Check({"images/a.img", "images/b.img"}, ExitCode::Sound);
  EXPECT_NE(Check({"images/a.img"}, ExitCode::NotRestorable).said.find("disk 1 is missing"), std::string::npos);
  std::mt19937 random(1);
  for (int i = 0; i < 60; ++i) {  // whatever its tables say, there is an answer
    std::string image = first;
    for (int k = 0; k < 3; ++k) image[random() % (33 * 512)] = static_cast<char>(random());
    WriteFile("images/b.img", image);
    Answers answers;
    setcheck::Run({"images"}, answers);
    ASSERT_FALSE(answers.said.empty());
  }
}

}  // namespace
