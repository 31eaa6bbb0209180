// SPDX-License-Identifier: MIT
// Uses only descriptors, because names could lead to other files in the meantime. Failures are
// ignored: a picture without its attributes is still the picture. Access control lists are those of
// POSIX.1e, which Linux stores in an extended attribute.
#include "file_rights.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <string>

namespace exifkeep {
namespace {

constexpr char accessList[] = "system.posix_acl_access";

// These certify the old bytes or give them privileges as a program; the new bytes must not have
// them.
constexpr const char* ofOldBytes[] = {"security.capability", "security.ima", "security.evm"};

bool isCopied(const std::string& name) {
  return name != accessList && std::ranges::find(ofOldBytes, name) == std::end(ofOldBytes);
}

// Empty if the file does not have the attribute or its value is empty.
std::string attributeOf(int file, const char* name) {
  const ssize_t size = fgetxattr(file, name, nullptr, 0);
  std::string value(static_cast<size_t>(std::max<ssize_t>(size, 0)), '\0');
  const ssize_t held = fgetxattr(file, name, value.data(), value.size());
  value.resize(static_cast<size_t>(std::max<ssize_t>(held, 0)));
  return value;
}

void copyAttributes(int from, int to) {
  const ssize_t size = flistxattr(from, nullptr, 0);
  if (size <= 0) return;
  std::string names(static_cast<size_t>(size), '\0');
  const ssize_t held = flistxattr(from, names.data(), names.size());
  for (size_t at = 0; held > 0 && at < static_cast<size_t>(held);) {
    const std::string name = names.c_str() + at;
    at += name.size() + 1;
    if (!isCopied(name)) continue;
    const std::string value = attributeOf(from, name.c_str());
    fsetxattr(to, name.c_str(), value.data(), value.size(), 0);
  }
}

// The members of the lost group are now among the others, who must not have more rights than the
// group had.
mode_t withoutGroup(mode_t mode) {
  return mode & ~mode_t{070} & ~(~mode >> 3 & 07);
}

// The same for a list: a version of 4 bytes, then entries of 8 bytes (tag, rights, id).
void removeGroup(std::string& list) {
  constexpr size_t head = 4, entrySize = 8, rightsAt = 2;
  constexpr char group = 4, mask = 16, other = 32;  // tags
  char kept = 7;
  for (size_t at = head; at + entrySize <= list.size(); at += entrySize) {
    char& rights = list[at + rightsAt];
    if (list[at] == group || list[at] == mask) kept &= rights;
    if (list[at] == group) rights = 0;
    if (list[at] == other) rights &= kept;  // the last entry
  }
}

// Whether the file has no access control list.
bool hasNoList(int file) {
  return fgetxattr(file, accessList, nullptr, 0) < 0 && (errno == ENODATA || errno == EOPNOTSUPP);
}

}  // namespace

void copyRights(int from, int to) {
  struct stat old, made;
  if (fstat(from, &old) != 0) return;
  // The owner is set first, because that may clear mode bits. Only root may change the owner, but
  // users may set any of their own groups.
  if (fchown(to, old.st_uid, old.st_gid) != 0) {
    [[maybe_unused]] const int ignored = fchown(to, static_cast<uid_t>(-1), old.st_gid);
  }
  const bool keepsGroup = fstat(to, &made) == 0 && made.st_gid == old.st_gid;
  copyAttributes(from, to);

  // The new file may have inherited a list from the folder.
  fremovexattr(to, accessList);
  mode_t mode = old.st_mode & 0777;
  if (!keepsGroup) mode = withoutGroup(mode);
  // If there is a list, the group's bits in the mode are the mask and not the group's rights.
  const bool modeDecides = hasNoList(from) && hasNoList(to);
  fchmod(to, modeDecides ? mode : mode & 0700);
  std::string list = attributeOf(from, accessList);
  if (!keepsGroup) removeGroup(list);
  if (!list.empty()) fsetxattr(to, accessList, list.data(), list.size(), 0);
}

}  // namespace exifkeep
