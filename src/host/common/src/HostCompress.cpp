// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostZip.h"
#include "HostZipUpdate.h"

#include <utility>

HostZip::HostZip(std::string archive) : archive_(std::move(archive)) {}
HostZip::~HostZip() = default;

void HostZip::compress(const std::string& file, int mode) {
    if (mode != kCompressAnew && mode != kCompressMore)
        throw HostAlgException(archive_ + ": there is no mode " + std::to_string(mode) + " of compressing a file");
    if (mode == kCompressAnew) {
        update_.reset(); // it holds the archive
        update_.reset(new HostZipUpdate(HostZipUpdate::create(archive_)));
    } else if (!update_) {
        update_ = std::make_unique<HostZipUpdate>(archive_);
    }
    update_->putFile(file.substr(file.rfind('/') + 1), file);
}

void HostZip::attachDigest() {
    if (!update_)
        throw HostAlgException(archive_ + ": no file was compressed");
    update_->attachDigest();
}

void HostZip::commit() {
    if (!update_)
        throw HostAlgException(archive_ + ": no file was compressed");
    std::exchange(update_, nullptr)->commit();
}
