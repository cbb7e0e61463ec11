// The grammar of the job-definition file.
#include "jobs/JobDefinitions.h"

#include "unit/Station.h"

namespace {

using base::Result;
using jobs::JobKey;

struct Grammar {
  const char* name;
  std::vector<std::string> lines;           ///< the whole file
  std::optional<std::string> batFile = {};  ///< value for USER_BACKUP; nothing when the key is not there
  Result result = Result::Done;
};

const Grammar kGrammar[] = {
    {"no such header", {"[MENU_BACKUP]", "[User_Backup]", "[ USER_BACKUP ]", "[USER_BACKUP] ;x"}, {}, Result::Failed},
    {"items of the section before", {"BatFile=x", "[A]", "BatFile=y", "[USER_BACKUP]"}},
    {"anything in brackets ends it", {"[USER_BACKUP]", "[not a section]", "BatFile=y"}},
    {"an open bracket does not end it", {"[USER_BACKUP]", "[", "[half", "BatFile=y"}, "y"},
    {"an empty pair of brackets does", {"[USER_BACKUP]", "[]", "BatFile=y"}},
    {"last of a repeated key", {"[USER_BACKUP]", "BatFile=a", "BatFile=b"}, "b"},
    {"value is trimmed and keeps its =", {"[USER_BACKUP]", "BatFile=  a=b c  "}, "a=b c"},
    {"empty value", {"[USER_BACKUP]", "BatFile="}, ""},
    {"no such key", {"[USER_BACKUP]", "BatFile =a", " BatFile=a", "batfile=a", "BatFiles=a", "; BatFile=b", ""}},
};

TEST_F(JobTest, ReadsTheGrammarOfTheJobFile) {
  for (const Grammar& grammar : kGrammar) {
    SCOPED_TRACE(grammar.name);
    host.WriteLines("C:\\Jobs\\list.ini", grammar.lines);
    jobs::JobDefinitions fresh;
    const base::Outcome loaded = fresh.Load(tools, "C:\\Jobs", "list.ini", "USER_BACKUP");
    EXPECT_EQ(loaded, grammar.result);
    EXPECT_EQ(loaded.cause, loaded.IsDone() ? "" : "C:\\Jobs\\list.ini has no section USER_BACKUP");
    EXPECT_EQ(fresh.Items(JobKey::BatFile, "USER_BACKUP"), grammar.batFile ? Names{*grammar.batFile} : Names{});
  }
}

TEST_F(JobTest, SplitsListsAndFillsInDefaults) {
  EXPECT_TRUE(LoadSection("LOG_BACKUP", {"EventLog=", "RegFile=", "Folder=a;b;;", "CommonFile="}).IsDone());
  EXPECT_EQ(definitions.Items(JobKey::EventLog, "LOG_BACKUP"), Names{"%System%\\BackupEventLog.exe"});
  EXPECT_EQ(definitions.Items(JobKey::RegFile, "LOG_BACKUP"),
            Names{"Reg.exe save HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvantis\\TARSUS Tarsus.reg"});
  EXPECT_EQ(definitions.Items(JobKey::Folder, "LOG_BACKUP"), (Names{"a", "b", "", ""}));
  EXPECT_EQ(definitions.Items(JobKey::CommonFile, "LOG_BACKUP"), Names{""});
  EXPECT_EQ(definitions.Items(JobKey::PersonalInfo, "LOG_BACKUP"), Names{});
}

// A stray ";" must not pack, or replace, the whole installation.
TEST_F(JobTest, OnlyAnEmptyFolderValueIsTheApplicationRoot) {
  const std::pair<const char*, Names> values[] = {{"Folder=", {""}},  {"Folder=  ", {""}},          {"Folder=;", {}},
                                                  {"Folder=; ;", {}}, {"Folder=a;;b;", {"a", "b"}}, {"Folder=a", {"a"}},
                                                  {"BatFile=a", {}}};
  for (const char* section : {"MENU_BACKUP", "MENU_RESTORE"}) {
    for (const auto& [line, items] : values) {
      EXPECT_TRUE(LoadSection(section, {line}).IsDone());
      EXPECT_EQ(definitions.FolderItems(section), items) << line;
    }
  }
}

TEST_F(JobTest, KeepsOtherSectionsAndForgetsItsOwnOldValues) {
  EXPECT_TRUE(LoadSection("MENU_BACKUP", {"Folder=menu"}).IsDone());
  EXPECT_TRUE(LoadSection("USER_BACKUP", {"Folder=user", "BatFile=old"}).IsDone());
  EXPECT_TRUE(LoadSection("USER_BACKUP", {"Folder=new"}).IsDone());
  EXPECT_EQ(definitions.Items(JobKey::Folder, "MENU_BACKUP"), Names{"menu"});
  EXPECT_EQ(definitions.Items(JobKey::Folder, "USER_BACKUP"), Names{"new"});
  EXPECT_EQ(definitions.Items(JobKey::BatFile, "USER_BACKUP"), Names{});
  Gone("C:\\Tarsus\\System\\BackupList.ini")(host);
  EXPECT_EQ(definitions.Load(tools, fakes::kSystemFolder, "BackupList.ini", "USER_BACKUP"), Result::Done);
  EXPECT_EQ(definitions.Items(JobKey::Folder, "USER_BACKUP"), Names{});
}

TEST_F(JobTest, RefusesItemsOfASectionWithoutANumberAndAFileThatCannotBeOpened) {
  EXPECT_EQ(LoadSection("COFFEE_BACKUP", {"; nothing"}), Result::Done);
  for (const char* unknown : {"COFFEE_BACKUP", "user_backup"}) {
    const base::Outcome loaded = LoadSection(unknown, {"Folder=x"});
    EXPECT_EQ(loaded, Result::Failed);
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "Folder=x", loaded.cause);
  }
  EXPECT_EQ(jobs::SectionIndex("REPORTSET_RESTORE"), 18);
  host.calls.FailFrom("FileSystem", "OpenText");
  const base::Outcome loaded = LoadSection("USER_BACKUP", {"Folder=x"});
  EXPECT_EQ(loaded, Result::Failed);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "C:\\Tarsus\\System\\BackupList.ini", loaded.cause);
}

}  // namespace
