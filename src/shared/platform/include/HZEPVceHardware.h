// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <map>
#include <string>

/// The array of vector compute engines of a device: its architecture and its rows.
class HZEP_EXPORT HZEPVceHardware : public zep_platform::JSONSerializable {
public:
    enum Arch { NO_VCE, VCE1, VCEML, VCE2P, VCE2PS, VCE2PK };

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    static const std::map<Arch, std::string>& getArchMap();
    /// An unknown value gives "NO_VCE", an unknown text NO_VCE.
    static std::string archToString(Arch arch);
    static Arch stringToArch(const std::string& text);

    Arch getArch() const { return arch_; }
    void setArch(Arch arch) { arch_ = arch; }
    void setArch(const std::string& text) { arch_ = stringToArch(text); }
    std::string getArchAsString() const { return archToString(arch_); }

    int getStartShimRow() const { return startShimRow_; }
    void setStartShimRow(int row) { startShimRow_ = row; }
    int getNumShimRows() const { return numShimRows_; }
    void setNumShimRows(int rows) { numShimRows_ = rows; }
    int getStartCoreRow() const { return startCoreRow_; }
    void setStartCoreRow(int row) { startCoreRow_ = row; }
    int getNumCoreRows() const { return numCoreRows_; }
    void setNumCoreRows(int rows) { numCoreRows_ = rows; }
    int getStartMemRow() const { return startMemRow_; }
    void setStartMemRow(int row) { startMemRow_ = row; }
    int getNumMemRows() const { return numMemRows_; }
    void setNumMemRows(int rows) { numMemRows_ = rows; }
    unsigned int getNpiBaseAddress() const { return npiBaseAddress_; }
    void setNpiBaseAddress(unsigned int address) { npiBaseAddress_ = address; }

private:
    Arch arch_ = NO_VCE;
    int startShimRow_ = 0;
    int numShimRows_ = 0;
    int startCoreRow_ = 0;
    int numCoreRows_ = 0;
    int startMemRow_ = 0;
    int numMemRows_ = 0;
    unsigned int npiBaseAddress_ = 0;
};
