// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Verbs.h"

#include "HostZip.h"

#include <memory>

namespace {

void verify(Session& session, const std::string& archive) {
    HostZip::DigestState state = HostZip::NoDigest;
    try {
        state = HostZip::checkDigest(archive);
    } catch (const std::exception& error) {
        throw Unusable(error.what());
    }
    if (state == HostZip::NoDigest)
        throw Negative(archive + ": has no digest");
    if (state == HostZip::DigestDiffers)
        throw Negative(archive + ": differs from its digest: a member was changed, added or taken out since it was stamped");
    session.out() << archive << ": matches its digest\n";
}

} // namespace

void addVerify(CLI::App& app, Session& session) {
    auto archive = std::make_shared<std::string>();
    CLI::App* verb = app.add_subcommand("verify", "Tell whether an archive is what its digest says");
    verb->add_option("ARCHIVE", *archive, "An archive (.dsa, .kar), or a platform's name")->required();
    verb->footer("Exit status: 0 it matches, 1 it differs or has no digest, 2 it can't be read.\n"
                 "The digest tells damage; it is no signature. 'hzep add' stamps it anew.\n"
                 "Example: hzep verify card/hw/card.kar");
    verb->callback([archive, &session] { verify(session, Session::findArchive(*archive)); });
}
