// The archiver as a command: arguments in, text and exit code out.
#include "cabarc/Commands.h"

#include <exception>
#include <iomanip>

#include "cabarc/CabinetReader.h"
#include "cabarc/CabinetWriter.h"
#include "cabarc/CommandLine.h"
#include "cabarc/Progress.h"
#include "cabarc/Salvage.h"

namespace cabarc {

namespace {

Status AboutCabinet(const CommandLine& line, Status status) {
  status.text = line.cabinet + ": " + status.text;
  return status;
}

Status Create(const CommandLine& line, std::ostream& out) {
  FileTree tree({line.recurse, line.keepPaths}, line.cabinet);
  for (const std::string& argument : line.arguments) {
    if (Status status = tree.Add(argument); status.Failed()) return status;
  }
  std::uint32_t size = 0;
  Status status = WriteCabinet(tree.Files(), platform::ToNative(line.cabinet), {line.method, line.threads}, size);
  if (status.Failed()) return status;
  for (const std::string& folder : tree.EmptyFolders()) {
    out << Printable(folder) << ": an empty folder, which a cabinet cannot hold\n";
  }
  out << line.cabinet << ": " << tree.Files().size() << " files packed, " << size << " bytes\n";
  return {};
}

void ListMember(const Member& member, std::ostream& out) {
  const auto [date, time] = member.stamp;
  const auto attribute = [&](std::uint8_t bit, char letter) { return (member.attributes & bit) ? letter : '-'; };
  out << std::setfill('0') << (date >> 9) + 1980 << '-' << std::setw(2) << (date >> 5 & 15) << '-' << std::setw(2)
      << (date & 31) << ' ' << std::setw(2) << (time >> 11) << ':' << std::setw(2) << (time >> 5 & 63) << ':'
      << std::setw(2) << (time & 31) * 2 << std::setfill(' ') << std::setw(12) << member.size << ' '
      << attribute(kReadOnly, 'R') << attribute(kHidden, 'H') << attribute(kSystem, 'S') << attribute(kArchive, 'A')
      << ' ' << Printable(member.name) << '\n';
}

Status List(const CommandLine& line, std::ostream& out) {
  CabinetReader reader;
  if (Status status = reader.Open(platform::ToNative(line.cabinet)); status.Failed()) {
    return AboutCabinet(line, status);
  }
  std::uint64_t total = 0;
  Status status;
  for (const Member& member : reader.Records().members) {
    ListMember(member, out);
    total += member.size;
    if (member.nameIsMalformed && !status.Failed()) status = AboutCabinet(line, MalformedName(member));
  }
  out << reader.Records().members.size() << " files, " << total << " bytes\n";
  return status;
}

bool NamesFolder(const std::string& argument) {
  return argument.ends_with('\\') || argument.ends_with('/') ||
         platform::InfoOf(platform::ToNative(argument)).kind == platform::Kind::Folder;
}

Status Salvage(const CommandLine& line, const ExtractOptions& options, std::ostream& out) {
  FileSource cabinet;
  SalvageReport report;
  Status status = cabinet.Open(platform::ToNative(line.cabinet));
  if (!status.Failed()) status = Salvage(cabinet, {options, line.partial}, report);
  if (status.Failed() && report.members.empty() && cabinet.Failure().Failed()) status = cabinet.Failure();
  for (const std::string& text : report.warnings) out << "warning  " << Printable(text) << '\n';
  for (const SalvagedMember& member : report.members) out << Printable(Told(member)) << '\n';
  const std::string sums = std::to_string(report.whole) + " files whole, " + std::to_string(report.partial) +
                           " partial, " + std::to_string(report.lost) + " lost";
  if (!status.Failed() && (report.damaged || report.partial + report.lost > 0)) {
    status = BrokenCabinet("it is damaged: " + sums);
  }
  if (status.Failed()) return AboutCabinet(line, status);
  out << line.cabinet << ": " << sums << '\n';
  return {};
}

Status Extract(const CommandLine& line, std::ostream& out) {
  ExtractOptions options{{line.threads, line.allowUnchecked}, line.keepPaths, line.overwrite, line.arguments, {}, {}};
  if (!options.names.empty() && NamesFolder(options.names.back())) {
    options.target = options.names.back();
    options.names.pop_back();
  }
  if (line.salvage) return Salvage(line, options, out);
  Progress progress(platform::ToNative(line.cabinet));
  options.progress = &progress;
  CabinetReader reader;
  std::size_t extracted = 0;
  Status status = reader.Open(platform::ToNative(line.cabinet));
  if (!status.Failed()) status = Extract(reader, options, extracted);
  if (status.Failed()) return AboutCabinet(line, status);
  out << line.cabinet << ": " << extracted << " files extracted\n";
  return {};
}

Status RunCommand(const std::vector<std::string>& arguments, std::ostream& out) {
  CommandLine line;
  if (Status status = ParseCommandLine(arguments, line); status.Failed()) return status;
  switch (line.command) {
    case Command::Create:
      return Create(line, out);
    case Command::List:
      return List(line, out);
    case Command::Extract:
      return Extract(line, out);
    case Command::Help:
      break;
  }
  out << kHelp;
  return {};
}

}  // namespace

int Run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  Status status;
  try {
    status = RunCommand(arguments, out);
  } catch (const std::exception& exception) {
    status = FileError(std::string("not enough memory: ") + exception.what());
  }
  if (status.Failed()) err << "cabarc: " << Printable(status.text) << '\n';
  return static_cast<int>(status.code);
}

}  // namespace cabarc
