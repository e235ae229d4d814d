// SPDX-License-Identifier: Apache-2.0
// Output documents: the library, the reference host, the guard and the reference Java classes
// together.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <tuple>

#include "export/ExAccessor.h"
#include "guard/jniguard.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ReadFile.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

constexpr char kExample[] = CHARTBRIDGE_TEST_EXAMPLES "/documents/air-quality.xml";
constexpr char kSmall[] =
    "<document xmlns=\"urn:chartbridge:document:1\"><paragraph>Gr\xC3\xB6\xC3\x9F"
    "e</paragraph></document>";

class RealDocument : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    JvmSettings settings;
    settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR};
    SetJvmSettings(settings);
  }

  void SetUp() override {
    setenv("DumpChartTimePath", _dumps.Path().c_str(), 1);
    // Starts the JVM for the first of these tests.
    _exporter.reset(ExAccessor::CreateInstance());
    ASSERT_NE(_exporter, nullptr);
    ASSERT_TRUE(TeskJVM::GetInstance()->IsStarted());
    ASSERT_EQ(Dump(), "");
  }

  void TearDown() override {
    _exporter.reset();
    unsetenv("DumpChartTimePath");
  }

  std::string Dump() const { return ReadFolder(_dumps.Path()); }

  std::string PathTo(const std::string& name) const { return _files.Path() + "/" + name; }

  bool Create(const std::string& content, const std::string& name) {
    const LocalFrame frame;
    return _exporter->CreateOutputDocument(content, name);
  }

  bool Write(const std::string& path, bool pictures, bool compressed) {
    const LocalFrame frame;
    return _exporter->WriteOutputDocumentFile(path, pictures, compressed);
  }

  bool Export(const std::string& request) {
    const LocalFrame frame;
    return _exporter->ExportOutput(request);
  }

  bool ExportTo(const std::string& path) { return Export("{\"output\":\"" + path + "\"}"); }

  std::unique_ptr<ExAccessor> _exporter;

 private:
  TempFolder _files;
  TempFolder _dumps;
};

TEST_F(RealDocument, IsCreatedAndExported) {
  ASSERT_TRUE(Create(kSmall, "small")) << Dump();
  const std::string path = PathTo(
      "gr\xC3\xB6\xC3\x9F"
      "e.txt");
  ASSERT_TRUE(ExportTo(path)) << _exporter->getError();
  EXPECT_EQ(ReadFile(path),
            "Gr\xC3\xB6\xC3\x9F"
            "e\n");
  EXPECT_EQ(_exporter->getError(), "");
  EXPECT_EQ(Dump(), "");
}

TEST_F(RealDocument, BecomesEveryTarget) {
  ASSERT_TRUE(Create(ReadFile(kExample), kExample)) << Dump();
  const struct {
    const char* ending;
    const char* start;
  } targets[] = {{".html", "<!DOCTYPE html>"},
                 {".pdf", "%PDF-"},
                 {".odt", "PK\x03\x04"},
                 {".csv", "Month,Ozone (ppb),"},
                 {".txt", "====="}};
  for (const auto& target : targets) {
    const std::string path = PathTo(std::string("report") + target.ending);
    EXPECT_TRUE(ExportTo(path)) << _exporter->getError();
    EXPECT_EQ(ReadFile(path).rfind(target.start, 0), 0U) << path;
  }
  EXPECT_EQ(Dump(), "");
}

// Nothing that the Java classes or the JDK's own native code do is caught by the guard.
TEST_F(RealDocument, NeedsTheGuardForNothing) {
  unsigned long long before[JNIGUARD_KINDS];
  unsigned long long after[JNIGUARD_KINDS];
  jniguard_counts(before, JNIGUARD_KINDS);
  ASSERT_TRUE(Create(ReadFile(kExample), kExample)) << Dump();
  ASSERT_TRUE(Write(PathTo("report.tdoc"), true, true)) << Dump();
  ASSERT_TRUE(ExportTo(PathTo("report.pdf"))) << _exporter->getError();
  ASSERT_FALSE(ExportTo(PathTo("no/report.pdf")));
  jniguard_counts(after, JNIGUARD_KINDS);
  for (int kind = 0; kind < JNIGUARD_KINDS; ++kind) {
    EXPECT_EQ(after[kind], before[kind]) << jniguard_kind_name(kind);
  }
}

class RealDocumentForm : public RealDocument,
                         public testing::WithParamInterface<std::tuple<bool, bool>> {};

TEST_P(RealDocumentForm, IsWrittenAndReadBack) {
  const bool pictures = std::get<0>(GetParam());
  const bool compressed = std::get<1>(GetParam());
  ASSERT_TRUE(Create(ReadFile(kExample), kExample)) << Dump();
  const std::string path = PathTo("report.tdoc");
  ASSERT_TRUE(Write(path, pictures, compressed)) << Dump();

  const std::string written = ReadFile(path);
  EXPECT_EQ(written.compare(0, 2, "\x1F\x8B") == 0, compressed);
  if (!compressed) {
    EXPECT_EQ(written.find("<picture ") != std::string::npos, pictures);
    EXPECT_EQ(written.find(" src="), std::string::npos);
  }

  const std::string direct = PathTo("direct.txt");
  const std::string again = PathTo("again.txt");
  ASSERT_TRUE(ExportTo(direct)) << _exporter->getError();
  ASSERT_TRUE(Export("{\"input\":\"" + path + "\",\"output\":\"" + again + "\"}"))
      << _exporter->getError();
  EXPECT_EQ(ReadFile(again), ReadFile(direct));
  ASSERT_TRUE(Create(written, "read back")) << Dump();
  EXPECT_EQ(Dump(), "");
}

INSTANTIATE_TEST_SUITE_P(Forms, RealDocumentForm,
                         testing::Combine(testing::Bool(), testing::Bool()));

TEST_F(RealDocument, SaysWhyAnExportFails) {
  const std::string broken =
      "<document xmlns=\"urn:chartbridge:document:1\">\n"
      "<chart><description>draw bar: x area, y count</description><data>\nregion\nNorth\n</data>"
      "</chart></document>";
  ASSERT_TRUE(Create(broken, "broken")) << Dump();
  const std::string path = PathTo("broken.html");
  EXPECT_FALSE(ExportTo(path));
  EXPECT_EQ(_exporter->getError(),
            "line 2, column 33: the chart: The data has no column \"area\"; its columns are "
            "region.");
  EXPECT_FALSE(std::filesystem::exists(path));
  // Not an exception: Java answers with the text.
  EXPECT_EQ(Dump(), "");
}

// The native exporter holds on to the last text until Java answers another one.
TEST_F(RealDocument, IsExportedAfterAFailure) {
  ASSERT_TRUE(Create(kSmall, "small")) << Dump();
  EXPECT_FALSE(Export("{\"document\":\"other\",\"output\":\"other.txt\"}"));
  EXPECT_EQ(_exporter->getError(), "there is no document \"other\"");
  EXPECT_TRUE(ExportTo(PathTo("small.txt")));
  EXPECT_EQ(_exporter->getError(), "");
}

TEST_F(RealDocument, SaysInTheDumpFileWhyThereIsNone) {
  EXPECT_FALSE(Create("<document/>", "wrong"));
  EXPECT_NE(Dump().find("line 1, column 1: found <document> without a namespace"),
            std::string::npos)
      << Dump();
}

TEST_F(RealDocument, SaysInTheDumpFileWhyItIsNotWritten) {
  EXPECT_FALSE(Write(PathTo("none.tdoc"), false, true));
  EXPECT_NE(Dump().find("there is no document"), std::string::npos) << Dump();
  ASSERT_TRUE(Create(kSmall, "small"));
  EXPECT_FALSE(Write(PathTo("no/small.tdoc"), false, true));
  EXPECT_NE(Dump().find("does not exist"), std::string::npos) << Dump();
}

TEST_F(RealDocument, BelongsToItsExporter) {
  ASSERT_TRUE(Create(kSmall, "small")) << Dump();
  _exporter.reset(ExAccessor::CreateInstance());
  EXPECT_FALSE(ExportTo(PathTo("small.txt")));
  EXPECT_EQ(_exporter->getError(), "there is no document; create one first, or name an \"input\"");
}

}  // namespace
}  // namespace chartbridge
