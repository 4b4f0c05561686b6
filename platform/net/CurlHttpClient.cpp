#include "platform/net/CurlHttpClient.h"

#include "foundation/ThreadExecutor.h"
#include "platform/net/CurlTransfer.h"
#include "platform/net/NetworkCall.h"
#include "shared/base/Require.h"

#include <iterator>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

namespace morvex {

namespace {

CURLM* makeMulti() {
    static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
    auto* multi = ready == CURLE_OK ? curl_multi_init() : nullptr;
    require(multi != nullptr, "libcurl does not start");
    return multi;
}

} // namespace

/// The thread that runs the exchanges. The client stops it; calls that outlive the client keep the stopped
/// loop alive, which drops what is submitted.
class CurlLoop {
  public:
    explicit CurlLoop(std::string extraAuthorities)
        : extraAuthorities_(std::move(extraAuthorities)), multi_(makeMulti()), thread_("http") {
        thread_.post([this] { run(); });
    }

    ~CurlLoop() { curl_multi_cleanup(multi_); }

    CurlLoop(const CurlLoop&) = delete;
    CurlLoop& operator=(const CurlLoop&) = delete;

    /// From any thread.
    void submit(HttpRequest request, Reply<HttpReply> reply) {
        auto transfer = std::make_unique<CurlTransfer>(std::move(request), std::move(reply));
        std::lock_guard lock(mutex_);
        if (stopped_) return;
        submitted_.push_back(std::move(transfer));
        curl_multi_wakeup(multi_);
    }

    void stop() {
        {
            std::lock_guard lock(mutex_);
            stopped_ = true;
            curl_multi_wakeup(multi_);
        }
        thread_.close();
        // The thread may have ended before it looked at the submitted transfers.
        submitted_.clear();
    }

  private:
    using Transfer = std::unique_ptr<CurlTransfer>;

    void run() {
        constexpr int longestPoll = 60'000;
        while (startSubmitted()) {
            int running = 0;
            dropStopped();
            curl_multi_perform(multi_, &running);
            finishEnded();
            curl_multi_poll(multi_, nullptr, 0, longestPoll, nullptr);
        }
        for (auto& [easy, transfer] : running_) curl_multi_remove_handle(multi_, easy);
        running_.clear();
    }

    /// False once the loop was stopped.
    bool startSubmitted() {
        std::vector<Transfer> submitted;
        {
            std::lock_guard lock(mutex_);
            submitted.swap(submitted_);
            if (stopped_) return false;
        }
        for (auto& transfer : submitted) start(std::move(transfer));
        return true;
    }

    void start(Transfer transfer) {
        if (auto prepared = transfer->prepare(extraAuthorities_); !prepared)
            return transfer->fall(std::move(prepared).error());
        auto* easy = transfer->handle();
        transfer->watchStop([this] { curl_multi_wakeup(multi_); });
        curl_multi_add_handle(multi_, easy);
        running_.emplace(easy, std::move(transfer));
    }

    void dropStopped() {
        for (auto place = running_.begin(); place != running_.end();) {
            const auto next = std::next(place);
            if (place->second->isStopped()) {
                curl_multi_remove_handle(multi_, place->first);
                running_.extract(place).mapped()->fall(Abandoned{});
            }
            place = next;
        }
    }

    void finishEnded() {
        int waiting = 0;
        while (auto* message = curl_multi_info_read(multi_, &waiting)) {
            if (message->msg != CURLMSG_DONE) continue;
            auto code = message->data.result;
            auto ended = running_.extract(message->easy_handle);
            curl_multi_remove_handle(multi_, ended.key());
            ended.mapped()->finish(code);
        }
    }

    const std::string extraAuthorities_;
    CURLM* const multi_;
    std::unordered_map<CURL*, Transfer> running_;
    std::mutex mutex_;
    std::vector<Transfer> submitted_;
    bool stopped_ = false;
    ThreadExecutor thread_;
};

namespace {

Task<Result<HttpReply>> exchange(std::shared_ptr<CurlLoop> loop, HttpRequest request) {
    auto shot = std::make_shared<OneShot<Result<HttpReply>>>();
    loop->submit(std::move(request), Reply<HttpReply>(shot));
    co_return co_await answerOf(std::move(shot));
}

} // namespace

CurlHttpClient::CurlHttpClient(std::string extraAuthorities)
    : loop_(std::make_shared<CurlLoop>(std::move(extraAuthorities))) {}

CurlHttpClient::~CurlHttpClient() {
    loop_->stop();
}

Task<Result<HttpReply>> CurlHttpClient::send(HttpRequest request) {
    return exchange(loop_, std::move(request));
}

} // namespace morvex
