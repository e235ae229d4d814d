// SPDX-License-Identifier: Apache-2.0
#include "app/OutputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/SignalCleanup.h"
#include "app/StandardStreams.h"
#include "app/WorkingFolder.h"

namespace chartbridge {

namespace {

// As many as Linux follows.
constexpr int kMostLinks = 40;

std::string FolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

[[noreturn]] void FailWith(const std::string& name, int error) {
  throw Failure(name + ": " + std::strerror(error));
}

/// The permissions that a newly created file gets. The mask can only be read by setting it.
mode_t NewFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return static_cast<mode_t>(0666) & ~mask;
}

/// A file beside another, whose place it is going to take. It goes away with its scope, and with a
/// signal that ends the command.
class PassingFile {
 public:
  explicit PassingFile(const std::string& target) : _target(target) {
    const std::string name = std::filesystem::path(target).filename().string();
    _path = FolderOf(target) + "/." + name + ".XXXXXX";
    const auto lock = SignalCleanup::Lock();
    _descriptor = mkostemp(_path.data(), O_CLOEXEC);
    _isThere = _descriptor >= 0;
    if (_isThere) SignalCleanup::Add(_path);
  }

  ~PassingFile() {
    if (_descriptor >= 0) close(_descriptor);
    const auto lock = SignalCleanup::Lock();
    if (_isThere) unlink(_path.c_str());
    SignalCleanup::Remove(_path);
  }

  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;

  /// Negative when it could not be made; errno says why.
  int Descriptor() const { return _descriptor; }

  /// False when that is impossible; errno says why.
  bool PutInPlace() {
    const int descriptor = std::exchange(_descriptor, -1);
    if (close(descriptor) != 0 || rename(_path.c_str(), _target.c_str()) != 0) return false;
    _isThere = false;
    return true;
  }

 private:
  std::string _target;
  std::string _path;
  int _descriptor;
  bool _isThere;
};

/// Where the symbolic link at the end of a path leads, and the one that it leads to; the path
/// itself where its end is none. The links in front of the end are for the system to follow.
std::string Followed(const std::string& path) {
  std::filesystem::path file(path);
  for (int links = 0; links < kMostLinks; ++links) {
    std::error_code noLink;
    const std::filesystem::path next = std::filesystem::read_symlink(file, noLink);
    if (noLink) return file.string();
    // From the link's own folder, unless it is a full path.
    file = file.parent_path() / next;
  }
  FailWith(path, ELOOP);
}

}  // namespace

void WriteAll(int descriptor, const std::string& content, const std::string& name) {
  std::size_t done = 0;
  while (done < content.size()) {
    const ssize_t count = write(descriptor, content.data() + done, content.size() - done);
    if (count >= 0) {
      done += static_cast<std::size_t>(count);
    } else if (errno == EAGAIN) {
      // Another program has set a pipe that it shares with this one so that it never blocks.
      pollfd ready{descriptor, POLLOUT, 0};
      poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      FailWith(name, errno);
    }
  }
}

OutputFile::OutputFile(const std::string& path, bool binary)
    : _path(path), _name(IsStandardStream(path) ? "standard output" : path) {
  if (IsStandardStream(path)) {
    CheckStandardOutputIsOpen();
    if (binary && isatty(STDOUT_FILENO) != 0) {
      throw Failure(_name + ": is a terminal; send the picture to a file or a pipe");
    }
    return;
  }
  WorkingFolder::Check(path);
  struct stat status {};
  const bool exists = stat(path.c_str(), &status) == 0;
  if (exists && S_ISDIR(status.st_mode)) FailWith(_name, EISDIR);
  if (exists && !S_ISREG(status.st_mode)) return;
  _target = Followed(path);
  CheckFolder();
}

void OutputFile::CheckFolder() const {
  const std::string folder = FolderOf(_target);
  struct stat status {};
  if (stat(folder.c_str(), &status) != 0) {
    throw Failure(_name + ": cannot write there: the folder " + folder +
                  (errno == ENOENT ? std::string(" does not exist")
                                   : std::string(": ") + std::strerror(errno)));
  }
  if (!S_ISDIR(status.st_mode)) {
    throw Failure(_name + ": cannot write there: " + folder + " is not a folder");
  }
  if (faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
    throw Failure(_name + ": cannot write there: the folder " + folder + ": " +
                  std::strerror(errno));
  }
}

void OutputFile::Write(const std::string& content) const {
  if (IsReplaceable()) {
    Replace(content);
    return;
  }
  if (IsStandardStream(_path)) {
    WriteAll(STDOUT_FILENO, content, _name);
    return;
  }
  const int descriptor = open(_path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) FailWith(_name, errno);
  try {
    WriteAll(descriptor, content, _name);
  } catch (const Failure&) {
    close(descriptor);
    throw;
  }
  if (close(descriptor) != 0) FailWith(_name, errno);
}

void OutputFile::Replace(const std::string& content) const {
  PassingFile passing(_target);
  if (passing.Descriptor() < 0) FailWith(_name, errno);
  WriteAll(passing.Descriptor(), content, _name);
  if (fchmod(passing.Descriptor(), NewFileMode()) != 0 || !passing.PutInPlace()) {
    FailWith(_name, errno);
  }
}

}  // namespace chartbridge
