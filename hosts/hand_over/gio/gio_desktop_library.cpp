// SPDX-License-Identifier: MIT
#include <gio/gio.h>

#include <filesystem>

#include "hosts/hand_over/desktop.h"

namespace hosts {

namespace {

namespace fs = std::filesystem;

struct Unref {
    void operator()(GAppInfo* program) const { g_object_unref(program); }
};
using Program = std::unique_ptr<GAppInfo, Unref>;

struct FreePrograms {
    void operator()(GList* programs) const { g_list_free_full(programs, g_object_unref); }
};
using Programs = std::unique_ptr<GList, FreePrograms>;

// The library also offers programs for a type's more general types: for a message, those that show
// any text.
bool isForMoreGeneralType(GAppInfo* program, const char* contentType) {
    const Programs fallbacks{g_app_info_get_fallback_for_type(contentType)};
    for (const GList* item = fallbacks.get(); item != nullptr; item = item->next) {
        if (g_app_info_equal(program, static_cast<GAppInfo*>(item->data))) return true;
    }
    return false;
}

// Null where the user has configured none.
const char* configuredFolder() {
    const char* const named = g_getenv("XDG_DOCUMENTS_DIR");
    if (named != nullptr && g_path_is_absolute(named)) return named;
    return g_get_user_special_dir(G_USER_DIRECTORY_DOCUMENTS);
}

class GioDesktopLibrary final : public DesktopLibrary {
public:
    std::optional<std::string> handlerOf(const std::string& contentType) override {
        const Program program{g_app_info_get_default_for_type(contentType.c_str(), FALSE)};
        if (!program || isForMoreGeneralType(program.get(), contentType.c_str())) return std::nullopt;
        return g_app_info_get_display_name(program.get());
    }

    DocumentsFolder documentsFolder() override {
        const fs::path home = g_get_home_dir();
        const fs::path usual = home / "Documents";
        const char* const configured = configuredFolder();
        const fs::path folder = configured ? configured : usual;
        std::error_code missing;
        if (fs::equivalent(folder, home, missing)) return {usual, false};
        return {folder, fs::is_directory(folder, missing)};
    }

    std::string cacheFolder() override { return g_get_user_cache_dir(); }
};

}  // namespace

}  // namespace hosts

extern "C" __attribute__((visibility("default"))) void trivel3MakeDesktopLibrary(
    std::unique_ptr<hosts::DesktopLibrary>& library) {
    library = std::make_unique<hosts::GioDesktopLibrary>();
}
