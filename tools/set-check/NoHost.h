// What the program's own rules for sets and job files work with where there is no host: two read-only folders, and
// nothing else.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/Log.h"
#include "app/PathTable.h"
#include "set-check/Folder.h"
#include "work/Programs.h"

namespace setcheck {

/// The host's path table, beside its job file.
inline constexpr char kPathTable[] = "Directory.ini";

/// Text files of read-only folders, under the names that the folders were given here. Whatever else is asked for fails.
class ReadOnlyFiles : public host::FileSystem {
 public:
  /// From now on `name`, which ends in "\", leads to the files of `folder`. Null: to nothing.
  void Mount(const std::string& name, Folder* folder) { folders_[name] = folder; }

  bool FileExists(const std::string& path) override;
  bool FolderExists(const std::string& path) override { return folders_.contains(path); }
  std::int64_t FileSize(const std::string& path) override;
  base::Outcome List(const std::string&, const std::string&, std::vector<host::FolderEntry>&) override;
  base::Obtained<host::TextReader> OpenText(const std::string& path) override;
  base::Obtained<host::TextWriter> AppendText(const std::string&) override;
  base::Obtained<host::TextWriter> CreateText(const std::string&) override;
  base::Obtained<host::BinaryReader> OpenBinary(const std::string&) override;
  base::Obtained<host::BinaryReader> OpenUncached(const std::string&) override;
  base::Obtained<host::BinaryWriter> CreateBinary(const std::string&) override;
  base::Obtained<host::BinaryWriter> AppendBinary(const std::string&) override;
  base::Outcome Flush(const std::string&) override;
  base::Outcome RemoveFile(const std::string&) override;
  base::Outcome RemoveFolder(const std::string&) override;
  base::Outcome MoveTo(const std::string&, const std::string&) override;
  base::Outcome MoveOver(const std::string&, const std::string&) override;
  base::Outcome CopyTo(const std::string&, const std::string&) override;
  base::Outcome SetReadOnly(const std::string&) override;
  base::Outcome MakeFolder(const std::string&) override;
  base::Outcome MakePrivateFolder(const std::string&) override;
  std::string CurrentFolder() override { return {}; }
  base::Outcome SetCurrentFolder(const std::string&) override;
  std::string TemporaryFolder() override { return {}; }

 private:
  const Entry* Find(const std::string& path, Folder*& folder);

  std::map<std::string, Folder*> folders_;
};

/// The tools without programs, screen and log.
class NoHost {
 public:
  /// Names of the folders, for the rules.
  static constexpr const char* kSet = "set\\";
  static constexpr const char* kSystem = "system\\";

  NoHost();
  ~NoHost();
  NoHost(const NoHost&) = delete;
  NoHost& operator=(const NoHost&) = delete;

  ReadOnlyFiles files;

  work::Tools Tools();
  /// The path table that stands in Directory.ini of the mounted system folder. Where there is no such file each entry
  /// stands for itself, so that what follows it is known all the same.
  const app::PathTable& Paths() const;

 private:
  struct Silence;
  std::unique_ptr<Silence> silence_;
};

}  // namespace setcheck
