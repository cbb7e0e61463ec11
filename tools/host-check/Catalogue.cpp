// The message catalogue. The reference host's own catalogue is the list of what the program takes from one.
#include <charconv>
#include <string_view>

#include "app/StartUp.h"
#include "base/Text.h"
#include "host-check/CatalogueText.h"
#include "host-check/Checks.h"

namespace hostcheck {
namespace {

/// Texts from here on belong to the reference host's message dialog.
constexpr std::int32_t kFirstOfHost = 67000;

/// What the program shows for a text that it does not find.
constexpr char kNotDefined[] = "Not Defined!";

void CheckTexts(Report& report, app::Messages& messages) {
  int found = 0;
  for (const std::string& line : base::Split(kCatalogue, '\n')) {
    std::int32_t id = 0;
    std::from_chars(line.data(), line.data() + line.size(), id);
    if (id == 0 || id >= kFirstOfHost) continue;
    if (messages.GetMessageText(app::MessageId{id}) == kNotDefined) {
      report.Require(false, "catalogue text " + std::to_string(id), line.substr(line.rfind('\t') + 1));
    } else {
      ++found;
    }
  }
  report.Require(found > 0, "catalogue texts: " + std::to_string(found), "dialogs, messages and records");
}

}  // namespace

void CheckCatalogue(Report& report, app::Application& application) {
  const host::Host& host = application.host;
  const base::Outcome read = app::InitSystemDatabase(host.qx32, host.qx32lib, application.state.MsgTableName);
  const auto message = static_cast<std::int32_t>(read.PendingMessageId);
  report.Require(read.IsDone(), "system configuration database",
                 read.IsDone() ? "names the message table" : "the start ends with message " + std::to_string(message));
  std::string connection;
  static_cast<void>(application.paths.GetPathEntry("LangStrDB", connection));  // the path table has a check of its own
  const bool open = application.messages.OpenMessageCatalogue(connection, application.state.MsgTableName).IsDone();
  report.Require(open, "catalogue table " + application.state.MsgTableName, "all texts of the program");
  if (open) CheckTexts(report, application.messages);
}

}  // namespace hostcheck
