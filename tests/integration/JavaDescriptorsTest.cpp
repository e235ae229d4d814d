// SPDX-License-Identifier: Apache-2.0
// Which descriptors are closed in the programs that a host starts, without a JVM.
#include "host/JavaDescriptors.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <fstream>
#include <string>

#include "tests/integration/TempFolder.h"

namespace {

// The descriptor that stands for another file from the moment on at which it is to be marked.
int changing = -1;
int changesTo = -1;

}  // namespace

// In place of the C library's, for the host library too: as if another thread had closed and opened
// a file just then.
extern "C" int fcntl(int number, int command, ...) {
  va_list arguments;
  va_start(arguments, command);
  const long argument = va_arg(arguments, long);
  va_end(arguments);
  if (command == F_SETFD && number == changing) {
    changing = -1;
    dup2(changesTo, number);
  }
  return static_cast<int>(syscall(SYS_fcntl, number, command, argument));
}

namespace chartbridge {
namespace {

class JavaDescriptorsTest : public testing::Test {
 protected:
  void SetUp() override { JavaDescriptors::Begin("/no/such/home/lib/server/libjvm.so"); }

  int Open(const std::string& name, int flags) const {
    const std::string path = _folder.Path() + "/" + name;
    std::ofstream(path) << "content";
    return open(path.c_str(), flags);
  }

  static bool IsInherited(int number) { return (fcntl(number, F_GETFD, 0) & FD_CLOEXEC) == 0; }

 private:
  TempFolder _folder;
};

TEST_F(JavaDescriptorsTest, MarksWhatJavaOpens) {
  const int jar = Open("a.jar", O_RDONLY);
  const int font = Open("a.TTF", O_RDONLY);
  const int random = open("/dev/urandom", O_RDONLY);
  JavaDescriptors::Mark();
  for (const int number : {jar, font, random}) {
    EXPECT_FALSE(IsInherited(number));
    close(number);
  }
}

TEST_F(JavaDescriptorsTest, LeavesWhatIsNotJavas) {
  const int text = Open("a.txt", O_RDONLY);
  const int written = Open("b.jar", O_RDWR);
  JavaDescriptors::Mark();
  for (const int number : {text, written}) {
    EXPECT_TRUE(IsInherited(number));
    close(number);
  }
}

TEST_F(JavaDescriptorsTest, LeavesWhatWasOpenBefore) {
  const int jar = Open("a.jar", O_RDONLY);
  JavaDescriptors::Begin("/no/such/home/lib/server/libjvm.so");
  JavaDescriptors::Mark();
  EXPECT_TRUE(IsInherited(jar));
  close(jar);
}

TEST_F(JavaDescriptorsTest, LeavesAFileThatCameInBetween) {
  const int jar = Open("a.jar", O_RDONLY);
  changesTo = Open("a.txt", O_RDONLY);
  changing = jar;
  JavaDescriptors::Mark();
  ASSERT_EQ(changing, -1) << "it was not to be marked";
  EXPECT_TRUE(IsInherited(jar));
  close(jar);
  close(changesTo);
}

}  // namespace
}  // namespace chartbridge
