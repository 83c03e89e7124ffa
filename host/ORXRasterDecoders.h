// The decoders of the raster processing library.
//
// A status is 0 or more for success and negative for failure. A buffer handed out is new, comes
// from std::malloc, and belongs to the caller, who frees it with std::free; after a failure there
// is none and its length is 0. Nothing is read beyond the input or written beyond a buffer,
// whatever the input holds, and no exception leaves. The last argument of the two text decoders is
// always 0.
#pragma once

#include "host/ORXFrameworkApi.h"

// Decodes ASCII base-85 text (five characters for four bytes, "z" for four zero bytes) up to and
// including its end marker "~>"; white space is skipped. Fails on any other character, on a group
// above 2^32-1, on a last group of one character, on a "z" inside a group, without end marker and
// when the result is above 512 MiB. No data before the marker gives a buffer of length 0.
ORX_FRAMEWORK_API int ASCII85Decode(const unsigned char* in, unsigned int length,
                                    unsigned char*& out, unsigned int& outLength,
                                    int reserved) noexcept;

// Decodes the run-length encoding of the PostScript language: 0 to 127 copies that many bytes and
// one more, 129 to 255 repeats one byte 257 minus that many times, 128 ends the data. A missing
// end is accepted; a run cut short fails, and so does a result above 512 MiB.
ORX_FRAMEWORK_API int RunLengthDecode(const unsigned char* in, unsigned int length,
                                      unsigned char*& out, unsigned int& outLength,
                                      int reserved) noexcept;

// Decodes ITU-T T.6 (Group 4) data. `size` is the pair (columns, rows), both positive; `bitmap` has
// rows * ((columns + 7) / 8) bytes and receives 0 for black and 1 for white, pad bits 1. Returns 0
// with `rowCount` above 0 and `errorCount` 0 on success: rows that are missing after the
// end-of-block code are white. A bad code, an extension code or data that ends inside the rows
// counts as an error, and so does data without a single row.
ORX_FRAMEWORK_API int CCITT_G4_dec(const unsigned char* in, int length, int* size,
                                   unsigned char* bitmap, int& rowCount, int& errorCount) noexcept;
