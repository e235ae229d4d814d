// SPDX-License-Identifier: Apache-2.0
#include "app/InputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "app/Failure.h"
#include "app/StandardStreams.h"
#include "app/WorkingFolder.h"

namespace chartbridge {

namespace {

[[noreturn]] void FailWith(const std::string& name, int error) {
  throw Failure(name + ": " + std::strerror(error));
}

/// A descriptor that is closed at the end of the scope, unless it is standard input.
class Descriptor {
 public:
  explicit Descriptor(const std::string& path)
      : _number(IsStandardStream(path) ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ~Descriptor() {
    if (_number > STDIN_FILENO) close(_number);
  }

  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Number() const { return _number; }

 private:
  int _number;
};

}  // namespace

bool IsStandardStream(const std::string& path) { return path == "-"; }

InputFile::InputFile(const std::string& path)
    : _name(IsStandardStream(path) ? "standard input" : path) {
  if (IsStandardStream(path)) {
    CheckStandardInputIsOpen();
  } else {
    WorkingFolder::Check(path);
  }
  const Descriptor file(path);
  if (file.Number() < 0) FailWith(_name, errno);
  Load(file.Number());
}

InputFile::~InputFile() {
  if (_mapped != nullptr) munmap(_mapped, _mappedSize);
}

void InputFile::Load(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) FailWith(_name, errno);
  if (S_ISDIR(status.st_mode)) FailWith(_name, EISDIR);
  // Standard input may have been read in part already; a map would begin at the start again.
  const bool mappable = S_ISREG(status.st_mode) && descriptor != STDIN_FILENO;
  if (mappable && status.st_size > 0 && Map(descriptor, static_cast<std::size_t>(status.st_size))) {
    return;
  }
  char chunk[1 << 16];
  for (;;) {
    const ssize_t count = read(descriptor, chunk, sizeof chunk);
    if (count == 0) return;
    if (count > 0) {
      _read.append(chunk, static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {
      // Another program has set a pipe that it shares with this one so that it never blocks.
      pollfd ready{descriptor, POLLIN, 0};
      poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      FailWith(_name, errno);
    }
  }
}

bool InputFile::Map(int descriptor, std::size_t size) {
  void* address = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (address == MAP_FAILED) return false;
  _mapped = address;
  _mappedSize = size;
  return true;
}

const unsigned char* InputFile::Data() const {
  if (_mapped != nullptr) return static_cast<const unsigned char*>(_mapped);
  return reinterpret_cast<const unsigned char*>(_read.data());
}

std::size_t InputFile::Size() const { return _mapped != nullptr ? _mappedSize : _read.size(); }

std::string InputFile::Text() const {
  return std::string(reinterpret_cast<const char*>(Data()), Size());
}

}  // namespace chartbridge
