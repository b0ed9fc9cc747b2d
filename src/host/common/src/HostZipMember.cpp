// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipMember.h"

#include "HostZipArchive.h"
#include "ZipMemberReader.h"

struct HostZipMember::State {
    std::shared_ptr<HostZipArchive> archive;
    ZipMemberReader reader;
};

HostZipMember::HostZipMember(const std::string& archive, const std::string& entry, std::uint64_t maxSize) {
    auto open = HostZipArchive::open(archive);
    const auto index = open->find(entry);
    if (!index)
        open->fail(entry, "no such member");
    ZipMemberReader reader = open->openMember(*index, maxSize);
    state_.reset(new State{std::move(open), std::move(reader)});
}

HostZipMember::~HostZipMember() = default;
HostZipMember::HostZipMember(HostZipMember&&) noexcept = default;
HostZipMember& HostZipMember::operator=(HostZipMember&&) noexcept = default;

std::uint64_t HostZipMember::getSize() const {
    return state_->reader.getSize();
}

std::size_t HostZipMember::read(char* buffer, std::size_t size) {
    return state_->reader.read(buffer, size);
}

std::string HostZipMember::readAll() {
    return state_->reader.readAll();
}
