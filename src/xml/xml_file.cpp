#include "xml/xml_file.h"

#include "xml/xml_errors.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ostin::xml::detail {

namespace {

class Descriptor {
public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return fd_; }
  void Reset(int fd) {
    Close();
    fd_ = fd;
  }
  int Close() {
    const int result = fd_ >= 0 ? close(fd_) : 0;
    fd_ = -1;
    return result;
  }

private:
  int fd_;
};

// A new file beside the target, removed again unless it has replaced the target.
class TemporaryFile {
public:
  TemporaryFile(const std::string& folder, const std::string& name) : fd_(-1) {
    static std::atomic<unsigned> counter{0};
    for (int attempt = 0; attempt < 100; ++attempt) {
      path_ = folder + "/." + name + "." + std::to_string(getpid()) + "." +
              std::to_string(counter++) + ".tmp";
      const int fd = open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (fd >= 0) {
        fd_.Reset(fd);
        return;
      }
      if (errno != EEXIST) FailForErrno(errno);
    }
    FailForErrno(EEXIST);
  }
  ~TemporaryFile() {
    fd_.Close();
    if (!renamed_) unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void Write(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written = write(fd_.get(), content.data(), content.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) FailForErrno(errno);
      content.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  // Makes the file durable and puts it in the target's place.
  void Replace(const std::string& target) {
    if (fsync(fd_.get()) != 0 || fd_.Close() != 0) FailForErrno(errno);
    if (rename(path_.c_str(), target.c_str()) != 0) FailForErrno(errno);
    renamed_ = true;
  }

  int fd() const { return fd_.get(); }

private:
  std::string path_;
  Descriptor fd_;
  bool renamed_ = false;
};

std::string FolderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string NameOf(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

} // namespace

int ReadWholeFile(const std::string& path, std::string& content) {
  Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.get() < 0) return errno;
  struct stat info {};
  if (fstat(file.get(), &info) != 0) return errno;
  if (S_ISDIR(info.st_mode)) return EISDIR;
  content.clear();
  content.reserve(static_cast<std::size_t>(info.st_size));
  char buffer[1 << 16];
  for (;;) {
    const ssize_t count = read(file.get(), buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    if (count == 0) return 0;
    content.append(buffer, static_cast<std::size_t>(count));
  }
}

void ReplaceFile(const std::string& path, std::string_view content) {
  ReplaceFile(path, [&](const ContentWriter& write) { write(content); });
}

void ReplaceFile(const std::string& path,
                 const std::function<void(const ContentWriter&)>& produce) {
  struct stat target {};
  const bool exists = stat(path.c_str(), &target) == 0;
  if (!exists && errno != ENOENT) FailForErrno(errno);
  // A file with no write bit is read-only for everyone, root included, as on Windows.
  if (exists && (S_ISDIR(target.st_mode) || (target.st_mode & 0222) == 0)) FailForErrno(EACCES);
  if (exists && access(path.c_str(), W_OK) != 0) FailForErrno(errno);
  const std::string folder = FolderOf(path);
  struct stat place {};
  if (stat(folder.c_str(), &place) != 0) FailForErrno(errno);
  if (!S_ISDIR(place.st_mode)) FailForErrno(ENOTDIR);
  TemporaryFile temporary(folder, NameOf(path));
  produce([&](std::string_view piece) { temporary.Write(piece); });
  if (exists) fchmod(temporary.fd(), target.st_mode & 07777);
  temporary.Replace(path);
}

} // namespace ostin::xml::detail
