// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_NULLCHECKS_H_
#define GUARD_NULLCHECKS_H_

#include "guard/JavaErrors.h"
#include "guard/JvmFunctions.h"
#include "guard/OwnEnv.h"

namespace chartbridge {

/// `OwnEnvCall<&JniTable::F>::Call` is `F` on the calling thread's own env.
template <auto Member>
struct OwnEnvCall;

template <class R, class... A, R (*JniTable::*Member)(JNIEnv*, A...)>
struct OwnEnvCall<Member> {
  static R Call(JNIEnv* env, A... arguments) { return (jvm.*Member)(OwnEnv(env), arguments...); }
};

/// Puts `OwnEnvCall` into the table.
template <auto Member>
void UseOwnEnv(JniTable& table) {
  table.*Member = &OwnEnvCall<Member>::Call;
}

/// `NonNullCall<&JniTable::F>::Call` is `F` for a non-null array or string, and a
/// NullPointerException for null.
template <auto Member>
struct NonNullCall;

template <class R, class First, class... A, R (*JniTable::*Member)(JNIEnv*, First, A...)>
struct NonNullCall<Member> {
  static R Call(JNIEnv* env, First reference, A... arguments) {
    env = OwnEnv(env);
    if (__builtin_expect(reference != nullptr, 1)) {
      return (jvm.*Member)(env, reference, arguments...);
    }
    Refuse(env, JNIGUARD_NULL_ARRAY_OR_STRING, JavaError::kNullPointer, name,
           "the array or string is null");
    return R();
  }
  /// The function's name, for the message.
  static inline const char* name = "";
};

/// Puts `NonNullCall` into the table.
template <auto Member>
void RefuseNull(JniTable& table, const char* name) {
  NonNullCall<Member>::name = name;
  table.*Member = &NonNullCall<Member>::Call;
}

}  // namespace chartbridge

#endif  // GUARD_NULLCHECKS_H_
