#include "unit/faults/Oracle.h"

#include <algorithm>

namespace faults {
namespace {

using enum base::MessageId;

/// Where the files of a category stand, in the order of the boxes.
constexpr const char* kRestoredBelow[] = {"Patient\\", "Menu\\",      "Config\\system.ini", "User\\",
                                          "Explain\\", "ReportSet\\", "Report\\",           "Counter\\"};

bool BelongsTo(const std::string& path, Box box) {
  return path.starts_with(kRestoredBelow[static_cast<std::size_t>(box)]);
}

/// Whether the restore was not asked for this file: the dialog showed that its category cannot be had.
bool IsNotWanted(const Course& course, const std::string& path) {
  return std::ranges::any_of(kAllBoxes, [&](Box box) { return BelongsTo(path, box) && !course.ticked.contains(box); });
}

bool IsRestored(Course& course, const Flawless& flawless) {
  const MediumFiles files = course.HostFiles();
  return std::ranges::all_of(flawless.after, [&](const auto& wanted) {
    const auto file = files.find(wanted.first);
    return (file != files.end() && file->second == wanted.second) || IsNotWanted(course, wanted.first);
  });
}

/// Whether all that a flawless run saves or puts back was saved or put back. Attributes of files within an archive may
/// differ.
bool IsComplete(Course& course, const Flawless& flawless) {
  if (course.route.IsRestore()) return IsRestored(course, flawless);
  const MediumFiles destination = course.Destination();
  return destination == flawless.destination || Unpacked(destination) == Unpacked(flawless.destination);
}

bool IsSaved(Course& course, const std::string& bytes) {
  return std::ranges::any_of(Unpacked(course.Destination()), [&](const auto& file) { return file.second == bytes; });
}

/// Whether each file of the host is as it was before, or as the job leaves it; one that the job deletes is in the set.
bool KeepsHostData(Course& course, const Flawless& flawless) {
  const MediumFiles files = course.HostFiles();
  return std::ranges::all_of(course.before, [&](const auto& old) {
    const auto file = files.find(old.first);
    const auto wanted = flawless.after.find(old.first);
    if (file == files.end()) return wanted == flawless.after.end() && IsSaved(course, old.second);
    return file->second == old.second || (wanted != flawless.after.end() && file->second == wanted->second);
  });
}

/// Whether the log says that something went wrong. Enough for a copy that is left behind at the sign-in, before any
/// job; not for a job's result.
bool IsLogged(Course& course) {
  const std::string log = course.disk.Read(fakes::kLogFile);
  return log.find("[Warning]") != std::string::npos || log.find("[Error]") != std::string::npos;
}

/// Whether a file stands in the host's folders that neither was there nor belongs there now.
bool LeftSomething(Course& course, const Flawless& flawless) {
  const MediumFiles files = course.HostFiles();
  return std::ranges::any_of(files, [&](const auto& file) {
    return !course.before.contains(file.first) && !flawless.after.contains(file.first);
  });
}

/// Whether the operator saw a message that a flawless run does not bring.
bool WasToldMore(Course& course, const Flawless& flawless) {
  return course.person.PlainMessages() > 0 || std::ranges::any_of(course.person.Messages(), [&](const auto& message) {
           return !flawless.course.person.WasShown(message.id);
         });
}

}  // namespace

Flawless::Flawless(const Route& route, const Arrangement& arrange) : course(route) {
  arrange(course);
  course.Travel();
  EXPECT_TRUE(course.ReportedSuccess() && !WasWarned(course)) << route.name;
  after = course.HostFiles();
  destination = course.Destination();
}

MediumFiles Unpacked(const MediumFiles& set) {
  MediumFiles files;
  for (const auto& [name, bytes] : set) {
    const auto members = fakes::ReadCabinetMembers(bytes);
    if (!members) files[name] = bytes;
    for (const fakes::CabinetMember& member : members.value_or(fakes::CabinetMembers()))
      files[name + "\\" + member.path] = member.bytes;
  }
  return files;
}

bool WasWarned(const Course& course) {
  const auto& shown = course.person.Messages();
  const auto success = std::ranges::find(shown, course.route.finished, &fakes::ShownMessage::id);
  return std::ranges::find(shown.begin(), success, course.route.Warnings(), &fakes::ShownMessage::id) != success;
}

std::string Judge(Course& course, const Flawless& flawless, Voice voice) {
  std::string faults;
  const auto check = [&](bool right, const char* wrong) {
    if (!right) faults += std::string("; ") + wrong;
  };
  const bool told = WasToldMore(course, flawless);
  const bool isMute = voice == Voice::CallsFailForGood;
  if (course.ReportedSuccess()) {
    check(WasWarned(course) || IsComplete(course, flawless), "success was reported, and something is missing");
  } else {
    check(told || voice != Voice::Whole, "it failed without a word");
  }
  check(KeepsHostData(course, flawless), "data of the host was lost");
  check(isMute || !LeftSomething(course, flawless) || told || IsLogged(course),
        "something was left in the host's folders without a word");
  check(!course.HasOpenFiles(), "a file was left open");
  check(isMute || course.IsTemporaryFolderEmpty() || course.person.WasShown(RestoreWorkFolderNotRemoved) ||
            course.person.WasShown(BackupWorkFolderNotRemoved),
        "a staging folder was left behind without a word");
  check(course.toolkit.pointer == forms::Pointer::Default || course.processes.ended, "the pointer is still busy");
  check(course.disk.Read(fakes::kLogFile).find("secret") == std::string::npos, "the log has the password");
  check(!course.person.HasFailed(), "the operator met something that cannot be used");
  return faults;
}

}  // namespace faults
