// Maintenance log backups from the main menu to the bundle, and every way in which they end early.
#include "unit/Session.h"

namespace {

using enum base::MessageId;

using fakes::CabinetContents;

constexpr const char* kScriptHost = "C:\\Windows\\System32\\cscript.exe";
constexpr const char* kExporter = "C:\\Tarsus\\Temp\\StudyDB\\BCP\\Export_StudyDB_TXT_PP.bat";

const CabinetContents kProtected = {{"Application.evt", "events"}, {"image.ddo", "an image"}};
const CabinetContents kUnprotected = {{"Application.evt", "events"},
                                      {"BCP\\Tarsus.log", "host log"},
                                      {"Host\\host.log", "host log"},
                                      {"Host\\Old\\old.log", "old host log"}};

/// The demo workstation with two images, of which one belongs to a patient on the host's list.
struct MaintenanceSession : Session {
  explicit MaintenanceSession(const Arrangement& arrange = Nothing) : Session(arrange) {
    disk.Write("C:\\Tarsus\\Image\\image.ddo", "an image");
    disk.Write("C:\\Tarsus\\Image\\deleted.dat", "of a listed patient");
  }
  void BeginMaintenance() {
    SignIn();
    OpenMenuItem(Menu::MaintenanceLog);
    StartMaintenance();
  }
  /// The three files of a bundle, and nothing else.
  void ExpectBundle(const std::string& folder, const CabinetContents& contents, const std::string& studies) {
    auto bundle = disk.Tree(folder);
    EXPECT_EQ(bundle.size(), 3u);
    EXPECT_EQ(bundle["BackupInfo.ini"], Lines(DescriptorLines({"CABFile=MAINTENANCE.cab;", "", "[VersionInfo]", ""})));
    EXPECT_EQ(bundle["T_TSTUDY.txt"], studies);
    EXPECT_EQ(Unpacked(folder + "MAINTENANCE.cab"), contents);
    EXPECT_EQ(disk.Read(std::string(kDesktop) + "T_TSTUDY.txt"), studies);
  }
};

TEST(MaintenanceLog, ProtectedBundleReachesTheProposedDesktop) {
  MaintenanceSession session;
  session.BeginMaintenance();
  session.At<frmSelectFolder>([](frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), kDesktop);
    EXPECT_TRUE(form.txtCapacity.Visible());
    fakes::Press(form.cmdOK);
  });
  session.EndAfter({AskForeignLabel, MaintenanceComplete});
  session.ExpectBundle(kDesktop, kProtected, "studies without names");
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
  EXPECT_FALSE(session.IsBackupDated()) << "no backup of data";
  EXPECT_EQ(session.Told().auditRecords.size(), 2u) << "sign-in and sign-out alone";
  EXPECT_EQ(session.Told().operations[1], "WS-RADIOLOGY-1|U004|BackupUtility|MainMenu|MainteLogBackup");
}

// Also after a backup in the same session, whose categories must not get into the descriptor.
TEST(MaintenanceLog, UnprotectedBundleGoesWhereTheOperatorWants) {
  MaintenanceSession session;
  session.BackUpTo("D:\\");
  session.See({BackupComplete});
  session.OpenMenuItem(Menu::MaintenanceLog);
  session.StartMaintenance(true);
  session.AcceptFolder("D:\\Log");
  session.EndAfter({AskMakeMaintenanceFolder, MaintenanceComplete});
  session.ExpectBundle("D:\\Log\\", kUnprotected, "all studies");
}

// What this workstation has is collected also where the logs of others cannot be had.
TEST(MaintenanceLog, NeedsNeitherClientsNorADesktop) {
  MaintenanceSession session(Both(NoEntry("Update"), [](auto& host) { host.shell.desktop.clear(); }));
  session.BeginMaintenance();
  session.See({PathEntryUnreadable});
  session.At<frmSelectFolder>([](frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), "C:\\");
    fakes::Type(form.txtFolder, "D:\\");
    fakes::Press(form.cmdOK);
  });
  session.EndAfter({MaintenanceComplete});
  EXPECT_EQ(session.Unpacked("D:\\MAINTENANCE.cab"), kProtected);
  EXPECT_EQ(session.disk.Read("C:\\T_TSTUDY.txt"), "studies without names");
}

constexpr const char* kImageQuery =
    "SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON T_TSTUDY.STUDY_SEQ = "
    "T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day,-123,GETDATE())";

struct Image {
  std::string path;  ///< as the database has it
  bool exists;
  std::string staged;  ///< path in the archive; empty when it is not there
};

const Image kImages[] = {
    {"C:\\Tarsus\\Image\\1\\2\\a.ddo", true, "Image\\1\\2\\a.ddo"},
    {"\\\\ARCHIVE\\Image\\b.ddo", false, ""},
    {"C:\\Tarsus\\IMAGE\\c.ddo", true, ""},
    {"C:\\Tarsus\\Image\\gone.ddo", false, ""},
    {"C:\\Other\\d.ddo", true, ""},
    {"C:\\Tarsus\\Image\\e.ddo", true, "Image\\e.ddo"},
};

// As they stand below the image folder; those of other computers are not missed.
TEST(MaintenanceLog, ImagesOfSomeDaysAreCollected) {
  for (const char* const entry : {"C:\\Tarsus\\Image", " C:\\Tarsus\\Image\\ "}) {
    MaintenanceSession session(Jobs({"[MAINTENANCE]", "EventLog=", "Folder=Image.DDO"}));
    Before("cabarc", Gone(kScriptHost))(session);
    session.qx32.pathTable["Image"] = entry;
    CabinetContents expected = {{"Application.evt", "events"}};
    for (const auto& [path, exists, staged] : kImages) {
      session.Told().studies[kImageQuery].rows.push_back({path, "2012-03-14"});
      if (exists) session.disk.Write(path, path);
      if (!staged.empty()) expected[staged] = path;
    }
    session.SignIn();
    session.OpenMenuItem(Menu::MaintenanceLog);
    session.At<frmMaintenance>([](frmMaintenance& form) {
      fakes::Tick(form.Option2);
      fakes::Tick(form.Option4);
      fakes::Type(form.txtCollectRange, "123");
      fakes::Press(form.cmdStart);
    });
    session.See({AskUnprotected});
    session.AcceptFolder("D:\\");
    session.EndAfter({MaintenanceWarnings, MaintenanceComplete});
    session.ExpectBundle("D:\\", expected, "all studies");
    const std::string log = session.disk.Read(fakes::kLogFile);
    for (const auto& [path, exists, staged] : kImages)
      EXPECT_EQ(log.find("Not copied: " + path) != std::string::npos, staged.empty() && !path.starts_with("\\\\"));
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_EQ(session.processes.started.front().commandLine, "cscript \"C:\\Tarsus\\System\\Maintenance.js\" 1 \"" +
                                                                 std::string(kStagingFolder) +
                                                                 "\\\" \"C:\\Tarsus\\User\\\" 1 123");
  }
}

// How it ends, or whether there is one, is nobody's concern.
TEST(MaintenanceLog, ScriptStandsAroundTheWork) {
  MaintenanceSession session;
  Paths seen;
  session.processes.Install(kScriptHost, [&](fakes::Disk& disk, const fakes::Words& words) {
    seen.push_back(words[2]);
    for (const auto& [name, bytes] : disk.Tree(words[3])) seen.back() += " " + name;
    return 1u;
  });
  session.BeginMaintenance();
  session.Cancel<frmSelectFolder>();
  session.EndAfter({});
  EXPECT_EQ(seen, (Paths{"1", "2 Application.evt image.ddo", "3 CABFILE\\MAINTENANCE.cab"}));
}

TEST(MaintenanceLog, CancelledDialogLeavesNothingBehind) {
  MaintenanceSession session;
  session.SignIn(fakes::kBackupUser);
  session.OpenMenuItem(Menu::MaintenanceLog);
  session.Cancel<frmMaintenance>();
  session.EndAfter({});
  EXPECT_TRUE(session.processes.started.empty());
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
  EXPECT_EQ(session.state.CurrentOperation, app::Operation::MaintenanceLogBackup);
}

// Client logs, an item and the list of patients that are out of reach; what a batch file exports is enough to pack.
TEST(MaintenanceLog, FaultsInTheCollectionCostOnlyWhatTheyConcern) {
  const Arrangement jobs =
      Jobs({"[PERSONALINFOPROTECTION]", "BatFile=%System%\\DumpPatients.bat", "CommonFile=%X%\\a"});
  MaintenanceSession session(Both(jobs, Both(NoEntry("Update"), NoEntry("DeleteListDB"))));
  session.BeginMaintenance();
  session.See({PathEntryUnreadable, PathEntryUnreadable});
  session.AcceptFolder("D:\\");
  session.EndAfter({MaintenanceWarnings, MaintenanceComplete});
  session.ExpectBundle("D:\\", {{"BCP\\Tarsus.log", "host log"}}, "studies without names");
}

// The first of the filter's codes that is not 0, in the message's second insertion.
TEST(MaintenanceLog, TellsThatPersonalInformationIsLeft) {
  MaintenanceSession session(Jobs({"[PERSONALINFOPROTECTION]", "PersonalInfo=%Image%;Report;Menu"}));
  session.Told().filterAnswers = {0, 7, 9};
  session.BeginMaintenance();
  session.See({PersonalInfoLeft});
  session.AcceptFolder("D:\\");
  session.EndAfter({MaintenanceWarnings, MaintenanceComplete});
  const fakes::ShownMessage& shown = session.person.Messages().front();
  EXPECT_EQ(shown.text1 + "|" + shown.text2 + "|" + shown.text3, "|7|");
}

struct Failure {
  const char* name;
  Arrangement arrange;
  Ids messages;
  bool inWriting = true;  ///< otherwise in the collection before it
};

const Arrangement kNothingToPack = Both(Jobs({"[PERSONALINFOPROTECTION]"}), Fails("FileSystem", "MakeFolder"));
const Arrangement kOldListWithNames =
    Both(File("C:\\Tarsus\\Temp\\StudyDB\\BCP\\T_TSTUDY.txt", "all studies"), Program(kExporter, DoNothing));
const Arrangement kNoArchive =
    Before("MAINTENANCE.cab\" \"D:", Gone(std::string(kStagingFolder) + "\\MAINTENANCE.cab"));

const Failure kFailures[] = {
    {"staging folder", Gone("C:\\Users\\Operator\\Temp"), {MaintenanceWorkFolderNotMade}, false},
    {"section missing", Jobs({"[MAINTENANCE]"}), {MaintenanceSectionMissing}, false},
    {"nothing to pack, nor an export folder", kNothingToPack, {MaintenanceLogNotGathered}, false},
    {"archiver missing", Gone(kArchiver), {MaintenanceLogNotGathered}, false},
    // After the event log and packing.
    {"archive cannot be moved up", Fails("FileSystem", "MoveTo", 3), {MaintenanceLogNotGathered}, false},
    {"no folder for temporary files named", NoEntry("Temp"), {PathEntryUnreadable, MaintenanceLogNotWritten}},
    {"exporter missing", Gone(kExporter), {MaintenanceLogNotWritten}},
    {"no list exported, an old one with names lies about", kOldListWithNames, {MaintenanceLogNotWritten}},
    {"desktop out of reach", [](auto& host) { host.shell.desktop = "Q:\\Desktop"; }, {MaintenanceLogNotWritten}},
    {"list does not reach the medium", Before("T_TSTUDY.txt\" \"D:", NoMedium("D:")), {MaintenanceLogNotWritten}},
    {"nothing there for xcopy", kNoArchive, {MaintenanceCopyFailed}},
};

TEST(MaintenanceLog, FailureIsShownAndClearedAway) {
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.name);
    MaintenanceSession session(failure.arrange);
    session.BeginMaintenance();
    if (failure.inWriting) session.AcceptFolder("D:\\");
    session.EndAfter(failure.messages);
    EXPECT_TRUE(failure.inWriting || session.processes.CountStarted("Export_StudyDB") == 0);
  }
}

// The dialog stays open, and the next OK goes through: the list of the first one is not in its way.
TEST(MaintenanceLog, StoppedWritingLeavesTheChoiceOpen) {
  const std::pair<Arrangement, base::MessageId> stops[] = {
      {Capacity("D:", 1), MaintenanceSpaceTooSmall},
      {Label("D:", "HOLIDAY"), AskForeignLabel},
      {File("D:\\Log\\MAINTENANCE.cab", "old"), AskOverwriteMaintenance}};
  for (const auto& [arrange, message] : stops) {
    MaintenanceSession session;
    session.disk.MakeFolders("D:\\Log");
    session.disk.MakeFolders("C:\\Safe");
    arrange(session);
    session.BeginMaintenance();
    session.AcceptFolder("D:\\Log");
    session.See({message}, host::Answer::Refused);
    session.person.ExpectMessage(MaintenanceStopped, [&] { EXPECT_LE(session.disk.Tree("D:\\").size(), 1u); });
    session.AcceptFolder("C:\\Safe");
    session.EndAfter({AskForeignLabel, MaintenanceComplete});
    session.ExpectBundle("C:\\Safe\\", kProtected, "studies without names");
  }
}

TEST(MaintenanceLog, FloppyHoldsTheSetAlone) {
  MaintenanceSession session;
  session.BeginMaintenance();
  session.AcceptFolder("A:\\");
  session.person.ExpectFormat(host::FormatAnswer::Done);
  session.EndAfter({MaintenanceComplete});
  const auto disk = session.disk.Tree("A:\\");
  EXPECT_EQ(disk.size(), 2u);
  EXPECT_TRUE(disk.contains("FDDivide001") && disk.contains("BackupInfo.ini"));
  EXPECT_EQ(session.disk.Read(std::string(kDesktop) + "T_TSTUDY.txt"), "studies without names");
}

}  // namespace
