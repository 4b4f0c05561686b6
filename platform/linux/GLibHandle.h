#pragma once

#include <gio/gio.h>
#include <memory>
#include <string>

namespace morvex {

template <auto release> struct GLibRelease {
    template <class T> void operator()(T* held) const { release(held); }
};

/// Owns a GLib resource: by default one reference of an object; `release` names another way to free it.
template <class T, auto release = g_object_unref> using GLibHandle = std::unique_ptr<T, GLibRelease<release>>;

/// Receives the failure of one call: `call(..., error.slot())`.
class GLibError {
  public:
    GLibError() = default;
    GLibError(const GLibError&) = delete;
    GLibError& operator=(const GLibError&) = delete;

    ~GLibError() { g_clear_error(&error_); }

    /// Clears the error, so that one object can serve several calls.
    GError** slot() {
        g_clear_error(&error_);
        return &error_;
    }

    explicit operator bool() const { return error_ != nullptr; }

    [[nodiscard]] bool is(GQuark domain, int code) const { return g_error_matches(error_, domain, code); }

    /// Null if nothing failed.
    [[nodiscard]] const GError* get() const { return error_; }

    /// In English, or in the language of the system.
    [[nodiscard]] std::string message() const { return error_ ? error_->message : std::string(); }

  private:
    GError* error_ = nullptr;
};

} // namespace morvex
