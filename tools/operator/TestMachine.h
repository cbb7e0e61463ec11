// Proof that what a test empties, ends or changes was made for tests.
//
// Whoever sets a workstation up for tests marks it (mark_for_tests in scripts/lib.sh) with a word that is drawn anew
// each time: in the Windows folder, and in each folder whose contents tests may replace, such as a medium, the host's
// root, and the profile with the temporary folder. Where the mark is missing or has another word, as on a stick out of
// another test machine, nothing is touched: a real workstation may have the same drives and folders.
#pragma once

#include <windows.h>

#include <filesystem>

namespace endtoend {

/// The mark in the Windows folder, which says that processes may be ended and the registry be changed.
inline constexpr wchar_t kMachineMark[] = L".test-machine";
/// The mark of a folder and of all below it.
inline constexpr wchar_t kFolderMark[] = L".test-folder";
/// The host's key below HKEY_LOCAL_MACHINE. Its value PathAppl names the host's root.
inline constexpr wchar_t kHostKey[] = L"SOFTWARE\\Orvantis\\TARSUS";

/// Throws std::runtime_error, which says what is missing, unless this machine bears its mark.
void RequireTestMachine();

/// Throws the same unless this machine and its host system bear the mark; it may have no host.
void RequireTestHost();

/// Throws the same unless this machine bears its mark, and `path` or a folder above it a mark with the machine's word.
void RequireTestFolder(const std::filesystem::path& path);

}  // namespace endtoend
