// The helpers of the suite, and its cases.
#include "contract/FileSystemContract.h"

#include <algorithm>

namespace contract {

namespace {

/// What FileSize answers where there is no file.
constexpr std::int64_t kNoSize = -1;

}  // namespace

testing::AssertionResult FileSystemContract::Fails(const base::Outcome& step, const std::string& path) {
  if (step.result != Failed) return testing::AssertionFailure() << path << ": not a failure";
  const std::size_t at = step.cause.find(path);
  const bool explained = at != std::string::npos && world_->Explains(step.cause.substr(at + path.size()));
  return (explained ? testing::AssertionSuccess() : testing::AssertionFailure()) << path << ": " << step.cause;
}

void FileSystemContract::Put(const std::string& path, const std::string& bytes) {
  const auto writer = Files().CreateBinary(path);
  ASSERT_EQ(writer.Why(), Done);
  ASSERT_EQ(writer->Write(reinterpret_cast<const std::byte*>(bytes.data()), bytes.size()), Done);
  ASSERT_EQ(writer->Close(), Done);
}

std::string FileSystemContract::Contents(const std::string& path) {
  const auto reader = Files().OpenBinary(path);
  return reader ? Read(*reader, 7) : "(not readable)";
}

std::string FileSystemContract::Read(host::BinaryReader& reader, std::size_t atOnce) {
  std::string bytes;
  std::vector<std::byte> block(atOnce);
  std::int64_t count = 0;
  while ((count = reader.Read(block.data(), atOnce)) > 0) {
    bytes.append(reinterpret_cast<const char*>(block.data()), static_cast<std::size_t>(count));
  }
  EXPECT_EQ(count, 0);
  return bytes;
}

Texts FileSystemContract::Names(const std::string& folder, const std::string& pattern) {
  std::vector<host::FolderEntry> entries;
  Texts names;
  if (!Files().List(folder, pattern, entries).IsDone()) names.push_back("!");
  for (const host::FolderEntry& entry : entries) names.push_back(entry.name);
  std::ranges::sort(names);
  return names;
}

host::FolderEntry FileSystemContract::EntryOf(const std::string& name) {
  std::vector<host::FolderEntry> entries;
  EXPECT_EQ(Files().List(At(""), name, entries), Done);
  return entries.empty() ? host::FolderEntry() : entries.front();
}

TEST_F(FileSystemContract, NamesKeepBlanksAndUmlautsAndAreFoundInAnyCase) {
  ASSERT_EQ(Files().MakeFolder(At("Bilder für Röntgen")), Done);
  Put(At("Bilder für Röntgen\\Ärztin 1.txt"), "x");
  EXPECT_EQ(Names(At("Bilder für Röntgen")), Texts{"Ärztin 1.txt"});
  EXPECT_TRUE(Files().FileExists(At("BILDER FÜR RÖNTGEN\\ärztin 1.TXT")));
  EXPECT_TRUE(Files().FolderExists(At("bilder für röntgen\\")));
  EXPECT_EQ(Files().FileSize(At("bilder FÜR röntgen\\ÄRZTIN 1.txt")), 1);
}

TEST_F(FileSystemContract, DoubledSeparatorsCountAsOne) {
  ASSERT_EQ(Files().MakeFolder(At("sub\\")), Done);
  Put(At("sub\\\\a.txt"), "a");
  EXPECT_EQ(Names(At("\\sub\\\\")), Texts{"a.txt"});
  EXPECT_EQ(Files().MoveTo(At("\\\\sub\\a.txt"), At("sub\\\\b.txt")), Done);
  EXPECT_EQ(Contents(At("sub\\b.txt")), "a");
  EXPECT_EQ(Files().RemoveFolder(At("\\sub\\\\")), Done);
  EXPECT_FALSE(Files().FolderExists(At("sub")));
}

TEST_F(FileSystemContract, WhatIsMissingIsAFailure) {
  for (const std::string& path : {At("none"), At("none\\none"), std::string()}) {
    SCOPED_TRACE(path);
    std::vector<host::FolderEntry> entries{{"left over"}};
    EXPECT_FALSE(Files().FileExists(path));
    EXPECT_FALSE(Files().FolderExists(path));
    EXPECT_EQ(Files().FileSize(path), kNoSize);
    EXPECT_TRUE(Fails(Files().List(path, "*", entries), path));
    EXPECT_TRUE(entries.empty());
    EXPECT_TRUE(Fails(Files().OpenText(path).Why(), path));
    EXPECT_TRUE(Fails(Files().OpenBinary(path).Why(), path));
    EXPECT_TRUE(Fails(Files().OpenUncached(path).Why(), path));
    EXPECT_TRUE(Fails(Files().Flush(path), path));
    EXPECT_TRUE(Fails(Files().RemoveFile(path), path));
    EXPECT_TRUE(Fails(Files().RemoveFolder(path), path));
    EXPECT_TRUE(Fails(Files().SetReadOnly(path), path));
    EXPECT_TRUE(Fails(Files().MoveTo(path, At("target")), path));
    EXPECT_TRUE(Fails(Files().MoveOver(path, At("target")), path));
    EXPECT_TRUE(Fails(Files().CopyTo(path, At("target")), path));
  }
  EXPECT_TRUE(Fails(Files().MakeFolder(At("none\\none")), At("none\\none")));
  EXPECT_TRUE(Fails(Files().CreateText(At("none\\a.txt")).Why(), At("none\\a.txt")));
  EXPECT_TRUE(Fails(Files().AppendText(At("none\\a.txt")).Why(), At("none\\a.txt")));
  EXPECT_EQ(Names(At("")), Texts{});
}

TEST_F(FileSystemContract, AFileIsNoFolderAndAFolderNoFile) {
  Put(At("file"), "x");
  ASSERT_EQ(Files().MakeFolder(At("folder")), Done);
  EXPECT_FALSE(Files().FolderExists(At("file")));
  EXPECT_FALSE(Files().FileExists(At("folder")));
  EXPECT_EQ(Files().FileSize(At("folder")), kNoSize);
  EXPECT_TRUE(Fails(Files().RemoveFile(At("folder")), At("folder")));
  EXPECT_TRUE(Fails(Files().RemoveFolder(At("file")), At("file")));
  EXPECT_TRUE(Fails(Files().MakeFolder(At("file")), At("file")));
  EXPECT_TRUE(Fails(Files().MakeFolder(At("folder")), At("folder")));
  for (const char* taken : {"file", "folder", "FOLDER\\"})
    EXPECT_TRUE(Fails(Files().MakePrivateFolder(At(taken)), At(taken)));
  EXPECT_TRUE(Fails(Files().MoveTo(At("folder"), At("moved")), At("folder")));
  EXPECT_TRUE(Fails(Files().CreateText(At("folder")).Why(), At("folder")));
  EXPECT_EQ(Names(At("")), (Texts{"file", "folder"}));
}

TEST_F(FileSystemContract, ListsByPatternWithSizes) {
  for (const char* name : {"a.cab", "B.CAB", "c.cabinet", "readme", "system event log.evtx"}) Put(At(name), "12345");
  ASSERT_EQ(Files().MakeFolder(At("folder.cab")), Done);
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
  ASSERT_EQ(Files().List(At(""), "*.cab", entries), Done);
  for (const host::FolderEntry& entry : entries) {
    EXPECT_EQ(entry.isFolder, entry.name == "folder.cab") << entry.name;
    EXPECT_EQ(entry.size, entry.isFolder ? 0U : 5U) << entry.name;
  }
}

TEST_F(FileSystemContract, ReadOnlyItemsAreRemovedToo) {
  ASSERT_EQ(Files().MakeFolder(At("tree")), Done);
  ASSERT_EQ(Files().MakeFolder(At("tree\\below")), Done);
  for (const char* name : {"single", "tree\\a", "tree\\below\\b"}) {
    Put(At(name), "x");
    MakeReadOnly(At(name));
  }
  MakeReadOnly(At("tree\\below"));
  EXPECT_EQ(Files().RemoveFile(At("single")), Done);
  EXPECT_EQ(Files().RemoveFolder(At("tree\\")), Done);
  EXPECT_EQ(Names(At("")), Texts{});
}

TEST_F(FileSystemContract, TheCurrentFolderIsWhereRelativePathsStart) {
  const std::string before = Files().CurrentFolder();
  ASSERT_EQ(Files().MakeFolder(At("here")), Done);
  ASSERT_EQ(Files().SetCurrentFolder(At("here\\")), Done);
  EXPECT_EQ(Files().CurrentFolder(), At("here"));
  Put("a.txt", "a");
  EXPECT_EQ(Contents(At("here\\a.txt")), "a");
  EXPECT_TRUE(Files().FileExists(".\\a.txt"));
  EXPECT_TRUE(Fails(Files().SetCurrentFolder(At("nowhere")), At("nowhere")));
  EXPECT_EQ(Files().CurrentFolder(), At("here"));
  ASSERT_EQ(Files().SetCurrentFolder("C:\\"), Done);
  EXPECT_EQ(Files().CurrentFolder(), "C:\\");
  EXPECT_EQ(Files().SetCurrentFolder(before), Done);
}

TEST_F(FileSystemContract, TextIsReadLineByLine) {
  const std::string longLine(200'000, 'x');
  const std::pair<std::string, Texts> cases[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\r\nb\r\n", {"a", "b"}},
      {"a\nb\n\nc", {"a", "b", "", "c"}},
      {"\r\n", {""}},
      {" a \r\n\tb", {" a ", "\tb"}},
      {"M\xFCll\r\n", {"Müll"}},
      {longLine + "\r\nend\r\n", {longLine, "end"}},
      // CR and LF on the two sides of a block.
      {std::string(65'535, 'y') + "\r\nend", {std::string(65'535, 'y'), "end"}},
  };
  for (const auto& [bytes, expected] : cases) {
    Put(At("text"), bytes);
    const auto reader = Files().OpenText(At("text"));
    ASSERT_EQ(reader.Why(), Done);
    Texts lines;
    for (std::string line; reader->ReadLine(line);) lines.push_back(line);
    EXPECT_EQ(lines, expected) << bytes.substr(0, 20);
  }
}

TEST_F(FileSystemContract, TextIsWrittenAsItStands) {
  const auto writer = Files().CreateText(At("text"));
  ASSERT_EQ(writer.Why(), Done);
  EXPECT_EQ(writer->Write("Müll\r\n"), Done);
  EXPECT_EQ(writer->Write("\n"), Done);
  EXPECT_EQ(writer->Close(), Done);
  EXPECT_EQ(writer->Close(), Done);
  EXPECT_TRUE(Fails(writer->Write("late"), At("text")));
  EXPECT_EQ(Contents(At("text")), "M\xFCll\r\n\n");
  // These are closed with the object.
  EXPECT_EQ(Files().AppendText(At("text"))->Write("more"), Done);
  EXPECT_EQ(Contents(At("text")), "M\xFCll\r\n\nmore");
  EXPECT_EQ(Files().CreateText(At("text"))->Write("anew"), Done);
  EXPECT_EQ(Contents(At("text")), "anew");
  EXPECT_EQ(Files().AppendText(At("created"))->Write("first"), Done);
  EXPECT_EQ(Contents(At("created")), "first");
  for (const char byte : {'\xC3', '\xBC'}) {  // as they stand, and behind what is there
    EXPECT_EQ(Files().AppendBinary(At("bytes"))->Write(reinterpret_cast<const std::byte*>(&byte), 1), Done);
  }
  EXPECT_EQ(Contents(At("bytes")), "\xC3\xBC");
}

TEST_F(FileSystemContract, MovingRenamesAndNeverReplaces) {
  Put(At("a"), "a");
  Put(At("b"), "b");
  ASSERT_EQ(Files().MakeFolder(At("folder")), Done);
  EXPECT_TRUE(Fails(Files().MoveTo(At("a"), At("b")), At("a")));
  EXPECT_TRUE(Fails(Files().MoveTo(At("a"), At("folder")), At("a")));
  EXPECT_EQ(Contents(At("a")) + Contents(At("b")), "ab");
  EXPECT_EQ(Files().MoveTo(At("a"), At("folder\\c")), Done);
  EXPECT_EQ(Contents(At("folder\\c")), "a");
  EXPECT_EQ(Names(At("")), (Texts{"b", "folder"}));
}

TEST_F(FileSystemContract, MovingOverReplacesOrLeavesBoth) {
  Put(At("a"), "new");
  Put(At("b"), "old and longer");
  ASSERT_EQ(Files().MakeFolder(At("folder")), Done);
  EXPECT_EQ(Files().MoveOver(At("a"), At("B")), Done);
  EXPECT_EQ(Contents(At("b")), "new");
  EXPECT_EQ(Files().MoveOver(At("b"), At("folder\\c")), Done);
  Put(At("a"), "newer");
  MakeReadOnly(At("folder\\c"));
  for (const char* target : {"folder", "folder\\c", "none\\c"})
    EXPECT_TRUE(Fails(Files().MoveOver(At("a"), At(target)), At("a"))) << target;
  EXPECT_TRUE(Fails(Files().MoveOver(At("folder"), At("d")), At("folder")));
  EXPECT_EQ(Contents(At("a")) + Contents(At("folder\\c")), "newernew");
  EXPECT_EQ(Names(At("")), (Texts{"a", "folder"}));
}

// Sizes round the ends of sectors and blocks, reads of odd lengths.
TEST_F(FileSystemContract, EveryReaderGivesTheBytesOfEveryPlace) {
  constexpr std::size_t kBlock = 1024 * 1024;
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{511}, std::size_t{4096}, kBlock - 1,
                                 kBlock, kBlock + 1, 2 * kBlock + 4097}) {
    SCOPED_TRACE(size);
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 31 + (i >> 9));
    Put(At("data"), bytes);
    MakeReadOnly(At("data"));
    EXPECT_EQ(Files().Flush(At("data")), Done);
    EXPECT_TRUE(EntryOf("data").isReadOnly);
    for (const bool isUncached : {false, true}) {
      const auto reader = isUncached ? Files().OpenUncached(At("data")) : Files().OpenBinary(At("data"));
      ASSERT_EQ(reader.Why(), Done);
      EXPECT_TRUE(Read(*reader, 100'003) == bytes);
      for (const std::size_t place :
           {std::size_t{0}, size / 2, size - std::min<std::size_t>(size, 3), size, size + 9999}) {
        ASSERT_TRUE(reader->Seek(place));
        EXPECT_TRUE(Read(*reader, 4095) == bytes.substr(std::min(place, size))) << place;
      }
      EXPECT_FALSE(reader->Seek(UINT64_MAX));
    }
    ASSERT_EQ(Files().RemoveFile(At("data")), Done);
  }
}

TEST_F(FileSystemContract, CopyingReplacesTheWholeTarget) {
  Put(At("source"), "new");
  Put(At("target"), "old and longer");
  EXPECT_TRUE(Fails(Files().CopyTo(At("none"), At("target")), At("none")));
  EXPECT_EQ(Contents(At("target")), "old and longer");
  EXPECT_EQ(Files().CopyTo(At("source"), At("TARGET")), Done);
  EXPECT_EQ(Contents(At("target")), "new");
  EXPECT_EQ(Contents(At("source")), "new");
  EXPECT_EQ(Files().CopyTo(At("source"), At("third")), Done);
  EXPECT_EQ(Contents(At("third")), "new");
  EXPECT_EQ(Files().CopyTo(At("third"), At("THIRD")), Done);
  EXPECT_EQ(Contents(At("third")), "new");
  EXPECT_EQ(Names(At("")), (Texts{"source", "target", "third"}));
}

TEST_F(FileSystemContract, EntriesTellTimeMarksAndKind) {
  Put(At("a"), "a");
  Pause();
  Put(At("b"), "b");
  ASSERT_EQ(Files().MakeFolder(At("folder")), Done);
  EXPECT_GT(EntryOf("a").modified, 0U);
  EXPECT_GT(EntryOf("b").modified, EntryOf("a").modified);
  Pause();
  Put(At("a"), "anew");
  EXPECT_GT(EntryOf("a").modified, EntryOf("b").modified);
  EXPECT_EQ(Files().SetReadOnly(At("a")), Done);
  EXPECT_TRUE(EntryOf("a").isReadOnly);
  EXPECT_FALSE(EntryOf("b").isReadOnly);
  Hide(At("b"));
  EXPECT_EQ(Names(At("")), (Texts{"a", "b", "folder"}));
  for (const char* name : {"a", "b", "folder"}) EXPECT_FALSE(EntryOf(name).isLink) << name;
}

TEST_F(FileSystemContract, ACopyKeepsTimeAndMarkAndReplacesReadOnlyTargets) {
  Put(At("source"), "new");
  MakeReadOnly(At("source"));
  Pause();
  Put(At("target"), "old");
  Put(At("writable"), "newer");
  for (const char* name : {"copy", "target", "target"}) {
    ASSERT_EQ(Files().CopyTo(At("source"), At(name)), Done);
    EXPECT_EQ(Contents(At(name)), "new");
    EXPECT_EQ(EntryOf(name).modified, EntryOf("source").modified) << name;
    EXPECT_TRUE(EntryOf(name).isReadOnly) << name;
  }
  ASSERT_EQ(Files().CopyTo(At("writable"), At("target")), Done);
  EXPECT_EQ(Contents(At("target")), "newer");
  EXPECT_FALSE(EntryOf("target").isReadOnly);
  EXPECT_EQ(Names(At("")), (Texts{"copy", "source", "target", "writable"}));
}

TEST_F(FileSystemContract, AFileInUseStaysAsItIs) {
  Put(At("source"), "new");
  Put(At("busy"), "old");
  {
    const auto user = Files().AppendText(At("busy"));
    MakeReadOnly(At("busy"));
    EXPECT_TRUE(Fails(Files().MoveOver(At("source"), At("busy")), At("source")));
    EXPECT_TRUE(Fails(Files().CopyTo(At("source"), At("busy")), At("source")));
    EXPECT_TRUE(Fails(Files().RemoveFile(At("busy")), At("busy")));
    EXPECT_TRUE(Fails(Files().MoveTo(At("busy"), At("moved")), At("busy")));
    EXPECT_TRUE(EntryOf("busy").isReadOnly);
  }
  EXPECT_EQ(Contents(At("busy")), "old");
  EXPECT_EQ(Names(At("")), (Texts{"busy", "source"}));
  EXPECT_EQ(Files().RemoveFile(At("busy")), Done);
}

}  // namespace contract
