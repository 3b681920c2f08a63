// Run-time classes, the system registry and module services of the host.
#pragma once

#include "adsdef.h"

namespace AcRx {
enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15,
    kSuspendMsg = 16,
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
}  // namespace AcRx

class AcRxClass;

class KELVO_HOST_API AcRxObject {
public:
    virtual ~AcRxObject();
    virtual AcRxClass* isA() const;
    bool isKindOf(const AcRxClass* cls) const;
    static AcRxClass* desc();
};

using AcRxPseudoConstructor = AcRxObject* (*)();

// A run-time class descriptor: name, parent, the DXF name and owning application used in
// drawing files, and the object version its filer writes.
class KELVO_HOST_API AcRxClass : public AcRxObject {
public:
    AcRxClass(const ACHAR* name, AcRxClass* parent, AcRxPseudoConstructor constructor,
              const ACHAR* dxfName, const ACHAR* appName, int proxyFlags);
    ~AcRxClass() override;
    AcRxClass(const AcRxClass&) = delete;
    AcRxClass& operator=(const AcRxClass&) = delete;
    const ACHAR* name() const;
    const ACHAR* dxfName() const;
    const ACHAR* appName() const;
    AcRxClass* myParent() const;
    int proxyFlags() const;
    AcRxObject* create() const;
    bool isDerivedFrom(const AcRxClass* other) const;
    // Same descriptor: name, parent, DXF name, application and constructor all equal.
    bool sameDescriptor(const AcRxClass& other) const;

private:
    struct Data;
    Data* d_;
};

// Registers a class in the class dictionary and returns its descriptor. When a class of
// that name exists with another descriptor the host stops with "Class mismatch".
KELVO_HOST_API AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parentName,
                                       int proxyFlags, AcRxPseudoConstructor constructor,
                                       const ACHAR* dxfName, const ACHAR* appName);
KELVO_HOST_API void deleteAcRxClass(AcRxClass* cls);
KELVO_HOST_API AcRxClass* acrxFindClass(const ACHAR* name);
KELVO_HOST_API void acrxBuildClassHierarchy();

// The system registry: named service objects ("AcEditor", ...).
class KELVO_HOST_API AcRxDictionary {
public:
    virtual ~AcRxDictionary() = default;
    virtual AcRxObject* at(const ACHAR* key) const = 0;
};
KELVO_HOST_API AcRxDictionary* acrxSysRegistry();

// Module services. A module is loaded by its file name, found beside the host binary or
// along the host's module path.
KELVO_HOST_API bool acrxLoadModule(const ACHAR* moduleName, bool printIt, bool asCmd = false);
KELVO_HOST_API bool acrxUnloadModule(const ACHAR* moduleName, bool asCmd = false);
KELVO_HOST_API bool acrxUnlockApplication(void* appId);
KELVO_HOST_API bool acrxApplicationIsLocked(const ACHAR* modName);
KELVO_HOST_API bool acrxRegisterAppMDIAware(void* appId);
