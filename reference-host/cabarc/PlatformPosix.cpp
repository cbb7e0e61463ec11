// The operating system's side of the archiver on POSIX systems.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>
#include <system_error>

#include "cabarc/Platform.h"

namespace cabarc::platform {

const char kSeparator = '/';

namespace {

DosStamp ToStamp(std::time_t seconds) {
  std::tm local{};
  if (!localtime_r(&seconds, &local) || local.tm_year < 80) return {0x21, 0};  // the first day that can be told
  if (local.tm_year > 207) return {0xFF9F, 0xBF7D};                            // and the last second
  return {static_cast<std::uint16_t>((local.tm_year - 80) << 9 | (local.tm_mon + 1) << 5 | local.tm_mday),
          static_cast<std::uint16_t>(local.tm_hour << 11 | local.tm_min << 5 | std::min(local.tm_sec, 59) / 2)};
}

std::optional<std::time_t> FromStamp(DosStamp stamp) {
  std::tm local{};
  local.tm_year = (stamp.date >> 9) + 80;
  local.tm_mon = (stamp.date >> 5 & 15) - 1;
  local.tm_mday = stamp.date & 31;
  local.tm_hour = stamp.time >> 11;
  local.tm_min = stamp.time >> 5 & 63;
  local.tm_sec = (stamp.time & 31) * 2;
  local.tm_isdst = -1;
  if (local.tm_mon < 0 || local.tm_mon > 11 || local.tm_mday < 1 || local.tm_hour > 23 || local.tm_min > 59 ||
      local.tm_sec > 59) {
    return std::nullopt;
  }
  const std::tm asked = local;
  const std::time_t seconds = std::mktime(&local);
  if (local.tm_mon != asked.tm_mon || local.tm_mday != asked.tm_mday) return std::nullopt;  // 31 February
  return seconds;
}

FileInfo ToInfo(const struct stat& status) {
  FileInfo info;
  info.kind = S_ISREG(status.st_mode)   ? Kind::File
              : S_ISDIR(status.st_mode) ? Kind::Folder
              : S_ISLNK(status.st_mode) ? Kind::Link
                                        : Kind::Other;
  info.size = static_cast<std::uint64_t>(status.st_size);
  info.modified = static_cast<std::uint64_t>(status.st_mtim.tv_sec) * 1'000'000'000u +
                  static_cast<std::uint64_t>(status.st_mtim.tv_nsec);
  info.stamp = ToStamp(status.st_mtim.tv_sec);
  info.attributes = (status.st_mode & S_IWUSR) ? kArchive : kArchive | kReadOnly;
  return info;
}

int Descriptor(std::intptr_t handle) {
  return static_cast<int>(handle);
}

bool IsForWriting(std::intptr_t handle) {
  return (::fcntl(Descriptor(handle), F_GETFL) & O_ACCMODE) == O_WRONLY;
}

// The file that is being written; there is never more than one. What a signal's handler may touch is little.
class Unfinished {
 public:
  static void Set(const std::string& path) {
    Forget();
    if (path.size() >= sizeof path_) return;
    path.copy(path_, path.size());
    path_[path.size()] = '\0';
    isSet_ = 1;
  }
  static void Forget() { isSet_ = 0; }

  static void RemoveAndEnd(int number) {
    if (isSet_ != 0) ::unlink(path_);
    std::signal(number, SIG_DFL);
    ::raise(number);
  }

 private:
  static inline volatile std::sig_atomic_t isSet_ = 0;
  static inline char path_[PATH_MAX];
};

}  // namespace

bool File::OpenForReading(const std::string& path) {
  Close();
  handle_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  return IsOpen();
}

bool File::CreateNew(const std::string& path, std::uint8_t attributes) {
  Close();
  const mode_t mode = (attributes & kReadOnly) ? 0444 : 0666;
  handle_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
  if (IsOpen()) Unfinished::Set(path);
  return IsOpen();
}

bool File::IsOpen() const {
  return handle_ >= 0;
}

std::optional<std::size_t> File::Read(void* buffer, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = ::read(Descriptor(handle_), static_cast<char*>(buffer) + done, size - done);
    if (count == 0) break;
    if (count < 0 && errno != EINTR) return std::nullopt;
    if (count > 0) done += static_cast<std::size_t>(count);
  }
  return done;
}

bool File::Write(const void* data, std::size_t size) {
  const char* next = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t count = ::write(Descriptor(handle_), next, size);
    if (count < 0 && errno != EINTR) return false;
    if (count <= 0) continue;
    next += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

bool File::Seek(std::uint64_t position) {
  return ::lseek(Descriptor(handle_), static_cast<off_t>(position), SEEK_SET) >= 0;
}

std::optional<FileInfo> File::Info() const {
  struct stat status {};
  if (::fstat(Descriptor(handle_), &status) != 0) return std::nullopt;
  return ToInfo(status);
}

bool File::SetAttributes(std::uint8_t, DosStamp stamp) {
  // Read-only was given on creation; the other attributes do not exist here.
  const std::optional<std::time_t> seconds = FromStamp(stamp);
  if (!seconds) return true;
  const timespec times[2] = {{0, UTIME_OMIT}, {*seconds, 0}};
  return ::futimens(Descriptor(handle_), times) == 0;
}

bool File::Close() {
  if (IsOpen() && IsForWriting(handle_)) Unfinished::Forget();
  return !IsOpen() || ::close(Descriptor(std::exchange(handle_, -1))) == 0;
}

bool File::CloseAs(const std::string& from, const std::string& to) {
  const bool done = ::close(Descriptor(std::exchange(handle_, -1))) == 0 && Rename(from, to);
  Unfinished::Forget();
  return done;
}

std::vector<std::string> Arguments(int count, char** values) {
  return count > 1 ? std::vector<std::string>(values + 1, values + count) : std::vector<std::string>();
}

bool Print(std::string_view text, bool asError) {
  while (!text.empty()) {
    const ssize_t count = ::write(asError ? STDERR_FILENO : STDOUT_FILENO, text.data(), text.size());
    if (count == 0 || (count < 0 && errno != EINTR)) return false;
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool IsTerminal(bool asError) {
  return ::isatty(asError ? STDERR_FILENO : STDOUT_FILENO) != 0;
}

void RemoveUnfinishedWhenEnded() {
  struct sigaction action {};
  action.sa_handler = Unfinished::RemoveAndEnd;
  for (const int number : {SIGHUP, SIGINT, SIGTERM, SIGXFSZ}) {
    struct sigaction before {};
    if (::sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
      ::sigaction(number, &action, nullptr);
  }
}

std::string ToNative(std::string_view path) {
  std::string native(path);
  std::replace(native.begin(), native.end(), '\\', kSeparator);
  return native;
}

std::string FromCodePage(std::string_view bytes) {
  return FromCodePage1252(bytes);
}

std::string FoldName(std::string_view name) {
  std::string folded(name);
  for (char& character : folded) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
  }
  return folded;
}

FileInfo InfoOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? ToInfo(status) : FileInfo{};
}

bool IsSameFile(const std::string& one, const std::string& other) {
  struct stat first {};
  struct stat second {};
  return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

Kind KindOf(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? ToInfo(status).kind : Kind::Missing;
}

bool ListFolder(const std::string& path, std::vector<FolderEntry>& entries) {
  DIR* const folder = ::opendir(path.c_str());
  if (!folder) return false;
  errno = 0;
  while (const dirent* found = ::readdir(folder)) {
    FolderEntry entry{found->d_name, {}};
    if (entry.name == "." || entry.name == "..") continue;
    struct stat status {};
    if (::fstatat(::dirfd(folder), found->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) break;
    entry.info = ToInfo(status);
    if (entry.info.kind == Kind::Link && ::fstatat(::dirfd(folder), found->d_name, &status, 0) == 0 &&
        S_ISREG(status.st_mode)) {
      entry.info = ToInfo(status);
    }
    errno = 0;
    entries.push_back(std::move(entry));
  }
  const int error = errno;
  ::closedir(folder);
  errno = error;
  return error == 0;
}

bool CreateFolder(const std::string& path) {
  return ::mkdir(path.c_str(), 0777) == 0;
}

bool Remove(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

bool Rename(const std::string& from, const std::string& to) {
  if (KindOf(to) == Kind::Other) {
    errno = EEXIST;
    return false;
  }
  return ::rename(from.c_str(), to.c_str()) == 0;
}

std::string LastError() {
  return std::generic_category().message(errno);
}

unsigned ProcessNumber() {
  return static_cast<unsigned>(::getpid());
}

}  // namespace cabarc::platform
