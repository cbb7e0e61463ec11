// A host library that knows no bounds: every text is far longer than its buffer's stated size and has no NUL within it,
// every list is full; and that gives answers nobody agreed on. Built under the host libraries' names.
#include <cstring>
#include <initializer_list>

namespace {

// 4,000 characters; the first words say what was passed.
long Overfill(char* buffer, const char* words, long answer = 0) {
  std::memset(buffer, '#', 4000);
  std::memcpy(buffer, words, std::strlen(words));
  return answer;
}

}  // namespace

extern "C" {

long __stdcall QXGetString(const char* name, char* value) {
  return Overfill(value, name, std::strcmp(name, "Strange") == 0 ? 5 : 0);
}
long __stdcall QXRegGetKeySZ(const char* name, char* value) {
  return Overfill(value, name, std::strcmp(name, "Missing") == 0 ? -1 : 7);
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
  for (char* text : {attribute, drive, third, type}) Overfill(text, "text");
  return Overfill(command, "command", number == 1 ? 3 : -1);
}
}
