// The message catalogue. The reference host's own catalogue is the list of what the program takes from one.
#include <charconv>
#include <string_view>

#include "app/External.h"
#include "app/Messages.h"
#include "app/StartUp.h"
#include "app/TextFormat.h"
#include "host-check/CatalogueText.h"
#include "host-check/Checks.h"

namespace hostcheck {
namespace {

/// Texts from here on belong to the reference host's message dialog.
constexpr std::int32_t kFirstOfHost = 67000;

/// What the program shows for a text that it does not find.
constexpr char kNotDefined[] = "Not Defined!";

void CheckTexts(Report& report, app::Application& application) {
  int found = 0;
  for (const std::string& line : app::Split(kCatalogue, '\n')) {
    std::int32_t id = 0;
    std::from_chars(line.data(), line.data() + line.size(), id);
    if (id == 0 || id >= kFirstOfHost) continue;
    if (app::GetMessageText(application, id) == kNotDefined) {
      report.Require(false, "catalogue text " + std::to_string(id), line.substr(line.rfind('\t') + 1));
    } else {
      ++found;
    }
  }
  report.Require(found > 0, "catalogue texts: " + std::to_string(found), "dialogs, messages and records");
}

}  // namespace

void CheckCatalogue(Report& report, app::Application& application) {
  const std::int32_t problem = app::InitSystemDatabase(application);
  report.Require(problem == 0, "system configuration database",
                 problem == 0 ? "names the message table" : "the start ends with message " + std::to_string(problem));
  std::string connection;
  app::GetPathEntry(application, "LangStrDB", connection);
  const bool open = app::OpenMessageCatalogue(application, connection) == app::kDone;
  report.Require(open, "catalogue table " + application.state.MsgTableName, "all texts of the program");
  if (open) CheckTexts(report, application);
}

}  // namespace hostcheck
