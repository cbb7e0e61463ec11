// A host library that knows no bounds: every text is far longer than its buffer's
// stated size and has no NUL within it, every list is full. Built under the host
// libraries' names for the tests of what the adapters make of that.
#include <cstdio>
#include <cstring>

namespace {

// 4,000 characters; the first words say what was passed.
long Overfill(char* buffer, const char* words) {
  std::memset(buffer, '#', 4000);
  std::memcpy(buffer, words, std::strlen(words));
  return 0;
}

}  // namespace

extern "C" {

long __stdcall QXGetString(const char* name, char* value) {
  if (std::strcmp(name, "Missing") == 0) return -1;
  if (std::strcmp(name, "Strange") == 0) return Overfill(value, name) + 5;
  if (std::strcmp(name, "Cut") == 0) return std::snprintf(value, 100, "C:\\Tarsus%cleft over", 0) * 0;
  return Overfill(value, name);
}
long __stdcall QXRegGetKeySZ(const char* name, char* value) {
  return Overfill(value, name) + 7;
}
long __stdcall QXRegGetKeyDWORD(const char*, unsigned long* value) {
  *value = 0xFFFFFFFE;
  return 0;
}
long __stdcall QXRegSetKeySZ(const char* name, const char* value) {
  return std::strcmp(name, "M\xFCll") == 0 && std::strcmp(value, "\x80") == 0 ? 0 : -1;
}
long __stdcall QXGetHostname(char* value) {
  return Overfill(value, "HOST");
}

long __stdcall QXNetDBConnect(const char* location) {
  return static_cast<long>(std::strlen(location));
}
long __stdcall QXNetDBGetEquip(const char* kind, long* numbers) {
  for (long i = 0; i < 1100; ++i) numbers[i] = i + 1;
  return std::strcmp(kind, "MEDIA") == 0 ? 1100 : -7;
}
long __stdcall QXNetDBGetDriveInfo(long number, long* value, char* attribute, char* drive, char* third, char* type,
                                   char* command) {
  *value = number;
  Overfill(attribute, "WRITABLE");
  Overfill(drive, "E");
  Overfill(third, "third");
  Overfill(type, "NONE");
  Overfill(command, "command");
  return number == 1 ? 0 : -1;
}
}
