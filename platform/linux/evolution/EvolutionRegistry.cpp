#include "platform/linux/evolution/EvolutionRegistry.h"

#include "foundation/OneShot.h"
#include "foundation/ProgramLog.h"
#include "foundation/TextFilter.h"
#include "platform/linux/SessionBus.h"
#include "shared/base/SystemTrouble.h"

#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace morvex {

namespace {

using Time = std::chrono::steady_clock;

constexpr std::chrono::seconds leftAtTheEnd{2};
constexpr std::chrono::milliseconds leftAfterCancelling{500};

Error missing() {
    return RegistryUnreachable{
        TextError("Tento počítač nemá službu kalendářů, připomínek a kontaktů."_sentence)};
}

bool isMissing(const GLibError& error) {
    return error.is(G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
           error.is(G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
}

bool isServed(GDBusConnection* bus, GCancellable* cancellable, GLibError& error) {
    GLibHandle<GVariant, g_variant_unref> owner(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetNameOwner",
        g_variant_new("(s)", "org.gnome.evolution.dataserver.Sources5"), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
        cancellable, error.slot()));
    return owner != nullptr;
}

/// What belongs to the thread.
class Registry {
  public:
    explicit Registry(const std::function<void()>& changed) : changed_(changed) {}

    ~Registry() { close(); }

    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    Result<EvolutionRegistry::Opened> open(GCancellable* cancellable) {
        if (!sources_ || g_dbus_connection_is_closed(bus_.get())) {
            close();
            if (auto reached = reach(cancellable); !reached) return fail(reached.error());
            ++number_;
        }
        return EvolutionRegistry::Opened{{E_SOURCE_REGISTRY(g_object_ref(sources_.get())), g_object_unref},
                                         number_};
    }

  private:
    Result<void> reach(GCancellable* cancellable) {
        if (!namesASessionBus()) return fail(missing());
        GLibError error;
        bus_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable, error.slot()));
        // By default GLib ends the process when the session bus ends.
        if (bus_) g_dbus_connection_set_exit_on_close(bus_.get(), FALSE);
        if (bus_) sources_.reset(e_source_registry_new_sync(cancellable, error.slot()));
        // The library makes a registry without sources where no service is.
        if (sources_ && !isServed(bus_.get(), cancellable, error)) sources_.reset();
        if (!sources_) {
            if (error.is(G_IO_ERROR, G_IO_ERROR_CANCELLED)) return fail(Abandoned{});
            ProgramLog::write("calendars: " + error.message());
            if (!bus_ || isMissing(error)) return fail(missing());
            return fail(RegistryUnreachable{evolutionFailure(error)});
        }
        for (const char* signal :
             {"source-added", "source-removed", "source-changed", "source-enabled", "source-disabled"})
            g_signal_connect(sources_.get(), signal, G_CALLBACK(&Registry::sourceChanged), this);
        return {};
    }

    void close() {
        if (sources_) g_signal_handlers_disconnect_by_data(sources_.get(), this);
        sources_.reset();
        bus_.reset();
    }

    static void sourceChanged(ESourceRegistry*, ESource* source, gpointer self) {
        const bool isOurs = e_source_has_extension(source, E_SOURCE_EXTENSION_CALENDAR) ||
                            e_source_has_extension(source, E_SOURCE_EXTENSION_TASK_LIST) ||
                            e_source_has_extension(source, E_SOURCE_EXTENSION_ADDRESS_BOOK) ||
                            e_source_has_extension(source, E_SOURCE_EXTENSION_COLLECTION);
        if (isOurs) static_cast<Registry*>(self)->changed_();
    }

    const std::function<void()>& changed_;
    GLibHandle<GDBusConnection> bus_;
    GLibHandle<ESourceRegistry> sources_;
    std::uint64_t number_ = 0;
};

using Work = std::function<void(Registry&)>;

} // namespace

Error evolutionFailure(const GLibError& error) {
    if (error.is(G_IO_ERROR, G_IO_ERROR_CANCELLED)) return Abandoned{};
    auto words = foreignWords(error.message());
    if (words.find_first_not_of(' ') == std::string::npos) return TextError(popis(SystemTrouble::other));
    return TextError(std::move(words));
}

struct EvolutionRegistry::State {
    explicit State(std::function<void()> told) : changed(std::move(told)) {}

    const std::function<void()> changed;
    const GLibHandle<GMainContext, g_main_context_unref> context{g_main_context_new()};
    std::mutex mutex; ///< guards what follows
    std::condition_variable over;
    std::vector<Work> waiting;
    bool ending = false;
    bool ended = false;
};

EvolutionRegistry::EvolutionRegistry(std::function<void()> changed)
    : state_(std::make_shared<State>(std::move(changed))) {
    std::thread([state = state_] { run(state); }).detach();
}

void EvolutionRegistry::run(const std::shared_ptr<State>& state) {
    ::pthread_setname_np(::pthread_self(), "ucty");
    auto* context = state->context.get();
    g_main_context_push_thread_default(context);
    {
        Registry registry(state->changed);
        std::unique_lock lock(state->mutex);
        while (!state->ending) {
            for (auto work : std::exchange(state->waiting, {})) {
                lock.unlock();
                work(registry);
                lock.lock();
            }
            if (state->ending || !state->waiting.empty()) continue;
            lock.unlock();
            g_main_context_iteration(context, TRUE);
            lock.lock();
        }
    }
    while (g_main_context_iteration(context, FALSE)) continue;
    g_main_context_pop_thread_default(context);
    std::lock_guard lock(state->mutex);
    state->waiting.clear();
    state->ended = true;
    state->over.notify_all();
}

void EvolutionRegistry::end() {
    std::unique_lock lock(state_->mutex);
    state_->ending = true;
    g_main_context_wakeup(state_->context.get());
    state_->over.wait_for(lock, leftAtTheEnd, [this] { return state_->ended; });
}

Result<EvolutionRegistry::Opened> EvolutionRegistry::open(GCancellable* cancellable) {
    const auto answer = std::make_shared<std::promise<Result<Opened>>>();
    auto arrives = answer->get_future();
    {
        const std::lock_guard lock(state_->mutex);
        if (state_->ending) return fail(Abandoned{});
        const std::shared_ptr<GCancellable> held(G_CANCELLABLE(g_object_ref(cancellable)), g_object_unref);
        state_->waiting.emplace_back([answer, held](Registry& registry) {
            answer->set_value(g_cancellable_is_cancelled(held.get()) ? fail(Abandoned{})
                                                                     : registry.open(held.get()));
        });
    }
    g_main_context_wakeup(state_->context.get());
    constexpr std::chrono::milliseconds look{20};
    std::optional<Time::time_point> giveUp;
    while (arrives.wait_for(look) != std::future_status::ready) {
        if (!giveUp && g_cancellable_is_cancelled(cancellable)) giveUp = Time::now() + leftAfterCancelling;
        if (giveUp && Time::now() > *giveUp) return fail(Abandoned{});
    }
    return arrives.get();
}

} // namespace morvex
