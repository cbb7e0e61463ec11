// Sets in memory, made by the archiver, and folders of them that can be as bad as a disk.
#pragma once

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "backupset/Pieces.h"
#include "cabarc/Commands.h"
#include "set-check/Folder.h"

namespace fs = std::filesystem;

/// Names and contents.
using Files = std::map<std::string, std::string>;

/// Bytes in memory, of which those from `unreadable` on cannot be read.
class MemorySource : public cabinet::Source {
 public:
  MemorySource(const std::string& bytes, std::uint64_t unreadable) : bytes_(bytes), unreadable_(unreadable) {}

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    const std::uint64_t end = std::min<std::uint64_t>(bytes_.size(), offset + count);
    if (end > unreadable_) return -1;
    if (offset >= end) return 0;
    std::memcpy(data, bytes_.data() + offset, static_cast<std::size_t>(end - offset));
    return static_cast<std::int64_t>(end - offset);
  }
  std::uint64_t Size() override { return bytes_.size(); }

 private:
  const std::string& bytes_;
  const std::uint64_t unreadable_;
};

class MemoryFolder : public setcheck::Folder {
 public:
  explicit MemoryFolder(Files files, std::string name = "set") : files_(std::move(files)) {
    path = std::move(name);
    for (const auto& [file, bytes] : files_) entries.push_back({file, false, bytes.size()});
  }

  base::Obtained<cabinet::Source> Open(const setcheck::Entry& file) override {
    const auto from = unreadable.find(file.name);
    return std::make_unique<MemorySource>(files_.at(file.name), from == unreadable.end() ? ~0ull : from->second);
  }

  std::map<std::string, std::uint64_t> unreadable;  ///< files, and from where on they cannot be read

 private:
  const Files files_;
};

/// An empty folder that is the current one for as long as this lives.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = fs::temp_directory_path() / "set-check.XXXXXX";
    folder_ = mkdtemp(name.data());
    fs::create_directory(folder_ / "work");
    fs::current_path(folder_ / "work");
  }
  ~TemporaryFolder() {
    fs::current_path(fs::temp_directory_path());
    fs::remove_all(folder_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// Whether nothing stands above the current folder but itself.
  bool IsAlone() const { return std::distance(fs::directory_iterator(folder_), {}) == 1; }

 private:
  fs::path folder_;
};

inline void WriteFile(const fs::path& path, const std::string& bytes) {
  if (path.has_parent_path()) fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string Noise(std::size_t size, unsigned seed) {
  std::string text(size, '\0');
  std::generate(text.begin(), text.end(), std::mt19937(seed));
  return text;
}

/// An archive of these files, made by the archiver in the current folder, which is left as it was.
inline std::string Archived(const Files& files) {
  for (const auto& [name, bytes] : files) WriteFile("packing/" + name, bytes);
  std::ostringstream out, err;
  fs::current_path("packing");
  cabarc::Run({"-t", "1", "-r", "-p", "n", "../packed.cab", "*.*"}, out, err);
  fs::current_path("..");
  std::string bytes = ReadFile("packed.cab");
  fs::remove_all("packing");
  fs::remove("packed.cab");
  return bytes;
}

inline constexpr char kDescriptor[] = "BackupInfo.ini";

inline const std::vector<std::string> kKinds = {"MenuData", "ReportData", "SystemData", "UserData"};

/// A set of four kinds of data, each as the workstation below has it. `seed`: of the contents.
inline Files MakeSet(unsigned seed, std::size_t reportSize = 5000) {
  Files set;
  set["MenuData.cab"] = Archived({{"Menu/a.ini", "menu " + std::to_string(seed)}, {"Menu/b.dat", Noise(900, seed)}});
  set["ReportData.cab"] =
      Archived({{"Report/1.txt", std::string(33'000, 'r')}, {"Report/2.dat", Noise(reportSize, seed + 1)}});
  set["SystemData.cab"] = Archived({{"config.mdb", Noise(700, seed + 2)}, {"Tarsus.reg", "key"}});
  set["UserData.cab"] = Archived({{"param.mdb", Noise(600, seed + 3)}, {"Users.db", "users"}, {"User/x/y", ""}});
  std::string list;
  std::string versions;
  for (const std::string& kind : kKinds) {
    list += kind + ".cab;";
    versions += kind + "=V2.1\r\n";
  }
  set[kDescriptor] = "[Info]\r\nAppVersion=3.00\r\nDate=11/21/2026 12:17:12 PM\r\nAppType=Tarsus\r\nCABFile=" + list +
                     "\r\n\r\n[VersionInfo]\r\n" + versions + "\r\n";
  return set;
}

/// The system folder of the workstation that the sets are of.
inline Files MakeSystem() {
  Files system;
  for (const std::string& kind : kKinds) system["BackupVersion.ini"] += kind + "=V2.1\r\n";
  system["Directory.ini"] =
      "[Directory]\r\nApplicationRoot=C:\\Tarsus\\\r\nConfig=C:\\Tarsus\\Config\r\nParam=C:\\Tarsus\\Param\r\n"
      "Database=C:\\Tarsus\\Database\r\nUserFolder=C:\\Tarsus\\User\r\n";
  const Files sections = {{"MENU", "Folder=Data\\Menu\r\n"},
                          {"REPORT", "Folder=Data\\Report\r\n"},
                          {"SYSTEM", "CommonFile=%Config%\\*.mdb\r\nRegFile=\r\n"},
                          {"USER", "CommonFile=%Param%\\*.mdb;%Database%\\Users.db\r\nFolder=%UserFolder%\r\n"},
                          {"PATIENT", ""},
                          {"EXPLANATION", ""},
                          {"REPORTSET", ""}};
  std::string& list = system["BackupList.ini"];
  for (const auto& [name, items] : sections) {
    list += "[" + name + "_BACKUP]\r\n" + items + "\r\n[" + name + "_RESTORE]\r\n" + items + "\r\n";
  }
  list += "[LOG_BACKUP]\r\n\r\n[IPCOUNTER_RESTORE]\r\n";
  return system;
}

/// The pile of a set: disk by disk what stands on it.
inline std::vector<Files> MakePile(const Files& set) {
  Files joined;
  for (const std::string& kind : kKinds) joined[kind + ".cab.tmp"] = set.at(kind + ".cab");
  const std::string archive = Archived(joined);
  const std::uint32_t count = backupset::FloppyDiskCount(static_cast<std::uint32_t>(archive.size()));
  std::vector<Files> pile(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    std::string descriptor = set.at(kDescriptor);
    const std::size_t from = descriptor.find("CABFile=");
    descriptor.replace(
        from, descriptor.find("\r\n", from) - from,
        "CABFile=FDDivide.cab;\r\nFDCount=" + std::to_string(count) + "\r\nFDNumber=" + std::to_string(i + 1));
    pile[i][kDescriptor] = descriptor;
    pile[i][backupset::PieceName(static_cast<std::int32_t>(i + 1))] =
        archive.substr(i * backupset::kPieceSize, backupset::kPieceSize);
  }
  return pile;
}
