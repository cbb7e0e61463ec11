// The command line of the archiver.
#include "cabarc/CommandLine.h"

#include <algorithm>
#include <charconv>
#include <thread>

#include "cabarc/MemberNames.h"
#include "cabarc/Platform.h"

namespace cabarc {

const std::string_view kHelp =
    R"(cabarc: packs files into a cabinet, lists and extracts them.

  cabarc [options] n NAME.cab FILE...               packs files
  cabarc [options] l NAME.cab                       lists them
  cabarc [options] x NAME.cab [FILE...] [FOLDER\]   extracts them
  cabarc [options] X NAME.cab [FILE...] [FOLDER\]   the same for scripts: files
                                                    that are there are replaced

FILE may hold "*" and "?" in its last part; "*.*" means all files. @LIST stands
for the lines of the text file LIST: UTF-8, or else the system's code page; a
byte order mark makes sure. The last argument of x is the folder to extract to
when it ends in "\" or names a folder that exists.

  -r                 packs files in subfolders too
  -p                 stores and restores the folders in names
  -o                 replaces files that are there when extracting
  -m MSZIP | NONE    how to pack (MSZIP)
  -t N               works with N threads, 1 to 16 (one for each processor)
  --allow-unchecked  extracts data that have no checksum from cabinets that
                     another archiver made
  --salvage          extracts what is whole of a damaged cabinet, and says of
                     each file what became of it; otherwise a damaged one made
                     by this archiver yields nothing
  --partial          the same, and extracts what is left of the others too, as
                     NAME.partial, with zeros for what is lost
  --help             shows this text

Exit codes: 0 done, 1 wrong command line, 2 a file cannot be read, written or
stored, 3 the cabinet is damaged or not supported, 4 a name is not safe.
)";

namespace {

constexpr unsigned kMaxThreads = 16;

Status UsageError(std::string text) {
  return {ExitCode::Usage, std::move(text)};
}

Status ReadListFile(const std::string& path, std::vector<std::string>& lines) {
  platform::File file;
  if (!file.OpenForReading(platform::ToNative(path))) {
    return FileError(path + ": it cannot be opened: " + platform::LastError());
  }
  const std::optional<platform::FileInfo> info = file.Info();
  if (!info || info->kind != platform::Kind::File) return FileError(path + ": it is not a file");
  std::string text;
  char buffer[65536];
  for (;;) {
    const std::optional<std::size_t> count = file.Read(buffer, sizeof buffer);
    if (!count) return FileError(path + ": it cannot be read: " + platform::LastError());
    if (*count == 0) break;
    text.append(buffer, *count);
  }
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) {
    text.erase(0, kByteOrderMark.size());
  } else if (!IsUtf8(text)) {
    text = platform::FromCodePage(text);
  }
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty()) lines.emplace_back(line);
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return {};
}

class Parser {
 public:
  Parser(const std::vector<std::string>& arguments, CommandLine& line) : arguments_(arguments), line_(line) {}

  Status Parse() {
    line_.threads = std::clamp(std::thread::hardware_concurrency(), 1u, kMaxThreads);
    for (; next_ < arguments_.size() && arguments_[next_].starts_with('-'); ++next_) {
      if (Status status = ParseOption(arguments_[next_]); status.Failed()) return status;
      if (help_) return {};
    }
    if (next_ == arguments_.size()) return UsageError("no command is given; see cabarc --help");
    if (Status status = ParseCommand(arguments_[next_++]); status.Failed()) return status;
    if (next_ == arguments_.size()) return UsageError("no cabinet is named; see cabarc --help");
    line_.cabinet = arguments_[next_++];
    for (; next_ < arguments_.size(); ++next_) {
      if (Status status = ParseArgument(arguments_[next_]); status.Failed()) return status;
    }
    if (line_.command == Command::Create && line_.arguments.empty()) return UsageError("no file to pack is named");
    if (line_.command == Command::List && !line_.arguments.empty()) return UsageError("l takes the cabinet only");
    return {};
  }

 private:
  Status ParseOption(const std::string& option) {
    if (option == "-r") {
      line_.recurse = true;
    } else if (option == "-p") {
      line_.keepPaths = true;
    } else if (option == "-o") {
      line_.overwrite = true;
    } else if (option == "--allow-unchecked") {
      line_.allowUnchecked = true;
    } else if (option == "--salvage") {
      line_.salvage = true;
    } else if (option == "--partial") {
      line_.salvage = line_.partial = true;
    } else if (option == "-m") {
      return ParseMethod(Value());
    } else if (option == "-t") {
      return ParseThreads(Value());
    } else if (option == "--help" || option == "-h" || option == "-?") {
      help_ = true;
    } else {
      return UsageError(option + ": there is no such option; see cabarc --help");
    }
    return {};
  }

  std::string Value() { return next_ + 1 < arguments_.size() ? arguments_[++next_] : std::string(); }

  Status ParseMethod(const std::string& value) {
    if (Matches("NONE", value)) {
      line_.method = Method::None;
    } else if (!Matches("MSZIP", value)) {
      return UsageError("-m takes MSZIP or NONE");
    }
    return {};
  }

  Status ParseThreads(const std::string& value) {
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, line_.threads);
    if (error != std::errc() || stop != end || line_.threads < 1 || line_.threads > kMaxThreads) {
      return UsageError("-t takes a number from 1 to 16");
    }
    return {};
  }

  Status ParseCommand(const std::string& command) {
    if (command == "n" || command == "N") {
      line_.command = Command::Create;
    } else if (command == "l" || command == "L") {
      line_.command = Command::List;
    } else if (command == "x" || command == "X") {
      line_.command = Command::Extract;
      // Scripts and hidden runs use "X" and cannot answer a question; a file left from an earlier run must not stop
      // them half-way.
      line_.overwrite = line_.overwrite || command == "X";
    } else {
      return UsageError(command + ": there is no such command; see cabarc --help");
    }
    return {};
  }

  Status ParseArgument(const std::string& argument) {
    if (argument.starts_with('@')) return ReadListFile(argument.substr(1), line_.arguments);
    line_.arguments.push_back(argument);
    return {};
  }

  const std::vector<std::string>& arguments_;
  CommandLine& line_;
  std::size_t next_ = 0;
  bool help_ = false;
};

}  // namespace

Status ParseCommandLine(const std::vector<std::string>& arguments, CommandLine& line) {
  return Parser(arguments, line).Parse();
}

}  // namespace cabarc
