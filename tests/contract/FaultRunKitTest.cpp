// SPDX-License-Identifier: Apache-2.0
// That the fault run finds what it is there to find: small operations with one mistake each.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cfenv>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "bridge/JAccessor.h"
#include "tests/support/FaultRun.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "org/example/Chart";
constexpr char kDraw[] = "()[B";

// An operation of three JNI calls: the class, the method and the call, whose result it copies.
class SmallScene : public FaultScene {
 public:
  explicit SmallScene(std::function<std::string(JAccessor&)> run) : _run(std::move(run)) {
    jvm.Method(kClass, "draw", kDraw).Returns(jvm.MakeBytes("picture", "picture"));
  }

  void Start() override {}
  std::string Run() override {
    JAccessor accessor(jvm.Env());
    return _run(accessor);
  }

 private:
  std::function<std::string(JAccessor&)> _run;
};

FaultOperation Small(const std::function<std::string(JAccessor&)>& run) {
  FaultOperation operation;
  operation.name = "small";
  operation.scene = [run] { return std::make_unique<SmallScene>(run); };
  operation.success = "picture";
  operation.failure = "";
  // It is given its env by the test.
  operation.over_own_env = false;
  return operation;
}

jbyteArray Draw(JAccessor& accessor) {
  accessor.setClass(kClass);
  accessor.setMethod("draw", kDraw);
  const jobject picture =
      accessor.jni()->CallObjectMethod(accessor.getObject(), accessor.getMethodID());
  accessor.exceptionCheck();
  return static_cast<jbyteArray>(picture);
}

std::string Copy(JAccessor& accessor, jbyteArray array) {
  if (array == nullptr) return "";
  const jsize length = accessor.jni()->GetArrayLength(array);
  jbyte* elements = accessor.jni()->GetByteArrayElements(array, nullptr);
  if (elements == nullptr) return "";
  const std::string bytes(reinterpret_cast<const char*>(elements),
                          static_cast<std::size_t>(length));
  accessor.jni()->ReleaseByteArrayElements(array, elements, JNI_ABORT);
  return bytes;
}

// Java calls need an object; any will do here.
void Bind(JAccessor& accessor) {
  accessor.setObject(FakeJvm::Of(accessor.jni()).MakeObject(kClass));
}

// What the fault run reports.
int Reported(const FaultOperation& operation) {
  ::testing::TestPartResultArray results;
  {
    const ::testing::ScopedFakeTestPartResultReporter reporter(
        ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
    RunFaults(operation);
  }
  return results.size();
}

TEST(FaultRunKitTest, FindsNothingWhereNothingIsWrong) {
  EXPECT_EQ(Reported(Small([](JAccessor& accessor) {
              Bind(accessor);
              return Copy(accessor, Draw(accessor));
            })),
            0);
}

TEST(FaultRunKitTest, FindsAFailureThatIsToldAsSuccess) {
  EXPECT_GT(Reported(Small([](JAccessor& accessor) {
              Bind(accessor);
              const std::string bytes = Copy(accessor, Draw(accessor));
              return bytes.empty() ? std::string("picture") : bytes;
            })),
            0);
}

TEST(FaultRunKitTest, FindsElementsThatAreKept) {
  EXPECT_GT(Reported(Small([](JAccessor& accessor) {
              Bind(accessor);
              const jbyteArray array = Draw(accessor);
              const jbyteArray other = Draw(accessor);
              if (array == nullptr) return std::string();
              jbyte* kept = accessor.jni()->GetByteArrayElements(array, nullptr);
              // Released only where the second drawing went well.
              if (other == nullptr || kept == nullptr) return std::string();
              accessor.jni()->ReleaseByteArrayElements(array, kept, JNI_ABORT);
              return Copy(accessor, other);
            })),
            0);
}

TEST(FaultRunKitTest, FindsAFloatingPointEnvironmentThatIsNotRestored) {
  EXPECT_GT(Reported(Small([](JAccessor& accessor) {
              Bind(accessor);
              std::fenv_t env;
              fegetenv(&env);
              const std::string bytes = Copy(accessor, Draw(accessor));
              if (!bytes.empty()) fesetenv(&env);
              return bytes;
            })),
            0);
}

TEST(FaultRunKitTest, FindsMemoryThatIsKept) {
  EXPECT_GT(Reported(Small([](JAccessor& accessor) {
              static std::unique_ptr<char[]> kept;
              Bind(accessor);
              std::unique_ptr<char[]> buffer(new char[8]);
              const std::string bytes = Copy(accessor, Draw(accessor));
              if (bytes.empty()) kept = std::move(buffer);
              return bytes;
            })),
            0);
}

TEST(FaultRunKitTest, FindsWhatDoesNotRecover) {
  auto broken = std::make_shared<bool>(false);
  FaultOperation operation = Small([broken](JAccessor& accessor) {
    Bind(accessor);
    if (*broken) return std::string();
    const std::string bytes = Copy(accessor, Draw(accessor));
    *broken = bytes.empty();
    return bytes;
  });
  const auto scene = operation.scene;
  operation.scene = [broken, scene] {
    *broken = false;
    return scene();
  };
  EXPECT_GT(Reported(operation), 0);
}

TEST(FaultRunKitTest, FindsASpecialThatNoCallIsLike) {
  FaultOperation operation = Small([](JAccessor& accessor) {
    Bind(accessor);
    return Copy(accessor, Draw(accessor));
  });
  operation.special = {{"GetStringLength", "picture"}};
  EXPECT_GT(Reported(operation), 0);
}

}  // namespace
}  // namespace chartbridge::testing
