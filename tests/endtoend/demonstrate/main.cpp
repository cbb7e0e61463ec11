// The operator of `./run --unattended`: does the program's main job through its
// windows, prints each step, and leaves a screenshot of each window.
//
//   operator.exe SCREENSHOT_FOLDER

#include <windows.h>

#include <cstdio>
#include <exception>
#include <string>

#include "MessageDialogIds.h"
#include "operator/Operator.h"

namespace {

using namespace endtoend;

// The screen as the X server shows it, through the machine's own tool: Wine starts it like
// any program, but cannot wait for it. The picture gets its name when it is whole.
void TakeScreenshot(const std::string& folder, int number) {
  Sleep(300);  // a window is on the screen a moment after it is open
  char name[16];
  std::snprintf(name, sizeof(name), "%02d.png", number);
  const std::string picture = folder + "/" + name;
  std::wstring command = Utf16("Z:\\bin\\sh -c \"import -window root '" + picture + ".new.png' && mv '" + picture +
                               ".new.png' '" + picture + "'\"");
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) return;
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  WaitUntil([&] { return fs::exists("Z:" + picture); });
}

void Require(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error(what);
}

void MakeBackup(Operator& person) {
  person.SignIn();
  const Window destination = person.StartBackup(person.OpenBackup({true, true, true, true, false}));
  person.Accept(destination);
  for (int id = 0; id != 65300;) {
    id = person.Answer();
    Require(id == 64301 || id == 64302 || id == 65300, "message " + std::to_string(id) + " was not expected");
  }
  person.End();
  Require(LogHolds("Finish Backup Utility"), "the log does not end as it should");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::puts("usage: operator SCREENSHOT_FOLDER");
    return 2;
  }
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  const std::string folder = Utf8(argv[1]);
  int step = 0;
  try {
    TidyUp();
    Operator person([&](const std::string& text, const Window&) {
      std::printf("%3d  %s\n", ++step, text.c_str());
      TakeScreenshot(folder, step);
    });
    MakeBackup(person);
    std::puts("     The program has ended");
  } catch (const std::exception& error) {
    std::printf("!!   %s\n", error.what());
    return 1;
  }
  return 0;
}
