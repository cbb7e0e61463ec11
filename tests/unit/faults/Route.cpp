#include "unit/faults/Route.h"

#include <algorithm>
#include <random>

namespace faults {
namespace {

using enum base::MessageId;
using enum host::DriveStatus;

constexpr const char* kHostFolder = "C:\\Tarsus\\";

/// Files that the demonstration workstation's jobs save and restore, of every category.
constexpr const char* kRestorable[] = {"Patient\\Study1\\image1.dat", "Patient\\Study1\\image2.dat",
                                       "Patient\\patients.dat",       "Menu\\menu.ini",
                                       "Config\\system.ini",          "User\\users.dat",
                                       "Explain\\hand.txt",           "ReportSet\\set.dat",
                                       "Report\\2012\\report1.txt",   "Counter\\ip.dat"};

void LeaveAsIs(Course&) {}

void FillData(fakes::FakeHost& host, const std::string& bytes) {
  for (const char* path : kRestorable) host.disk.Write(kHostFolder + std::string(path), bytes);
}

// The deletion means files that the demonstration's backup leaves out.
void SaveEveryLog(Course& course) {
  const std::string list = std::string(fakes::kSystemFolder) + "BackupList.ini";
  const std::string saved = "ip.dat";
  std::string jobs = course.disk.Read(list);
  jobs.insert(jobs.find(saved) + saved.size(), ";%System%\\*.log");
  EXPECT_TRUE(course.disk.Write(list, jobs));
}

const MediumFiles& OlderSet() {
  static const Route kEarlier = {"Earlier", Menu::Backup, kSetFolder, BackupComplete,
                                 [](Course& it) { FillData(it, kOlderData); }};
  return FlawlessSet(kEarlier).front();
}

void PutOlderSet(Course& course) {
  SaveEveryLog(course);
  course.PutSet(OlderSet());
}

void NeedPreparation(Course& course) {
  Statuses('D', {Ready, Ready, Readable, Readable})(course);
}

void PutOlderMedium(Course& course) {
  NeedPreparation(course);
  for (const auto& [name, bytes] : OlderSet()) course.disk.Write("D:\\" + name, bytes);
}

void PutBigReport(Course& course) {
  course.disk.Write(std::string(kHostFolder) + kBigReport, BigReport());
}

void PutOlderFloppies(Course& course) {
  static const Route kEarlier = {"EarlierFloppies", Menu::Backup, "A:\\", BackupComplete, [](Course& it) {
                                   FillData(it, kOlderData);
                                   it.disk.Write(std::string(kHostFolder) + kBigReport, BigReport(true));
                                   --it.clock.now.year;
                                 }};
  PutBigReport(course);
  const std::vector<MediumFiles>& older = FlawlessSet(kEarlier);
  course.ChangeDisk(older.front());
  course.material.assign(older.begin() + 1, older.end());
}

void PutDamagedData(Course& course) {
  DamageData(course);
  course.PutSet(FlawlessSet(RouteNamed("Folder")).front());
}

void PutDamagedDataAndPile(Course& course) {
  DamageData(course);
  course.pile = FlawlessSet(RouteNamed("Floppies"));
  course.ChangeDisk(course.pile.front());
}

void PutImages(Course& course) {
  course.disk.Write("C:\\Tarsus\\Image\\image.ddo", "an image");
  course.disk.Write("C:\\Tarsus\\Image\\deleted.dat", "of a listed patient");
}

void WantImages(Course& course) {
  PutImages(course);
  Jobs({"[MAINTENANCE]", "EventLog=", "Folder=Image.DDO"})(course);
  course.Told().studies["SELECT RIGHT(URL,LEN(URL)-7)"].rows = {{"C:\\Tarsus\\Image\\image.ddo", "2012-03-14"}};
}

}  // namespace

base::MessageId Route::Warnings() const {
  if (menuItem == Menu::MaintenanceLog) return MaintenanceWarnings;
  return IsRestore() ? RestoreWarnings : BackupWarnings;
}

Course::Course(const Route& way) : route(way) {
  route.arrange(*this);
  Once<frmUserAuthentication>([](frmUserAuthentication& form) {
    fakes::Choose(form.cmbUserName, fakes::kServiceUser);
    fakes::Type(form.txtPassword, "secret");
    fakes::Press(form.cmdOK);
  });
  person.Habit<frmMainMenu>([this, entered = false](frmMainMenu& form) mutable {
    forms::CommandButton& item = Button(form, route.menuItem);
    const bool again = std::exchange(entered, true);
    again || !item.Enabled() ? fakes::Press(form.cmdEnd, kShift) : fakes::Press(item);
  });
  Once<frmBackup>([this](frmBackup& form) {
    fakes::Tick(form.chkSystemData);
    fakes::Tick(form.chkReportData);
    if (route.deletesLogs) fakes::Tick(form.chkDeleteLog);
    fakes::Press(form.cmdStart);
  });
  Once<frmRestore>([this](frmRestore& form) {
    for (const Box box : kAllBoxes) {
      if (!BoxOf(form, box).Enabled()) continue;
      fakes::Tick(BoxOf(form, box));
      ticked.insert(box);
    }
    offersNothing = !form.cmdStart.Enabled();
    fakes::Press(offersNothing ? form.cmdCancel : form.cmdStart);
  });
  Once<frmMaintenance>([this](frmMaintenance& form) {
    if (route.arrange == WantImages) {
      fakes::Tick(form.Option2);
      fakes::Tick(form.Option4);
      fakes::Type(form.txtCollectRange, "123");
    }
    fakes::Press(form.cmdStart);
  });
  Once<frmSelectFolder>([this](frmSelectFolder& form) {
    fakes::Type(form.txtFolder, route.folder);
    fakes::Press(form.cmdOK);
  });
  person.messageHabit = [this](base::MessageId id) { return AnswerMessage(id); };
  person.limit = 60;
}

host::Answer Course::AnswerMessage(base::MessageId id) {
  constexpr int kPatience = 3;
  if (id == AskNextBackupDisk) {
    pile.push_back(takeOut());
    ChangeDisk(material.empty() ? MediumFiles() : material.front());
    if (!material.empty()) material.pop_front();
  }
  if (id == AskRightDisk || id == AskNextSourceDisk) {
    const std::size_t wanted = calls.CountOf("Shell", "CopyWithProgress");
    timesWanted_ = std::exchange(lastWanted_, wanted) == wanted ? timesWanted_ + 1 : 0;
    if (wanted >= pile.size() || timesWanted_ > kPatience) return host::Answer::Refused;
    ChangeDisk(pile[wanted]);
  }
  return host::Answer::Consented;
}

// Nothing of it is the program's doing, and all that is on a disk was there before.
void Course::ChangeDisk(const MediumFiles& contents) {
  const auto watcher = std::exchange(disk.afterChange, nullptr);
  InsertDisk(contents);
  for (const auto& [name, bytes] : contents) EXPECT_TRUE(disk.Flush("A:\\" + name));
  disk.afterChange = watcher;
}

MediumFiles Course::Destination() {
  if (!route.UsesFloppies()) return disk.Tree(route.folder);
  std::vector<MediumFiles> disks = pile;
  disks.push_back(disk.Tree("A:\\"));
  MediumFiles all;
  for (std::size_t i = 0; i < disks.size(); ++i)
    for (const auto& [name, bytes] : disks[i]) all[std::to_string(i + 1) + "\\" + name] = bytes;
  return all;
}

bool Course::HasOpenFiles() {
  return fakes::IsOpen(*disk.Find("A:\\")) || fakes::IsOpen(*disk.Find("C:\\")) || fakes::IsOpen(*disk.Find("D:\\"));
}

MediumFiles Course::HostFiles() {
  MediumFiles all = disk.Tree(kHostFolder);
  for (const char* own : {"Log\\BackupUtility.log", "Log\\BackupUtilityJobs.csv", "Data\\Patients.bcp",
                          "Data\\Loaded.txt", "Config\\Station.mdb", "Param\\Protocol.mdb"})
    all.erase(own);
  return all;
}

const std::vector<Route>& Routes() {
  static const std::vector<Route> kRoutes = {
      {"Folder", Menu::Backup, kSetFolder, BackupComplete, LeaveAsIs},
      {"OlderSet", Menu::Backup, kSetFolder, BackupComplete, PutOlderSet, true},
      {"Medium", Menu::Backup, "D:\\", BackupComplete, NeedPreparation},
      {"Floppies", Menu::Backup, "A:\\", BackupComplete, PutBigReport},
      {"RestoreFolder", Menu::Restore, kSetFolder, RestoreComplete, PutDamagedData},
      {"RestoreFloppies", Menu::Restore, "A:\\", RestoreComplete, PutDamagedDataAndPile},
      {"ProtectedBundle", Menu::MaintenanceLog, "D:\\Log\\", MaintenanceComplete, PutImages},
      {"BundleWithImages", Menu::MaintenanceLog, "D:\\Log\\", MaintenanceComplete, WantImages},
  };
  return kRoutes;
}

const Route& RouteNamed(const std::string& name) {
  return *std::ranges::find(Routes(), name, &Route::name);
}

const Route& OntoOlderMedium() {
  static const Route kRoute = {"OlderMedium", Menu::Backup, "D:\\", BackupComplete, PutOlderMedium};
  return kRoute;
}

const Route& OntoOlderFloppies() {
  static const Route kRoute = {"OlderFloppies", Menu::Backup, "A:\\", BackupComplete, PutOlderFloppies};
  return kRoute;
}

std::string Noise(std::size_t size, unsigned seed) {
  std::minstd_rand noise(seed);
  std::string bytes(size, '\0');
  std::ranges::generate(bytes, [&] { return static_cast<char>(noise() >> 8); });
  return bytes;
}

const std::string& BigReport(bool older) {
  constexpr std::size_t kSize = 1'450'000;
  // Made once: a sweep asks for it a thousand times.
  static const std::string kReports[] = {Noise(kSize, 1), Noise(kSize, 2)};
  return kReports[older ? 1 : 0];
}

const std::vector<MediumFiles>& FlawlessSet(const Route& route) {
  static std::map<std::string, std::vector<MediumFiles>> sets;
  std::vector<MediumFiles>& set = sets[route.name];
  if (set.empty()) {
    Course course(route);
    course.Travel();
    EXPECT_TRUE(course.ReportedSuccess()) << route.name;
    set = course.pile;
    set.push_back(course.disk.Tree(course.route.folder));
  }
  return set;
}

void DamageData(fakes::FakeHost& host) {
  FillData(host, kDamagedData);
}

}  // namespace faults
