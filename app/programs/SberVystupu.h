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
/// those longer than `radek`.
struct Zachyt {
    static constexpr std::size_t vse = std::numeric_limits<std::size_t>::max();

    enum class Cast { zacatek, konec };

    std::size_t vystup = vse;
    Cast castVystupu = Cast::zacatek; ///< which part is kept if there is more
    std::size_t chyby = vse;
    Cast castChyb = Cast::zacatek;
    std::size_t radek = 16UL * 1024 * 1024; ///< the longest line; a longer one is skipped entirely
};

/// Collects what a program writes and cuts its standard output into lines. Used only on the thread that reads
/// the program's pipes; afterwards by whoever takes the result.
class SberVystupu {
  public:
    SberVystupu(NaRadek naRadek, Zachyt zachyt) : naRadek_(std::move(naRadek)), zachyt_(zachyt) {}

    void pridejVystup(std::string_view chunk);
    void pridejChyby(std::string_view chunk);

    /// Delivers the last line if no line break ended it.
    void dokonci();

    /// Whether there was more standard output than is kept.
    [[nodiscard]] bool jeVystupUriznut() const { return bajtuVystupu_ > zachyt_.vystup; }

    /// The kept output as text, with invalid UTF-8 repaired. Can be taken once.
    std::string vezmiVystup();
    std::string vezmiChyby();

  private:
    void rozdel(std::string_view text);
    void pripoj(std::string_view text);
    void predejNedokonceny();
    void predej(std::string_view radek) const;

    NaRadek naRadek_;
    Zachyt zachyt_;
    std::size_t bajtuVystupu_ = 0; ///< all bytes that came, kept or not
    std::string vystup_;
    std::string chyby_;
    std::string nedokoncenyRadek_;
    bool prilisDlouhy_ = false; ///< whether the unfinished line is too long; it is empty then
};

} // namespace morvex
