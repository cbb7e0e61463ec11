// The command-line tools of the imaginary workstation, which must be no kinder than the real ones: what a fault test
// shows is worth no more than they are.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "fakes/CommandLineTools.h"
#include "fakes/PowerCut.h"
#include "unit/Arrange.h"

namespace {

using fakes::Disk;
using fakes::Words;

const Words kCopyAll = {"CMD", "/C", "xcopy", "C:\\From", "C:\\To\\", "/S", "/Y"};

// What every version of xcopy does stands in the contract of the commands.
TEST(Tools, OneXcopySaysNothingOfAFailureInASubfolder) {
  Disk disk;
  disk.AddDrive('C', "SYSTEM", 100'000);
  for (const char* name : {"a", "s\\b", "s\\d", "t\\e"}) disk.Write(std::string("C:\\From\\") + name, name);
  disk.Hold("C:\\From\\s\\b");
  EXPECT_EQ(fakes::RunSilentCommandInterpreter(disk, kCopyAll), 0u);
  EXPECT_EQ(NamesOf(disk.Tree("C:\\To")), (Names{"a", "t\\e"}));
}

TEST(Tools, XcopyLeavesAPartOfAFileOnAFullDisk) {
  Disk disk;
  disk.AddDrive('C', "SYSTEM", 100);
  disk.Write("C:\\From\\a", std::string(60, 'a'));
  EXPECT_EQ(fakes::RunCommandInterpreter(disk, kCopyAll), 4u);
  EXPECT_EQ(disk.Read("C:\\To\\a").size(), 40u);
}

TEST(Tools, TheArchiverKeepsMarksAndRefusesWhatItCannotRead) {
  Disk disk;
  disk.AddDrive('C', "SYSTEM", 1'000'000);
  disk.Write("C:\\Röntgen\\h", "hidden");
  disk.Find("C:\\Röntgen\\h")->attributes = fakes::kHidden | fakes::kReadOnly;
  disk.SetCurrentFolder("C:\\");
  EXPECT_EQ(fakes::RunCabarc(disk, {"cabarc", "-r", "-p", "n", "x.cab", ".\\Röntgen\\*.*"}), 0u);
  EXPECT_EQ(fakes::RunCabarc(disk, {"cabarc", "-r", "-p", "X", "x.cab", "Out"}), 0u);
  EXPECT_EQ(disk.Read("C:\\Out\\Röntgen\\h"), "hidden");
  EXPECT_EQ(disk.Find("C:\\Out\\Röntgen\\h")->attributes, fakes::kHidden | fakes::kReadOnly);
  disk.Hold("C:\\Röntgen\\h");
  EXPECT_EQ(fakes::RunCabarc(disk, {"cabarc", "-r", "-p", "n", "y.cab", ".\\Röntgen\\*.*"}), 1u);
  EXPECT_FALSE(disk.IsFile("C:\\y.cab"));
}

/// What a cut can leave of the file "a", beside what else there is; "-" for no such file.
Names LeftOfA(const fakes::PowerCut& cut) {
  Names left;
  for (const fakes::Remains& remains : cut.Now())
    left.push_back(remains.files.contains("a") ? remains.files.at("a") : "-");
  std::ranges::sort(left);
  left.erase(std::ranges::unique(left).begin(), left.end());
  return left;
}

TEST(Tools, APowerCutTakesWhatWasNotFlushed) {
  const std::string zeros(3, '\0');
  Disk disk;
  disk.AddDrive('D', "BACKUP", 100'000);
  disk.Write("D:\\b", "old");
  const fakes::PowerCut cut(disk, "D:\\");
  EXPECT_EQ(LeftOfA(cut), Names{"-"});
  disk.Write("D:\\a", "new");
  EXPECT_EQ(LeftOfA(cut), (Names{"", zeros, "-", "new"}));
  EXPECT_EQ(disk.OnMedium("D:\\a").bytes, zeros);
  disk.Flush("D:\\a");
  EXPECT_EQ(LeftOfA(cut), Names{"new"});
  disk.Write("D:\\a", "new");  // the same, and yet it is written anew
  EXPECT_EQ(LeftOfA(cut), (Names{"", zeros, "new"}));
  disk.Flush("D:\\a");
  disk.Remove("D:\\a");
  EXPECT_EQ(LeftOfA(cut), (Names{"-", "new"}));
  disk.Write("D:\\c", "two");
  disk.MoveOver("D:\\c", "D:\\b");  // the name is there, and the bytes were not flushed
  EXPECT_EQ(cut.Flushed(), (std::map<std::string, std::string>{{"a", "new"}, {"b", zeros}}));
  disk.Format("D:");
  EXPECT_EQ(cut.Now().size(), 1u);
}

TEST(Tools, ABadMediumIsSeenBehindTheCacheAlone) {
  fakes::FakeHost host;
  host.disk.AddDrive('D', "BACKUP", 100'000);
  host.disk.Spoil("D:\\a", fakes::MediumFlaw::EndsInTheMiddle);
  host.disk.Write("D:\\a", "abcdef");
  EXPECT_TRUE(host.files.Flush("D:\\a").IsDone());
  std::array<std::byte, 8> bytes{};
  EXPECT_EQ(host.files.OpenBinary("D:\\a")->Read(bytes.data(), bytes.size()), 6);
  const auto reader = host.files.OpenUncached("D:\\a");
  EXPECT_EQ(reader->Read(bytes.data(), bytes.size()), 3);
  EXPECT_EQ(reader->Read(bytes.data(), bytes.size()), -1);
}

// Two blocks; every bit of the data counts, and every length.
TEST(Tools, ADamagedCabinetIsNotRead) {
  const std::string data = std::string(40'000, 'x') + "the end";
  const std::string whole = fakes::MakeCabinetOf({{"a\\x", "first"}, {"a\\x", data, fakes::kHidden}});
  const auto members = fakes::ReadCabinetMembers(whole);
  ASSERT_TRUE(members && members->size() == 2);
  EXPECT_TRUE((*members)[0].bytes == "first" && (*members)[1].bytes == data);
  EXPECT_EQ((*members)[1].attributes, fakes::kHidden);
  for (std::size_t cut = 1; cut < whole.size(); cut += 97)
    EXPECT_FALSE(fakes::ReadCabinet(whole.substr(0, whole.size() - cut)));
  EXPECT_FALSE(fakes::ReadCabinet(whole + '\0') || fakes::ReadCabinet(whole + whole));
  for (std::size_t at = whole.size() - data.size(); at < whole.size(); at += 97) {
    std::string flipped = whole;
    flipped[at] = static_cast<char>(flipped[at] ^ 0x10);
    EXPECT_FALSE(fakes::ReadCabinet(flipped)) << at;
  }
}

}  // namespace
