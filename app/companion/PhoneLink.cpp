#include "app/companion/PhoneLink.h"

#include "shared/wire/TalkSpanError.h"

#include <utility>

namespace morvex {

namespace {

Task<void> start(std::shared_ptr<SecureLink> link) {
    co_await link->spustit();
}

Task<void> takeDown(std::shared_ptr<SecureLink> link) {
    co_await link->zastavit();
}

Task<void> drain(std::shared_ptr<TaskScope> listener) {
    co_await listener->join();
}

} // namespace

PhoneLink::PhoneLink(Executor& main, TaskScope& scope, Handler handler)
    : main_(main), scope_(scope), handler_(std::move(handler)), odchazejici_(main) {}

void PhoneLink::pripojit(std::shared_ptr<SecureLink> link) {
    odpojit();
    spojeni_ = std::move(link);
    posluchac_ = std::make_shared<TaskScope>(main_);
    posluchac_->spawn(listen(spojeni_, posluchac_->token()));
    scope_.spawn(start(spojeni_));
}

void PhoneLink::odpojit() {
    if (!spojeni_) return;
    posluchac_->stop();
    scope_.spawn(drain(std::move(posluchac_)));
    odchazejici_.spawn(takeDown(std::exchange(spojeni_, nullptr)));
}

Task<Result<void>> PhoneLink::poslat(MacPayload payload, std::string requestID) {
    auto link = spojeni_;
    if (!link) co_return fail(TalkSpanError{TalkSpanError::MacOffline{}});
    co_return co_await link->poslat(std::move(payload), std::move(requestID));
}

Task<void> PhoneLink::listen(std::shared_ptr<SecureLink> link, std::stop_token stop) {
    while (auto event = co_await link->udalosti().next(stop)) co_await handler_(*std::move(event));
}

} // namespace morvex
