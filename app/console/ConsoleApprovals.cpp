#include "app/console/ConsoleApprovals.h"

namespace morvex {

namespace {

constexpr const char* nothingWaits = "Nic nečeká na potvrzení.";

}

ConsoleApprovals::ConsoleApprovals(Schvalovani& schvalovani, const ConsoleOutput& output)
    : schvalovani_(schvalovani),
      output_(output),
      notifier_(schvalovani.zadost().addNotifier([this] { tell(); })) {}

void ConsoleApprovals::tell() {
    const auto& request = schvalovani_.zadost().value();
    if (!request) return output_.line(nothingWaits);
    if (shownID_.empty()) shownID_ = request->id;
    show(*request);
}

void ConsoleApprovals::show(const ApprovalRequest& request) const {
    output_.line("Čeká na potvrzení: " + request.title);
    output_.foreign(request.detail);
    output_.line("Odpověz „potvrdit“ nebo „zamitnout“.");
}

void ConsoleApprovals::decide(Decision decision) {
    const auto& request = schvalovani_.zadost().value();
    if (!request) return output_.line(nothingWaits);
    if (request->id != shownID_) {
        output_.line("Mezitím se ptám na něco jiného.");
        return show(*request);
    }
    const auto id = request->id;
    schvalovani_.vyresit(id, decision == Decision::approved);
}

void ConsoleApprovals::lineTyped() {
    shownID_ = openID();
}

std::string ConsoleApprovals::openID() const {
    const auto& request = schvalovani_.zadost().value();
    return request ? request->id : "";
}

} // namespace morvex
