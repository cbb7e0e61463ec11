// Any command line of the archiver, one argument a line, and behind a form feed the contents of a list file.
#include "cabarc/CommandLine.h"
#include "FuzzTarget.h"
#include "base/Text.h"
#include "cabarc/MemberNames.h"

namespace {

using cabarc::Command;
using cabarc::CommandLine;
using Arguments = std::vector<std::string>;

// The options, command and cabinet that say outright what `line` says.
Arguments Written(const CommandLine& line) {
  Arguments arguments = {"-t", std::to_string(line.threads), "-m",
                         line.method == cabinet::Method::None ? "NONE" : "MSZIP"};
  if (line.recurse) arguments.emplace_back("-r");
  if (line.keepPaths) arguments.emplace_back("-p");
  if (line.overwrite) arguments.emplace_back("-o");
  if (line.allowUnchecked) arguments.emplace_back("--allow-unchecked");
  if (line.salvage) arguments.emplace_back("--salvage");
  arguments.emplace_back(line.command == Command::Create ? "n" : line.command == Command::List ? "l" : "x");
  arguments.push_back(line.cabinet);
  return arguments;
}

// The lines of a list file, by another way: empty ones do not count.
Arguments Lines(std::string list) {
  if (list.starts_with("\xEF\xBB\xBF")) list.erase(0, 3);
  Arguments lines;
  for (std::string line : base::Split(list, '\n')) {
    if (line.ends_with('\r')) line.pop_back();
    if (!line.empty()) lines.push_back(line);
  }
  return lines;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::Scratch scratch;
  const auto [text, list] = fuzz::SplitAt(data, size, '\f');
  std::ofstream("list", std::ios::binary) << list;
  Arguments arguments = base::Split(text, '\n');
  for (std::string& argument : arguments) {
    if (argument.starts_with('@')) argument = "@list";  // no other file is to be read
  }
  CommandLine line;
  const cabarc::Status status = cabarc::ParseCommandLine(arguments, line);
  fuzz::Require(status.Failed() != status.text.empty(), "a failure says why");
  if (status.Failed() || line.command == Command::Help) return 0;

  fuzz::Require(line.threads >= 1 && line.threads <= 16, "the number of threads is in its range");
  fuzz::Require(line.command != Command::Create || !line.arguments.empty(), "packing names what to pack");
  fuzz::Require(line.command != Command::List || line.arguments.empty(), "listing takes the cabinet alone");
  Arguments written = Written(line);
  if (!line.arguments.empty()) written.emplace_back("@list");
  std::string all = "\xEF\xBB\xBF";
  bool tellable = true;  // an empty argument cannot be told in a list, and neither can bytes that are no UTF-8
  for (const std::string& argument : line.arguments) {
    fuzz::Require(argument.find('\n') == std::string::npos, "an argument is one line");
    tellable = tellable && !argument.empty() && cabinet::IsUtf8(argument);
    all += argument + "\r\n";
  }
  if (!tellable) return 0;
  std::ofstream("list", std::ios::binary) << all;
  CommandLine again;
  fuzz::Require(!cabarc::ParseCommandLine(written, again).Failed(), "a command line written anew is right");
  fuzz::Require(Written(again) == Written(line) && again.arguments == line.arguments,
                "a command line written anew says the same");
  if (arguments.back() == "@list" && line.cabinet != "@list" && cabinet::IsUtf8(list)) {
    const Arguments lines = Lines(list);
    fuzz::Require(
        lines.size() <= line.arguments.size() && std::equal(lines.rbegin(), lines.rend(), line.arguments.rbegin()),
        "a list file gives each of its lines");
  }
  return 0;
}
