// SPDX-License-Identifier: Apache-2.0
#ifndef PLATFORM_TESKMB_H_
#define PLATFORM_TESKMB_H_

#include <string>

// The host's text conversions. The library calls them from any thread that runs an operation.

/// Replaces `out` by the UTF-16 form of `in`, a text in the host's native multibyte encoding.
///
/// Returns 0 on success. For any other value the library takes the text as one that cannot be
/// converted, whatever `out` holds.
int TESKMBGenericToU16(std::basic_string<unsigned short>& out, const std::string& in);

/// The zero-terminated UTF-16 `text` as zero-terminated UTF-8, to be given back with
/// `TESKMBRelease`. Null when it cannot be converted; the text that was asked for then stays as it
/// was.
char* TESKMBTranscodeU8(const unsigned short* text);

/// Frees a text made by `TESKMBTranscodeU8` and sets the pointer to null. `*text` may be null.
void TESKMBRelease(char** text);

/// Whether the host's native multibyte encoding is UTF-8. Java's output documents are told so.
bool qUTF8mode();

#endif  // PLATFORM_TESKMB_H_
