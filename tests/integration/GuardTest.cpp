// SPDX-License-Identifier: Apache-2.0
// What wrong JNI calls do on a real JVM: bare, and under the guard.
#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/integration/ChildProcess.h"
#include "tests/integration/JavaHomes.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

constexpr int kSeconds = 30;
constexpr char kFatalError[] = "A fatal error has been detected by the Java Runtime Environment";

// In a sanitizer's build it is the sanitizer that ends the process where the C library would.
constexpr char kSanitizerError[] = "ERROR: AddressSanitizer";

/// What happens without the guard, on every JVM of today.
enum class Bare {
  /// The JVM or the C library ends the process.
  kDies,
  /// Undefined: the process dies, hangs, or goes on with a stray exception or wrong data.
  kGoesWrong,
  /// What the guard does, too.
  kSame,
};

struct Row {
  const char* name;
  Bare bare;
  /// What the sequence prints under the guard.
  std::vector<std::string> lines;
  /// What the guard counts, in the order of its kinds.
  std::vector<std::string> caught;
};

void PrintTo(const Row& row, std::ostream* stream) { *stream << row.name; }

constexpr char kNone[] = "pending=none";
constexpr char kReferences[] = " references given back as another kind";
constexpr char kOtherArray[] = " array elements released against another array";
constexpr char kNotOut[] = " array elements or texts released that were not out";
constexpr char kNulls[] = " array and string functions on null";
constexpr char kNullClass[] = " objects and methods of a null class";
constexpr char kNullCall[] = " calls on null or without a method";
constexpr char kWrapped[] = " byte arrays wrapped in a ByteBuffer";
constexpr char kForeignEnv[] = " uses of another thread's env";
constexpr char kBadInput[] = " other null or impossible inputs";

std::string NullPointer(const std::string& message) {
  return "pending=java.lang.NullPointerException: JNI " + message;
}

std::string NullReference(const std::string& function) {
  return NullPointer(function + ": the array or string is null");
}

std::string NoClass(const std::string& message) {
  return "pending=java.lang.NoClassDefFoundError: " + message;
}

std::string NoMethod(const std::string& message) {
  return "pending=java.lang.NoSuchMethodError: JNI " + message;
}

std::vector<Row> Rows() {
  return {
      {"DeleteGlobalOfLocal", Bare::kDies, {"type=0", kNone}, {std::string("1") + kReferences}},
      {"DeleteLocalOfGlobal",
       Bare::kGoesWrong,
       {"kept=kept", "leaked=0", kNone},
       {std::string("1") + kReferences}},
      {"DeleteGlobalOfWeak", Bare::kDies, {"done=1", kNone}, {std::string("1") + kReferences}},
      {"DeleteWeakOfLocal", Bare::kDies, {"done=1", kNone}, {std::string("1") + kReferences}},
      {"DeleteRightKinds", Bare::kSame, {"text=text", kNone}, {}},

      {"ReleaseAgainstOther",
       Bare::kSame,
       {"first=4", "key=1 2 3", "value=4 5 6 7", kNone},
       {std::string("1") + kOtherArray}},
      {"ReleaseEmptyAgainstOther",
       Bare::kDies,
       {"key=1 2 3", kNone},
       {std::string("1") + kOtherArray}},
      {"ReleaseAgainstEmpty", Bare::kSame, {"value=4 5", kNone}, {std::string("1") + kOtherArray}},
      {"ReleaseAgainstNull", Bare::kDies, {"value=9 5", kNone}, {std::string("1") + kOtherArray}},
      {"CopyBackAgainstOther",
       Bare::kGoesWrong,
       {"own=9 4", "own=9 8", "other=1 2 5", kNone},
       {std::string("2") + kOtherArray}},
      {"CopyBackAgainstSameLength",
       Bare::kGoesWrong,
       {"own=9 4", "own=9 8", "other=1 2", kNone},
       {std::string("2") + kOtherArray}},
      {"CopyBackOfOneElement",
       Bare::kGoesWrong,
       {"first=3", "own=7", "other=1", "first=7", "own=11", "other=1 2", kNone},
       {std::string("2") + kOtherArray}},
      {"CopyBackByAliasAfterFrame",
       Bare::kSame,
       {"array=9 2", "other=5 6", kNone},
       {std::string("1") + kOtherArray}},
      {"CopyBackAcrossNativeCalls",
       Bare::kSame,
       {"arrays=[9, 2][5, 6]", kNone},
       {std::string("1") + kOtherArray}},
      {"ReleaseTwice", Bare::kDies, {"array=1 2", kNone}, {std::string("1") + kNotOut}},
      {"ReleaseUnknown", Bare::kDies, {"array=1 2", kNone}, {std::string("1") + kNotOut}},
      {"ReleaseAsOtherType", Bare::kSame, {"length=2", kNone}, {std::string("1") + kOtherArray}},
      {"ElementsRightUse",
       Bare::kSame,
       {"committed=10 2 3", "aborted=10 2 3", "alias=10 2 30", "gone=11 2 30", kNone},
       {}},
      {"ElementsOfAllTypes",
       Bare::kSame,
       {"boolean=1", "byte=1", "char=1", "short=1", "int=1", "long=1", "float=1", "double=1",
        kNone},
       {}},
      {"ElementsDoNotLeak", Bare::kDies, {"grown=0", kNone}, {std::string("2000") + kOtherArray}},
      {"ManyElementsOut", Bare::kSame, {"done=1", kNone}, {}},
      {"FreeUnreleased",
       Bare::kGoesWrong,
       {"freed=3", "array=9 2 3", kNone},
       {std::string("3") + kNotOut}},
      {"TextsAreTerminated", Bare::kSame, {"units=1", "bytes=1", kNone}, {}},
      {"TextsKeepZeros", Bare::kSame, {"units=1", "bytes=1", kNone}, {}},
      {"ReleaseTextTwice", Bare::kGoesWrong, {"text=text", kNone}, {std::string("2") + kNotOut}},
      {"ReleaseTextOfNothing", Bare::kSame, {"text=text", kNone}, {}},

      {"ArrayLengthOfNull",
       Bare::kDies,
       {"length=0", NullReference("GetArrayLength")},
       {std::string("1") + kNulls}},
      {"ByteElementsOfNull",
       Bare::kDies,
       {"elements=null", NullPointer("GetByteArrayElements: the array is null")},
       {std::string("2") + kNulls}},
      {"LongElementsOfNull",
       Bare::kDies,
       {"elements=null", NullPointer("GetLongArrayElements: the array is null")},
       {std::string("1") + kNulls}},
      {"ReleaseNullOfNull",
       Bare::kDies,
       {NullPointer("ReleaseLongArrayElements: the array is null")},
       {std::string("1") + kNulls}},
      {"ObjectElementOfNull",
       Bare::kDies,
       {"element=null", NullReference("GetObjectArrayElement")},
       {std::string("1") + kNulls}},
      {"SetRegionOfNull",
       Bare::kDies,
       {NullReference("SetByteArrayRegion")},
       {std::string("1") + kNulls}},
      {"SetRegionFromNull",
       Bare::kDies,
       {NullPointer("SetByteArrayRegion: the memory is null")},
       {std::string("1") + kNulls}},
      {"GetRegionOfNull",
       Bare::kDies,
       {"value=1", NullReference("GetByteArrayRegion")},
       {std::string("1") + kNulls}},
      {"CriticalOfNull",
       Bare::kDies,
       {"elements=null", NullReference("GetPrimitiveArrayCritical")},
       {std::string("1") + kNulls}},
      {"StringLengthOfNull",
       Bare::kDies,
       {"length=0", NullReference("GetStringLength")},
       {std::string("1") + kNulls}},
      {"StringCharsOfNull",
       Bare::kDies,
       {"chars=null", NullReference("GetStringChars")},
       {std::string("1") + kNulls}},
      {"StringUtfCharsOfNull",
       Bare::kDies,
       {"chars=null", NullReference("GetStringUTFChars")},
       {std::string("1") + kNulls}},

      {"NewObjectOfNullClass",
       Bare::kDies,
       {"object=null", NoClass("JNI NewObject: the class is null")},
       {std::string("1") + kNullClass}},
      {"NewObjectOfNullMethod",
       Bare::kDies,
       {"object=null", NoMethod("NewObject: the constructor is null")},
       {std::string("1") + kNullClass}},
      {"MethodOfNullClass",
       Bare::kDies,
       {"method=null", NoClass("JNI GetMethodID: the class is null")},
       {std::string("1") + kNullClass}},
      {"MethodWithoutName",
       Bare::kGoesWrong,
       {"method=null", NoMethod("GetStaticMethodID: the name or the signature is null")},
       {std::string("1") + kNullClass}},
      {"ClassWithoutName",
       Bare::kGoesWrong,
       {"class=null", NoClass("JNI FindClass: the name is null")},
       {std::string("1") + kNullClass}},
      {"MissingClass",
       Bare::kDies,
       {"class=null", NoClass("no/such/Type"), "object=null",
        NoClass("JNI NewObject: the class is null"), "result=null",
        NullPointer("CallObjectMethod: the object is null")},
       {std::string("1") + kNullClass, std::string("1") + kNullCall}},

      {"CallOnNullObject",
       Bare::kGoesWrong,
       {"result=null", NullPointer("CallObjectMethod: the object is null")},
       {std::string("1") + kNullCall}},
      {"CallWithoutMethod",
       Bare::kDies,
       {"result=null", NoMethod("CallObjectMethod: the method is null")},
       {std::string("1") + kNullCall}},
      {"CallPlainOnNull",
       Bare::kDies,
       {"object=null", NullPointer("CallObjectMethod: the object is null"), "new=null",
        NoClass("JNI NewObject: the class is null")},
       {std::string("1") + kNullClass, std::string("1") + kNullCall}},
      {"CallEveryTypeOnNull",
       Bare::kDies,
       {"boolean=0", "byte=0", "char=0", "short=0", "int=0", "long=0", "float=1", "double=1",
        NullPointer("CallBooleanMethod: the object is null")},
       {std::string("18") + kNullCall}},
      {"CallStaticOfNullClass",
       Bare::kDies,
       {"result=0", NoClass("JNI CallStaticIntMethod: the class is null")},
       {std::string("1") + kNullCall}},
      {"CallNonvirtualOnNull",
       Bare::kDies,
       {"result=0", NullPointer("CallNonvirtualIntMethod: the object is null")},
       {std::string("1") + kNullCall}},
      {"CallEveryType",
       Bare::kSame,
       {"boolean=1", "byte=-7", "char=120", "short=-300", "int=70000", "intA=70000", "intC=70000",
        "nonvirtual=70000", "long=5000000000", "float=1", "double=1", "static=42", kNone},
       {}},

      {"BufferFromArray", Bare::kGoesWrong, {"result=7", kNone}, {std::string("1") + kWrapped}},
      {"BufferAmongOthers",
       Bare::kGoesWrong,
       {"wrapped=true -1 120 -2 -3 heap[1, 2] 5000000000 1.5 2.25 [1, 2] direct[3, 4, 5] text",
        "null=false 1 120 2 3 null 4 0.5 0.25 [1, 2] heap[1, 2] null", kNone},
       {std::string("2") + kWrapped}},
      {"BufferInEveryForm",
       Bare::kGoesWrong,
       {"boolean=1", "booleanA=1", "booleanC=1", "nonvirtual=1", "nonvirtualA=1",
        "static=heap[1, 2] text", "staticA=heap[1, 2] text", "new=heap[1, 2] 5", kNone},
       {std::string("9") + kWrapped}},
      {"ArrayWhereObjectIsMeant", Bare::kSame, {"type=[B", kNone}, {}},

      {"EnvOfOtherThread",
       Bare::kGoesWrong,
       {"thread=user", "attached=1", NoClass("no/such/Type"), kNone},
       {std::string("1011") + kForeignEnv}},
      {"EnvOnUnattachedThread",
       Bare::kGoesWrong,
       {"thread=Thre", "attached=1", NoClass("no/such/Type"), kNone},
       {std::string("1011") + kForeignEnv}},
      {"EnvAfterDetach", Bare::kSame, {"length=3", "length=4", "length=5", kNone}, {}},

      {"NewStringOfNull",
       Bare::kDies,
       {"text=null", NullPointer("NewString: the text is null")},
       {std::string("1") + kBadInput}},
      {"NewStringOfNothing", Bare::kSame, {"length=0", kNone}, {}},
      {"NewStringOfNegativeLength",
       Bare::kSame,
       {"text=null", "pending=java.lang.NegativeArraySizeException: -1"},
       {}},
      {"ClassOfNull",
       Bare::kDies,
       {"class=null", NullPointer("GetObjectClass: the object is null")},
       {std::string("1") + kBadInput}},
      {"InstanceOfNullClass",
       Bare::kDies,
       {"result=0", NoClass("JNI IsInstanceOf: the class is null")},
       {std::string("1") + kNullClass}},
      {"DirectBufferOfNull",
       Bare::kDies,
       {"buffer=null", NullPointer("NewDirectByteBuffer: the memory is null")},
       {std::string("1") + kBadInput}},
      {"DirectBufferOfNothing", Bare::kSame, {"buffer=an object", kNone}, {}},
      {"DirectBufferTooLarge",
       Bare::kGoesWrong,
       {"buffer=null",
        "pending=java.lang.IllegalArgumentException: JNI NewDirectByteBuffer: a buffer holds 0 to "
        "2147483647 bytes"},
       {std::string("1") + kBadInput}},
      {"FirstExceptionStays",
       Bare::kDies,
       {"length=0", "elements=null", "result=null",
        "pending=java.lang.IllegalStateException: the first"},
       {std::string("2") + kNulls, std::string("1") + kNullCall}},
  };
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

std::string ExpectedOutput(const Row& row, bool guarded) {
  std::string text = Joined(row.lines);
  if (guarded) {
    for (const std::string& caught : row.caught) text += "caught=" + caught + "\n";
  }
  return text + "health=42\nended=1\n";
}

ChildResult RunProbe(const std::string& home, const std::vector<std::string>& arguments) {
  std::vector<std::string> command{CHARTBRIDGE_TEST_PROBE};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return RunChild(command, {{"JAVA_HOME", home}, {"TESK_CLASSPATH", ""}}, kSeconds);
}

bool HasDied(const ChildResult& result) {
  if (result.end == ChildResult::End::kSignal) return true;
  const bool reported = result.output.find(kFatalError) != std::string::npos ||
                        result.errors.find(kSanitizerError) != std::string::npos;
  return result.end == ChildResult::End::kExit && result.code != 0 && reported;
}

// For whoever reads the log: what this JVM really did.
std::string Summary(const ChildResult& result) {
  if (HasDied(result)) return "died (" + result.Words() + ")";
  std::string lines = result.output;
  for (char& c : lines) c = c == '\n' ? ';' : c;
  return result.Words() + ": " + lines;
}

class GuardRow : public testing::TestWithParam<Row> {
 protected:
  static void ExpectBare(const std::string& home) {
    const Row& row = GetParam();
    const ChildResult result = RunProbe(home, {row.name, "bare"});
    std::cout << "bare on " << home << ": " << Summary(result) << "\n";
    const bool same = result.Words() == "exit 0" && result.output == ExpectedOutput(row, false);
    switch (row.bare) {
      case Bare::kDies:
        EXPECT_TRUE(HasDied(result)) << result.Words() << "\n" << result.output << result.errors;
        break;
      case Bare::kGoesWrong:
        EXPECT_FALSE(same) << "this JVM needs no guard here";
        break;
      case Bare::kSame:
        EXPECT_TRUE(same) << result.Words() << "\n" << result.output << result.errors;
        break;
    }
  }

  static void ExpectGuarded(const std::string& home) {
    const Row& row = GetParam();
    const ChildResult result = RunProbe(home, {row.name, "guarded"});
    EXPECT_EQ(result.Words(), "exit 0") << result.errors;
    EXPECT_EQ(result.output, ExpectedOutput(row, true));
    EXPECT_EQ(result.errors, "");
  }
};

TEST_P(GuardRow, BareOnDefaultJvm) { ExpectBare(DefaultJavaHome()); }

TEST_P(GuardRow, GuardedOnDefaultJvm) { ExpectGuarded(DefaultJavaHome()); }

TEST_P(GuardRow, BareOnOtherJvm) {
  if (OtherJavaHome().empty()) GTEST_SKIP() << "there is one JVM on this machine";
  ExpectBare(OtherJavaHome());
}

TEST_P(GuardRow, GuardedOnOtherJvm) {
  if (OtherJavaHome().empty()) GTEST_SKIP() << "there is one JVM on this machine";
  ExpectGuarded(OtherJavaHome());
}

INSTANTIATE_TEST_SUITE_P(All, GuardRow, testing::ValuesIn(Rows()),
                         [](const auto& each) { return std::string(each.param.name); });

constexpr char kReport[] =
    "jniguard: 1 calls caught\n"
    "  0 references given back as another kind\n"
    "  0 array elements released against another array\n"
    "  0 array elements or texts released that were not out\n"
    "  1 array and string functions on null\n"
    "  0 objects and methods of a null class\n"
    "  0 calls on null or without a method\n"
    "  0 byte arrays wrapped in a ByteBuffer\n"
    "  0 uses of another thread's env\n"
    "  0 other null or impossible inputs\n";

constexpr char kLength[] =
    "length=0\n"
    "pending=java.lang.NullPointerException: JNI GetArrayLength: the array or string is null\n"
    "caught=1 array and string functions on null\n"
    "health=42\nended=1\n";

class GuardOptions : public testing::TestWithParam<std::string> {};

// The ways into a process do the same: loaded by the host, by the JVM's option, and into a JVM that
// runs already.
TEST_P(GuardOptions, ReportsAtTheEnd) {
  const ChildResult result =
      RunProbe(DefaultJavaHome(), {"ArrayLengthOfNull", GetParam(), "report"});
  EXPECT_EQ(result.Words(), "exit 0");
  EXPECT_EQ(result.output, kLength);
  EXPECT_EQ(result.errors, kReport);
}

TEST_P(GuardOptions, ReportsIntoFile) {
  const TempFolder folder;
  const std::string file = folder.Path() + "/report.txt";
  const ChildResult result =
      RunProbe(DefaultJavaHome(), {"ArrayLengthOfNull", GetParam(), "report=" + file});
  EXPECT_EQ(result.Words(), "exit 0");
  EXPECT_EQ(result.output, kLength);
  EXPECT_EQ(result.errors, "");
  std::ifstream report(file);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(report), {}), kReport);
}

TEST_P(GuardOptions, ReportsOnErrorStreamWhereFileCannotBeWritten) {
  const ChildResult result =
      RunProbe(DefaultJavaHome(), {"ArrayLengthOfNull", GetParam(), "report=/no/such/folder/file"});
  EXPECT_EQ(result.errors,
            std::string("jniguard: cannot write the report to /no/such/folder/file\n") + kReport);
}

TEST_P(GuardOptions, ReportsWithoutEndOfJvm) {
  const ChildResult result =
      RunProbe(DefaultJavaHome(), {"ArrayLengthOfNull", GetParam(), "report", "leave"});
  EXPECT_EQ(result.Words(), "exit 0");
  EXPECT_EQ(result.errors, kReport);
}

TEST_P(GuardOptions, LogsEachCall) {
  const ChildResult result = RunProbe(DefaultJavaHome(), {"ByteElementsOfNull", GetParam(), "log"});
  EXPECT_EQ(result.Words(), "exit 0");
  EXPECT_EQ(result.errors,
            "jniguard: GetByteArrayElements: the array is null\n"
            "jniguard: ReleaseByteArrayElements: the array is null\n");
}

TEST_P(GuardOptions, NamesUnknownOption) {
  const ChildResult result =
      RunProbe(DefaultJavaHome(), {"ArrayLengthOfNull", GetParam(), "reprot,log"});
  EXPECT_EQ(result.Words(), "exit 0");
  EXPECT_EQ(result.output, kLength);
  EXPECT_EQ(result.errors,
            "jniguard: unknown option \"reprot\" ignored; there are: report, report=FILE, log\n"
            "jniguard: GetArrayLength: the array or string is null\n");
}

// The last of them: from a thread that has floating-point traps enabled and is not attached.
INSTANTIATE_TEST_SUITE_P(All, GuardOptions, testing::Values("guarded", "agent", "attach", "traps"),
                         [](const auto& each) { return each.param; });

}  // namespace
}  // namespace chartbridge
