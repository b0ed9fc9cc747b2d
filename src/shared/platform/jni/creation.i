// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// What makes or reads other files: converters, archives, labels, emulation.

%{
#include "HDFToDSAConverter.h"
#include "HMDAArchive.h"
#include "HMDAFiles.h"
#include "HZEPEmulationUtils.h"
#include "HZEPSemanticLabelReader.h"
#include "HostFile.h"
#include "SimpleFixedKARCreator.h"
%}

%include "HDFToDSAConverter.h"
%include "SimpleFixedKARCreator.h"

%ignore HMDAFiles::toType;
%ignore HMDAFiles::toName;
%include "HMDAFiles.h"
%include "HMDAArchive.h"

// Trees and streams that are filled: their text instead.
%ignore HZEPSemanticLabelReader::generatePartitionMetadata(boost::property_tree::ptree &) const;
%ignore HZEPSemanticLabelReader::generatePartitionMetadata(std::ostream &) const;
%ignore HZEPSemanticLabelReader::generateExtMetadata(const std::string &, boost::property_tree::ptree &) const;
%ignore HZEPSemanticLabelReader::generateExtMetadata(const std::string &, std::ostream &) const;
%extend HZEPSemanticLabelReader {
    std::string getPartitionMetadata() const {
        std::ostringstream text;
        $self->generatePartitionMetadata(text);
        return text.str();
    }
    std::string getExtMetadata(const std::string& partitionPath) const {
        std::ostringstream text;
        $self->generateExtMetadata(partitionPath, text);
        return text.str();
    }
}
%include "HZEPSemanticUuid.h"
%include "HZEPSemanticPcieBar.h"
%include "HZEPSemanticEndpoint.h"
%include "HZEPSemanticPcieEndpoint.h"
%include "HZEPSemanticCpuEndpoint.h"
%include "HZEPSemanticDebugNetwork.h"
%template(HZEPSemanticUuidVector) std::vector< HZEPSemanticUuid >;
%template(HZEPSemanticPcieBarVector) std::vector< HZEPSemanticPcieBar >;
%template(HZEPSemanticPcieEndpointVector) std::vector< HZEPSemanticPcieEndpoint >;
%template(HZEPSemanticCpuEndpointVector) std::vector< HZEPSemanticCpuEndpoint >;
%template(HZEPSemanticDebugNetworkVector) std::vector< HZEPSemanticDebugNetwork >;
%include "HZEPSemanticLabelReader.h"

// Told by hand: the steps between work on open streams and maps by number.
HZEP_STATIC_ONLY_BEGIN
class HZEPEmulationUtils {
public:
    static bool generateDsaEmu(const std::string& dsa, std::string outDir, std::string propName);
    static bool generateEmuPropDict(const std::string& dsa, const std::string& outDir, bool flag, const std::string& propName);
    static bool generateDsaEmuScripts(const std::string& dsaName, const std::string& propTcl, const std::string& overlayDir,
                                      bool dynamicRegion);
    static bool generateEmuDir(const std::string& dsaName, const std::string& propTcl, std::string outDir);
    static std::string getTolvanIPPath();
    static std::string getPlomeIPPath();
    static void getAllRelativeInDir(const std::string& dir, std::vector<std::string>& out);
    %extend {
        static void updateDsa(const std::string& dsa, const std::string& dir) {
            HZEPEmulationUtils::updateDsa(HostFile(dsa), HostFile(dir));
        }
    }
};
HZEP_STATIC_ONLY_END
