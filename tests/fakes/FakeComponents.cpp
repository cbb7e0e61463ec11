#include "fakes/FakeComponents.h"

#include <algorithm>

#include "fakes/Text.h"

namespace fakes {
namespace {

using Tools = FakeComponents::Tools;

struct WithTools {
  explicit WithTools(Tools& given) : tools(given) {}
  Tools& tools;
};

class FakeMessageDialog : public host::MessageDialog, private WithTools {
 public:
  using WithTools::WithTools;
  void SetDisplayOptions(std::int32_t first, std::int32_t second) override { ready_ = first == 1 && second == 1; }
  std::int32_t Show(std::int32_t id, const std::string& text1, const std::string& text2,
                    const std::string& text3) override {
    if (tools.calls.Fails("MessageDialog", "Show", std::to_string(id)) || !ready_) return 0;
    return tools.person.AtMessage({id, text1, text2, text3});
  }

 private:
  bool ready_ = false;
};

class FakeLogWriter : public host::LogWriter, private WithTools {
 public:
  using WithTools::WithTools;
  void SetFilePath(const std::string& path) override { path_ = path; }
  void SetMode(std::int32_t mode) override { ready_ = mode == 1; }
  std::int32_t WriteLine(const std::string& line) override {
    if (tools.calls.Fails("LogWriter", "WriteLine", line) || !ready_) return -1;
    constexpr std::size_t kStampAndTag = 21 + 15;
    tools.state.logLines.push_back(line.size() > kStampAndTag ? line.substr(kStampAndTag) : line);
    auto file = tools.disk.Find(path_);
    if (!file) file = tools.disk.Create(path_);
    return file && tools.disk.Append(path_, *file, ToCodePage(line) + "\r\n") ? 0 : -1;
  }

 private:
  std::string path_;
  bool ready_ = false;
};

class FakeOperationRecorder : public host::OperationRecorder, private WithTools {
 public:
  using WithTools::WithTools;
  std::int32_t Record(const std::string& hostName, const std::string& userId, const std::string& program,
                      const std::string& screen, const std::string& action) override {
    if (tools.calls.Fails("OperationRecorder", "Record", action)) return -1;
    tools.state.operations.push_back(hostName + "|" + userId + "|" + program + "|" + screen + "|" + action);
    return 0;
  }
};

class FakeAuditTrail : public host::AuditTrail, private WithTools {
 public:
  using WithTools::WithTools;
  std::int32_t RecordSignInOut(const std::string& userId, const std::string& word,
                               const std::string& programTitle) override {
    return Add("RecordSignInOut", userId, word, programTitle);
  }
  std::int32_t RecordCategoryPhase(const std::string& userId, const std::string& phaseWord,
                                   const std::string& categoryName) override {
    return Add("RecordCategoryPhase", userId, phaseWord, categoryName);
  }

 private:
  std::int32_t Add(const char* method, const std::string& userId, const std::string& word, const std::string& what) {
    if (tools.calls.Fails("AuditTrail", method, word)) return -1;
    if (tools.state.auditAnswer == 0) tools.state.auditRecords.push_back(userId + "|" + word + "|" + what);
    return tools.state.auditAnswer;
  }
};

class FakeUserQuery : public host::UserQuery, private WithTools {
 public:
  using WithTools::WithTools;
  void Execute(const std::string& statement, std::int32_t& status) override {
    tools.state.statements.push_back(statement);
    values_.clear();
    status = tools.calls.Fails("UserQuery", "Execute", statement) ? -1 : Run(statement);
  }
  std::int32_t RowCount() override {
    return tools.calls.Fails("UserQuery", "RowCount") ? 0 : static_cast<std::int32_t>(values_.size());
  }
  std::string Value(std::int32_t row, std::int32_t column, std::int32_t& status) override {
    const bool there = row >= 0 && static_cast<std::size_t>(row) < values_.size() && column == 0;
    status = !tools.calls.Fails("UserQuery", "Value") && there ? 0 : -1;
    return status == 0 ? values_[static_cast<std::size_t>(row)] : std::string();
  }

 private:
  std::int32_t Run(const std::string& statement) {
    const std::string byName = "SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'";
    const bool all = statement == "SELECT DISP_NAME FROM V_MUSER ORDER BY USER_ORDER_NO";
    // A quote inside the name ends the literal early: the database then reports bad syntax.
    if (!all && (!statement.starts_with(byName) || statement.find('\'', byName.size()) + 1 != statement.size()))
      return -1;
    for (const HostUser& user : tools.state.users) {
      if (all) values_.push_back(user.displayName);
      if (!all && statement == byName + user.displayName + "'") values_.push_back(user.id);
    }
    return 0;
  }

  std::vector<std::string> values_;
};

class FakeUserAuthenticator : public host::UserAuthenticator, private WithTools {
 public:
  using WithTools::WithTools;
  std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& userKind) override {
    if (tools.calls.Fails("UserAuthenticator", "Verify", userId)) return -1;
    if (tools.state.verifyFault != 0) return tools.state.verifyFault;
    const HostUser* user = Find(userId);
    if (user == nullptr) return 1;
    if (user->password != password) return 2;
    userKind = user->kind;
    return 0;
  }
  std::int32_t CheckFunction(const std::string& userId, std::int32_t functionCode, std::int32_t& granted) override {
    granted = -1;
    if (tools.calls.Fails("UserAuthenticator", "CheckFunction", std::to_string(functionCode))) return -1;
    const HostUser* user = Find(userId);
    if (user != nullptr && user->functions.contains(functionCode)) granted = 0;
    return 0;
  }

 private:
  const HostUser* Find(const std::string& id) const {
    const auto& users = tools.state.users;
    const auto user = std::find_if(users.begin(), users.end(), [&](const HostUser& each) { return each.id == id; });
    return user == users.end() ? nullptr : &*user;
  }
};

class FakeMediaComponent : public host::MediaComponent, private WithTools {
 public:
  using WithTools::WithTools;
  std::int32_t GetDriveStatus(const std::string& driveOrFolder) override {
    if (tools.calls.Fails("MediaComponent", "GetDriveStatus", driveOrFolder) || !setUp_ || driveOrFolder.empty())
      return -1;
    auto& queue = tools.state.mediaStatuses[driveOrFolder[0]];
    if (queue.empty()) return StatusOnDisk(driveOrFolder);
    const std::int32_t status = queue.front();
    queue.pop_front();
    return status;
  }
  std::int32_t PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
                            std::int32_t option2) override {
    if (tools.calls.Fails("MediaComponent", "PrepareDrive", drive)) return -1;
    tools.state.preparedDrives.push_back(drive);
    const bool asAgreed = workDrive == "C:\\" && option1 == 0 && option2 == 0;
    return asAgreed ? tools.state.prepareAnswer : -1;
  }
  void SetUp(const std::string& programCommand) override {
    setUp_ = true;
    tools.state.mediaCommands.push_back(programCommand);
  }

 private:
  std::int32_t StatusOnDisk(const std::string& driveOrFolder) {
    const Drive* drive = tools.disk.FindDrive(driveOrFolder.substr(0, 1) + ":");
    if (drive == nullptr) return -1;
    return !drive->ready ? 1 : drive->writable ? 3 : 2;
  }

  bool setUp_ = false;
};

// Copies the files of a folder but for those whose names a line of the list holds.
class FakePersonalInfoFilter : public host::PersonalInfoFilter, private WithTools {
 public:
  using WithTools::WithTools;
  void SetListDatabase(const std::string& path) override { list_ = path; }
  void SetSource(const std::string& path) override { source_ = list_.empty() ? "" : path; }
  void SetDestination(const std::string& folder) override { destination_ = source_.empty() ? "" : folder; }
  std::int32_t FilterImages() override { return Filter("FilterImages", "images|"); }
  std::int32_t FilterFiles() override { return Filter("FilterFiles", "files|"); }

 private:
  std::int32_t Filter(const char* method, const std::string& kind) {
    tools.state.filterCalls.push_back(kind + source_);
    if (tools.calls.Fails("PersonalInfoFilter", method, source_) || destination_.empty()) return -1;
    const std::string listed = tools.disk.Read(list_);
    for (const auto& file : tools.disk.Children(source_))
      if (!file->isFolder && listed.find(file->name) == std::string::npos)
        tools.disk.Write(destination_ + "\\" + file->name, file->bytes);
    auto& answers = tools.state.filterAnswers;
    if (answers.empty()) return 0;
    const std::int32_t answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::string list_;
  std::string source_;
  std::string destination_;
};

class FakeStudyDatabaseQuery : public host::StudyDatabaseQuery, private WithTools {
 public:
  using WithTools::WithTools;
  void OpenQuery(const std::string& statement, std::int32_t& error) override {
    tools.state.statements.push_back(statement);
    answer_ = {{}, -1};
    for (const auto& [head, answer] : tools.state.studies)
      if (statement.starts_with(head)) answer_ = answer;
    error = tools.calls.Fails("StudyDatabaseQuery", "OpenQuery", statement) ? -1 : answer_.error;
  }
  std::int32_t RecordCount(std::int32_t& error) override {
    error = tools.calls.Fails("StudyDatabaseQuery", "RecordCount") ? -1 : answer_.error;
    return error == 0 ? static_cast<std::int32_t>(answer_.rows.size()) : 0;
  }
  std::string FieldValue(std::int32_t row, std::int32_t column, std::int32_t& error) override {
    const auto r = static_cast<std::size_t>(row);
    const auto c = static_cast<std::size_t>(column);
    const bool there = r < answer_.rows.size() && c < answer_.rows[r].size();
    error = !tools.calls.Fails("StudyDatabaseQuery", "FieldValue") && there ? 0 : -1;
    return error == 0 ? answer_.rows[r][c] : std::string();
  }

 private:
  StudyAnswer answer_;
};

}  // namespace

bool FakeComponents::Logged(const std::string& text) const {
  return std::find(state.logLines.begin(), state.logLines.end(), text) != state.logLines.end();
}

template <class Component>
std::unique_ptr<Component> FakeComponents::Make(const char* method) {
  if (tools_.calls.Fails("ComponentFactory", method)) return nullptr;
  return std::make_unique<Component>(tools_);
}

std::unique_ptr<host::MessageDialog> FakeComponents::CreateMessageDialog() {
  return Make<FakeMessageDialog>("CreateMessageDialog");
}
std::unique_ptr<host::LogWriter> FakeComponents::CreateLogWriter() {
  return Make<FakeLogWriter>("CreateLogWriter");
}
std::unique_ptr<host::OperationRecorder> FakeComponents::CreateOperationRecorder() {
  return Make<FakeOperationRecorder>("CreateOperationRecorder");
}
std::unique_ptr<host::AuditTrail> FakeComponents::CreateAuditTrail() {
  return Make<FakeAuditTrail>("CreateAuditTrail");
}
std::unique_ptr<host::UserQuery> FakeComponents::CreateUserQuery() {
  return Make<FakeUserQuery>("CreateUserQuery");
}
std::unique_ptr<host::UserAuthenticator> FakeComponents::CreateUserAuthenticator() {
  return Make<FakeUserAuthenticator>("CreateUserAuthenticator");
}
std::unique_ptr<host::MediaComponent> FakeComponents::CreateMediaComponent() {
  return Make<FakeMediaComponent>("CreateMediaComponent");
}
std::unique_ptr<host::PersonalInfoFilter> FakeComponents::CreatePersonalInfoFilter() {
  return Make<FakePersonalInfoFilter>("CreatePersonalInfoFilter");
}
std::unique_ptr<host::StudyDatabaseQuery> FakeComponents::CreateStudyDatabaseQuery() {
  return Make<FakeStudyDatabaseQuery>("CreateStudyDatabaseQuery");
}

}  // namespace fakes
