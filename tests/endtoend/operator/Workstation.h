// The demonstration workstation below C:\Tarsus, as tests see and disturb it.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace endtoend {

namespace fs = std::filesystem;

inline const fs::path kTarsus = L"C:\\Tarsus";
inline const fs::path kMedium = L"E:\\";  ///< labelled BACKUP
inline const fs::path kForeignMedium = L"F:\\";
inline constexpr char kProgram[] = "C:\\Tarsus\\Program\\QXBackupUtility.exe";

/// The file's bytes; empty when it does not exist.
std::string ReadBytes(const fs::path& path);
void WriteBytes(const fs::path& path, const std::string& bytes);

/// The operation log's texts without their time stamps, as "[tag] text".
std::vector<std::string> LogLines();
/// Whether some line of the log ends in `text`.
bool LogHolds(const std::string& text);

/// Takes a file or folder away and puts it back at the end.
class Missing {
 public:
  explicit Missing(fs::path path);
  ~Missing();
  Missing(const Missing&) = delete;
  Missing& operator=(const Missing&) = delete;

 private:
  fs::path path_;
  fs::path aside_;
};

/// Gives a file other contents and the old ones back at the end.
class Altered {
 public:
  Altered(fs::path path, const std::string& contents);
  ~Altered() { WriteBytes(path_, before_); }
  Altered(const Altered&) = delete;
  Altered& operator=(const Altered&) = delete;

 private:
  fs::path path_;
  std::string before_;
};

/// Removes a value of the registry and puts it back at the end.
class MissingRegistryValue {
 public:
  MissingRegistryValue(std::wstring key, std::wstring name);
  ~MissingRegistryValue();
  MissingRegistryValue(const MissingRegistryValue&) = delete;
  MissingRegistryValue& operator=(const MissingRegistryValue&) = delete;

 private:
  std::wstring key_;
  std::wstring name_;
  DWORD type_ = 0;
  std::vector<BYTE> data_;
};

/// The text with every `from` replaced by `to`.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

/// Every file below `folder` with its bytes, by its path relative to it.
std::vector<std::pair<std::string, std::string>> Snapshot(const fs::path& folder);

/// Whether a process runs whose executable has this name.
bool IsRunning(const std::wstring& executable);
/// Ends every process of that name and waits until none is left.
void EndAll(const std::wstring& executable);

/// Leaves the workstation as a test expects to find it: no program running, empty
/// media, no log, nothing left in the temporary folder.
void TidyUp();

}  // namespace endtoend
