// Watches the program from outside while it works.
#include "program/Watch.h"

#include <tlhelp32.h>

#include <algorithm>

#include "program/Batch.h"

namespace bench {
namespace {

namespace fs = endtoend::fs;

constexpr DWORD kLookEvery = 20;  // milliseconds
constexpr DWORD kAskEvery = 4;
constexpr UINT kPatience = 60000;
constexpr double kLate = 50;

bool Runs(const std::vector<std::wstring>& running, const wchar_t* executable) {
  return std::ranges::find(running, executable) != running.end();
}

std::vector<std::wstring> RunningExecutables() {
  std::vector<std::wstring> names;
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry)) {
    names.emplace_back(entry.szExeFile);
  }
  CloseHandle(snapshot);
  return names;
}

// Files that were gathered or unpacked and are waiting for their deletion, when no program works on them.
bool StagingHolds() {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(fs::temp_directory_path(ignored), ignored)) {
    if (fs::exists(entry.path() / "Image.ddo", ignored) || fs::exists(entry.path() / "Patient", ignored)) return true;
  }
  return false;
}

}  // namespace

const char* NameOf(Phase phase) {
  constexpr const char* kNames[] = {"program", "gather", "pack", "delete", "copy"};
  return kNames[static_cast<int>(phase)];
}

StagingWatch::StagingWatch() {
  endtoend::WaitUntil([this] {
    // Nothing else is left in the temporary folder while something is measured.
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::temp_directory_path())) folder_ = entry.path();
    return !folder_.empty();
  });
}

void StagingWatch::Wait(const std::string& name, bool there) const {
  const fs::path path = folder_ / name;
  const auto isThere = [&] { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; };
  endtoend::WaitUntil([&] { return isThere() == there; }, kPatience);
}

PhaseWatch::PhaseWatch() : thread_([this] { Run(); }) {}

PhaseWatch::~PhaseWatch() {
  End();
}

const std::vector<PhaseWatch::Span>& PhaseWatch::End() {
  stop_ = true;
  if (thread_.joinable()) thread_.join();
  return spans_;
}

Phase PhaseWatch::Look() const {
  const std::vector<std::wstring> running = RunningExecutables();
  if (Runs(running, L"cabarc.exe")) return Phase::Pack;
  if (Runs(running, L"cmd.exe") || Runs(running, L"xcopy.exe")) return copying_ ? Phase::Copy : Phase::Gather;
  return StagingHolds() ? Phase::Delete : Phase::Program;
}

void PhaseWatch::Run() {
  const double start = Seconds();
  double last = 0;
  while (!stop_) {
    const Phase phase = Look();
    // Between two programs of a kind the staging folder is full too: nothing is deleted before the packing.
    const bool stillGathering = phase == Phase::Delete && (now_ == Phase::Gather || now_ == Phase::Copy);
    now_ = stillGathering ? now_.load() : phase;
    const double time = Seconds() - start;
    if (spans_.empty() || spans_.back().phase != now_) spans_.push_back({now_, last, time});
    spans_.back().to = last = time;
    Sleep(kLookEvery);
  }
}

AnswerWatch::AnswerWatch(HWND window, const PhaseWatch* phases)
    : window_(window), phases_(phases), thread_([this] { Run(); }) {}

AnswerWatch::~AnswerWatch() {
  End();
}

double AnswerWatch::End() {
  stop_ = true;
  if (thread_.joinable()) thread_.join();
  return longest_;
}

void AnswerWatch::Run() {
  const double start = Seconds();
  while (!stop_) {
    const double asked = Seconds();
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL, kPatience, &result);
    const double milliseconds = (Seconds() - asked) * 1000;
    longest_ = std::max(longest_, milliseconds);
    if (milliseconds > kLate) late_.push_back({asked - start, milliseconds, phases_ ? phases_->Now() : Phase::Program});
    Sleep(kAskEvery);
  }
}

IdleWindow::IdleWindow()
    : thread_([this] {
        window_ = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != WM_CLOSE) DispatchMessageW(&message);
      }) {
  while (window_ == nullptr) Sleep(1);
}

IdleWindow::~IdleWindow() {
  PostMessageW(window_, WM_CLOSE, 0, 0);
  thread_.join();
}

}  // namespace bench
