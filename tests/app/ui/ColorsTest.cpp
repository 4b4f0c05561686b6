#include "app/ui/ProductColors.h"
#include "tests/support/UiHarness.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <cstdlib>

namespace morvex {
namespace {

class ColorsTest : public UiHarness {
  protected:
    int lightness() { return window()->color().lightness(); }
};

TEST_F(ColorsTest, AnOpenWindowFollowsTheDesktop) {
    start();
    openUi();
    EXPECT_GT(lightness(), 200);
    colors.prefer(ColorScheme::Preference::dark);
    settle();
    EXPECT_LT(lightness(), 60);
    colors.prefer(ColorScheme::Preference::light);
    settle();
    EXPECT_GT(lightness(), 200);
}

class ProductColorsTest : public testing::Test {
  protected:
    static std::vector<QColor> colorsIn(const QString& path) {
        static const QRegularExpression color(QStringLiteral("#(?:[0-9a-fA-F]{6}|[0-9a-fA-F]{3})\\b"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        std::vector<QColor> found;
        const auto content = QString::fromUtf8(file.readAll());
        for (auto matches = color.globalMatch(content); matches.hasNext();)
            found.emplace_back(matches.next().captured());
        return found;
    }

    static bool isShadeOf(const QColor& color, const QColor& product) {
        return std::abs(color.hsvHue() - product.hsvHue()) <= 1;
    }
};

TEST_F(ProductColorsTest, EveryDrawingHasShadesOfTheTwoAndWhite) {
    QDirIterator drawings(QStringLiteral(":/pictures"), {QStringLiteral("*.svg")}, QDir::Files,
                          QDirIterator::Subdirectories);
    int seen = 0;
    while (drawings.hasNext()) {
        const auto path = drawings.next();
        ++seen;
        for (const auto& color : colorsIn(path))
            EXPECT_TRUE(color == Qt::white || isShadeOf(color, ProductColors::blue) ||
                        isShadeOf(color, ProductColors::orange))
                << path.toStdString() << ": " << color.name().toStdString();
    }
    EXPECT_GT(seen, 15);
}

TEST_F(ProductColorsTest, NoPartOfTheWindowHasAColourOfItsOwn) {
    QDirIterator files(QStringLiteral(MORVEX_SOURCE_DIR "/app/ui/qml"), {QStringLiteral("*.qml")},
                       QDir::Files);
    int seen = 0;
    while (files.hasNext()) {
        const auto path = files.next();
        ++seen;
        if (path.endsWith(QStringLiteral("/Vzhled.qml"))) continue;
        for (const auto& color : colorsIn(path))
            EXPECT_EQ(color, QColor(Qt::white)) << path.toStdString() << ": " << color.name().toStdString();
    }
    EXPECT_GT(seen, 40);
}

} // namespace
} // namespace morvex
