#pragma once

#include "phone/Attendant.h"
#include "phone/Phone.h"
#include "phone/PhoneSession.h"
#include "phone/RecordCommands.h"

#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// An interactive prompt: runs one line after another, typed or from a script, until `quit`, the end of the
/// input or Ctrl-C, and shows what the Mac sends in between. Lives as long as its run.
class Shell {
  public:
    Shell(Phone& phone, PhoneSession& session, Attendant& attendant)
        : phone_(phone), session_(session), attendant_(attendant) {}

    /// Failures of lines are reported at once. A script then ends with the failure of its first failed line,
    /// an interactive shell without one.
    Task<Result<void>> run();

  private:
    using Work = Task<Result<void>> (Shell::*)(std::string rest);
    struct Row;

    static const std::vector<Row>& rows();

    void awaitLine();
    /// Runs one line. False when it was the last one.
    Task<bool> take(std::string line);
    Task<Result<void>> carryOut(std::string line);

    Task<Result<void>> status(std::string rest);
    Task<Result<void>> tools(std::string rest);
    Task<Result<void>> call(std::string rest);
    Task<Result<void>> tasks(std::string rest);
    Task<Result<void>> search(std::string rest);
    Task<Result<void>> read(std::string rest);
    Task<Result<void>> write(std::string rest);
    Task<Result<void>> notes(std::string rest);
    Task<Result<void>> summaries(std::string rest);
    Task<Result<void>> approve(std::string rest);
    Task<Result<void>> key(std::string rest);
    Task<Result<void>> preferences(std::string rest);
    Task<Result<void>> apps(std::string rest);
    Task<Result<void>> help(std::string rest);
    Task<Result<void>> quit(std::string rest);

    Task<Result<void>> keep(commands::RecordKind kind, std::string rest);

    Phone& phone_;
    PhoneSession& session_;
    Attendant& attendant_;
    ExitCode failure_ = ExitCode::done; ///< of the first failed line
    bool isOver_ = false;
};

/// The first word of a line, or the text in double quotes at its start, and the rest without the blanks
/// between.
struct SplitLine {
    std::string first;
    std::string rest;

    static SplitLine of(std::string_view line);
    /// All words of a line, by the same rules.
    static std::vector<std::string> words(std::string_view line);
    bool operator==(const SplitLine&) const = default;
};

} // namespace morvex
