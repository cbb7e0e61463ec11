// What xcopy leaves out, with a word or without one: the program saves it and puts it back all the same, and where even
// that fails, the operator is warned and the rest is there.
#include <algorithm>

#include "unit/faults/Oracle.h"

namespace faults {
namespace {

using enum base::MessageId;

constexpr const char* kReports = "C:\\Tarsus\\Report\\2012\\";
constexpr const char* kImage = "C:\\Tarsus\\Patient\\Study1\\image1.dat";
constexpr const char* kUsers = "C:\\Tarsus\\User\\users.dat";
constexpr const char* kLogs = "C:\\Tarsus\\Log\\Host\\";

/// Beyond the reach of the command-line tools, while its path within an archive is no longer than one takes.
const std::string kDeepFolder = kReports + std::string(120, 'd') + "\\";
const std::string kDeepFile = kDeepFolder + std::string(119, 'e');

Arrangement Marked(const std::string& path, unsigned attributes) {
  return [=](fakes::FakeHost& host) { host.disk.Find(path)->attributes = attributes; };
}
Arrangement Locked(const std::string& path, fakes::Held how = fakes::Held::AgainstAll) {
  return [=](fakes::FakeHost& host) { EXPECT_TRUE(host.disk.Hold(path, how)); };
}
Arrangement Files(const Paths& paths) {
  return [=](fakes::FakeHost& host) {
    for (const std::string& path : paths) EXPECT_TRUE(host.disk.Write(path, "contents of " + path));
  };
}
Arrangement Silently(const Arrangement& obstacle) {
  return Both(obstacle, Program(kInterpreter, fakes::RunSilentCommandInterpreter));
}

struct Obstacle {
  const char* name;
  const char* route;
  Arrangement obstacle;
  /// What is not saved, or not put back: a path in the set's archives, or below the host's folder. Empty: nothing.
  std::string lost = {};
};

const char* const kBackup = "Folder";
const char* const kRestore = "RestoreFolder";

const Obstacle kObstacles[] = {
    {"hidden", kBackup, Marked(kReports + std::string("b.txt"), fakes::kHidden)},
    {"system", kBackup, Marked(kReports + std::string("b.txt"), fakes::kSystem)},
    {"all hidden", kBackup, Marked(kUsers, fakes::kHidden)},
    {"locked", kBackup, Locked(kReports + std::string("b.txt")), "ReportData.cab\\Report\\2012\\b.txt"},
    {"locked, and nobody says so", kBackup, Silently(Locked(kImage)), "PatientData.cab\\Patient\\Study1\\image1.dat"},
    {"can be read, not replaced", kBackup, Locked(kImage, fakes::Held::AgainstReplacing)},
    {"target read-only", kRestore, Marked(kImage, fakes::kReadOnly)},
    {"target read-only, and nobody says so", kRestore, Silently(Marked(kImage, fakes::kReadOnly))},
    {"target hidden", kRestore, Marked(kUsers, fakes::kHidden | fakes::kSystem)},
    {"target locked", kRestore, Locked(kImage), "Patient\\Study1\\image1.dat"},
    {"target being read", kRestore, Locked(kUsers, fakes::Held::AgainstReplacing), "User\\users.dat"},
    {"target locked, and nobody says so", kRestore, Silently(Locked(kImage)), "Patient\\Study1\\image1.dat"},
};

/// What the job was to bring about, and has.
MediumFiles ResultOf(Course& course) {
  return course.route.IsRestore() ? course.HostFiles() : Unpacked(course.Destination());
}

TEST(LeftOut, IsCopiedAllTheSameOrTold) {
  const Arrangement files = Files({kReports + std::string("a.txt"), kReports + std::string("b.txt"),
                                   kReports + std::string("c.txt"), kReports + std::string("below\\d.txt")});
  std::map<std::string, Flawless> flawless;
  for (const Obstacle& each : kObstacles) {
    SCOPED_TRACE(each.name);
    const Route& route = RouteNamed(each.route);
    const Flawless& whole = flawless.try_emplace(each.route, route, route.IsRestore() ? Nothing : files).first->second;
    Course course(route);
    if (!route.IsRestore()) files(course);
    each.obstacle(course);
    MediumFiles expected = route.IsRestore() ? whole.after : Unpacked(whole.destination);
    if (!each.lost.empty()) {
      ASSERT_EQ(expected.erase(each.lost), 1u);
      if (route.IsRestore()) expected[each.lost] = whole.course.before.at(each.lost);
    }
    course.Travel();
    EXPECT_EQ(Judge(course, whole), "");
    EXPECT_TRUE(course.ReportedSuccess());
    EXPECT_EQ(ResultOf(course), expected);
    EXPECT_TRUE(each.lost.empty() || WasWarned(course));
  }
}

TEST(LeftOut, ComesBack) {
  Course backup(RouteNamed("Folder"));
  const Paths odd = {kReports + std::string("hidden.txt"), kReports + std::string("system.txt"),
                     kReports + std::string("readonly.txt"), kDeepFile, kDeepFolder + "f.txt"};
  Files(odd)(backup);
  Marked(odd[0], fakes::kHidden)(backup);
  Marked(odd[1], fakes::kSystem | fakes::kHidden)(backup);
  Marked(odd[2], fakes::kReadOnly)(backup);
  backup.Travel();
  Course restore(RouteNamed("RestoreFolder"));
  restore.PutSet(backup.Destination());
  restore.Travel();
  EXPECT_TRUE(backup.ReportedSuccess() && restore.ReportedSuccess());
  EXPECT_EQ(restore.HostFiles(), backup.HostFiles());
}

/// The last messages of a run.
Ids LastShown(const Course& course, std::size_t count) {
  Ids shown;
  for (const fakes::ShownMessage& message : course.person.Messages()) shown.push_back(message.id);
  return Ids(shown.end() - static_cast<std::ptrdiff_t>(std::min(count, shown.size())), shown.end());
}

TEST(LeftOut, LogsStayWhenOneOfThemIsNotInTheSet) {
  Course course(RouteNamed("OlderSet"));
  Files({kLogs + std::string("a.log"), kLogs + std::string("z.log"), kLogs + std::string("Old\\z.log")})(course);
  Locked(kLogs + std::string("a.log"))(course);
  course.Travel();
  const MediumFiles saved = Unpacked(course.Destination());
  for (const std::string name : {"host.log", "z.log", "Old\\old.log", "Old\\z.log"})
    EXPECT_TRUE(saved.contains("LogData.cab\\Host\\" + name)) << name;
  EXPECT_EQ(LastShown(course, 3), (Ids{BackupWarnings, BackupComplete, LogsNotDeleted}));
  EXPECT_EQ(course.HostFiles(), course.before);
}

// xcopy says nothing of a hidden log; the deletion takes it.
TEST(LeftOut, HiddenLogsAreSavedBeforeTheyAreDeleted) {
  const Arrangement arrange = Files({kLogs + std::string("a.log")});
  const Flawless flawless(RouteNamed("OlderSet"), arrange);
  Course course(RouteNamed("OlderSet"));
  arrange(course);
  Marked(kLogs + std::string("a.log"), fakes::kHidden)(course);
  course.Travel();
  EXPECT_EQ(Judge(course, flawless), "");
  EXPECT_EQ(course.HostFiles(), flawless.after);
}

}  // namespace
}  // namespace faults
