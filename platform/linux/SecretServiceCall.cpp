#include "platform/linux/SecretServiceCall.h"

#include "foundation/ProgramLog.h"
#include "platform/linux/SecretServicePrompt.h"
#include "platform/linux/SessionBus.h"
#include "platform/posix/VaultRules.h"

#include <algorithm>

namespace morvex {

namespace {

using Attributes = GLibHandle<GHashTable, g_hash_table_unref>;
using Value = GLibHandle<SecretValue, secret_value_unref>;

/// Matches items only by these two attributes, whichever program made them.
const SecretSchema* schema() {
    static const GLibHandle<SecretSchema, secret_schema_unref> made(secret_schema_new(
        "org.freedesktop.Secret.Generic", SECRET_SCHEMA_DONT_MATCH_NAME, "service",
        SECRET_SCHEMA_ATTRIBUTE_STRING, "account", SECRET_SCHEMA_ATTRIBUTE_STRING, nullptr));
    return made.get();
}

Attributes attributesOf(const std::string& service, const std::string& account) {
    Attributes attributes(g_hash_table_new_full(g_str_hash, g_str_equal, g_free, g_free));
    g_hash_table_insert(attributes.get(), g_strdup("service"), g_strdup(service.c_str()));
    g_hash_table_insert(attributes.get(), g_strdup("account"), g_strdup(account.c_str()));
    return attributes;
}

Value valueOf(ByteView bytes) {
    return Value(secret_value_new(reinterpret_cast<const char*>(bytes.data()),
                                  static_cast<gssize>(bytes.size()), "application/octet-stream"));
}

/// Whether the error means that the service is gone.
bool isVanished(const GLibError& error) {
    constexpr int busCodes[] = {G_DBUS_ERROR_SERVICE_UNKNOWN, G_DBUS_ERROR_NAME_HAS_NO_OWNER,
                                G_DBUS_ERROR_NO_REPLY,        G_DBUS_ERROR_DISCONNECTED,
                                G_DBUS_ERROR_TIMEOUT,         G_DBUS_ERROR_TIMED_OUT};
    constexpr int streamCodes[] = {G_IO_ERROR_CLOSED, G_IO_ERROR_TIMED_OUT, G_IO_ERROR_BROKEN_PIPE};
    return std::ranges::any_of(busCodes, [&](int code) { return error.is(G_DBUS_ERROR, code); }) ||
           std::ranges::any_of(streamCodes, [&](int code) { return error.is(G_IO_ERROR, code); });
}

std::mutex& turns() {
    static std::mutex mutex;
    return mutex;
}

/// Receives the signals of the bus, so that they do not reach another thread's main loop. It outlives the
/// calls, since a late signal, such as the end of the bus, holds the connection until it is handled.
GMainContext* busContext() {
    static const GLibHandle<GMainContext, g_main_context_unref> made(g_main_context_new());
    return made.get();
}

void handleSignals() {
    bool more = true;
    while (more) more = g_main_context_iteration(busContext(), FALSE) != FALSE;
}

} // namespace

SecretServiceCall::SecretServiceCall(const SecretServiceVault::Settings& settings, Stops stops)
    : settings_(settings),
      asking_(std::move(stops.asking)),
      turn_(turns()),
      deadline_(settings.timeLimit, std::move(stops.ending)) {
    g_main_context_push_thread_default(busContext());
    handleSignals();
}

SecretServiceCall::~SecretServiceCall() {
    service_.reset();
    handleSignals();
    g_main_context_pop_thread_default(busContext());
}

SecretServiceCall::Outcome<void> SecretServiceCall::open() {
    constexpr auto absent = std::unexpected(vaultStatus::notAvailable);
    if (!namesASessionBus()) return absent;
    bus_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, deadline_.cancellable(), nullptr));
    if (!bus_) return absent;
    // By default GLib ends the process when the session bus ends; this program must go on, since it serves a
    // phone.
    g_dbus_connection_set_exit_on_close(bus_.get(), FALSE);
    service_.reset(secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_NONE,
                                            deadline_.cancellable(), nullptr));
    if (!service_) return absent;
    GLibHandle<char, g_free> owner(g_dbus_proxy_get_name_owner(G_DBUS_PROXY(service_.get())));
    if (!owner) return absent;
    return {};
}

SecretServiceCall::Outcome<std::vector<SecretServiceCall::Item>>
SecretServiceCall::search(const std::string& service, const std::string& account) {
    auto attributes = attributesOf(service, account);
    GLibHandle<GList, g_list_free> found(secret_service_search_sync(service_.get(), schema(),
                                                                    attributes.get(), SECRET_SEARCH_ALL,
                                                                    deadline_.cancellable(), error_.slot()));
    std::vector<Item> items;
    for (GList* node = found.get(); node; node = node->next) items.emplace_back(SECRET_ITEM(node->data));
    if (error_) return failure();
    return items;
}

SecretServiceCall::Outcome<void> SecretServiceCall::unlock(std::span<const Item> items) {
    std::vector<GDBusProxy*> locked;
    for (const auto& item : items)
        if (secret_item_get_locked(item.get())) locked.push_back(G_DBUS_PROXY(item.get()));
    return unlockObjects(locked);
}

SecretServiceCall::Outcome<void> SecretServiceCall::unlockObjects(const std::vector<GDBusProxy*>& objects) {
    if (objects.empty()) return {};
    GVariantBuilder paths;
    g_variant_builder_init(&paths, G_VARIANT_TYPE("ao"));
    for (auto* object : objects) g_variant_builder_add(&paths, "o", g_dbus_proxy_get_object_path(object));
    return ask("Unlock", g_variant_new("(ao)", &paths), G_VARIANT_TYPE("(aoo)"));
}

SecretServiceCall::Outcome<void> SecretServiceCall::makeDefaultKeyring() {
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Collection.Label",
                          g_variant_new_string("Morvex"));
    return ask("CreateCollection", g_variant_new("(a{sv}s)", &properties, SECRET_COLLECTION_DEFAULT),
               G_VARIANT_TYPE("(oo)"));
}

SecretServiceCall::Outcome<void> SecretServiceCall::ask(const char* method, GVariant* parameters,
                                                        const GVariantType* replyType) {
    GLibHandle<GVariant, g_variant_unref> reply(
        g_dbus_proxy_call_sync(G_DBUS_PROXY(service_.get()), method, parameters, G_DBUS_CALL_FLAGS_NONE, -1,
                               deadline_.cancellable(), error_.slot()));
    if (!reply) return failure();
    if (!g_variant_is_of_type(reply.get(), replyType)) return std::unexpected(vaultStatus::io);
    GLibHandle<GVariant, g_variant_unref> path(g_variant_get_child_value(reply.get(), 1));
    std::string prompt = g_variant_get_string(path.get(), nullptr);
    if (prompt == "/") return {};
    if (settings_.prompts == SecretServiceVault::Prompts::never || asking_.stop_requested())
        return std::unexpected(vaultStatus::interactionNotAllowed);
    switch (SecretServicePrompt(bus_.get(), std::move(prompt)).run(deadline_, asking_)) {
    case SecretServicePrompt::End::agreed:
        return {};
    case SecretServicePrompt::End::dismissed:
        return std::unexpected(vaultStatus::userCanceled);
    case SecretServicePrompt::End::vanished:
        return std::unexpected(vaultStatus::notAvailable);
    case SecretServicePrompt::End::unanswered:
        return std::unexpected(vaultStatus::interactionNotAllowed);
    }
}

SecretServiceCall::Outcome<Bytes> SecretServiceCall::secretOf(SecretItem* item) {
    if (!secret_item_load_secret_sync(item, deadline_.cancellable(), error_.slot())) return failure();
    Value value(secret_item_get_secret(item));
    if (!value) return std::unexpected(vaultStatus::io);
    gsize size = 0;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(secret_value_get(value.get(), &size));
    if (size > vaultRules::itemLimit) return std::unexpected(vaultStatus::io);
    return Bytes(bytes, bytes + size);
}

SecretServiceCall::Outcome<void> SecretServiceCall::setSecret(SecretItem* item, ByteView bytes) {
    auto value = valueOf(bytes);
    if (!secret_item_set_secret_sync(item, value.get(), deadline_.cancellable(), error_.slot()))
        return failure();
    return {};
}

SecretServiceCall::Outcome<void> SecretServiceCall::remove(SecretItem* item) {
    if (!secret_item_delete_sync(item, deadline_.cancellable(), error_.slot())) return failure();
    return {};
}

SecretServiceCall::Outcome<void> SecretServiceCall::create(const std::string& service,
                                                           const std::string& account, ByteView bytes) {
    if (auto opened = openDefaultKeyring(); !opened) return opened;
    auto attributes = attributesOf(service, account);
    auto value = valueOf(bytes);
    auto label = "Morvex: " + account;
    if (!secret_service_store_sync(service_.get(), schema(), attributes.get(), SECRET_COLLECTION_DEFAULT,
                                   label.c_str(), value.get(), deadline_.cancellable(), error_.slot()))
        return failure();
    return {};
}

SecretServiceCall::Outcome<void> SecretServiceCall::openDefaultKeyring() {
    GLibHandle<SecretCollection> keyring(
        secret_collection_for_alias_sync(service_.get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE,
                                         deadline_.cancellable(), error_.slot()));
    if (error_) return failure();
    if (!keyring) return makeDefaultKeyring();
    if (!secret_collection_get_locked(keyring.get())) return {};
    return unlockObjects({G_DBUS_PROXY(keyring.get())});
}

std::unexpected<std::int32_t> SecretServiceCall::failure() const {
    if (deadline_.passed()) return std::unexpected(vaultStatus::notAvailable);
    if (error_.is(SECRET_ERROR, SECRET_ERROR_IS_LOCKED))
        return std::unexpected(vaultStatus::interactionNotAllowed);
    if (error_.is(SECRET_ERROR, SECRET_ERROR_NO_SUCH_OBJECT))
        return std::unexpected(vaultStatus::itemNotFound);
    ProgramLog::write("keyring: " + error_.message());
    return std::unexpected(isVanished(error_) ? vaultStatus::notAvailable : vaultStatus::io);
}

} // namespace morvex
