// Watches the bars of whole jobs: a backup of everything and its writing, the restore of it, and a maintenance log.
//
//   watch.exe PICTURE_FOLDER      (on a workstation with enough data for some seconds of each)
//
// Takes a picture of each bar past its middle, and prints how it moved: how many values it had, how long it stood still
// at most, how long the job took, what of a processor the program used meanwhile, and the last numbers that were seen:
// a dialog that goes with its job shows its end for a moment only. Ends with 1 when a bar went back or stood for a
// minute.
#include <windows.h>

#include <cstdio>
#include <stdexcept>

#include "operator/Desktop.h"
#include "operator/Operator.h"
#include "resource.h"

namespace {

using namespace endtoend;

constexpr char kSet[] = "E:\\Watched\\";
constexpr char kBundle[] = "E:\\WatchedLog\\";
constexpr ULONGLONG kMinute = 60'000;

double ProcessorSeconds(HANDLE process) {
  FILETIME created, ended, kernel, user;
  GetProcessTimes(process, &created, &ended, &kernel, &user);
  return 1e-7 * static_cast<double>(kernel.dwLowDateTime + user.dwLowDateTime);
}

class Watcher {
 public:
  explicit Watcher(std::string folder) : folder_(std::move(folder)) {}

  /// Reads the bar until it is at its end or hidden again.
  void Watch(const std::string& job, const Window& dialog, int bar, int numbers) {
    const double processor = ProcessorSeconds(person_.TheProgram().Handle());
    const ULONGLONG begun = GetTickCount64();
    ULONGLONG movedAt = begun;
    ULONGLONG stood = 0;
    int values = 0;
    int last = -1;
    std::string text;
    for (; last < kEnd; Sleep(20)) {
      const std::optional<int> value = dialog.Progress(bar);
      if (!value && (last >= 0 || !dialog.IsOpen())) break;
      const ULONGLONG now = GetTickCount64();
      if (now - movedAt > kMinute) throw std::runtime_error(job + ": the bar stands");
      if (!value || *value == last) continue;
      if (*value < last) throw std::runtime_error(job + ": the bar goes back");
      stood = std::max(stood, now - movedAt);
      movedAt = now;
      if (last < kMiddle && *value >= kMiddle)
        TakeScreenshot(folder_ + "/progress-" + job + ".png", dialog, Part::Window);
      last = *value;
      text = dialog.Text(numbers);
      ++values;
    }
    const double seconds = static_cast<double>(GetTickCount64() - begun) / 1000;
    std::printf("%-12s %4d values, stood %4.1f s at most, %5.1f s, %4.1f %% of a processor; %s\n", job.c_str(), values,
                static_cast<double>(stood) / 1000, seconds,
                100 * (ProcessorSeconds(person_.TheProgram().Handle()) - processor) / seconds, text.c_str());
    std::fflush(stdout);
  }

  void Run() {
    MoveMouseAway();
    person_.SignIn();
    const Window backup = person_.OpenBackup({true, true, true, true});
    backup.Press(ID_frmBackup_cmdStart);
    Watch("backup", backup, ID_frmBackup_prgJob, ID_frmBackup_lblProgress);
    Write(kSet, "destination", base::MessageId::BackupComplete);

    const Window restore = person_.OpenRestore(kSet);
    restore.Press(ID_frmRestore_cmdStart);
    person_.Answer();  // the IP counter
    Watch("restore", restore, ID_frmRestore_prgJob, ID_frmRestore_lblProgress);
    person_.ConsentUntil(base::MessageId::RestoreComplete, {base::MessageId::RestoreWarnings});

    const Window menu = person_.MainMenu();
    menu.Press(ID_frmMainMenu_cmdMenu2);
    person_.TheProgram().WaitForDialog(ID_frmMaintenance_cmdStart).Press(ID_frmMaintenance_cmdStart);
    Watch("maintenance", menu, ID_frmMainMenu_prgJob, ID_frmMainMenu_lblProgress);
    Write(kBundle, "bundle", base::MessageId::MaintenanceComplete);
    person_.End();
  }

 private:
  static constexpr int kEnd = 1000;
  static constexpr int kMiddle = 550;

  void Write(const std::string& folder, const std::string& job, base::MessageId last) {
    const Window destination = person_.DestinationDialog();
    person_.Accept(destination, folder);
    person_.Answer();  // a new folder
    Watch(job, destination, ID_frmSelectFolder_prgJob, ID_frmSelectFolder_lblProgress);
    person_.ConsentUntil(last, {base::MessageId::BackupWarnings, base::MessageId::MaintenanceWarnings});
  }

  std::string folder_;
  Operator person_;
};

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::puts("usage: watch PICTURE_FOLDER");
    return 2;
  }
  try {
    Watcher(Utf8(argv[1])).Run();
    return 0;
  } catch (const std::exception& error) {
    std::printf("!!   %s\n", error.what());
    return 1;
  }
}
