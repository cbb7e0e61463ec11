// Collects the images of recent studies.
#include "jobs/RecentImages.h"

#include "base/Path.h"
#include "base/Text.h"
#include "work/FileOperations.h"

namespace jobs {
namespace {

constexpr char kCategory[] = "images";

/// The files' paths stand in the database behind seven characters, "file://".
std::string Statement(std::int32_t days) {
  return "SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON "
         "T_TSTUDY.STUDY_SEQ = T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day," +
         std::to_string(-std::int64_t{days}) + ",GETDATE())";
}

void CopyImage(const work::Tools& tools, const std::string& source, const std::string& target) {
  const bool copied = target != source &&  // outside the image folder
                      work::EnsureFolder(tools.files, base::FolderOf(target)).IsDone() &&
                      tools.files.CopyTo(source, target).IsDone();
  if (!copied) tools.log.WarnOfLoss("Not copied: " + source, kCategory);
}

/// How many rows the query has found; none where it cannot be read.
std::int32_t CountRows(host::StudyDatabaseQuery* query, std::int32_t days, app::OperationLog& log) {
  std::int32_t count = 0;
  const bool read =
      query != nullptr && query->OpenQuery(Statement(days)).IsDone() && query->RecordCount(count).IsDone();
  if (!read) log.WarnOfLoss("The list of recent images cannot be read", kCategory);
  return count;
}

}  // namespace

void CopyRecentImages(const work::Tools& tools, const app::PathTable& paths, host::ComponentFactory& components,
                      const std::string& folder, std::int32_t days) {
  std::string images;
  if (!paths.GetPathEntryOrShow("Image", images).IsDone()) {
    return tools.log.WarnOfLoss("No images collected: their folder is unknown", kCategory);
  }
  images = base::WithoutTrailingBackslash(base::Trim(images));
  const std::string destination = folder + base::FileNameOf(images);
  static_cast<void>(work::EnsureFolder(tools.files, destination));  // where it is missing, each copy says so

  const auto query = components.CreateStudyDatabaseQuery();
  const std::int32_t count = CountRows(query.get(), days, tools.log);
  const app::Progress::Part part(tools.progress, app::Work::Gathering, kRecentImages);
  for (std::int32_t row = 0; row < count; ++row) {
    std::string source;
    const bool read = query->FieldValue(row, 0, source).IsDone();
    if (!read) tools.log.WarnOfLoss("A row of the list of recent images cannot be read", kCategory);
    const bool onThisComputer = !source.starts_with("\\\\");
    if (read && onThisComputer) CopyImage(tools, source, base::Replaced(source, images, destination));
    tools.progress.ReachPiece(static_cast<std::uint64_t>(row) + 1, static_cast<std::uint64_t>(count));
    tools.messageLoop.Yield();
  }
}

}  // namespace jobs
