// SPDX-License-Identifier: MIT
#include "write/row_context.h"

#include <windows.h>

#include <cstdio>

namespace exifkeep {

Rational resolutionDefault(uint32_t dotsPerMetre) {
  return {PRaster::dotsPerInch(dotsPerMetre), 1};
}

RowContext contextOf(const PRaster& picture) {
  RowContext context;
  SYSTEMTIME now;
  GetLocalTime(&now);
  std::snprintf(context.now, sizeof context.now, "%4d:%02d:%02d %02d:%02d:%02d", now.wYear % 10000,
                now.wMonth % 100, now.wDay % 100, now.wHour % 100, now.wMinute % 100,
                now.wSecond % 100);
  context.xResolution = resolutionDefault(picture.GetDpmX());
  context.yResolution = resolutionDefault(picture.GetDpmY());
  context[Supplied::pictureWidth] = picture.GetImageWidth();
  context[Supplied::pictureHeight] = picture.GetImageHeight();
  return context;
}

}  // namespace exifkeep
