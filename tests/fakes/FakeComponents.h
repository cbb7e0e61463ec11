// The host's components: each records what it is told and answers from tables.
#pragma once

#include <algorithm>

#include "fakes/CallCounter.h"
#include "fakes/ComponentState.h"
#include "fakes/Disk.h"
#include "fakes/ScriptedOperator.h"
#include "fakes/Text.h"
#include "host/Components.h"

namespace fakes {

/// What every component works with.
struct ComponentTools {
  Disk& disk;
  CallCounter& calls;
  ScriptedOperator& person;
  ComponentState& state;
};

template <class Contract>
struct Component : Contract {
  explicit Component(const ComponentTools& given) : tools(given) {}
  const ComponentTools tools;
};

struct FakeDialog : Component<host::MessageDialog> {
  using Component::Component;
  void SetDisplayOptions(std::int32_t first, std::int32_t second) override { ready = first == 1 && second == 1; }
  std::int32_t Show(std::int32_t id, const std::string& text1, const std::string& text2,
                    const std::string& text3) override {
    if (tools.calls.Fails("MessageDialog", __func__, std::to_string(id)) || !ready) return 0;
    return tools.person.AtMessage({id, text1, text2, text3});
  }
  bool ready = false;
};

struct FakeLog : Component<host::LogWriter> {
  using Component::Component;
  void SetFilePath(const std::string& given) override { path = given; }
  void SetMode(std::int32_t mode) override { ready = mode == 1; }
  std::int32_t WriteLine(const std::string& line) override {
    if (tools.calls.Fails("LogWriter", __func__, line) || !ready) return -1;
    constexpr std::size_t kStampAndTag = 21 + 15;
    tools.state.logLines.push_back(line.size() > kStampAndTag ? line.substr(kStampAndTag) : line);
    auto file = tools.disk.Find(path);
    if (!file) file = tools.disk.Create(path);
    return file && tools.disk.Append(path, *file, ToCodePage(line) + "\r\n") ? 0 : -1;
  }
  std::string path;
  bool ready = false;
};

struct FakeRecorder : Component<host::OperationRecorder> {
  using Component::Component;
  std::int32_t Record(const std::string& hostName, const std::string& userId, const std::string& program,
                      const std::string& screen, const std::string& action) override {
    if (tools.calls.Fails("OperationRecorder", __func__, action)) return -1;
    tools.state.operations.push_back(hostName + "|" + userId + "|" + program + "|" + screen + "|" + action);
    return 0;
  }
};

struct FakeAudit : Component<host::AuditTrail> {
  using Component::Component;
  std::int32_t RecordSignInOut(const std::string& userId, const std::string& word, const std::string& title) override {
    return Add(__func__, userId, word, title);
  }
  std::int32_t RecordCategoryPhase(const std::string& userId, const std::string& word,
                                   const std::string& category) override {
    return Add(__func__, userId, word, category);
  }
  std::int32_t Add(const char* method, const std::string& userId, const std::string& word, const std::string& what) {
    if (tools.calls.Fails("AuditTrail", method, word)) return -1;
    if (tools.state.auditAnswer == 0) tools.state.auditRecords.push_back(userId + "|" + word + "|" + what);
    return tools.state.auditAnswer;
  }
};

struct FakeUsers : Component<host::UserQuery> {
  using Component::Component;
  void Execute(const std::string& statement, std::int32_t& status) override {
    tools.state.statements.push_back(statement);
    values.clear();
    status = tools.calls.Fails("UserQuery", __func__, statement) ? -1 : Run(statement);
  }
  std::int32_t RowCount() override {
    return tools.calls.Fails("UserQuery", __func__) ? 0 : static_cast<std::int32_t>(values.size());
  }
  std::string Value(std::int32_t row, std::int32_t column, std::int32_t& status) override {
    const auto place = static_cast<std::size_t>(row);
    status = tools.calls.Fails("UserQuery", __func__) || place >= values.size() || column != 0 ? -1 : 0;
    return status == 0 ? values[place] : "";
  }
  std::int32_t Run(const std::string& statement) {
    const std::string byName = "SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'";
    const bool all = statement == "SELECT DISP_NAME FROM V_MUSER ORDER BY USER_ORDER_NO";
    // A quote inside the name ends the literal early: the database then reports bad syntax.
    if (!all && (!statement.starts_with(byName) || statement.find('\'', byName.size()) + 1 != statement.size()))
      return -1;
    for (const HostUser& user : tools.state.users) {
      if (all) values.push_back(user.displayName);
      if (!all && statement == byName + user.displayName + "'") values.push_back(user.id);
    }
    return 0;
  }
  std::vector<std::string> values;
};

struct FakeLogin : Component<host::UserAuthenticator> {
  using Component::Component;
  std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& userKind) override {
    if (tools.calls.Fails("UserAuthenticator", __func__, userId)) return -1;
    if (tools.state.verifyFault != 0) return tools.state.verifyFault;
    const auto user = Find(userId);
    if (user == tools.state.users.end()) return 1;
    if (user->password != password) return 2;
    userKind = user->kind;
    return 0;
  }
  std::int32_t CheckFunction(const std::string& userId, std::int32_t functionCode, std::int32_t& granted) override {
    granted = -1;
    if (tools.calls.Fails("UserAuthenticator", __func__, std::to_string(functionCode))) return -1;
    const auto user = Find(userId);
    if (user != tools.state.users.end() && user->functions.contains(functionCode)) granted = 0;
    return 0;
  }
  std::vector<HostUser>::const_iterator Find(const std::string& id) const {
    return std::ranges::find(tools.state.users, id, &HostUser::id);
  }
};

struct FakeMedia : Component<host::MediaComponent> {
  using Component::Component;
  std::int32_t GetDriveStatus(const std::string& path) override {
    if (tools.calls.Fails("MediaComponent", __func__, path) || !setUp || path.empty()) return -1;
    auto& answers = tools.state.mediaStatuses[path[0]];
    if (!answers.empty()) return Next(answers);
    const Drive* drive = tools.disk.FindDrive(path.substr(0, 1) + ":");
    return drive == nullptr ? -1 : drive->ready ? 3 : 1;
  }
  std::int32_t PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
                            std::int32_t option2) override {
    if (tools.calls.Fails("MediaComponent", __func__, drive)) return -1;
    tools.state.preparedDrives.push_back(drive);
    const bool asAgreed = workDrive == "C:\\" && option1 == 0 && option2 == 0;
    return asAgreed ? tools.state.prepareAnswer : -1;
  }
  void SetUp(const std::string& programCommand) override {
    setUp = true;
    tools.state.mediaCommands.push_back(programCommand);
  }
  bool setUp = false;
};

/// Copies the files of a folder but for those whose names a line of the list holds.
struct FakeFilter : Component<host::PersonalInfoFilter> {
  using Component::Component;
  void SetListDatabase(const std::string& path) override { list = path; }
  void SetSource(const std::string& path) override { source = list.empty() ? "" : path; }
  void SetDestination(const std::string& folder) override { destination = source.empty() ? "" : folder; }
  std::int32_t FilterImages() override { return Run(__func__, "images|"); }
  std::int32_t FilterFiles() override { return Run(__func__, "files|"); }
  std::int32_t Run(const char* method, const std::string& kind) {
    tools.state.filterCalls.push_back(kind + source);
    if (tools.calls.Fails("PersonalInfoFilter", method, source) || destination.empty()) return -1;
    const std::string listed = tools.disk.Read(list);
    for (const auto& file : tools.disk.Children(source))
      if (!file->isFolder && listed.find(file->name) == std::string::npos)
        tools.disk.Write(destination + "\\" + file->name, file->bytes);
    return tools.state.filterAnswers.empty() ? 0 : Next(tools.state.filterAnswers);
  }
  std::string list;
  std::string source;
  std::string destination;
};

struct FakeStudies : Component<host::StudyDatabaseQuery> {
  using Component::Component;
  void OpenQuery(const std::string& statement, std::int32_t& error) override {
    tools.state.statements.push_back(statement);
    answer = {{}, -1};
    for (const auto& [head, known] : tools.state.studies)
      if (statement.starts_with(head)) answer = known;
    error = tools.calls.Fails("StudyDatabaseQuery", __func__, statement) ? -1 : answer.error;
  }
  std::int32_t RecordCount(std::int32_t& error) override {
    error = tools.calls.Fails("StudyDatabaseQuery", __func__) ? -1 : answer.error;
    return error == 0 ? static_cast<std::int32_t>(answer.rows.size()) : 0;
  }
  std::string FieldValue(std::int32_t row, std::int32_t column, std::int32_t& error) override {
    const auto r = static_cast<std::size_t>(row);
    const auto c = static_cast<std::size_t>(column);
    const bool there = r < answer.rows.size() && c < answer.rows[r].size();
    error = !tools.calls.Fails("StudyDatabaseQuery", __func__) && there ? 0 : -1;
    return error == 0 ? answer.rows[r][c] : "";
  }
  StudyAnswer answer;
};

class FakeComponents : public host::ComponentFactory {
 public:
  FakeComponents(Disk& disk, CallCounter& calls, ScriptedOperator& person) : tools_{disk, calls, person, state} {}
  ComponentState state;
  /// Whether the text was logged, at any level.
  bool Logged(const std::string& text) const { return std::ranges::count(state.logLines, text) > 0; }

  std::unique_ptr<host::MessageDialog> CreateMessageDialog() override { return Make<FakeDialog>(__func__); }
  std::unique_ptr<host::LogWriter> CreateLogWriter() override { return Make<FakeLog>(__func__); }
  std::unique_ptr<host::OperationRecorder> CreateOperationRecorder() override { return Make<FakeRecorder>(__func__); }
  std::unique_ptr<host::AuditTrail> CreateAuditTrail() override { return Make<FakeAudit>(__func__); }
  std::unique_ptr<host::UserQuery> CreateUserQuery() override { return Make<FakeUsers>(__func__); }
  std::unique_ptr<host::UserAuthenticator> CreateUserAuthenticator() override { return Make<FakeLogin>(__func__); }
  std::unique_ptr<host::MediaComponent> CreateMediaComponent() override { return Make<FakeMedia>(__func__); }
  std::unique_ptr<host::PersonalInfoFilter> CreatePersonalInfoFilter() override { return Make<FakeFilter>(__func__); }
  std::unique_ptr<host::StudyDatabaseQuery> CreateStudyDatabaseQuery() override { return Make<FakeStudies>(__func__); }

 private:
  template <class Made>
  std::unique_ptr<Made> Make(const char* method) {
    return tools_.calls.Fails("ComponentFactory", method) ? nullptr : std::make_unique<Made>(tools_);
  }

  ComponentTools tools_;
};

}  // namespace fakes
