// Path table, unknown variables, INI files and external programs.
#include "app/External.h"

#include "app/PathVariables.h"
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

TEST_F(AppTest, PathEntries) {
  std::string value = "kept";
  EXPECT_EQ(app::GetPathEntry(application, "Nowhere", value), Result::Failed);
  EXPECT_EQ(value, "kept");
  host.qx32.pathTable["Temp"] = std::string(600, 'x');
  EXPECT_EQ(app::GetPathEntry(application, "Temp", value), Result::Done);
  EXPECT_EQ(value.size(), 512u);
}

TEST_F(AppTest, IniValues) {
  host.WriteLines("C:\\x.ini", {"[One]", "Blank =1", "  Indented=2", "Key=  a = b  ", "key=lower", "Tab=\tx", "[Two]",
                                "Key=second", ";Comment=no", "Disk12=piece", "Ümlaut=grün", "Empty="});
  const std::pair<const char*, const char*> rows[] = {
      {"Key", "a = b"}, {" Key ", "a = b"}, {"Blank", ""},      {"Indented", ""},    {"key", "lower"},
      {"Tab", "\tx"},   {"KEY", ""},        {"Comment", ""},    {"Disk##", "piece"}, {"D*", "piece"},
      {"Disk", ""},     {"[K]ey", "a = b"}, {"Ümlaut", "grün"}, {"Empty", ""},       {"[", ""},
  };
  for (const auto& [key, value] : rows) EXPECT_EQ(app::ReadIniValue(application, " C: ", "x.ini", key), value) << key;
  EXPECT_EQ(app::ReadIniValue(application, "C:\\", "missing.ini", "Key"), "");
  host.messageLoop.yields = 0;
  app::ReadIniValue(application, "C:\\", "x.ini", "Key");
  EXPECT_EQ(host.messageLoop.yields, 4) << "events are served after each line, up to the one that fits";
}

TEST_F(AppTest, RunAndWaitDoesNotLookAtTheExitCode) {
  Program("C:\\Tarsus\\fails.bat", [](fakes::Disk&, const fakes::Words&) { return 1u; })(host);
  EXPECT_NE(app::RunAndWait(application, "C:\\Tarsus\\fails.bat"), 0u);
  EXPECT_TRUE(host.processes.started.at(0).waitedFor);
  EXPECT_EQ(host.processes.started.at(0).style, host::WindowStyle::Hidden);
  EXPECT_EQ(app::RunAndWait(application, "C:\\Tarsus\\missing.bat"), 0u);
  host.calls.FailFrom("StartedProgram", "Wait");
  EXPECT_EQ(app::RunAndWait(application, "C:\\Tarsus\\fails.bat"), 0u);
}

TEST_F(AppTest, TheFolderIsPutBackWhetherItWasEnteredOrNot) {
  for (const std::string folder : {"D:\\", "C:\\Nowhere"}) {
    host.disk.SetCurrentFolder("C:\\");
    {
      const app::CurrentFolderScope scope(application, folder, "C:\\Tarsus");
      EXPECT_EQ(scope.Entered(), folder == "D:\\");
      EXPECT_EQ(host.disk.CurrentFolder(), scope.Entered() ? "D:\\" : "C:\\");
    }
    EXPECT_EQ(host.disk.CurrentFolder(), "C:\\Tarsus");
  }
}

TEST_F(AppTest, VariablesThatThePathTableDoesNotKnow) {
  for (const char* item : {"%Nowhere%\\a", "%Temp%\\%System%\\a", "100%", "%%"}) {
    host.person.ExpectMessage(PathEntryUnreadable);
    std::string changed = item;
    EXPECT_EQ(app::ExpandPathVariable(application, changed), Result::Failed) << item;
    EXPECT_EQ(changed, item);
  }
}

}  // namespace
