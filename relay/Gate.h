#pragma once

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/as_tuple.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace morvex {

/// Where one coroutine waits until another hand on the same thread wakes it. Waking nobody is nothing; the
/// waiter looks at its condition before and after.
class Gate {
  public:
    explicit Gate(const boost::asio::any_io_executor& executor)
        : never_(executor, boost::asio::steady_timer::time_point::max()) {}

    boost::asio::awaitable<void> wait() {
        co_await never_.async_wait(boost::asio::as_tuple(boost::asio::use_awaitable));
    }

    void wake() { never_.cancel(); }

  private:
    boost::asio::steady_timer never_;
};

} // namespace morvex
