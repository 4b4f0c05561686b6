#include "phone/QrPicture.h"

#include "phone/PhoneError.h"
#include "platform/posix/base/AtomicFile.h"
#include "shared/base/Try.h"

#include <zbar.h>

#include <memory>
#include <png.h>
#include <type_traits>

namespace morvex {

namespace {

constexpr std::size_t largestFile = std::size_t{16} << 20;
constexpr std::uint64_t mostPixels = 32'000'000;
constexpr unsigned long grey = zbar_fourcc('Y', '8', '0', '0');

template <auto destroy> struct Destroy {
    template <class T> void operator()(T* held) const { destroy(held); }
};

using Scanner = std::unique_ptr<zbar::zbar_image_scanner_t, Destroy<zbar::zbar_image_scanner_destroy>>;
using Image = std::unique_ptr<zbar::zbar_image_t, Destroy<zbar::zbar_image_destroy>>;

struct GreyPicture {
    unsigned width = 0;
    unsigned height = 0;
    Bytes pixels; ///< one byte each, row by row
};

std::unexpected<Error> unusable(std::string text) {
    return failWith(ExitCode::usage, std::move(text));
}

Result<GreyPicture> readPng(ByteView file) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, Destroy<png_image_free>> cleaning(&png);
    if (!png_image_begin_read_from_memory(&png, file.data(), file.size()))
        return unusable("Tohle není obrázek PNG.");
    if (std::uint64_t{png.width} * png.height > mostPixels) return unusable("Obrázek je moc velký.");
    png.format = PNG_FORMAT_GRAY;
    GreyPicture picture{png.width, png.height, Bytes(PNG_IMAGE_SIZE(png))};
    const png_color white{255, 255, 255};
    if (!png_image_finish_read(&png, &white, picture.pixels.data(), 0, nullptr))
        return unusable("Obrázek je poškozený.");
    return picture;
}

Result<std::string> decodeQr(const GreyPicture& picture) {
    const Scanner scanner(zbar::zbar_image_scanner_create());
    const Image image(zbar::zbar_image_create());
    zbar::zbar_image_scanner_set_config(scanner.get(), zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
    zbar::zbar_image_scanner_set_config(scanner.get(), zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_ENABLE, 1);
    zbar::zbar_image_set_format(image.get(), grey);
    zbar::zbar_image_set_size(image.get(), picture.width, picture.height);
    zbar::zbar_image_set_data(image.get(), picture.pixels.data(), picture.pixels.size(), nullptr);
    const int found = zbar::zbar_scan_image(scanner.get(), image.get());
    if (found < 1) return unusable("Na obrázku není čitelný QR kód.");
    if (found > 1) return unusable("Na obrázku je víc QR kódů. Nech na něm jen ten z okna Macu.");
    const auto* symbol = zbar::zbar_image_first_symbol(image.get());
    return std::string(zbar::zbar_symbol_get_data(symbol), zbar::zbar_symbol_get_data_length(symbol));
}

} // namespace

Result<std::string> readQrPicture(const std::filesystem::path& file) {
    auto bytes = readWhole(file, largestFile);
    if (!bytes) return unusable("Soubor nejde přečíst: " + bytes.error().popis().czech());
    if (!*bytes) return unusable("Takový soubor není.");
    TRY(auto, picture, readPng(**bytes));
    return decodeQr(picture);
}

} // namespace morvex
