// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostFile.h"
#include "HostReplacement.h"
#include "HostZip.h"
#include "HostZipArchive.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <zip.h>

namespace fs = std::filesystem;

namespace {

constexpr zip_int32_t kDeflateLevel = 6;
constexpr zip_uint32_t kPermissions = static_cast<zip_uint32_t>(S_IFREG | 0644) << 16;
// 1980-01-01 12:00, the earliest day that an archive can tell; at noon no time zone's change of clocks gets in the way.
constexpr zip_uint16_t kDosDate = 1 << 5 | 1;
constexpr zip_uint16_t kDosTime = 12 << 11;

/// Relative names of the files below the directory in byte order, without the archive itself.
std::vector<std::string> listFiles(const std::string& directory, const std::string& archive, const std::string& unfinished) {
    const fs::path root = HostFile::getCanonicalName(directory);
    std::vector<std::string> names;
    std::error_code error;
    fs::recursive_directory_iterator at(root, error);
    for (; !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
        const std::string path = at->path().string();
        const fs::file_status status = at->symlink_status(error);
        if (error)
            break;
        if (fs::is_directory(status) || path == archive || path == unfinished)
            continue;
        if (!fs::is_regular_file(status))
            throw HostError(path + ": cannot be packed: is a link or a special file");
        names.push_back(path.substr(root.string().size() + (root == root.root_path() ? 0 : 1)));
    }
    if (error)
        throw HostError("cannot read the directory '" + directory + "': " + error.message());
    std::sort(names.begin(), names.end());
    return names;
}

/// Discards what was not closed: nothing of it reaches the disk.
class Writer {
public:
    explicit Writer(const std::string& path, const std::string& shown, int flags) : shown_(shown) {
        int code = 0;
        zip_ = zip_open(path.c_str(), flags, &code);
        if (!zip_) {
            zip_error_t error;
            zip_error_init_with_code(&error, code);
            const std::string cause = zip_error_strerror(&error);
            zip_error_fini(&error);
            throw HostError(shown_ + ": cannot be written: " + cause);
        }
    }
    ~Writer() {
        if (zip_)
            zip_discard(zip_);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void add(const std::string& name, const std::string& file) {
        zip_source_t* source = zip_source_file(zip_, file.c_str(), 0, -1);
        const zip_int64_t added = source ? zip_file_add(zip_, name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
        if (source && added < 0)
            zip_source_free(source);
        const auto index = static_cast<zip_uint64_t>(added);
        if (added < 0 || zip_set_file_compression(zip_, index, ZIP_CM_DEFLATE, kDeflateLevel) != 0 ||
            zip_file_set_dostime(zip_, index, kDosTime, kDosDate, 0) != 0 ||
            zip_file_set_external_attributes(zip_, index, 0, ZIP_OPSYS_UNIX, kPermissions) != 0)
            throw HostError(shown_ + ": " + name + ": cannot be packed: " + zip_strerror(zip_));
    }

    /// Members of an archive that stands already.
    void storeWhatReadersWouldRefuse() {
        for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(zip_get_num_entries(zip_, 0)); ++index) {
            zip_stat_t stat;
            if (zip_stat_index(zip_, index, 0, &stat) != 0 ||
                (HostZipArchive::inflatesTooFar(stat) && zip_set_file_compression(zip_, index, ZIP_CM_STORE, 0) != 0))
                throw HostError(shown_ + ": cannot be written: " + zip_strerror(zip_));
        }
    }

    void close() {
        if (zip_close(zip_) != 0)
            throw HostError(shown_ + ": cannot be written: " + zip_strerror(zip_));
        zip_ = nullptr;
    }

private:
    zip_t* zip_ = nullptr;
    std::string shown_;
};

} // namespace

void HostZip::packDirectory(const std::string& directory, const std::string& archive) {
    if (!HostFile::isDir(directory))
        throw HostError("cannot pack '" + directory + "': not a directory");
    HostReplacement replacement(archive);
    const std::vector<std::string> names = listFiles(directory, replacement.getTargetPath(), replacement.getTemporaryPath());
    if (names.empty()) {
        // The zip library would write no file at all.
        constexpr std::string_view emptyArchive("PK\x05\x06\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22);
        replacement.write(emptyArchive.data(), emptyArchive.size());
    } else {
        Writer writer(replacement.getTemporaryPath(), archive, ZIP_CREATE | ZIP_TRUNCATE);
        for (const std::string& name : names)
            writer.add(name, directory + "/" + name);
        writer.close();
        // How small a member gets is known only now.
        Writer second(replacement.getTemporaryPath(), archive, 0);
        second.storeWhatReadersWouldRefuse();
        second.close();
    }
    replacement.commit();
}
