// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_INTEGRATION_JAVAHOMES_H_
#define TESTS_INTEGRATION_JAVAHOMES_H_

#include <string>

namespace chartbridge {

/// The Java home that the tests run on: JAVA_HOME, else the one that this was built with.
std::string DefaultJavaHome();

/// A Java home of another version on this machine; "" when there is none.
std::string OtherJavaHome();

}  // namespace chartbridge

#endif  // TESTS_INTEGRATION_JAVAHOMES_H_
