// The host's components: each records what it is told and answers from tables.
#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "fakes/ScriptedOperator.h"
#include "fakes/Text.h"
#include "host/Components.h"

namespace fakes {

/// A user of the host system. Function 2601 is the backup, 2801 the restore.
struct HostUser {
  std::string displayName;
  std::string id;
  std::string password;
  std::set<std::int32_t> functions;
  std::int32_t kind = 1;  ///< 6 is a privileged user
};

/// Answers to the statements on the study databases.
struct StudyAnswer {
  std::vector<std::vector<std::string>> rows = {};
  std::string refusal = {};  ///< words of a failure; empty: none
};

/// All that the components have been told, and all that they are to answer. Refusals are a failure's words; empty:
/// none.
struct ComponentState {
  std::multiset<std::string> living;                            ///< contracts of those that are not released yet
  std::vector<HostUser> users;                                  ///< in the order of the user view
  std::int32_t verifyFault = 0;                                 ///< a non-zero answer of every password check
  std::vector<std::string> statements;                          ///< all that were run, on users and studies
  std::vector<std::string> logLines;                            ///< without their time stamps
  std::vector<std::string> operations;                          ///< "host|user|program|screen|action"
  std::vector<std::string> auditRecords;                        ///< "user|word|what"
  std::string auditRefusal;                                     ///< of sign-ins, sign-outs and phases alike
  std::map<char, std::deque<host::DriveStatus>> mediaStatuses;  ///< per drive; when empty, by the disk itself
  std::vector<std::string> mediaCommands;                       ///< handed over before status queries
  std::vector<std::string> preparedDrives;
  std::string prepareRefusal;
  std::vector<std::string> filterCalls;        ///< "images|source" or "files|source"
  std::deque<std::int32_t> filterAnswers;      ///< 0 when empty
  std::map<std::string, StudyAnswer> studies;  ///< by the statement's beginning
};

/// What every component works with.
struct ComponentTools {
  Disk& disk;
  CallCounter& calls;
  ScriptedOperator& person;
  ComponentState& state;
};

template <class Contract>
struct Component : Contract {
  Component(const ComponentTools& given, const char* contract) : tools(given), name(contract) {
    tools.state.living.insert(name);
  }
  ~Component() override { tools.state.living.extract(name); }
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  bool Fails(const char* method, const std::string& detail = {}) { return tools.calls.Fails(name, method, detail); }
  /// What a call answers: that it was to fail, or `refusal`, if any.
  base::Outcome Answer(bool fails, const char* method, const std::string& refusal = {}) const {
    if (fails) return InjectedFault(name + "." + method);
    return refusal.empty() ? base::Outcome() : base::Failure(name + "." + method + ": " + refusal);
  }

  const ComponentTools tools;
  const std::string name;
};

/// Takes the first of the answers that are left.
template <class Value>
Value Next(std::deque<Value>& answers) {
  const Value answer = answers.front();
  answers.pop_front();
  return answer;
}

struct FakeDialog : Component<host::MessageDialog> {
  using Component::Component;
  void SetDisplayOptions(std::int32_t first, std::int32_t second) override { ready = first == 1 && second == 1; }
  host::Answer Show(base::MessageId id, const std::string& text1, const std::string& text2,
                    const std::string& text3) override {
    if (Fails(__func__, NumberOf(id)) || !ready) return host::Answer::NotShown;
    return tools.person.AtMessage({id, text1, text2, text3});
  }
  bool ready = false;
};

struct FakeLog : Component<host::LogWriter> {
  using Component::Component;
  void SetFilePath(const std::string& given) override { path = given; }
  void SetMode(std::int32_t mode) override { ready = mode == 1; }
  base::Outcome WriteLine(const std::string& line) override {
    if (Fails(__func__, line)) return InjectedFault(path);
    return ready && Append(line) ? base::Outcome() : base::Failure(path + ": not written");
  }
  bool Append(const std::string& line) {
    constexpr std::size_t kStampAndTag = 21 + 15;
    tools.state.logLines.push_back(line.size() > kStampAndTag ? line.substr(kStampAndTag) : line);
    const auto file = tools.disk.OpenEnd(path);
    return file && tools.disk.Append(path, *file, ToCodePage(line) + "\r\n");
  }
  std::string path;
  bool ready = false;
};

struct FakeRecorder : Component<host::OperationRecorder> {
  using Component::Component;
  base::Outcome Record(const std::string& hostName, const std::string& userId, const std::string& program,
                       const std::string& screen, const std::string& action) override {
    const bool fails = Fails(__func__, action);
    if (!fails) tools.state.operations.push_back(hostName + "|" + userId + "|" + program + "|" + screen + "|" + action);
    return Answer(fails, __func__);
  }
};

struct FakeAudit : Component<host::AuditTrail> {
  using Component::Component;
  base::Outcome RecordSignInOut(const std::string& userId, const std::string& word, const std::string& title) override {
    return Add(__func__, userId, word, title);
  }
  base::Outcome RecordCategoryPhase(const std::string& userId, const std::string& word,
                                    const std::string& category) override {
    return Add(__func__, userId, word, category);
  }
  base::Outcome Add(const char* method, const std::string& userId, const std::string& word, const std::string& what) {
    const bool fails = Fails(method, word);
    const std::string& refusal = tools.state.auditRefusal;
    if (!fails && refusal.empty()) tools.state.auditRecords.push_back(userId + "|" + word + "|" + what);
    return Answer(fails, method, refusal);
  }
};

struct FakeUsers : Component<host::UserQuery> {
  using Component::Component;
  base::Outcome Execute(const std::string& statement) override {
    tools.state.statements.push_back(statement);
    values.clear();
    const bool fails = Fails(__func__, statement);
    return Answer(fails, __func__, fails || Run(statement) ? "" : "bad syntax");
  }
  std::int32_t RowCount() override { return Fails(__func__) ? 0 : static_cast<std::int32_t>(values.size()); }
  std::optional<std::string> Value(std::int32_t row, std::int32_t column) override {
    const auto place = static_cast<std::size_t>(row);
    if (Fails(__func__) || place >= values.size() || column != 0) return std::nullopt;
    return values[place];
  }
  bool Run(const std::string& statement) {
    const std::string byName = "SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'";
    const bool all = statement == "SELECT DISP_NAME FROM V_MUSER ORDER BY USER_ORDER_NO";
    // A quote inside the name ends the literal early: the database then reports bad syntax.
    if (!all && (!statement.starts_with(byName) || statement.find('\'', byName.size()) + 1 != statement.size()))
      return false;
    for (const HostUser& user : tools.state.users) {
      if (all) values.push_back(user.displayName);
      if (!all && statement == byName + user.displayName + "'") values.push_back(user.id);
    }
    return true;
  }
  std::vector<std::string> values;
};

struct FakeLogin : Component<host::UserAuthenticator> {
  using Component::Component;
  std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& userKind) override {
    if (Fails(__func__, userId)) return -1;
    if (tools.state.verifyFault != 0) return tools.state.verifyFault;
    const auto user = Find(userId);
    if (user == tools.state.users.end()) return 1;
    if (user->password != password) return 2;
    userKind = user->kind;
    return 0;
  }
  base::Outcome CheckFunction(const std::string& userId, std::int32_t functionCode, bool& granted) override {
    const bool fails = Fails(__func__, std::to_string(functionCode));
    const auto user = Find(userId);
    granted = !fails && user != tools.state.users.end() && user->functions.contains(functionCode);
    return Answer(fails, __func__);
  }
  std::vector<HostUser>::const_iterator Find(const std::string& id) const {
    return std::ranges::find(tools.state.users, id, &HostUser::id);
  }
};

struct FakeMedia : Component<host::MediaComponent> {
  using Component::Component;
  host::DriveStatus GetDriveStatus(const std::string& path) override {
    if (Fails(__func__, path) || !setUp || path.empty()) return host::DriveStatus::Error;
    auto& answers = tools.state.mediaStatuses[path[0]];
    if (!answers.empty()) return Next(answers);
    const Drive* drive = tools.disk.FindDrive(path.substr(0, 1) + ":");
    if (drive == nullptr) return host::DriveStatus::Error;
    return drive->ready ? host::DriveStatus::Ready : host::DriveStatus::NoMedium;
  }
  base::Outcome PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
                             std::int32_t option2) override {
    if (Fails(__func__, drive)) return InjectedFault(drive);
    tools.state.preparedDrives.push_back(drive);
    const bool asAgreed = workDrive == "C:\\" && option1 == 0 && option2 == 0;
    return Answer(false, __func__, asAgreed ? tools.state.prepareRefusal : "wrong arguments");
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
    if (Fails(method, source) || destination.empty()) return -1;
    const std::string listed = tools.disk.Read(list);
    for (const auto& file : tools.disk.Children(source))
      if (IsReadable(*file) && listed.find(file->name) == std::string::npos)
        tools.disk.Write(destination + "\\" + file->name, file->bytes);
    return tools.state.filterAnswers.empty() ? 0 : Next(tools.state.filterAnswers);
  }
  std::string list;
  std::string source;
  std::string destination;
};

struct FakeStudies : Component<host::StudyDatabaseQuery> {
  using Component::Component;
  base::Outcome OpenQuery(const std::string& statement) override {
    tools.state.statements.push_back(statement);
    answer = {{}, "unknown statement"};
    for (const auto& [head, known] : tools.state.studies)
      if (statement.starts_with(head)) answer = known;
    return Answer(Fails(__func__, statement), __func__, answer.refusal);
  }
  base::Outcome RecordCount(std::int32_t& count) override {
    base::Outcome counted = Answer(Fails(__func__), __func__, answer.refusal);
    count = counted.IsDone() ? static_cast<std::int32_t>(answer.rows.size()) : 0;
    return counted;
  }
  base::Outcome FieldValue(std::int32_t row, std::int32_t column, std::string& value) override {
    const auto r = static_cast<std::size_t>(row);
    const auto c = static_cast<std::size_t>(column);
    const bool there = r < answer.rows.size() && c < answer.rows[r].size();
    base::Outcome read = Answer(Fails(__func__), __func__, there ? "" : "no such field");
    value = read.IsDone() ? answer.rows[r][c] : "";
    return read;
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
  /// The contract's name is that of the factory's method behind "Create".
  template <class Made>
  std::unique_ptr<Made> Make(const char* method) {
    constexpr std::size_t kCreate = 6;
    const bool fails = tools_.calls.Fails("ComponentFactory", method);
    return fails ? nullptr : std::make_unique<Made>(tools_, method + kCreate);
  }

  ComponentTools tools_;
};

}  // namespace fakes
