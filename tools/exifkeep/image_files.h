// Pictures in files to images in memory and back, through the codec that library and hosts share.
#pragma once

#include <praster.h>

#include <string>

namespace program {

// Decodes the picture at `path` into `image`, resolution and palette included. False, after saying
// so, when it cannot be read.
bool readImage(const std::string& path, PRaster& image, bool damaged);
// Says how many rows of an image decoded from `path` are lost. False when there are some and
// `damaged` says that the user did not ask for such images.
bool acceptLostRows(const std::string& path, const PRaster& image, bool damaged);

// Encodes `image` into the file `path` by its extension. False, after saying so, when it cannot be
// written.
bool writeImage(const std::string& path, PRaster& image);

// Whether all of `path` can be read, asked after a command failed that had to read it. If not, says
// why, and that nothing was changed.
bool canBeReadToEnd(const std::string& path);

// What stands in the way of a picture at `path`, after writing it failed; `guess` when nothing is
// to be seen.
std::string whyNotWritten(const std::string& path, const std::string& guess);

}  // namespace program
