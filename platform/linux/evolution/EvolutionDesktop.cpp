#include "platform/linux/evolution/EvolutionDesktop.h"

#include "foundation/OneShot.h"
#include "foundation/ProgramLog.h"
#include "foundation/TextFilter.h"
#include "shared/base/Try.h"

#include <libebook/libebook.h>
#include <libecal/libecal.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>

namespace morvex {

namespace {

/// Does not wait until a calendar of a server has been reached; what it has stored here is enough.
constexpr auto withoutWaiting = static_cast<guint32>(-1);

const char* extensionOf(SourceKind kind) {
    switch (kind) {
    case SourceKind::events:
        return E_SOURCE_EXTENSION_CALENDAR;
    case SourceKind::tasks:
        return E_SOURCE_EXTENSION_TASK_LIST;
    case SourceKind::contacts:
        return E_SOURCE_EXTENSION_ADDRESS_BOOK;
    }
}

EClient* connect(SourceKind kind, ESource* source, GCancellable* cancellable, GError** error) {
    switch (kind) {
    case SourceKind::events:
        return e_cal_client_connect_sync(source, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, withoutWaiting, cancellable,
                                         error);
    case SourceKind::tasks:
        return e_cal_client_connect_sync(source, E_CAL_CLIENT_SOURCE_TYPE_TASKS, withoutWaiting, cancellable,
                                         error);
    case SourceKind::contacts:
        return e_book_client_connect_sync(source, withoutWaiting, cancellable, error);
    }
}

std::string textOf(const char* text) {
    return text ? text : "";
}

void freeSources(GList* list) {
    g_list_free_full(list, g_object_unref);
}

} // namespace

bool isGone(const Error& error) {
    const auto* trouble = error.as<EvolutionTrouble>();
    return trouble && trouble->kind == SystemTrouble::notFound;
}

bool AnswersTogether::add(const std::optional<Error>& failure) {
    if (failure && failure->as<Abandoned>()) {
        failure_ = failure;
        anyAnswered_ = false;
        return false;
    }
    anyAnswered_ = anyAnswered_ || !failure || isGone(*failure);
    if (failure && !isGone(*failure)) {
        ProgramLog::write("one of several sources failed: " + failure->popis().czech());
        if (!failure_) failure_ = failure;
    }
    return true;
}

Result<void> AnswersTogether::outcome() const {
    if (failure_ && !anyAnswered_) return fail(*failure_);
    return {};
}

Result<void> EvolutionDesktop::open(GCancellable* cancellable) {
    registry_.sources.reset();
    TRY(auto, opened, shared_->open(cancellable));
    const bool isKnown = opened.number == registry_.number;
    registry_ = std::move(opened);
    if (isKnown) return {};
    clients_.clear();
    waitForAccounts(cancellable);
    return {};
}

bool EvolutionDesktop::hasAllOfItsAccounts() const {
    std::set<std::string> awaited;
    GLibHandle<GList, freeSources> accounts(
        e_source_registry_list_enabled(registry_.sources.get(), E_SOURCE_EXTENSION_COLLECTION));
    for (GList* node = accounts.get(); node; node = node->next) {
        auto* account = E_SOURCE(node->data);
        auto* offer = E_SOURCE_COLLECTION(e_source_get_extension(account, E_SOURCE_EXTENSION_COLLECTION));
        if (e_source_collection_get_calendar_enabled(offer) ||
            e_source_collection_get_contacts_enabled(offer))
            awaited.insert(textOf(e_source_get_uid(account)));
    }
    for (const auto kind : {SourceKind::events, SourceKind::tasks, SourceKind::contacts}) {
        GLibHandle<GList, freeSources> sources(
            e_source_registry_list_sources(registry_.sources.get(), extensionOf(kind)));
        for (GList* node = sources.get(); node; node = node->next)
            awaited.erase(textOf(e_source_get_parent(E_SOURCE(node->data))));
    }
    return awaited.empty();
}

void EvolutionDesktop::waitForAccounts(GCancellable* cancellable) const {
    using Time = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds pause{20};
    const auto until = Time::now() + longestWaitForAccounts;
    while (!hasAllOfItsAccounts() && !g_cancellable_is_cancelled(cancellable) && Time::now() < until)
        std::this_thread::sleep_for(pause);
}

std::vector<EvolutionDesktop::Source> EvolutionDesktop::sources(SourceKind kind) const {
    std::vector<Source> found;
    GLibHandle<GList, freeSources> list(
        e_source_registry_list_enabled(registry_.sources.get(), extensionOf(kind)));
    for (GList* node = list.get(); node; node = node->next) {
        GLibHandle<ESource> source(E_SOURCE(g_object_ref(node->data)));
        const char* parent = e_source_get_parent(source.get());
        GLibHandle<ESource> account(parent ? e_source_registry_ref_source(registry_.sources.get(), parent)
                                           : nullptr);
        Source each{.source = nullptr,
                    .id = textOf(e_source_get_uid(source.get())),
                    .name = visibleText(textOf(e_source_get_display_name(source.get()))),
                    .account = account ? visibleText(textOf(e_source_get_display_name(account.get()))) : ""};
        each.source = std::move(source);
        found.push_back(std::move(each));
    }
    std::ranges::sort(found, {}, [](const Source& each) { return std::tie(each.name, each.id); });
    return found;
}

std::optional<std::string> EvolutionDesktop::defaultSource(SourceKind kind) const {
    GLibHandle<ESource> source(
        e_source_registry_ref_default_for_extension_name(registry_.sources.get(), extensionOf(kind)));
    if (!source || !e_source_registry_check_enabled(registry_.sources.get(), source.get()))
        return std::nullopt;
    return textOf(e_source_get_uid(source.get()));
}

Result<EClient*> EvolutionDesktop::client(SourceKind kind, const std::string& id, GCancellable* cancellable) {
    GLibHandle<ESource> source(e_source_registry_ref_source(registry_.sources.get(), id.c_str()));
    const bool isThere = source && e_source_has_extension(source.get(), extensionOf(kind)) &&
                         e_source_registry_check_enabled(registry_.sources.get(), source.get());
    if (!isThere) {
        clients_.erase({kind, id});
        return fail(EvolutionTrouble{SystemTrouble::notFound});
    }
    const auto known = clients_.find({kind, id});
    if (known != clients_.end()) return known->second->client.get();
    GLibError error;
    auto* made = connect(kind, source.get(), cancellable, error.slot());
    if (!made) return fail(evolutionFailure(error));
    clients_[{kind, id}] = std::make_unique<HeardClient>(made, *this);
    return made;
}

EvolutionDesktop::HeardClient::HeardClient(EClient* made, EvolutionDesktop& desktop)
    : client(made), hearer(&desktop) {
    g_signal_connect(made, "backend-died", G_CALLBACK(&EvolutionDesktop::died), hearer);
    g_signal_connect(made, "notify::readonly", G_CALLBACK(&EvolutionDesktop::becameWritable), hearer);
}

bool EvolutionDesktop::isLost(const GLibError& error) {
    const GQuark domain = error.get()->domain;
    return (domain == G_DBUS_ERROR || domain == G_IO_ERROR) && !error.is(G_IO_ERROR, G_IO_ERROR_CANCELLED);
}

bool EvolutionDesktop::isFinal(const Error& error) {
    return error.as<Abandoned>() || error.as<EvolutionTrouble>();
}

void EvolutionDesktop::died(EClient* client, gpointer self) {
    std::erase_if(static_cast<EvolutionDesktop*>(self)->clients_,
                  [client](const auto& entry) { return entry.second->client.get() == client; });
}

void EvolutionDesktop::becameWritable(EClient*, GParamSpec*, gpointer self) {
    static_cast<EvolutionDesktop*>(self)->changed_();
}

} // namespace morvex
