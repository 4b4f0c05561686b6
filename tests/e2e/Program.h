#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace morvex {

/// One of the built programs, running. What it prints on either output is collected; at the end of this
/// object it is killed if it still runs. Waits end the test program after half a minute, with what was
/// printed.
class Program {
  public:
    using Environment = std::map<std::string, std::string>;

    /// `environment` is all that the program gets.
    Program(const std::string& name, const std::vector<std::string>& arguments,
            const Environment& environment);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// The first line, from the beginning, that contains `text`.
    std::string waitForLine(const std::string& text);
    /// The same, from where the last call of this one ended.
    std::string waitForNextLine(const std::string& text);

    void type(const std::string& line) const;
    void closeInput();
    void signal(int number) const;

    /// Waits until it takes this signal over.
    void waitForHandler(int number) const;

    struct Stepped {
        int code = 0;          ///< as of `wait`
        std::size_t steps = 0; ///< entries to system calls and returns from them, of the main thread
    };

    /// Ends it by a signal, and sends another one when its main thread has made so many steps since.
    Stepped endBySignals(int first, int second, std::size_t distance);

    /// Whether it has come to its end; `wait` is still to be called.
    [[nodiscard]] bool hasEnded() const;
    /// The exit code; 128 and the signal's number for a death by signal.
    int wait();
    /// What was printed so far; everything, once `wait` has returned.
    std::string output();

  private:
    void collect(int descriptor);
    bool findLine(const std::string& text, std::size_t& from, std::string& line) const;
    std::string waitFor(const std::string& text, std::size_t& from);

    std::string name_;
    pid_t process_ = -1;
    void noteEnd(int status);

    int input_ = -1;
    int exitCode_ = -1;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::string output_;
    std::size_t seen_ = 0;
    std::thread collector_;
};

struct Ended {
    int code = 0;
    std::string output;
};

/// Runs one to its end, with this text as its input.
Ended runProgram(const std::string& name, const std::vector<std::string>& arguments,
                 const Program::Environment& environment, const std::string& input = "");

} // namespace morvex
