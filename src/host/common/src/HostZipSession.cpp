// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipSession.h"

#include "HostZipArchive.h"

#include <vector>

struct HostZipSession::Open {
    std::string path;
    std::shared_ptr<HostZipArchive> archive; // opened by the first read

    static std::vector<std::weak_ptr<Open>>& ofThread() {
        thread_local std::vector<std::weak_ptr<Open>> sessions;
        std::erase_if(sessions, [](const std::weak_ptr<Open>& session) { return session.expired(); });
        return sessions;
    }

    /// The session that reads of the path belong to: one that has the same file open, else one of the same path.
    static std::shared_ptr<Open> find(const std::string& path, const HostFileIdentity& identity) {
        std::shared_ptr<Open> samePath;
        for (const std::weak_ptr<Open>& entry : ofThread()) {
            std::shared_ptr<Open> session = entry.lock();
            if (session->archive && session->archive->getIdentity() == identity)
                return session;
            if (session->path == path)
                samePath = std::move(session);
        }
        return samePath;
    }
};

HostZipSession::HostZipSession(const std::string& archive) {
    for (const std::weak_ptr<Open>& entry : Open::ofThread())
        if (auto session = entry.lock(); session->path == archive) {
            open_ = std::move(session);
            return;
        }
    open_ = std::make_shared<Open>();
    open_->path = archive;
    Open::ofThread().push_back(open_);
}

HostZipSession::~HostZipSession() = default;

std::shared_ptr<HostZipArchive> HostZipSession::openShared_(const std::string& path) {
    struct stat info {};
    if (Open::ofThread().empty() || stat(path.c_str(), &info) != 0)
        return HostZipArchive::openFresh(path);
    const HostFileIdentity identity = HostFileIdentity::of(info);
    const std::shared_ptr<Open> session = Open::find(path, identity);
    if (!session)
        return HostZipArchive::openFresh(path);
    // A file replaced since is opened anew; members still being read keep the old one.
    if (!session->archive || !(session->archive->getIdentity() == identity))
        session->archive = HostZipArchive::openFresh(path);
    return session->archive;
}

std::shared_ptr<HostZipArchive> HostZipArchive::open(const std::string& path) {
    return HostZipSession::openShared_(path);
}
