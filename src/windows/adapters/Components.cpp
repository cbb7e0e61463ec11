// One small class per host component: each method is one late-bound call.
#include "windows/adapters/Components.h"

#include "app/ResultCodes.h"
#include "windows/adapters/Dispatch.h"
#include "windows/adapters/ProgIds.h"

namespace windows {
namespace {

using app::kFailed;

/// What all adapters share: the component they hold.
template <typename Contract>
class Component : public Contract {
 public:
  explicit Component(Dispatch component) : component_(std::move(component)) {}

 protected:
  Dispatch component_;
};

class MessageDialog : public Component<host::MessageDialog> {
 public:
  MessageDialog(Dispatch component, Win32MessageLoop* loop) : Component(std::move(component)), loop_(loop) {}
  void SetDisplayOptions(std::int32_t first, std::int32_t second) override {
    component_.Put(L"DisplayOption1", first);
    component_.Put(L"DisplayOption2", second);
  }
  std::int32_t Show(std::int32_t id, const std::string& text1, const std::string& text2,
                    const std::string& text3) override {
    if (loop_ != nullptr) loop_->ServeWithoutInput();
    return component_.CallNumber(0, L"ShowMessage", id, text1, text2, text3);
  }

 private:
  Win32MessageLoop* loop_;
};

class LogWriter : public Component<host::LogWriter> {
 public:
  using Component::Component;
  void SetFilePath(const std::string& path) override { component_.Put(L"FilePath", path); }
  void SetMode(std::int32_t mode) override { component_.Put(L"Mode", mode); }
  std::int32_t WriteLine(const std::string& line) override {
    return component_.CallNumber(kFailed, L"WriteLine", line);
  }
};

class OperationRecorder : public Component<host::OperationRecorder> {
 public:
  using Component::Component;
  std::int32_t Record(const std::string& hostName, const std::string& userId, const std::string& program,
                      const std::string& screen, const std::string& action) override {
    return component_.CallNumber(kFailed, L"Record", hostName, userId, program, screen, action);
  }
};

class AuditTrail : public Component<host::AuditTrail> {
 public:
  using Component::Component;
  std::int32_t RecordSignInOut(const std::string& userId, const std::string& word,
                               const std::string& programTitle) override {
    return component_.CallNumber(kFailed, L"RecordSignInOut", userId, word, programTitle);
  }
  std::int32_t RecordCategoryPhase(const std::string& userId, const std::string& phaseWord,
                                   const std::string& categoryName) override {
    return component_.CallNumber(kFailed, L"RecordCategoryPhase", userId, phaseWord, categoryName);
  }
};

class UserQuery : public Component<host::UserQuery> {
 public:
  using Component::Component;
  void Execute(const std::string& statement, std::int32_t& status) override {
    status = kFailed;
    component_.Call(L"Execute", statement, OutNumber{status});
  }
  std::int32_t RowCount() override { return component_.CallNumber(0, L"RowCount"); }
  std::string Value(std::int32_t row, std::int32_t column, std::int32_t& status) override {
    status = kFailed;
    std::string value;
    component_.Call(L"Value", row, column, OutText{value}, OutNumber{status});
    return value;
  }
};

class UserAuthenticator : public Component<host::UserAuthenticator> {
 public:
  using Component::Component;
  std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& userKind) override {
    return component_.CallNumber(kFailed, L"Verify", userId, Secret{password}, OutNumber{userKind});
  }
  std::int32_t CheckFunction(const std::string& userId, std::int32_t functionCode, std::int32_t& granted) override {
    granted = kFailed;  // 0 would grant: a component that fails must not
    return component_.CallNumber(kFailed, L"CheckFunction", userId, functionCode, OutNumber{granted});
  }
};

class MediaComponent : public Component<host::MediaComponent> {
 public:
  using Component::Component;
  std::int32_t GetDriveStatus(const std::string& driveOrFolder) override {
    return component_.CallNumber(kFailed, L"GetDriveStatus", driveOrFolder);
  }
  std::int32_t PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
                            std::int32_t option2) override {
    return component_.CallNumber(kFailed, L"PrepareDrive", drive, workDrive, option1, option2);
  }
  void SetUp(const std::string& programCommand) override { component_.Call(L"SetUp", programCommand); }
};

class PersonalInfoFilter : public Component<host::PersonalInfoFilter> {
 public:
  using Component::Component;
  void SetListDatabase(const std::string& path) override { component_.Put(L"ListDatabase", path); }
  void SetSource(const std::string& path) override { component_.Put(L"Source", path); }
  void SetDestination(const std::string& folder) override { component_.Put(L"Destination", folder); }
  std::int32_t FilterImages() override { return component_.CallNumber(kFailed, L"FilterImages"); }
  std::int32_t FilterFiles() override { return component_.CallNumber(kFailed, L"FilterFiles"); }
};

class StudyDatabaseQuery : public Component<host::StudyDatabaseQuery> {
 public:
  using Component::Component;
  void OpenQuery(const std::string& statement, std::int32_t& error) override {
    error = kFailed;
    component_.Call(L"OpenQuery", statement, OutNumber{error});
  }
  std::int32_t RecordCount(std::int32_t& error) override {
    error = kFailed;
    return component_.CallNumber(0, L"RecordCount", OutNumber{error});
  }
  std::string FieldValue(std::int32_t row, std::int32_t column, std::int32_t& error) override {
    error = kFailed;
    Variant result;
    std::string value;
    if (SUCCEEDED(component_.Get(L"FieldValue", result, row, column, OutNumber{error})) && !result.IsNull() &&
        !result.ToText(value)) {
      error = kFailed;
    }
    return value;
  }
};

template <typename Adapter, typename... Others>
std::unique_ptr<Adapter> Create(const wchar_t* progId, Others... others) {
  Dispatch component(progId);
  return component ? std::make_unique<Adapter>(std::move(component), others...) : nullptr;
}

}  // namespace

std::unique_ptr<host::MessageDialog> ComComponentFactory::CreateMessageDialog() {
  return Create<MessageDialog>(kMessageDialogProgId, loop_);
}

std::unique_ptr<host::LogWriter> ComComponentFactory::CreateLogWriter() {
  return Create<LogWriter>(kLogWriterProgId);
}

std::unique_ptr<host::OperationRecorder> ComComponentFactory::CreateOperationRecorder() {
  return Create<OperationRecorder>(kOperationRecorderProgId);
}

std::unique_ptr<host::AuditTrail> ComComponentFactory::CreateAuditTrail() {
  return Create<AuditTrail>(kAuditTrailProgId);
}

std::unique_ptr<host::UserQuery> ComComponentFactory::CreateUserQuery() {
  return Create<UserQuery>(kUserQueryProgId);
}

std::unique_ptr<host::UserAuthenticator> ComComponentFactory::CreateUserAuthenticator() {
  return Create<UserAuthenticator>(kUserAuthenticatorProgId);
}

std::unique_ptr<host::MediaComponent> ComComponentFactory::CreateMediaComponent() {
  return Create<MediaComponent>(kMediaComponentProgId);
}

std::unique_ptr<host::PersonalInfoFilter> ComComponentFactory::CreatePersonalInfoFilter() {
  return Create<PersonalInfoFilter>(kPersonalInfoFilterProgId);
}

std::unique_ptr<host::StudyDatabaseQuery> ComComponentFactory::CreateStudyDatabaseQuery() {
  return Create<StudyDatabaseQuery>(kStudyDatabaseQueryProgId);
}

}  // namespace windows
