// SPDX-License-Identifier: Apache-2.0
#ifndef APP_INPUTFILE_H_
#define APP_INPUTFILE_H_

#include <cstddef>
#include <string>

namespace chartbridge {

/// The whole content of a file, or of standard input, in memory that can be handed to Java as it
/// is.
///
/// Regular files are mapped, so that even large data reach Java without a copy; whatever cannot be
/// mapped (standard input, pipes) is read. The content must not change while it is in use.
class InputFile {
 public:
  /// Opens and maps or reads it. Throws `Failure` with the name and the system's reason.
  ///
  /// @param path a path in UTF-8; "-" is standard input
  explicit InputFile(const std::string& path);
  ~InputFile();

  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// What to call it in messages: its path, or "standard input".
  const std::string& Name() const { return _name; }
  /// Never null, also for an empty file.
  const unsigned char* Data() const;
  std::size_t Size() const;
  std::string Text() const;

 private:
  void Load(int descriptor);
  bool Map(int descriptor, std::size_t size);

  std::string _name;
  std::string _read;
  void* _mapped = nullptr;
  std::size_t _mappedSize = 0;
};

/// Whether the path means standard input or output.
bool IsStandardStream(const std::string& path);

}  // namespace chartbridge

#endif  // APP_INPUTFILE_H_
