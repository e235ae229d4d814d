// SPDX-License-Identifier: Apache-2.0
#include "tests/app/VirtualScreen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace chartbridge {

namespace {

constexpr std::chrono::seconds kPatience(60);
constexpr std::chrono::milliseconds kPause(50);
constexpr std::chrono::milliseconds kLeastStillness(400);
constexpr unsigned kSecondsAtMost = 120;

// A window may go between the question for it and the answer.
int IgnoreError(Display*, XErrorEvent*) { return 0; }

Display* As(void* connection) { return static_cast<Display*>(connection); }

[[noreturn]] void BecomeServer(int numberOut) {
  const std::string number = std::to_string(numberOut);
  const std::string screen =
      std::to_string(VirtualScreen::kWidth) + "x" + std::to_string(VirtualScreen::kHeight) + "x24";
  alarm(kSecondsAtMost);
  execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", screen.c_str(), "-nolisten",
         "tcp", "-noreset", "-nocursor", static_cast<char*>(nullptr));
  _exit(127);
}

std::string ReadLine(int descriptor) {
  std::string line;
  for (char c = 0; read(descriptor, &c, 1) == 1 && c != '\n';) line += c;
  return line;
}

}  // namespace

VirtualScreen::VirtualScreen() : _stillness(kLeastStillness) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  _server = fork();
  if (_server < 0) throw std::runtime_error("cannot fork");
  if (_server == 0) BecomeServer(ends[1]);
  close(ends[1]);
  const std::string number = ReadLine(ends[0]);
  close(ends[0]);
  _name = ":" + number;
  _connection = number.empty() ? nullptr : XOpenDisplay(_name.c_str());
  if (_connection == nullptr) {
    kill(_server, SIGTERM);
    waitpid(_server, nullptr, 0);
    throw std::runtime_error("Xvfb did not start");
  }
  XSetErrorHandler(IgnoreError);
  MoveTo(0, 0);
}

VirtualScreen::~VirtualScreen() {
  XCloseDisplay(As(_connection));
  kill(_server, SIGTERM);
  waitpid(_server, nullptr, 0);
}

std::optional<VirtualScreen::Window> VirtualScreen::Find(const std::string& title) const {
  Display* display = As(_connection);
  ::Window root = 0;
  ::Window parent = 0;
  ::Window* children = nullptr;
  unsigned count = 0;
  std::optional<Window> found;
  if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0) {
    return found;
  }
  for (unsigned i = 0; i < count; ++i) {
    char* name = nullptr;
    XWindowAttributes attributes{};
    if (XFetchName(display, children[i], &name) != 0 && name != nullptr && title == name &&
        XGetWindowAttributes(display, children[i], &attributes) != 0 &&
        attributes.map_state == IsViewable) {
      found = Window{children[i], attributes.x, attributes.y, attributes.width, attributes.height};
    }
    if (name != nullptr) XFree(name);
  }
  if (children != nullptr) XFree(children);
  return found;
}

VirtualScreen::Window VirtualScreen::WaitFor(const std::string& title) {
  using Clock = std::chrono::steady_clock;
  const auto begin = Clock::now();
  while (Clock::now() < begin + kPatience) {
    if (const auto window = Find(title)) {
      _stillness = std::max(kLeastStillness, std::chrono::duration_cast<std::chrono::milliseconds>(
                                                 (Clock::now() - begin) / 2));
      return *window;
    }
    std::this_thread::sleep_for(kPause);
  }
  throw std::runtime_error("no window \"" + title + "\" came");
}

std::string VirtualScreen::Picture() const {
  Display* display = As(_connection);
  XImage* image =
      XGetImage(display, DefaultRootWindow(display), 0, 0, kWidth, kHeight, AllPlanes, ZPixmap);
  if (image == nullptr) throw std::runtime_error("no picture of the screen");
  std::string bytes(image->data, static_cast<std::size_t>(image->bytes_per_line) *
                                     static_cast<unsigned>(kHeight));
  XDestroyImage(image);
  return bytes;
}

std::string VirtualScreen::SettledPicture(const std::string& before) const {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  std::string last = Picture();
  while (std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(_stillness);
    std::string now = Picture();
    if (now == last && now != before) return now;
    last = std::move(now);
  }
  throw std::runtime_error("the screen does not change, or does not come to rest");
}

bool VirtualScreen::Becomes(const std::string& picture) const {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (Picture() != picture) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

void VirtualScreen::MoveTo(int x, int y) const {
  XTestFakeMotionEvent(As(_connection), -1, x, y, CurrentTime);
  XSync(As(_connection), False);
}

void VirtualScreen::Click(int x, int y) const {
  MoveTo(x, y);
  XTestFakeButtonEvent(As(_connection), 1, True, CurrentTime);
  XTestFakeButtonEvent(As(_connection), 1, False, CurrentTime);
  MoveTo(0, 0);
}

void VirtualScreen::Close(const Window& window) const {
  Display* display = As(_connection);
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window.id;
  event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
  event.xclient.data.l[1] = CurrentTime;
  XSendEvent(display, window.id, False, NoEventMask, &event);
  XSync(display, False);
}

}  // namespace chartbridge
