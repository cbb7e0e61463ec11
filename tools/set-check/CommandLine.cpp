// The command line of the set checker.
#include "set-check/CommandLine.h"

#include <map>

#include "cabarc/Platform.h"

namespace setcheck {

const std::string_view kHelp =
    R"(QXSetCheck: tells whether backup sets can be restored, and what of them.

  QXSetCheck [options] PATH...

PATH is a set's folder, a folder with sets anywhere below it, the folder of one
floppy or with those of a pile, or a floppy's image (1,474,560 bytes). The first
line of each answer says YES, IN PART or NO. Nothing is written but where you
say so.

  --workstation FOLDER  the system folder of the workstation that is to restore,
                        with its BackupList.ini, BackupVersion.ini and
                        Directory.ini: says what it would offer, and whether the
                        items of its restore sections find their files
  --application NAME    its host application, without ".exe"
  --version NUMBER      its software version
  --json                answers for programs, in JSON
  --list                names the files of each archive
  --unpack FOLDER       of one set: takes out all that is left, each archive into
                        a folder of its own; FOLDER must be empty or new
  --compare FOLDER      of one set: compares its files with those that are alive
                        below the application's root FOLDER; needs --workstation
  --help                shows this text

Exit codes: 0 all is sound, 1 a part is lost, 2 a set cannot be restored, or
there is none, 3 wrong use. Of several sets the worst counts.
)";

namespace {

class Parser {
 public:
  explicit Parser(CommandLine& line)
      : line_(line),
        texts_{{"--workstation", &line.workstation},
               {"--application", &line.check.identity.application},
               {"--version", &line.check.identity.version},
               {"--unpack", &line.unpack},
               {"--compare", &line.compare}},
        flags_{{"--json", &line.json}, {"--list", &line.check.list}, {"--help", &line.help}} {}

  std::string Take(const std::vector<std::string>& arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      const std::string& argument = arguments[i];
      if (const auto flag = flags_.find(argument); flag != flags_.end()) {
        *flag->second = true;
      } else if (const auto text = texts_.find(argument); text != texts_.end()) {
        if (i + 1 == arguments.size() || arguments[i + 1].empty()) return argument + " needs a value";
        *text->second = arguments[++i];
      } else if (argument.starts_with("--")) {
        return argument + ": there is no such option; see QXSetCheck --help";
      } else {
        line_.paths.push_back(cabarc::platform::ToNative(argument));
      }
    }
    return line_.help ? std::string() : WhatIsMissing();
  }

 private:
  std::string WhatIsMissing() const {
    if (line_.paths.empty()) return "no set is named; see QXSetCheck --help";
    if (!line_.unpack.empty() && !line_.compare.empty()) return "--unpack and --compare do not go together";
    if (line_.json && !(line_.unpack + line_.compare).empty()) return "--json is for checks alone";
    if (!line_.compare.empty() && line_.workstation.empty()) return "--compare needs --workstation";
    return {};
  }

  CommandLine& line_;
  const std::map<std::string, std::string*> texts_;
  const std::map<std::string, bool*> flags_;
};

}  // namespace

std::string Parse(const std::vector<std::string>& arguments, CommandLine& line) {
  return Parser(line).Take(arguments);
}

}  // namespace setcheck
