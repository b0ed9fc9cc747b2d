// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "hzep_c_api.h"

#include "ChunkedText.h"
#include "HZEPPlatform.h"
#include "HostErrors.h"
#include "HostMsgMgr.h"
#include "HostText.h"
#include "JSONObjectWriter.h"
#include "PlatformLoader.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

/// Names of files may be any bytes, and so come into a document; text is UTF-8.
char* makeUtf8(std::unique_ptr<char[]> text) {
    if (HostText::isUtf8(text.get()))
        return text.release();
    const std::string clean = HostText::toUtf8(text.get());
    text.reset(new char[clean.size() + 1]);
    std::copy_n(clean.c_str(), clean.size() + 1, text.get());
    return text.release();
}

/// The loaded platform goes, then the tree, and only then is the whole text laid out: a large document is never held in all three
/// forms.
template <class Fill>
char* renderPlatform(const char* path, const Fill& fill) {
    if (!path)
        throw std::logic_error("basic_string::_M_construct null not valid");
    ChunkedText text;
    {
        zep_platform::JSONObjectWriter writer;
        if (const auto platform = zep_platform::PlatformLoader(path, zep_platform::PlatformLoader::PreferAlternateJson).load())
            fill(writer, *platform);
        else
            return nullptr;
        std::ostream stream(&text);
        stream.exceptions(std::ios::badbit | std::ios::failbit);
        writer.write(stream);
    }
    return makeUtf8(std::unique_ptr<char[]>(text.release()));
}

void fillWhole(zep_platform::JSONObjectWriter& writer, const HZEPPlatform& platform) {
    writer.writeObject(platform);
}

void fillShort(zep_platform::JSONObjectWriter& writer, const HZEPPlatform& platform) {
    writer.addKey("uniqueName", platform.getUniqueName());
    writer.addKey("file", platform.getPlatformFile());
    writer.addKey("description", platform.getDescription());
}

/// Handed out where there may be no memory for a copy, and never freed.
char outOfMemory[] = "out of memory";
char sinkRaised[] = "the message service raised an exception";

/// Keeps what is sent while it lives.
class KeptMessages {
public:
    KeptMessages() : before_(HostMsgMgr::getGlobal().setSink([this](const HostMsg& message) { messages_.push_back(message); })) {}
    ~KeptMessages() { HostMsgMgr::getGlobal().setSink(std::move(before_)); }
    KeptMessages(const KeptMessages&) = delete;
    KeptMessages& operator=(const KeptMessages&) = delete;

    std::vector<HostMsg> take() { return std::exchange(messages_, {}); }

private:
    std::vector<HostMsg> messages_;
    HostMsgMgr::Sink before_;
};

bool tellsOfFailure(const HostMsg& message) {
    return message.severityMask >= HostMsgMgr::CriticalWarning;
}

/// "FILE:LINE: MEMBER: CAUSE", as far as they are known.
std::string describe(const HostFault& fault) {
    return fault.file + (fault.line > 0 ? ":" + std::to_string(fault.line) : "") + ": " +
           (fault.member.empty() ? "" : fault.member + ": ") + fault.cause;
}

bool isKnown(const HostFault& fault) {
    return !fault.file.empty() && !fault.cause.empty();
}

/// One line about a platform that could not be loaded. `conclusion` is what was raised, "" for nothing.
std::string describe(const std::string& path, const std::vector<HostMsg>& messages, const HostFault& raised,
                     const std::string& conclusion) {
    HostFault fault = raised;
    std::string texts;
    for (const HostMsg& message : messages)
        if (tellsOfFailure(message)) {
            texts += (texts.empty() ? "" : "; ") + HostMsgMgr::getText(message);
            if (!isKnown(raised) && isKnown(message.fault))
                fault = message.fault;
        }
    std::string text = isKnown(fault) ? describe(fault) : texts;
    if (!conclusion.empty() && text.find(conclusion) == text.npos)
        text += text.empty() ? conclusion : " (" + conclusion + ")";
    if (text.empty())
        text = "it can't be read";
    return text.starts_with(path + ":") ? text : path + ": " + text;
}

using Document = std::unique_ptr<char, decltype(&hzep_free_json_string)>;
using Fill = void (*)(zep_platform::JSONObjectWriter&, const HZEPPlatform&);

/// The document, or null and why there is none.
Document tryRenderPlatform(const char* path, std::string& reason, Fill fill) {
    Document document(nullptr, &hzep_free_json_string);
    if (!path) {
        reason = "the path is null";
        return document;
    }
    std::vector<HostMsg> messages;
    {
        KeptMessages kept;
        try {
            document.reset(renderPlatform(path, fill));
            messages = kept.take();
            if (!document)
                reason = describe(path, messages, {}, "");
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const HostFileNotFoundException&) {
            reason = std::string(path) + ": no such file";
        } catch (const HostErrorBase& error) {
            reason = describe(path, messages = kept.take(), error.getFault(), error.what());
        } catch (const std::exception& error) {
            reason = describe(path, messages = kept.take(), {}, error.what());
        } catch (...) {
            reason = describe(path, messages = kept.take(), {}, "an exception of an unknown kind");
        }
    }
    for (HostMsg& message : messages)
        if (document || !tellsOfFailure(message))
            HostMsgMgr::getGlobal().send(message.topic, message.severityMask, message.key, std::move(message.args),
                                         std::move(message.fault));
    return document;
}

char* copy(const std::string& text) {
    char* const copied = new char[text.size() + 1];
    std::memcpy(copied, text.c_str(), text.size() + 1);
    return copied;
}

char* tryGet(const char* path, char** error, Fill fill) noexcept {
    char* reason = nullptr;
    Document document(nullptr, &hzep_free_json_string);
    try {
        std::string text;
        document = tryRenderPlatform(path, text, fill);
        if (!document && error)
            reason = copy(HostText::makePrintable(text));
    } catch (const std::bad_alloc&) {
        document.reset();
        reason = outOfMemory;
    } catch (...) {
        // Only a sink of the caller's raises here.
        document.reset();
        reason = sinkRaised;
    }
    if (error)
        *error = reason;
    return document.release();
}

} // namespace

char* hzep_try_get_platform_json(const char* path, char** error) {
    return tryGet(path, error, &fillWhole);
}

char* hzep_try_get_short_platform_json(const char* path, char** error) {
    return tryGet(path, error, &fillShort);
}

char* hzep_get_platform_json(const char* path) {
    return renderPlatform(path, &fillWhole);
}

char* hzep_get_short_platform_json(const char* path) {
    return renderPlatform(path, &fillShort);
}

void hzep_free_json_string(char* text) {
    if (text != outOfMemory && text != sinkRaised)
        delete[] text;
}
