// The command line as the backup program and people use it.
#include <sys/stat.h>

#include "RawCabinet.h"
#include "Workspace.h"

namespace {

class Commands : public Workspace {};

TEST_F(Commands, PackAndUnpackACategory) {
  Write("IP.ini", "[IP]");
  Write("file 2", "two");
  Write("Images/a.ddo", "image");
  Write("Images/deep/noext", "deep");
  Write("Menu/menu.dat", "menu");
  const Tree packed = Read();
  Write("CABFILE/other.cab", "not to be packed");
  fs::create_directory("Nothing");
  Succeeds("-r -p n PatientData.cab IP.ini 'file 2' .\\Images\\*.* .\\Menu\\*.* .\\Nothing\\*.*");
  const std::string list = Cabarc("l PatientData.cab").out;
  EXPECT_NE(std::string::npos, list.find(" Images\\deep\\noext\n")) << list;
  fs::remove_all("CABFILE");
  fs::create_directory("CABFILE");
  Succeeds("-r -p X PatientData.cab CABFILE");
  EXPECT_EQ(packed, Read("CABFILE"));

  fs::create_directory("ClientLog");
  fs::current_path("ClientLog");
  Succeeds("-r -p X ../PatientData.cab");
  EXPECT_EQ(packed, Read());
  Write("IP.ini", "changed");
  Fails(ExitCode::Files, "-r -p x ../PatientData.cab");  // a person must ask for it
  EXPECT_EQ("changed", ReadFile("IP.ini"));
  fs::permissions("IP.ini", fs::perms::owner_write, fs::perm_options::remove);
  Succeeds("-r -p X ../PatientData.cab");
  EXPECT_EQ(packed, Read());
}

// Who waits for the archiver asks by a file; it is neither made nor packed otherwise.
TEST_F(Commands, TellsHowFarItIsWhereItIsAsked) {
  Write("a", std::string(300'000, 'a'));
  Write("s/b", "some more");
  Succeeds("-r -p n quiet.cab a s");
  EXPECT_FALSE(fs::exists("quiet.cab.progress"));
  Write("c.cab.progress", "");
  Succeeds("-r -p n c.cab a s");
  EXPECT_EQ("300009", ReadFile("c.cab.progress").substr(0, 6));
  Write("c.cab.progress", "");
  fs::create_directory("out");
  Succeeds("-r -p X c.cab out");
  EXPECT_EQ("300009              ", ReadFile("c.cab.progress"));
}

TEST_F(Commands, OptionsDecideWhatIsFoundAndHowItIsNamed) {
  for (const char* path : {"a.txt", "b.dat", "s/c.txt", "s/t/d.txt"}) Write(path, path);
  Write("list", "b.dat\r\n\ns\\c.txt");
  const std::pair<std::string, std::string> cases[] = {{"n c.cab *.txt", "a.txt "},
                                                       {"-r n c.cab *.txt", "a.txt c.txt d.txt "},
                                                       {"-r -p n c.cab *.txt", "a.txt s/c.txt s/t/d.txt "},
                                                       {"-p n c.cab s\\*.*", "s/c.txt "},
                                                       {"-p -r n c.cab s", "s/c.txt s/t/d.txt "},
                                                       {"-p -r n c.cab .\\.\\s\\", "s/c.txt s/t/d.txt "},
                                                       {"-p -r n c.cab a.txt", "a.txt "},
                                                       {"-p n c.cab @list", "b.dat s/c.txt "}};
  for (const auto& [line, expected] : cases) {
    Succeeds(line);
    std::string names;
    for (const auto& [name, text] : Extracted("c.cab")) names += name + " ";
    EXPECT_EQ(expected, names) << line;
    fs::remove("c.cab");
    fs::remove_all("out");
  }
}

// More names than a command line can hold, and such as it could not tell from something else.
TEST_F(Commands, AListFileNamesAnything) {
  const std::string kinds[] = {"画像 ", "@a b", "-r été;%"};
  std::string list = "\xEF\xBB\xBF";
  for (std::size_t i = 0; i < 5000; ++i) {
    const std::string name = "f/" + kinds[i % 3] + std::to_string(i);
    Write(name, name);
    list += name + "\r\n";
  }
  const Tree all = Read();
  Write("list", list);
  Succeeds("-p n c.cab @list");
  EXPECT_TRUE(all == Extracted("c.cab"));

  Write("\u00E9t\u00E9 \u20AC", "x");
  Write("list", "\xE9t\xE9 \x80\n");  // code page 1252
  Succeeds("n c.cab @list");
  EXPECT_EQ((Tree{{"\u00E9t\u00E9 \u20AC", ".x"}}), Extracted("c.cab"));
  Write("list", "list\nmissing\n");  // one name that is not found, and nothing is packed
  Fails(ExitCode::Files, "n new.cab @list");
  EXPECT_FALSE(fs::exists("new.cab"));
}

TEST_F(Commands, NamesChooseMembersAndTheLastArgumentMayBeTheFolder) {
  for (const char* path : {"a.txt", "b.dat", "s/c.txt"}) Write(path, path);
  Succeeds("-r -p n c.cab *.*");
  Succeeds("-p x c.cab S\\C.TXT b.* new\\deep\\");
  EXPECT_EQ((Tree{{"b.dat", ".b.dat"}, {"s/c.txt", ".s/c.txt"}}), Read("new/deep"));
  Succeeds("x c.cab *.txt flat/");
  EXPECT_EQ((Tree{{"a.txt", ".a.txt"}, {"c.txt", ".s/c.txt"}}), Read("flat"));
  Fails(ExitCode::Files, "x c.cab missing");
  EXPECT_FALSE(fs::exists("missing"));
}

TEST_F(Commands, NothingIsWrittenThroughLinks) {
  fs::create_directory("elsewhere");
  fs::create_directory("out");
  fs::create_directory_symlink("../elsewhere", "out/s");
  Write("kept", "kept");
  fs::create_symlink("../kept", "out/f");
  Write("folder.cab", PlainCabinet("s\\a", "x").Build());
  Fails(ExitCode::UnsafeName, "-p X folder.cab out");
  EXPECT_TRUE(fs::is_empty("elsewhere"));
  Write("file.cab", PlainCabinet("f", "x").Build());
  Fails(ExitCode::Files, "-p x file.cab out");
  Succeeds("-p -o x file.cab out");
  EXPECT_EQ(".x", Read("out")["f"]);
  EXPECT_EQ("kept", ReadFile("kept"));
}

TEST_F(Commands, AnEmptyFolderAndACabinetOfNoFilesAreTold) {
  Write("a", "x");
  fs::create_directories("tree/empty");
  const RunResult packed = Cabarc("-r -p n c.cab *.*");
  EXPECT_EQ(ExitCode::Ok, packed.code);
  EXPECT_NE(std::string::npos, packed.out.find("tree/empty/: an empty folder")) << packed.out;
  RawCabinet raw;
  raw.blocks = {{"x", 1}};
  Write("none.cab", raw.Build());
  Fails(ExitCode::Broken, "x none.cab out\\");
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(Commands, WhatIsShownHasNoControlCharacters) {
  RawCabinet raw = PlainCabinet("a\x1B[2J", "x");
  raw.members = {{"a\x1B[2J", 1}, {"\xE9", 1, 1, 0, cabinet::kNameIsUtf8}, {"c", 1, 2}};
  raw.blocks = {{"123", 3}};
  Write("c.cab", raw.Build());
  const RunResult listed = Cabarc("l c.cab");  // the malformed name hides none behind it
  EXPECT_EQ(ExitCode::Broken, listed.code);
  EXPECT_NE(std::string::npos, listed.out.find(" a\u241B[2J\n")) << listed.out;
  EXPECT_NE(std::string::npos, listed.out.find(" c\n3 files, 3 bytes\n")) << listed.out;
  EXPECT_NE(std::string::npos, listed.err.find("\u00E9: its name is not the UTF-8")) << listed.err;
  Succeeds("x c.cab c out/");
  EXPECT_EQ((Tree{{"c", ".3"}}), Read("out"));
  EXPECT_EQ(std::string::npos, Cabarc("x c.cab out2/").err.find('\x1B'));
}

TEST_F(Commands, WhatIsInTheWayIsFoundBeforeAnythingIsWritten) {
  RawCabinet raw = PlainCabinet("first", "12");
  raw.members = {{"first", 1}, {"s\\second", 1, 1}};
  Write("c.cab", raw.Build());
  Write("out/s", "a file where a folder must come");
  Fails(ExitCode::Files, "-p X c.cab out/");
  EXPECT_EQ(1u, Read("out").size());
  raw.members[1].name = "first\\second";
  Write("c.cab", raw.Build());
  Fails(ExitCode::UnsafeName, "-p X c.cab out2/");
  EXPECT_FALSE(fs::exists("out2"));

  raw.members = {{"first", 1}, {"other", 1, 0, 1}};
  raw.blocks = {{"1", 1}, {"2", 1}};
  raw.firstFolder = 1;
  std::string bytes = raw.Build();
  Write("c.cab", bytes.replace(36 + 8 + 6, 2, Number(0x1503, 2)));
  Fails(ExitCode::Broken, "X c.cab out2/");
  EXPECT_FALSE(fs::exists("out2"));
  Succeeds("X c.cab first out2/");
}

TEST_F(Commands, WhatIsNoFileIsNeitherReadNorReplaced) {
  Write("a", "x");
  ASSERT_EQ(0, mkfifo("pipe", 0600));
  for (const char* line :
       {"l pipe", "x pipe", "--salvage x pipe", "n c.cab @pipe", "n c.cab pipe", "n pipe a", "n . a"}) {
    Fails(ExitCode::Files, line);
  }
  EXPECT_TRUE(fs::is_fifo("pipe"));
  Write("c.cab", PlainCabinet("pipe", "x").Build());
  Fails(ExitCode::Files, "X c.cab .\\");
  EXPECT_TRUE(fs::is_fifo("pipe"));
}

TEST_F(Commands, ExitCodesAndMessages) {
  Write("a", "x");
  Write("text.cab", "this is no cabinet, though it has the length of the header of one");
  const std::vector<std::string> lines[] = {
      {"--help"},
      {"", "q x.cab", "n", "n x.cab", "-z n x.cab a", "-m LZX n x.cab a", "-m", "-t 0 n x.cab a", "-t 2x n x.cab a",
       "-t 17 n x.cab a", "n x.cab */a", "l text.cab a"},
      {"n x.cab *.nothing", "n x.cab @missing", "l missing.cab", "x ."},
      {"l text.cab", "x text.cab"}};
  for (int code = 0; code < 4; ++code) {
    for (const std::string& line : lines[code]) Fails(ExitCode{code}, line);
  }
  EXPECT_EQ(2u, Read().size());
  Succeeds("n a.cab a");
  EXPECT_TRUE(Runs(CABARC_PROGRAM " l a.cab >/dev/null"));
  EXPECT_FALSE(Runs(CABARC_PROGRAM " l a.cab >/dev/full 2>/dev/null"));
}

}  // namespace
