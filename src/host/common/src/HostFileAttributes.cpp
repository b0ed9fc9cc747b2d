// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostFileAttributes.h"

#include <cerrno>
#include <cstring>
#include <string>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

/// What says something of the old content, or lets it run with rights.
bool isOfContent(const std::string& name) {
    return name == "security.capability" || name == "security.ima" || name == "security.evm";
}

/// All values of the first call's kind have a size that may change until the second one.
template <class Get>
std::string getGrowing(const Get& get) {
    std::string bytes;
    ssize_t size = 0;
    do {
        size = get(nullptr, 0);
        bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        if (size > 0)
            size = get(bytes.data(), bytes.size());
    } while (size < 0 && errno == ERANGE);
    bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return bytes;
}

/// False when there was an access list and it could not be set.
bool copyExtended(int from, int to) {
    // The folder may have given the new file a list of its own.
    fremovexattr(to, kAccessList);
    const std::string names = getGrowing([from](char* buffer, std::size_t size) { return flistxattr(from, buffer, size); });
    bool hasList = true;
    for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
        const std::string name = names.c_str() + at;
        if (isOfContent(name))
            continue;
        const std::string value = getGrowing([&](char* buffer, std::size_t size) { return fgetxattr(from, name.c_str(), buffer, size); });
        if (fsetxattr(to, name.c_str(), value.data(), value.size(), 0) != 0 && name == kAccessList)
            hasList = false;
    }
    return hasList;
}

} // namespace

host_file_attributes::Outcome host_file_attributes::copy(int from, int to) {
    struct stat old {
    }, now{};
    if (fstat(from, &old) != 0 || fstat(to, &now) != 0)
        return Outcome::Failed;
    bool hasOwner = old.st_uid == now.st_uid, hasGroup = old.st_gid == now.st_gid;
    if ((!hasOwner || !hasGroup) && fchown(to, old.st_uid, old.st_gid) == 0)
        hasOwner = hasGroup = true;
    else if (!hasGroup)
        hasGroup = fchown(to, static_cast<uid_t>(-1), old.st_gid) == 0;
    const bool hasList = copyExtended(from, to);

    // Last: a change of owner or access list touches the permissions.
    mode_t mode = old.st_mode & 07777;
    if (!hasOwner)
        mode &= ~static_cast<mode_t>(S_ISUID);
    if (!hasGroup)
        mode &= ~static_cast<mode_t>(S_ISGID);
    if (!hasGroup || !hasList)
        mode &= ~static_cast<mode_t>(S_IRWXG) | (mode & S_IRWXO) << 3;
    if (fchmod(to, mode) != 0)
        return Outcome::Failed;
    return hasOwner && hasGroup ? Outcome::Kept : Outcome::OwnerChanged;
}
