// Modules: found by name, loaded with dlopen, driven only through their entry point.
// A module is accepted when it exports the entry point and the three version functions
// and answers kInitAppMsg with kRetOK; it then gets kLoadDwgMsg for every open drawing.

#include <dlfcn.h>

#include "runtime/host_impl.h"
#include "utf8.h"

namespace kelvo::host {
namespace {

constexpr const char* kRequiredExports[] = {"acrxEntryPoint", "acrxGetApiVersion",
                                            "odrxCreateModuleObject", "odrxGetAPIVersion"};

std::wstring dlErrorText() {
    const char* e = dlerror();
    return e ? fromUtf8(e) : L"unknown error";
}

std::filesystem::path resolveModule(const std::filesystem::path& file,
                                    const std::filesystem::path& folder) {
    std::error_code ec;
    if (std::filesystem::exists(file, ec)) return std::filesystem::absolute(file, ec);
    if (!file.is_absolute() && !folder.empty() && std::filesystem::exists(folder / file, ec))
        return folder / file;
    return {};
}

bool sameModuleName(const LoadedModule& m, std::wstring_view name) {
    const std::filesystem::path given = utf8Path(name);
    return m.name == name || m.path == given || m.path.filename() == given.filename();
}

}  // namespace

AcRx::AppRetCode Host::Impl::send(LoadedModule& module, AcRx::AppMsgCode msg) {
    LoadedModule* saved = activeModule;
    activeModule = &module;
    AcRx::AppRetCode rc = module.entry(msg, &module);
    activeModule = saved;
    return rc;
}

void Host::Impl::sendToModules(AcRx::AppMsgCode msg) {
    for (size_t i = 0; i < modules.size(); ++i) send(*modules[i], msg);
}

bool Host::loadModule(const std::filesystem::path& file, std::wstring* error) {
    auto fail = [&](std::wstring why) {
        if (error) *error = std::move(why);
        return false;
    };
    std::filesystem::path path = resolveModule(file, moduleFolder());
    if (path.empty()) return fail(widePath(file) + L": module not found");
    for (auto& m : impl_->modules)
        if (m->path == path) return fail(widePath(file) + L": module is already loaded");

    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) return fail(widePath(file) + L": " + dlErrorText());
    for (const char* symbol : kRequiredExports) {
        if (!dlsym(handle, symbol)) {
            dlclose(handle);
            return fail(widePath(file) + L": not a module (no " + fromUtf8(symbol) + L")");
        }
    }
    auto module = std::make_unique<LoadedModule>();
    module->name = widePath(file);
    module->path = path;
    module->handle = handle;
    module->entry = reinterpret_cast<LoadedModule::EntryPoint>(dlsym(handle, "acrxEntryPoint"));
    module->id = impl_->nextModuleId++;
    LoadedModule& m = *module;
    impl_->modules.push_back(std::move(module));

    if (impl_->send(m, AcRx::kInitAppMsg) != AcRx::kRetOK) {
        impl_->modules.pop_back();
        dlclose(handle);
        return fail(widePath(file) + L": the module refused to start");
    }
    int saved = impl_->current;
    for (int i = 0; i < documentCount(); ++i) {
        impl_->current = i;
        impl_->send(m, AcRx::kLoadDwgMsg);
    }
    impl_->current = saved;
    return true;
}

bool Host::unloadModule(std::wstring_view name, std::wstring* error, bool force) {
    auto& modules = impl_->modules;
    auto it = std::find_if(modules.begin(), modules.end(),
                           [&](auto& m) { return sameModuleName(*m, name); });
    if (it == modules.end()) {
        if (error) *error = std::wstring(name) + L": module is not loaded";
        return false;
    }
    LoadedModule& m = **it;
    if (!m.unlocked && !force) {
        if (error) *error = std::wstring(name) + L": module is locked and cannot be unloaded";
        return false;
    }
    impl_->send(m, AcRx::kUnloadAppMsg);
    // The names it defined stay defined in each document; their callbacks are gone.
    for (auto* list : {&impl_->documents, &impl_->closed})
        for (auto& doc : *list)
            for (auto& [key, entry] : doc->functions())
                if (key.first == m.id) entry.callback = nullptr;
    void* handle = m.handle;
    modules.erase(std::find_if(modules.begin(), modules.end(),
                               [&](auto& p) { return p.get() == &m; }));
    dlclose(handle);
    return true;
}

std::vector<std::wstring> Host::loadedModules() const {
    std::vector<std::wstring> names;
    for (auto& m : impl_->modules) names.push_back(m->name);
    return names;
}

std::filesystem::path Host::moduleFolder() const { return impl_->moduleFolder; }
void Host::setModuleFolder(std::filesystem::path folder) { impl_->moduleFolder = std::move(folder); }

}  // namespace kelvo::host

using kelvo::host::Host;
using kelvo::host::LoadedModule;

bool acrxLoadModule(const ACHAR* moduleName, bool printIt, bool) {
    if (!moduleName) return false;
    std::wstring error;
    bool ok = Host::instance().loadModule(kelvo::utf8Path(moduleName), &error);
    if (!ok && printIt) Host::instance().write(L"\n" + error);
    return ok;
}

bool acrxUnloadModule(const ACHAR* moduleName, bool) {
    return moduleName && Host::instance().unloadModule(moduleName);
}

bool acrxUnlockApplication(void* appId) {
    auto& modules = Host::instance().impl().modules;
    for (auto& m : modules)
        if (m.get() == appId) return m->unlocked = true;
    return false;
}

bool acrxApplicationIsLocked(const ACHAR* modName) {
    for (auto& m : Host::instance().impl().modules)
        if (modName && kelvo::host::sameModuleName(*m, modName)) return !m->unlocked;
    return false;
}

bool acrxRegisterAppMDIAware(void* appId) {
    for (auto& m : Host::instance().impl().modules)
        if (m.get() == appId) return m->mdiAware = true;
    return false;
}
