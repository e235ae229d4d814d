// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>

#include "app/Failure.h"

namespace chartbridge {

namespace {

[[noreturn]] void FailWith(int error) {
  throw Failure(std::string("standard output: ") + std::strerror(error));
}

}  // namespace

DoctorOutput::DoctorOutput() : _descriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)) {
  if (_descriptor < 0) FailWith(errno);
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

DoctorOutput::~DoctorOutput() {
  dup2(_descriptor, STDOUT_FILENO);
  close(_descriptor);
}

void DoctorOutput::Write(const std::string& text) const {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t count = write(_descriptor, text.data() + done, text.size() - done);
    if (count >= 0) {
      done += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      FailWith(errno);
    }
  }
}

}  // namespace chartbridge
