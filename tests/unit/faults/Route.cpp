#include "unit/faults/Route.h"

#include <algorithm>

namespace faults {
namespace {

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

void PutOlderSet(Course& course) {
  static const Route kEarlier = {"Earlier", 0, kSetFolder, 65300, [](Course& it) { FillData(it, kOlderData); }};
  course.PutSet(FlawlessSet(kEarlier).front());
}

void NeedPreparation(Course& course) {
  course.Told().mediaStatuses['D'] = {3, 3, 2, 2};
}

// Large enough for two disks.
void PutBigReport(Course& course) {
  course.disk.Write("C:\\Tarsus\\Report\\big.dat", std::string(1'450'000, 'x'));
}

void PutDamagedData(Course& course) {
  DamageData(course);
  course.PutSet(FlawlessSet(RouteNamed("Folder")).front());
}

void PutDamagedDataAndPile(Course& course) {
  DamageData(course);
  course.pile = FlawlessSet(RouteNamed("Floppies"));
  course.InsertDisk(course.pile.front());
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

Course::Course(const Route& way) : route(way) {
  route.arrange(*this);
  Once<frmUserAuthentication>([](frmUserAuthentication& form) {
    fakes::Choose(form.cmbUserName, fakes::kServiceUser);
    fakes::Type(form.txtPassword, "secret");
    fakes::Press(form.cmdOK);
  });
  person.Habit<frmMainMenu>([this, entered = false](frmMainMenu& form) mutable {
    forms::CommandButton& item = form.cmdMenu[route.menuItem];
    const bool again = std::exchange(entered, true);
    again || !item.Enabled() ? fakes::Press(form.cmdEnd, kShift) : fakes::Press(item);
  });
  Once<frmBackup>([](frmBackup& form) {
    fakes::Tick(form.chkSystemData);
    fakes::Tick(form.chkReportData);
    fakes::Press(form.cmdStart);
  });
  Once<frmRestore>([this](frmRestore& form) {
    for (const auto box : kBoxes)
      if ((form.*box).Enabled()) fakes::Tick(form.*box);
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
  person.messageHabit = [this](std::int32_t id) { return AnswerMessage(id); };
  person.limit = 60;
}

std::int32_t Course::AnswerMessage(std::int32_t id) {
  constexpr std::int32_t kNextToWrite = 64306;
  constexpr std::int32_t kWrongDisk = 64401;
  constexpr std::int32_t kNextToRead = 64406;
  if (id == kNextToWrite) {
    pile.push_back(disk.Tree("A:\\"));
    disk.Format("A:");
  }
  if (id == kWrongDisk || id == kNextToRead) {
    const std::size_t gathered = calls.CountOf("Shell", "CopyWithProgress");
    if (gathered >= pile.size()) return app::kRefused;
    InsertDisk(pile[gathered]);
  }
  return app::kConsented;
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
  return fakes::InUse(*disk.Find("A:\\")) || fakes::InUse(*disk.Find("C:\\")) || fakes::InUse(*disk.Find("D:\\"));
}

MediumFiles Course::HostFiles() {
  MediumFiles all = disk.Tree(kHostFolder);
  for (const char* own : {"Log\\BackupUtility.log", "Data\\Patients.bcp", "Data\\Loaded.txt", "Config\\Station.mdb",
                          "Param\\Protocol.mdb"})
    all.erase(own);
  return all;
}

const std::vector<Route>& Routes() {
  static const std::vector<Route> kRoutes = {
      {"Folder", 0, kSetFolder, 65300, LeaveAsIs},
      {"OlderSet", 0, kSetFolder, 65300, PutOlderSet},
      {"Medium", 0, "D:\\", 65300, NeedPreparation},
      {"Floppies", 0, "A:\\", 65300, PutBigReport},
      {"RestoreFolder", 1, kSetFolder, 65400, PutDamagedData},
      {"RestoreFloppies", 1, "A:\\", 65400, PutDamagedDataAndPile},
      {"ProtectedBundle", 2, "D:\\Log\\", 65450, PutImages},
      {"BundleWithImages", 2, "D:\\Log\\", 65450, WantImages},
  };
  return kRoutes;
}

const Route& RouteNamed(const std::string& name) {
  return *std::ranges::find(Routes(), name, &Route::name);
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
