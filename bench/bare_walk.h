// SPDX-License-Identifier: MIT
// The minimum that listing a picture's metadata needs from the file: opens it, reads through a
// window of 4 KiB, and copies the entries of IFD0, the Exif directory and the interoperability
// directory one by one with their values. No tag tables, records, texts or lists.
#pragma once

namespace bench {

// Returns the number of bytes of entries and values copied; 0 if the file is not an Exif file.
unsigned bareWalk(const char* path);

}  // namespace bench
