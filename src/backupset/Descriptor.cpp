// The descriptor BackupInfo.ini: written, read, and judged.
#include "backupset/Descriptor.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "backupset/Pieces.h"
#include "base/Path.h"
#include "base/Text.h"
#include "base/Wildcard.h"

namespace backupset {
namespace {

/// Writes line by line; after a failure nothing more is written.
class Writer {
 public:
  explicit Writer(base::Obtained<host::TextWriter> file) : file_(std::move(file)), outcome_(file_.Why()) {}

  void Line(const std::string& text) {
    if (outcome_.IsDone()) outcome_ = file_->Write(text + "\r\n");
  }
  base::Outcome Close() { return outcome_.IsDone() ? file_->Close() : outcome_; }

 private:
  base::Obtained<host::TextWriter> file_;
  base::Outcome outcome_;
};

std::string ArchiveList(const BackupSet& set, bool joined) {
  if (joined) return std::string(kJoinedArchive) + ";";
  std::string list;
  for (const Archive& archive : set.archives) list += archive.name + ";";
  return list;
}

void WriteInfo(Writer& file, const HostIdentity& host, const BackupSet& set, const std::optional<FloppyDisk>& disk) {
  file.Line("[Info]");
  file.Line("AppVersion=" + host.softwareVersion);
  file.Line("Date=" + set.date);
  file.Line("AppType=" + host.applicationType);
  file.Line("CABFile=" + ArchiveList(set, disk.has_value()));
  if (disk) {
    file.Line("FDCount=" + std::to_string(FloppyDiskCount(disk->joinedSize)));
    file.Line("FDNumber=" + std::to_string(disk->number));
  }
}

base::Outcome WriteVersions(const work::Tools& tools, Writer& file, const HostIdentity& host, BackupSet& set) {
  file.Line("");
  file.Line("[VersionInfo]");
  for (const Category category : kDescriptorOrder) {
    if (!set.categories.contains(category)) continue;
    const std::string key = RowOf(category).versionKey;
    const std::string version = ReadIniValue(tools, host.versionFolder, kVersionFile, key);
    if (version.empty()) return base::Failure(std::string(kVersionFile) + " has no version of " + key);
    set.versions[category] = version;
    file.Line(key + "=" + version);
  }
  file.Line("");
  return base::Result::Done;
}

std::optional<std::string> MajorVersion(const std::string& version) {
  const std::size_t dot = version.find('.');
  if (dot == std::string::npos) return std::nullopt;
  return version.substr(0, dot);
}

// A version without a "." cannot be shown to fit, on either side, and so does not.
bool SameMajorVersion(const std::string& left, const std::string& right) {
  const auto leftMajor = MajorVersion(left);
  return leftMajor && leftMajor == MajorVersion(right);
}

base::Outcome CheckIdentity(const HostIdentity& host) {
  if (host.applicationType.empty()) return base::Failure("the name of the host's application is unknown");
  if (MajorVersion(host.softwareVersion)) return base::Result::Done;
  return base::Failure("no restore would accept the host's version \"" + host.softwareVersion + "\": it has no \".\"");
}

/// A set with categories is one day restored, and must say what a restore will ask for; a maintenance log is not, and
/// whoever needs one may have a host that cannot tell its version any more.
base::Outcome DemandIdentity(app::OperationLog& log, const HostIdentity& host, const BackupSet& set) {
  base::Outcome known = CheckIdentity(host);
  if (known.IsDone() || !set.categories.empty()) return known;
  log.WarnOfLoss("Descriptor without a maker: " + known.cause);
  return base::Result::Done;
}

/// The values of one descriptor.
class SetReader {
 public:
  SetReader(const work::Tools& tools, const std::string& folder) : tools_(tools), folder_(folder) {}
  std::string Value(const std::string& key) {
    const app::Watch watch(tools_.log);
    std::string value = ReadIniValue(tools_, folder_, kDescriptorFile, key);
    failed_ = failed_ || watch.Warnings() > 0;
    return value;
  }
  bool HasFailed() const { return failed_; }
  base::Outcome Refuse(app::MessageId message, const std::string& why) const {
    return {base::Result::Failed, message, folder_ + kDescriptorFile + ": " + why};
  }
  base::Outcome Lacks(const std::string& key) const {
    return Refuse(app::MessageId::DescriptorIncomplete, "no " + key);
  }

 private:
  const work::Tools& tools_;
  const std::string& folder_;
  bool failed_ = false;
};

/// What the set says of its maker, judged value by value in the order of reading.
base::Outcome Accept(SetReader& reader, const HostIdentity& host, BackupSet& set) {
  const std::string appType = reader.Value("AppType");
  if (appType.empty()) return reader.Lacks("AppType");
  if (appType != host.applicationType) return reader.Refuse(app::MessageId::OtherApplication, "made by " + appType);
  set.appVersion = reader.Value("AppVersion");
  if (set.appVersion.empty()) return reader.Lacks("AppVersion");
  if (!SameMajorVersion(set.appVersion, host.softwareVersion)) {
    return reader.Refuse(app::MessageId::OtherVersion, "made with version " + set.appVersion);
  }
  set.date = reader.Value("Date");
  return set.date.empty() ? reader.Lacks("Date") : base::Result::Done;
}

void ReadOffers(const work::Tools& tools, SetReader& reader, const HostIdentity& host, Inspection& inspection) {
  for (const Category category : kRestoreOrder) {
    const std::string key = RowOf(category).versionKey;
    const std::string version = reader.Value(key);
    const std::string own = ReadIniValue(tools, host.versionFolder, kVersionFile, key);
    const Offer held = version == own ? Offer::Fits : Offer::OtherVersion;
    inspection.offers[category] = version.empty() ? Offer::Missing : held;
    if (version.empty()) continue;
    inspection.set.categories.insert(category);
    inspection.set.versions[category] = version;
  }
}

/// A power cut may leave the first lines alone, and their set would lack the categories of the others.
base::Outcome CheckPromises(SetReader& reader, const BackupSet& set) {
  const std::vector<std::string> archives = base::Split(reader.Value("CABFile"), ';');
  for (const Category category : kRestoreOrder) {
    const CategoryRow& row = RowOf(category);
    const bool named = std::ranges::find(archives, std::string(row.archive) + ".cab") != archives.end();
    if (named && !set.categories.contains(category)) return reader.Lacks(row.versionKey);
  }
  return base::Result::Done;
}

}  // namespace

HostIdentity IdentityOf(const app::State& state, const app::AppearanceSettings& settings) {
  constexpr std::size_t kExtensionLength = 4;
  const std::string& name = settings.ApplicationName;
  const std::size_t stem = name.size() < kExtensionLength ? name.size() : name.size() - kExtensionLength;
  const bool executable = base::SameName(name.substr(stem), ".exe");
  return {state.SoftwareVersion, executable ? name.substr(0, stem) : name, state.SystemFolder};
}

base::Outcome WriteDescriptor(const work::Tools& tools, host::Clock& clock, const HostIdentity& host,
                              const work::WorkFolder& workFolder, BackupSet& set,
                              const std::optional<FloppyDisk>& disk) {
  if (base::Outcome known = DemandIdentity(tools.log, host, set); !known.IsDone()) return known;
  const std::string path = workFolder.StagingFolder() + kDescriptorFile;
  if (disk && tools.files.FileExists(path)) {
    if (base::Outcome removed = tools.files.RemoveFile(path); !removed.IsDone()) return removed;
  }
  const base::LocalTime now = clock.Now();
  set.date = clock.ShortDate(now) + " " + clock.LongTime(now);
  set.appVersion = host.softwareVersion;

  Writer file(tools.files.AppendText(path));
  WriteInfo(file, host, set, disk);
  if (base::Outcome versions = WriteVersions(tools, file, host, set); !versions.IsDone()) return versions;
  return file.Close();
}

base::Outcome RetractDescriptor(host::FileSystem& files, const std::string& folder) {
  const std::string path = folder + kDescriptorFile;
  if (!files.FileExists(path)) return base::Result::Done;
  if (const auto emptied = files.CreateText(path)) {
    static_cast<void>(emptied->Close());
    static_cast<void>(files.Flush(path));  // the deletion is what counts
  }
  return files.RemoveFile(path);
}

base::Outcome WithoutDescriptor(host::FileSystem& files, const std::string& folder, base::Outcome failure) {
  const base::Outcome retracted = RetractDescriptor(files, folder);
  if (!retracted.IsDone()) failure.cause += "; its descriptor stays: " + retracted.cause;
  return failure;
}

base::Outcome InspectBackupSet(const work::Tools& tools, const HostIdentity& host, const std::string& folder,
                               Inspection& inspection) {
  inspection.set.folder = folder;
  SetReader reader(tools, folder);
  if (!tools.files.FileExists(folder + kDescriptorFile)) {
    return reader.Refuse(app::MessageId::NoDescriptor, "not there");
  }
  base::Outcome accepted = Accept(reader, host, inspection.set);
  if (accepted.IsDone()) ReadOffers(tools, reader, host, inspection);
  // A category whose line could not be read must not pass for one that the set does not hold.
  if (reader.HasFailed()) return reader.Refuse(app::MessageId::DescriptorIncomplete, "cannot be read");
  return accepted.IsDone() ? CheckPromises(reader, inspection.set) : accepted;
}

bool SetMark::Fits(const SetMark& other) const {
  const auto agree = [](const std::string& left, const std::string& right) {
    return left.empty() || right.empty() || left == right;
  };
  return agree(appType, other.appType) && agree(archives, other.archives) && agree(diskCount, other.diskCount) &&
         appVersion == other.appVersion && std::ranges::all_of(versions, [&](const auto& version) {
           const auto found = other.versions.find(version.first);
           return found != other.versions.end() && found->second == version.second;
         });
}

SetMark ReadMark(const work::Tools& tools, const std::string& folder) {
  SetMark mark;
  std::map<std::string, std::string> values;  // the first line of each key, as ReadIniValue takes it
  const auto reader = tools.files.OpenText(folder + kDescriptorFile);
  std::string line;
  while (reader && reader->ReadLine(line)) {
    const std::size_t end = line.find('=');
    if (end != std::string::npos) values.try_emplace(line.substr(0, end), base::Trim(line.substr(end + 1)));
    tools.messageLoop.Yield();
  }
  for (const auto& row : {std::pair{"AppType", &mark.appType},
                          {"AppVersion", &mark.appVersion},
                          {"CABFile", &mark.archives},
                          {"FDCount", &mark.diskCount}}) {
    *row.second = values[row.first];
  }
  for (const Category category : kRestoreOrder) {
    const std::string& version = values[RowOf(category).versionKey];
    if (!version.empty()) mark.versions[category] = version;
  }
  return mark;
}

bool MayRestore(const SetMark& mark, const HostIdentity& host) {
  return mark.appType == host.applicationType && SameMajorVersion(mark.appVersion, host.softwareVersion) &&
         !mark.versions.empty();
}

std::string ReadIniValue(const work::Tools& tools, const std::string& folder, const std::string& fileName,
                         const std::string& key) {
  const std::string path = base::WithTrailingBackslash(base::Trim(folder)) + fileName;
  const auto reader = tools.files.OpenText(path);
  const std::string pattern = base::Trim(key) + "=*";
  std::string line;
  while (reader && reader->ReadLine(line)) {
    tools.messageLoop.Yield();
    if (base::MatchesPattern(line, pattern)) return base::Trim(std::string_view(line).substr(line.find('=') + 1));
  }
  if (!reader || reader->Failed()) {
    tools.log.WriteLog(app::LogLevel::Warning, "Not readable: " + path + " (" + key + ")");
  }
  return {};
}

}  // namespace backupset
