#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <sys/types.h>

namespace morvex {

/// A child of a measuring program that plays the clients. Create it before the program has threads. It waits
/// for the port, does its work and stays until this object is destroyed. If the child ends earlier, the
/// program ends.
class ClientProcess {
  public:
    /// The child's end.
    class Line {
      public:
        Line(int in, int out) : in_(in), out_(out) {}

        [[nodiscard]] std::uint16_t waitForPort() const;
        /// Reports that a part of the work is done.
        void report() const;
        /// Keeps all resources of the child until this returns.
        void stay() const;

      private:
        int in_;
        int out_;
    };

    explicit ClientProcess(const std::function<void(Line&)>& work);
    ClientProcess(ClientProcess&& other) noexcept;
    ClientProcess& operator=(ClientProcess&&) = delete;
    ~ClientProcess();

    void begin(std::uint16_t port) const;
    /// Waits for the child's next report.
    void waitUntilDone() const;

  private:
    pid_t process_ = -1;
    int in_ = -1;
    int out_ = -1;
};

} // namespace morvex
