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

void PutOlderData(Course& course) {
  FillData(course, kOlderData);
}

void PutOlderSet(Course& course) {
  static const Route kEarlier = {"", 0, kSetFolder, 65300, PutOlderData};
  static const MediumFiles kSet = [] {
    Course earlier(kEarlier);
    earlier.Travel();
    return earlier.disk.Tree(kSetFolder);
  }();
  for (const auto& [name, bytes] : kSet) course.disk.Write(kSetFolder + name, bytes);
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
  for (const auto& [name, bytes] : FlawlessSet("Folder").front()) course.disk.Write(kSetFolder + name, bytes);
}

void PutDamagedDataAndPile(Course& course) {
  DamageData(course);
  course.pile = FlawlessSet("Floppies");
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

void Start(frmMaintenance& form, const Route& route) {
  if (route.arrange == WantImages) {
    fakes::Tick(form.Option2);
    fakes::Tick(form.Option4);
    fakes::Type(form.txtCollectRange, "123");
  }
  fakes::Press(form.cmdStart);
}

void Start(frmBackup& form) {
  fakes::Tick(form.chkSystemData);
  fakes::Tick(form.chkReportData);
  fakes::Press(form.cmdStart);
}

/// Whether there was anything to restore.
bool Start(frmRestore& form) {
  for (const auto box : kBoxes) {
    if ((form.*box).Enabled()) fakes::Tick(form.*box);
  }
  const bool offers = form.cmdStart.Enabled();
  offers ? fakes::Press(form.cmdStart) : fakes::Press(form.cmdCancel);
  return offers;
}

bool IsOpenBelow(const fakes::Entry& entry) {
  return entry.readers + entry.writers > 0 || std::any_of(entry.children.begin(), entry.children.end(),
                                                          [](const auto& child) { return IsOpenBelow(*child.second); });
}

}  // namespace

Course::Course(const Route& way) : route(way) {
  route.arrange(*this);
  AddHabits();
}

void Course::AddHabits() {
  // Whoever is asked for something a second time gives up: the first try has failed.
  person.Habit<frmUserAuthentication>([signedIn = false](frmUserAuthentication& form) mutable {
    if (std::exchange(signedIn, true)) return fakes::Press(form.cmdCancel, kShift);
    fakes::Choose(form.cmbUserName, fakes::kServiceUser);
    fakes::Type(form.txtPassword, "secret");
    fakes::Press(form.cmdOK);
  });
  person.Habit<frmMainMenu>([this, entered = false](frmMainMenu& form) mutable {
    forms::CommandButton& item = form.cmdMenu[route.menuItem];
    const bool again = std::exchange(entered, true);
    again || !item.Enabled() ? fakes::Press(form.cmdEnd, kShift) : fakes::Press(item);
  });
  person.Habit<frmBackup>([this](frmBackup& form) { Begins() ? Start(form) : fakes::Press(form.cmdCancel); });
  person.Habit<frmRestore>([this](frmRestore& form) {
    if (!Begins()) return fakes::Press(form.cmdCancel);
    offersNothing = !Start(form);
  });
  person.Habit<frmMaintenance>(
      [this](frmMaintenance& form) { Begins() ? Start(form, route) : fakes::Press(form.cmdCancel); });
  person.Habit<frmSelectFolder>([this, chosen = false](frmSelectFolder& form) mutable {
    if (std::exchange(chosen, true)) return fakes::Press(form.cmdCancel);
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
  return IsOpenBelow(*disk.Find("A:\\")) || IsOpenBelow(*disk.Find("C:\\")) || IsOpenBelow(*disk.Find("D:\\"));
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
  return *std::find_if(Routes().begin(), Routes().end(), [&](const Route& route) { return route.name == name; });
}

const std::vector<MediumFiles>& FlawlessSet(const char* route) {
  static std::map<std::string, std::vector<MediumFiles>> sets;
  std::vector<MediumFiles>& set = sets[route];
  if (set.empty()) {
    Course course(RouteNamed(route));
    course.Travel();
    EXPECT_TRUE(course.ReportedSuccess()) << route;
    set = course.pile;
    set.push_back(course.disk.Tree(course.route.folder));
  }
  return set;
}

void DamageData(fakes::FakeHost& host) {
  FillData(host, kDamagedData);
}

}  // namespace faults
