// SPDX-License-Identifier: Apache-2.0
#ifndef TREE_JTREEIMAGER_H_
#define TREE_JTREEIMAGER_H_

#include <jni.h>

#include <map>
#include <string>
#include <vector>

#include "bridge/JAccessor.h"

/// The binding to one Java object of com.tesk.treemodeleditor.TreeImager, the headless renderer.
///
/// Each Java method is called by the method of its own name. No method locks, attaches or guards
/// the floating-point environment: `TreeEditor` has done all that.
class JTreeImager : public JAccessor {
 public:
  /// Finds the Java class and makes its object. A failure is recorded and leaves the object null.
  explicit JTreeImager(JNIEnv* threadEnv);
  ~JTreeImager() override;

  JTreeImager(const JTreeImager&) = delete;
  JTreeImager& operator=(const JTreeImager&) = delete;

  bool renderToFile(const std::string& model, const std::string& display,
                    const unsigned short* path, int pathLength, int imageType, bool flag);
  /// True when both numbers are greater than 0. They are written whenever Java returns at least
  /// two.
  bool calculateSizeArray(const std::string& model, const std::string& display, long& width,
                          long& height);
  /// `path` and `flag` do not reach Java. True when `image` is not empty afterwards; `size` is
  /// written only when Java returns an array, and `image` only when it also gives its bytes.
  bool renderToMemory(const std::string& model, const std::string& display,
                      const unsigned short* path, unsigned int& size, int imageType, bool flag,
                      std::string& image);
  void setSchemaPath(const unsigned short* path, int pathLength);
  /// Adds Java's pictures to the maps; what they hold already stays. True when `images` is not
  /// empty afterwards. Throws `std::logic_error` for a picture whose name has no bytes, and for one
  /// whose bytes Java has and does not give; its size has been added then.
  bool renderModelToMemory(const std::string& doc1, const std::string& doc2,
                           const std::string& doc3, const std::string& doc4,
                           const unsigned short* text1, int text1Length, int imageType, int extra,
                           std::map<std::string, unsigned int>& sizes,
                           std::map<std::string, std::string>& images);
  /// Adds the file names that Java returns, in UTF-8. True when Java returned an array.
  bool renderModelToFiles(const std::string& doc1, const std::string& doc2, const std::string& doc3,
                          const std::string& doc4, const unsigned short* text1, int text1Length,
                          const unsigned short* text2, int text2Length, int imageType, int extra,
                          std::vector<std::string>& files);

  // What an interactive rendering is given. Nothing is copied but the lists, and nothing reads it
  // back: what the pointers point to is gone when the operation that set them returns.
  JTreeImager& setModel(const std::string* model);
  JTreeImager& setFirstTexts(const std::vector<const unsigned short*>& texts,
                             const std::vector<int>& lengths);
  JTreeImager& setSecondTexts(const std::vector<const unsigned short*>& texts,
                              const std::vector<int>& lengths);
  JTreeImager& setText1(const unsigned short* text, long length);
  JTreeImager& setText2(const unsigned short* text, long length);
  JTreeImager& setImageType(long type);
  JTreeImager& setExtra(long value);
  /// Renders nothing: runs the exception check and answers false. Java has no such method.
  bool renderInteractiveToFile(std::vector<std::string>& files);

 private:
  bool readPictures(jobject map, std::map<std::string, unsigned int>& sizes,
                    std::map<std::string, std::string>& images);
  bool readKey(jobject entry, jmethodID getKey, jbyteArray& keyBytes, std::string& key);

  std::vector<const unsigned short*> firstTexts;
  std::vector<int> firstLengths;
  std::vector<const unsigned short*> secondTexts;
  std::vector<int> secondLengths;
  const std::string* modelRef;
  const unsigned short* text1;
  long text1Length;
  const unsigned short* text2;
  long text2Length;
  long imageType;
  long extra;
};

#endif  // TREE_JTREEIMAGER_H_
