#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// The names of the tools that this program knows. Two of them, `terminalCancel` and `appOpen`, are reserved:
/// the catalogue does not offer them.
namespace morvex::MacToolName {

inline constexpr std::string_view status = "mac.status";
inline constexpr std::string_view codexRun = "mac.codex.run";
inline constexpr std::string_view codexCancel = "mac.codex.cancel";
inline constexpr std::string_view claudeRun = "mac.claude.run";
inline constexpr std::string_view claudeCancel = "mac.claude.cancel";
inline constexpr std::string_view agentRename = "mac.agent.rename";
inline constexpr std::string_view mailSearch = "mac.mail.search";
inline constexpr std::string_view mailRead = "mac.mail.read";
inline constexpr std::string_view mailCreateDraft = "mac.mail.createDraft";
inline constexpr std::string_view mailSend = "mac.mail.send";
inline constexpr std::string_view filesSearch = "mac.files.search";
inline constexpr std::string_view filesRead = "mac.files.read";
inline constexpr std::string_view filesWrite = "mac.files.write";
inline constexpr std::string_view terminalRun = "mac.terminal.run";
inline constexpr std::string_view terminalCancel = "mac.terminal.cancel";
inline constexpr std::string_view appOpen = "mac.app.open";
inline constexpr std::string_view calendarList = "mac.calendar.list";
inline constexpr std::string_view calendarCalendars = "mac.calendar.calendars";
inline constexpr std::string_view calendarCreate = "mac.calendar.create";
inline constexpr std::string_view calendarUpdate = "mac.calendar.update";
inline constexpr std::string_view calendarDelete = "mac.calendar.delete";
inline constexpr std::string_view notesSearch = "mac.notes.search";
inline constexpr std::string_view notesCreate = "mac.notes.create";
inline constexpr std::string_view notesUpdate = "mac.notes.update";
inline constexpr std::string_view notesDelete = "mac.notes.delete";
inline constexpr std::string_view remindersList = "mac.reminders.list";
inline constexpr std::string_view remindersCreate = "mac.reminders.create";
inline constexpr std::string_view remindersComplete = "mac.reminders.complete";
inline constexpr std::string_view contactsFind = "mac.contacts.find";
inline constexpr std::string_view webSearch = "mac.web.search";

inline constexpr std::array<std::string_view, 30> allNames{
    status,         codexRun,       codexCancel,     claudeRun,         claudeCancel, agentRename,
    mailSearch,     mailRead,       mailCreateDraft, mailSend,          filesSearch,  filesRead,
    filesWrite,     terminalRun,    terminalCancel,  appOpen,           calendarList, calendarCalendars,
    calendarCreate, calendarUpdate, calendarDelete,  notesSearch,       notesCreate,  notesUpdate,
    notesDelete,    remindersList,  remindersCreate, remindersComplete, contactsFind, webSearch};

/// The name for a model's list of functions, which allows no dots: `mac.files.read` becomes `mac_files_read`.
std::string functionName(std::string_view name);

/// The entry of `allNames` that has this `functionName`.
std::optional<std::string_view> toolName(std::string_view functionName);

} // namespace morvex::MacToolName
