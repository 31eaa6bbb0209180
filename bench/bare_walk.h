// What listing a picture's metadata needs of the file, written straight down: one open, one window
// of 4 KiB, and the entries of IFD0, the Exif directory and the interoperability directory copied
// out one by one, each with its value. No tag tables, no records, no text, no list.
#pragma once

namespace bench {

// How many bytes of entries and values were copied out; 0 when the file is no Exif file.
unsigned bareWalk(const char* path);

}  // namespace bench
