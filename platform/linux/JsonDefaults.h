#pragma once

#include "platform/ports/UserDefaults.h"
#include "shared/base/Error.h"

#include <boost/json/object.hpp>

#include <cstddef>
#include <filesystem>

namespace morvex {

/// The settings in one JSON file, "<config home>/Morvex/defaults.json": an object from key to text, boolean,
/// data (`{"$data":"<base64>"}`) or an array of texts and data. Values of other kinds are kept for whoever
/// wrote them and read as absent. Every change is written at once; a change that cannot be written holds in
/// memory and is tried again with the next one. Main thread only.
class JsonDefaults final : public UserDefaults {
  public:
    /// Bytes of the file.
    static constexpr std::size_t sizeLimit = 16 * 1024 * 1024;

    /// Reads the file. A damaged one is set aside and the settings start empty. One that can be neither read
    /// nor set aside is left alone: then nothing is written.
    static JsonDefaults load(const std::filesystem::path& configHome);

    [[nodiscard]] std::optional<DefaultsValue> get(const std::string& key) const override;
    /// Text that is not UTF-8 is repaired.
    void setTogether(DefaultsValues values) override;
    void remove(const std::string& key) override;

    /// What is wrong with the file, as a sentence for the user; nothing when all is well.
    [[nodiscard]] std::optional<std::string> problem() const;

  private:
    explicit JsonDefaults(std::filesystem::path path) : path_(std::move(path)) {}

    void read();
    void setDamagedAside();
    void save();
    Result<void> write() const;

    std::filesystem::path path_;
    boost::json::object values_;
    bool writable_ = true;
    bool unsaved_ = false;
    std::optional<std::string> loadProblem_;
    std::optional<std::string> saveProblem_;
};

} // namespace morvex
