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
using fakes::Held;
using fakes::Words;

constexpr const char* kFrom = "C:\\From\\";
constexpr const char* kTo = "C:\\To\\";

struct CopyCase {
  const char* name;
  std::function<void(Disk&)> arrange;
  std::uint32_t code;
  Names copied;
  const char* source = "C:\\From";
  std::uint32_t (*interpreter)(Disk&, const Words&) = fakes::RunCommandInterpreter;
};

std::function<void(Disk&)> Marked(const std::string& path, unsigned attributes) {
  return [=](Disk& disk) { disk.Find(path)->attributes = attributes; };
}
std::function<void(Disk&)> Locked(const std::string& path) {
  return [=](Disk& disk) { EXPECT_TRUE(disk.Hold(path)); };
}
std::function<void(Disk&)> Deep(const std::string& folder) {
  return [=](Disk& disk) {
    const std::string below = kFrom + folder + std::string(130, 'd') + "\\";
    EXPECT_TRUE(disk.Write(below + "1", "x") && disk.Write(below + std::string(130, 'n'), "x"));
    EXPECT_TRUE(disk.Write(below + "z", "x"));
  };
}
void FillDrive(Disk& disk) {
  disk.FindDrive("C:")->capacity -= static_cast<std::uint64_t>(disk.FreeSpace("C:")) - 3;
}
void PutReadOnlyTarget(Disk& disk) {
  disk.Write(std::string(kTo) + "b", "old");
  Marked(std::string(kTo) + "b", fakes::kReadOnly)(disk);
}

const Names kAll = {"a", "b", "c", "s\\b", "s\\d", "t\\e"};

const CopyCase kCopies[] = {
    {"all", [](Disk&) {}, 0, kAll},
    {"hidden and system files are passed over",
     [](Disk& disk) { Marked("C:\\From\\a", 2)(disk), Marked("C:\\From\\c", 4)(disk); },
     0,
     {"b", "s\\b", "s\\d", "t\\e"}},
    {"no empty folders", [](Disk& disk) { disk.MakeFolders("C:\\From\\u\\v"); }, 0, kAll},
    {"stops at a locked file", Locked("C:\\From\\b"), 4, {"a"}},
    {"stops at one in a subfolder", Locked("C:\\From\\s\\b"), 4, {"a", "b", "c"}},
    {"or says nothing of it",
     Locked("C:\\From\\s\\b"),
     0,
     {"a", "b", "c", "t\\e"},
     "C:\\From",
     fakes::RunSilentCommandInterpreter},
    {"stops at a read-only target", PutReadOnlyTarget, 4, {"a", "b"}},
    {"leaves what fits on a full disk", FillDrive, 4, {"a"}},
    {"copies are not read-only", Marked("C:\\From\\a", fakes::kReadOnly), 0, kAll},
    {"passes over deep files and what follows them",
     Deep("s\\"),
     0,
     {"a", "b", "c", "s\\b", "s\\d", "s\\" + std::string(130, 'd') + "\\1", "t\\e"}},
    {"a name is found in deeper folders, too", [](Disk&) {}, 0, {"b", "s\\b"}, "C:\\From\\b"},
    {"a pattern finds nothing", [](Disk&) {}, 1, {}, "C:\\From\\*.x"},
    {"no such folder", [](Disk&) {}, 4, {}, "C:\\None\\a"},
    {"not into itself", [](Disk&) {}, 4, {}, "C:\\"},
};

TEST(Tools, XcopyLeavesOutWhatTheRealOneDoes) {
  for (const CopyCase& copy : kCopies) {
    SCOPED_TRACE(copy.name);
    Disk disk;
    disk.AddDrive('C', "SYSTEM", 100'000);
    disk.MakeFolders(kTo);
    for (const std::string& name : kAll) disk.Write(kFrom + name, "of " + name);
    copy.arrange(disk);
    EXPECT_EQ(copy.interpreter(disk, {"CMD", "/C", "xcopy", copy.source, kTo, "/S", "/Y"}), copy.code);
    const auto made = disk.Tree(kTo);
    EXPECT_EQ(NamesOf(made), copy.copied);
    EXPECT_FALSE(disk.IsFolder(std::string(kTo) + "u"));
    for (const auto& [name, bytes] : made) EXPECT_EQ(disk.Find(kTo + name)->attributes & ~fakes::kReadOnly, 0u);
    if (copy.code == 0 && made.contains("a")) {
      EXPECT_EQ(disk.Find("C:\\To\\a")->attributes, 0u);
      EXPECT_EQ(disk.Find("C:\\To\\a")->modified, disk.Find("C:\\From\\a")->modified);
    }
  }
}

TEST(Tools, XcopyLeavesAPartOfAFileOnAFullDisk) {
  Disk disk;
  disk.AddDrive('C', "SYSTEM", 100);
  disk.Write("C:\\From\\a", std::string(60, 'a'));
  EXPECT_EQ(fakes::RunCommandInterpreter(disk, {"CMD", "/C", "xcopy", "C:\\From", kTo, "/S", "/Y"}), 4u);
  EXPECT_EQ(disk.Read("C:\\To\\a").size(), 40u);
}

TEST(Tools, TheArchiverKeepsMarksAndRefusesWhatItCannotRead) {
  Disk disk;
  disk.AddDrive('C', "SYSTEM", 1'000'000);
  disk.Write("C:\\Röntgen\\h", "hidden");
  Marked("C:\\Röntgen\\h", fakes::kHidden | fakes::kReadOnly)(disk);
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
