// Folders that other users of the computer cannot look into.
#include "windows/adapters/PrivateFolder.h"

#include <sddl.h>

#include <memory>
#include <vector>

#include "windows/adapters/Handles.h"

namespace windows {
namespace {

struct LocalFreer {
  void operator()(void* memory) const { LocalFree(memory); }
};
template <typename T>
using LocalMemory = std::unique_ptr<T, LocalFreer>;

/// The user of this process as text, such as "S-1-5-21-...-1001"; empty when it cannot be had.
std::wstring UserSid() {
  HANDLE raw = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &raw) == FALSE) return {};
  const Handle token(raw);
  DWORD size = 0;
  GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size);
  std::vector<std::byte> buffer(size);
  if (size == 0 || GetTokenInformation(token.Get(), TokenUser, buffer.data(), size, &size) == FALSE) return {};
  wchar_t* text = nullptr;
  if (ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(buffer.data())->User.Sid, &text) == FALSE) return {};
  return LocalMemory<wchar_t>(text).get();
}

}  // namespace

BOOL CreatePrivateFolder(const std::wstring& path) {
  const std::wstring user = UserSid();
  if (user.empty()) return FALSE;
  const std::wstring list = L"D:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;FA;;;" + user + L")";
  void* descriptor = nullptr;
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(list.c_str(), SDDL_REVISION_1, &descriptor, nullptr) ==
      FALSE)
    return FALSE;
  const LocalMemory<void> owner(descriptor);
  SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), descriptor, FALSE};
  return CreateDirectoryW(path.c_str(), &attributes);
}

}  // namespace windows
