// Writes a packed set to its destination: a folder, a medium, or floppies.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "app/Application.h"
#include "backupset/BackupSet.h"
#include "backupset/Descriptor.h"
#include "backupset/WritingMessages.h"
#include "media/SelectionOperation.h"
#include "work/WorkFolder.h"

namespace backupset {

/// What is written, and for whom. Made by a job, which owns it; lives until the selection dialog has gone.
struct PackedSet {
  work::WorkFolder workFolder;
  BackupSet set;
  std::uint64_t BackupSize = 0;  ///< bytes to be written
};

/// Measures what was gathered, and says in the log what it is and what has passed meanwhile.
void Measure(const work::Tools& tools, const WritingMessages& messages, const app::Watch& gathering, PackedSet& packed);

/// A set that is gathered and packed, and the job that does it.
struct Gathering {
  app::JobKind kind;
  PackedSet& packed;
  const app::Watch& watch;  ///< of the whole job
};

/// Has a set gathered and packed: the workstation goes on meanwhile, and `bar` and `numbers` show how far that is.
/// Returns whether `gather` has done it; otherwise its failure was listed and shown, and there is no work folder any
/// more.
bool GatherUnderBar(app::Application& application, forms::ProgressBar& bar, forms::Label& numbers, const Gathering& job,
                    const std::function<base::Outcome()>& gather);

/// One try to write a set, as far as folder and floppies need the same.
struct Writing {
  work::Tools tools;
  HostIdentity host;
  PackedSet& packed;
  std::string destination;  ///< ends in "\"
  const WritingMessages& messages;
};

/// Writes the set to the folder `SelectedFolder`: to floppies when that is on drive "A", else to one medium or folder.
/// No descriptor is left in the work folder. Stopped when the operator stopped or an error was shown; a failure may
/// carry a message. A destination that cannot be right is refused before anything is asked or written.
base::Outcome WriteBackupSet(app::Application& application, media::MediaDrives& drives, PackedSet& packed,
                             const WritingMessages& messages);

/// The one way: checks and, where it must be, formats and labels the medium of the destination, checks its space,
/// asks before it uses a foreign volume, makes a folder or overwrites, then writes the descriptor into
/// the work folder and copies it with every archive. A file that does not arrive in its full size
/// is a failed copy. Outcomes as above.
base::Outcome CopyToDestination(app::Application& application, media::MediaDrives& drives, const Writing& writing);

/// The other way: joins the archives of the work folder, cuts the result, and writes disk by disk: asks for the
/// disk, formats and labels it, and puts its descriptor and its piece on it. Nothing but the joined
/// archive and its pieces is left in the archive folder. Outcomes as above.
base::Outcome WriteToFloppies(app::Application& application, media::MediaDrives& drives, const Writing& writing);

/// Removes the work folder; message 60361 when that fails.
void RemoveWorkFolderOrSay(app::Failures& failures, PackedSet& packed);

/// Tells that it was stopped, and why, to the operator and the log; sets the pointer back, and returns Stopped.
base::Outcome ReportStopped(app::Application& application, const WritingMessages& messages, const base::Outcome& why);

/// Tells that the set was written: in the log with what it is made of, and what has passed in this job; in the list of
/// past jobs; on the screen, before the message of success, how many warnings there were, if any.
void ReportWritten(app::Application& application, const WritingMessages& messages, const BackupSet& set,
                   const app::Watch& job);

/// The archives of a set as the log names them.
std::string Description(const BackupSet& set);

/// What the two operations that write a set have in common towards the selection dialog: shows the space, gives
/// failures their messages, lists the job that has written nothing, and clears the work folder away when the dialog
/// goes (message 60361 when that fails).
/// What is proposed and what is written is left to the one operation and the other.
class WritingOperation : public media::SelectionOperation {
 public:
  /// All outlive the operation; `job` watches the whole job.
  WritingOperation(app::Application& application, media::MediaDrives& drives, PackedSet& packed,
                   const WritingMessages& messages, const app::Watch& job)
      : application_(application), drives_(drives), packed_(packed), messages_(messages), job_(job) {}

  std::optional<std::uint64_t> SpaceNeeded() const override { return packed_.BackupSize; }
  base::Outcome Run() override;
  void Unloaded() override;

 protected:
  /// Carries the operation out, under the hourglass.
  virtual base::Outcome Write() = 0;

  app::Application& application_;
  media::MediaDrives& drives_;
  PackedSet& packed_;
  const WritingMessages& messages_;

 private:
  void ListUnlessWritten();

  const app::Watch& job_;
  std::string tried_;                          ///< destination of the last try
  base::Outcome end_ = base::Result::Stopped;  ///< of that; without any, the dialog was only closed
};

}  // namespace backupset
