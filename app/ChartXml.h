// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CHARTXML_H_
#define APP_CHARTXML_H_

#include <string>

namespace chartbridge {

/// Whether a chart is chart XML; else it can only be graph language.
bool IsChartXml(const std::string& chart);

/// Puts data into a chart that travels without a data argument: its `<data>` element.
///
/// The CSV reaches whoever reads the chart as it is, but for a byte order mark. Data that the chart
/// already has are replaced, unless the CSV is empty. A document that is not well-formed comes back
/// as it is: the Java classes say what is wrong with it, and where.
///
/// Throws `Failure` when XML cannot hold the data: they are not UTF-8, hold control
/// characters or are too large; and when the chart's encoding is not known here.
///
/// @param xml chart XML of the current version, in UTF-8, UTF-16 or ISO 8859-1
/// @param xmlName what to call the chart in messages
/// @param csv the data, in UTF-8
/// @param csvName what to call the data in messages
/// @return the chart in UTF-8
std::string WithData(const std::string& xml, const std::string& xmlName, const std::string& csv,
                     const std::string& csvName);

}  // namespace chartbridge

#endif  // APP_CHARTXML_H_
