// Start-up: from the installation check to the dialogs.
#include "app/StartUp.h"

#include <string_view>

#include "app/Finish.h"
#include "base/Path.h"
#include "base/Text.h"

namespace app {
namespace {

/// The connection string has a field of fixed length.
constexpr std::size_t kConnectionLength = 256;

struct SiblingTool {
  const char* executable;
  MessageId message;
};

constexpr SiblingTool kSiblingTools[] = {
    {"QXUserUtility.exe", MessageId::UserUtilityRuns},
    {"QXServiceUtility.exe", MessageId::ServiceUtilityRuns},
    {"ScheduledBackupTool.exe", MessageId::ScheduledBackupRuns},
};

// Versions of a tool that differ behind these characters must keep each other out too. The
// tools' names are ASCII, so bytes are characters wherever a comparison can succeed.
std::string_view SignificantPart(std::string_view executable) {
  return executable.substr(0, 15);
}

void CreateComponents(Application& application) {
  application.messages.CreateMessageDialog();
  application.state.StartupDirectory = application.host.files.CurrentFolder();
  application.state.SignedIn = false;
  application.records.CreateOperationRecorder();
}

base::Outcome OpenCatalogue(Application& application) {
  std::string connection;
  base::Outcome read = application.paths.GetPathEntry("LangStrDB", connection);
  if (!read.IsDone()) return std::move(read).OrSay(MessageId::PathEntryUnreadable);
  return application.messages
      .OpenMessageCatalogue(base::FixedWidth(connection, kConnectionLength), application.state.MsgTableName)
      .OrSay(MessageId::CatalogueNotOpened);
}

void ReadHostIdentity(host::QX32& library, State& state) {
  state.HostName = base::CutAtNul(library.GetHostname());
  state.SoftwareVersion = base::CutAtNul(library.GetSoftwareVersion());
}

base::Outcome ReadFolders(const PathTable& paths, State& state) {
  const struct {
    const char* name;
    std::string& folder;
  } folders[] = {{"ApplicationRoot", state.ApplicationRootFolder},
                 {"System", state.SystemFolder},
                 {"UserFolder", state.UserFolder}};
  for (const auto& entry : folders) {
    base::Outcome read = paths.GetPathEntry(entry.name, entry.folder);
    if (!read.IsDone()) return std::move(read).OrSay(MessageId::PathEntryUnreadable);
    entry.folder = base::WithTrailingBackslash(entry.folder);
  }
  return base::Result::Done;
}

/// The first step that fails ends the start; its outcome carries the message.
base::Outcome Prepare(Application& application) {
  host::Host& host = application.host;
  State& state = application.state;
  if (base::Outcome step = InitSystemDatabase(host.qx32, host.qx32lib, state.MsgTableName); !step.IsDone()) return step;
  base::Outcome step = application.paths.GetPathEntry("Log", state.LogFolder);
  if (!step.IsDone()) return std::move(step).OrSay(MessageId::PathEntryUnreadable);
  step = ReadAppearanceSettings(host.qx32, application.toolkit, application.appearance);
  if (!step.IsDone()) return std::move(step).OrSay(MessageId::AppearanceUnreadable);
  step = OpenCatalogue(application);
  if (!step.IsDone()) return step;
  step = CheckExclusiveRun(host.processes, host.messageLoop);
  if (!step.IsDone()) return step;
  ReadHostIdentity(host.qx32, state);
  return ReadFolders(application.paths, state);
}

void LoadFixedTexts(Messages& messages, State& state) {
  constexpr std::size_t kCategories = 9;
  state.ProgramTitle = messages.GetMessageText(MessageId::ProgramTitle);
  state.SignInOutWords = {messages.GetMessageText(MessageId::SignInWord),
                          messages.GetMessageText(MessageId::SignOutWord)};
  for (std::size_t i = 0; i < kCategories; ++i) {
    const auto number = static_cast<std::int32_t>(MessageId::FirstCategoryName) + static_cast<std::int32_t>(i);
    state.CategoryNames[i] = messages.GetMessageText(MessageId{number});
  }
  state.PhaseWords = {messages.GetMessageText(MessageId::PhaseStartWord),
                      messages.GetMessageText(MessageId::PhaseEndWord)};
}

}  // namespace

void Main(Application& application, StartUpDialogs& dialogs) {
  // Neither log nor catalogue can be found without the installation.
  if (!CheckInstallation(application.host.qx32, application.host.files).IsDone()) {
    application.toolkit.ShowPlainMessage("Not Exist Directory.ini. Please Reinstall Tarsus System.", "QXBackupUtility");
    return;
  }
  application.log.WriteLog(LogLevel::Information, "Start Backup Utility");
  application.toolkit.HelpRequested = [&application] { ShowManual(application); };
  CreateComponents(application);
  if (const base::Outcome prepared = Prepare(application); !prepared.IsDone()) {
    application.failures.Show(prepared);
    return FinishApplication(application, ExitMode::Halt);
  }
  LoadFixedTexts(application.messages, application.state);
  // Not before: a line whose folder cannot be found shows a message.
  if (!application.host.processes.HasAdministratorsRights()) {
    application.log.WriteLog(LogLevel::Information, "Without administrator's rights");
  }
  dialogs.ShowSignIn(application);
  if (application.state.SignedIn) dialogs.ShowMainMenu(application);
  FinishApplication(application, application.state.ExitMode);
}

base::Outcome CheckInstallation(host::QX32& registry, host::FileSystem& files) {
  std::string folder;
  if (base::Outcome read = registry.RegGetKeySZ("\\PathAppl", folder); !read.IsDone()) return read;
  const std::string pathTable = base::WithTrailingBackslash(base::CutAtNul(folder)) + "System\\" + "Directory.ini";
  return files.FileExists(pathTable) ? base::Outcome() : base::Failure("no file " + pathTable);
}

base::Outcome InitSystemDatabase(host::QX32& pathTable, host::QX32lib& database, std::string& tableName) {
  std::string connection;
  base::Outcome step = pathTable.GetString("SysMasterDB", host::QX32::kSystemEntrySize, connection);
  if (!step.IsDone()) return std::move(step).OrSay(MessageId::PathEntryUnreadable);
  step = database.SysDBConnect(base::CutAtNul(connection));
  if (!step.IsDone()) return std::move(step).OrSay(MessageId::SystemDatabaseFailed);
  std::string value;
  step = database.SysDBReadszValue("SysConfig", "MsgTableName", value);
  if (!step.IsDone()) return std::move(step).OrSay(MessageId::MessageTableUnnamed);
  tableName = base::CutAtNul(value, true);
  return database.SysDBClose().OrSay(MessageId::SystemDatabaseFailed);
}

base::Outcome CheckExclusiveRun(host::Processes& processes, host::MessageLoop& messageLoop) {
  if (processes.HasPreviousInstance()) {
    return {base::Result::Failed, MessageId::AlreadyRunning, "this program runs already"};
  }
  for (const SiblingTool& tool : kSiblingTools) {
    if (IsProcessRunning(processes, messageLoop, tool.executable)) {
      return {base::Result::Failed, tool.message, tool.executable};
    }
  }
  return base::Result::Done;
}

bool IsProcessRunning(host::Processes& processes, host::MessageLoop& messageLoop, const std::string& name) {
  for (const std::string& running : processes.RunningExecutables()) {
    messageLoop.Yield();
    if (SignificantPart(running) == SignificantPart(name)) return true;
  }
  return false;
}

void ShowManual(Application& application) {
  const std::string manual = "QXBackupUtility.html";
  if (application.host.shell.OpenDocument(manual)) return;
  application.log.WriteLog(LogLevel::Exclamation, "Manual not opened : " + manual);
  TellNotOpened(application.messages, manual);
}

void TellNotOpened(Messages& messages, const std::string& document) {
  if (messages.IsDefined(MessageId::DocumentNotOpened)) messages.ShowMessage(MessageId::DocumentNotOpened, document);
}

}  // namespace app
