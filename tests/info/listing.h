// Pictures listed through the exported functions.
#pragma once

#include <exifkeep/exifkeep.h>

#include <string>
#include <utility>
#include <vector>

#include "read/reading.h"

namespace exifkeep::test {

using Items = std::vector<std::pair<std::string, std::string>>;

inline Items itemsIn(const CPtrList& list) {
  Items items;
  for (const InfoItem& item : exifkeep::items(list)) items.emplace_back(item.label, item.value);
  return items;
}

// The items of one call; none when it answers 0.
inline Items itemsOf(const std::string& path) {
  CPtrList list;
  const int answer = GetExifInfo(path.c_str(), &list);
  Items items = itemsIn(list);
  EXPECT_EQ(answer == 0 && !items.empty(), false);
  EXPECT_EQ(FreeInfoList(&list), 1);
  return items;
}

}  // namespace exifkeep::test
