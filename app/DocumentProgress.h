// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCUMENTPROGRESS_H_
#define APP_DOCUMENTPROGRESS_H_

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace chartbridge {

/// Says on the terminal that work which takes long goes on, and for how many seconds, in one line
/// that is gone at the end of the scope.
///
/// Nothing appears when the work is short, or when standard error is no terminal.
class DocumentProgress {
 public:
  /// @param work what goes on, such as "report.pdf"
  explicit DocumentProgress(std::string work);
  ~DocumentProgress();

  DocumentProgress(const DocumentProgress&) = delete;
  DocumentProgress& operator=(const DocumentProgress&) = delete;

 private:
  void Tell();

  std::string _work;
  std::mutex _mutex;
  std::condition_variable _ended;
  bool _hasEnded = false;
  std::thread _teller;
};

}  // namespace chartbridge

#endif  // APP_DOCUMENTPROGRESS_H_
