#pragma once

#include "app/mail/MailTarget.h"
#include "app/tools/ToolTable.h"

#include <boost/json/array.hpp>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace morvex {

struct MailSearch {
    std::optional<std::string> query;
    std::optional<std::string> account;
    std::optional<std::int64_t> limit;
};

struct MailToRead {
    std::string id;
};

struct OutgoingMail {
    std::string to;
    std::string subject;
    std::string body;
    std::optional<std::string> account;
};

/// The question whether a mail may be sent.
struct MailApproval {
    std::string tool;
    std::string title;
    std::string spoken; ///< is read aloud
    std::string detail; ///< the full content
};

/// The tools for mail, over Apple Mail and the direct accounts. Main thread only.
class MailTools {
  public:
    /// Resumes with the decision of the user.
    using Approve = std::function<Task<bool>(MailApproval)>;

    /// `isAppleUsable`: whether Apple Mail has accounts and no problem.
    MailTools(MailSources sources, std::function<bool()> isAppleUsable, Approve approve)
        : sources_(sources), isAppleUsable_(std::move(isAppleUsable)), approve_(std::move(approve)) {}

    void addTo(ToolTable& table);

  private:
    class Found;

    [[nodiscard]] bool isOffered() const;
    Task<ToolOutcome> search(MailSearch search, ToolCall call);
    Task<ToolOutcome> read(MailToRead mail, ToolCall call);
    Task<ToolOutcome> send(OutgoingMail mail, ToolCall call);
    Task<ToolOutcome> createDraft(OutgoingMail mail, ToolCall call);
    Task<void> searchApple(std::string account, Found& found, std::stop_token stop);
    Task<void> searchSmtp(std::string accountID, Found& found);
    Task<void> searchAll(Found& found, std::stop_token stop);
    Task<ToolOutcome> sendApproved(MailTarget target, OutgoingMail mail, std::stop_token stop);
    Task<ToolOutcome> keepRefused(MailTarget target, OutgoingMail mail, std::stop_token stop);

    MailSources sources_;
    std::function<bool()> isAppleUsable_;
    Approve approve_;
};

} // namespace morvex
