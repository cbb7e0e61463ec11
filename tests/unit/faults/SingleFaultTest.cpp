// Every call that leaves the program fails once, and then for good: on every road, at every call.
#include <algorithm>
#include <iostream>
#include <set>

#include "unit/faults/Route.h"

namespace faults {
namespace {

using enum base::MessageId;

enum class Persistence { Once, ForGood };

/// The run of a route that no fault hits.
struct Flawless {
  explicit Flawless(const Route& route) : course(route) {
    before = course.HostFiles();
    course.Travel();
    after = course.HostFiles();
    destination = course.Destination();
  }
  Course course;
  MediumFiles before, after, destination;
};

/// Calls whose failure takes the program's voice: nothing can be shown then.
bool SilencesMessages(const fakes::Call& call) {
  return call.contract == "MessageDialog" || call.method == "CreateMessageDialog";
}

/// Whether the log says that something was left out.
bool HasWarning(Course& course) {
  const std::string log = course.disk.Read(fakes::kLogFile);
  return log.find("[Warning]") != std::string::npos || log.find("[Error]") != std::string::npos;
}

/// Whether each file of the host is as it was before, or as a restore leaves it.
bool KeepsHostData(Course& course, const Flawless& flawless) {
  const MediumFiles files = course.HostFiles();
  return std::ranges::all_of(flawless.before, [&](const auto& old) {
    const auto file = files.find(old.first);
    return file != files.end() && (file->second == old.second || file->second == flawless.after.at(old.first));
  });
}

/// Whether a file stands in the host's folders that neither was there nor belongs there now.
bool LeftSomething(Course& course, const Flawless& flawless) {
  const MediumFiles files = course.HostFiles();
  return std::ranges::any_of(files, [&](const auto& file) {
    return !flawless.before.contains(file.first) && !flawless.after.contains(file.first);
  });
}

/// Whether the operator saw a message that a flawless run does not bring.
bool WasToldMore(Course& course, const Flawless& flawless) {
  return course.person.PlainMessages() > 0 || std::ranges::any_of(course.person.Messages(), [&](const auto& message) {
           return !flawless.course.person.WasShown(message.id);
         });
}

/// What is not as it should be after a run with a fault; empty when all is well.
std::string Judge(Course& course, const Flawless& flawless, const fakes::Call& fault, Persistence persistence) {
  std::string faults;
  const auto check = [&](bool right, const char* wrong) {
    if (!right) faults += std::string("; ") + wrong;
  };
  const bool once = persistence == Persistence::Once;
  const bool restores = course.route.IsRestore();
  if (course.ReportedSuccess()) {
    const bool complete =
        restores ? course.HostFiles() == flawless.after : course.Destination() == flawless.destination;
    check(complete || HasWarning(course) || WasToldMore(course, flawless),
          "success was reported, but something is missing, and nothing says so");
  } else {
    check(WasToldMore(course, flawless) || SilencesMessages(fault) || !once, "it failed without a word");
  }
  check(KeepsHostData(course, flawless), "data of the host was lost");
  check(!once || !LeftSomething(course, flawless) || HasWarning(course) || WasToldMore(course, flawless),
        "something was left in the host's folders, and nothing says so");
  check(!course.HasOpenFiles(), "a file was left open");
  check(!once || course.IsTemporaryFolderEmpty() || course.person.WasShown(RestoreWorkFolderNotRemoved) ||
            course.person.WasShown(BackupWorkFolderNotRemoved),
        "a staging folder was left behind without a word");
  check(course.toolkit.pointer == forms::Pointer::Default || course.processes.ended, "the pointer is still busy");
  check(course.disk.Read(fakes::kLogFile).find("secret") == std::string::npos, "the log has the password");
  check(!course.person.HasFailed(), "the operator met something that cannot be used");
  return faults;
}

/// The first call to fail on a route. Runs with floppies are long, and up to the choice of the drive they
/// are the same as those with a folder, whose every call fails too.
std::size_t FirstFault(const Route& route, const std::vector<fakes::Call>& calls) {
  if (!route.UsesFloppies()) return 0;
  Course sibling(RouteNamed(route.IsRestore() ? "RestoreFolder" : "Folder"));
  sibling.Travel();
  return static_cast<std::size_t>(std::ranges::mismatch(calls, sibling.calls.Calls()).in1 - calls.begin());
}

class SingleFault : public testing::TestWithParam<std::tuple<std::size_t, Persistence>> {};

TEST_P(SingleFault, IsToldAndLosesNothing) {
  const Route& route = Routes()[std::get<0>(GetParam())];
  const Persistence persistence = std::get<1>(GetParam());
  Flawless flawless(route);
  ASSERT_TRUE(flawless.course.ReportedSuccess());
  const std::vector<fakes::Call>& calls = flawless.course.calls.Calls();
  const std::size_t first = FirstFault(route, calls);
  for (std::size_t n = first + 1; n <= calls.size(); ++n) {
    Course course(route);
    persistence == Persistence::Once ? course.calls.FailCall(n) : course.calls.FailFrom("", "", n);
    course.Travel();
    const fakes::Call& fault = calls[n - 1];
    const std::string wrong = Judge(course, flawless, fault, persistence);
    EXPECT_EQ(wrong, "") << n << ": " << fault.contract << "." << fault.method << "(" << fault.detail << ")";
  }
  std::cout << route.name << ": " << calls.size() << " calls, each of the last " << calls.size() - first << " failed\n";
}

std::string NameOf(const testing::TestParamInfo<SingleFault::ParamType>& test) {
  const bool once = std::get<1>(test.param) == Persistence::Once;
  return Routes()[std::get<0>(test.param)].name + (once ? "Once" : "ForGood");
}

INSTANTIATE_TEST_SUITE_P(All, SingleFault,
                         testing::Combine(testing::Range<std::size_t>(0, Routes().size()),
                                          testing::Values(Persistence::Once, Persistence::ForGood)),
                         NameOf);

}  // namespace
}  // namespace faults
