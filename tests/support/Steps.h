// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_STEPS_H_
#define TESTS_SUPPORT_STEPS_H_

#include <jni.h>

#include <string>

#include "tests/support/Describe.h"
#include "tests/support/Sequence.h"

// The sub-sequences that operations are made of, named by what they are.
namespace chartbridge::testing {

/// Events inside one floating-point guard.
template <typename... Parts>
Events Guarded(const Parts&... parts) {
  return Seq("fegetenv", parts..., "fesetenv");
}

/// The exception check that finds nothing.
Events NoPendingException();

/// `FromJString` of a Java string with ICU's default converter, which is UTF-8 in these tests.
Events ReadText(const std::string& text, const char* codepage = nullptr);

/// The exception check that finds this exception, while no dump file is asked for.
///
/// @param nth how many exceptions were printed in this test, with this one
Events PendingException(jthrowable exception, int nth = 1);

/// The exception check that finds this exception and writes it to the dump file at this second.
Events DumpedException(jthrowable exception, long seconds, int nth = 1);

/// A byte string as the nth `byte[]` of the test.
Events ByteArrayArgument(int nth, const std::string& bytes);

/// UTF-16 units as a Java string.
Events StringArgument(const std::string& text);

/// A native text to UTF-16 with ICU's default converter.
Events Utf16Conversion(const std::string& text);

/// As above, with the nth logged array as its units.
Events Utf16Conversion(const std::string& text, int buffer);

/// A whole `byte[]` copied out and released without writing back.
Events ByteArrayResult(const std::string& array);

/// A Java string read through the host's transcoder to UTF-8.
Events TranscodedResult(const std::string& text);

/// A method looked up and called without a failure: `call` is the JNI function, `arguments` what
/// Java gets.
Events JavaCall(const std::string& call, const std::string& class_name, const std::string& object,
                const std::string& name, const std::string& signature,
                const std::string& arguments = "");

/// The binding's class found and its object made by its constructor without arguments.
Events BindingConstruction(const std::string& class_name);

/// A variant of the call frame: the thread attached and the editor's binding pointed at it, inside
/// a guard, below the lock.
Events AttachEditor();

/// The converter's frame below the lock: the thread attached.
Events Attach();

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_STEPS_H_
