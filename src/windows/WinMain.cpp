// The executable's entry: puts the adapters, the toolkit and the rooms together.
#include "access/Dialogs.h"
#include "app/Application.h"
#include "app/StartUp.h"
#include "windows/adapters/CrashReport.h"
#include "windows/adapters/Win32.h"
#include "windows/adapters/WindowsHost.h"
#include "windows/toolkit/Win32Toolkit.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  windows::WindowsHost host;
  windows::Win32Toolkit toolkit(host.Loop());
  app::Application application(host.Contracts(), toolkit);
  windows::ReportCrashes(application.state.LogFolder);
  qx::access::Dialogs dialogs;
  app::Main(application, dialogs);
  return 0;
}
