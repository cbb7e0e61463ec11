// File names that break careless programs: every one comes back, or its loss is told.
#include "unit/Session.h"

namespace {

using enum base::MessageId;

constexpr const char* kFolder = "C:\\Tarsus\\Odd [1] & (2)\\";

const char* const kNames[] = {
    "two  blanks.txt", " leading.txt",   "100%.txt",     "%Temp%.txt",    "semi;colon.txt", "a=b.txt",
    "a+b.txt",         "[x].txt",        "'quoted'.txt", "a&b^c!.txt",    "@list.txt",      "-r.txt",
    "noextension",     "..dots.txt",     "Röntgen.txt",  "撮影 一覧.txt", "表示ソ能.txt",   "e\u0301.txt",
    "CON.x",           "README.TXT.txt", "CABFILE.txt",  "#1.txt",        "{a},~b`.txt",    "comma, dot.txt",
};

/// Files below the odd folder, after they were saved, lost and restored with these items.
MediumFiles SaveAndRestore(const std::string& items) {
  Session session;
  for (const char* name : kNames) {
    EXPECT_TRUE(session.disk.Write(kFolder + std::string(name), name)) << name;
    EXPECT_TRUE(session.disk.Write(kFolder + std::string("below\\") + name, name)) << name;
  }
  Jobs({"[REPORT_BACKUP]", items, "[REPORT_RESTORE]", items})(session);
  session.BeginBackup(kReportOnly);
  session.AcceptFolder(kSetFolder);
  session.EndAfter({AskMakeBackupFolder, BackupComplete});
  session.disk.Remove("C:\\Tarsus\\Odd [1] & (2)");
  session.disk.MakeFolders(kFolder);
  session.BeginRestore();
  session.StartRestore({Box::Report});
  session.EndAfter({RestoreComplete});
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

TEST(OddNames, TooLongPathsAreTold) {
  Session session;
  const std::string folder = "C:\\Long\\";
  // xcopy takes it from here, but not to the staging folder, and its path in there is too long for a cabinet.
  session.disk.Write(folder + std::string(fakes::kLongestPath - folder.size(), 'n'), "too long");
  Jobs({"[REPORT_BACKUP]", "Folder=C:\\Long"})(session);
  session.BeginBackup(kReportOnly);
  session.LeaveBackupAfter({BackupNotGathered});
  EXPECT_NE(session.disk.Read(fakes::kLogFile).find("longer than an archive can hold: Long\\n"), std::string::npos);
}

}  // namespace
