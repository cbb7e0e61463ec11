// The helpers of the suite, and its cases on files and folders as such.
#include "contract/FileSystemContract.h"

#include <algorithm>

namespace contract {

void FileSystemContract::Put(const std::string& path, const std::string& bytes) {
  const auto writer = Files().CreateBinary(path);
  ASSERT_NE(writer, nullptr) << path;
  ASSERT_EQ(writer->Write(reinterpret_cast<const std::byte*>(bytes.data()), bytes.size()), 0) << path;
  ASSERT_EQ(writer->Close(), 0) << path;
}

std::string FileSystemContract::Contents(const std::string& path) {
  const auto reader = Files().OpenBinary(path);
  if (reader == nullptr) return "(not readable)";
  std::string bytes;
  std::byte block[7];
  for (std::int64_t count = 0; (count = reader->Read(block, sizeof block)) > 0;) {
    bytes.append(reinterpret_cast<const char*>(block), static_cast<std::size_t>(count));
  }
  return bytes;
}

Texts FileSystemContract::Names(const std::string& folder, const std::string& pattern) {
  std::vector<host::FolderEntry> entries;
  Texts names;
  if (Files().List(folder, pattern, entries) != 0) names.push_back("!");
  for (const host::FolderEntry& entry : entries) names.push_back(entry.name);
  std::ranges::sort(names);
  return names;
}

TEST_F(FileSystemContract, NamesKeepBlanksAndUmlautsAndAreFoundInAnyCase) {
  ASSERT_EQ(Files().MakeFolder(At("Bilder für Röntgen")), 0);
  Put(At("Bilder für Röntgen\\Ärztin 1.txt"), "x");
  EXPECT_EQ(Names(At("Bilder für Röntgen")), Texts{"Ärztin 1.txt"});
  EXPECT_TRUE(Files().FileExists(At("BILDER FÜR RÖNTGEN\\ärztin 1.TXT")));
  EXPECT_TRUE(Files().FolderExists(At("bilder für röntgen\\")));
  EXPECT_EQ(Files().FileSize(At("bilder FÜR röntgen\\ÄRZTIN 1.txt")), 1);
}

TEST_F(FileSystemContract, DoubledSeparatorsCountAsOne) {
  ASSERT_EQ(Files().MakeFolder(At("sub\\")), 0);
  Put(At("sub\\\\a.txt"), "a");
  EXPECT_EQ(Names(At("\\sub\\\\")), Texts{"a.txt"});
  EXPECT_EQ(Files().MoveTo(At("\\\\sub\\a.txt"), At("sub\\\\b.txt")), 0);
  EXPECT_EQ(Contents(At("sub\\b.txt")), "a");
  EXPECT_EQ(Files().RemoveFolder(At("\\sub\\\\")), 0);
  EXPECT_FALSE(Files().FolderExists(At("sub")));
}

TEST_F(FileSystemContract, WhatIsMissingIsAFailure) {
  for (const std::string& path : {At("none"), At("none\\none"), std::string()}) {
    SCOPED_TRACE(path);
    std::vector<host::FolderEntry> entries{{"left over"}};
    EXPECT_FALSE(Files().FileExists(path));
    EXPECT_FALSE(Files().FolderExists(path));
    EXPECT_EQ(Files().FileSize(path), -1);
    EXPECT_EQ(Files().List(path, "*", entries), -1);
    EXPECT_TRUE(entries.empty());
    EXPECT_EQ(Files().OpenText(path), nullptr);
    EXPECT_EQ(Files().OpenBinary(path), nullptr);
    EXPECT_EQ(Files().RemoveFile(path), -1);
    EXPECT_EQ(Files().RemoveFolder(path), -1);
    EXPECT_EQ(Files().ClearAttributes(path), -1);
    EXPECT_EQ(Files().MoveTo(path, At("target")), -1);
    EXPECT_EQ(Files().CopyTo(path, At("target")), -1);
  }
  EXPECT_EQ(Files().MakeFolder(At("none\\none")), -1);
  EXPECT_EQ(Files().CreateText(At("none\\a.txt")), nullptr);
  EXPECT_EQ(Files().AppendText(At("none\\a.txt")), nullptr);
  EXPECT_EQ(Names(At("")), Texts{});
}

TEST_F(FileSystemContract, AFileIsNoFolderAndAFolderNoFile) {
  Put(At("file"), "x");
  ASSERT_EQ(Files().MakeFolder(At("folder")), 0);
  EXPECT_FALSE(Files().FolderExists(At("file")));
  EXPECT_FALSE(Files().FileExists(At("folder")));
  EXPECT_EQ(Files().FileSize(At("folder")), -1);
  EXPECT_EQ(Files().RemoveFile(At("folder")), -1);
  EXPECT_EQ(Files().RemoveFolder(At("file")), -1);
  EXPECT_EQ(Files().MakeFolder(At("file")), -1);
  EXPECT_EQ(Files().MakeFolder(At("folder")), -1);
  EXPECT_EQ(Files().MoveTo(At("folder"), At("moved")), -1);
  EXPECT_EQ(Files().CreateText(At("folder")), nullptr);
  EXPECT_EQ(Names(At("")), (Texts{"file", "folder"}));
}

TEST_F(FileSystemContract, ListsByPatternWithSizes) {
  for (const char* name : {"a.cab", "B.CAB", "c.cabinet", "readme", "system event log.evtx"}) Put(At(name), "12345");
  ASSERT_EQ(Files().MakeFolder(At("folder.cab")), 0);
  const std::pair<const char*, Texts> cases[] = {
      {"*.cab", {"B.CAB", "a.cab", "folder.cab"}},  // not the short name of "c.cabinet"
      {"*.evt", {}},
      {"SYSTEM~1.*", {}},
      {"?.cab", {"B.CAB", "a.cab"}},
      {"*.*", {"B.CAB", "a.cab", "c.cabinet", "folder.cab", "readme", "system event log.evtx"}},
      {"READ*", {"readme"}},
      {"readme", {"readme"}},
  };
  for (const auto& [pattern, names] : cases) EXPECT_EQ(Names(At(""), pattern), names) << pattern;

  std::vector<host::FolderEntry> entries;
  ASSERT_EQ(Files().List(At(""), "*.cab", entries), 0);
  for (const host::FolderEntry& entry : entries) {
    EXPECT_EQ(entry.isFolder, entry.name == "folder.cab") << entry.name;
    EXPECT_EQ(entry.size, entry.isFolder ? 0U : 5U) << entry.name;
  }
}

TEST_F(FileSystemContract, ReadOnlyItemsAreRemovedToo) {
  ASSERT_EQ(Files().MakeFolder(At("tree")), 0);
  ASSERT_EQ(Files().MakeFolder(At("tree\\below")), 0);
  for (const char* name : {"single", "tree\\a", "tree\\below\\b"}) {
    Put(At(name), "x");
    MakeReadOnly(At(name));
  }
  MakeReadOnly(At("tree\\below"));
  EXPECT_EQ(Files().RemoveFile(At("single")), 0);
  EXPECT_EQ(Files().RemoveFolder(At("tree\\")), 0);
  EXPECT_EQ(Names(At("")), Texts{});
}

TEST_F(FileSystemContract, TheCurrentFolderIsWhereRelativePathsStart) {
  const std::string before = Files().CurrentFolder();
  ASSERT_EQ(Files().MakeFolder(At("here")), 0);
  ASSERT_EQ(Files().SetCurrentFolder(At("here\\")), 0);
  EXPECT_EQ(Files().CurrentFolder(), At("here"));
  Put("a.txt", "a");
  EXPECT_EQ(Contents(At("here\\a.txt")), "a");
  EXPECT_TRUE(Files().FileExists(".\\a.txt"));
  EXPECT_EQ(Files().SetCurrentFolder(At("nowhere")), -1);
  EXPECT_EQ(Files().CurrentFolder(), At("here"));
  ASSERT_EQ(Files().SetCurrentFolder("C:\\"), 0);
  EXPECT_EQ(Files().CurrentFolder(), "C:\\");
  EXPECT_EQ(Files().SetCurrentFolder(before), 0);
}

}  // namespace contract
