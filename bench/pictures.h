// What the benchmarks work on: a folder of camera pictures (EXIFKEEP_SAMPLES, else
// ../shared/samples beside the checkout) and large pictures made here, in a working folder that is
// removed at the end.
#pragma once

#include <exifkeep/exifkeep.h>

#include <string>
#include <vector>

namespace bench {

// All Exif pictures of the folder and the folders in it. Empty when there is no such folder.
const std::vector<std::string>& cameraPictures();

// A file name in the working folder.
std::string workFile(const std::string& name);

// A picture with detail of every scale, so that encoders work as hard as on a photograph.
const PRaster& photograph(unsigned width, unsigned height);

// An Exif picture file with those pixels, made once; `extension` is jpg or tif.
std::string exifPicture(unsigned width, unsigned height, const std::string& extension);

}  // namespace bench
