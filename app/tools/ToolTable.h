#pragma once

#include "app/tools/Tool.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace morvex {

/// A source of tools that may change while the program runs.
class ToolSource {
  public:
    virtual ~ToolSource() = default;

    /// The current tools in their order. A tool that is no longer listed lives on until its running calls
    /// end.
    [[nodiscard]] virtual std::vector<std::shared_ptr<const Tool>> tools() const = 0;
};

/// All tools of this computer in the fixed order of the offer, whatever order they were added in: single
/// tools and sources of tools. Main thread; filled before the first call. Whatever its tools use outlives it.
class ToolTable {
  public:
    /// Places the tool by its name's position in the catalogue; a tool that is not in the catalogue goes
    /// last. Each name is added once.
    void add(Tool tool);

    /// Adds a tool of the catalogue, which supplies its descriptor. A function of `owner` carries it out.
    template <class Owner, class Record>
    void add(std::string_view name, std::function<bool()> isOffered, Owner* owner,
             Task<ToolOutcome> (Owner::*run)(Record arguments, ToolCall call)) {
        add(makeTool<Record>(descriptorOf(name), std::move(isOffered),
                             [owner, run](Record arguments, ToolCall call) {
                                 return (owner->*run)(std::move(arguments), std::move(call));
                             }));
    }

    /// Places the source behind the catalogue's tool `behind`, whether that tool is in the table or not.
    void add(const ToolSource& source, std::string_view behind);

    /// The tools on offer at this moment, computed anew at each call.
    [[nodiscard]] std::vector<ToolDescriptor> offered() const;

    /// Those of the offered tools that the status names.
    [[nodiscard]] std::vector<ToolDescriptor> inStatus() const;

    /// Null if there is no such tool. Does not check whether the tool is on offer.
    [[nodiscard]] std::shared_ptr<const Tool> find(std::string_view name) const;

    /// Every current tool, offered or not.
    [[nodiscard]] std::vector<std::shared_ptr<const Tool>> all() const;

  private:
    /// Either one tool or a source of tools.
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
