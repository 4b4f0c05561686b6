#include "app/mail/bridge/MailBridge.h"

#include "app/mail/bridge/MailScripts.h"
#include "app/programs/ProcessRunner.h"
#include "platform/posix/base/PathEntry.h"
#include "shared/base/Try.h"
#include "shared/wire/TalkSpanError.h"

#include <boost/json/array.hpp>

#include <utility>

namespace morvex {

namespace {

boost::json::object messageParameters(const std::string& ucet, const std::string& komu,
                                      const std::string& predmet, const std::string& telo) {
    return {{"ucet", ucet}, {"komu", komu}, {"predmet", predmet}, {"telo", telo}};
}

} // namespace

bool MailBridge::isAvailable() const {
    return isExecutableFile(services_.osascript);
}

Task<Result<std::vector<MailZprava>>> MailBridge::zpravy(std::string hledat, std::string ucet,
                                                         bool jenNeprectene, std::int64_t limit,
                                                         std::stop_token stop) {
    return spustitSkript<std::vector<Zprava>>(
        std::string(mailScripts::list),
        {{"hledat", hledat}, {"ucet", ucet}, {"jenNeprectene", jenNeprectene}, {"limit", limit}}, timeLimit,
        std::move(stop));
}

Task<Result<std::string>> MailBridge::obsah(std::string id, std::vector<std::string> ucty,
                                            std::stop_token stop) {
    return spustitSkript<std::string>(std::string(mailScripts::read),
                                      {{"id", id}, {"ucty", boost::json::array(ucty.begin(), ucty.end())}},
                                      timeLimit, std::move(stop));
}

Task<Result<std::string>> MailBridge::odeslat(std::string ucet, std::string komu, std::string predmet,
                                              std::string telo, std::stop_token stop) {
    return spustitSkript<std::string>(std::string(mailScripts::send),
                                      messageParameters(ucet, komu, predmet, telo), timeLimit,
                                      std::move(stop));
}

Task<Result<std::string>> MailBridge::koncept(std::string ucet, std::string komu, std::string predmet,
                                              std::string telo, std::stop_token stop) {
    return spustitSkript<std::string>(std::string(mailScripts::draft),
                                      messageParameters(ucet, komu, predmet, telo), timeLimit,
                                      std::move(stop));
}

Task<Result<std::string>> MailBridge::outputOf(std::string program, Clock::Duration limit,
                                               std::stop_token stop) {
    if (!co_await runOn(services_.workers, [this] { return isAvailable(); }))
        co_return fail(Chyba{Chyba::OnlyOnMac{}});
    if (stop.stop_requested()) co_return fail(TalkSpanError{TalkSpanError::Cancelled{}});
    ProcessRunner runner(services_.launcher, services_.clock);
    std::stop_callback cancel(stop, [&runner] { runner.zrusit(); });
    constexpr Capture capture{.vystup = scriptRun::longestOutput,
                              .chyby = scriptRun::longestErrors,
                              .errorsPart = Capture::Part::ending};
    CO_TRY(auto, ended,
           co_await runner.spustit({.binary = services_.osascript,
                                    .args = {"-l", "JavaScript", "-e", std::move(program)},
                                    .env = services_.environment},
                                   limit, {}, capture));
    const bool succeeded = !ended.zruseno && !ended.vyprselCas && ended.navratovyKod == 0;
    if (!succeeded) {
        using scriptRun::End;
        const auto end = ended.vyprselCas ? End::atTimeLimit : End::byItself;
        co_return fail(scriptRun::failure(ended.chyby, end));
    }
    if (ended.isOutputCut) co_return fail(scriptRun::unreadable());
    co_return std::move(ended.vystup);
}

} // namespace morvex
