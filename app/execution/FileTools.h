#pragma once

#include "app/execution/Slozky.h"
#include "app/execution/SouboryBridge.h"
#include "app/execution/WriteAllowance.h"
#include "app/tools/ToolTable.h"

#include <functional>
#include <stop_token>
#include <utility>

namespace morvex {

struct FilesSearch;
struct FileToRead;
struct FileToWrite;

/// The tools `mac.files.*`. Main thread; the disk is accessed on the worker.
class FileTools {
  public:
    /// `stop` ends a running search.
    FileTools(const Slozky& slozky, Executor& worker, WriteAllowance allowance, std::stop_token stop)
        : slozky_(slozky), files_(worker), allowance_(std::move(allowance)), stop_(std::move(stop)) {}

    /// They are offered while `isOn` and at least one folder is allowed.
    void addTo(ToolTable& table, std::function<bool()> isOn);

  private:
    Task<ToolOutcome> search(FilesSearch search, ToolCall call);
    Task<ToolOutcome> read(FileToRead file, ToolCall call);
    Task<ToolOutcome> write(FileToWrite file, ToolCall call);

    const Slozky& slozky_;
    SouboryBridge files_;
    WriteAllowance allowance_; ///< spans all connections, so a new one begins no new hour
    std::stop_token stop_;
};

} // namespace morvex
