// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <map>
#include <string>

// The names in value order, written once: enumerators and texts are made of these lists. The hooks for scripts end both.
#define HZEP_TCL_FILE_TYPES(X)                                                                                                             \
    X(PRE_SYS_LINK_TCL)                                                                                                                    \
    X(POST_SYS_LINK_TCL)                                                                                                                   \
    X(PRE_SYS_LINK_OVERLAY_TCL)                                                                                                            \
    X(POST_SYS_LINK_OVERLAY_TCL)                                                                                                           \
    X(POST_DEBUG_PROFILE_OVERLAY_TCL)                                                                                                      \
    X(PRE_CREATE_PROJECT_TCL)                                                                                                              \
    X(PRE_SYNTH_DESIGN_TCL)                                                                                                                \
    X(POST_SYNTH_DESIGN_TCL)                                                                                                               \
    X(PRE_INIT_TCL)                                                                                                                        \
    X(POST_INIT_TCL)                                                                                                                       \
    X(PRE_OPT_TCL)                                                                                                                         \
    X(POST_OPT_TCL)                                                                                                                        \
    X(PRE_POWER_OPT_TCL)                                                                                                                   \
    X(POST_POWER_OPT_TCL)                                                                                                                  \
    X(PRE_PLACE_TCL)                                                                                                                       \
    X(POST_PLACE_TCL)                                                                                                                      \
    X(PRE_POST_PLACE_POWER_OPT_TCL)                                                                                                        \
    X(POST_POST_PLACE_POWER_OPT_TCL)                                                                                                       \
    X(PRE_PHYS_OPT_TCL)                                                                                                                    \
    X(POST_PHYS_OPT_TCL)                                                                                                                   \
    X(PRE_ROUTE_TCL)                                                                                                                       \
    X(POST_ROUTE_TCL)                                                                                                                      \
    X(PRE_POST_ROUTE_PHYS_OPT_TCL)                                                                                                         \
    X(POST_POST_ROUTE_PHYS_OPT_TCL)                                                                                                        \
    X(PRE_WRITE_BITSTREAM_TCL)                                                                                                             \
    X(POST_WRITE_BITSTREAM_TCL)                                                                                                            \
    X(SYNTH_CONSTRS)                                                                                                                       \
    X(IMPL_CONSTRS)

#define HZEP_FILE_TYPES(X)                                                                                                                 \
    X(DCP)                                                                                                                                 \
    X(PR_SHELL_DCP)                                                                                                                        \
    X(BB_LOCKED_IMPL_DCP)                                                                                                                  \
    X(BB_SYNTH_DCP)                                                                                                                        \
    X(FULL_BIT)                                                                                                                            \
    X(PDI)                                                                                                                                 \
    X(PARTIAL_PDI)                                                                                                                         \
    X(PL_PDI)                                                                                                                              \
    X(BOOT_PDI)                                                                                                                            \
    X(PLM_ELF)                                                                                                                             \
    X(PMC_CDO)                                                                                                                             \
    X(STAGE1_BIT)                                                                                                                          \
    X(STAGE2_BIT)                                                                                                                          \
    X(CLEAR_BIT)                                                                                                                           \
    X(PARTIAL_BIT)                                                                                                                         \
    X(MCS)                                                                                                                                 \
    X(SECONDARY_MCS)                                                                                                                       \
    X(HPFM)                                                                                                                                \
    X(REBUILD_TCL)                                                                                                                         \
    X(DR_BD)                                                                                                                               \
    X(TOP_BD)                                                                                                                              \
    X(IP_REPO_PATH)                                                                                                                        \
    X(IP_CACHE_DIR)                                                                                                                        \
    X(BOARD_REPO_PATH)                                                                                                                     \
    X(SIM_BINARY)                                                                                                                          \
    X(META_JSON)                                                                                                                           \
    X(EXT_META_JSON)                                                                                                                       \
    X(EMU_JSON)                                                                                                                            \
    X(EMU_XML)                                                                                                                             \
    X(SEMANTIC_LABEL)                                                                                                                      \
    X(PFM_PROP_RESTORE)                                                                                                                    \
    X(MMI)                                                                                                                                 \
    X(VCEPRJ)                                                                                                                              \
    X(NOC_TRAFFIC)                                                                                                                         \
    X(NOC_CONSTRAINT)                                                                                                                      \
    X(NOC_SOLUTION)                                                                                                                        \
    X(FEATURE_ROM_TCL)                                                                                                                     \
    X(BIF)                                                                                                                                 \
    X(PARTITION_META)                                                                                                                      \
    X(DTSI)                                                                                                                                \
    X(ISS)                                                                                                                                 \
    X(ADDRESS_MAP)                                                                                                                         \
    X(LINK_RUNTIME)                                                                                                                        \
    HZEP_TCL_FILE_TYPES(X)

#define HZEP_ENUMERATOR(name) name,

/// Home of the script hooks' enumerators, which bear the same names as those among the file types.
struct HZEPPfmTclFileTypes {
    enum TclFileType { HZEP_TCL_FILE_TYPES(HZEP_ENUMERATOR) UNKNOWN_TCL_FILE_TYPE };
};

/// The closed vocabulary of the files that a platform can carry.
class HZEP_EXPORT HZEPPfmFileTypes {
public:
    enum FileType { HZEP_FILE_TYPES(HZEP_ENUMERATOR) UNKNOWN_FILE_TYPE };

    /// Written with its own name in front, as in HZEPPfmFileTypes::TclFileType::PRE_INIT_TCL. The same hook as FileType is 43 higher.
    using TclFileType = HZEPPfmTclFileTypes::TclFileType;

    static std::map<FileType, std::string> getFileTypeMap();
    static std::map<TclFileType, std::string> getTclFileTypeMap();

    /// The enumerator's name, "" for an unknown value.
    static std::string toString(FileType type);
    static std::string toString(TclFileType type);

    /// The exact name's value; UNKNOWN_FILE_TYPE (71) and UNKNOWN_TCL_FILE_TYPE (28), the values past the end, for any other text.
    static FileType toFileType(const std::string& text);
    static TclFileType toTclFileType(const std::string& text);
};

#undef HZEP_ENUMERATOR
