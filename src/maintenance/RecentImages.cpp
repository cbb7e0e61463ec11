// Collects the images of recent studies.
#include "maintenance/RecentImages.h"

#include "app/External.h"
#include "app/Messages.h"
#include "app/WindowsPath.h"
#include "backup/Programs.h"

namespace maintenance {
namespace {

constexpr char kCategory[] = "images";

/// The files' paths stand in the database behind seven characters, "file://".
std::string Statement(std::int32_t days) {
  return "SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON "
         "T_TSTUDY.STUDY_SEQ = T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day," +
         std::to_string(-std::int64_t{days}) + ",GETDATE())";
}

/// `text` with every `from`, letter case included, replaced by `to`.
std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  if (from.empty()) return text;
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

void CopyImage(app::Application& application, const std::string& source, const std::string& target) {
  const bool copied = target != source &&  // outside the image folder
                      EnsureFolder(application, app::FolderOf(target)) == app::kDone &&
                      application.host.files.CopyTo(source, target) == 0;
  if (!copied) backup::WarnOfLoss(application, "Not copied: " + source, kCategory);
}

}  // namespace

void CopyRecentImages(app::Application& application, const std::string& stagingFolder) {
  std::string images;
  if (app::GetPathEntry(application, "Image", images) != app::kDone) {
    app::ShowMessage(application, app::kPathEntryUnreadable);
    return;
  }
  images = app::WithoutTrailingBackslash(app::Trim(images));
  const std::string destination = stagingFolder + app::FileNameOf(images);
  EnsureFolder(application, destination);

  std::int32_t error = -1;
  std::int32_t count = 0;
  const auto query = application.host.components.CreateStudyDatabaseQuery();
  if (query) {
    query->OpenQuery(Statement(application.state.ImageRangeDays), error);
    if (error == 0) count = query->RecordCount(error);
  }
  if (error != 0) backup::WarnOfLoss(application, "The list of recent images cannot be read", kCategory);
  for (std::int32_t row = 0; row < count; ++row) {
    const std::string source = query->FieldValue(row, 0, error);
    if (error != 0) backup::WarnOfLoss(application, "A row of the list of recent images cannot be read", kCategory);
    const bool onThisComputer = !source.starts_with("\\\\");
    if (error == 0 && onThisComputer) CopyImage(application, source, Replaced(source, images, destination));
    application.host.messageLoop.Yield();
  }
}

app::ResultCode EnsureFolder(app::Application& application, const std::string& path) {
  const std::string folder = app::WithoutTrailingBackslash(path);
  if (folder.empty() || application.host.files.FolderExists(folder)) return app::kDone;
  if (EnsureFolder(application, app::FolderOf(folder)) != app::kDone) return app::kFailed;
  return application.host.files.MakeFolder(folder) == 0 ? app::kDone : app::kFailed;
}

}  // namespace maintenance
