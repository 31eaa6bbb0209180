// SPDX-License-Identifier: MIT
// Reads and writes pictures of any kind.
#pragma once

#include <praster.h>

#include <string>

namespace program {

// Decodes the picture at `path`. If that fails, prints a message and returns false.
bool readImage(const std::string& path, PRaster& image, bool damaged);
// Prints how many rows of an image decoded from `path` are lost, if any. False if there are some
// and damaged pictures are not accepted.
bool acceptLostRows(const std::string& path, const PRaster& image, bool damaged);

// Encodes `image` in the format of the extension. If that fails, prints a message and returns
// false.
bool writeImage(const std::string& path, PRaster& image);

// Whether all of `path` can be read; called after a command that had to read it failed. If not,
// prints the reason and that nothing was changed.
bool canBeReadToEnd(const std::string& path);

// Why a picture could not be written to `path`, or `guess` if no reason can be found.
std::string whyNotWritten(const std::string& path, const std::string& guess);

}  // namespace program
