// SPDX-License-Identifier: Apache-2.0
#ifndef APP_JAVACONTRACT_H_
#define APP_JAVACONTRACT_H_

#include <string>
#include <vector>

namespace chartbridge {

/// What native code and Java are to each other in a method of the contract.
enum class JavaMethodKind {
  /// A constructor, with which the library makes its object.
  kConstructor,
  /// A method that the library calls on that object; a static one does not do.
  kInstance,
  /// A method that Java calls and the library implements, on an object or static.
  kNative
};

/// A method as JNI looks it up.
struct JavaMethod {
  JavaMethodKind kind;
  std::string name;
  /// Such as "([B)[B".
  std::string signature;
};

/// A class of the host's Java code and what the library needs of it.
struct JavaClass {
  /// What the class is for: charts, tree windows, trees, chart JSON, conversion, documents,
  /// templates.
  std::string purpose;
  /// With slashes.
  std::string name;
  std::vector<JavaMethod> methods;
};

/// Every class, constructor and method that the library needs of Java. The tests compare it with
/// what the library looks up.
const std::vector<JavaClass>& JavaContract();

/// "com.tesk.charteditor.ChartImager" of "com/tesk/charteditor/ChartImager".
std::string JavaName(const std::string& name);

/// "boolean renderToFile(byte[], String, int)" of a method; `java.lang`, `java.nio` and `java.util`
/// are left out. A constructor has the name of its class and no result.
std::string JavaDeclaration(const JavaClass& type, const JavaMethod& method);

/// The same packages left out of a text, and blanks behind its commas.
std::string WithoutPackages(std::string text);

}  // namespace chartbridge

#endif  // APP_JAVACONTRACT_H_
