// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostHwDefUtils.h"

#include "HostErrors.h"
#include "HostZip.h"
#include "HostZipMember.h"
#include "HostZipSession.h"

#include <exception>
#include <utility>

#include <libxml/SAX2.h>
#include <libxml/parser.h>

namespace {

using Attributes = std::map<std::string, std::string>;

/// Fills a definition from parser events. Only elements without a namespace are ours; others are skipped with all they hold.
class DefinitionReader {
public:
    explicit DefinitionReader(HostHwDef& definition) : definition_(definition) {}

    std::string read(const std::string& xml) {
        xmlSAXHandler handler{};
        handler.initialized = XML_SAX2_MAGIC;
        handler.internalSubset = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
            of(self).guarded([&] { of(self).stop("a document type is not allowed"); });
        };
        handler.startElementNs = [](void* self, const xmlChar* name, const xmlChar*, const xmlChar* uri, int, const xmlChar**, int count,
                                    int, const xmlChar** attributes) {
            of(self).guarded([&] { of(self).start(text(name), uri != nullptr, readAttributes(count, attributes)); });
        };
        handler.endElementNs = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) { of(self).end(); };
        handler.serror = [](void*, xmlErrorPtr) {};

        context_ = xmlCreatePushParserCtxt(&handler, this, nullptr, 0, nullptr);
        if (!context_)
            return "no memory for the parser";
        // Without document types there are only the predefined entities, which have to be substituted.
        xmlCtxtUseOptions(context_, XML_PARSE_NONET | XML_PARSE_NOENT);
        const int code = xmlParseChunk(context_, xml.data(), static_cast<int>(xml.size()), 1);
        if (fault_.empty() && (code != XML_ERR_OK || !context_->wellFormed)) {
            const xmlError* error = xmlCtxtGetLastError(context_);
            std::string cause = error && error->message ? error->message : "not well-formed XML";
            while (cause.ends_with('\n'))
                cause.pop_back();
            fault_ = "line " + std::to_string(error ? error->line : 0) + ": " + cause;
        }
        if (context_->myDoc)
            xmlFreeDoc(context_->myDoc);
        xmlFreeParserCtxt(context_);
        if (raised_)
            std::rethrow_exception(raised_);
        return fault_;
    }

private:
    static DefinitionReader& of(void* self) { return *static_cast<DefinitionReader*>(self); }

    /// Nothing raised may pass through the parser's C frames.
    template <class Step>
    void guarded(Step step) {
        if (!fault_.empty())
            return;
        try {
            step();
        } catch (...) {
            raised_ = std::current_exception();
            xmlStopParser(context_);
        }
    }

    static std::string text(const xmlChar* begin) { return reinterpret_cast<const char*>(begin); }

    static Attributes readAttributes(int count, const xmlChar** fields) {
        Attributes attributes;
        for (int i = 0; i < count; ++i, fields += 5)
            if (!fields[2])
                attributes[text(fields[0])] =
                    std::string(reinterpret_cast<const char*>(fields[3]), reinterpret_cast<const char*>(fields[4]));
        return attributes;
    }

    void stop(const std::string& cause) {
        if (fault_.empty())
            fault_ = "line " + std::to_string(xmlSAX2GetLineNumber(context_)) + ": " + cause;
        xmlStopParser(context_);
    }

    void start(const std::string& name, bool isForeign, Attributes attributes) {
        if (++depth_ > HostHwDefUtils::kMaxDepth)
            return stop("nested deeper than " + std::to_string(HostHwDefUtils::kMaxDepth) + " levels");
        if (skipFrom_ != 0)
            return;
        const auto required = [this, &attributes](const char* key) {
            std::string value = attributes[key];
            if (value.empty())
                stop(std::string("the attribute '") + key + "' is missing");
            return value;
        };
        if (depth_ == 1) {
            if (isForeign || name != "hardwareDefinition")
                return stop("expected the root element 'hardwareDefinition'");
            definition_.setHierTopModuleName(required("top"));
            definition_.setPart(attributes["part"]);
        } else if (!isForeign && name == "instance") {
            HostHwInstance instance;
            instance.name = required("name");
            instance.module = required("module");
            if (instance.name.find('/') != std::string::npos)
                return stop("the name '" + instance.name + "' of an instance holds a '/'");
            instance.parent = open_.empty() ? HostHwInstance::kNoParent : open_.back();
            open_.push_back(definition_.addInstance(std::move(instance)));
        } else if (!isForeign && name == "attribute" && !open_.empty()) {
            definition_.setAttribute(open_.back(), required("name"), attributes["value"]);
            skipFrom_ = depth_;
        } else {
            skipFrom_ = depth_;
        }
    }

    void end() {
        if (skipFrom_ == 0 && !open_.empty())
            open_.pop_back();
        if (skipFrom_ == depth_)
            skipFrom_ = 0;
        --depth_;
    }

    HostHwDef& definition_;
    xmlParserCtxtPtr context_ = nullptr;
    std::string fault_;
    std::exception_ptr raised_;
    std::size_t depth_ = 0;
    std::size_t skipFrom_ = 0;      // depth of the element whose content is skipped; 0: none
    std::vector<std::size_t> open_; // indices of the instances around
};

} // namespace

std::unique_ptr<HostHwDef> HostHwDefUtils::getHDF(const std::string& archive, bool, const std::string&) {
    std::string ignored;
    return getHDF(archive, ignored);
}

std::unique_ptr<HostHwDef> HostHwDefUtils::getHDF(const std::string& archive, std::string& fault) {
    try {
        const HostZipSession session(archive);
        if (fault = HostZip::getFault(archive); !fault.empty()) {
            fault = archive + ": " + fault;
            return nullptr;
        }
        for (const char* member : {"hwdef.xml", "sysdef.xml"}) {
            if (!HostZip::containsFile(archive, member))
                continue;
            auto definition = std::make_unique<HostHwDef>();
            if (!parse(HostZipMember(archive, member, kMaxDefinitionSize).readAll(), *definition, fault)) {
                fault = archive + ": " + member + ": " + fault;
                return nullptr;
            }
            definition->setFile(archive);
            return definition;
        }
        fault = archive + ": holds no hardware definition: there is no entry \"hwdef.xml\" or \"sysdef.xml\"";
    } catch (const std::exception& error) {
        fault = error.what();
    }
    return nullptr;
}

bool HostHwDefUtils::parse(const std::string& xml, HostHwDef& definition, std::string& fault) {
    HostHwDef read;
    fault = xml.size() > kMaxDefinitionSize ? "larger than the limit" : DefinitionReader(read).read(xml);
    if (!fault.empty())
        return false;
    definition = std::move(read);
    return true;
}
