// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Losses.h"

#include "HZEPDsaXmlReader.h"
#include "HZEPDsaXmlWriter.h"
#include "HostEnv.h"
#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostText.h"
#include "HostZipUpdate.h"
#include "JSONObjectWriter.h"
#include "Session.h"
#include "lmx60.h"

#include <filesystem>
#include <iostream>
#include <sstream>

namespace {

/// What tells where a document is and of which form, and what stands in another member.
const std::set<std::string> kPassedOver = {"platformFile", "extensions", "VersionMajor", "VersionMinor"};
/// Left out of XML, as it is what its absence means.
constexpr const char* kBinaryFormat = "DSA.Build.AcceleratorBinaryFormat";
constexpr const char* kDefaultBinaryFormat = "acclib2";
constexpr std::size_t kMaxShown = 60; // bytes of a value

/// A file of this process, taken away again.
class Scratch {
public:
    explicit Scratch(const std::string& name) : path_(HostEnv::getHostTmpDir() + "/" + name) {}
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    const std::string& get() const { return path_; }

private:
    std::string path_;
};

/// Nothing is said while this lives: a scratch archive lacks the members that its metadata list.
class Silence {
public:
    Silence() : sink_(HostMsgMgr::getGlobal().setSink([](const HostMsg&) {})), out_(std::cout.rdbuf(nullptr)) {}
    ~Silence() {
        HostMsgMgr::getGlobal().setSink(std::move(sink_));
        std::cout.rdbuf(out_);
        std::cout.clear();
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    HostMsgMgr::Sink sink_;
    std::streambuf* out_;
};

std::string shorten(const std::string& text) {
    const std::string shown = HostText::makePrintable(text.substr(0, kMaxShown));
    return '"' + shown + (text.size() > kMaxShown ? "...\"" : "\"");
}

} // namespace

std::string renderDocument(const HPLPlatform& platform) {
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream text;
    writer.write(text);
    return std::move(text).str();
}

std::optional<std::string> renderXml(HPLPlatform& platform) {
    const Scratch file("hzep-losses.xml");
    try {
        HZEPDsaXmlWriter(&platform, file.get()).writeDSA();
        return HostFileUtils::readFile(file.get());
    } catch (const lmx60::lmx_exception&) {
        return std::nullopt;
    } catch (const HostXMLException&) {
        return std::nullopt;
    }
}

bool Losses::isXml(const std::string& text) {
    const std::size_t first = text.find_first_not_of(std::string_view(" \t\r\n\xEF\xBB\xBF\xFE\xFF\0", 10));
    return first != std::string::npos && text[first] == '<';
}

void Losses::addOption(CLI::App* verb, bool& isStrict) {
    verb->add_flag("--strict", isStrict, "Write nothing when a key would be dropped or changed; exit status 1");
}

void Losses::add(const std::string& before, const std::string& after, HZEPTextEdit::Form form, const IsWished& isWished) {
    for (HZEPTextDifference::Change& change : HZEPTextDifference::find(before, after, form, kPassedOver))
        if ((!isWished || !isWished(change)) && (change.path != kBinaryFormat || change.before != kDefaultBinaryFormat))
            changes_.push_back(std::move(change));
}

void Losses::addReading(const std::string& text, HPLPlatform& platform, const IsWished& isWished) {
    if (!isXml(text))
        add(text, renderDocument(platform), HZEPTextEdit::Json, isWished);
    else if (const auto again = renderXml(platform))
        add(text, *again, HZEPTextEdit::Xml, isWished);
}

void Losses::addWriting(const std::string& text, const std::string& xml) {
    const Scratch archive("hzep-losses.dsa");
    HostZipUpdate update = HostZipUpdate::create(archive.get());
    update.put("dsa.xml", xml);
    update.commit();
    HPLPlatform again;
    const Silence silence;
    if (HZEPDsaXmlReader(archive.get(), &again).parseDSA())
        add(text, renderDocument(again), HZEPTextEdit::Json);
}

void Losses::tell(const std::string& source, bool isStrict) const {
    if (changes_.empty())
        return;
    const std::string severity = isStrict ? "error" : "warning";
    for (std::size_t i = 0; i < changes_.size() && i < kMaxNamed; ++i) {
        const HZEPTextDifference::Change& change = changes_[i];
        Session::say(severity, source + ": \"" + HostText::makePrintable(change.path) + "\" " +
                                   (change.isDropped ? "is dropped: " + shorten(change.before)
                                                     : "changes from " + shorten(change.before) + " to " + shorten(change.after)));
    }
    const std::string count = source + ": " + std::to_string(changes_.size()) + (changes_.size() == 1 ? " key is" : " keys are") +
                              " dropped or changed" +
                              (changes_.size() > kMaxNamed ? ", of which " + std::to_string(kMaxNamed) + " are named" : "");
    if (isStrict)
        throw Negative(count + "; nothing was written");
    Session::say("warning", count);
}
