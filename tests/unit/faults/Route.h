// Roads through the program for faults to hit: each a whole session with one job, in the hands of
// an operator who consents to everything, changes disks when asked, and leaves after one try.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "unit/Session.h"

namespace faults {

struct Course;

struct Route {
  const char* name;
  std::size_t menuItem;
  const char* folder;     ///< destination or source
  std::int32_t finished;  ///< the message that reports success
  void (*arrange)(Course&);

  bool IsRestore() const { return menuItem == 1; }
  bool UsesFloppies() const { return folder[0] == 'A'; }
};

/// One run of a route on a workstation of its own.
struct Course : Session {
  explicit Course(const Route& route);

  /// From start-up to exit, whatever comes.
  void Travel() { RunUnchecked(); }

  bool ReportedSuccess() const { return person.WasShown(route.finished); }
  /// What the destination holds: the files of the folder, or of all disks, each below its number.
  MediumFiles Destination();
  /// Whether a file is open on any drive.
  bool HasOpenFiles();
  /// Files of the host system, but for those that every session may change.
  MediumFiles HostFiles();

  const Route& route;
  bool offersNothing = false;     ///< the restore dialog opened without a category to restore
  std::vector<MediumFiles> pile;  ///< floppies written, or to restore from

 private:
  void AddHabits();
  std::int32_t AnswerMessage(std::int32_t id);
  /// Whether this is the first time that the job can be started.
  bool Begins() { return !std::exchange(begun_, true); }

  bool begun_ = false;
};

/// All roads: backups to a folder, over an older set, to a medium and to floppies; restores from a
/// folder and from floppies; a protected bundle and one with images.
const std::vector<Route>& Routes();
const Route& RouteNamed(const std::string& name);

/// The floppies, or the one folder, that a flawless backup on that route leaves.
const std::vector<MediumFiles>& FlawlessSet(const char* route);

/// What the data of the route "OlderSet" was when the older set was made.
inline constexpr const char* kOlderData = "older data";
inline constexpr const char* kDamagedData = "damaged";

/// Puts `kDamagedData` in the place of every file that a restore can bring back.
void DamageData(fakes::FakeHost& host);

}  // namespace faults
