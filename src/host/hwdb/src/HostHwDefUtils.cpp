// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostHwDefUtils.h"

#include "HostErrors.h"
#include "HostZip.h"
#include "HostZipMember.h"
#include "HostZipSession.h"
#include "lmx_xml.h"

#include <exception>
#include <map>
#include <utility>

namespace {

using Attributes = std::map<std::string, std::string>;

/// Fills a definition from parser events. Only elements without a namespace are ours; others are skipped with all they hold.
class DefinitionReader : private lmx60::c_read_memory, private lmx60::c_xml {
public:
    DefinitionReader(const std::string& xml, HostHwDef& definition)
        : c_read_memory(xml.data(), xml.size()), c_xml(static_cast<c_read_memory&>(*this)), definition_(definition) {}

    std::string readAll() {
        for (auto kind = peek(); fault_.empty() && kind != lmx60::xml_event_kind::end_of_document; kind = peek()) {
            if (kind == lmx60::xml_event_kind::failed) {
                line_ = failure_line();
                stop(failure_text());
            } else if (kind == lmx60::xml_event_kind::start) {
                start();
            } else {
                pop();
                if (kind == lmx60::xml_event_kind::end)
                    end();
            }
        }
        return fault_;
    }

private:
    void stop(const std::string& cause) {
        if (fault_.empty())
            fault_ = "line " + std::to_string(line_) + ": " + cause;
    }

    void start() {
        line_ = next_line();
        const std::string name(next_local_name());
        const bool isForeign = next_ns_id() != lmx60::ns_none;
        pop();
        Attributes attributes;
        for (std::size_t i = 0; i < attribute_count(); ++i)
            if (attribute_ns_id(i) == lmx60::ns_none)
                attributes.emplace(attribute_local_name(i), attribute_value(i));
        start(name, isForeign, std::move(attributes));
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
    std::string fault_;
    int line_ = 0;
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
    fault = xml.size() > kMaxDefinitionSize ? "larger than the limit" : DefinitionReader(xml, read).readAll();
    if (!fault.empty())
        return false;
    definition = std::move(read);
    return true;
}
