// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_EXPORT_H_
#define BRIDGE_EXPORT_H_

/// Marks what hosts use. Everything else in the library is built hidden.
#define CHARTBRIDGE_EXPORT __attribute__((visibility("default")))
/// Marks what an exported class keeps to the library.
#define CHARTBRIDGE_HIDDEN __attribute__((visibility("hidden")))

#endif  // BRIDGE_EXPORT_H_
