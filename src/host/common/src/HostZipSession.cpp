// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipSession.h"

#include "HostZipArchive.h"

/// Chained, since a list of the thread's own would have to be destroyed with the thread, which takes memory to tell the system.
struct HostZipSession::Open : std::enable_shared_from_this<Open> {
    static thread_local Open* first;

    const std::string path;
    std::shared_ptr<HostZipArchive> archive = {}; // opened by the first read
    Open* next = first;

    explicit Open(const std::string& name) : path(name) { first = this; }
    ~Open() {
        Open** link = &first;
        while (*link && *link != this)
            link = &(*link)->next;
        if (*link)
            *link = next;
    }

    /// The session that reads of the path belong to: one that has the same file open, else one of the same path.
    static Open* find(const std::string& path, const HostFileIdentity& identity) {
        Open* samePath = nullptr;
        for (Open* open = first; open; open = open->next) {
            if (open->archive && open->archive->getIdentity() == identity)
                return open;
            if (open->path == path)
                samePath = open;
        }
        return samePath;
    }
};

thread_local HostZipSession::Open* HostZipSession::Open::first = nullptr;

HostZipSession::HostZipSession(const std::string& archive) {
    for (Open* open = Open::first; open; open = open->next)
        if (open->path == archive) {
            open_ = open->shared_from_this();
            return;
        }
    open_ = std::make_shared<Open>(archive);
}

HostZipSession::~HostZipSession() = default;

std::shared_ptr<HostZipArchive> HostZipSession::openShared_(const std::string& path) {
    struct stat info {};
    if (!Open::first || stat(path.c_str(), &info) != 0)
        return HostZipArchive::openFresh(path);
    const HostFileIdentity identity = HostFileIdentity::of(info);
    Open* const session = Open::find(path, identity);
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
