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

/// Why a change that was to count once it was saved does not: the value was changed again before.
struct ChangedMeanwhile {
    [[nodiscard]] Sentence popis() const { return "Nastavení se mezitím změnilo."_sentence; }

    bool operator==(const ChangedMeanwhile&) const = default;
};

/// "Nastavení se nepodařilo uložit: …", for the user.
Sentence neulozenoKvuli(const Error& error);

/// The user's settings: one flat table from key to value, kept over restarts. A change counts at once and is
/// saved behind it, so that nobody waits for the disk. Main thread only.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    [[nodiscard]] virtual std::optional<DefaultsValue> get(const std::string& key) const = 0;
    /// Sets the values and removes the keys in one save: the next start finds all of it or nothing, whenever
    /// this program ends. No key stands in both.
    virtual void changeTogether(DefaultsValues values, const std::vector<std::string>& removed) = 0;

    /// For what lets others do more: it counts only once it is saved. Until then, and when
    /// it fails, nothing has changed. Fails with `ChangedMeanwhile`, or with what prevented the save.
    virtual Task<Result<void>> setOnceSaved(DefaultsValues values) = 0;

    /// Ends when all that was changed until now has been written, or could not be.
    virtual Task<void> ulozeno() = 0;

    /// Why the settings could not be read or saved, as a sentence for the user; nothing when all is well.
    [[nodiscard]] virtual std::optional<Sentence> problem() const = 0;

    /// Called after each change of `problem`.
    [[nodiscard]] Connection onProblem(std::function<void()> zavolat) {
        return problemChanged_.connect(std::move(zavolat));
    }

    void set(const std::string& key, DefaultsValue value);

    void remove(const std::string& key) { changeTogether({}, {key}); }

    /// In one save.
    void setTogether(DefaultsValues values) { changeTogether(std::move(values), {}); }

    /// The value, or nothing when the key is absent or holds another type.
    [[nodiscard]] std::optional<bool> boolean(const std::string& key) const;
    [[nodiscard]] std::optional<std::string> text(const std::string& key) const;
    [[nodiscard]] std::optional<Bytes> data(const std::string& key) const;
    /// Nothing too when a single element has another type: an array counts whole or not at all.
    [[nodiscard]] std::optional<std::vector<std::string>> texts(const std::string& key) const;
    [[nodiscard]] std::optional<std::vector<Bytes>> dataList(const std::string& key) const;

  protected:
    void tellOfProblem() const { problemChanged_.tell(); }

  private:
    Signal<> problemChanged_;
};

} // namespace morvex
