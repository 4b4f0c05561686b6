#pragma once

#include <QColor>

namespace morvex {

/// The two colours of the product. All other colours of the windows and drawings are shades of these or grey.
struct ProductColors {
    static constexpr QColor blue{0x00, 0x5c, 0xa3};
    static constexpr QColor orange{0xd1, 0x4d, 0x0a};

    /// Saturation and value from 0 to 1.
    static QColor shade(const QColor& color, float saturation, float value) {
        return QColor::fromHsvF(color.hsvHueF(), saturation, value);
    }
};

} // namespace morvex
