#include "platform/linux/DesktopUrlOpener.h"

#include "platform/linux/GLibHandle.h"

#include <gio/gio.h>

namespace morvex {

bool DesktopUrlOpener::open(const std::string& url) {
    const auto scheme = url.substr(0, url.find(':'));
    GLibHandle<GAppInfo> handler(g_app_info_get_default_for_uri_scheme(scheme.c_str()));
    if (!handler) return false;
    GLibHandle<GList, g_list_free> addresses(g_list_prepend(nullptr, const_cast<char*>(url.c_str())));
    GLibError error;
    return g_app_info_launch_uris(handler.get(), addresses.get(), nullptr, error.slot()) != FALSE;
}

} // namespace morvex
