#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

namespace morvex {

/// Takes one line of standard output, without its line break. Called on a thread of the launcher without any
/// lock held; it must not block.
using NaRadek = std::function<void(std::string_view)>;

/// How many bytes of the output are kept; further bytes are read and dropped. Every line is delivered, except
/// those longer than `line`.
struct Capture {
    static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

    enum class Part { beginning, ending };

    std::size_t vystup = unlimited;
    Part outputPart = Part::beginning; ///< which part is kept if there is more
    std::size_t chyby = unlimited;
    Part errorsPart = Part::beginning;
    std::size_t line = 16UL * 1024 * 1024; ///< the longest line; a longer one is skipped entirely
};

/// Collects what a program writes and cuts its standard output into lines. Used only on the thread that reads
/// the program's pipes; afterwards by whoever takes the result.
class SberVystupu {
  public:
    SberVystupu(NaRadek naRadek, Capture capture) : naRadek_(std::move(naRadek)), capture_(capture) {}

    void addOutput(std::string_view chunk);
    void addErrors(std::string_view chunk);

    /// Delivers the last line if no line break ended it.
    void dokonci();

    /// Whether there was more standard output than is kept.
    [[nodiscard]] bool isOutputCut() const { return outputBytes_ > capture_.vystup; }

    /// The kept output as text, with invalid UTF-8 repaired. Can be taken once.
    std::string takeOutput();
    std::string takeErrors();

  private:
    void splitLines(std::string_view text);
    void extendLine(std::string_view text);
    void handOverUnfinished();
    void handOver(std::string_view line) const;

    NaRadek naRadek_;
    Capture capture_;
    std::size_t outputBytes_ = 0; ///< all bytes that came, kept or not
    std::string vystup_;
    std::string chyby_;
    std::string nedokoncenyRadek_;
    bool isTooLong_ = false; ///< whether the unfinished line is too long; it is empty then
};

} // namespace morvex
