// Tarsus.MediaComponent: the state of drives and media, and their preparation.
#pragma once

#include "components/Component.h"

namespace components {

class MediaComponent final : public Component {
 public:
  MediaComponent();

  /// `drive` is a letter ("E"), a drive ("E:") or a folder. 3 ready, 2 may only be read,
  /// 1 a drive of removable media without a medium, 0 no such drive, -1 anything else.
  /// A folder that does not exist yet has the state of its drive.
  std::int32_t GetDriveStatus(const std::string& drive);

  /// Empties the medium in `drive` and gives it the host's volume label. Refuses every drive
  /// that is not of removable media. 0 on success, -1 on failure. `workDrive` and the options
  /// have no meaning to drives that need no program of their own.
  std::int32_t PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
                            std::int32_t option2);

  /// The command line of the medium's own program. Drives of this host are reached through
  /// Windows alone, so it is taken and not run.
  void SetUp(const std::string& command) { static_cast<void>(command); }
};

}  // namespace components
