// The set checker as a command.
#include "set-check/Program.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

#include "backupset/Pieces.h"
#include "cabarc/Platform.h"
#include "cabinet/Names.h"
#include "set-check/CommandLine.h"
#include "set-check/Search.h"
#include "set-check/SetCheck.h"
#include "set-check/TakeOut.h"

namespace setcheck {
namespace {

namespace platform = cabarc::platform;

/// Of the answer's form; it changes when a member of it gets another meaning.
constexpr int kSchema = 1;

/// How far the work is, five times a second.
class ProgressLine {
 public:
  explicit ProgressLine(Output& output) : output_(output) {}
  ~ProgressLine() { output_.ShowProgress({}); }

  void Add(std::uint64_t bytes) {
    constexpr std::chrono::milliseconds kInterval(200);
    constexpr std::uint64_t kMegabyte = 1'000'000;
    bytes_ += bytes;
    const auto now = std::chrono::steady_clock::now();
    if (now - shown_ < kInterval) return;
    shown_ = now;
    output_.ShowProgress(std::to_string(sets) + " sets, " + std::to_string(bytes_ / kMegabyte) + " MB");
  }

  std::size_t sets = 0;

 private:
  Output& output_;
  std::uint64_t bytes_ = 0;
  std::chrono::steady_clock::time_point shown_ = std::chrono::steady_clock::now();
};

/// Checks what is found, and answers set by set.
class Checking : public Finder {
 public:
  Checking(const CommandLine& line, Output& output, NoHost& noHost, const Workstation* workstation)
      : line_(line),
        output_(output),
        noHost_(noHost),
        workstation_(workstation),
        progress_(output),
        check_(noHost, workstation, line.check, [this](std::uint64_t bytes) { progress_.Add(bytes); }) {}

  ExitCode Run() {
    Search(noHost_, line_.paths, !OfOneSet(), *this);
    output_.ShowProgress({});
    if (line_.json) {
      EndJson();
    } else {
      EndWords();
    }
    return answered_ ? worst_ : ExitCode::WrongUse;
  }

  void FoundSet(Folder& folder) override {
    if (IsOneTooMany()) return;
    Tell(check_.Check(folder));
    if (!line_.unpack.empty()) Tell(UnpackSet(folder, platform::ToNative(line_.unpack)));
    if (!line_.compare.empty()) Tell(Compare(ArchivesOf(folder), *workstation_, platform::ToNative(line_.compare)));
  }

  void FoundPile(const Pile& pile) override {
    if (IsOneTooMany()) return;
    Tell(check_.Check(pile));
    if (!OfOneSet()) return;
    const auto count = backupset::ReadDiskNumber(pile.disks.front().mark.diskCount);
    const std::int16_t disks = count.value_or(static_cast<std::int16_t>(pile.disks.size()));
    if (!line_.unpack.empty()) return Tell(UnpackPile(pile, disks, platform::ToNative(line_.unpack)));
    const std::shared_ptr<cabinet::Source> joined = Join(FindPieces(pile, disks));
    const auto structure = std::make_shared<cabinet::Structure>();
    const base::Outcome read = cabinet::ReadStructure(*joined, *structure);
    if (!read.IsDone()) return Tell(Result{{"the joined archive: " + read.cause}, false, false});
    Tell(Compare(ArchivesOf(joined, structure), *workstation_, platform::ToNative(line_.compare)));
  }

  void Unreadable(const std::string& path, const std::string& why) override {
    Worsen(ExitCode::NotRestorable);
    unreadable_.push_back("{\"path\":" + JsonText(path) + ",\"why\":" + JsonText(why) + "}");
    if (!line_.json) Answer(cabinet::Printable("NO: it cannot be looked into, " + why + ": " + path) + "\n");
  }

 private:
  bool OfOneSet() const { return !line_.unpack.empty() || !line_.compare.empty(); }

  /// Each answer of --unpack and --compare is about one set.
  bool IsOneTooMany() {
    if (!OfOneSet() || progress_.sets == 0) return false;
    output_.Complain("QXSetCheck: --unpack and --compare take one set; only the first was looked at\n");
    Worsen(ExitCode::WrongUse);
    return true;
  }

  void Tell(const SetReport& report) {
    const Restorable verdict = report.Verdict();
    ++progress_.sets;
    ++verdicts_[static_cast<std::size_t>(verdict)];
    Worsen(verdict == Restorable::Wholly   ? ExitCode::Sound
           : verdict == Restorable::InPart ? ExitCode::PartsLost
                                           : ExitCode::NotRestorable);
    if (!line_.json) return Answer(InWords(report));
    BeginJson();
    Answer((progress_.sets == 1 ? "\n" : ",\n") + AsJson(report));
  }

  void Tell(const Result& result) {
    for (const std::string& text : result.lines) {
      const std::string line = cabinet::Printable(text) + "\n";
      if (result.refused) {
        output_.Complain("QXSetCheck: " + line);
      } else {
        Answer(line);
      }
    }
    if (!result.well) Worsen(result.refused ? ExitCode::WrongUse : ExitCode::PartsLost);
  }

  void BeginJson() {
    if (!std::exchange(begun_, true)) Answer("{\"schema\":" + std::to_string(kSchema) + ",\"sets\":[");
  }

  void EndJson() {
    BeginJson();
    if (progress_.sets == 0) Worsen(ExitCode::NotRestorable);
    std::string unreadable;
    for (const std::string& one : unreadable_) unreadable += (unreadable.empty() ? "" : ",") + one;
    Answer("],\"unreadable\":[" + unreadable + "],\"summary\":{\"sets\":" + std::to_string(progress_.sets) +
           ",\"yes\":" + std::to_string(verdicts_[0]) + ",\"part\":" + std::to_string(verdicts_[1]) + ",\"no\":" +
           std::to_string(verdicts_[2]) + ",\"exit\":" + std::to_string(static_cast<int>(worst_)) + "}}\n");
  }

  void EndWords() {
    if (progress_.sets == 0 && unreadable_.empty()) {
      Answer("NO: no set is there: " + cabinet::Printable(line_.paths.front()) + "\n");
      Worsen(ExitCode::NotRestorable);
    }
    if (progress_.sets < 2) return;
    Answer(std::to_string(progress_.sets) + " sets: " + std::to_string(verdicts_[0]) + " can be restored, " +
           std::to_string(verdicts_[1]) + " in part, " + std::to_string(verdicts_[2]) + " not\n");
  }

  void Answer(const std::string& text) {
    output_.ShowProgress({});
    answered_ = output_.Answer(text) && answered_;
  }

  void Worsen(ExitCode code) { worst_ = std::max(worst_, code); }

  const CommandLine& line_;
  Output& output_;
  NoHost& noHost_;
  const Workstation* workstation_;
  ProgressLine progress_;
  SetCheck check_;
  ExitCode worst_ = ExitCode::Sound;
  std::size_t verdicts_[3] = {};
  std::vector<std::string> unreadable_;
  bool begun_ = false;
  bool answered_ = true;
};

ExitCode Refuse(Output& output, const std::string& words) {
  output.Complain("QXSetCheck: " + cabinet::Printable(words) + "\n");
  return ExitCode::WrongUse;
}

ExitCode RunChecked(const std::vector<std::string>& arguments, Output& output) {
  CommandLine line;
  if (const std::string wrong = Parse(arguments, line); !wrong.empty()) return Refuse(output, wrong);
  if (line.help) return output.Answer(kHelp) ? ExitCode::Sound : ExitCode::WrongUse;
  for (const std::string& path : line.paths) {
    const platform::Kind kind = platform::InfoOf(path).kind;
    if (kind != platform::Kind::File && kind != platform::Kind::Folder) {
      return Refuse(output, path + ": there is no such folder or image");
    }
  }
  NoHost noHost;
  Workstation workstation(noHost);
  base::Obtained<Folder> system = base::Outcome(base::Result::Stopped);
  if (!line.workstation.empty()) {
    system = OpenFolder(platform::ToNative(line.workstation));
    const base::Outcome opened = system ? workstation.Open(*system) : system.Why();
    if (!opened.IsDone()) return Refuse(output, line.workstation + ": " + opened.cause);
  }
  if (!line.compare.empty() && !workstation.HasJobs()) {
    return Refuse(output, "--compare needs a workstation with " + std::string(jobs::kJobDefinitionFile));
  }
  return Checking(line, output, noHost, system ? &workstation : nullptr).Run();
}

}  // namespace

ExitCode Run(const std::vector<std::string>& arguments, Output& output) {
  try {
    return RunChecked(arguments, output);
  } catch (const std::exception& exception) {
    return Refuse(output, std::string("not enough memory: ") + exception.what());
  }
}

}  // namespace setcheck
