// SPDX-License-Identifier: Apache-2.0
#include "app/OutputFile.h"

#include <fcntl.h>
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

namespace chartbridge {

namespace {

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

}  // namespace

OutputFile::OutputFile(const std::string& path, bool binary)
    : _path(path), _name(IsStandardStream(path) ? "standard output" : path) {
  if (IsStandardStream(path)) {
    if (binary && isatty(STDOUT_FILENO) != 0) {
      throw Failure(_name + ": is a terminal; send the picture to a file or a pipe");
    }
    return;
  }
  struct stat status {};
  const bool exists = stat(path.c_str(), &status) == 0;
  if (exists && S_ISDIR(status.st_mode)) FailWith(_name, EISDIR);
  if (exists && !S_ISREG(status.st_mode)) return;

  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(path, error);
  _target = exists && !error ? real.string() : path;
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
    WriteTo(STDOUT_FILENO, content);
    return;
  }
  const int descriptor = open(_path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) FailWith(_name, errno);
  try {
    WriteTo(descriptor, content);
  } catch (const Failure&) {
    close(descriptor);
    throw;
  }
  if (close(descriptor) != 0) FailWith(_name, errno);
}

void OutputFile::WriteTo(int descriptor, const std::string& content) const {
  std::size_t done = 0;
  while (done < content.size()) {
    const ssize_t count = write(descriptor, content.data() + done, content.size() - done);
    if (count >= 0) {
      done += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      FailWith(_name, errno);
    }
  }
}

void OutputFile::Replace(const std::string& content) const {
  PassingFile passing(_target);
  if (passing.Descriptor() < 0) FailWith(_name, errno);
  WriteTo(passing.Descriptor(), content);
  if (fchmod(passing.Descriptor(), NewFileMode()) != 0 || !passing.PutInPlace()) {
    FailWith(_name, errno);
  }
}

}  // namespace chartbridge
