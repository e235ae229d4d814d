// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "json/jsonImager.h"
#include "tests/support/AccessorProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/ObjectLayout.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/java_client/core/documents/output/export/JsonImager";
constexpr char kObject[] = "JsonImager@1";
constexpr char kChart[] = "(Ljava/lang/String;[BZLjava/lang/String;I)Z";
constexpr char kInteractive[] =
    "(Ljava/lang/String;[BLjava/lang/String;Ljava/lang/String;Ljava/lang/String;I)Z";
constexpr char kGeo[] = "([B)V";

const jchar kFile[] = {'f', '.', 'j', 's'};
const jchar kCodepage[] = {'U', '8'};
const jchar kJsonPath[] = {'p', 0x00E9};
const jchar kOptions[] = {'o', 'p', 't'};

// The binding by itself: no lock, no attach, no guard but those of the checks.
class JsonImagerTest : public ContractTest {
 protected:
  JsonImagerTest() {
    jvm.ClassWithConstructor(kClass);
    jvm.Method(kClass, "exportChartJsonToFile", kChart);
    jvm.Method(kClass, "exportInteractiveJsonToFile", kInteractive);
    jvm.Method(kClass, "addGeoJson", kGeo);
    binding = std::make_unique<jsonImager>(jvm.Env());
    EventLog::Get().Clear();
  }

  FakeMethod& Method(const std::string& name, const std::string& signature) {
    return jvm.Method(kClass, name, signature);
  }

  bool ExportChart(bool is_template) {
    return binding->exportChartJsonToFile("chart", {"ignored"}, kFile, 4, 5, 62.5, kCodepage, 2,
                                          is_template);
  }

  bool ExportInteractive(const std::vector<std::string>& documents) {
    return binding->exportInteractiveJsonToFile("chart", kJsonPath, 2, kOptions, 3, 62.5, documents,
                                                kFile, 4, 5, kCodepage, 2);
  }

  // Every method of this binding checks after the lookup too.
  static Events CheckedCall(const std::string& call, const std::string& name,
                            const std::string& signature, const std::string& arguments) {
    return Seq(std::string("GetMethodID(class ") + kClass + ", " + name + ", " + signature + ")",
               NoPendingException(),
               call + "(" + kObject + ", " + name + signature + ", " + arguments + ")",
               NoPendingException());
  }

  static Events AddGeoJson(int nth, const std::string& document) {
    const std::string array = "byte[]#" + std::to_string(nth) + " " + Quoted(document);
    return Seq(ByteArrayArgument(nth, document),
               CheckedCall("CallVoidMethod", "addGeoJson", kGeo, array));
  }

  static Events InteractiveCall(int chart) {
    const std::string array = "byte[]#" + std::to_string(chart) + " \"chart\"";
    return Seq(ByteArrayArgument(chart, "chart"), StringArgument("opt"),
               StringArgument("p\xC3\xA9"), StringArgument("f.js"), StringArgument("U8"),
               CheckedCall("CallBooleanMethod", "exportInteractiveJsonToFile", kInteractive,
                           "\"U8\", " + array + ", \"p\\xC3\\xA9\", \"opt\", \"f.js\", 5"));
  }

  std::unique_ptr<jsonImager> binding;
};

TEST_F(JsonImagerTest, ConstructionFindsTheClassAndMakesTheObject) {
  const jsonImager other(jvm.Env());
  EXPECT_TRUE(Happened(BindingConstruction(kClass)));
}

TEST_F(JsonImagerTest, ConstructionKeepsANullObject) {
  jvm.Fail("NewObject", 1, jvm.MakeThrowable("java/lang/IllegalStateException", "x"));
  const jsonImager other(jvm.Env());
  EXPECT_EQ(other.getObject(), nullptr);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JsonImagerTest, AConstructionThatThrowsEndsTheBase) {
  AccessorProbe::Get().Reset();
  jvm.On("FindClass", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { const jsonImager other(jvm.Env()); }), "JException(a, b, c)");
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
}

TEST_F(JsonImagerTest, DestructionDropsTheEnvAndCallsNothing) {
  AccessorProbe::Get().Reset();
  binding.reset();
  EXPECT_TRUE(Happened({}));
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
  EXPECT_EQ(AccessorProbe::Get().LastEnv(), nullptr);
}

TEST_F(JsonImagerTest, Layout) {
  EXPECT_EQ(sizeof(jsonImager), sizeof(JAccessor));
  EXPECT_EQ(VirtualSlots<jsonImager>(), 2U);
  EXPECT_TRUE(std::has_virtual_destructor_v<jsonImager>);
}

TEST_F(JsonImagerTest, ExportChartJsonToFile) {
  for (const bool is_template : {true, false}) {
    Method("exportChartJsonToFile", kChart).ReturnsBoolean(is_template);
    EXPECT_EQ(ExportChart(is_template), is_template);
    const int nth = is_template ? 1 : 2;
    EXPECT_TRUE(
        Happened(Seq(ByteArrayArgument(nth, "chart"), StringArgument("f.js"), StringArgument("U8"),
                     CheckedCall("CallBooleanMethod", "exportChartJsonToFile", kChart,
                                 "\"U8\", byte[]#" + std::to_string(nth) + " \"chart\", " +
                                     (is_template ? "true" : "false") + ", \"f.js\", 5"))));
  }
}

TEST_F(JsonImagerTest, ExportInteractiveJsonToFileWithoutDocuments) {
  Method("exportInteractiveJsonToFile", kInteractive).ReturnsBoolean(true);
  EXPECT_TRUE(ExportInteractive({}));
  EXPECT_TRUE(Happened(InteractiveCall(1)));
}

TEST_F(JsonImagerTest, ExportInteractiveJsonToFileAddsEachDocumentFirst) {
  Method("exportInteractiveJsonToFile", kInteractive).ReturnsBoolean(true);
  EXPECT_TRUE(ExportInteractive({"one", "", std::string("t\0o", 3)}));
  EXPECT_TRUE(Happened(Seq(AddGeoJson(1, "one"), AddGeoJson(2, ""),
                           AddGeoJson(3, std::string("t\0o", 3)), InteractiveCall(4))));
}

TEST_F(JsonImagerTest, TheNumberOfDocumentsIsReadAfterEachRound) {
  std::vector<std::string> documents = {"one"};
  // Java is native code's caller now and then: the list grows while it is walked.
  Method("addGeoJson", kGeo).Runs([&documents] {
    if (documents.size() < 3) documents.emplace_back("more");
  });
  ExportInteractive(documents);
  EXPECT_TRUE(Happened(
      Seq(AddGeoJson(1, "one"), AddGeoJson(2, "more"), AddGeoJson(3, "more"), InteractiveCall(4))));
}

TEST_F(JsonImagerTest, ADocumentThatJavaRefusesStopsNothing) {
  Method("exportInteractiveJsonToFile", kInteractive).ReturnsBoolean(true);
  Method("addGeoJson", kGeo).Throws(jvm.MakeThrowable("java/lang/IllegalArgumentException", "x"));
  EXPECT_TRUE(ExportInteractive({"one", "two"}));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JsonImagerTest, JavaExceptionsAreFalse) {
  const jthrowable exception = jvm.MakeThrowable("java/io/IOException", "disk full");
  Method("exportChartJsonToFile", kChart).Throws(exception);
  Method("exportInteractiveJsonToFile", kInteractive).Throws(exception);
  EXPECT_FALSE(ExportChart(false));
  EXPECT_FALSE(ExportInteractive({}));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JsonImagerTest, AMissingMethodIsCheckedTwice) {
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoSuchMethodError", "export");
  jvm.Fail("GetMethodID", 1, missing);
  EXPECT_FALSE(ExportChart(true));
  const Events events = EventLog::Get().Texts();
  const Events start =
      Seq(ByteArrayArgument(1, "chart"), StringArgument("f.js"), StringArgument("U8"),
          std::string("GetMethodID(class ") + kClass + ", exportChartJsonToFile, " + kChart + ")",
          // The lookup's own check, and the method's.
          PendingException(missing), NoPendingException(), "CallBooleanMethod(JsonImager@1, null)");
  ASSERT_GE(events.size(), start.size());
  EXPECT_TRUE(SameEvents(
      start, Events(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(start.size()))));
}

TEST_F(JsonImagerTest, NoReferenceIsDeleted) {
  ExportInteractive({"one", "two"});
  ExportChart(true);
  binding.reset();
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("Ref("), std::string::npos) << event;
  }
}

TEST_F(JsonImagerTest, WithoutAnEnvEveryMethodFailsWithoutJava) {
  binding->setEnv(nullptr);
  EXPECT_FALSE(ExportChart(true));
  EXPECT_FALSE(ExportInteractive({"one"}));
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

}  // namespace
}  // namespace chartbridge::testing
