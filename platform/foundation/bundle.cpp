// SPDX-License-Identifier: MIT
#include "platform/foundation/bundle.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/foundation/property_list.h"
#include "platform/foundation/system_file.h"

namespace platform {
namespace {

bool isFolder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool staysInside(std::string_view path) {
    return path.starts_with('/') && path.find("/../") == path.npos && !path.ends_with("/..");
}

bool isPlainName(std::string_view name) {
    return !name.empty() && name.find('/') == name.npos && name != "." && name != "..";
}

/// Everything is bound at once: a module that lacks a symbol is refused here and not halfway through a
/// page. One that has been loaded is found again, and the registry keeps its classes.
Result<Done> loadModule(const std::string& file, ClassRegistry& classes) {
    void* module = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) return Problem{.reason = ::dlerror()};
    auto* registerClasses = reinterpret_cast<RegisterClasses*>(::dlsym(module, registerClassesSymbol));
    if (!registerClasses) return Problem{file, {}, std::string("exports no ") + registerClassesSymbol};
    registerClasses(classes);
    return Done();
}

}  // namespace

std::optional<NSBundle> SystemImage::bundleWithPath(std::string_view path) {
    if (!staysInside(path)) return std::nullopt;
    std::string folder = _folder + std::string(path);
    if (!isFolder(folder)) return std::nullopt;
    return NSBundle(_classes, std::string(path), std::move(folder));
}

Dictionary NSBundle::infoDictionary() const {
    auto bytes = readSystemFile(_folder + "/Info.plist");
    if (!bytes) return {};
    PropertyListReading reading = readPropertyList(*bytes);
    const Dictionary* info = reading ? reading.value->dictionary() : nullptr;
    return info ? *info : Dictionary();
}

std::string NSBundle::infoString(std::string_view key) const {
    Dictionary info = infoDictionary();
    const Value* value = info.find(key);
    return value && value->string() ? *value->string() : std::string();
}

Result<Done> NSBundle::load() const {
    const std::string executable = infoString("CFBundleExecutable");
    if (isPlainName(executable)) return loadModule(_folder + "/" + executable, *_classes);
    return Problem{_folder + "/Info.plist", {}, "names no module (CFBundleExecutable)"};
}

std::optional<std::string> NSBundle::pathForResource_ofType(std::string_view name, std::string_view type) const {
    const std::string file = std::string(name) + "." + std::string(type);
    const std::string path = _folder + "/" + file;
    return isPlainName(file) && ::access(path.c_str(), F_OK) == 0 ? std::optional(path) : std::nullopt;
}

}  // namespace platform
