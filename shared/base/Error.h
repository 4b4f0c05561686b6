#pragma once

#include "shared/base/Sentence.h"

#include <concepts>
#include <expected>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>

namespace morvex {

/// A cause of failure: any copyable value that can say what happened.
template <class Cause>
concept Describable = requires(const Cause& cause) {
    { cause.popis() } -> std::convertible_to<Sentence>;
} && std::copyable<Cause>;

/// A failure of any layer, passed upwards with its type erased. Code that reacts to one particular cause
/// calls `as<Cause>()`; all other code shows `popis()`.
class Error {
  public:
    template <class Cause>
        requires(!std::same_as<Cause, Error>) && Describable<Cause>
    Error(Cause cause) : held_(std::make_shared<Held<Cause>>(std::move(cause))) {}

    /// The sentence to show to the user.
    [[nodiscard]] Sentence popis() const { return held_->popis(); }

    /// The cause, or null when it has another type.
    template <class Cause> [[nodiscard]] const Cause* as() const {
        auto* held = dynamic_cast<const Held<Cause>*>(held_.get());
        return held ? &held->cause : nullptr;
    }

  private:
    struct AnyCause {
        virtual ~AnyCause() = default;
        [[nodiscard]] virtual Sentence popis() const = 0;
    };

    template <class Cause> struct Held final : AnyCause {
        explicit Held(Cause given) : cause(std::move(given)) {}

        [[nodiscard]] Sentence popis() const override { return cause.popis(); }

        Cause cause;
    };

    std::shared_ptr<const AnyCause> held_;
};

/// A value, or the failure that prevented it.
template <class T> using Result = std::expected<T, Error>;

/// Use as `return fail(KryptoChyba::…)` in a function that returns a `Result`.
inline std::unexpected<Error> fail(Error error) {
    return std::unexpected<Error>(std::move(error));
}

/// A failure that nobody reacts to by type: only its sentence matters.
struct TextError {
    Sentence text;

    explicit TextError(Sentence given) : text(std::move(given)) {}

    /// For words that are the same in every language.
    explicit TextError(std::string given) : text(std::move(given)) {}

    [[nodiscard]] const Sentence& popis() const { return text; }

    bool operator==(const TextError&) const = default;
};

} // namespace morvex
