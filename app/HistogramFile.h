// SPDX-License-Identifier: Apache-2.0
#ifndef APP_HISTOGRAMFILE_H_
#define APP_HISTOGRAMFILE_H_

#include <string>
#include <vector>

#include "app/HistogramBins.h"

namespace chartbridge {

class InputFile;

/// The numbers of a text file, one a line; blank lines do not count. Throws `Failure` with the line
/// of anything else, and for a file without numbers.
std::vector<double> ReadValues(const InputFile& file);

/// A counted histogram in JSON, `{"edges": [0, 5, 10], "heights": [12, 7]}`. Throws `Failure` with
/// what is wrong; that the numbers make a histogram is checked when it is embedded.
HistogramBins ReadBins(const InputFile& file);

}  // namespace chartbridge

#endif  // APP_HISTOGRAMFILE_H_
