// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_TEMPLATECALLBACK_H_
#define HOST_TEMPLATECALLBACK_H_

#include <jni.h>

namespace chartbridge {

/// Lets Java call the library to apply a chart template: binds the native method `apply` of
/// com.tesk.charteditor.template.ApplyTemplate to the function that libchartbridge.so exports for
/// it.
///
/// The JVM does not find that function by itself: it looks into libraries that Java code has
/// loaded, and this one was loaded by the host's process. `TeskJVM::StartJVM` calls this. A host
/// calls it once more only if it loads libchartbridge.so (with RTLD_GLOBAL) after the JVM has
/// started.
///
/// True when the method is bound. False, with nothing changed, when the Java class is not on the
/// class path, and when the process does not have the function. Charts that name a template then
/// fail with a Java exception that says so; all else works. Any thread may call it, attached or
/// not, any number of times.
bool BindTemplateCallback(JavaVM* vm);

}  // namespace chartbridge

#endif  // HOST_TEMPLATECALLBACK_H_
