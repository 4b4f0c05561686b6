#pragma once

#include "app/tools/Tool.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace morvex {

/// Some of the tools, which may change while the program runs.
class ToolSource {
  public:
    virtual ~ToolSource() = default;

    /// Those of this moment, in their order. A row that is gone here lives on for the calls that run.
    [[nodiscard]] virtual std::vector<std::shared_ptr<const Tool>> tools() const = 0;
};

/// All tools of this computer in the fixed order of the offer, whatever was added when: a row each, and
/// sources of rows. Main thread; filled before the first call. What its rows use outlives it.
class ToolTable {
  public:
    /// At the place of its name in the catalogue; a tool that is not there goes last. Each name is added
    /// once.
    void add(Tool tool);

    /// A tool of the catalogue, which knows its descriptor, that is carried out by a function of `owner`.
    template <class Owner, class Record>
    void add(std::string_view name, std::function<bool()> isOffered, Owner* owner,
             Task<ToolOutcome> (Owner::*run)(Record arguments, ToolCall call)) {
        add(makeTool<Record>(descriptorOf(name), std::move(isOffered),
                             [owner, run](Record arguments, ToolCall call) {
                                 return (owner->*run)(std::move(arguments), std::move(call));
                             }));
    }

    /// Behind the tool of this name of the catalogue, whether that is in the table or not.
    void add(const ToolSource& source, std::string_view behind);

    /// Computed anew at each call: what is on offer at this moment.
    [[nodiscard]] std::vector<ToolDescriptor> offered() const;

    /// Of these what the status names.
    [[nodiscard]] std::vector<ToolDescriptor> inStatus() const;

    /// Null when there is no such tool. Whether it is on offer is another question.
    [[nodiscard]] std::shared_ptr<const Tool> find(std::string_view name) const;

    /// Every row of this moment.
    [[nodiscard]] std::vector<std::shared_ptr<const Tool>> all() const;

  private:
    /// One row, or a source of some.
    struct Entry {
        std::size_t rank = 0;
        std::shared_ptr<const Tool> tool;
        const ToolSource* source = nullptr;
    };

    static ToolDescriptor descriptorOf(std::string_view name);
    void add(Entry entry);

    std::vector<Entry> entries_;
};

} // namespace morvex
