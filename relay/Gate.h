#pragma once

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/as_tuple.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace morvex {

/// Lets one coroutine wait until other code on the same thread wakes it. `wake` does nothing if nobody waits,
/// so the waiting coroutine must check its condition before and after.
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
