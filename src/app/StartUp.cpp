// Start-up: from the installation check to the dialogs.
#include "app/StartUp.h"

#include <string_view>

#include "app/Application.h"
#include "app/External.h"
#include "app/Log.h"
#include "app/Manual.h"
#include "app/Messages.h"
#include "app/Unicode.h"
#include "app/WindowsPath.h"

namespace app {
namespace {

constexpr std::int32_t kCatalogueNotOpened = 60320;
constexpr std::int32_t kSystemDatabaseFailed = 60321;
constexpr std::int32_t kAppearanceIncomplete = 60322;
constexpr std::int32_t kTableNameUnreadable = 60325;

/// The connection string has a field of fixed length.
constexpr std::size_t kConnectionLength = 256;

/// Cut, or padded with blanks, to exactly `width` characters.
std::string FixedWidth(std::string_view text, std::size_t width) {
  std::string_view rest = text;
  std::size_t count = 0;
  for (; count < width && !rest.empty(); ++count) TakeCharacter(rest);
  return std::string(text.substr(0, text.size() - rest.size())).append(width - count, ' ');
}

void CreateComponents(Application& application) {
  CreateMessageDialog(application);
  application.state.StartupDirectory = application.host.files.CurrentFolder();
  application.state.SignedIn = false;
  application.operationRecorder = application.host.components.CreateOperationRecorder();
}

// The preparing steps return 0 or the ID of the message that says what failed.

std::int32_t OpenCatalogue(Application& application) {
  std::string connection;
  if (GetPathEntry(application, "LangStrDB", connection) != kDone) return kPathEntryUnreadable;
  const ResultCode opened = OpenMessageCatalogue(application, FixedWidth(connection, kConnectionLength));
  return opened == kDone ? 0 : kCatalogueNotOpened;
}

void ReadHostIdentity(Application& application) {
  application.state.HostName = CutAtNul(application.host.qx32.GetHostname());
  application.state.SoftwareVersion = CutAtNul(application.host.qx32.GetSoftwareVersion());
  application.state.PendingMessageId = 0;
}

std::int32_t ReadFolders(Application& application) {
  State& state = application.state;
  const struct {
    const char* name;
    std::string& folder;
  } folders[] = {{"ApplicationRoot", state.ApplicationRootFolder},
                 {"System", state.SystemFolder},
                 {"UserFolder", state.UserFolder}};
  for (const auto& entry : folders) {
    if (GetPathEntry(application, entry.name, entry.folder) != kDone) return kPathEntryUnreadable;
    entry.folder = WithTrailingBackslash(entry.folder);
  }
  return 0;
}

std::int32_t Prepare(Application& application) {
  if (const std::int32_t id = InitSystemDatabase(application); id != 0) return id;
  if (GetPathEntry(application, "Log", application.state.LogFolder) != kDone) return kPathEntryUnreadable;
  if (ReadAppearanceSettings(application) != kDone) return kAppearanceIncomplete;
  if (const std::int32_t id = OpenCatalogue(application); id != 0) return id;
  if (const std::int32_t id = CheckExclusiveRun(application); id != 0) return id;
  ReadHostIdentity(application);
  return ReadFolders(application);
}

void LoadFixedTexts(Application& application) {
  constexpr std::size_t kCategories = 9;
  State& state = application.state;
  state.ProgramTitle = GetMessageText(application, 66000);
  state.SignInOutWords = {GetMessageText(application, 10000), GetMessageText(application, 10001)};
  for (std::size_t i = 0; i < kCategories; ++i) {
    state.CategoryNames[i] = GetMessageText(application, 66090 + static_cast<std::int32_t>(i));
  }
  state.PhaseWords = {GetMessageText(application, 10002), GetMessageText(application, 10003)};
}

}  // namespace

void Main(Application& application, StartUpDialogs& dialogs) {
  // Neither log nor catalogue can be found without the installation.
  if (CheckInstallation(application) != kDone) {
    application.toolkit.ShowPlainMessage("Not Exist Directory.ini. Please Reinstall Tarsus System.", "QXBackupUtility");
    return;
  }
  WriteLog(application, 1, LogLevel::Information, "Start Backup Utility");
  application.toolkit.HelpRequested = [&application] { ShowManual(application); };
  CreateComponents(application);
  if (const std::int32_t id = Prepare(application); id != 0) {
    ShowMessage(application, id);
    return FinishApplication(application, kHalt);
  }
  LoadFixedTexts(application);
  dialogs.ShowSignIn(application);
  if (application.state.SignedIn) dialogs.ShowMainMenu(application);
  FinishApplication(application, application.state.ExitMode);
}

ResultCode CheckInstallation(Application& application) {
  std::string folder;
  if (application.host.qx32.RegGetKeySZ("\\PathAppl", folder) == kFailed) return kFailed;
  const std::string pathTable = WithTrailingBackslash(CutAtNul(folder)) + "System\\" + "Directory.ini";
  return application.host.files.FileExists(pathTable) ? kDone : kFailed;
}

std::int32_t InitSystemDatabase(Application& application) {
  host::QX32lib& database = application.host.qx32lib;
  std::string connection;
  if (application.host.qx32.GetString("SysMasterDB", host::QX32::kSystemEntrySize, connection) != kDone) {
    return kPathEntryUnreadable;
  }
  if (database.SysDBConnect(CutAtNul(connection)) == kFailed) return kSystemDatabaseFailed;
  std::string tableName;
  if (database.SysDBReadszValue("SysConfig", "MsgTableName", tableName) == kFailed) return kTableNameUnreadable;
  application.state.MsgTableName = CutAtNul(tableName, true);
  return database.SysDBClose() == kFailed ? kSystemDatabaseFailed : 0;
}

}  // namespace app
