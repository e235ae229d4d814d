// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APP_VIRTUALSCREEN_H_
#define TESTS_APP_VIRTUALSCREEN_H_

#include <sys/types.h>

#include <chrono>
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
  /// Waits until there is such a window. Throws after a minute.
  Window WaitFor(const std::string& title);

  /// The colour of each point, four bytes each, in rows.
  std::string Picture() const;
  /// Waits until nothing moves on the screen, and until it differs from `before`. Throws after a
  /// minute.
  std::string SettledPicture(const std::string& before) const;
  /// Waits until the screen shows a picture. False when it does not within a minute.
  bool Becomes(const std::string& picture) const;
  /// How long nothing must change before the screen counts as settled. A busy machine paints as
  /// slowly as it starts programs, so that this is half of the time that the last window took to
  /// come, and some tenths of a second at least.
  std::chrono::milliseconds Stillness() const { return _stillness; }

  /// Clicks at a point with the left button and moves the pointer back into the corner.
  void Click(int x, int y) const;
  /// Asks a window to close, as its close button does.
  void Close(const Window& window) const;

 private:
  void MoveTo(int x, int y) const;

  pid_t _server;
  std::chrono::milliseconds _stillness;
  std::string _name;
  // Xlib's headers define names that no other header stands.
  void* _connection;
};

}  // namespace chartbridge

#endif  // TESTS_APP_VIRTUALSCREEN_H_
