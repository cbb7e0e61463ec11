// One small class per host component: each method is one late-bound call.
#include "windows/adapters/Components.h"

#include "windows/adapters/Dispatch.h"

namespace windows {
namespace {

/// Stands for an answer that could not be had.
constexpr std::int32_t kFault = -1;

/// What all adapters share: the component they hold.
template <typename Contract>
class Component : public Contract {
 public:
  explicit Component(Dispatch component) : component_(std::move(component)) {}

 protected:
  Dispatch component_;
};

/// Keeps the window in front enabled while a message is over it: when that closes, Windows activates another program's
/// window where this one is disabled. The host's message takes all input meanwhile, and a disabled form takes none.
class EnabledFront {
 public:
  explicit EnabledFront(HWND front) : front_(front), wasEnabled_(EnableWindow(front, TRUE) == FALSE) {}
  ~EnabledFront() {
    if (!wasEnabled_) EnableWindow(front_, FALSE);
  }
  EnabledFront(const EnabledFront&) = delete;
  EnabledFront& operator=(const EnabledFront&) = delete;

 private:
  HWND front_;
  bool wasEnabled_;
};

class MessageDialog : public Component<host::MessageDialog> {
 public:
  MessageDialog(Dispatch component, Win32MessageLoop* loop) : Component(std::move(component)), loop_(loop) {}
  void SetDisplayOptions(std::int32_t first, std::int32_t second) override {
    component_.Prepare(L"DisplayOption1", first);
    component_.Prepare(L"DisplayOption2", second);
  }
  host::Answer Show(base::MessageId id, const std::string& text1, const std::string& text2,
                    const std::string& text3) override {
    constexpr auto kNotShown = static_cast<std::int32_t>(host::Answer::NotShown);
    if (loop_ != nullptr) loop_->ServeWithoutInput();
    const EnabledFront front(loop_ == nullptr ? nullptr : loop_->FrontWindow());
    return host::Answer{
        component_.CallNumber(kNotShown, L"ShowMessage", static_cast<std::int32_t>(id), text1, text2, text3)};
  }

 private:
  Win32MessageLoop* loop_;
};

// What the log and the operation records answer has no agreed meaning but one: -1 is a fault.

class LogWriter : public Component<host::LogWriter> {
 public:
  using Component::Component;
  void SetFilePath(const std::string& path) override { component_.Prepare(L"FilePath", path); }
  void SetMode(std::int32_t mode) override { component_.Prepare(L"Mode", mode); }
  base::Outcome WriteLine(const std::string& line) override {
    return component_.CallChecked(FailsAt::MinusOne, L"WriteLine", line);
  }
};

class OperationRecorder : public Component<host::OperationRecorder> {
 public:
  using Component::Component;
  base::Outcome Record(const std::string& hostName, const std::string& userId, const std::string& program,
                       const std::string& screen, const std::string& action) override {
    return component_.CallChecked(FailsAt::MinusOne, L"Record", hostName, userId, program, screen, action);
  }
};

class AuditTrail : public Component<host::AuditTrail> {
 public:
  using Component::Component;
  base::Outcome RecordSignInOut(const std::string& userId, const std::string& word,
                                const std::string& programTitle) override {
    return component_.CallChecked(FailsAt::AnyButZero, L"RecordSignInOut", userId, word, programTitle);
  }
  base::Outcome RecordCategoryPhase(const std::string& userId, const std::string& phaseWord,
                                    const std::string& categoryName) override {
    return component_.CallChecked(FailsAt::AnyButZero, L"RecordCategoryPhase", userId, phaseWord, categoryName);
  }
};

class UserQuery : public Component<host::UserQuery> {
 public:
  using Component::Component;
  base::Outcome Execute(const std::string& statement) override {
    return component_.CallWithStatus(L"Execute", statement);
  }
  std::int32_t RowCount() override { return component_.CallNumber(0, L"RowCount"); }
  std::optional<std::string> Value(std::int32_t row, std::int32_t column) override {
    std::string value;
    const bool read = component_.CallWithStatus(L"Value", row, column, OutText{value}).IsDone();
    return read ? std::optional(value) : std::nullopt;
  }
};

class UserAuthenticator : public Component<host::UserAuthenticator> {
 public:
  using Component::Component;
  std::int32_t Verify(const std::string& userId, const std::string& password, std::int32_t& userKind) override {
    return component_.CallNumber(kFault, L"Verify", userId, Secret{password}, OutNumber{userKind});
  }
  base::Outcome CheckFunction(const std::string& userId, std::int32_t functionCode, bool& granted) override {
    std::int32_t denied = kFault;  // 0 would grant: a component that fails must not
    base::Outcome asked =
        component_.CallChecked(FailsAt::MinusOne, L"CheckFunction", userId, functionCode, OutNumber{denied});
    granted = asked.IsDone() && denied == 0;
    return asked;
  }
};

class MediaComponent : public Component<host::MediaComponent> {
 public:
  using Component::Component;
  host::DriveStatus GetDriveStatus(const std::string& driveOrFolder) override {
    constexpr auto kError = static_cast<std::int32_t>(host::DriveStatus::Error);
    return host::DriveStatus{component_.CallNumber(kError, L"GetDriveStatus", driveOrFolder)};
  }
  base::Outcome PrepareDrive(const std::string& drive, const std::string& workDrive, std::int32_t option1,
                             std::int32_t option2) override {
    return component_.CallChecked(FailsAt::AnyButZero, L"PrepareDrive", drive, workDrive, option1, option2);
  }
  void SetUp(const std::string& programCommand) override { component_.Tell(L"SetUp", programCommand); }
};

class PersonalInfoFilter : public Component<host::PersonalInfoFilter> {
 public:
  using Component::Component;
  void SetListDatabase(const std::string& path) override { component_.Prepare(L"ListDatabase", path); }
  void SetSource(const std::string& path) override { component_.Prepare(L"Source", path); }
  void SetDestination(const std::string& folder) override { component_.Prepare(L"Destination", folder); }
  std::int32_t FilterImages() override { return component_.CallNumber(kFault, L"FilterImages"); }
  std::int32_t FilterFiles() override { return component_.CallNumber(kFault, L"FilterFiles"); }
};

class StudyDatabaseQuery : public Component<host::StudyDatabaseQuery> {
 public:
  using Component::Component;
  base::Outcome OpenQuery(const std::string& statement) override {
    return component_.CallWithStatus(L"OpenQuery", statement);
  }
  base::Outcome RecordCount(std::int32_t& count) override {
    Variant result;
    base::Outcome counted = component_.GetWithStatus(L"RecordCount", result);
    count = 0;
    result.ToNumber(count);
    return counted;
  }
  base::Outcome FieldValue(std::int32_t row, std::int32_t column, std::string& value) override {
    Variant result;
    base::Outcome read = component_.GetWithStatus(L"FieldValue", result, row, column);
    value.clear();
    const bool isText = result.IsNull() || result.ToText(value);
    return read.IsDone() && !isText ? FailedCom(component_.NameOf(L"FieldValue"), DISP_E_TYPEMISMATCH) : read;
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
