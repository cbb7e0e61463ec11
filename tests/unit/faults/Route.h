// Roads through the program for faults to hit: each a whole session with one job, in the hands of
// an operator who consents to everything, changes disks when asked, and leaves after one try.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "unit/Session.h"

namespace faults {

struct Course;

struct Route {
  std::string name;
  Menu menuItem;
  const char* folder;        ///< destination or source
  base::MessageId finished;  ///< the message that reports success
  void (*arrange)(Course&);
  bool deletesLogs = false;  ///< once they are saved

  /// The message that says, before the success, that something was left out.
  base::MessageId Warnings() const;
  bool IsRestore() const { return menuItem == Menu::Restore; }
  bool UsesFloppies() const { return folder[0] == 'A'; }
};

/// One run of a route on a workstation of its own.
struct Course : Session {
  explicit Course(const Route& route);

  /// From start-up to exit, whatever comes.
  void Travel() {
    before = HostFiles();
    RunUnchecked();
  }

  bool ReportedSuccess() const { return person.WasShown(route.finished); }
  /// A set in the folder of sets.
  void PutSet(const MediumFiles& set) {
    for (const auto& [name, bytes] : set) disk.Write(kSetFolder + name, bytes);
  }
  /// Puts another disk into drive A:, with all that is on it.
  void ChangeDisk(const MediumFiles& contents);
  /// What the destination holds: the files of the folder, or of all disks, each below its number.
  MediumFiles Destination();
  /// Whether a file is open on any drive.
  bool HasOpenFiles();
  /// Files of the host system, but for those that every session may change.
  MediumFiles HostFiles();

  const Route& route;
  MediumFiles before;                ///< files of the host when the program was started
  Boxes ticked;                      ///< in the restore dialog: all that it offered
  bool offersNothing = false;        ///< the restore dialog opened without a category to restore
  std::vector<MediumFiles> pile;     ///< floppies written, or to restore from
  std::deque<MediumFiles> material;  ///< disks to be written on that come next; when it is empty, blank ones
  /// What is on the disk that is taken out of drive A: after it was written.
  std::function<MediumFiles()> takeOut = [this] { return disk.Tree("A:\\"); };

 private:
  /// What the person does at a form, the first time. Asked a second time, because the first try has failed, they leave.
  template <class F>
  void Once(std::function<void(F&)> step) {
    person.Habit<F>([step = std::move(step), done = false](F& form) mutable {
      std::exchange(done, true) ? fakes::Press(form.cmdCancel, kShift) : step(form);
    });
  }
  host::Answer AnswerMessage(base::MessageId id);

  std::size_t lastWanted_ = 0;  ///< the disk of the pile that was asked for last
  int timesWanted_ = 0;
};

/// All roads: backups to a folder, over an older set with the logs deleted afterwards, to a medium and to floppies;
/// restores from a folder and from floppies; a protected bundle and one with images.
const std::vector<Route>& Routes();
const Route& RouteNamed(const std::string& name);

/// Backups over an older set, its data `kOlderData`: those of the roads that lead to a medium and to
/// floppies.
const Route& OntoOlderMedium();
const Route& OntoOlderFloppies();

/// The floppies, or the one folder, that a flawless backup on that route leaves.
const std::vector<MediumFiles>& FlawlessSet(const Route& route);

/// What the data was when an older set was made.
inline constexpr const char* kOlderData = "older data";
inline constexpr const char* kDamagedData = "damaged";

/// Contents of which no two stretches are alike: an archive's checksums would not notice some that are exchanged.
std::string Noise(std::size_t size, unsigned seed);

/// Of floppies: a report so large that there are two disks.
inline constexpr const char* kBigReport = "Report\\big.dat";
const std::string& BigReport(bool older = false);

/// Puts `kDamagedData` in the place of every file that a restore can bring back.
void DamageData(fakes::FakeHost& host);

}  // namespace faults
