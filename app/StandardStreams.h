// SPDX-License-Identifier: Apache-2.0
#ifndef APP_STANDARDSTREAMS_H_
#define APP_STANDARDSTREAMS_H_

namespace chartbridge {

/// Opens /dev/null in place of each of standard input, output and error that the caller has closed.
/// The next file that anything opens would take its number: messages would end up in a picture, and
/// a chart would be read from a log. First thing in the process.
///
/// Reading standard input and writing standard output fail afterwards as they would on a closed
/// one; messages go nowhere.
///
/// @return false when that is impossible; errno says why
bool OccupyClosedStandardStreams();

/// Throws `Failure` when standard input cannot be read because the caller has closed it, or has
/// opened it for writing only.
void CheckStandardInputIsOpen();

/// Throws `Failure` when nothing can be written to standard output because the caller has closed
/// it, or has opened it for reading only.
void CheckStandardOutputIsOpen();

}  // namespace chartbridge

#endif  // APP_STANDARDSTREAMS_H_
