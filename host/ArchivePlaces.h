// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_ARCHIVEPLACES_H_
#define HOST_ARCHIVEPLACES_H_

#include <string>

namespace chartbridge {

/// Where the class-data-sharing archive of a jar for a JVM is, and where one can be made.
///
/// An archive belongs to one build of a JVM, and to jars at one place, of one size and date. What
/// it was made for is the text of its key. There are two places: beside the jar, made when it was
/// installed, with the key in a file; and the user's cache, where the key makes the file's name.
class ArchivePlaces {
 public:
  /// `jvmLibrary`: the JVM's libjvm. `jar`: the first entry of the class path.
  ArchivePlaces(const std::string& jvmLibrary, const std::string& jar);

  /// An archive that was made for this JVM and jar. Empty: none.
  std::string Find() const;

  /// The file in the user's cache, which may be missing. Empty when the user has no cache, or when
  /// others may write to it. The folder is made when it is missing, within folders of the user.
  std::string InCache() const;

  /// The jar by its real path; empty when it is none that an archive can be made for.
  const std::string& Jar() const { return _jar; }
  /// The list of the classes that an archive of the jar holds.
  const std::string& ClassList() const { return _classList; }
  /// The java command of the JVM.
  const std::string& Java() const { return _java; }

 private:
  void Describe(const std::string& file);
  std::string CacheFile() const;

  std::string _java;
  std::string _jar;
  std::string _classList;
  std::string _beside;
  std::string _key;
};

}  // namespace chartbridge

#endif  // HOST_ARCHIVEPLACES_H_
