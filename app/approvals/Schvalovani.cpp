#include "app/approvals/Schvalovani.h"

#include "shared/trust/ContentHash.h"

#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::seconds timeToDecide{120};

}

Task<bool> Schvalovani::pozadat(std::string nastroj, std::string nadpis, std::string nahlas,
                                std::string detail) {
    // After the scope was stopped no request would expire, so a question would stay open for ever.
    if (cekajici_ || scope_.token().stop_requested()) co_return false;
    ApprovalRequest request;
    request.id = random_.uuid().text();
    request.tool = std::move(nastroj);
    request.title = std::move(nadpis);
    request.spoken = std::move(nahlas);
    request.contentHash = contentHash(detail);
    request.detail = std::move(detail);
    request.expiresAt = clock_.now() + timeToDecide;

    // The waiter is set up before anybody learns of the request, so that an immediate decision finds it.
    auto decision = std::make_shared<OneShot<bool>>();
    cekajici_ = Cekajici{request, decision};
    zadost_ = request;
    scope_.spawn(expire(request.id));
    // A view that watches `zadost_` may have decided already.
    if (cekajici_) naTelefon_.tell(request);
    co_return co_await decision->wait();
}

Connection Schvalovani::poslatNaTelefon(std::function<void(const ApprovalRequest&)> slot) {
    return naTelefon_.connect(std::move(slot));
}

void Schvalovani::rozhodnout(bool schvaleno) {
    vyresit(schvaleno);
}

void Schvalovani::vyresit(bool schvaleno) {
    if (!cekajici_) return;
    auto decided = std::exchange(cekajici_, std::nullopt);
    zadost_ = std::nullopt;
    decided->pokracovani->answer(schvaleno);
}

void Schvalovani::vyresit(const std::string& id, bool schvaleno) {
    if (cekajici_ && cekajici_->zadost.id == id) vyresit(schvaleno);
}

Task<void> Schvalovani::expire(std::string id) {
    // An interrupted wait also counts as expired: nothing runs without a decision.
    co_await sleepFor(clock_, timeToDecide, scope_.token());
    vyresit(id, false);
}

} // namespace morvex
