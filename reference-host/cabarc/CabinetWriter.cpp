// Writes a cabinet.
//
// All records precede the data and their size is known from the list of files, so the data are written behind the
// space that they need, and the records last. Until then the file cannot be taken for a cabinet.
#include "cabarc/CabinetWriter.h"

#include <libdeflate.h>

#include <algorithm>
#include <unordered_set>

#include "cabarc/Blocks.h"
#include "cabarc/FileAccess.h"
#include "cabarc/MemberNames.h"
#include "cabarc/Progress.h"
#include "unpack/OrderedPool.h"

namespace cabarc {

namespace {

constexpr const char* kTooLarge = "a cabinet cannot be larger than 4 GB";

Status CheckName(const SourceFile& file, std::unordered_set<std::string>& names) {
  if (!IsUtf8(file.name)) return UnsafeName(file.path + ": its name is not UTF-8");
  if (const auto reason = WhyUnsafe(file.name)) {
    return UnsafeName(file.path + ": unsafe name: " + std::string(*reason));
  }
  if (file.name.size() > kMaxNameBytes) return FileError(file.path + ": its name is longer than 255 bytes");
  if (!names.insert(platform::FoldName(file.name)).second) {
    return UnsafeName(file.path + ": there is another file to be named " + file.name);
  }
  return {};
}

std::uint64_t SizeUnpacked(std::uint64_t dataSize) {
  return dataSize + (dataSize + kBlockSize - 1) / kBlockSize * kBlockHeaderSize;
}

class Packing {
 public:
  Packing(Structure& structure, const PackOptions& options, const std::string& path)
      : structure_(structure), method_(options.method), pool_(options.threads), progress_(path) {}

  Status Run(const std::vector<SourceFile>& files, const std::string& path) {
    const platform::Kind kind = platform::KindOf(path);
    if (kind == platform::Kind::Folder || kind == platform::Kind::Other) {
      return FileError(path + ": it is there already, and no file");
    }
    at_ = WriteRecords(structure_).size();
    Status status = cabinet_.Create(path, kArchive);
    if (!status.Failed()) status = cabinet_.Seek(at_);
    for (std::size_t i = 0; i < files.size() && !status.Failed(); ++i) {
      status = Pack(files[i], structure_.members[i].folder);
    }
    if (!status.Failed()) status = WriteRest();
    if (!status.Failed()) status = FinishRecords();
    return status.Failed() ? status : cabinet_.Commit();
  }

 private:
  Status Pack(const SourceFile& source, std::uint16_t folder) {
    platform::File file;
    if (!file.OpenForReading(source.path)) {
      return FileError(source.path + ": it cannot be opened: " + platform::LastError());
    }
    for (std::uint64_t left = source.info.size; left > 0;) {
      if (Status status = PrepareJob(folder); status.Failed()) return status;
      Status status = Fill(*job_, source, file, left);
      if (status.Failed()) return status;
    }
    const std::optional<platform::FileInfo> info = file.Info();
    if (!info || info->size != source.info.size || info->modified != source.info.modified) return Changed(source);
    return {};
  }

  // Reads as much of a file as fits; `left` is what is still to be read.
  Status Fill(PackJob& job, const SourceFile& source, platform::File& file, std::uint64_t& left) {
    const std::size_t room = job.data.size() - job.dataSize;
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, room));
    const std::optional<std::size_t> count = file.Read(job.data.data() + job.dataSize, wanted);
    if (!count) return FileError(source.path + ": it cannot be read: " + platform::LastError());
    if (*count < wanted) return Changed(source);
    job.dataSize += wanted;
    left -= wanted;
    progress_.Add(wanted);
    return {};
  }

  static Status Changed(const SourceFile& source) {
    return FileError(source.path + ": it was changed while it was being packed");
  }

  // Sees to it that there is a job of that folder with room for data.
  Status PrepareJob(std::uint16_t folder) {
    if (job_ && (job_->folder != folder || job_->dataSize == job_->data.size())) SubmitJob();
    if (job_) return {};
    Status status;
    while (!(job_ = pool_.Free()) && !status.Failed()) status = WriteOldest();
    if (!job_) return status;
    job_->method = method_;
    job_->folder = folder;
    job_->dataSize = 0;
    return {};
  }

  void SubmitJob() {
    pool_.Submit();
    job_ = nullptr;
  }

  Status WriteOldest() {
    const PackJob* const job = pool_.Oldest();
    if (!job) return {};
    Folder& folder = structure_.folders[job->folder];
    if (job->failed || folder.blocks + job->blocks > kMaxBlocksPerFolder) {
      return FileError("the data cannot be stored by this method");
    }
    if (at_ + job->packedSize > kMaxCabinetSize) return FileError(kTooLarge);
    if (folder.blocks == 0) folder.dataAt = static_cast<std::uint32_t>(at_);
    folder.blocks = static_cast<std::uint16_t>(folder.blocks + job->blocks);
    folder.crc = libdeflate_crc32(folder.crc, job->packed.data(), job->packedSize);
    at_ += job->packedSize;
    Status status = cabinet_.Write(job->packed.data(), job->packedSize);
    pool_.Release();
    return status;
  }

  Status WriteRest() {
    if (job_) SubmitJob();
    Status status;
    while (pool_.Oldest() && !status.Failed()) status = WriteOldest();
    return status;
  }

  Status FinishRecords() {
    structure_.size = static_cast<std::uint32_t>(at_);
    for (Folder& folder : structure_.folders) {
      if (folder.blocks == 0) folder.dataAt = structure_.size;  // empty files only
    }
    const std::vector<std::uint8_t> bytes = WriteRecords(structure_);
    Status status = cabinet_.Seek(0);
    return status.Failed() ? status : cabinet_.Write(bytes.data(), bytes.size());
  }

  Structure& structure_;
  const Method method_;
  NewFile cabinet_;
  unpack::OrderedPool<PackJob, BlockPacker> pool_;
  PackJob* job_ = nullptr;  // being filled
  std::uint64_t at_ = 0;    // where in the cabinet the next block goes
  Progress progress_;
};

}  // namespace

Status PlanRecords(const std::vector<SourceFile>& files, Method method, Structure& structure) {
  if (files.empty()) return FileError("there is no file to pack");
  if (files.size() > kMaxFiles) return FileError("a cabinet cannot hold more than 65,535 files");
  std::unordered_set<std::string> names;
  std::vector<std::uint64_t> folderSizes = {0};
  for (const SourceFile& file : files) {
    if (Status status = CheckName(file, names); status.Failed()) return status;
    if (file.info.size > kMaxFolderSize) return FileError(file.path + ": it is too large for a cabinet (2 GB)");
    if (folderSizes.back() + file.info.size > kMaxFolderSize) folderSizes.push_back(0);
    structure.members.push_back(
        {file.name, static_cast<std::uint32_t>(file.info.size), static_cast<std::uint32_t>(folderSizes.back()),
         static_cast<std::uint16_t>(folderSizes.size() - 1), file.info.stamp, file.info.attributes});
    folderSizes.back() += file.info.size;
  }
  structure.folders.assign(folderSizes.size(), {0, 0, static_cast<std::uint16_t>(method)});
  std::uint64_t size = WriteRecords(structure).size();
  for (const std::uint64_t folderSize : folderSizes) size += SizeUnpacked(folderSize);
  // What packing gains is not known before; such a cabinet is given up when it becomes too large.
  return method == Method::None && size > kMaxCabinetSize ? FileError(kTooLarge) : Status{};
}

Status WriteCabinet(const std::vector<SourceFile>& files, const std::string& path, const PackOptions& options,
                    std::uint32_t& size) {
  Structure structure;
  Status status = PlanRecords(files, options.method, structure);
  if (!status.Failed()) status = Packing(structure, options, path).Run(files, path);
  size = structure.size;
  return status;
}

}  // namespace cabarc
