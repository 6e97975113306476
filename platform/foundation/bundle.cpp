// SPDX-License-Identifier: MIT
#include "platform/foundation/bundle.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>

#include "platform/foundation/property_list.h"
#include "platform/foundation/system_file.h"
#include "platform/ui/image.h"

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

}  // namespace

std::optional<NSBundle> SystemImage::bundleWithPath(std::string_view path) {
    if (!staysInside(path)) return std::nullopt;
    std::string folder = _folder + std::string(path);
    if (!isFolder(folder)) return std::nullopt;
    return NSBundle(*this, std::string(path), std::move(folder));
}

bool SystemImage::loadModule(const std::string& file) {
    // Everything is bound at once: a module that lacks a symbol is refused here and not halfway
    // through a page. One that has been loaded is found again, and the registry keeps its classes.
    void* module = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        _lastLoadError = ::dlerror();
        return false;
    }
    auto* registerClasses = reinterpret_cast<RegisterClasses*>(::dlsym(module, registerClassesSymbol));
    if (!registerClasses) {
        _lastLoadError = file + ": exports no " + registerClassesSymbol;
        return false;
    }
    registerClasses(_classes);
    return true;
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

bool NSBundle::load() const {
    std::string executable = infoString("CFBundleExecutable");
    if (isPlainName(executable)) return _image->loadModule(_folder + "/" + executable);
    _image->_lastLoadError = _folder + "/Info.plist: names no module (CFBundleExecutable)";
    return false;
}

std::shared_ptr<const UIImage> NSBundle::imageNamed(std::string_view name, double scale) const {
    if (!isPlainName(name)) return nullptr;
    const std::string stem = _folder + "/" + std::string(name);
    const long wanted = std::clamp(std::lround(scale), 1L, 3L);
    // Where that one is missing, the finest of the others: a picture made smaller stays sharp.
    for (const long candidate : {wanted, 3L, 2L, 1L}) {
        const std::string suffix = candidate == 1 ? ".png" : "@" + std::to_string(candidate) + "x.png";
        if (auto image = UIImage::fromPngFile(std::string(name), stem + suffix, static_cast<double>(candidate)))
            return image;
    }
    return nullptr;
}

}  // namespace platform
