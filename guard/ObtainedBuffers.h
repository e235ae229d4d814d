// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_OBTAINEDBUFFERS_H_
#define GUARD_OBTAINEDBUFFERS_H_

#include <cstddef>
#include <cstdint>

namespace chartbridge {

/// The buffers that the calling thread has obtained, in their order, so that those of a while can
/// be found again.
///
/// Each has a number that no other buffer of the process ever has. A buffer that is given back in
/// another order, or on another thread, stays listed until the list is full and looked through: the
/// number tells that it is gone. So the list is about as long as the most buffers that were out at
/// a time. Nothing here is shared between threads.
class ObtainedBuffers {
 public:
  /// The number for the buffer that is obtained next.
  static std::uint64_t NextNumber() { return ++Own().last; }

  /// Lists a buffer. Where memory is short it stays unlisted.
  static void Add(void* buffer, std::uint64_t number) {
    List& list = Own();
    if (__builtin_expect(list.size == list.capacity, 0) && !MakeRoom(list)) return;
    list.entries[list.size++] = {buffer, number};
  }

  /// Takes a buffer that is given back off the list if it is the newest, as nearly all are.
  static void Drop(const void* buffer) {
    if (list_.size > 0 && list_.entries[list_.size - 1].buffer == buffer) --list_.size;
  }

  /// The number of the buffer that was obtained last.
  static std::uint64_t Mark() { return Own().last; }

  /// Takes the newest buffer off the list if it was obtained on this thread and after the mark.
  static bool TakeNewestSince(std::uint64_t mark, void*& buffer, std::uint64_t& number);

  /// How many are listed.
  static std::size_t Count() { return list_.size; }

 private:
  struct Entry {
    void* buffer;
    std::uint64_t number;
  };
  struct List {
    Entry* entries;
    std::size_t size;
    std::size_t capacity;
    /// The thread's number, and below it the count of its buffers.
    std::uint64_t last;
    /// Whether the thread is ending and lists nothing any more.
    bool ended;
  };
  /// Frees a thread's list when the thread ends.
  struct Ending {
    ~Ending();
    bool armed = false;
  };

  static List& Own() {
    if (__builtin_expect(list_.last == 0, 0)) list_.last = NewThread();
    return list_;
  }
  static std::uint64_t NewThread();
  static bool MakeRoom(List& list);
  static void LeaveOutWhatIsGone(List& list);

  // Without a constructor and a destructor, so that reaching it costs a load. The initial-exec
  // model is what makes it that cheap in a library that is loaded at run time.
  __attribute__((tls_model("initial-exec"))) static inline thread_local List list_{};
};

}  // namespace chartbridge

#endif  // GUARD_OBTAINEDBUFFERS_H_
