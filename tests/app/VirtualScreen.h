// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APP_VIRTUALSCREEN_H_
#define TESTS_APP_VIRTUALSCREEN_H_

#include <sys/types.h>

#include <optional>
#include <string>

namespace chartbridge {

/// An X server without a monitor (Xvfb) and without a window manager, and a hand at its mouse.
class VirtualScreen {
 public:
  static constexpr int kWidth = 1280;
  static constexpr int kHeight = 1024;

  /// A window that is to be seen, with its place on the screen.
  struct Window {
    unsigned long id;
    int x;
    int y;
    int width;
    int height;
  };

  /// Starts the server. Throws when it cannot.
  VirtualScreen();
  /// Ends it, and with it the windows on it.
  ~VirtualScreen();

  VirtualScreen(const VirtualScreen&) = delete;
  VirtualScreen& operator=(const VirtualScreen&) = delete;

  /// The value for DISPLAY.
  const std::string& Name() const { return _name; }

  /// The window with a title; none while there is none, or it is not shown.
  std::optional<Window> Find(const std::string& title) const;
  /// Waits until there is such a window. Throws after half a minute.
  Window WaitFor(const std::string& title) const;

  /// The colour of each point, four bytes each, in rows.
  std::string Picture() const;
  /// Waits until nothing moves on the screen, and until it differs from `before`. Throws after half
  /// a minute.
  std::string SettledPicture(const std::string& before) const;

  /// Clicks at a point with the left button and moves the pointer back into the corner.
  void Click(int x, int y) const;
  /// Asks a window to close, as its close button does.
  void Close(const Window& window) const;

 private:
  void MoveTo(int x, int y) const;

  pid_t _server;
  std::string _name;
  // Xlib's headers define names that no other header stands.
  void* _connection;
};

}  // namespace chartbridge

#endif  // TESTS_APP_VIRTUALSCREEN_H_
