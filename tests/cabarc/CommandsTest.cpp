// The command line as the backup program and people use it.
#include "RawCabinet.h"
#include "Workspace.h"

namespace fs = std::filesystem;

namespace {

class Commands : public Workspace {};

TEST_F(Commands, PackAndUnpackACategory) {
  Write("IP.ini", "[IP]");
  Write("file 2", "two");
  Write("Images/a.ddo", "image");
  Write("Images/deep/noext", "deep");
  Write("Menu/menu.dat", "menu");
  Write("CABFILE/other.cab", "not to be packed");
  fs::create_directory("Nothing");
  EXPECT_EQ(0, Cabarc({"-r", "-p", "n", "PatientData.cab", "IP.ini", "file 2", ".\\Images\\*.*", ".\\Menu\\*.*",
                       ".\\Nothing\\*.*"})
                   .code);
  const std::string list = Cabarc({"l", "PatientData.cab"}).out;
  EXPECT_NE(std::string::npos, list.find(" Images\\deep\\noext\n")) << list;
  const Tree packed = {{"IP.ini", ".[IP]"},
                       {"file 2", ".two"},
                       {"Images/a.ddo", ".image"},
                       {"Images/deep/noext", ".deep"},
                       {"Menu/menu.dat", ".menu"}};
  fs::remove_all("CABFILE");
  fs::create_directory("CABFILE");
  EXPECT_EQ(0, Cabarc({"-r", "-p", "X", "PatientData.cab", "CABFILE"}).code);
  EXPECT_EQ(packed, Read("CABFILE"));

  fs::create_directory("ClientLog");
  fs::current_path("ClientLog");
  EXPECT_EQ(0, Cabarc({"-r", "-p", "X", "../PatientData.cab"}).code);
  EXPECT_EQ(packed, Read("."));
  Write("IP.ini", "changed");
  EXPECT_EQ(2, Cabarc({"-r", "-p", "x", "../PatientData.cab"}).code);  // a person must ask for it
  EXPECT_EQ(".changed", Read(".")["IP.ini"]);
  fs::permissions("IP.ini", fs::perms::owner_write, fs::perm_options::remove);
  EXPECT_EQ(0, Cabarc({"-r", "-p", "X", "../PatientData.cab"}).code);
  EXPECT_EQ(packed, Read("."));
  fs::current_path("..");
}

TEST_F(Commands, OptionsDecideWhatIsFoundAndHowItIsNamed) {
  for (const char* path : {"a.txt", "b.dat", "s/c.txt", "s/t/d.txt"}) Write(path, path);
  const struct {
    std::vector<std::string> options;
    std::string argument;
    std::vector<std::string> names;
  } cases[] = {{{}, "*.txt", {"a.txt"}},
               {{"-r"}, "*.txt", {"a.txt", "c.txt", "d.txt"}},
               {{"-r", "-p"}, "*.txt", {"a.txt", "s/c.txt", "s/t/d.txt"}},
               {{"-p"}, "s\\*.*", {"s/c.txt"}},
               {{"-p", "-r"}, "s", {"s/c.txt", "s/t/d.txt"}},
               {{"-p", "-r"}, ".\\.\\s\\", {"s/c.txt", "s/t/d.txt"}},
               {{"-p", "-r"}, "a.txt", {"a.txt"}},
               {{"-p"}, "@list", {"b.dat", "s/c.txt"}}};
  Write("list",
        "\xEF\xBB\xBF"
        "b.dat\r\n\ns\\c.txt");
  for (const auto& one : cases) {
    std::vector<std::string> arguments = one.options;
    arguments.insert(arguments.end(), {"n", "c.cab", one.argument});
    EXPECT_EQ(0, Cabarc(arguments).code) << one.argument;
    std::vector<std::string> names;
    for (const auto& [name, text] : Extracted("c.cab", 0)) names.push_back(name);
    EXPECT_EQ(one.names, names) << one.argument;
    fs::remove("c.cab");
    fs::remove_all("out");
  }
}

// More names than a command line can hold, and such as it could not tell from something else.
TEST_F(Commands, AListFileNamesAnything) {
  std::string list = "\xEF\xBB\xBF";
  for (int i = 0; i < 5000; ++i) {
    const std::string name = "f/" +
                             std::string(i % 3 == 0   ? "画像 "
                                         : i % 3 == 1 ? "@a b"
                                                      : "-r été;%") +
                             std::to_string(i);
    Write(name, name);
    list += name + "\r\n";
  }
  Write("list", list);
  ASSERT_EQ(0, Cabarc({"-p", "n", "c.cab", "@list"}).code);
  const Tree tree = Extracted("c.cab", 0);
  EXPECT_EQ(5000u, tree.size());
  EXPECT_TRUE(tree == (fs::create_directories("all"), fs::rename("f", "all/f"), Read("all")));

  Write("\u00E9t\u00E9 \u20AC", "x");
  Write("list", "\xE9t\xE9 \x80\n");  // code page 1252
  EXPECT_EQ(0, Cabarc({"n", "c.cab", "@list"}).code);
  EXPECT_EQ((Tree{{"\u00E9t\u00E9 \u20AC", ".x"}}), Extracted("c.cab", 0));
  Write("list", "list\nmissing\n");  // one name that is not found, and nothing is packed
  EXPECT_EQ(2, Cabarc({"n", "new.cab", "@list"}).code);
  EXPECT_FALSE(fs::exists("new.cab"));
}

TEST_F(Commands, NamesChooseMembersAndTheLastArgumentMayBeTheFolder) {
  for (const char* path : {"a.txt", "b.dat", "s/c.txt"}) Write(path, path);
  ASSERT_EQ(0, Cabarc({"-r", "-p", "n", "c.cab", "*.*"}).code);
  EXPECT_EQ(0, Cabarc({"-p", "x", "c.cab", "S\\C.TXT", "b.*", "new\\deep\\"}).code);
  EXPECT_EQ((Tree{{"b.dat", ".b.dat"}, {"s/c.txt", ".s/c.txt"}}), Read("new/deep"));
  EXPECT_EQ(0, Cabarc({"x", "c.cab", "*.txt", "flat/"}).code);
  EXPECT_EQ((Tree{{"a.txt", ".a.txt"}, {"c.txt", ".s/c.txt"}}), Read("flat"));
  EXPECT_EQ(2, Cabarc({"x", "c.cab", "missing"}).code);
  EXPECT_FALSE(fs::exists("missing"));
}

TEST_F(Commands, NothingIsWrittenThroughLinks) {
  fs::create_directory("elsewhere");
  fs::create_directory("out");
  fs::create_directory_symlink("../elsewhere", "out/s");
  Write("kept", "kept");
  fs::create_symlink("../kept", "out/f");
  RawCabinet raw = PlainCabinet("s\\a", "x");
  WriteBytes("folder.cab", raw.Build());
  EXPECT_EQ(4, Cabarc({"-p", "X", "folder.cab", "out"}).code);
  EXPECT_TRUE(fs::is_empty("elsewhere"));
  raw.members[0].name = "f";
  WriteBytes("file.cab", raw.Build());
  EXPECT_EQ(2, Cabarc({"-p", "x", "file.cab", "out"}).code);
  EXPECT_EQ(0, Cabarc({"-p", "-o", "x", "file.cab", "out"}).code);
  EXPECT_EQ(".x", Read("out")["f"]);
  EXPECT_EQ(".kept", Read(".")["kept"]);
}

TEST_F(Commands, ExitCodesAndMessages) {
  Write("a", "x");
  Write("text.cab", "this is no cabinet, though it has the length of the header of one");
  const struct {
    std::vector<std::string> arguments;
    int code;
  } cases[] = {{{"--help"}, 0},
               {{}, 1},
               {{"q", "x.cab"}, 1},
               {{"n"}, 1},
               {{"n", "x.cab"}, 1},
               {{"-z", "n", "x.cab", "a"}, 1},
               {{"-m", "LZX", "n", "x.cab", "a"}, 1},
               {{"-m"}, 1},
               {{"-t", "0", "n", "x.cab", "a"}, 1},
               {{"-t", "2x", "n", "x.cab", "a"}, 1},
               {{"-t", "17", "n", "x.cab", "a"}, 1},
               {{"n", "x.cab", "*/a"}, 1},
               {{"l", "text.cab", "a"}, 1},
               {{"n", "x.cab", "*.nothing"}, 2},
               {{"n", "x.cab", "@missing"}, 2},
               {{"l", "missing.cab"}, 2},
               {{"x", "."}, 2},
               {{"l", "text.cab"}, 3},
               {{"x", "text.cab"}, 3}};
  for (const auto& one : cases) {
    const RunResult result = Cabarc(one.arguments);
    EXPECT_EQ(one.code, result.code) << testing::PrintToString(one.arguments) << result.err;
    EXPECT_EQ(one.code == 0, result.err.empty());
  }
  EXPECT_EQ(2u, Read(".").size());
}

}  // namespace
