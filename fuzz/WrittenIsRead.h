// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "FuzzMetadata.h"
#include "HMDAArchive.h"
#include "HPLDevice.h"
#include "HZEPArchiveEdit.h"
#include "HZEPDesignIPInstance.h"
#include "HZEPEmulationJsonReader.h"
#include "HZEPEmulationJsonWriter.h"
#include "HZEPEmulationXMLReader.h"
#include "HZEPEmulationXMLWriter.h"
#include "HZEPEmulations.h"
#include "HZEPHardwareFeatureRom.h"
#include "HZEPJSONText.h"
#include "HZEPSemanticLabelReader.h"
#include "HZEPTextDifference.h"
#include "HostZip.h"
#include "TempDir.h"

#include <algorithm>
#include <array>
#include <functional>

/// A model of texts that bytes choose: nothing that it is written as may be refused by the reader of the same thing, unless writing it
/// fails and leaves the file as it was.
class WrittenIsRead {
public:
    /// What went wrong, in words; "" when nothing did.
    std::string run(const std::uint8_t* data, std::size_t size) {
        at_ = data;
        end_ = data + size;
        fault_.clear();
        wrote_ = 0;
        refused_ = 0;
        const std::string payload = dir_.write("payload", "payload");
        HPLPlatform platform;
        fill(platform);
        for (const bool isFile : {true, false})
            attempt(isFile ? "archiveFile" : "writeToJSON", restore(), [&](const std::string& archive) {
                platform.setPlatformFile(archive);
                if (isFile)
                    platform.archiveFile(text(), text(), payload);
                else
                    platform.writeToJSON();
                HPLPlatform again;
                if (!HZEPDsaJsonReader(&again).parseDSA(archive, zep_platform::PlatformLoader::PreferAlternateJson))
                    return std::string("is not read");
                return describe(writeJson(platform), writeJson(again));
            });
        attempt("addFile", restore(), [&](const std::string& archive) {
            const std::string type = text(), entry = text();
            HZEPArchiveEdit::addFile(archive, type, entry, payload);
            HPLPlatform again;
            if (!HZEPDsaJsonReader(&again).parseDSA(archive, zep_platform::PlatformLoader::PreferAlternateJson))
                return std::string("is not read");
            return again.getFile(type) == entry && HostZip::readMember(archive, entry) == "payload" ? "" : std::string("is not listed");
        });
        attempt("DSA writer", dir_.write("out.xml", "old"), [&](const std::string& file) {
            HZEPDsaXmlWriter(&platform, file).writeDSA();
            HPLPlatform again;
            const std::string xml = HostFileUtils::readFile(file);
            if (!readXml(xml, again))
                return std::string("is not read");
            const auto rewritten = writeXml(again);
            return !rewritten ? "is not written again" : describe(xml, *rewritten, HZEPTextEdit::Xml);
        });
        index(payload);
        emulations();
        labels();
        return fault_;
    }

    std::size_t getWritten() const { return wrote_; }
    std::size_t getRefused() const { return refused_; }

private:
    unsigned next() { return at_ == end_ ? 0 : *at_++; }

    std::string text() {
        static const std::string kLong(300, 'n'), kDotted = std::string(200, 'p') + "." + std::string(200, 'q') + ".r";
        static const std::array<std::string, 24> kPieces = {"plain",
                                                            "a.b",
                                                            "..",
                                                            "x/y",
                                                            kLong,
                                                            kDotted,
                                                            "\xE9",
                                                            "\xC3",
                                                            "\xED\xA0\x80",
                                                            "\xF0\x9F\x98",
                                                            "\xF0\x9F\x98\x80",
                                                            "\xC3\xA9",
                                                            "\x01",
                                                            "\"",
                                                            "\\",
                                                            "\n",
                                                            "\t ",
                                                            "]]>",
                                                            "<a b='c'>&#0;",
                                                            "{}",
                                                            "\xEF\xBF\xBF",
                                                            "\x7F",
                                                            "1",
                                                            std::string(62, 'v') + "\xC3\xA9"};
        std::string made;
        for (unsigned count = next() % 4; count > 0; --count)
            made += kPieces[next() % (next() % 3 ? 6 : kPieces.size())];
        return made;
    }

    void fill(HPLPlatform& platform) {
        platform.setVendor(text());
        platform.setName(text());
        platform.setTopModuleName(text());
        platform.addValidBinaryContentValue("dcp");
        platform.setAcceleratorBinaryContent(text());
        platform.setGeneratedName(text());
        platform.setUsesPR(false);
        using Intent = HZEPDesignIntentStorage;
        for (const auto key : {Intent::DataCenter, Intent::Embedded, Intent::ExternalHost, Intent::ServerManaged})
            platform.setComputedDesignIntent(key, key == Intent::Embedded);
        platform.getBoard().setName(text());
        HPLDevice* device = platform.addDevice();
        device->setName("fpga0");
        device->setType(text());
        device->getCore().setInstPath(text());
        for (unsigned count = next() % 3; count > 0; --count) {
            HZEPDesignIPInstance* instance = platform.addDesignIPInstance();
            instance->setVLNV(text());
            for (unsigned parameters = next() % 4; parameters > 0; --parameters)
                instance->addConfigParam(text() + std::to_string(parameters), text() + "!");
        }
        for (unsigned count = next() % 3; count > 0; --count)
            platform.addFile(text() + "T", text() + "n");
        if (next() % 2) {
            HZEPHardwareFeatureRom* rom = platform.addFeatureRom();
            unsigned char name[64] = {};
            const std::string made = text();
            std::copy_n(made.begin(), std::min<std::size_t>(made.size(), 63), name);
            rom->setVBNVName(name);
        }
    }

    std::string restore() { return dir_.write("out.kar", seed_); }

    /// What the first document tells and the second does not.
    static std::string describe(const std::string& before, const std::string& after, HZEPTextEdit::Form form = HZEPTextEdit::Json) {
        for (const HZEPTextDifference::Change& change : HZEPTextDifference::find(before, after, form))
            return change.path + ": \"" + change.before + "\" became \"" + change.after + '"';
        return "";
    }

    /// A round of one writer on one file.
    void attempt(const std::string& what, const std::string& file, const std::function<std::string(const std::string&)>& work) {
        const std::string before = HostFileUtils::readFile(file);
        bool isWritten = false;
        try {
            const std::string difference = work(file);
            isWritten = true;
            if (!difference.empty())
                fault_ += what + ": " + difference + "\n";
        } catch (const std::exception&) {
            if (HostFileUtils::readFile(file) != before)
                fault_ += what + ": failed and changed the file\n";
        }
        ++(isWritten ? wrote_ : refused_);
    }

    void index(const std::string& payload) {
        HMDAArchive made;
        made.setFile(dir_.path("made.mda"));
        HostFileUtils::writeFileAtomically(made.getFile(), ZipBuilder().add("mda.json", "{\"mine\": 1e5}").bytes());
        for (const bool isEdit : {false, true})
            attempt(isEdit ? "addToIndex" : "mda", made.getFile(), [&](const std::string& file) {
                const std::string type = text(), name = text();
                made.setPfmName(text());
                if (isEdit)
                    HZEPArchiveEdit::addToIndex(file, type, name, payload);
                else
                    made.archive(type, name, payload);
                HMDAArchive again;
                again.setFile(file);
                const bool isListed = again.parse() && (type.empty() || again.getFiles().get(type) == name);
                return std::string(isListed && HostZip::readMember(file, name) == "payload" ? "" : "is not listed");
            });
    }

    void emulations() {
        HZEPEmulations made;
        HZEPEmulation* emulation = made.createEmulation();
        emulation->setName((text() + "e").c_str());
        HZEPEmulationFile* file = emulation->createFile();
        file->setType((text() + "t").c_str());
        file->setName((text() + "n").c_str());
        for (const bool isXml : {false, true})
            attempt(isXml ? "emulation XML" : "emulation JSON", dir_.write(isXml ? "hw_emu.xml" : "hw_emu.json", "old"),
                    [&](const std::string& path) {
                        HZEPEmulations again;
                        if (isXml)
                            HZEPEmulationXMLWriter(&made, path).writeXml();
                        else
                            HZEPEmulationJsonWriter(&made, path).writeJson();
                        if (isXml)
                            HZEPEmulationXMLReader(path, &again).parseXml();
                        else
                            HZEPEmulationJsonReader(path, &again).parseJson();
                        const bool isSame = again.getEmulations().size() == 1 &&
                                            again.getEmulations().front()->getName() == emulation->getName() &&
                                            again.getEmulations().front()->getFiles().front()->getName() == file->getName();
                        return std::string(isSame ? "" : "is not read");
                    });
    }

    void labels() {
        boost::property_tree::ptree label, root;
        for (const char* key : {"endpoint_name", "reg_abs", "interrupt_sink"})
            label.push_back({key, boost::property_tree::ptree(text())});
        label.push_back({"partition_path", boost::property_tree::ptree("/")});
        root.push_back({"pcie_endpoint", label});
        HZEPSemanticLabelReader reader;
        reader.parseRoot(root);
        attempt("labels", dir_.write("labels.json", "old"), [&](const std::string& path) {
            reader.generateExtMetadata("/", path);
            boost::property_tree::ptree tree;
            HZEPJSONText::read(HostFileUtils::readFile(path), tree);
            return std::string();
        });
    }

    const std::string seed_ =
        ZipBuilder().add("kar.json", R"({"mine": 1e5, "devices": [{"name": "fpga0", "core": {"name": "c"}}], "files": []})").bytes();
    const TempDir dir_;
    const std::uint8_t* at_ = nullptr;
    const std::uint8_t* end_ = nullptr;
    std::string fault_;
    std::size_t wrote_ = 0;
    std::size_t refused_ = 0;
};
