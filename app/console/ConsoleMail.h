#pragma once

#include "app/console/ConsoleOutput.h"
#include "app/console/ConsoleQuestions.h"
#include "app/mail/MailFeature.h"
#include "foundation/TaskScope.h"

#include <optional>
#include <string>
#include <utility>

namespace morvex {

/// The console's commands for mail accounts. Main thread.
class ConsoleMail {
  public:
    struct Services {
        MailFeature& mail;
        TaskScope& scope; ///< runs what a command starts
        const ConsoleOutput& output;
        ConsoleQuestions& questions;
    };

    /// All references outlive this object.
    explicit ConsoleMail(Services services) : services_(services) {}

    /// The accounts, direct ones and those of Apple Mail.
    void print() const;

    /// Asks for the fields of a direct account, adds it, and checks the login.
    void startAdding();

    // These take the label (or the address) of a direct account, without regard to case and diacritics.
    void remove(const std::string& label);
    void setDefault(const std::string& label);
    void test(const std::string& label);

  private:
    [[nodiscard]] std::string described(const MacSMTPAccount& account) const;
    void printApple() const;
    /// Says so if there is none.
    [[nodiscard]] std::optional<MacSMTPAccount> find(const std::string& label) const;
    Task<void> add(MacSMTPAccount account, std::string password);
    Task<void> removeAndTell(MacSMTPAccount account);
    Task<void> testAndTell(MacSMTPAccount account);

    Services services_;
};

} // namespace morvex
