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
/// data (`{"$data":"<base64>"}`) or an array of texts and data. Values of other kinds are kept for whoever
/// wrote them and read as absent. Changes are written on the storage thread, those that come during a save
/// together in the next one. A save that fails is tried again until it succeeds. Main thread only, which is
/// the home of `saving`.
class JsonDefaults : public UserDefaults {
  public:
    /// Bytes of the file.
    static constexpr std::size_t sizeLimit = 16 * 1024 * 1024;

    /// From a save that failed to the next one, where no change asks for it earlier.
    static constexpr Clock::Duration retryDelay = std::chrono::seconds(5);

    /// Reads the file, here and now. A damaged one is set aside and the settings start empty. One that can
    /// be neither read nor set aside is left alone: changes count as ever, proposals are refused, and changed
    /// booleans are brought into the file as soon as it can be read. Other changes, and booleans that were
    /// changed together with such, are not saved.
    JsonDefaults(const std::filesystem::path& configHome, Saving saving);
    ~JsonDefaults() override;

    [[nodiscard]] std::optional<DefaultsValue> get(const std::string& key) const override;
    /// Text that is not UTF-8 is repaired.
    void changeTogether(DefaultsValues values, const std::vector<std::string>& removed) override;
    Task<Result<void>> setOnceSaved(DefaultsValues values) override;

    /// What could not be saved is tried once more.
    Task<void> ulozeno() override;

    [[nodiscard]] std::optional<Sentence> problem() const override;

    /// Of the last save alone: changes are not on the disk.
    [[nodiscard]] const std::optional<Sentence>& unsavedProblem() const;

    /// Saves what is left, and tries once more what could not be saved; awaited before this object goes. What
    /// is changed later is not saved.
    Task<void> ukoncit();

  private:
    /// Values that count once they are saved.
    struct Proposal {
        boost::json::object values;
        bool isOver = false; ///< one of them was changed
    };

    using Proposals = std::vector<std::shared_ptr<Proposal>>;

    void endProposals(std::string_view key);
    /// What the save that is under way holds, or will.
    [[nodiscard]] boost::json::object withProposals() const;
    void read();
    void setDamagedAside();
    void save();
    SaveQueue::Save zacniUkladat();
    void dokonciUkladani(const Result<void>& result);
    void waitForRetry();
    void forgetRetry();

    std::filesystem::path path_;
    Saving saving_;
    boost::json::object values_;
    bool isKnown_ = true;           ///< what stands in the file; else `values_` are the changes only
    std::set<std::string> leftOut_; ///< what is not brought into a file that was not read
    bool unsaved_ = false;
    Proposals proposals_;
    Proposals proposalsUnderWay_;
    std::optional<Sentence> loadProblem_;
    std::optional<Sentence> saveProblem_;
    Clock::TimerId retry_ = 0; ///< 0 without one
    bool isEnding_ = false;
    /// Known to the timer, which may ring when this object is gone.
    std::shared_ptr<JsonDefaults*> self_ = std::make_shared<JsonDefaults*>(this);
    SaveQueue saves_;
};

} // namespace morvex
