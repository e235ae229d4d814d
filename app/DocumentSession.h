// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCUMENTSESSION_H_
#define APP_DOCUMENTSESSION_H_

#include <memory>
#include <string>

#include "app/DumpFolder.h"
#include "app/InputFile.h"
#include "app/JavaMachine.h"
#include "export/ExAccessor.h"

namespace chartbridge {

/// An exporter with one output document in it, for the length of a command.
class DocumentSession {
 public:
  /// Starts Java and its adapter. Throws `Failure` when that is impossible.
  explicit DocumentSession(const JavaOptions& options);

  DocumentSession(const DocumentSession&) = delete;
  DocumentSession& operator=(const DocumentSession&) = delete;

  /// Reads the document. The files that it refers to are those in the folder of `path`; in the
  /// working folder where that is no regular file.
  ///
  /// @return why that is impossible, on one line; empty when the document is there
  std::string Load(const InputFile& input, const std::string& path);

  /// Writes the document to a file. Throws `Failure`.
  ///
  /// @param pictures whether pictures of its charts and trees go into it
  /// @param compressed whether it is compressed
  void Write(const std::string& path, bool pictures, bool compressed);

  /// Runs an export.
  ///
  /// @param request the export request, a JSON object
  /// @return what the exporter says went wrong, empty when nothing; of a check, a line for each
  ///     finding
  std::string Export(const std::string& request);

  /// What the document is called in requests.
  const std::string& Name() const { return _name; }

  /// The reason of a failure that Java did not put into words, with its stack trace.
  [[noreturn]] void FailWithReason() const;

  /// Whether Java threw something since the document was read.
  bool HasNewRecords() const;

 private:
  DumpFolder _dumps;
  JavaMachine _java;
  std::unique_ptr<ExAccessor> _exporter;
  std::string _name;
  std::string _inputName;
  std::size_t _seenRecords = 0;
};

}  // namespace chartbridge

#endif  // APP_DOCUMENTSESSION_H_
