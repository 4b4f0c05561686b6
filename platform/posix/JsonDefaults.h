#pragma once

#include "foundation/SaveQueue.h"
#include "platform/ports/UserDefaults.h"
#include "shared/base/Error.h"

#include <boost/json/object.hpp>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// The settings in one JSON file, "<config home>/Morvex/defaults.json": an object from key to text, boolean,
/// data (`{"$data":"<base64>"}`) or an array of texts and data. Values of other types are kept in the file
/// but read as absent. Changes are written on the storage thread; those made during a save go together into
/// the next one. A save that fails is retried until it succeeds. Main thread only, which is the home of
/// `saving`.
class JsonDefaults : public UserDefaults {
  public:
    /// Limit of the file in bytes.
    static constexpr std::size_t sizeLimit = 16 * 1024 * 1024;

    /// Delay between a failed save and its retry, unless a change saves earlier.
    static constexpr Clock::Duration retryDelay = std::chrono::seconds(5);

    /// Reads the file synchronously. A damaged file is set aside and the settings start empty. A file that
    /// can be neither read nor set aside is left alone: changes still apply in memory, `setOnceSaved` fails,
    /// and changed booleans are merged into the file as soon as it can be read. Other changes, and booleans
    /// that were changed together with such, are not saved.
    JsonDefaults(const std::filesystem::path& configHome, Saving saving);
    ~JsonDefaults() override;

    [[nodiscard]] std::optional<DefaultsValue> get(const std::string& key) const override;
    /// Text that is not UTF-8 is repaired.
    void changeTogether(DefaultsValues values, const std::vector<std::string>& removed) override;
    Task<Result<void>> setOnceSaved(DefaultsValues values) override;

    /// Also retries changes that could not be saved.
    Task<void> saved() override;

    [[nodiscard]] std::optional<Sentence> problem() const override;

    /// The problem of the last save: some changes are not on the disk.
    [[nodiscard]] const std::optional<Sentence>& unsavedProblem() const;

    /// Saves the remaining changes and retries those that could not be saved. Must be awaited before this
    /// object is destroyed. Later changes are not saved.
    Task<void> shutDown();

  private:
    /// Values that apply only after they were saved.
    struct Proposal {
        boost::json::object values;
        bool isOver = false; ///< one of its values was changed meanwhile
    };

    using Proposals = std::vector<std::shared_ptr<Proposal>>;

    void endProposals(std::string_view key);
    /// `values_` with the proposals of the current save.
    [[nodiscard]] boost::json::object withProposals() const;
    void read();
    void setDamagedAside();
    void save();
    SaveQueue::Save startSaving();
    void finishSaving(const Result<void>& result);
    void waitForRetry();
    void forgetRetry();

    std::filesystem::path path_;
    Saving saving_;
    boost::json::object values_;
    bool isKnown_ = true;           ///< the file's content is known; else `values_` has only changes
    std::set<std::string> leftOut_; ///< keys that must not be merged into a file that was not read
    bool unsaved_ = false;
    Proposals proposals_;
    Proposals proposalsUnderWay_;
    std::optional<Sentence> loadProblem_;
    std::optional<Sentence> saveProblem_;
    Clock::TimerId retry_ = 0; ///< 0 if no retry is planned
    bool isEnding_ = false;
    /// The timer holds it weakly, since it may fire after this object is destroyed.
    std::shared_ptr<JsonDefaults*> self_ = std::make_shared<JsonDefaults*>(this);
    SaveQueue saves_;
};

} // namespace morvex
