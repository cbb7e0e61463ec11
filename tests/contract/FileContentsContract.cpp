// The suite's cases on what stands in files: text, moving, copying.
#include "contract/FileSystemContract.h"

namespace contract {

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
    ASSERT_NE(reader, nullptr);
    Texts lines;
    for (std::string line; reader->ReadLine(line);) lines.push_back(line);
    EXPECT_EQ(lines, expected) << bytes.substr(0, 20);
  }
}

TEST_F(FileSystemContract, TextIsWrittenAsItStands) {
  const auto writer = Files().CreateText(At("text"));
  ASSERT_NE(writer, nullptr);
  EXPECT_EQ(writer->Write("Müll\r\n"), 0);
  EXPECT_EQ(writer->Write("\n"), 0);
  EXPECT_EQ(writer->Close(), 0);
  EXPECT_EQ(writer->Close(), 0);
  EXPECT_EQ(writer->Write("late"), -1);
  EXPECT_EQ(Contents(At("text")), "M\xFCll\r\n\n");
  // These are closed with the object.
  EXPECT_EQ(Files().AppendText(At("text"))->Write("more"), 0);
  EXPECT_EQ(Contents(At("text")), "M\xFCll\r\n\nmore");
  EXPECT_EQ(Files().CreateText(At("text"))->Write("anew"), 0);
  EXPECT_EQ(Contents(At("text")), "anew");
  EXPECT_EQ(Files().AppendText(At("created"))->Write("first"), 0);
  EXPECT_EQ(Contents(At("created")), "first");
}

TEST_F(FileSystemContract, MovingRenamesAndNeverReplaces) {
  Put(At("a"), "a");
  Put(At("b"), "b");
  ASSERT_EQ(Files().MakeFolder(At("folder")), 0);
  EXPECT_EQ(Files().MoveTo(At("a"), At("b")), -1);
  EXPECT_EQ(Files().MoveTo(At("a"), At("folder")), -1);
  EXPECT_EQ(Contents(At("a")) + Contents(At("b")), "ab");
  EXPECT_EQ(Files().MoveTo(At("a"), At("folder\\c")), 0);
  EXPECT_EQ(Contents(At("folder\\c")), "a");
  EXPECT_EQ(Names(At("")), (Texts{"b", "folder"}));
}

TEST_F(FileSystemContract, CopyingReplacesTheWholeTarget) {
  Put(At("source"), "new");
  Put(At("target"), "old and longer");
  EXPECT_EQ(Files().CopyTo(At("none"), At("target")), -1);
  EXPECT_EQ(Contents(At("target")), "old and longer");
  EXPECT_EQ(Files().CopyTo(At("source"), At("TARGET")), 0);
  EXPECT_EQ(Contents(At("target")), "new");
  EXPECT_EQ(Contents(At("source")), "new");
  EXPECT_EQ(Files().CopyTo(At("source"), At("third")), 0);
  EXPECT_EQ(Contents(At("third")), "new");
  EXPECT_EQ(Files().CopyTo(At("third"), At("THIRD")), 0);
  EXPECT_EQ(Contents(At("third")), "new");
  EXPECT_EQ(Names(At("")), (Texts{"source", "target", "third"}));
}

TEST_F(FileSystemContract, AFileInUseStaysAsItIs) {
  Put(At("source"), "new");
  Put(At("busy"), "old");
  {
    const auto user = Files().OpenText(At("busy"));
    EXPECT_EQ(Files().RemoveFile(At("busy")), -1);
    EXPECT_EQ(Files().MoveTo(At("busy"), At("moved")), -1);
    EXPECT_EQ(Files().CopyTo(At("source"), At("busy")), -1);
  }
  EXPECT_EQ(Contents(At("busy")), "old");
  EXPECT_EQ(Names(At("")), (Texts{"busy", "source"}));
  EXPECT_EQ(Files().RemoveFile(At("busy")), 0);
}

}  // namespace contract
