// SPDX-License-Identifier: Apache-2.0
// Charts that name a template, on a real JVM: native code calls Java, which calls native code. The
// library, the reference host, the guard and the reference Java classes together.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "chart/ViZEditor.h"
#include "guard/jniguard.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "host/LocalFrame.h"
#include "host/TemplateCallback.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ReadFile.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

constexpr jint kRounds = 150;
constexpr char16_t kDeclaration[] = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

std::string Template(const std::string& parts) {
  return "<template xmlns=\"urn:chartbridge:template:1\">" + parts + "</template>";
}

std::string Chart(const std::string& attributes, const std::string& parts = "") {
  return "<chart xmlns=\"urn:chartbridge:chart:2\"" + attributes + ">" + parts +
         "<data>a,b\nx,1\ny,2\n</data>"
         "<elements><bar><x column=\"a\"/><y column=\"b\"/></bar></elements></chart>";
}

std::u16string TextOf(JNIEnv* env, jstring text) {
  if (text == nullptr) return u"null";
  const jchar* chars = env->GetStringChars(text, nullptr);
  std::u16string copy(chars, chars + env->GetStringLength(text));
  env->ReleaseStringChars(text, chars);
  return copy;
}

jstring JavaText(JNIEnv* env, const std::u16string& text) {
  return env->NewString(reinterpret_cast<const jchar*>(text.data()),
                        static_cast<jsize>(text.size()));
}

class TemplateOnJvm : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    _folder = new TempFolder;
    _second = new TempFolder;
    JvmSettings settings;
    settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR, CHARTBRIDGE_TEST_JAR};
    settings.options = {"-Dchartbridge.templates=/no/such/folder:" + _folder->Path() +
                        "::" + _second->Path()};
    SetJvmSettings(settings);
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
  }

  static void TearDownTestSuite() {
    delete _folder;
    delete _second;
  }

  void SetUp() override {
    setenv("DumpChartTimePath", _dumps.Path().c_str(), 1);
    _env = TeskJVM::GetInstance()->GetEnv();
    ASSERT_TRUE(ViZEditor::GetInstance()->StartEditorHeadless(_env));
  }

  void TearDown() override {
    ViZEditor::GetInstance()->StopHeadless();
    unsetenv("DumpChartTimePath");
  }

  std::string Dump() const { return ReadFolder(_dumps.Path()); }

  /// The message of the first exception in the dump.
  std::string Message() const {
    const std::string label = "  message: ";
    const std::string dump = Dump();
    const std::size_t start = dump.find(label);
    if (start == std::string::npos) return "none";
    return dump.substr(start + label.size(), dump.find('\n', start) - start - label.size());
  }

  static void Put(const std::string& name, const std::string& content) {
    WriteFile(_folder->Path() + "/" + name + ".xml", content);
  }

  /// The chart as SVG; empty when it fails.
  static std::string Draw(const std::string& chart) {
    const LocalFrame frame;
    std::string picture;
    std::string html;
    std::string json;
    const unsigned char none = 0;
    ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
        chart, &none, 0, ViZEditor::IMAGE_SVG, 100, picture, html, json, "", "", "", "", false);
    return picture;
  }

  void ExpectFailure(const std::string& chart, const std::string& message) {
    EXPECT_EQ(Draw(chart), "");
    EXPECT_EQ(Message(), message);
  }

  /// What Java gets when it calls `apply`.
  std::u16string Apply(jstring chart, jstring templ) const {
    jclass type = _env->FindClass("com/tesk/charteditor/template/ApplyTemplate");
    jmethodID apply = _env->GetStaticMethodID(
        type, "apply", "(Ljava/lang/String;Ljava/lang/String;)Ljava/lang/String;");
    auto result = static_cast<jstring>(_env->CallStaticObjectMethod(type, apply, chart, templ));
    EXPECT_FALSE(_env->ExceptionCheck());
    return TextOf(_env, result);
  }

  std::u16string Apply(const std::u16string& chart, const std::u16string& templ) const {
    return Apply(JavaText(_env, chart), JavaText(_env, templ));
  }

  static TempFolder* _folder;
  static TempFolder* _second;
  JNIEnv* _env = nullptr;

 private:
  TempFolder _dumps;
};

TempFolder* TemplateOnJvm::_folder = nullptr;
TempFolder* TemplateOnJvm::_second = nullptr;

TEST_F(TemplateOnJvm, IsAppliedByEveryRendering) {
  Put("house",
      Template("<size width=\"321\" height=\"234\"/><titles caption=\"from the house\"/>"));
  const std::string chart = Chart(" template=\"house\"");
  const std::string svg = Draw(chart);
  EXPECT_NE(svg.find("width=\"321\""), std::string::npos) << Dump();
  EXPECT_NE(svg.find(">from the house<"), std::string::npos);

  const TempFolder files;
  const std::string path = files.Path() + "/chart.svg";
  const unsigned char none = 0;
  const LocalFrame frame;
  ASSERT_TRUE(ViZEditor::GetInstance()->RenderToFileHeadless(
      chart, &none, 0, path, ViZEditor::IMAGE_SVG, 100, "", "", "", "", false));
  EXPECT_EQ(ReadFile(path), svg);

  std::string picture;
  std::string html;
  std::string json;
  ASSERT_TRUE(ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      chart, &none, 0, ViZEditor::IMAGE_MAP, 100, picture, html, json, "", "", "", "", true));
  // Width and height stand in the first chunk of a PNG.
  EXPECT_EQ(picture.substr(16, 8), std::string("\0\0\x01\x41\0\0\0\xEA", 8));
  EXPECT_EQ(Dump(), "");
}

TEST_F(TemplateOnJvm, CountsLessThanTheChartAndMoreWhereItOverrides) {
  Put("mixed", Template("<titles title=\"theirs\"/><legend override=\"true\" position=\"none\"/>"
                        "<size override=\"true\" width=\"300\"/>"));
  const std::string svg =
      Draw(Chart(" template=\"mixed\" width=\"500\" height=\"400\"", "<titles title=\"own\"/>"));
  EXPECT_NE(svg.find(">own<"), std::string::npos) << Dump();
  EXPECT_EQ(svg.find(">theirs<"), std::string::npos);
  EXPECT_NE(svg.find("width=\"300\""), std::string::npos);
  EXPECT_NE(svg.find("height=\"400\""), std::string::npos);
}

// What is the default anyway counts as the chart's word when the chart says it.
TEST_F(TemplateOnJvm, LeavesAloneDefaultsThatTheChartSays) {
  Put("big", Template("<size width=\"900\" height=\"700\"/>"));
  EXPECT_NE(Draw(Chart(" template=\"big\" width=\"800\"")).find("width=\"800\""),
            std::string::npos);
}

TEST_F(TemplateOnJvm, IsNotNamedByChartsOfVersionOne) {
  Put("old", Template("<titles caption=\"c\"/>"));
  EXPECT_EQ(Draw("<chart xmlns=\"urn:chartbridge:chart:1\" template=\"old\"/>"), "");
  EXPECT_NE(Message().find("has no attribute \"template\""), std::string::npos) << Message();
}

TEST_F(TemplateOnJvm, TakesCharactersBeyondTheBasicPlane) {
  Put("grin", Template("<titles caption=\"caption \xF0\x9F\x98\x80\"/>"));
  const std::string svg = Draw(Chart(
      " template=\"grin\"", "<!-- \xF0\x9F\x98\x80 --><titles title=\"title \xF0\x9F\x8D\xB5\"/>"));
  EXPECT_NE(svg.find("title \xF0\x9F\x8D\xB5"), std::string::npos) << Dump() << svg;
  EXPECT_NE(svg.find("caption \xF0\x9F\x98\x80"), std::string::npos);
}

TEST_F(TemplateOnJvm, TakesOtherEncodings) {
  Put("latin",
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + Template("<titles caption=\"\xFC\"/>"));
  const std::string chart = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
                            Chart(" template=\"latin\"", "<titles title=\"\xE4\"/>");
  const std::string svg = Draw(chart);
  EXPECT_NE(svg.find(">\xC3\xA4<"), std::string::npos) << Dump();
  EXPECT_NE(svg.find(">\xC3\xBC<"), std::string::npos);
}

TEST_F(TemplateOnJvm, IsLookedUpInOneFolderAfterTheOther) {
  WriteFile(_second->Path() + "/both.xml", Template("<titles caption=\"second\"/>"));
  EXPECT_NE(Draw(Chart(" template=\"both\"")).find(">second<"), std::string::npos) << Dump();
  // What changes there holds from the next chart on.
  Put("both", Template("<titles caption=\"first\"/>"));
  EXPECT_NE(Draw(Chart(" template=\"both\"")).find(">first<"), std::string::npos) << Dump();
}

TEST_F(TemplateOnJvm, ThatIsMissingIsNamed) {
  ExpectFailure(
      Chart(" template=\"none\""),
      "line 1, column 40: The template \"none\" is not there; searched in /no/such/folder, " +
          _folder->Path() + ", " + _second->Path() + ".");
}

// A chart may come from anybody.
TEST_F(TemplateOnJvm, NameLeadsNowhereElse) {
  WriteFile(std::filesystem::path(_folder->Path()).parent_path().string() + "/outside.xml",
            Template(""));
  const std::string rest =
      "\" is none; expected up to 100 letters, digits, \".\", \"_\" and \"-\", not beginning with "
      "\".\".";
  ExpectFailure(Chart(" template=\"../outside\""),
                "line 1, column 40: The template name \"../outside" + rest);
  std::filesystem::remove(std::filesystem::path(_folder->Path()).parent_path() / "outside.xml");
}

TEST_F(TemplateOnJvm, ThatIsWrongIsNamedWithTheLine) {
  Put("wrong", Template("\n  <legend postion=\"top\"/>"));
  ExpectFailure(Chart(" template=\"wrong\""),
                "The template \"wrong\": line 2, column 11: <legend> has no attribute \"postion\"; "
                "expected one of position, title, override; did you mean \"position\"?");
}

TEST_F(TemplateOnJvm, ThatDoesNotFitTheChartIsNamed) {
  Put("limits", Template("<axes><y min=\"5\"/></axes>"));
  ExpectFailure(Chart(" template=\"limits\"", "<axes><y max=\"3\"/></axes>"),
                "The chart does not go together with the template \"limits\": the axis ends at 3, "
                "which is not above its start 5");
}

TEST_F(TemplateOnJvm, ChartsWithZeroCharactersAreRefused) {
  Put("any", Template(""));
  for (const char* zero : {"&#0;", "\\0"}) {
    std::string text = zero;
    if (text == "\\0") text = std::string(1, '\0');
    EXPECT_EQ(Draw(Chart(" template=\"any\"", "<titles title=\"" + text + "\"/>")), "");
  }
  EXPECT_NE(Message().find("line 1, column "), std::string::npos) << Message();
  EXPECT_NE(Dump().find("org.chartbridge.chart.ChartException"), std::string::npos);
}

// Nothing of it is caught by the guard: a host without it can use templates, too.
TEST_F(TemplateOnJvm, NeedsNoGuard) {
  Put("guard", Template("<titles caption=\"c\"/>"));
  unsigned long long before[JNIGUARD_KINDS];
  unsigned long long after[JNIGUARD_KINDS];
  jniguard_counts(before, JNIGUARD_KINDS);
  EXPECT_NE(Draw(Chart(" template=\"guard\"")), "") << Dump();
  jniguard_counts(after, JNIGUARD_KINDS);
  for (int kind = 0; kind < JNIGUARD_KINDS; ++kind) {
    EXPECT_EQ(after[kind], before[kind]) << jniguard_kind_name(kind);
  }
}

TEST_F(TemplateOnJvm, IsAppliedOnEveryThread) {
  Put("thread", Template("<titles caption=\"c\"/>"));
  const std::string chart = Chart(" template=\"thread\"");
  const std::string here = Draw(chart);
  EXPECT_NE(here, "");
  std::thread([&] {
    EXPECT_EQ(Draw(chart), here);
    DetachCurrentThread();
  }).join();
}

TEST_F(TemplateOnJvm, ApplyGivesTheWholeChart) {
  const LocalFrame frame;
  EXPECT_EQ(Apply(u"<!-- \xD83D\xDE00 \xFC -->\n<chart xmlns='urn:chartbridge:chart:2'"
                  u" template='t'><titles title='\xD83D\xDE00\xFC'/></chart>",
                  u"<template xmlns='urn:chartbridge:template:1'>"
                  u"<titles caption='\xD83C\xDF75\x20AC'/></template>"),
            std::u16string(kDeclaration) +
                u"<!-- \xD83D\xDE00 \xFC -->\n<chart xmlns=\"urn:chartbridge:chart:2\">"
                u"<titles title=\"&#128512;\xFC\" caption=\"&#127861;\x20AC\"/></chart>");
}

TEST_F(TemplateOnJvm, ApplyAnswersEveryFailureWithNothing) {
  const LocalFrame frame;
  const std::u16string chart = u"<chart xmlns='urn:chartbridge:chart:2'/>";
  const std::u16string templ = u"<template xmlns='urn:chartbridge:template:1'/>";
  const std::u16string good = Apply(chart, templ);
  EXPECT_EQ(good, kDeclaration + std::u16string(u"<chart xmlns=\"urn:chartbridge:chart:2\"/>"));
  const std::u16string zero = u"<!-- " + std::u16string(1, u'\0') + u" -->";
  EXPECT_EQ(Apply(chart + zero, templ), u"");
  EXPECT_EQ(Apply(chart, templ + zero), u"");
  EXPECT_EQ(Apply(u"", templ), u"");
  EXPECT_EQ(Apply(chart, u""), u"");
  EXPECT_EQ(Apply(u"draw bar: x a", templ), u"");
  EXPECT_EQ(Apply(chart, u"<template/>"), u"");
  EXPECT_EQ(Apply(chart, u"<template xmlns='urn:chartbridge:template:1'><style/></template>"), u"");
  // And it works on.
  EXPECT_EQ(Apply(chart, templ), good);
}

// Bare, today's JVMs end the process at a null text; the guard makes an exception of it.
// The text is empty, as for every other failure, and nothing is thrown.
TEST_F(TemplateOnJvm, ApplyTakesNullForNoText) {
  const LocalFrame frame;
  jstring text = _env->NewStringUTF("<chart xmlns='urn:chartbridge:chart:2'/>");
  const jstring pairs[][2] = {{nullptr, nullptr}, {text, nullptr}, {nullptr, text}};
  for (const auto& pair : pairs) {
    EXPECT_EQ(Apply(pair[0], pair[1]), u"");
    EXPECT_FALSE(_env->ExceptionCheck());
  }
}

TEST_F(TemplateOnJvm, IsAppliedForManyJavaThreadsAtOnce) {
  const LocalFrame frame;
  jclass type = _env->FindClass("org/chartbridge/testing/TemplateThreads");
  ASSERT_NE(type, nullptr);
  jmethodID run = _env->GetStaticMethodID(type, "run", "(II)Ljava/lang/String;");
  auto wrong = static_cast<jstring>(_env->CallStaticObjectMethod(type, run, 16, 200));
  ASSERT_FALSE(_env->ExceptionCheck());
  EXPECT_EQ(TextOf(_env, wrong), u"");
}

TEST_F(TemplateOnJvm, NativeCodeAppliesWhatJavaAccepts) {
  std::ifstream list(CHARTBRIDGE_TEST_DATA "/chart-templates.txt");
  std::u16string templates;
  for (std::string line; std::getline(list, line);) {
    if (line.compare(0, 3, "ok\t") != 0) continue;
    if (!templates.empty()) templates += u'\0';
    // What stands there is ASCII.
    templates.append(line.begin() + 3, line.end());
  }
  ASSERT_FALSE(templates.empty());
  const LocalFrame frame;
  jclass type = _env->FindClass("org/chartbridge/testing/TemplateAgreement");
  ASSERT_NE(type, nullptr);
  jmethodID run = _env->GetStaticMethodID(type, "run", "(Ljava/lang/String;IJ)Ljava/lang/String;");
  auto result = static_cast<jstring>(
      _env->CallStaticObjectMethod(type, run, JavaText(_env, templates), kRounds, jlong{20261121}));
  ASSERT_FALSE(_env->ExceptionCheck());
  const std::u16string counts = TextOf(_env, result);
  const std::string ascii(counts.begin(), counts.end());
  EXPECT_NE(ascii.find(" accepted, "), std::string::npos) << ascii;
  EXPECT_GT(std::stoi(ascii), 200) << ascii;
}

TEST_F(TemplateOnJvm, CallbackCanBeBoundAgain) {
  JavaVM* vm = nullptr;
  ASSERT_EQ(_env->GetJavaVM(&vm), JNI_OK);
  EXPECT_TRUE(BindTemplateCallback(vm));
  // An exception that is under way stays, and a thread that was not attached is none afterwards.
  _env->ThrowNew(_env->FindClass("java/lang/IllegalStateException"), "kept");
  EXPECT_TRUE(BindTemplateCallback(vm));
  EXPECT_TRUE(_env->ExceptionCheck());
  _env->ExceptionClear();
  std::thread([vm] {
    EXPECT_TRUE(BindTemplateCallback(vm));
    void* env = nullptr;
    EXPECT_EQ(vm->GetEnv(&env, JNI_VERSION_1_8), JNI_EDETACHED);
  }).join();
}

}  // namespace
}  // namespace chartbridge
