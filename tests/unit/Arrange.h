// What can be wrong with a workstation, each in a word, for the rows of tables.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/MessageIds.h"
#include "fakes/FakeHost.h"
#include "fakes/Printing.h"

using Ids = std::vector<base::MessageId>;
using Names = std::vector<std::string>;
using Paths = Names;

using Arrangement = std::function<void(fakes::FakeHost&)>;

/// Paths of a tree, in its order.
inline Names NamesOf(const std::map<std::string, std::string>& tree) {
  Names names;
  for (const auto& [name, bytes] : tree) names.push_back(name);
  return names;
}

/// What each line of the log is about: its text before the details.
inline Names Heads(Names lines) {
  for (std::string& line : lines) line = line.substr(0, line.find_first_of(":;"));
  return lines;
}

inline void Nothing(fakes::FakeHost&) {}

/// Calls fail from their n-th one on, as fakes::CallCounter::FailFrom says.
inline Arrangement Fails(const char* contract, const char* method, std::size_t n = 1, const std::string& detail = {}) {
  return [=](fakes::FakeHost& host) { host.calls.FailFrom(contract, method, n, detail); };
}
inline Arrangement NoEntry(const char* name) {
  return [=](fakes::FakeHost& host) { EXPECT_EQ(host.qx32.pathTable.erase(name), 1u); };
}
inline Arrangement Gone(const std::string& path) {
  return [=](fakes::FakeHost& host) { EXPECT_TRUE(host.disk.Remove(path)); };
}
inline Arrangement InUse(const std::string& path) {
  return [=](fakes::FakeHost& host) { host.disk.Find(path)->readers = 1; };
}
inline Arrangement File(const std::string& path, const std::string& bytes) {
  return [=](fakes::FakeHost& host) { host.disk.Write(path, bytes); };
}
inline Arrangement Program(const std::string& path, const fakes::ProgramAction& action) {
  return [=](fakes::FakeHost& host) { host.processes.Install(path, action); };
}
inline Arrangement SystemFile(const std::string& name, const std::vector<std::string>& lines) {
  return [=](fakes::FakeHost& host) { host.WriteLines(fakes::kSystemFolder + name, lines); };
}
/// The whole job file.
inline Arrangement Jobs(const std::vector<std::string>& lines) {
  return SystemFile("BackupList.ini", lines);
}
/// An answer of the media component that means nothing.
inline constexpr host::DriveStatus kMeaningless{99};
/// What the media component answers, one after the other.
inline Arrangement Statuses(char drive, const std::deque<host::DriveStatus>& statuses) {
  return [=](fakes::FakeHost& host) { host.Told().mediaStatuses[drive] = statuses; };
}
inline Arrangement NoMedium(const char* drive) {
  return [=](fakes::FakeHost& host) { host.disk.FindDrive(drive)->ready = false; };
}
inline Arrangement Capacity(const char* drive, std::uint64_t bytes) {
  return [=](fakes::FakeHost& host) { host.disk.FindDrive(drive)->capacity = bytes; };
}
inline Arrangement Label(const char* drive, const char* label) {
  return [=](fakes::FakeHost& host) { host.disk.FindDrive(drive)->label = label; };
}
/// Leaves only so many free bytes on the system disk.
inline Arrangement Room(std::uint64_t bytes) {
  return [=](fakes::FakeHost& host) {
    host.disk.FindDrive("C:")->capacity -= static_cast<std::uint64_t>(host.disk.FreeSpace("C:")) - bytes;
  };
}
inline Arrangement Both(const Arrangement& first, const Arrangement& second) {
  return [=](fakes::FakeHost& host) { first(host), second(host); };
}
/// Happens when a program is about to work whose command line has this part.
inline Arrangement Before(const std::string& part, const Arrangement& event) {
  return [=](fakes::FakeHost& host) {
    host.processes.beforeWork = [=, &host](const std::string& command) {
      if (command.find(part) != std::string::npos) event(host);
    };
  };
}

inline std::uint32_t DoNothing(fakes::Disk&, const fakes::Words&) {
  return 0;
}
inline constexpr const char* kArchiver = "C:\\Tarsus\\Backup\\cabarc.exe";
inline constexpr const char* kInterpreter = "C:\\Windows\\System32\\CMD.exe";
