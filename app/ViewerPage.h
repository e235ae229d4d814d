// SPDX-License-Identifier: Apache-2.0
#ifndef APP_VIEWERPAGE_H_
#define APP_VIEWERPAGE_H_

#include <string>

namespace chartbridge {

/// The page of interactive charts, with the scripts that draw them.
class ViewerPage {
 public:
  /// Reads the page of this installation. Throws `Failure` when it has none.
  ViewerPage();

  /// The page with a chart in it. No text of the chart can end the element that it stands in.
  ///
  /// @param chart chart JSON in UTF-8
  /// @param title the title of the page in UTF-8; empty for that of the chart
  std::string With(const std::string& chart, const std::string& title) const;

 private:
  std::string _page;
};

}  // namespace chartbridge

#endif  // APP_VIEWERPAGE_H_
