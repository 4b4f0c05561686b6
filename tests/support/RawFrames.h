#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// WebSocket frames as bytes (RFC 6455, section 5.2), valid and invalid ones.
namespace morvex::test {

/// A text from a literal that may contain zero bytes.
template <std::size_t Size> std::string bytes(const char (&literal)[Size]) {
    return {literal, Size - 1};
}

/// A close frame from a server, with a close code and a reason.
inline std::string closeFrame(unsigned code, std::string_view reason = {}) {
    std::string frame{"\x88"};
    frame += static_cast<char>(2 + reason.size());
    frame += static_cast<char>(code >> 8);
    frame += static_cast<char>(code & 0xff);
    return frame.append(reason);
}

/// The same frame as a client sends it: with mask bit and key. The payload must be shorter than 126 bytes.
inline std::string masked(std::string frame) {
    static constexpr std::array<std::uint8_t, 4> key{0x37, 0xfa, 0x21, 0x3d};
    frame[1] = static_cast<char>(frame[1] | 0x80);
    for (std::size_t place = 2; place < frame.size(); ++place)
        frame[place] = static_cast<char>(static_cast<std::uint8_t>(frame[place]) ^ key[(place - 2) % 4]);
    return frame.insert(2, std::string(key.begin(), key.end()));
}

/// A frame that must end the connection, written without a mask, and the expected close code.
struct WrongFrame {
    std::string what;
    std::string frame;
    unsigned answer;
    std::string before{}; ///< a valid frame to send first
};

inline std::vector<WrongFrame> wrongFrames() {
    constexpr unsigned protocolError = 1002;
    constexpr unsigned badPayload = 1007;
    std::vector<WrongFrame> frames{
        {"the first reserved bit", bytes("\xc1\x01x"), protocolError},
        {"the second reserved bit", bytes("\xa1\x01x"), protocolError},
        {"the third reserved bit", bytes("\x91\x01x"), protocolError},
        {"a reserved bit of a ping", bytes("\xc9\x00"), protocolError},
        {"a continuation of nothing", bytes("\x80\x01x"), protocolError},
        {"a text within a text", bytes("\x81\x01y"), protocolError, bytes("\x01\x01x")},
        {"a ping in two frames", bytes("\x09\x01x"), protocolError},
        {"a close in two frames", bytes("\x08\x02\x03\xe8"), protocolError},
        {"a close of one byte", bytes("\x88\x01\x03"), protocolError},
        {"a close whose reason is no UTF-8", closeFrame(1000, "\xff"), protocolError},
        {"a text that is no UTF-8", bytes("\x81\x02\xc3\x28"), badPayload},
        {"a text that ends within a character", bytes("\x81\x01\xc3"), badPayload},
        {"a text with half of a surrogate pair", bytes("\x81\x03\xed\xa0\x80"), badPayload},
    };
    for (const char opcode : {'\x3', '\x4', '\x5', '\x6', '\x7', '\xb', '\xc', '\xd', '\xe', '\xf'})
        frames.push_back({"opcode " + std::to_string(opcode),
                          std::string{static_cast<char>(opcode | 0x80)} + bytes("\x00"), protocolError});
    for (const unsigned code : {0U, 999U, 1004U, 1005U, 1006U, 1015U, 1016U, 1999U, 2000U, 2999U, 5000U,
                                5119U, 5120U, 9999U, 0x8000U, 65535U})
        frames.push_back({"close code " + std::to_string(code), closeFrame(code), protocolError});
    return frames;
}

/// Frame heads with invalid lengths, without mask bit, key and payload.
inline std::vector<WrongFrame> wrongLengths() {
    constexpr unsigned protocolError = 1002;
    return {
        {"2^63", bytes("\x82\x7f\x80\0\0\0\0\0\0\0"), protocolError},
        {"2^64 - 1", bytes("\x82\x7f\xff\xff\xff\xff\xff\xff\xff\xff"), protocolError},
        {"2^63 and 300,000", bytes("\x82\x7f\x80\0\0\0\0\x04\x93\xe0"), protocolError},
        {"125 in two bytes", bytes("\x82\x7e\0\x7d"), protocolError},
        {"65,535 in eight bytes", bytes("\x82\x7f\0\0\0\0\0\0\xff\xff"), protocolError},
        {"a ping of 126", bytes("\x89\x7e\0\x7e"), protocolError},
    };
}

/// Close codes that a peer may send, and that are echoed.
inline std::vector<unsigned> closeCodes() {
    return {1000, 1001, 1002, 1003, 1007, 1008, 1009, 1010, 1011, 3000, 3999, 4000, 4864, 4999};
}

/// The code of the close frame at the end of the received bytes, masked or not; nothing if there is none.
inline std::optional<unsigned> lastCloseCode(std::string_view heard) {
    const auto byteAt = [&](std::size_t fromEnd) {
        return static_cast<std::uint8_t>(heard[heard.size() - fromEnd]);
    };
    if (heard.size() >= 4 && byteAt(4) == 0x88 && byteAt(3) == 2) return byteAt(2) << 8 | byteAt(1);
    if (heard.size() < 8 || byteAt(8) != 0x88 || byteAt(7) != 0x82) return std::nullopt;
    return (byteAt(2) ^ byteAt(6)) << 8 | (byteAt(1) ^ byteAt(5));
}

} // namespace morvex::test
