#include "phone/RecordText.h"

namespace morvex {

namespace {

std::vector<StyledLine> lines(const std::string& title, std::string about, const std::string& remark,
                              const std::string& body) {
    if (!remark.empty()) about += ", " + remark;
    return {{{title, Style::strong}, {"  " + about, Style::faint}}, {{"  " + body}}};
}

} // namespace

std::vector<StyledLine> recordLines(const MorvexNote& note, const std::string& remark) {
    const std::string done = note.deletedAt ? "smazáno " : "upraveno ";
    return lines(note.title, done + formatDate(note.updatedAt), remark, note.body);
}

std::vector<StyledLine> recordLines(const MorvexSummary& summary, const std::string& remark) {
    return lines(summary.title, "napsáno " + formatDate(summary.createdAt), remark, summary.body);
}

} // namespace morvex
