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

void append(std::size_t limit, Capture::Part part, std::string& kept, std::string_view chunk) {
    if (part == Capture::Part::ending)
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

void SberVystupu::addOutput(std::string_view chunk) {
    outputBytes_ += chunk.size();
    append(capture_.vystup, capture_.outputPart, vystup_, chunk);
    if (!naRadek_) return;
    // Each chunk is decoded separately, so a character split between two chunks is intact only in the result.
    if (isValidUtf8(chunk))
        splitLines(chunk);
    else
        splitLines(repairUtf8(chunk));
}

void SberVystupu::addErrors(std::string_view chunk) {
    append(capture_.chyby, capture_.errorsPart, chyby_, chunk);
}

void SberVystupu::dokonci() {
    if (naRadek_) handOverUnfinished();
}

std::string SberVystupu::takeOutput() {
    return decode(end(capture_.vystup, std::exchange(vystup_, {})));
}

std::string SberVystupu::takeErrors() {
    return decode(end(capture_.chyby, std::exchange(chyby_, {})));
}

void SberVystupu::splitLines(std::string_view text) {
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        if (nedokoncenyRadek_.empty() && !isTooLong_) {
            handOver(text.substr(0, end));
        } else {
            extendLine(text.substr(0, end));
            handOverUnfinished();
        }
        text.remove_prefix(end + 1);
    }
    extendLine(text);
}

void SberVystupu::extendLine(std::string_view text) {
    if (text.size() > capture_.line - nedokoncenyRadek_.size()) isTooLong_ = true;
    if (isTooLong_)
        std::string().swap(nedokoncenyRadek_);
    else
        nedokoncenyRadek_ += text;
}

void SberVystupu::handOverUnfinished() {
    isTooLong_ = false;
    handOver(std::exchange(nedokoncenyRadek_, {}));
}

void SberVystupu::handOver(std::string_view line) const {
    if (line.size() <= capture_.line && line.find_first_not_of(" \t") != std::string_view::npos)
        naRadek_(line);
}

} // namespace morvex
