// The work folder of one job: made for it, gone with it.
#pragma once

#include <cstdint>
#include <string>

#include "host/Desktop.h"
#include "host/FileSystem.h"

namespace work {

/// The folder below the work folder in which archives are kept, and unpacked.
inline constexpr char kArchiveFolderName[] = "CABFILE";

/// Belongs to one job. What nobody has removed is removed with the object, if that can be done.
class WorkFolder {
 public:
  /// No folder yet. `programFolder` is made current before the folder is removed: a current one cannot be deleted.
  WorkFolder(host::FileSystem& files, std::string programFolder);
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  /// Makes the folder named after this second below the system's temporary folder ("C:\" where there is none). A
  /// folder of that name that exists already is taken as it is.
  base::Outcome Create(host::Clock& clock);

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
  host::FileSystem& files_;
  std::string programFolder_;
  std::string path_;
  std::uint64_t madeAt_ = 0;
};

}  // namespace work
