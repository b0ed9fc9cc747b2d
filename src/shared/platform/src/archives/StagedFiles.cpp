// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "StagedFiles.h"

#include "../foundations/CheckedDocument.h"
#include "HPLPlatform.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostZip.h"
#include "JSONObjectWriter.h"

#include <memory>

void staged_files::writeDocument(const HPLPlatform& platform, const std::string& file) {
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    HostFileUtils::writeFileAtomically(file, zep_platform::renderChecked(writer));
}

void staged_files::pack(const std::string& folder, const std::string& archive, bool withDigest) {
    const std::unique_ptr<HostFwdIter<HostFile>> files(HostFile(folder).createFileIter());
    HostZip zip(archive);
    for (int mode = HostZip::kCompressAnew; files->hasNext(); mode = HostZip::kCompressMore)
        zip.compress(files->next().getPath(), mode);
    if (withDigest)
        zip.attachDigest();
    zip.commit();
}
