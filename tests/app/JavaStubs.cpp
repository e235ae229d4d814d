// SPDX-License-Identifier: Apache-2.0
#include "tests/app/JavaStubs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "app/JavaContract.h"
#include "tests/app/CommandRun.h"

namespace chartbridge {

namespace {

constexpr const char* kClasses = "classes";

/// A declaration with names for its parameters.
std::string WithParameterNames(const std::string& declaration) {
  std::string named;
  int count = 0;
  const std::size_t open = declaration.find('(');
  for (std::size_t at = 0; at < declaration.size(); ++at) {
    const char c = declaration[at];
    const bool endsParameter = at > open && (c == ',' || c == ')') && declaration[at - 1] != '(';
    if (endsParameter) named += " p" + std::to_string(++count);
    named += c;
  }
  return named;
}

std::string Body(const std::string& declaration) {
  const std::string result = declaration.substr(0, declaration.find(' '));
  if (result == "void") return " {}";
  if (result == "boolean") return " { return false; }";
  return " { return null; }";
}

std::string MemberSource(const JavaClass& type, const JavaMethod& method) {
  const std::string declaration = JavaDeclaration(type, method);
  const std::string named = "  public " + WithParameterNames(declaration);
  if (method.kind == JavaMethodKind::kNative) return named + ";\n";
  if (method.kind == JavaMethodKind::kConstructor) return named + " {}\n";
  return named + Body(declaration) + "\n";
}

std::string SimpleName(const std::string& className) {
  return className.substr(className.rfind('/') + 1);
}

void Run(const std::vector<std::string>& arguments) {
  const RunResult result = RunProgram(arguments);
  if (result.exitCode != 0) throw std::runtime_error(arguments.front() + ": " + result.errors);
}

}  // namespace

std::string StubSource(const std::string& className) {
  const auto& contract = JavaContract();
  const auto type =
      std::find_if(contract.begin(), contract.end(),
                   [&className](const JavaClass& each) { return each.name == className; });
  if (type == contract.end()) throw std::runtime_error("no class " + className);
  std::string source = "package " + JavaName(className.substr(0, className.rfind('/'))) + ";\n" +
                       "import java.nio.ByteBuffer;\nimport java.util.HashMap;\n" +
                       "public class " + SimpleName(className) + " {\n";
  for (const JavaMethod& method : type->methods) source += MemberSource(*type, method);
  return source + "}\n";
}

void JavaStubs::Compile(const std::map<std::string, std::string>& sources) const {
  std::vector<std::string> arguments = {CHARTBRIDGE_JAVAC, "-proc:none",
                                        "-J-XX:TieredStopAtLevel=1", "-d", File(kClasses)};
  for (const auto& [className, source] : sources) {
    const std::string file = className + ".java";
    std::filesystem::create_directories(std::filesystem::path(File(file)).parent_path());
    Write(file, source);
    arguments.push_back(File(file));
  }
  Run(arguments);
}

void JavaStubs::CompileChanged(const std::string& className, const std::string& from,
                               const std::string& to) const {
  std::string source = StubSource(className);
  const std::size_t at = source.find(from);
  if (at == std::string::npos) throw std::runtime_error("not in the source: " + from);
  Compile({{className, source.replace(at, from.size(), to)}});
}

void JavaStubs::CompileAll() const {
  std::map<std::string, std::string> sources;
  for (const JavaClass& type : JavaContract()) sources[type.name] = StubSource(type.name);
  Compile(sources);
}

std::string JavaStubs::Jar() const {
  Run({CHARTBRIDGE_JAR, "--create", "--file", File("host.jar"), "-C", File(kClasses), "."});
  return File("host.jar");
}

std::string JavaStubs::ClassFile(const std::string& className) const {
  return File(std::string(kClasses) + "/" + className + ".class");
}

}  // namespace chartbridge
