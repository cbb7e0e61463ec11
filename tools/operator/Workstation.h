// The demonstration workstation below C:\Tarsus, as tests see and disturb it. What disturbs it throws
// std::runtime_error where it has no proof that the workstation was made for tests (TestMachine.h).
#pragma once

#include <windows.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "operator/TestMachine.h"

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

/// Something that is wrong with the workstation; put right when it goes out of scope.
using Fault = std::shared_ptr<void>;

/// The file is gone, or another one of these contents stands in its place.
[[nodiscard]] Fault Altered(const fs::path& path, const std::optional<std::string>& contents = {});
/// A text or number of the registry, below HKEY_LOCAL_MACHINE, is gone.
[[nodiscard]] Fault WithoutValue(const std::wstring& key, const std::wstring& name);

/// The text with every `from` replaced by `to`.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

/// Every file below `folder` with its bytes, by its path relative to it.
std::map<std::string, std::string> Snapshot(const fs::path& folder);

/// Whether a process runs whose executable has this name.
bool IsRunning(const std::wstring& executable);
/// Ends every process of that name and waits until none is left.
void EndAll(const std::wstring& executable);

/// Leaves the workstation as a test expects to find it: no program running, empty
/// media, no log, nothing left in the temporary folder.
void TidyUp();

}  // namespace endtoend
