// The Windows shell, whose dialogs the scripted operator answers, the clock and the message loop.
#pragma once

#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "fakes/ScriptedOperator.h"
#include "host/Desktop.h"

namespace fakes {

class FakeShell : public host::Shell {
 public:
  FakeShell(Disk& disk, CallCounter& calls, ScriptedOperator& person)
      : disk_(disk), calls_(calls, "Shell"), person_(person) {}
  std::string desktop = "C:\\Users\\Operator\\Desktop";
  std::string lastTitle;  ///< of the browser or the progress window
  std::string openedDocument;
  std::string browsedFrom;  ///< where the browser opened last

  std::string BrowseForFolder(const std::string& title, const std::string& initialFolder) override {
    lastTitle = title;
    browsedFrom = initialFolder;
    return calls_.Fails(__func__, initialFolder) ? "" : person_.AtBrowse();
  }
  std::string DesktopFolder() override { return calls_.Fails(__func__) ? "" : desktop; }
  base::Outcome CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                 const std::string& title) override {
    lastTitle = title;
    const std::string target = targetFolder + "\\" + source.substr(source.rfind('\\') + 1);
    return calls_.Do(__func__, source, [&] { return disk_.IsFolder(targetFolder) && disk_.Copy(source, target); });
  }
  bool OpenDocument(const std::string& fileName) override {
    if (calls_.Fails(__func__, fileName)) return false;
    openedDocument = fileName;
    return true;
  }
  std::string printedDocument;
  bool PrintDocument(const std::string& path) override {
    if (calls_.Fails(__func__, path) || !disk_.IsFile(path)) return false;
    printedDocument = disk_.Read(path);
    return true;
  }
  /// Empties the medium when the operator lets it.
  host::FormatAnswer FormatDrive(std::uint32_t drive, std::uint32_t /*formatId*/, std::uint32_t /*options*/) override {
    const std::string name = {static_cast<char>('A' + drive), ':'};
    if (calls_.Fails(__func__, name)) return host::FormatAnswer::Failed;
    const host::FormatAnswer answer = person_.AtFormat();
    return answer == host::FormatAnswer::Done && !disk_.Format(name) ? host::FormatAnswer::Failed : answer;
  }
  std::vector<std::string> busyWith;  ///< every reason that was given
  int busyTimes = 0;                  ///< that last now
  std::unique_ptr<host::BusyTime> BeginBusy(const std::string& reason) override {
    struct Busy : host::BusyTime {
      explicit Busy(int& times) : count(times) { ++count; }
      ~Busy() override { --count; }
      int& count;
    };
    busyWith.push_back(reason);
    return std::make_unique<Busy>(busyTimes);
  }

 private:
  Disk& disk_;
  ContractCalls calls_;
  ScriptedOperator& person_;
};

class FakeClock : public host::Clock {
 public:
  base::LocalTime now{2012, 3, 15, 9, 30, 12};

  std::chrono::milliseconds running{0};
  std::chrono::milliseconds perLook{0};  ///< passes with every look at `running`

  base::LocalTime Now() override { return now; }
  std::chrono::milliseconds Running() override { return running += perLook; }
  /// The disk's changes took a second each, on the day before.
  base::LocalTime LocalTimeOf(std::uint64_t modified) override {
    return {2012, 3, 14, 8, static_cast<int>(modified / 60 % 60), static_cast<int>(modified % 60)};
  }
  std::string ShortDate(const base::LocalTime& t) override { return Joined("%04d/%02d/%02d", t.year, t.month, t.day); }
  std::string LongTime(const base::LocalTime& t) override {
    return Joined("%02d:%02d:%02d", t.hour, t.minute, t.second);
  }

 private:
  static std::string Joined(const char* format, int first, int second, int third) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), format, first, second, third);
    return text.data();
  }
};

class FakeMessageLoop : public host::MessageLoop {
 public:
  int yields = 0;
  /// What happens on the screen meanwhile, such as a device that comes or goes.
  std::function<void()> onYield;

  void Yield() override {
    ++yields;
    if (onYield) onYield();
  }
  void Pause(int milliseconds) override {
    paused += milliseconds;
    Yield();
  }
  int paused = 0;  ///< milliseconds
};

}  // namespace fakes
