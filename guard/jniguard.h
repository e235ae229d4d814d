/* SPDX-License-Identifier: Apache-2.0 */
#ifndef GUARD_JNIGUARD_H_
#define GUARD_JNIGUARD_H_

#include <jni.h>
#include <stddef.h> /* NOLINT(modernize-deprecated-headers): this header is for C, too */

/**
 * @file
 * The guard stands between native code and the JVM and turns wrong JNI calls, which end the process
 * on today's JVMs, into Java exceptions and zero results. `docs/guard.md` says what it does call by
 * call.
 *
 * It comes into a process in one of three ways: by the JVM option
 * `-agentpath:/path/libjniguard.so[=options]`, by the attach mechanism of a running JVM, or by
 * `jniguard_install` in a host that links or loads this library. Options, separated by commas:
 *
 * - `report`: the counts go to standard error when the JVM or the process ends;
 * - `report=FILE`: they are appended to that file instead;
 * - `log`: each caught call is also a line on standard error when it happens, up to 100 lines.
 *
 * An option that is none of these is named on standard error and ignored: a typing mistake must not
 * keep a host from starting.
 */

#ifdef __cplusplus
extern "C" {
#endif

/** What the guard counts. The numbers stay the same from version to version; new kinds come at the
 * end. */
enum jniguard_kind {
  /** A reference was given back through the function for another kind of reference. */
  JNIGUARD_REFERENCE_KIND = 0,
  /** Array elements were released against another array, against null, or as the text of a string,
     or such a text as something else. */
  JNIGUARD_ELEMENTS_ARRAY = 1,
  /** Array elements or a text were released that are not out: a second time, after
     jniguard_free_unreleased, or never obtained from the guard. Nothing was freed. */
  JNIGUARD_ELEMENTS_UNKNOWN = 2,
  /** An array or string function was called on null. */
  JNIGUARD_NULL_ARRAY_OR_STRING = 3,
  /** An object was to be made, or a method looked up, with a null class, constructor, name or
     signature. */
  JNIGUARD_NULL_CLASS = 4,
  /** A method was called on a null object or class, or with a null method ID. */
  JNIGUARD_NULL_CALL = 5,
  /** A `byte[]` stood where the signature has a `java.nio.ByteBuffer`, and was wrapped. */
  JNIGUARD_BYTE_ARRAY_WRAPPED = 6,
  /** A JNIEnv* that is not the calling thread's own was used. */
  JNIGUARD_OTHER_THREAD = 7,
  /** Another input was null or out of range: the text of NewString, the object of GetObjectClass, a
     buffer's memory. */
  JNIGUARD_BAD_INPUT = 8,
  /** How many kinds there are. */
  JNIGUARD_KINDS = 9
};

/**
 * Puts the guard between native code and `vm`, for the life of the process. A second call does
 * nothing.
 *
 * To be called right after the JVM has been created: array elements and texts that native code
 * obtained before are not known to the guard, so a release of them afterwards frees nothing and
 * writes nothing back. Safe on any thread.
 *
 * Returns JNI_OK, or another JNI error code when the JVM has no JVMTI; nothing is changed then.
 */
JNIEXPORT jint jniguard_install(JavaVM* vm);

/** As jniguard_install, with options as above. Null is the same as no options. */
JNIEXPORT jint jniguard_install_with_options(JavaVM* vm, const char* options);

/** Whether the guard is in place: 1 or 0. */
JNIEXPORT int jniguard_is_installed(void);

/** How many calls of that kind were caught since the process started. 0 for a number that is no
 * kind. Safe on any thread. */
JNIEXPORT unsigned long long jniguard_count(int kind);

/** Fills `counts[0]` to `counts[size - 1]`, kinds beyond JNIGUARD_KINDS with 0. Returns the sum
 * over all kinds. */
JNIEXPORT unsigned long long jniguard_counts(unsigned long long* counts, size_t size);

/** What that kind is, as a short English text that lives for ever; "" for a number that is no kind.
 */
JNIEXPORT const char* jniguard_kind_name(int kind);

/**
 * Writes all counts as English text, one line each, zero-terminated and cut to `size` bytes.
 * Returns the length of the whole text without its terminator, as snprintf does; `buffer` may be
 * null when `size` is 0.
 */
JNIEXPORT size_t jniguard_report(char* buffer, size_t size);

/**
 * A mark in the order in which the calling thread obtains array elements and texts, for
 * jniguard_free_unreleased. Costs next to nothing; there is nothing to give back.
 */
JNIEXPORT unsigned long long jniguard_mark(void);

/**
 * Frees the array elements and texts that the calling thread has obtained since it took `mark` and
 * that nobody has released. Nothing is written back to their arrays. Returns how many there were.
 * Whichever native code obtained them: also native methods that Java code has called meanwhile.
 *
 * To be called where native code is known to be done with all of them, on whichever thread it kept
 * them: their addresses are free memory afterwards, and a later release of one is a release of
 * what is not out: it is counted, and nothing happens. What other threads have obtained is left
 * alone, and so is everything when the mark is another thread's.
 *
 * Some operations of the chart bridge never release what they obtain. `chartbridge::LocalFrame`
 * calls this at its end.
 */
JNIEXPORT size_t jniguard_free_unreleased(unsigned long long mark);

#ifdef __cplusplus
}
#endif

#endif /* GUARD_JNIGUARD_H_ */
