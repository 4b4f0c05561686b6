#pragma once

#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "shared/base/Bytes.h"
#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace morvex {

using DefaultsItem = std::variant<std::string, Bytes>;
using DefaultsValue = std::variant<bool, std::string, Bytes, std::vector<DefaultsItem>>;
using DefaultsValues = std::map<std::string, DefaultsValue>;

/// Failure of `setOnceSaved`: the value was changed again before it was saved.
struct ChangedMeanwhile {
    [[nodiscard]] Sentence popis() const { return "Nastavení se mezitím změnilo."_sentence; }

    bool operator==(const ChangedMeanwhile&) const = default;
};

/// "Nastavení se nepodařilo uložit: …", for the user.
Sentence notSavedBecause(const Error& error);

/// The user's settings: one flat table from key to value, kept across restarts. A change applies at once and
/// is saved in the background, so that nobody waits for the disk. Main thread only.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    [[nodiscard]] virtual std::optional<DefaultsValue> get(const std::string& key) const = 0;
    /// Sets the values and removes the keys in one save: even if the program ends at any moment, the next
    /// start finds all of the change or nothing. A key must not be in both arguments.
    virtual void changeTogether(DefaultsValues values, const std::vector<std::string>& removed) = 0;

    /// For settings that grant others more rights: the change applies only after it was saved. Until then,
    /// and if saving fails, nothing changes. Fails with `ChangedMeanwhile`, or with the cause of the failed
    /// save.
    virtual Task<Result<void>> setOnceSaved(DefaultsValues values) = 0;

    /// Completes when all changes made so far have been written, or could not be.
    virtual Task<void> saved() = 0;

    /// Why the settings could not be read or saved, as a sentence for the user; nothing if there is no
    /// problem.
    [[nodiscard]] virtual std::optional<Sentence> problem() const = 0;

    /// Called after each change of `problem`.
    [[nodiscard]] Connection onProblem(std::function<void()> callback) {
        return problemChanged_.connect(std::move(callback));
    }

    void set(const std::string& key, DefaultsValue value);

    void remove(const std::string& key) { changeTogether({}, {key}); }

    /// Sets the values in one save.
    void setTogether(DefaultsValues values) { changeTogether(std::move(values), {}); }

    /// The value, or nothing when the key is absent or holds another type.
    [[nodiscard]] std::optional<bool> boolean(const std::string& key) const;
    [[nodiscard]] std::optional<std::string> text(const std::string& key) const;
    [[nodiscard]] std::optional<Bytes> data(const std::string& key) const;
    /// Returns nothing also when a single element has another type: an array counts as a whole or not at all.
    [[nodiscard]] std::optional<std::vector<std::string>> texts(const std::string& key) const;
    [[nodiscard]] std::optional<std::vector<Bytes>> dataList(const std::string& key) const;

  protected:
    void tellOfProblem() const { problemChanged_.tell(); }

  private:
    Signal<> problemChanged_;
};

} // namespace morvex
