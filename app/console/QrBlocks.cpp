#include "app/console/QrBlocks.h"

#include <qrcodegen/qrcodegen.hpp>

#include <array>

namespace morvex {

namespace {

constexpr int quietZone = 4;
constexpr std::string_view blackOnWhite = "\x1b[30;107m";
constexpr std::string_view plain = "\x1b[0m";

/// Indexed by the darkness of the upper (2) and the lower (1) module.
constexpr std::array<std::string_view, 4> blocks{" ", "▄", "▀", "█"};

} // namespace

std::string qrBlocks(std::string_view content) {
    using qrcodegen::QrCode;
    try {
        auto code = QrCode::encodeText(std::string(content).c_str(), QrCode::Ecc::LOW);
        std::string out;
        for (int y = -quietZone; y < code.getSize() + quietZone; y += 2) {
            out += blackOnWhite;
            for (int x = -quietZone; x < code.getSize() + quietZone; ++x) {
                auto index = (code.getModule(x, y) ? 2U : 0U) + (code.getModule(x, y + 1) ? 1U : 0U);
                out += blocks[index];
            }
            out.append(plain).append("\n");
        }
        return out;
    } catch (const qrcodegen::data_too_long&) {
        return {};
    }
}

} // namespace morvex
