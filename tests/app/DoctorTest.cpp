// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "app/JavaContract.h"
#include "tests/app/CommandRun.h"
#include "tests/app/JavaStubs.h"
#include "tests/app/Samples.h"
#include "tests/app/WorkFolder.h"

namespace chartbridge {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kConverter = "com/tesk/vizconverter/VizConverter";
constexpr const char* kChartImager = "com/tesk/charteditor/ChartImager";
constexpr const char* kTreeEditor = "com/tesk/treemodeleditor/TreeEditor";
constexpr const char* kApplyTemplate = "com/tesk/charteditor/template/ApplyTemplate";
constexpr const char* kUnsound =
    "chartbridge: not everything that the library needs is there and works\n";

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> LinesWith(const std::string& text, const std::string& part) {
  std::vector<std::string> lines = LinesOf(text);
  lines.erase(std::remove_if(lines.begin(), lines.end(),
                             [&part](const std::string& line) {
                               return line.find(part) == std::string::npos;
                             }),
              lines.end());
  return lines;
}

class DoctorTest : public ::testing::Test {
 protected:
  RunResult Examine(std::vector<std::string> more = {}, const RunSettings& settings = {}) const {
    std::vector<std::string> arguments = {"doctor", "--classpath", stubs.File("classes")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunCommand(arguments, settings);
  }

  /// The classes are examined with and without the guard, and either way this line is there.
  void ExpectFinding(const std::string& line) const {
    for (const std::vector<std::string>& more :
         {std::vector<std::string>{}, std::vector<std::string>{"--no-guard"}}) {
      const RunResult result = Examine(more);
      EXPECT_EQ(result.exitCode, 1) << result.errors;
      EXPECT_THAT(LinesOf(result.output), Contains(line));
      if (more.empty()) {
        EXPECT_THAT(LinesOf(result.output),
                    Contains("ok      guard: active, caught no wrong call"));
      }
      EXPECT_EQ(result.errors, kUnsound);
    }
  }

  /// The class from its stub, with something in it changed.
  void ExpectFindingAfterChange(const std::string& className, const std::string& from,
                                const std::string& to, const std::string& line) const {
    stubs.CompileChanged(className, from, to);
    ExpectFinding(line);
  }

  JavaStubs stubs;
};

TEST_F(DoctorTest, AJarWithTheWholeContractIsSound) {
  stubs.CompileAll();
  const RunResult result = RunCommand({"doctor", "--classpath", stubs.Jar()});
  EXPECT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(result.errors, "");
  const std::vector<std::string> lines = LinesOf(result.output);
  for (const JavaClass& type : JavaContract()) {
    const std::string start = "ok      " + JavaName(type.name) + ": ";
    EXPECT_THAT(lines, Contains(start + "for " + type.purpose));
    for (const JavaMethod& method : type.methods) {
      EXPECT_THAT(lines, Contains(start + JavaDeclaration(type, method)));
    }
  }
  EXPECT_THAT(lines, Contains("ok      class path: 1 of 1 entries can be read"));
  EXPECT_THAT(lines.back(), HasSubstr(" 0 missing, 0 failed, "));
}

TEST_F(DoctorTest, JavaTheFontsAndTheGuardAreNamed) {
  stubs.Compile({{kConverter, StubSource(kConverter)}});
  const std::vector<std::string> lines = LinesOf(Examine().output);
  EXPECT_THAT(lines, Contains(AllOf(StartsWith("ok      Java "), HasSubstr(" in /"))));
  for (const char* family : {"SansSerif", "Serif", "Monospaced"}) {
    EXPECT_THAT(lines, Contains(std::string("ok      font ") + family));
  }
  EXPECT_THAT(lines, Contains("ok      guard: active, caught no wrong call"));
}

TEST_F(DoctorTest, WithoutTheGuardItWarns) {
  stubs.CompileAll();
  const RunResult result = Examine({"--no-guard"});
  EXPECT_EQ(result.exitCode, 0) << result.output;
  EXPECT_THAT(LinesOf(result.output),
              Contains("warn    guard: not active; some operations of the library end the process "
                       "without it"));
}

TEST_F(DoctorTest, AMethodIsMissing) {
  ExpectFindingAfterChange(
      kConverter, "  public byte[] ConvertXml(byte[] p1) { return null; }\n", "",
      "MISSING com.tesk.vizconverter.VizConverter: byte[] ConvertXml(byte[]): not there");
}

TEST_F(DoctorTest, AMethodHasAnotherSignature) {
  ExpectFindingAfterChange(
      kChartImager, "boolean ConvertImage(byte[] p1, String p2, int p3)",
      "boolean ConvertImage(byte[] p1, String p2, long p3) throws java.io.IOException",
      "MISSING com.tesk.charteditor.ChartImager: boolean ConvertImage(byte[], String, int): not "
      "there; the class has public boolean ConvertImage(byte[], String, long)");
}

TEST_F(DoctorTest, AMethodHasAnotherResult) {
  ExpectFindingAfterChange(
      kConverter, "String getErrorMessage()", "CharSequence getErrorMessage()",
      "MISSING com.tesk.vizconverter.VizConverter: String getErrorMessage(): not there; the class "
      "has public CharSequence getErrorMessage()");
}

TEST_F(DoctorTest, AMethodIsWrittenInOtherLetters) {
  ExpectFindingAfterChange(
      kConverter, "ConvertGPL", "convertGPL",
      "MISSING com.tesk.vizconverter.VizConverter: byte[] ConvertGPL(byte[]): not there; the class "
      "has public byte[] convertGPL(byte[])");
}

TEST_F(DoctorTest, AMethodIsStatic) {
  ExpectFindingAfterChange(
      kTreeEditor, "public void close()", "public static void close()",
      "MISSING com.tesk.treemodeleditor.TreeEditor: void close(): is static; the library calls it "
      "on an object");
}

TEST_F(DoctorTest, AnInheritedMethodIsThere) {
  const std::string source = StubSource(kConverter);
  const std::string base = "com/tesk/vizconverter/Base";
  std::string baseSource = source;
  while (baseSource.find("VizConverter") != std::string::npos) {
    baseSource.replace(baseSource.find("VizConverter"), 12, "Base");
  }
  stubs.Compile({{base, baseSource},
                 {kConverter,
                  "package com.tesk.vizconverter;\npublic class VizConverter extends Base {}\n"}});
  EXPECT_THAT(LinesOf(Examine().output),
              Contains("ok      com.tesk.vizconverter.VizConverter: byte[] ConvertGPL(byte[])"));
}

TEST_F(DoctorTest, AClassIsMissing) {
  stubs.Compile({{kConverter, StubSource(kConverter)}});
  ExpectFinding(
      "MISSING com.tesk.charteditor.ChartImager: not in the class path; for charts (9 methods not "
      "looked for)");
}

TEST_F(DoctorTest, AClassThatAnotherExtendsIsMissing) {
  stubs.Compile({{"com/tesk/Base", "package com.tesk;\npublic class Base {}\n"},
                 {kConverter,
                  "package com.tesk.vizconverter;\n"
                  "public class VizConverter extends com.tesk.Base {}\n"}});
  std::filesystem::remove(stubs.ClassFile("com/tesk/Base"));
  ExpectFinding(
      "FAILED  com.tesk.vizconverter.VizConverter: there, but cannot be used: "
      "java.lang.NoClassDefFoundError: com/tesk/Base, caused by "
      "java.lang.ClassNotFoundException: com.tesk.Base (6 methods not looked for)");
}

TEST_F(DoctorTest, AClassOfAParameterIsMissing) {
  stubs.Compile({{"com/tesk/Data", "package com.tesk;\npublic class Data {}\n"}});
  stubs.Compile({{"com/tesk/Data", "package com.tesk;\npublic class Data {}\n"},
                 {kConverter,
                  "package com.tesk.vizconverter;\npublic class VizConverter {\n"
                  "  public void ConvertGPL(com.tesk.Data data) {}\n}\n"}});
  std::filesystem::remove(stubs.ClassFile("com/tesk/Data"));
  ExpectFinding("MISSING com.tesk.vizconverter.VizConverter: byte[] ConvertGPL(byte[]): not there");
}

TEST_F(DoctorTest, AStaticInitialiserThrows) {
  ExpectFindingAfterChange(
      kConverter, "{\n", "{\n  static { if (true) throw new IllegalStateException(\"no key\"); }\n",
      "FAILED  com.tesk.vizconverter.VizConverter: there, but cannot be used: "
      "java.lang.ExceptionInInitializerError, caused by java.lang.IllegalStateException: no key (6 "
      "methods not looked for)");
}

TEST_F(DoctorTest, AConstructorThrows) {
  ExpectFindingAfterChange(
      kChartImager, "ChartImager() {}", "ChartImager() { throw new RuntimeException(\"a\\nb\"); }",
      "FAILED  com.tesk.charteditor.ChartImager: ChartImager(): there, but fails: "
      "java.lang.RuntimeException: a b");
}

TEST_F(DoctorTest, AnExceptionThatCannotSayWhatItIsDoesNoHarm) {
  ExpectFindingAfterChange(
      kChartImager, "ChartImager() {}",
      "ChartImager() { throw new Mute(); }\n"
      "  static class Mute extends RuntimeException {\n"
      "    public String getMessage() { throw this; }\n"
      "    public synchronized Throwable getCause() { return this; }\n  }",
      "FAILED  com.tesk.charteditor.ChartImager: ChartImager(): there, but fails: "
      "com.tesk.charteditor.ChartImager$Mute, caused by com.tesk.charteditor.ChartImager$Mute, "
      "caused by com.tesk.charteditor.ChartImager$Mute, caused by "
      "com.tesk.charteditor.ChartImager$Mute, caused by com.tesk.charteditor.ChartImager$Mute");
}

TEST_F(DoctorTest, AConstructorTakesSomethingElse) {
  ExpectFindingAfterChange(
      kChartImager, "ChartImager() {}", "ChartImager(int size) {}",
      "MISSING com.tesk.charteditor.ChartImager: ChartImager(): not there; the class has public "
      "com.tesk.charteditor.ChartImager(int)");
}

TEST_F(DoctorTest, AnAbstractClassMakesNoObject) {
  ExpectFindingAfterChange(
      kConverter, "public class", "public abstract class",
      "FAILED  com.tesk.vizconverter.VizConverter: VizConverter(): there, but fails: "
      "java.lang.InstantiationException: com.tesk.vizconverter.VizConverter");
}

TEST_F(DoctorTest, AClassThatNeedsAScreenIsNotHeldToBeBroken) {
  stubs.CompileAll();
  stubs.CompileChanged(kTreeEditor, "TreeEditor() {}",
                       "TreeEditor() { throw new java.awt.HeadlessException(); }");
  const RunResult result = Examine();
  EXPECT_EQ(result.exitCode, 0) << result.output;
  EXPECT_THAT(LinesOf(result.output),
              Contains("warn    com.tesk.treemodeleditor.TreeEditor: TreeEditor(): needs a screen, "
                       "which this check does without"));
}

TEST_F(DoctorTest, TheTemplateMethodIsNotNative) {
  ExpectFindingAfterChange(
      kApplyTemplate, "native String apply(String p1, String p2);",
      "static String apply(String p1, String p2) { return p1; }",
      "MISSING com.tesk.charteditor.template.ApplyTemplate: native String apply(String, String): "
      "is not native, so that Java does not come to the library");
}

TEST_F(DoctorTest, TheTemplateMethodMayBeStatic) {
  stubs.CompileAll();
  stubs.CompileChanged(kApplyTemplate, "native", "static native");
  const RunResult result = Examine();
  EXPECT_EQ(result.exitCode, 0) << result.output;
  EXPECT_THAT(LinesOf(result.output),
              Contains("ok      com.tesk.charteditor.template.ApplyTemplate: native String "
                       "apply(String, String)"));
}

TEST_F(DoctorTest, AClassFileOfANewerJava) {
  stubs.Compile({{kConverter, StubSource(kConverter)}});
  std::fstream file(stubs.ClassFile(kConverter), std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(6);
  file.write("\x03\xE7", 2);
  file.close();
  const RunResult result = Examine();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(
      LinesOf(result.output),
      Contains(AllOf(StartsWith("FAILED  com.tesk.vizconverter.VizConverter: there, but cannot be "
                                "used: java.lang.UnsupportedClassVersionError: "),
                     HasSubstr("class file version 999.0"))));
}

TEST_F(DoctorTest, AClassFileThatIsNone) {
  stubs.Compile({{kConverter, StubSource(kConverter)}});
  std::filesystem::resize_file(stubs.ClassFile(kConverter), 100);
  const RunResult result = Examine();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(LinesOf(result.output),
              Contains(StartsWith("FAILED  com.tesk.vizconverter.VizConverter: there, but cannot "
                                  "be used: java.lang.ClassFormatError: ")));
}

TEST_F(DoctorTest, ClassPathEntriesThatJavaPassesOver) {
  stubs.Write("text.jar", "no jar");
  stubs.Write("empty.jar", "");
  const RunResult result =
      RunCommand({"doctor", "--classpath",
                  stubs.File("text.jar") + ":" + stubs.File("empty.jar") + ":" +
                      stubs.File("none.jar") + ":" + stubs.Path() + "/*:" + stubs.Path()});
  EXPECT_EQ(result.exitCode, 1);
  const std::vector<std::string> lines = LinesOf(result.output);
  const std::string start = "warn    class path: " + stubs.Path();
  EXPECT_THAT(lines, Contains(StartsWith(start + "/text.jar: is no jar: ")));
  EXPECT_THAT(lines, Contains(StartsWith(start + "/empty.jar: is no jar: ")));
  EXPECT_THAT(lines, Contains(start + "/none.jar: does not exist"));
  EXPECT_THAT(lines, Contains(start + "/*: only the java command takes a * for all jars; name each "
                                      "jar"));
  EXPECT_THAT(lines, Contains("ok      class path: 1 of 5 entries can be read"));
}

TEST_F(DoctorTest, JavaThatDoesNotStart) {
  const RunResult result = RunCommand({"doctor"}, {"", {{"JAVA_HOME", "/nowhere"}}, ""});
  EXPECT_EQ(result.exitCode, 1);
  const std::vector<std::string> lines = LinesOf(result.output);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines.front(), AllOf(StartsWith("FAILED  Java: "), HasSubstr("/nowhere")));
  EXPECT_EQ(lines.back(), "1 checks: 0 ok, 0 missing, 1 failed, 0 warnings");
  EXPECT_EQ(result.errors, kUnsound);
}

TEST_F(DoctorTest, FontsAreMissing) {
  stubs.CompileAll();
  stubs.Write("fonts.conf",
              "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
              "<fontconfig><dir>" +
                  stubs.File("none") + "</dir></fontconfig>");
  // Java keeps what it knows of fonts in the user's folder.
  const RunSettings settings{"",
                             {{"FONTCONFIG_FILE", stubs.File("fonts.conf")},
                              {"TESK_JVM_OPTIONS", "-Duser.home=" + stubs.Path()}},
                             ""};
  const RunResult result = Examine({}, settings);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(LinesOf(result.output), Contains(StartsWith("FAILED  font SansSerif: ")));
}

TEST_F(DoctorTest, TheJvmsOwnCheckOfJniCallsHasNoComplaint) {
  std::string source = StubSource(kChartImager);
  source.replace(source.find("ChartImager() {}"), 16, "ChartImager(int size) {}");
  stubs.Compile({{kChartImager, source},
                 {kConverter,
                  "package com.tesk.vizconverter;\npublic class VizConverter {\n"
                  "  VizConverter() { throw new IllegalStateException(); }\n"
                  "  static byte[] ConvertGPL(byte[] gpl) { return gpl; }\n}\n"},
                 {kApplyTemplate, StubSource(kApplyTemplate)},
                 {kTreeEditor,
                  "package com.tesk.treemodeleditor;\npublic class TreeEditor {\n"
                  "  static final int ONE = Integer.parseInt(\"one\");\n}\n"}});
  const RunResult result = Examine({"--no-guard"}, {"", {{"TESK_JVM_OPTIONS", "-Xcheck:jni"}}, ""});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, kUnsound);
}

TEST_F(DoctorTest, QuietLeavesOutWhatIsOk) {
  stubs.Compile({{kConverter, StubSource(kConverter)}});
  const RunResult all = Examine();
  const RunResult quiet = Examine({"--quiet"});
  EXPECT_EQ(quiet.exitCode, 1);
  std::vector<std::string> expected = LinesOf(all.output);
  expected.erase(std::remove_if(expected.begin(), expected.end(),
                                [](const std::string& line) { return line.rfind("ok ", 0) == 0; }),
                 expected.end());
  EXPECT_EQ(LinesOf(quiet.output), expected);
}

TEST_F(DoctorTest, JsonSaysTheSame) {
  stubs.CompileChanged(kConverter, "ConvertXml", "convertXml");
  const RunResult lines = Examine();
  const RunResult result = Examine({"--json"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, kUnsound);
  const auto json = nlohmann::json::parse(result.output);
  EXPECT_EQ(json["sound"], false);
  EXPECT_THAT(json["java"]["home"].get<std::string>(), StartsWith("/"));
  EXPECT_NE(json["java"]["version"], "");
  EXPECT_NE(json["java"]["vm"], "");
  EXPECT_EQ(json["checks"].size() + 1, LinesOf(lines.output).size());
  for (const char* status : {"ok", "missing", "failed", "warn"}) {
    const auto count =
        std::count_if(json["checks"].begin(), json["checks"].end(),
                      [status](const nlohmann::json& check) { return check["status"] == status; });
    EXPECT_EQ(json["summary"][status], count) << status;
  }
  const nlohmann::json missing = {
      {"status", "missing"},
      {"area", "contract"},
      {"subject", "com.tesk.vizconverter.VizConverter: byte[] ConvertXml(byte[])"},
      {"detail", "not there; the class has public byte[] convertXml(byte[])"},
      {"class", "com.tesk.vizconverter.VizConverter"},
      {"method", "ConvertXml"},
      {"signature", "([B)[B"}};
  EXPECT_THAT(json["checks"], Contains(missing));
}

TEST_F(DoctorTest, JsonIsThereWhenJavaIsNot) {
  const RunResult result = RunCommand({"doctor", "--json"}, {"", {{"JAVA_HOME", "/nowhere"}}, ""});
  EXPECT_EQ(result.exitCode, 1);
  const auto json = nlohmann::json::parse(result.output);
  EXPECT_EQ(json["java"], nullptr);
  EXPECT_EQ(json["summary"]["failed"], 1);
}

TEST_F(DoctorTest, WhatJavaPrintsIsNotInTheReport) {
  stubs.CompileChanged(kConverter, "{\n",
                       "{\n  static { System.out.println(\"Welcome to the converter\"); }\n");
  const RunResult result = Examine({"--json"});
  EXPECT_TRUE(nlohmann::json::accept(result.output)) << result.output;
  EXPECT_THAT(result.errors, HasSubstr("Welcome to the converter\n"));
}

TEST_F(DoctorTest, WhatWasFoundIsShownEvenIfJavaEndsTheProcess) {
  stubs.CompileAll();
  stubs.CompileChanged(kConverter, "{\n", "{\n  static { Runtime.getRuntime().halt(3); }\n");
  const RunResult result = Examine();
  EXPECT_EQ(result.exitCode, 3);
  EXPECT_THAT(LinesOf(result.output), Contains("ok      com.tesk.charteditor.ChartImager: for "
                                               "charts"));
}

TEST_F(DoctorTest, PicturesThatAHostsClassesDoNotDrawAreWarnedOf) {
  stubs.CompileAll();
  const std::vector<std::string> lines = LinesOf(Examine().output);
  for (const char* thing : {"chart", "tree"}) {
    for (const char* type : {"JPEG", "PNG", "BMP", "GIF", "SVG", "PDF", "image map"}) {
      EXPECT_THAT(lines, Contains(std::string("warn    ") + thing + " as " + type +
                                  ": not written, for no reason that Java gave"));
    }
  }
}

TEST_F(DoctorTest, AChartOfTheUsersOwnMustBeDrawn) {
  stubs.CompileAll();
  stubs.CompileChanged(
      kChartImager, "byte[] p9) { return false; }",
      "byte[] p9) { throw new IllegalStateException(new String(p1) + p2.limit()); }");
  stubs.Write("chart", "my chart");
  stubs.Write("data", "1234");
  const RunResult result = Examine({"--chart", stubs.File("chart"), "--data", stubs.File("data")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(LinesOf(result.output),
              Contains("FAILED  chart as PNG: java.lang.IllegalStateException: my chart4"));
}

TEST_F(DoctorTest, APictureMustBeWhatItSays) {
  stubs.CompileAll();
  stubs.CompileChanged(kChartImager, "byte[] p9) { return false; }",
                       "byte[] p9) { return p4 == 4 || Files.write(p3, p4 == 3 ? \"BM\" : \"?\"); }"
                       "\n  static class Files {\n"
                       "    static boolean write(String path, String text) {\n"
                       "      try (var file = new java.io.FileWriter(path)) { file.write(text); }\n"
                       "      catch (java.io.IOException e) { return false; }\n"
                       "      return true;\n    }\n  }");
  const std::vector<std::string> lines = LinesOf(Examine().output);
  EXPECT_THAT(lines, Contains("ok      chart as BMP"));
  EXPECT_THAT(lines, Contains("warn    chart as PNG: written, but not as PNG"));
  EXPECT_THAT(lines,
              Contains("warn    chart as GIF: Java says that it is written, but it is not there"));
}

TEST_F(DoctorTest, NothingIsLeftBehind) {
  stubs.CompileAll();
  const WorkFolder temporary;
  const RunResult result = Examine({}, {"", {{"TMPDIR", temporary.Path()}}, ""});
  EXPECT_EQ(result.exitCode, 0) << result.output;
  EXPECT_THAT(temporary.Names(), IsEmpty());
}

TEST(DoctorUsageTest, OptionsThatMakeNoSense) {
  const auto expectUsage = [](const std::vector<std::string>& arguments,
                              const std::string& reason) {
    const RunResult result = RunCommand(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.errors, "chartbridge: " + reason + " (see chartbridge doctor --help)\n");
  };
  expectUsage({"doctor", "--json", "--quiet"}, "--json and --quiet exclude each other");
  expectUsage({"doctor", "--data", "a.csv"}, "--data goes with --chart");
  expectUsage({"doctor", "--chart", "-", "--tree", "-"},
              "only one of the inputs can be standard input");
}

TEST(DoctorUsageTest, ASampleThatIsNotThere) {
  const RunResult result = RunCommand({"doctor", "--chart", "/nowhere/a.xml"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "chartbridge: /nowhere/a.xml: No such file or directory\n");
}

TEST(DoctorOwnClassesTest, TheyAreSound) {
  const RunResult result = RunCommand({"doctor"});
  EXPECT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(result.errors, "");
  for (const std::string& line : LinesOf(result.output)) {
    if (line.find(" checks: ") != std::string::npos) continue;
    EXPECT_THAT(line, StartsWith("ok      "));
  }
  EXPECT_THAT(LinesWith(result.output, "chart as "), testing::SizeIs(7));
  EXPECT_THAT(LinesWith(result.output, "tree as "), testing::SizeIs(7));
  EXPECT_THAT(result.output, HasSubstr("ok      Java's call of the library"));
}

}  // namespace
}  // namespace chartbridge
