// The work folder of one job: made for it, gone with it.
#pragma once

#include <cstdint>
#include <string>

#include "app/Log.h"
#include "host/Desktop.h"
#include "host/FileSystem.h"
#include "host/Libraries.h"

namespace work {

/// The folder below the work folder in which archives are kept, and unpacked.
inline constexpr char kArchiveFolderName[] = "CABFILE";

/// Belongs to one job. What nobody has removed is removed with the object, if that can be done; what a crash leaves is
/// known by a record in the host's registry.
class WorkFolder {
 public:
  /// No folder yet. `programFolder` is made current before the folder is removed: a current one cannot be deleted.
  WorkFolder(host::FileSystem& files, host::QX32& registry, std::string programFolder);
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  /// Makes the folder named after this second below the system's temporary folder ("C:\" where there is none). It is
  /// always new, and open to nobody else: where something of that name exists, the next second is waited for, a few
  /// times.
  base::Outcome Create(host::Clock& clock, host::MessageLoop& loop);

  /// Makes the program's own folder current and deletes the work folder with all that is in it, if it is there. A
  /// failure leaves the object as it was, for another try.
  base::Outcome Remove();

  /// Its path, ending in "\"; empty while there is none.
  const std::string& StagingFolder() const { return path_; }

  /// The archive folder's path, ending in "\"; the folder may not exist yet.
  std::string ArchiveFolder() const { return path_ + kArchiveFolderName + "\\"; }

  /// When it was made, as the file system counts: files that are younger have changed while the job was at work.
  std::uint64_t MadeAt() const { return madeAt_; }

  /// The program's own folder, to which everybody goes back from here.
  const std::string& ProgramFolder() const { return programFolder_; }

 private:
  base::Outcome MakeNew(host::Clock& clock, host::MessageLoop& loop, std::string& folder);

  host::FileSystem& files_;
  host::QX32& registry_;
  std::string programFolder_;
  std::string path_;
  std::uint64_t madeAt_ = 0;
};

/// Removes the work folders that earlier runs have left, by the record that those have made; a line in the log for
/// each. One that cannot be removed stays on the record.
void RemoveLeftWorkFolders(host::FileSystem& files, host::QX32& registry, app::OperationLog& log);

}  // namespace work
