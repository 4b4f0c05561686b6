#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

namespace morvex {

/// Takes one line of standard output, without its line break. Called on a thread of the launcher's, with no
/// lock held: it must not block.
using NaRadek = std::function<void(std::string_view)>;

/// How many bytes are kept; what is beyond is read and dropped. Lines are delivered all, but for those that
/// are too long.
struct Zachyt {
    static constexpr std::size_t vse = std::numeric_limits<std::size_t>::max();

    enum class Cast { zacatek, konec };

    std::size_t vystup = vse;
    Cast castVystupu = Cast::zacatek; ///< which part, when there is more
    std::size_t chyby = vse;
    Cast castChyb = Cast::zacatek;
    std::size_t radek = 16UL * 1024 * 1024; ///< the longest line; a longer one is passed over as a whole
};

/// Collects what a program writes and cuts its standard output into lines. Belongs to the thread that reads
/// the program's pipes; afterwards to whoever takes the result.
class SberVystupu {
  public:
    SberVystupu(NaRadek naRadek, Zachyt zachyt) : naRadek_(std::move(naRadek)), zachyt_(zachyt) {}

    void pridejVystup(std::string_view chunk);
    void pridejChyby(std::string_view chunk);

    /// Delivers a last line that no line break ended.
    void dokonci();

    /// Whether there was more of the standard output than what is kept.
    [[nodiscard]] bool jeVystupUriznut() const { return bajtuVystupu_ > zachyt_.vystup; }

    /// What is kept as text, once; invalid UTF-8 is repaired.
    std::string vezmiVystup();
    std::string vezmiChyby();

  private:
    void rozdel(std::string_view text);
    void pripoj(std::string_view text);
    void predejNedokonceny();
    void predej(std::string_view radek) const;

    NaRadek naRadek_;
    Zachyt zachyt_;
    std::size_t bajtuVystupu_ = 0; ///< all that came
    std::string vystup_;
    std::string chyby_;
    std::string nedokoncenyRadek_;
    bool prilisDlouhy_ = false; ///< of the unfinished line, which is then empty
};

} // namespace morvex
