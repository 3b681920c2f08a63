// Registration of the TVLeader run-time class.
#include "entities/tv_leader_class.h"

#include "rxobject.h"

namespace kelvo {
namespace {

// The application name written with the class into drawing files.
constexpr const ACHAR* kAppName = L"TarvikKelvo";

AcRxClass*& descriptor() {
    static AcRxClass* cls = nullptr;
    return cls;
}

}  // namespace

AcRxClass* registerTvLeaderClass() {
    if (descriptor() == nullptr) {
        descriptor() = newAcRxClass(L"TVLeader", L"AcDbEntity", 0, nullptr, L"TVLEADER", kAppName);
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
