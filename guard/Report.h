// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_REPORT_H_
#define GUARD_REPORT_H_

#include <string>

namespace chartbridge {

/// Asks for the counts at the end of the JVM or of the process, whichever comes first: into `file`,
/// or to standard error when it is empty. Later calls change the place.
void ReportAtEnd(const std::string& file);

/// Writes the report if it was asked for and has not been written yet.
void WriteReport();

}  // namespace chartbridge

#endif  // GUARD_REPORT_H_
