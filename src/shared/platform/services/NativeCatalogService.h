// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "CatalogService.h"
#include "HostVector.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <string>

namespace zep::platform {

/// Loads what it is asked for, and keeps nothing of it.
///
/// The same class decides whether a platform is supported by the running tool. A reason is a sentence for the user; it is assigned,
/// never cleared. A version that is no number raises std::invalid_argument or std::out_of_range.
class HZEP_EXPORT NativeCatalogService : public CatalogService {
public:
    ~NativeCatalogService() override;
    std::string getAllAsJsonStr(const std::string& repoPaths, bool all, bool reserved) const override;
    std::string getAsJsonStr(const std::string& platformFile, bool all, bool reserved) const override;
    std::string getAsJsonStr(PlatformLoader* loader, bool all, bool reserved) const override;
    std::string getValue(const std::string& platformFile, const std::string& keyPath) const override;
    std::string getValue(PlatformLoader* loader, const std::string& keyPath) const override;

    /// Whether the platform may be used with this tool: explicit decisions first, then the calendar. A product name that is not empty
    /// becomes that of the host. The file of decisions and the product that they are for are settled by the first look-up of a process.
    bool isUnderWarranty(PlatformLoader* loader, std::string& reason, std::string productName) const;
    bool isUnderWarranty(const std::string& platformFile, std::string& reason, std::string productName) const;
    /// Appends the reason, if there is one. Raises nothing: what is raised underneath is a reason too, for false.
    bool isUnderWarranty(const std::string& platformFile, HostVector<std::string>& reasons, std::string productName) const;

    /// Whether the hardware platform may be opened: it is not newer than the tool.
    bool canDsaBeOpened(PlatformLoader* loader, std::string& reason) const;
    bool canDsaBeOpened(const std::string& platformFile, std::string& reason) const;

    /// False too, said on the standard output, for what doesn't load or has no hardware.
    bool isPreSynthPlatform(PlatformLoader* loader) const;
    /// Whether it is in the state "pre_synth", which is asked first and as above, and of the tool's own release.
    bool isPreSynthPlatformSupported(PlatformLoader* loader, std::string& reason) const;
    bool isPreSynthPlatformSupported(const std::string& platformFile, std::string& reason) const;

    /// The version set for tests, else the host's: "2021.1".
    std::string getCompilerVersion_() const;
    void setTestCompilerVersion_(const std::string& version);

private:
    bool getPlatformInfo_(PlatformLoader* loader, boost::property_tree::ptree& out, bool all) const;

    std::string testCompilerVersion_;
};

} // namespace zep::platform
