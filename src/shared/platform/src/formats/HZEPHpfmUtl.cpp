// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHpfmUtl.h"

#include "HPLPlatform.h"
#include "HZEPHpfmReader.h"
#include "HostErrors.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "LmxFile.h"
#include "WELHardwarePlatformLMX.h"

#include <new>

using namespace WELHardwarePlatform;

namespace {

constexpr const wchar_t* kHbmSubsystem = L"hbm_memory_subsystem";
constexpr const wchar_t* kPreferred = L"preferred";

void complain(const char* key, std::vector<std::string> args, HostFault fault) {
    HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, key, std::move(args), std::move(fault));
}

/// Whether a bank was marked. With a second subsystem the answer is no, and nothing is to be written.
bool markHbmBanks(Component& component) {
    bool seen = false;
    bool changed = false;
    for (std::size_t i = 0; i < component.SizeBusInterface(); ++i) {
        BusInterface& bus = component.GetBusInterface(i);
        if (!bus.IssetComponentRef() || bus.GetComponentRef() != kHbmSubsystem)
            continue;
        if (seen) {
            complain("@74-261@", {}, {});
            return false;
        }
        seen = true;
        changed = HZEPHpfmUtl::areSomeButNotAllAddressSegmentsPreferred(bus);
        if (changed)
            HZEPHpfmUtl::markAllTrueAddressSegmentsPreferred(bus);
    }
    return changed;
}

} // namespace

bool HZEPHpfmUtl::areSomeButNotAllAddressSegmentsPreferred(BusInterface& bus) {
    return iterateOverAddressSegments(bus, false);
}

bool HZEPHpfmUtl::markAllTrueAddressSegmentsPreferred(BusInterface& bus) {
    return iterateOverAddressSegments(bus, true);
}

bool HZEPHpfmUtl::iterateOverAddressSegments(BusInterface& bus, bool mark) {
    std::size_t total = 0;
    std::size_t preferred = 0;
    for (std::size_t i = 0; i < bus.SizeAddressSegment(); ++i) {
        BusInterfaceAddressSegment& segment = bus.GetAddressSegment(i);
        if (!segment.IssetAuto() || segment.GetAuto() == L"false")
            continue;
        ++total;
        if (segment.GetAuto() == kPreferred)
            ++preferred;
        else if (mark)
            segment.SetAuto(kPreferred);
    }
    return preferred != 0 && total != preferred;
}

void HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(const std::string& path) {
    if (!HostPathUtils::exists(path)) {
        complain("@74-12@", {"File: " + path + " doesn't exist.\n"}, {path, "", 0, 0, "does not exist"});
        return;
    }
    Repository repository;
    lmx60::s_debug_error error;
    auto failure = catchLmxFailure([&] {
        const lmx60::elmx_error code = repository.Unmarshal(path.c_str(), &error);
        if (code == lmx60::error_none) {
            // Read once as any reader would, for what the model has to say about the file.
            HPLPlatform scratch;
            HZEPHpfmReader reader("NormalizeMemoryBanks", &scratch);
            reader.setPlatformFile(path);
            reader.parseRepository(repository);
        }
        return code;
    });
    if (failure) {
        failure->text += error.text.empty() ? "" : ": " + error.text;
        complain("@74-260@%s%s%s", {path, std::to_string(failure->line), failure->text}, failure->toFault(path));
        return;
    }
    if (!markHbmBanks(repository.GetComponent()))
        return;
    try {
        writeLmxFile(repository, path);
    } catch (const HostXMLException&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        // A file that can't be made into a document again stays as it is.
    }
}
