// Engine start-up and the driver-fix prompt.
#include "module/dao_start.h"

#include <string>

#include "adslib.h"
#include "dao_engine.h"
#include "dao_exception.h"
#include "host_ui.h"

namespace kelvo {
namespace {

// Placeholders until the real download location and support line are known.
constexpr const ACHAR* kFixUrl = L"https://downloads.tarvik.example/fixDAO.exe";
constexpr const ACHAR* kSupportPhone = L"+1 555 0100";
constexpr const ACHAR* kErrorCaption = L"Tarvik Error";
// Binds the class library to version 3.6 of the engine.
constexpr unsigned long kDaoVersion = 0x0601;

bool started = false;

void reportDownloadFailure() {
    acutPrintf(L"\nError downloading %s", kFixUrl);
    acutPrintf(L"\nPlease contact Tarvik Software technical support by telephone at %s.",
               kSupportPhone);
    const std::wstring text = std::wstring(
                                  L"Error downloading FixDAO.exe.\n"
                                  L"Contact Tarvik Software technical support.\n") +
                              kSupportPhone;
    hostMessageBox(hostMainWindow(), text.c_str(), kErrorCaption, MB_OK);
}

void reportDownloadStarted() {
    acutPrintf(L"\nDownloading %s", kFixUrl);
    const std::wstring text =
        std::wstring(
            L"Finish downloading fixDAO.exe.\nClose AutoCAD.\nRun fixDAO.exe.\n"
            L"Restart AutoCAD.\n\nIf you continue to have problems, contact Tarvik "
            L"Software technical support.\n") +
        kSupportPhone;
    hostMessageBox(hostMainWindow(), text.c_str(), kErrorCaption, MB_OK);
}

// Offers the driver fix after the engine failed to start.
void offerDriverFix() {
    const int answer = hostMessageBox(
        hostMainWindow(),
        L"Error loading database drivers.\nWould you like to download a fix to this error?",
        kErrorCaption, MB_YESNO);
    if (answer != IDYES) return;
    if (hostShellExecute(L"OPEN", kFixUrl) <= 32) {
        reportDownloadFailure();
    } else {
        reportDownloadStarted();
    }
}

}  // namespace

bool startDao() {
    if (started) return true;
    started = true;
    AfxGetModuleState()->m_dwVersion = kDaoVersion;
    try {
        AfxDaoInit();
        return true;
    } catch (CException* error) {
        error->Delete();
        offerDriverFix();
        return false;
    }
}

void stopDao() {
    if (!started) return;
    AfxDaoTerm();
    AFX_MODULE_STATE* state = AfxGetModuleState();
    delete state->m_pDaoState;
    state->m_pDaoState = nullptr;
    started = false;
}

bool daoStarted() {
    return started;
}

}  // namespace kelvo
