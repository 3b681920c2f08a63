// Registration of the TVLeader run-time class.
#include "entities/tv_leader_class.h"

#include "entities/tv_leader.h"
#include "rxobject.h"

namespace kelvo {

const wchar_t* const kTvLeaderAppDescription =
    L"\"Leader|Tarvik Software, Inc|https://www.tarvik.example\"";

namespace {

constexpr int kDwgVersion = 1;
constexpr int kMaintenanceVersion = 1;
constexpr int kProxyFlags = 1;  // a proxy of it may be erased

AcRxClass*& descriptor() {
    static AcRxClass* cls = nullptr;
    return cls;
}

AcRxObject* makeTvLeader() {
    return new TVLeader();
}

}  // namespace

AcRxClass* registerTvLeaderClass() {
    AcRxDictionary* classes = acrxClassDictionary;
    AcRxObject* known = classes != nullptr ? classes->at(L"TVLeader") : nullptr;
    if (known != nullptr && known != descriptor()) acrx_abort(L"Class mismatch");
    if (descriptor() == nullptr) {
        descriptor() = newAcRxClass(L"TVLeader", L"AcDbCurve", kDwgVersion, kMaintenanceVersion,
                                    kProxyFlags, makeTvLeader, L"TVLEADER",
                                    kTvLeaderAppDescription);
    }
    return descriptor();
}

void unregisterTvLeaderClass() {
    if (descriptor() == nullptr) return;
    deleteAcRxClass(descriptor());
    descriptor() = nullptr;
}

AcRxClass* tvLeaderClass() {
    return descriptor();
}

}  // namespace kelvo
