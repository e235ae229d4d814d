// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_THROWN_H_
#define TESTS_SUPPORT_THROWN_H_

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

#include "bridge/JException.h"

namespace chartbridge::testing {

/// What left an operation, as a text that a test can compare.
///
/// "nothing", "JException(a, b, c)", "JException*(a, b, c)", "std::string(text)", "std::bad_alloc",
/// "std::runtime_error(what)", "std::exception(what)", "int(n)" or "something else".
template <typename Operation>
std::string Thrown(Operation&& operation) {
  const auto texts = [](const JException& e) {
    return "(" + e.firstText() + ", " + e.secondText() + ", " + e.thirdText() + ")";
  };
  try {
    operation();
    return "nothing";
  } catch (const JException& e) {
    return "JException" + texts(e);
  } catch (const JException* e) {
    return "JException*" + texts(*e);
  } catch (const std::string& e) {
    return "std::string(" + e + ")";
  } catch (const std::bad_alloc&) {
    return "std::bad_alloc";
  } catch (const std::runtime_error& e) {
    return std::string("std::runtime_error(") + e.what() + ")";
  } catch (const std::exception& e) {
    return std::string("std::exception(") + e.what() + ")";
  } catch (int e) {
    return "int(" + std::to_string(e) + ")";
  } catch (...) {
    return "something else";
  }
}

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_THROWN_H_
