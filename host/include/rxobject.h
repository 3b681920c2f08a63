// Run-time classes, the system registry and module services of the host.
#pragma once

#include "acdb.h"
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
    static AcRxObject* cast(const AcRxObject* p) { return const_cast<AcRxObject*>(p); }
    // A new object of the same class with the same contents; null when the class cannot
    // be created or copied. The caller owns it.
    virtual AcRxObject* clone() const;
    // Makes this object a copy of `other` (same class); eNotApplicable by default.
    virtual Acad::ErrorStatus copyFrom(const AcRxObject* other);
};

using AcRxPseudoConstructor = AcRxObject* (*)();

// A run-time class descriptor: name, parent, the DXF name and owning application used in
// drawing files, and the object version its filer writes.
class KELVO_HOST_API AcRxClass : public AcRxObject {
public:
    AcRxClass(const ACHAR* name, AcRxClass* parent, AcRxPseudoConstructor make,
              const ACHAR* dxfName, const ACHAR* appName, int proxyFlags, int dwgVersion = 0,
              int maintenanceVersion = 0);
    static AcRxClass* cast(const AcRxObject* p) {
        return dynamic_cast<AcRxClass*>(const_cast<AcRxObject*>(p));
    }
    ~AcRxClass() override;
    AcRxClass(const AcRxClass&) = delete;
    AcRxClass& operator=(const AcRxClass&) = delete;
    const ACHAR* name() const;
    const ACHAR* dxfName() const;
    const ACHAR* appName() const;
    AcRxClass* myParent() const;
    int proxyFlags() const;
    // The drawing version the class's filer writes, and its maintenance version.
    int dwgVersion(int& maintenanceVersion) const;
    AcRxPseudoConstructor constructor() const;
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
                                       int dwgVersion = 0, int maintenanceVersion = 0,
                                       int proxyFlags = 0,
                                       AcRxPseudoConstructor constructor = nullptr,
                                       const ACHAR* dxfName = nullptr,
                                       const ACHAR* appName = nullptr);
// The older form without versions (drawing and maintenance version 0).
KELVO_HOST_API AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parentName,
                                       int proxyFlags, AcRxPseudoConstructor constructor,
                                       const ACHAR* dxfName, const ACHAR* appName);
// The class registered under a DXF name ("LINE", "TVLEADER"), or null.
KELVO_HOST_API AcRxClass* acrxFindClassByDxfName(const ACHAR* dxfName);
KELVO_HOST_API void deleteAcRxClass(AcRxClass* cls);
KELVO_HOST_API AcRxClass* acrxFindClass(const ACHAR* name);
KELVO_HOST_API void acrxBuildClassHierarchy();

// A dictionary of named objects. The system registry holds the host's services
// ("AcEditor", ...) and the class dictionary under "ClassDictionary", whose entries are
// the registered classes by name.
class KELVO_HOST_API AcRxDictionary : public AcRxObject {
public:
    static AcRxDictionary* cast(const AcRxObject* p) {
        return dynamic_cast<AcRxDictionary*>(const_cast<AcRxObject*>(p));
    }
    virtual AcRxObject* at(const ACHAR* key) const = 0;
    virtual bool has(const ACHAR* key) const { return at(key) != nullptr; }
    virtual int numEntries() const = 0;
};
KELVO_HOST_API AcRxDictionary* acrxSysRegistry();
#define ACRX_CLASS_DICTIONARY L"ClassDictionary"
#define acrxClassDictionary AcRxDictionary::cast(acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY))

// Stops the host process after printing the message (printf form, %s takes ACHAR text).
[[noreturn]] KELVO_HOST_API void acrx_abort(const ACHAR* format, ...);

// Declarations every run-time class carries: its descriptor, a checked cast and isA.
#define ACRX_DECLARE_MEMBERS(CLASS_NAME)                                        \
    static AcRxClass* desc();                                                   \
    static CLASS_NAME* cast(const AcRxObject* inPtr) {                          \
        return dynamic_cast<CLASS_NAME*>(const_cast<AcRxObject*>(inPtr));       \
    }                                                                           \
    AcRxClass* isA() const override;                                            \
    static void rxInit()

// Definitions for a class registered by name: desc() finds the registered descriptor.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS)                   \
    AcRxClass* CLASS_NAME::desc() { return acrxFindClass(L## #CLASS_NAME); }     \
    AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }           \
    void CLASS_NAME::rxInit() {                                                 \
        newAcRxClass(L## #CLASS_NAME, L## #PARENT_CLASS, 0, 0, 0, nullptr);      \
    }

// Definitions for a class filed in drawings: rxInit registers it with its versions,
// proxy flags, DXF name and application name.
#define ACRX_DXF_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINT_VERSION,     \
                                PROXY_FLAGS, DXF_NAME, APP)                               \
    AcRxClass* CLASS_NAME::desc() { return acrxFindClass(L## #CLASS_NAME); }               \
    AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }                     \
    void CLASS_NAME::rxInit() {                                                           \
        newAcRxClass(L## #CLASS_NAME, L## #PARENT_CLASS, DWG_VERSION, MAINT_VERSION,       \
                     PROXY_FLAGS, []() -> AcRxObject* { return new CLASS_NAME(); },       \
                     L## #DXF_NAME, L## #APP);                                            \
    }

// Module services. A module is loaded by its file name, found beside the host binary or
// along the host's module path.
KELVO_HOST_API bool acrxLoadModule(const ACHAR* moduleName, bool printIt, bool asCmd = false);
KELVO_HOST_API bool acrxUnloadModule(const ACHAR* moduleName, bool asCmd = false);
KELVO_HOST_API bool acrxUnlockApplication(void* appId);
KELVO_HOST_API bool acrxApplicationIsLocked(const ACHAR* modName);
KELVO_HOST_API bool acrxRegisterAppMDIAware(void* appId);
