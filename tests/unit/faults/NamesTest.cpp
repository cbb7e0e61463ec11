// File names that break careless programs: every one comes back, or its loss is told.
#include <gtest/gtest.h>

#include "unit/restore/RestoreSession.h"

namespace {

constexpr const char* kFolder = "C:\\Tarsus\\Odd [1] & (2)\\";
constexpr std::size_t kLongestPath = 259;

const char* const kNames[] = {
    "two  blanks.txt", " leading.txt",   "100%.txt",     "%Temp%.txt",    "semi;colon.txt", "a=b.txt",
    "a+b.txt",         "[x].txt",        "'quoted'.txt", "a&b^c!.txt",    "@list.txt",      "-r.txt",
    "noextension",     "..dots.txt",     "Röntgen.txt",  "撮影 一覧.txt", "表示ソ能.txt",   "e\u0301.txt",
    "CON.x",           "README.TXT.txt", "CABFILE.txt",  "#1.txt",        "{a},~b`.txt",    "comma, dot.txt",
};

/// Files below the odd folder, after they were saved, lost and restored with these items.
MediumFiles SaveAndRestore(const std::string& items) {
  RestoreSession session;
  for (const char* name : kNames) {
    EXPECT_TRUE(session.disk.Write(kFolder + std::string(name), name)) << name;
    EXPECT_TRUE(session.disk.Write(kFolder + std::string("below\\") + name, name)) << name;
  }
  session.WriteLines("C:\\Tarsus\\System\\BackupList.ini", {"[REPORT_BACKUP]", items, "[REPORT_RESTORE]", items});
  session.BeginBackup({.report = true});
  session.AcceptFolder(kSetFolder);
  session.person.ExpectMessage(64302, app::kConsented).ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  session.disk.Remove("C:\\Tarsus\\Odd [1] & (2)");
  session.disk.MakeFolders(kFolder);
  session.BeginRestore(kSetFolder);
  session.StartRestore("------x-");
  session.person.ExpectMessage(65400);
  session.EndMenu();
  session.Run();
  return session.disk.Tree(kFolder);
}

// A folder is named to the archiver as a whole, files one by one on its command line.
TEST(OddNames, ComeBack) {
  for (const std::string items : {"Folder=Odd [1] & (2)", "CommonFile=C:\\Tarsus\\Odd [1] & (2)\\*.*"}) {
    SCOPED_TRACE(items);
    const MediumFiles restored = SaveAndRestore(items);
    for (const char* name : kNames) {
      EXPECT_EQ(restored.count(name), 1u) << name;
      EXPECT_EQ(restored.count(std::string("below\\") + name), 1u) << name;
    }
  }
}

/// What a report backup of `items` ends with: the messages that are shown, and the log.
std::string LogOfFailure(RestoreSession& session, const std::string& items) {
  session.WriteLines("C:\\Tarsus\\System\\BackupList.ini", {"[REPORT_BACKUP]", items});
  session.BeginBackup({.report = true});
  session.person.ExpectMessage(60371);
  session.LeaveBackup();
  session.Run();
  return session.disk.Read(fakes::kLogFile);
}

TEST(OddNames, TooLongPathsAreTold) {
  RestoreSession session;
  const std::string folder = "C:\\Long\\";
  session.disk.Write(folder + std::string(kLongestPath - folder.size(), 'n'), "fits here, not in the staging folder");
  EXPECT_NE(LogOfFailure(session, "Folder=C:\\Long").find("Exit code 4: CMD /C xcopy \"C:\\Long\""), std::string::npos);
}

TEST(OddNames, MoreFilesThanACommandLineTakesAreTold) {
  RestoreSession session;
  for (int i = 0; i < 5000; ++i) session.disk.Write("C:\\Tarsus\\Many\\" + std::to_string(i) + ".txt", "x");
  EXPECT_NE(LogOfFailure(session, "CommonFile=C:\\Tarsus\\Many\\*.*").find("Too many files for one command line"),
            std::string::npos);
  session.WriteLines("C:\\Tarsus\\System\\BackupList.ini", {"[REPORT_BACKUP]", "Folder=Many"});
  session.BeginBackup({.report = true});
  session.AcceptFolder(kSetFolder);
  session.person.ExpectMessage(64302, app::kConsented).ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.Unpacked(std::string(kSetFolder) + "ReportData.cab").size(), 5000u);
}

}  // namespace
