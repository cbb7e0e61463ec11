// The acceptance kit: shows on a clean Windows what elsewhere can only be assumed. packaging/acceptance.sh makes it.
//
//   acceptance.exe [--yes] [--part N]
//
//   --yes      asks nothing
//   --part N   runs one of N cases of each test program: to see that the kit itself is in order
//
// It refuses a machine with a host system. Before anything else it writes undo.cmd. The report is report.html beside
// it. Ends with the number of things that are wrong, 0 when all is right, and at most 99; 100 when it refused.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>
#include <string>

#include "acceptance/Kit.h"
#include "acceptance/Machine.h"
#include "windows/adapters/ApiPath.h"

namespace {

using namespace acceptance;

constexpr int kRefused = 100;

std::optional<Options> Parse(int argc, wchar_t** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::wstring word = argv[i];
    if (word == L"--yes") {
      options.yes = true;
    } else if (word == L"--part" && i + 1 < argc && (options.part = _wtoi(argv[++i])) > 0) {
    } else {
      return std::nullopt;
    }
  }
  return options;
}

bool Agrees() {
  std::cout << "This installs QXBackupUtility and a demonstration of its host on this computer, makes virtual disks,\n"
               "runs tests for half an hour and takes everything back. Use a computer that nobody else needs.\n"
               "Type yes to go on: "
            << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  return answer == "yes";
}

void RunAll(Kit& kit) {
  const Snapshot before = TakeSnapshot();
  kit.TheReport().Begin("This machine");
  AddFacts(kit.TheReport());
  kit.MakeMedia();
  kit.Ask();
  kit.RunTests("adapters", L"contract\\contract_win32_tests.exe");
  kit.RunTests("windows", L"bin\\windows_tests.exe");
  kit.RunTests("installer", L"bin\\qx_installer_tests.exe");
  kit.Install();
  kit.UnpackWithTheSystemsTool();
  kit.Kill();
  kit.RunTests("endtoend", L"bin\\qx_endtoend_tests.exe");
  kit.Undo();
  Compare(before, TakeSnapshot(), kit.TheReport());
  kit.ListForAPerson();
}

int Conclude(Kit& kit, const std::filesystem::path& page) {
  Report& report = kit.TheReport();
  if (!report.Write(page)) report.Check("the report can be written", false);
  const std::size_t wrong = report.Count(Verdict::Wrong);
  std::cout << report.Count(Verdict::Right) << " right, " << wrong << " wrong, " << report.Count(Verdict::NotAnswered)
            << " not answered" << std::endl;
  return static_cast<int>(std::min<std::size_t>(wrong, 99));
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  const std::optional<Options> options = Parse(argc, argv);
  if (!options) {
    std::puts("usage: acceptance [--yes] [--part N]");
    return kRefused;
  }
  if (const std::string why = WhyRefused(); !why.empty()) {
    std::cout << "Nothing was done: " << why << "." << std::endl;
    return kRefused;
  }
  if (!options->yes && !Agrees()) return kRefused;
  const std::filesystem::path folder = windows::ProgramFolder();
  Kit kit(folder, *options);
  if (!kit.WriteUndo()) {
    std::cout << "Nothing was done: undo.cmd cannot be written." << std::endl;
    return kRefused;
  }
  try {
    RunAll(kit);
  } catch (const std::exception& failure) {
    kit.TheReport().Check("the kit comes to its end", false, failure.what());
    kit.Undo();
  }
  return Conclude(kit, folder / "report.html");
}
