// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

/// What a file is beside its content: owner, group, access list, extended attributes and permissions.
namespace host_file_attributes {

enum class Outcome {
    Kept,
    OwnerChanged, ///< owner or group is another one, since the system doesn't allow more
    Failed,       ///< the permissions can't be set; errno says why
};

/// Makes the second file what the first one is. Attributes that the system doesn't allow are passed over. A file whose group or access
/// list could not be kept gives its group no more than all others have; a right to run as an owner or group goes with these.
Outcome copy(int from, int to);

} // namespace host_file_attributes
