// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "LmxFile.h"

#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostMsgMgr.h"
#include "lmx60.h"

namespace {

[[noreturn]] void throwMessage(const char* key, std::vector<std::string> args) {
    throw HostXMLException(HostMsgMgr::getText({"platform", HostMsgMgr::Error, key, std::move(args)}));
}

} // namespace

std::string describeLmxFailure(const LmxFileFailure& failure) {
    return "Line number:" + std::to_string(failure.line) + ". " + failure.text;
}

void setLmxWriterDefaults() {
    lmx60::c_xml_writer::set_default_nl("\n");
    lmx60::c_xml_writer::set_default_tab("  ");
    lmx60::c_xml_writer::set_default_attribute_nl(" ");
    lmx60::c_xml_writer::set_default_attribute_tab("");
}

void replaceLmxFile(const std::string& path, const std::string& document) {
    if (document.size() > lmx60::c_xml::max_document_size)
        throwLmxWriteFault(path,
                           "the document is larger than the " + std::to_string(lmx60::c_xml::max_document_size) + " bytes that are read");
    try {
        HostFileUtils::writeFileAtomically(path, document);
    } catch (const HostError&) {
        throwLmxNotWritten(path);
    }
}

void throwLmxNotWritten(const std::string& path) {
    throwMessage("@74-10@%s", {path});
}

void throwLmxWriteFault(const std::string& path, const std::string& text) {
    throwMessage("@74-15@%s%s%s%s", {path, text});
}
