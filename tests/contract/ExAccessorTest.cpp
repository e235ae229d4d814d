// SPDX-License-Identifier: Apache-2.0
#include "export/ExAccessor.h"

#include <cfenv>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

#include "tests/support/AccessorProbe.h"
#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FieldAt.h"
#include "tests/support/ObjectLayout.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/java_client/ex_access/ExKvoAdapter";
constexpr char kObject[] = "ExKvoAdapter@1";
constexpr char kExport[] = "(Ljava/lang/String;)Ljava/lang/String;";
constexpr char kWrite[] = "(Ljava/lang/String;IZ)Z";
constexpr char kCreate[] = "(Ljava/nio/ByteBuffer;Ljava/lang/String;)Z";
constexpr std::size_t kWord = sizeof(void*);

void DefineAdapter(FakeJvm& jvm) {
  jvm.Method(kClass, "<init>", "(Z)V");
  jvm.Method(kClass, "exportOutput", kExport);
  jvm.Method(kClass, "writeOutputDocumentFile", kWrite);
  jvm.Method(kClass, "createOutputDocument", kCreate);
}

class ExAccessorTest : public ContractTest {
 protected:
  ExAccessorTest() { DefineAdapter(jvm); }
  ~ExAccessorTest() override { ExAccessor::s_pCurrentInstance = nullptr; }

  // An exporter on the test's thread, with the events of its making forgotten.
  std::unique_ptr<ExAccessor> Made() {
    auto made = std::make_unique<ExAccessor>(jvm.Env());
    EventLog::Get().Clear();
    return made;
  }

  FakeMethod& Method(const std::string& name, const std::string& signature) {
    return jvm.Method(kClass, name, signature);
  }

  static JNIEnv* EnvOf(const ExAccessor& exporter) { return FieldAt<JNIEnv*>(&exporter, kWord); }

  static Events Construction(const std::string& utf8 = "true") {
    const std::string type = std::string("class ") + kClass;
    return Seq(std::string("FindClass(") + kClass + ")", "GetMethodID(" + type + ", <init>, (Z)V)",
               "qUTF8mode", "NewObject(" + type + ", <init>(Z)V, " + utf8 + ")",
               NoPendingException());
  }

  // Thread, JVM and env, as every export begins, where the JVM runs.
  static Events ExporterFrame() { return Seq(Attach(), "IsStarted"); }

  // A text in the host's encoding, to UTF-16.
  static Events Converted(const std::string& text) {
    return Seq("TESKMBGenericToU16(\"A\", " + Quoted(text) + ")", "ucnv_open(null)",
               "ucnv_fixFileSeparator(" + std::to_string(Utf16(text).size()) + ")", "ucnv_close");
  }

  static Events ExportCall(const std::string& request) {
    return Seq(
        ExporterFrame(), "JNIAccessor", "ToJString(" + Quoted(request) + ", UTF-8)",
        NoPendingException(), "~JNIAccessor",
        JavaCall("CallObjectMethod", kClass, kObject, "exportOutput", kExport, Quoted(request)));
  }

  // The exporter's methods check after the lookup too.
  static Events CheckedCall(const std::string& name, const std::string& signature,
                            const std::string& arguments) {
    return Seq(std::string("GetMethodID(class ") + kClass + ", " + name + ", " + signature + ")",
               NoPendingException(),
               std::string("CallBooleanMethod(") + kObject + ", " + name + signature + ", " +
                   arguments + ")",
               NoPendingException());
  }
};

// ---- Making and destroying.

TEST_F(ExAccessorTest, CreateInstanceWhereTheJvmRuns) {
  const std::unique_ptr<ExAccessor> exporter(ExAccessor::CreateInstance());
  ASSERT_NE(exporter, nullptr);
  EXPECT_TRUE(Happened(Seq("TeskJVM::GetInstance", "IsStarted", ExporterFrame(),
                           "TeskJVM::GetInstance", "GetEnv", Construction())));
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), exporter.get());
  EXPECT_EQ(exporter->getError(), "");
}

TEST_F(ExAccessorTest, CreateInstanceStartsTheJvm) {
  FakePlatform::Get().started = false;
  const std::unique_ptr<ExAccessor> exporter(ExAccessor::CreateInstance());
  ASSERT_NE(exporter, nullptr);
  // No attach here: a thread that starts the JVM belongs to it.
  EXPECT_TRUE(Happened(Seq("TeskJVM::GetInstance", "IsStarted", "StartJVM", "TeskJVM::GetInstance",
                           "GetEnv", Construction())));
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), exporter.get());
}

TEST_F(ExAccessorTest, CreateInstanceOfAJvmThatDoesNotStartIsNull) {
  FakePlatform::Get().started = false;
  FakePlatform::Get().start_works = false;
  EXPECT_EQ(ExAccessor::CreateInstance(), nullptr);
  EXPECT_TRUE(Happened(Seq("TeskJVM::GetInstance", "IsStarted", "StartJVM")));
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), nullptr);
}

TEST_F(ExAccessorTest, CreateInstanceWithoutAJvmObjectIsNull) {
  FakePlatform::Get().has_jvm = false;
  EXPECT_EQ(ExAccessor::CreateInstance(), nullptr);
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), nullptr);
}

TEST_F(ExAccessorTest, CreateInstancePushesTheEnvIntoTheExporterBefore) {
  const std::unique_ptr<ExAccessor> first = Made();
  JNIEnv* worker = jvm.NewEnv("worker");
  FakePlatform::Get().env = worker;
  const std::unique_ptr<ExAccessor> second(ExAccessor::CreateInstance());
  EXPECT_EQ(EnvOf(*first), worker);
  EXPECT_EQ(EnvOf(*second), worker);
}

TEST_F(ExAccessorTest, StartingTheJvmPushesNoEnv) {
  const std::unique_ptr<ExAccessor> first = Made();
  FakePlatform::Get().started = false;
  FakePlatform::Get().env = jvm.NewEnv("worker");
  const std::unique_ptr<ExAccessor> second(ExAccessor::CreateInstance());
  EXPECT_EQ(EnvOf(*first), jvm.Env());
}

TEST_F(ExAccessorTest, TwoInstancesAreTwoObjectsAndTheSecondIsCurrent) {
  ExAccessor* first = ExAccessor::CreateInstance();
  ExAccessor* second = ExAccessor::CreateInstance();
  EXPECT_NE(first, second);
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), second);
  delete second;
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), nullptr);
  // The older one never becomes current again.
  delete first;
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), nullptr);
}

TEST_F(ExAccessorTest, DestroyingAnOlderExporterLeavesTheCurrentOne) {
  ExAccessor* first = ExAccessor::CreateInstance();
  const std::unique_ptr<ExAccessor> second(ExAccessor::CreateInstance());
  delete first;
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), second.get());
}

TEST_F(ExAccessorTest, CreateInstanceWithoutMemoryPropagates) {
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([] { ExAccessor::CreateInstance(); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(
      Seq("TeskJVM::GetInstance", "IsStarted", ExporterFrame(), "TeskJVM::GetInstance", "GetEnv")));
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), nullptr);
}

TEST_F(ExAccessorTest, CreateInstanceWhoseConstructionThrowsKeepsTheCurrentOne) {
  const std::unique_ptr<ExAccessor> first = Made();
  AccessorProbe::Get().Reset();
  jvm.On("NewObject", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([] { ExAccessor::CreateInstance(); }), "JException(a, b, c)");
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), first.get());
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
}

TEST_F(ExAccessorTest, ConstructionTellsJavaWhetherTheHostIsInUtf8Mode) {
  for (const bool utf8 : {true, false}) {
    FakePlatform::Get().utf8_mode = utf8;
    const ExAccessor exporter(jvm.Env());
    EXPECT_TRUE(Happened(Construction(utf8 ? "true" : "false")));
    EXPECT_EQ(ExAccessor::GetCurrentInstance(), &exporter);
  }
}

TEST_F(ExAccessorTest, AnExporterWithoutAJavaObjectIsCurrentToo) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "no documents");
  jvm.Fail("NewObject", 1, exception);
  ExAccessor exporter(jvm.Env());
  EXPECT_EQ(exporter.getObject(), nullptr);
  EXPECT_EQ(jvm.Pending(), nullptr);
  EXPECT_EQ(ExAccessor::GetCurrentInstance(), &exporter);
  EXPECT_FALSE(exporter.WriteOutputDocumentFile("f", true, true));
}

TEST_F(ExAccessorTest, AnExporterBecomesCurrentLast) {
  const std::unique_ptr<ExAccessor> first = Made();
  const ExAccessor* during = nullptr;
  // In the last check of the construction.
  jvm.On("ExceptionOccurred", 1, [&during] { during = ExAccessor::GetCurrentInstance(); });
  const ExAccessor second(jvm.Env());
  EXPECT_EQ(during, first.get());
}

TEST_F(ExAccessorTest, DestructionDropsTheEnvAndCallsNothing) {
  std::unique_ptr<ExAccessor> exporter = Made();
  AccessorProbe::Get().Reset();
  exporter.reset();
  EXPECT_TRUE(Happened({}));
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
  EXPECT_EQ(AccessorProbe::Get().LastEnv(), nullptr);
}

TEST_F(ExAccessorTest, Layout) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  EXPECT_EQ(sizeof(ExAccessor), 5 * kWord + sizeof(std::string));
  EXPECT_EQ(FieldReferenceAt<std::string>(exporter.get(), 5 * kWord), "");
  Method("exportOutput", kExport).Returns(jvm.MakeString("no printer"));
  exporter->ExportOutput("x");
  EXPECT_EQ(FieldReferenceAt<std::string>(exporter.get(), 5 * kWord), "no printer");
  EXPECT_EQ(VirtualSlots<ExAccessor>(), 2U);
  EXPECT_TRUE(std::has_virtual_destructor_v<ExAccessor>);
}

// ---- Threads.

TEST_F(ExAccessorTest, CreateThreadAttachesAndPushesTheEnv) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  JNIEnv* worker = jvm.NewEnv("worker");
  FakePlatform::Get().env = worker;
  ExAccessor::createThread();
  EXPECT_TRUE(Happened(Seq(Attach(), "IsStarted")));
  EXPECT_EQ(EnvOf(*exporter), worker);
}

TEST_F(ExAccessorTest, CreateThreadStartsTheJvmAfterTheAttach) {
  FakePlatform::Get().started = false;
  ExAccessor::createThread();
  EXPECT_TRUE(Happened(Seq(Attach(), "IsStarted", "StartJVM")));
}

TEST_F(ExAccessorTest, CreateThreadWithoutAnExporterIsHarmless) {
  ExAccessor::createThread();
  EXPECT_TRUE(Happened(Seq(Attach(), "IsStarted")));
}

TEST_F(ExAccessorTest, TheEnvGoesIntoTheCurrentExporterNotIntoTheOneThatWorks) {
  const std::unique_ptr<ExAccessor> older = Made();
  const std::unique_ptr<ExAccessor> newest = Made();
  JNIEnv* worker = jvm.NewEnv("worker");
  FakePlatform::Get().env = worker;
  older->ExportOutput("x");
  EXPECT_EQ(EnvOf(*older), jvm.Env());
  EXPECT_EQ(EnvOf(*newest), worker);
}

TEST_F(ExAccessorTest, SetEnvStoresTheEnv) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  JNIEnv* worker = jvm.NewEnv("worker");
  exporter->setEnv(worker);
  EXPECT_EQ(EnvOf(*exporter), worker);
  EXPECT_TRUE(Happened({}));
}

// ---- Exports.

TEST_F(ExAccessorTest, ExportOutputOfAnEmptyAnswerIsTrue) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("exportOutput", kExport).Returns(jvm.MakeString(""));
  EXPECT_TRUE(exporter->ExportOutput("FORMAT=pdf"));
  EXPECT_TRUE(Happened(Seq(ExportCall("FORMAT=pdf"), TranscodedResult(""))));
  EXPECT_EQ(exporter->getError(), "");
}

TEST_F(ExAccessorTest, ExportOutputKeepsTheErrorText) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("exportOutput", kExport).Returns(jvm.MakeString("caf\xC3\xA9 is closed"));
  EXPECT_FALSE(exporter->ExportOutput(""));
  EXPECT_TRUE(Happened(Seq(ExportCall(""), TranscodedResult("caf\xC3\xA9 is closed"))));
  EXPECT_EQ(exporter->getError(), "caf\xC3\xA9 is closed");
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);

  Method("exportOutput", kExport).Returns(jvm.MakeString("other"));
  EXPECT_FALSE(exporter->ExportOutput(""));
  EXPECT_EQ(exporter->getError(), "other");
  Method("exportOutput", kExport).Returns(jvm.MakeString(""));
  EXPECT_TRUE(exporter->ExportOutput(""));
  EXPECT_EQ(exporter->getError(), "");
}

TEST_F(ExAccessorTest, ANullAnswerRepeatsTheResultBefore) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("exportOutput", kExport).Returns(nullptr);
  EXPECT_TRUE(exporter->ExportOutput("x"));
  EXPECT_TRUE(Happened(ExportCall("x")));

  Method("exportOutput", kExport).Returns(jvm.MakeString("failed"));
  EXPECT_FALSE(exporter->ExportOutput("x"));
  Method("exportOutput", kExport).Returns(nullptr);
  EXPECT_FALSE(exporter->ExportOutput("x"));
  EXPECT_EQ(exporter->getError(), "failed");
}

TEST_F(ExAccessorTest, AJavaExceptionRepeatsTheResultBefore) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  const jthrowable exception = jvm.MakeThrowable("java/io/IOException", "disk full");
  Method("exportOutput", kExport).Throws(exception);
  EXPECT_TRUE(exporter->ExportOutput("x"));
  EXPECT_TRUE(Happened(
      Seq(ExporterFrame(), "JNIAccessor", "ToJString(\"x\", UTF-8)", NoPendingException(),
          "~JNIAccessor",
          std::string("GetMethodID(class ") + kClass + ", exportOutput, " + kExport + ")",
          std::string("CallObjectMethod(") + kObject + ", exportOutput" + kExport + ", \"x\")",
          PendingException(exception))));
}

TEST_F(ExAccessorTest, ExportOutputIsReadUpToItsZeroUnitWhateverItsLength) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("exportOutput", kExport).Returns(jvm.MakeString("the whole text"));
  jvm.Fail("GetStringLength", 1);
  EXPECT_FALSE(exporter->ExportOutput("x"));
  EXPECT_EQ(exporter->getError(), "the whole text");
}

TEST_F(ExAccessorTest, TheRequestEndsAtItsFirstZeroByte) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  exporter->ExportOutput(std::string("a\0b", 3));
  EXPECT_TRUE(Happened(ExportCall("a")));
}

TEST_F(ExAccessorTest, WriteOutputDocumentFile) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  const struct {
    bool option1;
    bool option2;
    const char* arguments;
  } cases[] = {{true, false, "1, true"},
               {false, true, "0, false"},
               {true, true, "0, true"},
               {false, false, "1, false"}};
  for (const auto& test : cases) {
    for (const bool answer : {true, false}) {
      Method("writeOutputDocumentFile", kWrite).ReturnsBoolean(answer);
      EXPECT_EQ(exporter->WriteOutputDocumentFile("out.pdf", test.option1, test.option2), answer);
      EXPECT_TRUE(Happened(Seq(ExporterFrame(), Converted("out.pdf"), StringArgument("out.pdf"),
                               CheckedCall("writeOutputDocumentFile", kWrite,
                                           std::string("\"out.pdf\", ") + test.arguments))));
    }
  }
}

TEST_F(ExAccessorTest, WriteOutputDocumentFileWithoutAPathCallsNoJava) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("writeOutputDocumentFile", kWrite).ReturnsBoolean(true);
  EXPECT_FALSE(exporter->WriteOutputDocumentFile("", true, true));
  EXPECT_TRUE(Happened(Seq(ExporterFrame(), Converted(""))));
  FakePlatform::Get().generic_to_u16_result = 5;
  EXPECT_FALSE(exporter->WriteOutputDocumentFile("path", true, true));
  EXPECT_TRUE(Happened(Seq(ExporterFrame(), "TESKMBGenericToU16(\"A\", \"path\")")));
}

TEST_F(ExAccessorTest, WriteOutputDocumentFileWhoseMethodIsMissingIsFalse) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("writeOutputDocumentFile", kWrite).ReturnsBoolean(true);
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoSuchMethodError", "write");
  jvm.Fail("GetMethodID", 1, missing);
  EXPECT_FALSE(exporter->WriteOutputDocumentFile("p", true, true));
  const Events events = EventLog::Get().Texts();
  // The lookup's own check finds the exception, and the one after the lookup nothing.
  const Events start =
      Seq(ExporterFrame(), Converted("p"), StringArgument("p"),
          std::string("GetMethodID(class ") + kClass + ", writeOutputDocumentFile, " + kWrite + ")",
          PendingException(missing), NoPendingException(),
          std::string("CallBooleanMethod(") + kObject + ", null)");
  ASSERT_GE(events.size(), start.size());
  EXPECT_TRUE(SameEvents(
      start, Events(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(start.size()))));
}

TEST_F(ExAccessorTest, CreateOutputDocumentSharesTheContent) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  const std::string content = "document";
  jvm.NameMemory(content.data(), "content");
  for (const bool answer : {true, false}) {
    Method("createOutputDocument", kCreate).ReturnsBoolean(answer);
    EXPECT_EQ(exporter->CreateOutputDocument(content, "name"), answer);
    EXPECT_TRUE(Happened(
        Seq(ExporterFrame(),
            // No check follows the buffer.
            "NewDirectByteBuffer(content, 8)", Converted("name"), StringArgument("name"),
            CheckedCall("createOutputDocument", kCreate, "ByteBuffer(content, 8), \"name\""))));
  }
}

TEST_F(ExAccessorTest, CreateOutputDocumentWithoutANameCallsNoJava) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("createOutputDocument", kCreate).ReturnsBoolean(true);
  EXPECT_FALSE(exporter->CreateOutputDocument("content", ""));
  EXPECT_TRUE(Happened(Seq(ExporterFrame(), "NewDirectByteBuffer(\"content\", 7)", Converted(""))));
  FakePlatform::Get().generic_to_u16_result = -1;
  EXPECT_FALSE(exporter->CreateOutputDocument("content", "name"));
  EXPECT_TRUE(Happened(Seq(ExporterFrame(), "NewDirectByteBuffer(\"content\", 7)",
                           "TESKMBGenericToU16(\"A\", \"name\")")));
}

TEST_F(ExAccessorTest, CreateOutputDocumentLooksForItsBufferAfterTheName) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("createOutputDocument", kCreate).ReturnsBoolean(true);
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_FALSE(exporter->CreateOutputDocument("content", "name"));
  EXPECT_TRUE(Happened(Seq(ExporterFrame(), "NewDirectByteBuffer(\"content\", 7)",
                           Converted("name"), StringArgument("name"))));
}

TEST_F(ExAccessorTest, CreateOutputDocumentOfNoContent) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  Method("createOutputDocument", kCreate).ReturnsBoolean(true);
  EXPECT_TRUE(exporter->CreateOutputDocument("", "name"));
  EXPECT_EQ(EventLog::Get().Texts(Source::kJni).front(), "NewDirectByteBuffer(\"\", 0)");
}

TEST_F(ExAccessorTest, NewString) {
  const std::unique_ptr<ExAccessor> exporter = Made();
  const jstring string = exporter->newString("caf\xC3\xA9");
  EXPECT_EQ(jvm.Describe(string), "\"caf\\xC3\\xA9\"");
  EXPECT_TRUE(Happened(Seq(Converted("caf\xC3\xA9"), StringArgument("caf\xC3\xA9"))));
  EXPECT_EQ(exporter->newString(""), nullptr);
  EXPECT_TRUE(Happened(Converted("")));
}

// ---- What holds for every export.

struct Export {
  const char* name;
  bool (*run)(ExAccessor&);
};

class EveryExportTest : public ExAccessorTest, public ::testing::WithParamInterface<Export> {
 protected:
  EveryExportTest() {
    Method("exportOutput", kExport).Returns(jvm.MakeString(""));
    Method("writeOutputDocumentFile", kWrite).ReturnsBoolean(true);
    Method("createOutputDocument", kCreate).ReturnsBoolean(true);
    exporter = Made();
  }

  std::unique_ptr<ExAccessor> exporter;
};

TEST_P(EveryExportTest, StartsTheJvmThatDoesNotRun) {
  FakePlatform::Get().started = false;
  EXPECT_TRUE(GetParam().run(*exporter));
  const Events events = EventLog::Get().Texts();
  EXPECT_TRUE(SameEvents(Seq(Attach(), "IsStarted", "StartJVM"),
                         Events(events.begin(), events.begin() + 4)));
}

TEST_P(EveryExportTest, GoesOnWithAJvmThatDoesNotStart) {
  FakePlatform::Get().started = false;
  FakePlatform::Get().start_works = false;
  FakePlatform::Get().env = nullptr;
  const bool result = GetParam().run(*exporter);
  // An export without an answer repeats the result before.
  EXPECT_EQ(result, std::string(GetParam().name) == "ExportOutput");
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_P(EveryExportTest, WithoutAJvmObjectCallsNoJava) {
  FakePlatform::Get().has_jvm = false;
  GetParam().run(*exporter);
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_P(EveryExportTest, TakesNoLockAndKeepsNoFloatingPointEnvironment) {
  const auto change = [] { std::fesetround(FE_UPWARD); };
  Method("exportOutput", kExport).Runs(change);
  Method("writeOutputDocumentFile", kWrite).Runs(change);
  Method("createOutputDocument", kCreate).Runs(change);
  GetParam().run(*exporter);
  const int mode = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(mode, FE_UPWARD);
  for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
    EXPECT_EQ(event.find("lock"), std::string::npos) << event;
  }
}

TEST_P(EveryExportTest, CallsJavaOnTheCallingThread) {
  FakePlatform::Get().env = jvm.NewEnv("worker");
  EXPECT_TRUE(GetParam().run(*exporter));
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
}

TEST_P(EveryExportTest, NativeExceptionsPropagate) {
  FakePlatform::Get().on_attach = [] { throw JException("a", "b", "c"); };
  EXPECT_EQ(Thrown([this] { GetParam().run(*exporter); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(Attach()));
  FakePlatform::Get().on_attach = nullptr;

  jvm.On("GetMethodID", 1, [] { throw std::bad_alloc(); });
  EventLog::Get().Include(Source::kMemory);
  EXPECT_EQ(Thrown([this] { GetParam().run(*exporter); }), "std::bad_alloc");
  int balance = 0;
  for (const std::string& event : EventLog::Get().Texts(Source::kMemory)) {
    balance += event.find("new[]") == 0 ? 1 : -1;
  }
  EXPECT_EQ(balance, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Exports, EveryExportTest,
    ::testing::Values(Export{"ExportOutput", [](ExAccessor& e) { return e.ExportOutput("x"); }},
                      Export{"WriteOutputDocumentFile",
                             [](ExAccessor& e) {
                               return e.WriteOutputDocumentFile("p", true, false);
                             }},
                      Export{"CreateOutputDocument",
                             [](ExAccessor& e) { return e.CreateOutputDocument("c", "n"); }}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace chartbridge::testing
