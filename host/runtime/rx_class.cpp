// Run-time classes: descriptors, the class dictionary and the system registry.

#include <cstdio>
#include <cstdlib>
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
};

namespace {

// Owns every registered descriptor; the built-in classes are registered first.
class ClassDictionary {
public:
    ClassDictionary() {
        auto* object = add(std::make_unique<AcRxClass>(L"AcRxObject", nullptr, nullptr, L"",
                                                       L"", 0));
        auto* dbObject = add(std::make_unique<AcRxClass>(L"AcDbObject", object, nullptr, L"",
                                                         L"", 0));
        add(std::make_unique<AcRxClass>(L"AcDbEntity", dbObject, nullptr, L"", L"", 0));
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
    void remove(AcRxClass* cls) {
        auto it = classes_.find(cls->name());
        if (it != classes_.end() && it->second.get() == cls) classes_.erase(it);
    }

private:
    std::map<std::wstring, std::unique_ptr<AcRxClass>> classes_;
};

ClassDictionary& dictionary() {
    static ClassDictionary d;
    return d;
}

}  // namespace

AcRxObject::~AcRxObject() = default;
AcRxClass* AcRxObject::desc() { return dictionary().find(L"AcRxObject"); }
AcRxClass* AcRxObject::isA() const { return desc(); }
bool AcRxObject::isKindOf(const AcRxClass* cls) const {
    AcRxClass* mine = isA();
    return mine && mine->isDerivedFrom(cls);
}

AcRxClass::AcRxClass(const ACHAR* name, AcRxClass* parent, AcRxPseudoConstructor constructor,
                     const ACHAR* dxfName, const ACHAR* appName, int proxyFlags)
    : d_(new Data{name ? name : L"", dxfName ? dxfName : L"", appName ? appName : L"", parent,
                  constructor, proxyFlags}) {}

AcRxClass::~AcRxClass() { delete d_; }

const ACHAR* AcRxClass::name() const { return d_->name.c_str(); }
const ACHAR* AcRxClass::dxfName() const { return d_->dxfName.c_str(); }
const ACHAR* AcRxClass::appName() const { return d_->appName.c_str(); }
AcRxClass* AcRxClass::myParent() const { return d_->parent; }
int AcRxClass::proxyFlags() const { return d_->proxyFlags; }
AcRxObject* AcRxClass::create() const { return d_->constructor ? d_->constructor() : nullptr; }

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
    for (const AcRxClass* c = this; c; c = c->myParent())
        if (c == other) return true;
    return false;
}

bool AcRxClass::sameDescriptor(const AcRxClass& other) const {
    return d_->name == other.d_->name && d_->parent == other.d_->parent &&
           d_->dxfName == other.d_->dxfName && d_->appName == other.d_->appName &&
           d_->constructor == other.d_->constructor;
}

AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parentName, int proxyFlags,
                        AcRxPseudoConstructor constructor, const ACHAR* dxfName,
                        const ACHAR* appName) {
    AcRxClass* parent = parentName ? dictionary().find(parentName) : nullptr;
    auto cls = std::make_unique<AcRxClass>(name, parent, constructor, dxfName, appName,
                                           proxyFlags);
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
        return nullptr;
    }
};

}  // namespace

AcRxDictionary* acrxSysRegistry() {
    static SystemRegistry registry;
    return &registry;
}
