// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPBootImg.h"

#include "JSONObjectWriter.h"

HZEPBootImg::HZEPBootImg() = default;

HZEPBootImg::~HZEPBootImg() = default;

std::string HZEPBootImg::getName() const {
    return name_;
}

std::string HZEPBootImg::getType() const {
    return type_;
}

std::string HZEPBootImg::getBif() const {
    return bif_;
}

std::string HZEPBootImg::getImgData() const {
    return imgData_;
}

std::string HZEPBootImg::getBootMode() const {
    return bootMode_;
}

std::string HZEPBootImg::getRootFS() const {
    return rootFS_;
}

std::string HZEPBootImg::getMountPath() const {
    return mountPath_;
}

std::string HZEPBootImg::getReadMe() const {
    return readMe_;
}

std::string HZEPBootImg::getQemuArgs() const {
    return qemuArgs_;
}

std::string HZEPBootImg::getQemuBoot() const {
    return qemuBoot_;
}

std::string HZEPBootImg::getQemuDevTree() const {
    return qemuDevTree_;
}

std::string HZEPBootImg::getHwBootBin() const {
    return hwBootBin_;
}

void HZEPBootImg::setName(std::string name) {
    name_ = std::move(name);
}

void HZEPBootImg::setType(std::string type) {
    type_ = std::move(type);
}

void HZEPBootImg::setBif(std::string bif) {
    bif_ = std::move(bif);
}

void HZEPBootImg::setImgData(std::string imgData) {
    imgData_ = std::move(imgData);
}

void HZEPBootImg::setBootMode(std::string bootMode) {
    bootMode_ = std::move(bootMode);
}

void HZEPBootImg::setRootFS(std::string rootFS) {
    rootFS_ = std::move(rootFS);
}

void HZEPBootImg::setMountPath(std::string mountPath) {
    mountPath_ = std::move(mountPath);
}

void HZEPBootImg::setReadMe(std::string readMe) {
    readMe_ = std::move(readMe);
}

void HZEPBootImg::setQemuArgs(std::string qemuArgs) {
    qemuArgs_ = std::move(qemuArgs);
}

void HZEPBootImg::setQemuBoot(std::string qemuBoot) {
    qemuBoot_ = std::move(qemuBoot);
}

void HZEPBootImg::setQemuDevTree(std::string qemuDevTree) {
    qemuDevTree_ = std::move(qemuDevTree);
}

void HZEPBootImg::setHwBootBin(std::string hwBootBin) {
    hwBootBin_ = std::move(hwBootBin);
}

void HZEPBootImg::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("name", getName());
    writer.addKey("type", getType());
    writer.addKey("bif", getBif());
    writer.addKey("data", getImgData());
    writer.addKey("rootFileSystem", getRootFS());
    writer.addKey("bootMode", getBootMode());
    writer.addKey("mountPath", getMountPath());
    writer.addKey("readMe", getReadMe());
    writer.addKey("qemuArgs", getQemuArgs());
    writer.addKey("qemuBoot", getQemuBoot());
    writer.addKey("qemuDevTree", getQemuDevTree());
    writer.addKey("hwBootBin", getHwBootBin());
}
