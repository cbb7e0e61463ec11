// What the program's own rules for sets and job files work with where there is no host.
#include "set-check/NoHost.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "backupset/Descriptor.h"
#include "base/Path.h"
#include "cabarc/Platform.h"

namespace setcheck {
namespace {

/// No descriptor or job file is longer. Of one that is, nothing is read: it may be anything.
constexpr std::uint64_t kLongestText = std::uint64_t{1} << 20;

base::Outcome Refused() {
  return base::Failure("not here");
}

/// The lines of a text that was read whole, and whether it was.
class Lines : public host::TextReader {
 public:
  Lines(std::string bytes, bool failed) : bytes_(std::move(bytes)), failed_(failed) {}

  bool ReadLine(std::string& line) override {
    if (next_ >= bytes_.size()) return false;
    const std::size_t end = std::min(bytes_.find('\n', next_), bytes_.size());
    line = bytes_.substr(next_, end - next_);
    if (line.ends_with('\r')) line.pop_back();
    line = cabarc::platform::FromCodePage(line);
    next_ = end + 1;
    return true;
  }
  bool Failed() const override { return failed_; }

 private:
  const std::string bytes_;
  const bool failed_;
  std::size_t next_ = 0;
};

std::unique_ptr<Lines> ReadLines(cabinet::Source& source) {
  std::vector<std::uint8_t> bytes;
  std::int64_t got = source.Size() > kLongestText ? -1 : 1;
  while (got > 0 && bytes.size() <= kLongestText) got = cabinet::AppendNext(source, bytes, 1);
  return std::make_unique<Lines>(std::string(bytes.begin(), bytes.end()), got != 0);
}

class NoComponents : public host::ComponentFactory {
 public:
  std::unique_ptr<host::MessageDialog> CreateMessageDialog() override { return nullptr; }
  std::unique_ptr<host::LogWriter> CreateLogWriter() override { return nullptr; }
  std::unique_ptr<host::OperationRecorder> CreateOperationRecorder() override { return nullptr; }
  std::unique_ptr<host::AuditTrail> CreateAuditTrail() override { return nullptr; }
  std::unique_ptr<host::UserQuery> CreateUserQuery() override { return nullptr; }
  std::unique_ptr<host::UserAuthenticator> CreateUserAuthenticator() override { return nullptr; }
  std::unique_ptr<host::MediaComponent> CreateMediaComponent() override { return nullptr; }
  std::unique_ptr<host::PersonalInfoFilter> CreatePersonalInfoFilter() override { return nullptr; }
  std::unique_ptr<host::StudyDatabaseQuery> CreateStudyDatabaseQuery() override { return nullptr; }
};

class NoClock : public host::Clock {
 public:
  base::LocalTime Now() override { return {}; }
  std::chrono::milliseconds Running() override { return {}; }
  base::LocalTime LocalTimeOf(std::uint64_t) override { return {}; }
  std::string ShortDate(const base::LocalTime&) override { return {}; }
  std::string LongTime(const base::LocalTime&) override { return {}; }
};

class NoCatalogue : public host::CatalogueTable {
 public:
  base::Outcome Open(const std::string&, const std::string&) override { return Refused(); }
  base::Outcome SetFilter(const std::string&) override { return Refused(); }
  bool AtEnd() override { return true; }
  std::optional<std::string> StringField() override { return std::nullopt; }
  void Close() override {}
  void Abandon() override {}
};

class NoProcesses : public host::Processes {
 public:
  base::Obtained<host::StartedProgram> Start(const std::string&, host::WindowStyle, host::Where) override {
    return Refused();
  }
  std::vector<std::string> RunningExecutables() override { return {}; }
  bool HasPreviousInstance() override { return false; }
  bool HasAdministratorsRights() override { return false; }
  [[noreturn]] void EndThisProcess() override { std::abort(); }
};

class NoScreen : public host::MessageLoop {
 public:
  void Yield() override {}
  void Pause(int) override {}
};

}  // namespace

const Entry* ReadOnlyFiles::Find(const std::string& path, Folder*& folder) {
  const auto mounted = folders_.find(base::FolderOf(path));
  folder = mounted == folders_.end() ? nullptr : mounted->second;
  return folder ? folder->Find(base::FileNameOf(path)) : nullptr;
}

bool ReadOnlyFiles::FileExists(const std::string& path) {
  return FileSize(path) >= 0;
}

std::int64_t ReadOnlyFiles::FileSize(const std::string& path) {
  Folder* folder = nullptr;
  const Entry* const entry = Find(path, folder);
  return entry ? static_cast<std::int64_t>(entry->size) : -1;
}

base::Obtained<host::TextReader> ReadOnlyFiles::OpenText(const std::string& path) {
  Folder* folder = nullptr;
  const Entry* const entry = Find(path, folder);
  if (!entry) return base::Failure(path + " is not there");
  const auto source = folder->Open(*entry);
  if (!source) return source.Why();
  return ReadLines(*source);
}

base::Outcome ReadOnlyFiles::List(const std::string&, const std::string&, std::vector<host::FolderEntry>&) {
  return Refused();
}
base::Obtained<host::TextWriter> ReadOnlyFiles::AppendText(const std::string&) {
  return Refused();
}
base::Obtained<host::TextWriter> ReadOnlyFiles::CreateText(const std::string&) {
  return Refused();
}
base::Obtained<host::BinaryReader> ReadOnlyFiles::OpenBinary(const std::string&) {
  return Refused();
}
base::Obtained<host::BinaryReader> ReadOnlyFiles::OpenUncached(const std::string&) {
  return Refused();
}
base::Obtained<host::BinaryWriter> ReadOnlyFiles::CreateBinary(const std::string&) {
  return Refused();
}
base::Obtained<host::BinaryWriter> ReadOnlyFiles::AppendBinary(const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::Flush(const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::RemoveFile(const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::RemoveFolder(const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::MoveTo(const std::string&, const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::MoveOver(const std::string&, const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::CopyTo(const std::string&, const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::SetReadOnly(const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::MakeFolder(const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::MakePrivateFolder(const std::string&) {
  return Refused();
}
base::Outcome ReadOnlyFiles::SetCurrentFolder(const std::string&) {
  return Refused();
}

struct NoHost::Silence {
  /// The path table, read as the program reads such a file.
  class PathTableFile : public host::QX32 {
   public:
    explicit PathTableFile(NoHost& owner) : owner_(owner) {}

    base::Outcome GetString(const std::string& name, std::size_t, std::string& value) override {
      if (!owner_.files.FileExists(std::string(kSystem) + kPathTable)) {
        value = "%" + name + "%";
        return base::Result::Done;
      }
      value = backupset::ReadIniValue(owner_.Tools(), kSystem, kPathTable, name);
      return value.empty() ? base::Failure("not in " + std::string(kPathTable)) : base::Outcome();
    }
    base::Outcome RegGetKeySZ(const std::string&, std::string&) override { return Refused(); }
    base::Outcome RegGetKeyDWORD(const std::string&, std::uint32_t&) override { return Refused(); }
    base::Outcome RegSetKeySZ(const std::string&, const std::string&) override { return Refused(); }
    base::Outcome RegSetKeyDWORD(const std::string&, std::uint32_t) override { return Refused(); }
    std::string GetHostname() override { return {}; }
    std::string GetSoftwareVersion() override { return {}; }

   private:
    NoHost& owner_;
  };

  explicit Silence(NoHost& owner) : pathTable(owner) {}

  std::string programFolder;
  std::string logFolder = "none";  // it is not looked for
  NoComponents components;
  NoClock clock;
  NoCatalogue catalogue;
  NoProcesses processes;
  NoScreen screen;
  PathTableFile pathTable;
  app::Messages messages{catalogue, components};
  app::OperationLog log{components, clock, pathTable, messages, logFolder};
  app::Failures failures{messages, log};
  app::PathTable paths{pathTable, failures};
  app::Progress progress{clock};
};

NoHost::NoHost() : silence_(std::make_unique<Silence>(*this)) {}

NoHost::~NoHost() = default;

work::Tools NoHost::Tools() {
  return {files,           silence_->processes, silence_->screen, silence_->log, silence_->programFolder,
          silence_->clock, silence_->progress};
}

const app::PathTable& NoHost::Paths() const {
  return silence_->paths;
}

}  // namespace setcheck
