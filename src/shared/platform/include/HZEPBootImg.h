// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "JSONSerializable.h"

#include <string>

/// A boot image of a system configuration: the names of its parts, as they stand in the file.
class HZEP_EXPORT HZEPBootImg : public zep_platform::JSONSerializable {
public:
    HZEPBootImg();
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;
    ~HZEPBootImg() override;
    HZEPBootImg(const HZEPBootImg&) = delete;
    HZEPBootImg& operator=(const HZEPBootImg&) = delete;

    virtual std::string getName() const;
    virtual std::string getType() const;
    virtual std::string getBif() const;
    virtual std::string getImgData() const;
    virtual std::string getBootMode() const;
    virtual std::string getRootFS() const;
    virtual std::string getMountPath() const;
    virtual std::string getReadMe() const;
    virtual std::string getQemuArgs() const;
    virtual std::string getQemuBoot() const;
    virtual std::string getQemuDevTree() const;
    virtual std::string getHwBootBin() const;

    virtual void setName(std::string name);
    virtual void setType(std::string type);
    virtual void setBif(std::string bif);
    virtual void setImgData(std::string imgData);
    virtual void setBootMode(std::string bootMode);
    virtual void setRootFS(std::string rootFS);
    virtual void setMountPath(std::string mountPath);
    virtual void setReadMe(std::string readMe);
    virtual void setQemuArgs(std::string qemuArgs);
    virtual void setQemuBoot(std::string qemuBoot);
    virtual void setQemuDevTree(std::string qemuDevTree);
    virtual void setHwBootBin(std::string hwBootBin);

private:
    std::string name_;
    std::string type_;
    std::string bif_;
    std::string imgData_;
    std::string bootMode_;
    std::string rootFS_;
    std::string mountPath_;
    std::string readMe_;
    std::string qemuArgs_;
    std::string qemuBoot_;
    std::string qemuDevTree_;
    std::string hwBootBin_;
};
