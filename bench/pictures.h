// SPDX-License-Identifier: MIT
// The input of the benchmarks: a folder of camera pictures (EXIFKEEP_SAMPLES, or else
// ../shared/samples beside the checkout) and large generated pictures in a working folder that is
// deleted at the end.
#pragma once

#include <exifkeep/exifkeep.h>

#include <string>
#include <vector>

namespace bench {

// All Exif pictures in the folder and its subfolders. Empty if there is no such folder.
const std::vector<std::string>& cameraPictures();

// The path of a file in the working folder.
std::string workFile(const std::string& name);

// A picture with detail of every scale, which is as hard to encode as a photograph.
const PRaster& photograph(unsigned width, unsigned height);

// An Exif picture file with those pixels, created once; `extension` is jpg or tif.
std::string exifPicture(unsigned width, unsigned height, const std::string& extension);

}  // namespace bench
