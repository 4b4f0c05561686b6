#include "tests/app/ui/ShownCompanion.h"

#include <QQuickItem>
#include <QScreen>

#include <algorithm>

namespace morvex {
namespace {

/// Run at several scales of the screen.
class ScaleTest : public ShownCompanion {
  protected:
    static QQuickItem* findCode(QQuickItem* item) {
        if (item->property("drawable").isValid()) return item;
        for (auto* child : item->childItems())
            if (auto* found = findCode(child)) return found;
        return nullptr;
    }

    /// The picture of the code that the window shows, from its first to its last dark pixel.
    QImage code() {
        const auto whole = column().picture;
        auto* item = findCode(window()->contentItem());
        const auto ratio = window()->effectiveDevicePixelRatio();
        const auto place = item->mapRectToScene(item->boundingRect());
        const auto area = whole.copy(QRectF(place.topLeft() * ratio, place.size() * ratio).toRect());
        QRect dark;
        for (int y = 0; y < area.height(); ++y)
            for (int x = 0; x < area.width(); ++x)
                if (area.pixelColor(x, y) == QColor(Qt::black)) dark |= QRect(x, y, 1, 1);
        return area.copy(dark);
    }
};

TEST_F(ScaleTest, EveryModuleOfACodeIsASharpSquareOfTheSameSize) {
    start();
    openUi();
    showState({StavParovani::CekamNaTelefon{std::string(300, 'x'), clock.now() + std::chrono::minutes(5)}});
    const auto picture = code();
    int run = 0;
    while (run < picture.width() && picture.pixelColor(run, 0) == QColor(Qt::black)) ++run;
    // The pattern in the corner is seven modules wide.
    ASSERT_GE(run, 7);
    ASSERT_EQ(run % 7, 0);
    const int module = run / 7;
    EXPECT_EQ(picture.width() % module, 0);
    EXPECT_EQ(picture.height(), picture.width());
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const auto color = picture.pixelColor(x, y);
            ASSERT_TRUE(color == QColor(Qt::black) || color == QColor(Qt::white)) << x << ", " << y;
            ASSERT_EQ(color, picture.pixelColor(x - x % module, y - y % module)) << x << ", " << y;
        }
}

TEST_F(ScaleTest, ACodeHasASquareOf220Points) {
    start();
    openUi();
    showState({StavParovani::CekamNaTelefon{"{}", clock.now() + std::chrono::minutes(5)}});
    const auto* item = findCode(window()->contentItem());
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->size(), QSizeF(220, 220));
}

TEST_F(ScaleTest, TheWindowIsNoLargerThanTheScreen) {
    start();
    openUi();
    const auto screen = window()->screen()->availableSize();
    for (auto size : {window()->size(), window()->minimumSize()}) {
        EXPECT_LE(size.width(), screen.width());
        EXPECT_LE(size.height(), screen.height());
    }
}

TEST_F(ScaleTest, TheWindowIs560HighAndMayShrinkTo360WhereTheScreenHasRoom) {
    start();
    openUi();
    const int screen = window()->screen()->availableSize().height();
    EXPECT_EQ(window()->height(), std::min(560, screen));
    EXPECT_EQ(window()->minimumHeight(), std::min(360, screen));
}

} // namespace
} // namespace morvex
