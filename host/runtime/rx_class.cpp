// Run-time classes: descriptors, the class dictionary and the system registry.

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "aced.h"
#include "afx.h"
#include "rxobject.h"
#include "utf8.h"

struct AcRxClass::Data {
    std::wstring name, dxfName, appName;
    AcRxClass* parent = nullptr;
    AcRxPseudoConstructor constructor = nullptr;
    int proxyFlags = 0;
    int dwgVersion = 0;
    int maintenanceVersion = 0;
};

namespace kelvo::drawing {
void registerBuiltinClasses();
}

namespace {

// Owns every registered descriptor; the built-in classes are registered first. It is the
// system registry's "ClassDictionary".
class ClassDictionary : public AcRxDictionary {
public:
    ClassDictionary() {
        add(std::make_unique<AcRxClass>(L"AcRxObject", nullptr, nullptr, L"", L"", 0));
    }
    AcRxClass* add(std::unique_ptr<AcRxClass> cls) {
        AcRxClass* raw = cls.get();
        classes_[cls->name()] = std::move(cls);
        return raw;
    }
    AcRxClass* find(const std::wstring& name) const {
        auto it = classes_.find(name);
        return it == classes_.end() ? nullptr : it->second.get();
    }
    AcRxClass* findByDxfName(const std::wstring& dxfName) const {
        if (dxfName.empty()) return nullptr;
        for (const auto& [name, cls] : classes_)
            if (dxfName == cls->dxfName()) return cls.get();
        return nullptr;
    }
    AcRxObject* at(const ACHAR* key) const override { return key ? find(key) : nullptr; }
    int numEntries() const override { return static_cast<int>(classes_.size()); }
    void remove(AcRxClass* cls) {
        auto it = classes_.find(cls->name());
        if (it != classes_.end() && it->second.get() == cls) classes_.erase(it);
    }

private:
    std::map<std::wstring, std::unique_ptr<AcRxClass>> classes_;
};

// The drawing's classes are registered once the dictionary exists (their registration
// looks their parents up in it).
ClassDictionary& dictionary() {
    static ClassDictionary d;
    static bool building = false;
    if (!building) {
        building = true;
        kelvo::drawing::registerBuiltinClasses();
    }
    return d;
}

}  // namespace

AcRxObject::~AcRxObject() = default;
AcRxObject* AcRxObject::clone() const { return nullptr; }
Acad::ErrorStatus AcRxObject::copyFrom(const AcRxObject*) { return Acad::eNotApplicable; }
AcRxClass* AcRxObject::desc() { return dictionary().find(L"AcRxObject"); }
AcRxClass* AcRxObject::isA() const { return desc(); }
bool AcRxObject::isKindOf(const AcRxClass* cls) const {
    AcRxClass* mine = isA();
    return mine && mine->isDerivedFrom(cls);
}

AcRxClass::AcRxClass(const ACHAR* name, AcRxClass* parent, AcRxPseudoConstructor make,
                     const ACHAR* dxfName, const ACHAR* appName, int proxyFlags, int dwgVersion,
                     int maintenanceVersion)
    : d_(new Data{name ? name : L"", dxfName ? dxfName : L"", appName ? appName : L"", parent,
                  make, proxyFlags, dwgVersion, maintenanceVersion}) {}

AcRxClass::~AcRxClass() { delete d_; }

const ACHAR* AcRxClass::name() const { return d_->name.c_str(); }
const ACHAR* AcRxClass::dxfName() const { return d_->dxfName.c_str(); }
const ACHAR* AcRxClass::appName() const { return d_->appName.c_str(); }
AcRxClass* AcRxClass::myParent() const { return d_->parent; }
int AcRxClass::proxyFlags() const { return d_->proxyFlags; }
AcRxObject* AcRxClass::create() const { return d_->constructor ? d_->constructor() : nullptr; }
AcRxPseudoConstructor AcRxClass::constructor() const { return d_->constructor; }
int AcRxClass::dwgVersion(int& maintenanceVersion) const {
    maintenanceVersion = d_->maintenanceVersion;
    return d_->dwgVersion;
}

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
    for (const AcRxClass* c = this; c; c = c->myParent())
        if (c == other) return true;
    return false;
}

bool AcRxClass::sameDescriptor(const AcRxClass& other) const {
    return d_->name == other.d_->name && d_->parent == other.d_->parent &&
           d_->dxfName == other.d_->dxfName && d_->appName == other.d_->appName &&
           d_->constructor == other.d_->constructor && d_->dwgVersion == other.d_->dwgVersion &&
           d_->maintenanceVersion == other.d_->maintenanceVersion;
}

AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parentName, int proxyFlags,
                        AcRxPseudoConstructor constructor, const ACHAR* dxfName,
                        const ACHAR* appName) {
    return newAcRxClass(name, parentName, 0, 0, proxyFlags, constructor, dxfName, appName);
}

AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parentName, int dwgVersion,
                        int maintenanceVersion, int proxyFlags, AcRxPseudoConstructor constructor,
                        const ACHAR* dxfName, const ACHAR* appName) {
    AcRxClass* parent = parentName ? dictionary().find(parentName) : nullptr;
    auto cls = std::make_unique<AcRxClass>(name, parent, constructor, dxfName, appName,
                                           proxyFlags, dwgVersion, maintenanceVersion);
    if (AcRxClass* existing = dictionary().find(cls->name())) {
        if (existing->sameDescriptor(*cls)) return existing;
        // A second descriptor for a known class would make filing ambiguous: the host stops.
        std::fflush(stdout);
        std::fprintf(stderr, "Class mismatch: %s\n", kelvo::toUtf8(cls->name()).c_str());
        std::_Exit(3);
    }
    return dictionary().add(std::move(cls));
}

void deleteAcRxClass(AcRxClass* cls) {
    if (cls) dictionary().remove(cls);
}

AcRxClass* acrxFindClass(const ACHAR* name) { return name ? dictionary().find(name) : nullptr; }

AcRxClass* acrxFindClassByDxfName(const ACHAR* dxfName) {
    return dxfName ? dictionary().findByDxfName(dxfName) : nullptr;
}

void acrx_abort(const ACHAR* format, ...) {
    // The host's %s takes ACHAR text, which the C library spells %ls.
    std::wstring fmt;
    for (const ACHAR* p = format ? format : L""; *p; ++p) {
        fmt += *p;
        if (p[0] == L'%' && p[1] == L's') fmt += L'l';
    }
    wchar_t text[1024];
    va_list ap;
    va_start(ap, format);
    std::vswprintf(text, 1024, fmt.c_str(), ap);
    va_end(ap);
    std::fflush(stdout);
    std::fprintf(stderr, "%s\n", kelvo::toUtf8(text).c_str());
    std::_Exit(3);
}

// The hierarchy is linked as classes are registered; nothing is left to build.
void acrxBuildClassHierarchy() {}

CException::~CException() = default;

// --- the editor and the system registry ----------------------------------------------

AcEditorReactor::~AcEditorReactor() = default;
void AcEditorReactor::saveComplete(AcDbDatabase*, const ACHAR*) {}
void AcEditorReactor::beginSave(AcDbDatabase*, const ACHAR*) {}
void AcEditorReactor::beginClose(AcDbDatabase*) {}

AcEditor* AcEditor::cast(AcRxObject* object) { return dynamic_cast<AcEditor*>(object); }

namespace kelvo::host {

class HostEditor : public AcEditor {
public:
    void addReactor(AcEditorReactor* reactor) override { reactors_.push_back(reactor); }
    void removeReactor(AcEditorReactor* reactor) override { std::erase(reactors_, reactor); }
    const std::vector<AcEditorReactor*>& reactors() const { return reactors_; }

private:
    std::vector<AcEditorReactor*> reactors_;
};

HostEditor& hostEditor() {
    static HostEditor editor;
    return editor;
}

std::vector<AcEditorReactor*> editorReactors() { return hostEditor().reactors(); }

}  // namespace kelvo::host

namespace {

class SystemRegistry : public AcRxDictionary {
public:
    AcRxObject* at(const ACHAR* key) const override {
        if (key && std::wstring(key) == L"AcEditor") return &kelvo::host::hostEditor();
        if (key && std::wstring(key) == ACRX_CLASS_DICTIONARY) return &dictionary();
        return nullptr;
    }
    int numEntries() const override { return 2; }
};

}  // namespace

AcRxDictionary* acrxSysRegistry() {
    static SystemRegistry registry;
    return &registry;
}
