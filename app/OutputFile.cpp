// SPDX-License-Identifier: Apache-2.0
#include "app/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "app/Failure.h"
#include "app/InputFile.h"

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
  const std::string fileName = std::filesystem::path(_target).filename().string();
  std::string beside = FolderOf(_target) + "/." + fileName + ".XXXXXX";
  const int descriptor = mkostemp(beside.data(), O_CLOEXEC);
  if (descriptor < 0) FailWith(_name, errno);
  try {
    WriteTo(descriptor, content);
    if (fchmod(descriptor, NewFileMode()) != 0) FailWith(_name, errno);
  } catch (const Failure&) {
    close(descriptor);
    unlink(beside.c_str());
    throw;
  }
  if (close(descriptor) != 0 || rename(beside.c_str(), _target.c_str()) != 0) {
    const int error = errno;
    unlink(beside.c_str());
    FailWith(_name, error);
  }
}

}  // namespace chartbridge
