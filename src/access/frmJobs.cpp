// The past jobs.
#include "access/frmJobs.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/StartUp.h"
#include "base/Path.h"
#include "base/Text.h"

namespace qx::access {
namespace {

using app::MessageId;

constexpr char kLineEnd[] = "\r\n";
constexpr char kPrinted[] = "QXBackupUtility job.txt";
constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";  // by which the program that prints knows the text's encoding

/// The words of the list, and the texts by which the restore dialog calls the same.
constexpr std::array<std::pair<const char*, MessageId>, 8> kData = {{
    {"PatientData", MessageId::RestorePatientCaption},
    {"MenuData", MessageId::RestoreMenuDataCaption},
    {"SystemData", MessageId::RestoreSystemCaption},
    {"UserData", MessageId::RestoreUserCaption},
    {"ExplanationData", MessageId::RestoreExplanationCaption},
    {"ReportSetData", MessageId::RestoreReportSetCaption},
    {"ReportData", MessageId::RestoreReportCaption},
    {"IPCounter", MessageId::RestoreIPCounterCaption},
}};

/// Such as "1:02:03".
std::string FormatDuration(std::uint64_t seconds) {
  const auto whole = static_cast<std::int64_t>(seconds);
  return std::to_string(whole / 3600) + ":" + base::WithLeadingZeros(whole / 60 % 60, 2) + ":" +
         base::WithLeadingZeros(whole % 60, 2);
}

base::Outcome WriteText(host::FileSystem& files, const std::string& path, const std::string& text) {
  const auto file = files.CreateBinary(path);
  if (!file) return file.Why();
  base::Outcome written = file->Write(reinterpret_cast<const std::byte*>(text.data()), text.size());
  return written.IsDone() ? file->Close() : written;
}

}  // namespace

frmJobs::frmJobs(app::Application& application)
    : forms::Form(application.toolkit, "frmJobs", MessageId::JobsTitle), application_(application) {
  lstJobs.Picked = [this] { ShowSummary(); };
  cmdPrint.Clicked = [this](forms::ShiftState) { Print(); };
  cmdClose.Clicked = [this](forms::ShiftState) { Close(); };
  SetDefaultButton(cmdClose);
  SetCancelButton(cmdClose);
}

void frmJobs::OnLoad() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Past Jobs");
  app::PrepareDialog(application_, *this);
  jobs_ = application_.pastJobs.Read();
  std::ranges::reverse(jobs_);
  std::vector<std::string> items;
  for (const app::PastJob& job : jobs_) {
    items.push_back(TimeOf(job) + " - " + KindOf(job) + " - " + ResultOf(job) +
                    (job.folder.empty() ? "" : " - " + job.folder));
  }
  lstJobs.SetItems(std::move(items));
  cmdPrint.SetEnabled(!jobs_.empty());
  application_.toolkit.SetPointer(forms::Pointer::Default);
}

void frmJobs::OnUnload() {
  app::SaveDialogPosition(application_.host.qx32, *this);
}

/// The text of a caption, without the mark of its access key.
std::string frmJobs::Word(MessageId id) const {
  return base::Replaced(application_.messages.GetMessageText(id), "&", "");
}

/// Jobs are called what the main menu calls them.
std::string frmJobs::KindOf(const app::PastJob& job) const {
  switch (job.kind) {
    case app::JobKind::Restore:
      return Word(MessageId::RestoreMenuCaption);
    case app::JobKind::MaintenanceLog:
      return Word(MessageId::MaintenanceMenuCaption);
    case app::JobKind::Backup:
      break;
  }
  return Word(MessageId::BackupMenuCaption);
}

std::string frmJobs::ResultOf(const app::PastJob& job) const {
  if (job.result == base::Result::Done) return Word(MessageId::JobDoneWord);
  return Word(job.result == base::Result::Stopped ? MessageId::JobStoppedWord : MessageId::JobFailedWord);
}

std::string frmJobs::TimeOf(const app::PastJob& job) const {
  host::Clock& clock = application_.host.clock;
  return clock.ShortDate(job.ended) + " " + clock.LongTime(job.ended);
}

std::string frmJobs::DataOf(const app::PastJob& job) const {
  std::string data;
  for (const std::string& word : base::Split(job.categories, ' ')) {
    const auto known = std::ranges::find(kData, word, [](const auto& row) { return std::string(row.first); });
    data += (data.empty() ? "" : ", ") + (known == kData.end() ? word : Word(known->second));
  }
  return data;
}

std::string frmJobs::SummaryOf(const app::PastJob& job) const {
  const std::pair<MessageId, std::string> rows[] = {
      {MessageId::JobResultWord, ResultOf(job)},
      {MessageId::JobWarningsWord, std::to_string(job.warnings)},
      {MessageId::JobMessageWord,
       job.message == MessageId::None ? std::string() : std::to_string(static_cast<std::int32_t>(job.message))},
      {MessageId::JobEndedWord, TimeOf(job)},
      {MessageId::JobDurationWord, FormatDuration(job.seconds)},
      {MessageId::JobUserWord, job.user},
      {MessageId::JobFolderWord, job.folder},
      {MessageId::JobDataWord, DataOf(job)},
      {MessageId::JobFilesWord, std::to_string(job.files)},
      {MessageId::JobSizeWord, base::FormatSize(job.bytes)},
  };
  std::string text = KindOf(job) + kLineEnd;
  for (const auto& [word, value] : rows) {
    if (!value.empty()) text += Word(word) + ": " + value + kLineEnd;
  }
  return text;
}

void frmJobs::ShowSummary() {
  const std::size_t picked = lstJobs.PickedItem();
  txtSummary.SetText(picked < jobs_.size() ? SummaryOf(jobs_[picked]) : std::string());
}

/// The document stays in the folder for temporary files: whoever prints it may read it late. There is ever one of it.
void frmJobs::Print() {
  const app::State& state = application_.state;
  const std::string path = base::WithTrailingBackslash(application_.host.files.TemporaryFolder()) + kPrinted;
  const std::string text =
      kUtf8Mark + state.ProgramTitle + ", " + state.HostName + kLineEnd + kLineEnd + txtSummary.Text();
  base::Outcome printed = WriteText(application_.host.files, path, text);
  if (printed.IsDone() && !application_.host.shell.PrintDocument(path)) printed = base::Failure(path);
  if (printed.IsDone()) return;
  application_.log.WriteLog(app::LogLevel::Exclamation, "Summary not printed : " + printed.cause);
  app::TellNotOpened(application_.messages, path);
}

}  // namespace qx::access
