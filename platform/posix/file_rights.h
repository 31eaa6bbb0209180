// Who may do what with a file that takes another one's place.
#pragma once

namespace exifkeep {

// Gives the new file `to`, which only its owner may use so far, what `from` has: owner and group,
// mode, access control list and extended attributes, each as far as this process may and the file
// system can. Nobody gets a right that he did not have: where the group cannot be kept its rights
// go to no other group. May throw std::bad_alloc.
void copyRights(int from, int to);

}  // namespace exifkeep
