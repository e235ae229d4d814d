// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "app/Failure.h"
#include "app/OutputFile.h"
#include "app/StandardStreams.h"

namespace chartbridge {

namespace {

constexpr const char* kName = "standard output";

}  // namespace

DoctorOutput::DoctorOutput() {
  CheckStandardOutputIsOpen();
  _descriptor = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (_descriptor < 0) throw Failure(std::string(kName) + ": " + std::strerror(errno));
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

DoctorOutput::~DoctorOutput() {
  dup2(_descriptor, STDOUT_FILENO);
  close(_descriptor);
}

void DoctorOutput::Write(const std::string& text) const { WriteAll(_descriptor, text, kName); }

}  // namespace chartbridge
