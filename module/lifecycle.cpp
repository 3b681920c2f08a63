// Module start and stop, drawing open and close.
#include "module/lifecycle.h"

#include <exception>
#include <memory>
#include <new>

#include "acdocman.h"
#include "adslib.h"
#include "bridge/handler_guard.h"
#include "database/call_guard.h"
#include "database/current_connection.h"
#include "database/document_records.h"
#include "entities/tv_leader_class.h"
#include "module/dao_start.h"
#include "module/editor_reactor.h"
#include "module/function_tables.h"
#include "module/random_numbers.h"
#include "module/running_lock.h"
#include "utf8.h"

namespace kelvo {
namespace {

// The maker's solid-modelling module, which supplies tv_hvacSolid to the duct
// functions. Its absence shows only when a duct function needs the class.
constexpr const ACHAR* kCompanionModule = L"tv_tv-solidBrx15.arx";

// True when no document stays open besides the one that is closing.
bool closingLastDocument() {
    AcApDocManager* manager = acDocManagerPtr();
    if (manager == nullptr) return true;
    const std::unique_ptr<AcApDocumentIterator> it(manager->newAcApDocumentIterator());
    if (!it || it->done()) return true;
    it->step();
    return it->done();
}

}  // namespace

AcRx::AppRetCode startModule(void* pkt) {
    acrxLoadModule(kCompanionModule, false, false);
    holdRunningLock();
    seedRandomNumbers();
    if (!startDao()) return AcRx::kRetError;
    attachEditorReactor();
    acrxUnlockApplication(pkt);
    acrxRegisterAppMDIAware(pkt);
    registerTvLeaderClass();
    acrxBuildClassHierarchy();
    setDatabaseCallGuard(database::checkCurrentDocument);
    return AcRx::kRetOK;
}

AcRx::AppRetCode stopModule() {
    setDatabaseCallGuard(nullptr);
    unregisterTvLeaderClass();
    database::deleteAllConnections();
    stopDao();
    detachEditorReactor();
    acrxUnloadModule(kCompanionModule);
    return AcRx::kRetOK;
}

AcRx::AppRetCode openDrawing() {
    acutPrintf(L"\nLoading Tarvik Kelvo (Direct)");
    defineDatabaseFunctions();
    documentRecords().addForCurrentDocument();
    defineGeneralFunctions();
    return AcRx::kRetOK;
}

AcRx::AppRetCode closeDrawing() {
    database::checkCurrentDocument();
    database::dropCurrentConnection();
    documentRecords().forget(currentDocument());
    documentRecords().dropHead();
    if (closingLastDocument()) documentRecords().clear();
    return AcRx::kRetOK;
}

namespace {

AcRx::AppRetCode dispatch(AcRx::AppMsgCode msg, void* pkt) {
    switch (msg) {
        case AcRx::kInitAppMsg:
            return startModule(pkt);
        case AcRx::kUnloadAppMsg:
            return stopModule();
        case AcRx::kLoadDwgMsg:
            return openDrawing();
        case AcRx::kUnloadDwgMsg:
            return closeDrawing();
        default:
            return AcRx::kRetOK;
    }
}

}  // namespace

AcRx::AppRetCode dispatchAppMessage(AcRx::AppMsgCode msg, void* pkt) {
    // Nothing may leave the module through its entry point: the host is not ours.
    try {
        return dispatch(msg, pkt);
    } catch (const std::bad_alloc&) {
        acutPrintf(L"\nTarvik Kelvo: out of memory\n");
    } catch (const std::exception& e) {
        acutPrintf(L"\nTarvik Kelvo: %s\n", fromUtf8(e.what()).c_str());
    }
    return AcRx::kRetError;
}

}  // namespace kelvo
