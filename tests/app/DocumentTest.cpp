// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tests/app/CommandRun.h"
#include "tests/app/JavaStubs.h"
#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* kAdapter = "com/tesk/java_client/ex_access/ExKvoAdapter";

const std::string kReport =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<document xmlns=\"urn:chartbridge:document:1\" title=\"Sales of tea\">\n"
    "  <heading>Regions</heading>\n"
    "  <paragraph>North sells <strong>most</strong>.</paragraph>\n"
    "  <table>\n"
    "    <header><row><cell>Region</cell><cell>Revenue</cell></row></header>\n"
    "    <row><cell>North</cell><cell>3700</cell></row>\n"
    "  </table>\n"
    "  <table><row><cell>second</cell></row></table>\n"
    "  <chart caption=\"By region\">\n"
    "    <description src=\"sales.gpl\"/>\n"
    "    <data src=\"sales.csv\"/>\n"
    "  </chart>\n"
    "</document>\n";

bool IsCompressed(const std::string& bytes) { return bytes.rfind("\x1F\x8B", 0) == 0; }

class DocumentTest : public ::testing::Test {
 protected:
  DocumentTest() { folder.Write("report.xml", kReport); }

  RunResult Run(std::vector<std::string> arguments, const RunSettings& settings = {}) const {
    arguments.insert(arguments.begin(), "document");
    return folder.Run(arguments, settings);
  }

  void ExpectDone(const std::vector<std::string>& arguments,
                  const RunSettings& settings = {}) const {
    const RunResult result = Run(arguments, settings);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
  }

  /// The command fails with that line, and makes no file.
  void ExpectFailure(const std::vector<std::string>& arguments, const std::string& line,
                     const RunSettings& settings = {}) const {
    const std::vector<std::string> before = folder.Names();
    const RunResult result = Run(arguments, settings);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + line + "\n");
    EXPECT_EQ(folder.Names(), before);
  }

  SampleFolder folder;
};

// ---- build

TEST_F(DocumentTest, ABuiltDocumentNeedsNoOtherFile) {
  ExpectDone({"build", "report.xml", "-o", "report.tdoc"});
  EXPECT_TRUE(IsCompressed(folder.Read("report.tdoc")));
  std::filesystem::remove(folder.File("sales.gpl"));
  std::filesystem::remove(folder.File("sales.csv"));
  ExpectDone({"check", "report.tdoc"});
  ExpectDone({"export", "report.tdoc", "-o", "report.html"});
  EXPECT_THAT(folder.Read("report.html"),
              AllOf(HasSubstr("Sales of tea"), HasSubstr("data:image/svg+xml")));
}

TEST_F(DocumentTest, APlainDocumentIsXml) {
  ExpectDone({"build", "report.xml", "-o", "whole.xml", "--plain"});
  EXPECT_THAT(folder.Read("whole.xml"),
              AllOf(StartsWith("<?xml"), HasSubstr("draw bar"), HasSubstr("North,Tea,1200.5"),
                    Not(HasSubstr("src=")), Not(HasSubstr("<picture"))));
}

TEST_F(DocumentTest, ARenderedDocumentHasPictures) {
  ExpectDone({"build", "report.xml", "-o", "whole.xml", "--plain", "--render"});
  EXPECT_THAT(folder.Read("whole.xml"), HasSubstr("<picture"));
  ExpectDone({"build", "report.xml", "-o", "report.tdoc", "--render"});
  EXPECT_TRUE(IsCompressed(folder.Read("report.tdoc")));
}

TEST_F(DocumentTest, StandardInputAndOutputServe) {
  RunSettings settings;
  settings.input = kReport;
  const RunResult plain = Run({"build", "-", "-o", "-", "--plain"}, settings);
  EXPECT_EQ(plain.exitCode, 0) << plain.errors;
  EXPECT_THAT(plain.output, HasSubstr("North,Tea,1200.5"));
  const RunResult compressed = Run({"build", "-", "-o", "-"}, settings);
  EXPECT_TRUE(IsCompressed(compressed.output));
  settings.input = compressed.output;
  const RunResult text = Run({"export", "-", "-o", "-", "--to", "txt"}, settings);
  EXPECT_EQ(text.exitCode, 0) << text.errors;
  EXPECT_THAT(text.output, HasSubstr("North sells **most**."));
}

TEST_F(DocumentTest, APipeServes) {
  const RunResult result =
      RunProgram({"bash", "-c", "cd \"$1\" && \"$0\" document build <(cat report.xml) -o - --plain",
                  CHARTBRIDGE_COMMAND, folder.Path()});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("North,Tea,1200.5"));
}

TEST_F(DocumentTest, WhatIsWrongInADocumentIsNamedWithFileAndLine) {
  folder.Write("bad.xml",
               "<document xmlns=\"urn:chartbridge:document:1\">\n"
               "  <chart><description src=\"none.gpl\"/></chart>\n"
               "</document>\n");
  folder.Write("report.tdoc", "as it was");
  const RunResult result = Run({"build", "bad.xml", "-o", "report.tdoc"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, AllOf(StartsWith("chartbridge: bad.xml: line 2, column "),
                                   HasSubstr("there is no file \"none.gpl\"")));
  EXPECT_EQ(folder.Read("report.tdoc"), "as it was");
}

TEST_F(DocumentTest, FilesOutsideOfTheFolderStayOutside) {
  folder.Write("bad.xml",
               "<document xmlns=\"urn:chartbridge:document:1\">\n"
               "  <chart><description src=\"../../etc/passwd\"/></chart>\n"
               "</document>\n");
  const RunResult result = Run({"build", "bad.xml", "-o", "report.tdoc"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("chartbridge: bad.xml: line 2, column "));
  EXPECT_THAT(folder.NewNames(), ElementsAre("bad.xml", "report.xml"));
}

TEST_F(DocumentTest, AChartThatCannotBeDrawnFailsWhenPicturesAreAskedFor) {
  folder.Write("sales.csv", "region,product,revenue\nNorth,Tea\n");
  ExpectDone({"build", "report.xml", "-o", "report.tdoc"});
  const RunResult result = Run({"build", "report.xml", "-o", "rendered.tdoc", "--render"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, AllOf(StartsWith("chartbridge: report.xml: line 10, column "),
                                   HasSubstr("CSV line 2")));
  EXPECT_THAT(folder.NewNames(), ElementsAre("report.tdoc", "report.xml"));
}

// ---- export

TEST_F(DocumentTest, TheEndingSaysTheFormat) {
  ExpectDone({"export", "report.xml", "-o", "report.pdf"});
  EXPECT_THAT(folder.Read("report.pdf"), StartsWith("%PDF-"));
  ExpectDone({"export", "report.xml", "-o", "report.HTM"});
  EXPECT_THAT(folder.Read("report.HTM"), HasSubstr("<html"));
  ExpectDone({"export", "report.xml", "-o", "report.txt"});
  EXPECT_THAT(folder.Read("report.txt"), HasSubstr("North sells **most**."));
  ExpectDone({"export", "report.xml", "-o", "report.odt"});
  EXPECT_THAT(folder.Read("report.odt"), StartsWith("PK\x03\x04"));
}

TEST_F(DocumentTest, TheOptionSaysTheFormatWhateverTheEnding) {
  ExpectDone({"export", "report.xml", "-o", "report.dat", "--to", "PDF"});
  EXPECT_THAT(folder.Read("report.dat"), StartsWith("%PDF-"));
}

TEST_F(DocumentTest, TablesBecomeCsv) {
  ExpectDone({"export", "report.xml", "-o", "one.csv", "--table", "2"});
  EXPECT_EQ(folder.Read("one.csv"), "second\r\n");
  ExpectDone({"export", "report.xml", "-o", "all.csv"});
  EXPECT_EQ(folder.Read("all.csv"), "Region,Revenue\r\nNorth,3700\r\n\r\nsecond\r\n");
}

TEST_F(DocumentTest, OptionsReachTheExport) {
  folder.Write("umlaut.xml",
               "<document xmlns=\"urn:chartbridge:document:1\"><heading>M\xC3\xBCnchen</heading>"
               "</document>");
  ExpectDone({"export", "umlaut.xml", "-o", "latin.txt", "--charset", "ISO-8859-1"});
  EXPECT_THAT(folder.Read("latin.txt"), HasSubstr("M\xFCnchen"));
  ExpectDone({"export", "report.xml", "-o", "letter.pdf", "--paper", "letter"});
  EXPECT_THAT(RunProgram({"pdfinfo", folder.File("letter.pdf")}).output,
              HasSubstr("612 x 792 pts"));
  ExpectDone({"export", "report.xml", "-o", "german.html", "--language", "de", "--style", "print"});
  EXPECT_THAT(folder.Read("german.html"), HasSubstr("lang=\"de\""));
}

TEST_F(DocumentTest, WhatTheExportSaysIsPassedOn) {
  const RunResult table = Run({"export", "report.xml", "-o", "a.csv", "--table", "3"});
  EXPECT_EQ(table.exitCode, 1);
  EXPECT_THAT(table.errors, StartsWith("chartbridge: report.xml: there is no table 3"));
  const RunResult style = Run({"export", "report.xml", "-o", "a.html", "--style", "print2"});
  EXPECT_EQ(style.exitCode, 1);
  EXPECT_THAT(style.errors, StartsWith("chartbridge: report.xml: \"style\" is \"print2\""));
  EXPECT_THAT(folder.NewNames(), ElementsAre("report.xml"));
}

TEST_F(DocumentTest, AFailedExportLeavesTheOldFile) {
  folder.Write("sales.csv", "region,product,revenue\nNorth,Tea\n");
  folder.Write("report.pdf", "as it was");
  const RunResult result = Run({"export", "report.xml", "-o", "report.pdf"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, AllOf(StartsWith("chartbridge: report.xml: line 10, column "),
                                   HasSubstr("CSV line 2")));
  EXPECT_EQ(folder.Read("report.pdf"), "as it was");
  EXPECT_THAT(folder.NewNames(), ElementsAre("report.pdf", "report.xml"));
}

TEST_F(DocumentTest, FilesThatAreNotThere) {
  for (const char* command : {"build", "export"}) {
    ExpectFailure({command, "none.xml", "-o", "a.pdf"}, "none.xml: No such file or directory");
    ExpectFailure({command, "report.xml", "-o", "none/a.pdf"},
                  "none/a.pdf: cannot write there: the folder none does not exist");
  }
  ExpectFailure({"check", "none.xml"}, "none.xml: No such file or directory");
}

TEST_F(DocumentTest, JavaClassesThatAreNotThere) {
  const RunResult result = Run({"check", "report.xml", "--classpath", folder.Path()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, StartsWith("chartbridge: the Java classes cannot be used: "));
}

/// A Java side whose adapter answers as one likes.
class DocumentStubTest : public DocumentTest {
 protected:
  void Adapt(const std::string& exportBody) const {
    std::string source = StubSource(kAdapter);
    Replace(source, "p2) { return false; }", "p2) { return true; }");
    Replace(source, "String exportOutput(String p1) { return null; }",
            "String exportOutput(String p1) { " + exportBody + " }");
    stubs.Compile({{kAdapter, source}});
  }

  static void Replace(std::string& text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
  }

  std::vector<std::string> With(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--classpath", stubs.File("classes")});
    return arguments;
  }

  JavaStubs stubs;
};

TEST_F(DocumentStubTest, AJavaExceptionIsNoSuccess) {
  Adapt("throw new IllegalStateException(\"worn out\");");
  ExpectFailure(With({"export", "report.xml", "-o", "a.pdf"}),
                "report.xml: java.lang.IllegalStateException: worn out");
  ExpectFailure(With({"check", "report.xml"}),
                "report.xml: java.lang.IllegalStateException: worn out");
  folder.Write("a.pdf", "as it was");
  ExpectFailure(With({"export", "report.xml", "-o", "a.pdf"}),
                "report.xml: java.lang.IllegalStateException: worn out");
}

TEST_F(DocumentStubTest, AnExportWithoutAFileIsNoSuccess) {
  Adapt("return null;");
  ExpectFailure(With({"export", "report.xml", "-o", "a.pdf"}),
                "report.xml: it failed, and there is no record of why");
}

TEST_F(DocumentStubTest, TheRequestSaysEverything) {
  Adapt("return p1.replace(System.getProperty(\"user.dir\"), \"HERE\");");
  ExpectFailure(With({"export", "report.xml", "-o", "a.dat", "--to", "csv", "--language", "de",
                      "--style", "dark", "--paper", "a4", "--charset", "UTF-8", "--table", "7"}),
                "report.xml: {\"charset\":\"UTF-8\",\"document\":\"HERE/report.xml\","
                "\"language\":\"de\",\"output\":\"a.dat\",\"paper\":\"a4\",\"style\":\"dark\","
                "\"table\":7,\"to\":\"csv\"}");
}

TEST_F(DocumentStubTest, EachFindingIsALine) {
  Adapt("return \"line 3, column 1: one\\nline 4, column 2: two\";");
  const RunResult result = Run(With({"check", "report.xml"}));
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output,
            "report.xml: line 3, column 1: one\nreport.xml: line 4, column 2: two\n");
  EXPECT_EQ(result.errors, "chartbridge: report.xml: 2 findings\n");
}

/// What a command writes when standard error is a terminal. `onText` is called with all that came
/// so far, as often as more comes.
std::string OnTerminal(const std::vector<std::string>& arguments, const std::string& folder,
                       const std::function<void(const std::string&)>& onText) {
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) {
    if (chdir(folder.c_str()) != 0) _exit(126);
    std::vector<char*> argv = {const_cast<char*>(CHARTBRIDGE_COMMAND)};
    for (const std::string& argument : arguments) {
      argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execv(argv[0], argv.data());
    _exit(127);
  }
  std::string shown;
  char chunk[4096];
  for (ssize_t count; (count = read(terminal, chunk, sizeof chunk)) > 0;) {
    shown.append(chunk, static_cast<std::size_t>(count));
    onText(shown);
  }
  close(terminal);
  waitpid(child, nullptr, 0);
  return shown;
}

TEST_F(DocumentStubTest, LongWorkIsShownOnATerminal) {
  // The work is done when its third second was shown, or after a minute.
  Adapt(
      "java.io.File shown = new java.io.File(\"shown\");"
      "try { for (int i = 0; i < 6000 && !shown.exists(); i++) Thread.sleep(10); }"
      "catch (InterruptedException e) {} return \"\";");
  const std::string shown =
      OnTerminal({"document", "check", "report.xml", "--classpath", stubs.File("classes")},
                 folder.Path(), [this](const std::string& text) {
                   if (text.find("3 s") != std::string::npos) folder.Write("shown", "");
                 });
  EXPECT_THAT(shown, AllOf(StartsWith("\r\033[Kreport.xml: 2 s\r\033[Kreport.xml: 3 s"),
                           testing::EndsWith("\r\033[K")));
}

// ---- check

TEST_F(DocumentTest, ASoundDocumentHasNoFindings) { ExpectDone({"check", "report.xml"}); }

TEST_F(DocumentTest, ChartsThatCannotBeDrawnAreFound) {
  folder.Write("sales.csv", "region,product,revenue\nNorth,Tea\n");
  const RunResult result = Run({"check", "report.xml"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.output,
              AllOf(StartsWith("report.xml: line 10, column "), HasSubstr("CSV line 2")));
  EXPECT_EQ(result.errors, "chartbridge: report.xml: 1 finding\n");
}

TEST_F(DocumentTest, WhatTheSchemaForbidsIsFound) {
  folder.Write("bad.xml",
               "<document xmlns=\"urn:chartbridge:document:1\">\n"
               "  <paragraf>text</paragraf>\n"
               "</document>\n");
  const RunResult result = Run({"check", "bad.xml"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.output, AllOf(StartsWith("bad.xml: line 2, column "), HasSubstr("paragraf")));
  EXPECT_EQ(result.errors, "chartbridge: bad.xml: 1 finding\n");
}

// ---- usage

TEST(DocumentUsageTest, HelpHasExamples) {
  for (std::vector<std::string> arguments :
       std::vector<std::vector<std::string>>{{"document"},
                                             {"document", "build"},
                                             {"document", "export"},
                                             {"document", "check"},
                                             {"doctor"}}) {
    const std::string name = arguments.back();
    arguments.push_back("--help");
    const RunResult result = RunCommand(arguments);
    EXPECT_EQ(result.exitCode, 0) << name;
    EXPECT_THAT(result.output, AllOf(HasSubstr("Examples:\n  chartbridge "), HasSubstr(name)));
  }
}

TEST(DocumentUsageTest, OptionsThatMakeNoSense) {
  const auto expectUsage = [](const std::vector<std::string>& arguments,
                              const std::string& reason) {
    const RunResult result = RunCommand(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.errors,
              "chartbridge: " + reason + " (see chartbridge document export --help)\n");
  };
  const std::string formats = "html, htm, pdf, odt, csv, txt, text";
  expectUsage({"document", "export", "a.xml", "-o", "a.docx"},
              "a.docx: the ending is none of " + formats + "; name the format with --to");
  expectUsage({"document", "export", "a.xml", "-o", "a"},
              "a: the ending is none of " + formats + "; name the format with --to");
  expectUsage({"document", "export", "a.xml", "-o", "a.pdf", "--to", "docx"},
              "--to: docx is none of " + formats);
  expectUsage({"document", "export", "a.xml", "-o", "-"},
              "standard output: name the format with --to");
  expectUsage({"document", "export", "a.xml", "-o", "a.csv", "--table", "0"},
              "--table: there is no table 0; the first is table 1");
  expectUsage({"document", "export", "a.xml", "-o", "a.csv", "--table", "-1"},
              "--table: there is no table -1; the first is table 1");
  expectUsage({"document", "export", "a.xml", "-o", "a.pdf", "--table", "1"},
              "--table goes with csv; pdf has all tables");
  expectUsage({"document", "export", "a.xml", "-o", "a.html", "--charset", "latin1"},
              "--charset goes with csv and txt; html has its own encoding");
}

}  // namespace
}  // namespace chartbridge
