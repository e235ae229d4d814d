// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DUMPFOLDER_H_
#define APP_DUMPFOLDER_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "app/ScratchFolder.h"

namespace chartbridge {

/// The folder that the library writes its Java exception records to, for the length of this run.
///
/// A render operation says only that it failed; why is in the record. Where the user set
/// `DumpChartTimePath`, the records go there and stay there. Else a private folder is made, the
/// variable set to it, and both taken back at the end.
///
/// Construct it before the first library operation, one at a time: it changes the environment.
class DumpFolder {
 public:
  DumpFolder();
  ~DumpFolder();

  DumpFolder(const DumpFolder&) = delete;
  DumpFolder& operator=(const DumpFolder&) = delete;

  /// What was added to the dump files since the construction, in UTF-8; empty when
  /// nothing was.
  std::string NewRecords() const;

  /// What can be said about a failed operation that left no record.
  std::string WhyEmpty() const;

 private:
  std::map<std::string, std::uintmax_t> Sizes() const;

  std::string _folder;
  bool _isPrivate = false;
  std::optional<ScratchFolder> _private;
  std::map<std::string, std::uintmax_t> _sizesBefore;
};

}  // namespace chartbridge

#endif  // APP_DUMPFOLDER_H_
