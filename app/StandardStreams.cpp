// SPDX-License-Identifier: Apache-2.0
#include "app/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "app/Failure.h"

namespace chartbridge {

namespace {

bool IsClosed(int descriptor) { return fcntl(descriptor, F_GETFD) < 0 && errno == EBADF; }

/// Whether it can be used in one direction, O_RDONLY or O_WRONLY.
bool IsOpenFor(int direction, int descriptor) {
  const int flags = fcntl(descriptor, F_GETFL);
  if (flags < 0) return false;
  const int mode = flags & O_ACCMODE;
  return mode == O_RDWR || mode == direction;
}

}  // namespace

bool OccupyClosedStandardStreams() {
  // Lowest first: a file gets the lowest number that is free.
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    if (!IsClosed(descriptor)) continue;
    // The wrong way round, so that nobody takes an input that is closed for an empty one, or thinks
    // that a result was written.
    const int direction = descriptor == STDOUT_FILENO ? O_RDONLY : O_WRONLY;
    if (open("/dev/null", direction) != descriptor) return false;
  }
  return true;
}

void CheckStandardInputIsOpen() {
  if (IsOpenFor(O_RDONLY, STDIN_FILENO)) return;
  throw Failure("standard input: is not open for reading; give it a file or a pipe");
}

void CheckStandardOutputIsOpen() {
  if (IsOpenFor(O_WRONLY, STDOUT_FILENO)) return;
  throw Failure("standard output: is not open for writing; give it a file or a pipe");
}

}  // namespace chartbridge
