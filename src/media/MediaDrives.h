// The host's removable media drives: which one backups go to, what is in a drive, and how a medium is prepared.
#pragma once

#include <cstdint>
#include <string>

#include "app/Messages.h"
#include "app/PathTable.h"
#include "host/Host.h"

namespace media {

/// The messages of one operation for the answers that stop it or make it wait.
struct MediumMessages {
  app::MessageId error{};     ///< DriveStatus::Error
  app::MessageId unusable{};  ///< DriveStatus::Unusable
  app::MessageId insert{};    ///< DriveStatus::NoMedium: a prompt, shown again until there is a medium
};

/// Of everything that reads a backup set.
inline constexpr MediumMessages kSourceMessages{app::MessageId::SourceDriveError, app::MessageId::SourceDriveUnusable,
                                                app::MessageId::AskInsertSourceMedium};

enum class Medium {
  Ready,
  Readable,  ///< DriveStatus::Readable: what that means is the caller's decision
  Stopped,   ///< an error was shown, or the operator stopped
};

/// Lives from sign-in to exit: a medium is prepared the way that the last look at the media drives has found.
class MediaDrives {
 public:
  MediaDrives(const host::Host& host, const app::PathTable& paths, app::Messages& messages, app::Failures& failures)
      : host_(host), paths_(paths), messages_(messages), failures_(failures) {}

  /// The drive of the first writable media entry of the network configuration database, whose preparation type and
  /// program command are kept for the calls below. Empty when there is none or the database cannot be read; an unknown
  /// path-table entry shows message 60326, a database that cannot be opened 60323; a list or an entry that cannot be
  /// read ends the search with a line in the log alone.
  std::string GetDefaultMediaDrive();

  /// The root of that drive; ":\" when the host has none. Ends in "\".
  std::string ProposeMediaDrive();

  /// Asks the host's media component, created for this one call and set up with the media program's command. A
  /// component that is missing answers DriveStatus::Error.
  host::DriveStatus GetDriveStatus(const std::string& driveOrFolder);

  /// Asks for the status of `drive` until it is one that decides, serving the user interface between. A component
  /// whose answers mean nothing is asked again at rest; after some seconds the insert prompt lets the operator stop.
  Medium WaitForMedium(const std::string& drive, const MediumMessages& messages);

  /// Whether the drive of `folder` may be read: Stopped when the operator stopped or an error was shown.
  base::Outcome CheckSourceDrive(const std::string& folder);

  /// Prepares (formats) the medium in `drive` the way the host has it, and waits for it. A failure of the "STANDARD"
  /// way shows message 60382, "NONE" shows 63380. A type that is none of the three passes without anything being done.
  /// Fails also when the media program cannot be started.
  base::Outcome PrepareMedia(const std::string& drive);

  /// `backupSize` bytes against the space free on the drive of `folder`, such as "1.50MB / 10,240.00MB"; "-MB" stands
  /// for a free space that cannot be had, also where the drive holds no usable medium.
  std::string GetCapacityText(const std::string& folder, std::uint64_t backupSize);

 private:
  std::string FirstWritableDrive();
  base::Outcome RunMediaProgram();
  base::Outcome PrepareByComponent(const std::string& drive);

  host::Host host_;
  const app::PathTable& paths_;
  app::Messages& messages_;
  app::Failures& failures_;
  std::string MediaAppType;
  std::string MediaAppCommand;
};

}  // namespace media
