#pragma once

#include "foundation/ThreadExecutor.h"
#include "platform/net/CurlHttpClient.h"
#include "tests/platform/net/NetworkTest.h"
#include "tests/support/TestServer.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

// What tests of the HTTP client ask.

namespace morvex {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using Asked = http::request<http::string_body>;

template <class Stream> Asked readRequest(Stream& stream) {
    boost::beast::flat_buffer buffer;
    http::request_parser<http::string_body> parser;
    parser.body_limit(boost::none);
    http::read(stream, buffer, parser);
    return parser.release();
}

/// Answers one request a connection with these bytes, and keeps the requests.
class CannedServer {
  public:
    explicit CannedServer(std::string answer)
        : server_([this, answer = std::move(answer)](TestServer::Socket& socket) {
              auto request = readRequest(socket);
              {
                  std::lock_guard lock(mutex_);
                  asked_.push_back(std::move(request));
              }
              asio::write(socket, asio::buffer(answer));
          }) {}

    [[nodiscard]] std::string url(const std::string& target = "/") const {
        return "http://" + server_.authority() + target;
    }

    std::vector<Asked> asked() {
        std::lock_guard lock(mutex_);
        return asked_;
    }

  private:
    std::mutex mutex_;
    std::vector<Asked> asked_;
    TestServer server_;
};

inline std::string answerWith(const std::string& status, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n\r\n" + body;
}

class CurlHttp : public testing::Test {
  protected:
    Result<HttpReply> send(HttpRequest request) {
        return await(executor_, client_->send(std::move(request)));
    }

    std::string failure(HttpRequest request) { return failureOf(send(std::move(request))); }

    ThreadExecutor executor_{"test"};
    std::unique_ptr<CurlHttpClient> client_ = std::make_unique<CurlHttpClient>();
};

} // namespace morvex
