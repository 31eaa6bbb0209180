// SPDX-License-Identifier: MIT
// Copies the rights of a file to the one that replaces it.
#pragma once

namespace exifkeep {

// Copies owner and group, mode, access control list and extended attributes to the new file `to`,
// as far as process and file system permit. Nobody gains any rights: if the group cannot be kept,
// no other group gets its rights. May throw std::bad_alloc. REQUIRES: so far only the owner may
// access `to`.
void copyRights(int from, int to);

}  // namespace exifkeep
