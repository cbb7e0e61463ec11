// What only a real Windows can answer: each case is a question, and what it expects is the answer that the fakes and
// the adapters rest on. A failure is news for them. Under Wine the answers are Wine's and prove nothing.
//
//   windows_questions [GOOGLETEST OPTION...]
//   windows_questions --look-for-mark FILE     from another session: writes whether the instance's mark is seen there
//
// QX_SMALL_DRIVE in the environment names a drive, such as "V:", that holds less than eight megabytes and may be filled.
#include <fstream>
#include <string_view>

#include "questions/Scene.h"

namespace {

int LookForMark(const char* answer) {
  DWORD session = 0;
  ProcessIdToSessionId(GetCurrentProcessId(), &session);
  const windows::Handle mark(OpenMutexW(SYNCHRONIZE, FALSE, L"Global\\QXBackupUtility.Instance"));
  std::ofstream(answer) << (mark ? "seen" : "not seen") << " from session " << session;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string_view(argv[1]) == "--look-for-mark") return LookForMark(argv[2]);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
