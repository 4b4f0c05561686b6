#include "app/programs/SberVystupu.h"

#include "foundation/Text.h"

#include <utility>

namespace morvex {

namespace {

void appendUpTo(std::size_t limit, std::string& kept, std::string_view chunk) {
    kept += chunk.substr(0, limit - kept.size());
}

/// Keeps up to twice the limit while more output may come, so that the kept bytes are moved rarely.
void appendEnd(std::size_t limit, std::string& kept, std::string_view chunk) {
    kept += chunk;
    if (kept.size() / 2 > limit) kept.erase(0, kept.size() - limit);
}

void append(std::size_t limit, Zachyt::Cast cast, std::string& kept, std::string_view chunk) {
    if (cast == Zachyt::Cast::konec)
        appendEnd(limit, kept, chunk);
    else
        appendUpTo(limit, kept, chunk);
}

std::string end(std::size_t limit, std::string kept) {
    if (kept.size() > limit) kept.erase(0, kept.size() - limit);
    return kept;
}

std::string decode(std::string bytes) {
    return isValidUtf8(bytes) ? std::move(bytes) : repairUtf8(bytes);
}

} // namespace

void SberVystupu::pridejVystup(std::string_view chunk) {
    bajtuVystupu_ += chunk.size();
    append(zachyt_.vystup, zachyt_.castVystupu, vystup_, chunk);
    if (!naRadek_) return;
    // Each chunk is decoded separately, so a character split between two chunks is intact only in the result.
    if (isValidUtf8(chunk))
        rozdel(chunk);
    else
        rozdel(repairUtf8(chunk));
}

void SberVystupu::pridejChyby(std::string_view chunk) {
    append(zachyt_.chyby, zachyt_.castChyb, chyby_, chunk);
}

void SberVystupu::dokonci() {
    if (naRadek_) predejNedokonceny();
}

std::string SberVystupu::vezmiVystup() {
    return decode(end(zachyt_.vystup, std::exchange(vystup_, {})));
}

std::string SberVystupu::vezmiChyby() {
    return decode(end(zachyt_.chyby, std::exchange(chyby_, {})));
}

void SberVystupu::rozdel(std::string_view text) {
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        if (nedokoncenyRadek_.empty() && !prilisDlouhy_) {
            predej(text.substr(0, end));
        } else {
            pripoj(text.substr(0, end));
            predejNedokonceny();
        }
        text.remove_prefix(end + 1);
    }
    pripoj(text);
}

void SberVystupu::pripoj(std::string_view text) {
    if (text.size() > zachyt_.radek - nedokoncenyRadek_.size()) prilisDlouhy_ = true;
    if (prilisDlouhy_)
        std::string().swap(nedokoncenyRadek_);
    else
        nedokoncenyRadek_ += text;
}

void SberVystupu::predejNedokonceny() {
    prilisDlouhy_ = false;
    predej(std::exchange(nedokoncenyRadek_, {}));
}

void SberVystupu::predej(std::string_view radek) const {
    if (radek.size() <= zachyt_.radek && radek.find_first_not_of(" \t") != std::string_view::npos)
        naRadek_(radek);
}

} // namespace morvex
