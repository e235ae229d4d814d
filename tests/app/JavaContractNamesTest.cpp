// SPDX-License-Identifier: Apache-2.0
// The table of what the library needs of Java, against the texts in the library's file. What a test
// does not call cannot be seen in a log, but its names are in the file.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "app/JavaContract.h"
#include "chart/ViZEditor.h"

namespace chartbridge {
namespace {

std::string LibraryFile() {
  Dl_info info{};
  dladdr(reinterpret_cast<const void*>(&ViZEditor::GetInstance), &info);
  return info.dli_fname;
}

/// The texts in the library's file that begin with `start` and are wholly of that form.
std::set<std::string> TextsOfForm(const std::string& start, const std::regex& form) {
  constexpr std::size_t kLongest = 200;
  std::ifstream file(LibraryFile(), std::ios::binary);
  const std::string content(std::istreambuf_iterator<char>(file), {});
  std::set<std::string> texts;
  for (std::size_t at = content.find(start); at != std::string::npos;
       at = content.find(start, at + 1)) {
    const std::string piece = content.substr(at, kLongest);
    const std::size_t end = piece.find('\0');
    if (end == std::string::npos) continue;
    const std::string text = piece.substr(0, end);
    if (std::regex_match(text, form)) texts.insert(text);
  }
  return texts;
}

TEST(JavaContractNamesTest, TheLibraryNamesNoOtherClasses) {
  std::set<std::string> expected;
  for (const JavaClass& type : JavaContract()) {
    // The class of the native method is in the name of a function only.
    if (type.methods.front().kind != JavaMethodKind::kNative) expected.insert(type.name);
  }
  EXPECT_EQ(TextsOfForm("com/tesk/", std::regex("com/tesk/[A-Za-z0-9_/]+")), expected);
}

TEST(JavaContractNamesTest, TheLibraryNamesNoOtherSignatures) {
  std::set<std::string> expected = {
      // Exceptions and maps are read through classes of Java's own.
      "()Ljava/lang/Object;",      "()Ljava/util/Set;",        "()Ljava/util/Iterator;",
      "(Ljava/io/OutputStream;)V", "(Ljava/io/PrintStream;)V",
  };
  for (const JavaClass& type : JavaContract()) {
    for (const JavaMethod& method : type.methods) {
      if (method.kind != JavaMethodKind::kNative) expected.insert(method.signature);
    }
  }
  const std::string type = "\\[*([ZBCSIJFD]|L[A-Za-z0-9_/$]+;)";
  EXPECT_EQ(TextsOfForm("(", std::regex("\\((" + type + ")*\\)(V|" + type + ")")), expected);
}

TEST(JavaContractNamesTest, TheLibraryHasEveryNativeMethod) {
  for (const JavaClass& type : JavaContract()) {
    for (const JavaMethod& method : type.methods) {
      if (method.kind != JavaMethodKind::kNative) continue;
      const std::string symbol =
          "Java_" + std::regex_replace(type.name, std::regex("/"), "_") + "_" + method.name;
      EXPECT_NE(dlsym(RTLD_DEFAULT, symbol.c_str()), nullptr) << symbol;
    }
  }
}

}  // namespace
}  // namespace chartbridge
