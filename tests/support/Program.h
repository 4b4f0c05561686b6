#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace morvex {

/// A running program of the build. Its output on both streams is collected; the destructor kills it if it
/// still runs. Waits end the test program after half a minute and print the output so far.
class Program {
  public:
    using Environment = std::map<std::string, std::string>;

    enum class Input { pipe, terminal };

    /// `environment` is the complete environment of the program.
    Program(const std::string& name, const std::vector<std::string>& arguments,
            const Environment& environment, Input input = Input::pipe);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// The first line of the whole output that contains `text`.
    std::string waitForLine(const std::string& text);
    /// The same, starting where the last call of this function ended.
    std::string waitForNextLine(const std::string& text);

    void type(const std::string& line) const;
    void closeInput();
    /// What the terminal of the input has shown of the typed lines since the last call.
    [[nodiscard]] std::string echo() const;
    void signal(int number) const;

    /// Waits until the program has installed a handler for this signal.
    void waitForHandler(int number) const;

    struct Stepped {
        int code = 0;          ///< as returned by `wait`
        std::size_t steps = 0; ///< the main thread's system call entries and exits
    };

    /// Ends it by a signal, and sends another one after its main thread has made `distance` steps.
    Stepped endBySignals(int first, int second, std::size_t distance);

    /// Whether it has ended; `wait` must still be called.
    [[nodiscard]] bool hasEnded() const;
    /// The exit code; 128 plus the signal's number if a signal ended it.
    int wait();
    /// The output so far; complete after `wait` has returned.
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

/// Runs a program to its end with this input.
Ended runProgram(const std::string& name, const std::vector<std::string>& arguments,
                 const Program::Environment& environment, const std::string& input = "");

} // namespace morvex
