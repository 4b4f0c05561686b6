#include "phone/QrPicture.h"

#include "phone/PhoneError.h"
#include "shared/trust/Parovani.h"
#include "tests/phone/ScriptedMac.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <qrcodegen/qrcodegen.hpp>

#include <fstream>
#include <png.h>

namespace morvex {
namespace {

constexpr int scale = 4;
constexpr int quietZone = 4;

/// Pixels of a QR code, a byte each; several codes stand side by side.
struct Picture {
    explicit Picture(const std::vector<std::string>& texts) {
        int column = 0;
        for (const auto& text : texts) column += draw(text, column);
    }

    int draw(const std::string& text, int column) {
        auto code = qrcodegen::QrCode::encodeText(text.c_str(), qrcodegen::QrCode::Ecc::LOW);
        side = std::max(side, code.getSize() + 2 * quietZone);
        modules.resize(static_cast<std::size_t>(side));
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                modules[static_cast<std::size_t>(y)].push_back(code.getModule(x - quietZone, y - quietZone));
        return column + side;
    }

    void save(const std::filesystem::path& file) const {
        const auto width = modules.front().size() * scale;
        const auto height = modules.size() * scale;
        std::vector<std::uint8_t> pixels;
        for (std::size_t y = 0; y < height; ++y)
            for (std::size_t x = 0; x < width; ++x) pixels.push_back(modules[y / scale][x / scale] ? 0 : 255);
        png_image png{};
        png.version = PNG_IMAGE_VERSION;
        png.width = static_cast<png_uint_32>(width);
        png.height = static_cast<png_uint_32>(height);
        png.format = PNG_FORMAT_GRAY;
        ASSERT_TRUE(png_image_write_to_file(&png, file.c_str(), 0, pixels.data(), 0, nullptr));
    }

    int side = 0;
    std::vector<std::vector<bool>> modules;
};

class QrPictureTest : public testing::Test {
  protected:
    void expectRefusal(const std::string& words) {
        auto read = readQrPicture(file);
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().popis().czech(), words);
        EXPECT_EQ(exitCodeOf(read.error()), ExitCode::usage);
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "qr.png";
};

TEST_F(QrPictureTest, ReadsTheTextOfAPairingCode) {
    ManualClock clock;
    auto text = Parovani::qrText(ScriptedMac(clock).bundle());
    Picture({text}).save(file);
    EXPECT_EQ(readQrPicture(file).value(), text);
}

TEST_F(QrPictureTest, RefusesAPictureWithTwoCodes) {
    Picture({"první kód", "druhý kód"}).save(file);
    expectRefusal("Na obrázku je víc QR kódů. Nech na něm jen ten z okna Macu.");
}

TEST_F(QrPictureTest, RefusesAPictureWithoutACode) {
    Picture picture({"x"});
    for (auto& row : picture.modules) row.assign(row.size(), false);
    picture.save(file);
    expectRefusal("Na obrázku není čitelný QR kód.");
}

TEST_F(QrPictureTest, RefusesWhatIsNoPicture) {
    expectRefusal("Takový soubor není.");
    std::ofstream(file) << "text";
    expectRefusal("Tohle není obrázek PNG.");
    std::filesystem::resize_file(file, 16 * 1024 * 1024 + 1);
    EXPECT_FALSE(readQrPicture(file));
}

TEST_F(QrPictureTest, RefusesATruncatedPicture) {
    Picture({"text"}).save(file);
    std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
    EXPECT_FALSE(readQrPicture(file));
}

TEST_F(QrPictureTest, RefusesAPictureOfMorePixelsThanItReads) {
    // A header alone: 40,000 x 40,000 pixels.
    Picture({"text"}).save(file);
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    const std::array<std::uint8_t, 17> chunk{'I', 'H',  'D',  'R', 0, 0, 0x9c, 0x40, 0,
                                             0,   0x9c, 0x40, 8,   0, 0, 0,    0};
    std::uint32_t crc = 0xffffffff;
    for (auto byte : chunk) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) crc = crc & 1 ? crc >> 1 ^ 0xedb88320 : crc >> 1;
    }
    crc = ~crc;
    stream.seekp(12);
    stream.write(reinterpret_cast<const char*>(chunk.data()), chunk.size());
    for (int shift = 24; shift >= 0; shift -= 8) stream.put(static_cast<char>(crc >> shift));
    stream.close();
    expectRefusal("Obrázek je moc velký.");
}

} // namespace
} // namespace morvex
