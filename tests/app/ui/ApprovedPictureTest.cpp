#include "tests/app/ui/ApprovedPicture.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace morvex {
namespace {

/// A card with a line of text, a button and a small symbol.
class ApprovedPictureTest : public testing::Test {
  protected:
    static QImage draw(QPointF textAt, bool hasButton, QColor symbol,
                       const QString& text = QStringLiteral("Telefon: Připraven, 12 poznámek")) {
        QImage picture(400, 120, QImage::Format_RGB32);
        picture.fill(QColor(250, 250, 250));
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QColor(30, 30, 30));
        painter.drawText(textAt, text);
        painter.setBrush(symbol);
        painter.setPen(Qt::NoPen);
        painter.drawEllipse(QPointF(20, 36), 5, 5);
        if (hasButton) {
            painter.setPen(QColor(30, 30, 30));
            painter.drawText(QPointF(40, 90), QStringLiteral("Zastavit"));
        }
        return picture;
    }

    const QPointF place{40, 40};
    const QColor green{40, 160, 70};
    const QImage approved = draw(place, true, green);
    static constexpr double tolerance = 0.1;
};

TEST_F(ApprovedPictureTest, LettersAFractionOfAPixelAsideAreTheSamePicture) {
    EXPECT_EQ(pictureDifference(draw(place, true, green), approved), 0);
    EXPECT_LT(pictureDifference(draw(place + QPointF(0.5, 0), true, green), approved), tolerance);
}

TEST_F(ApprovedPictureTest, AWordThatIsMissingIsSeen) {
    EXPECT_GT(pictureDifference(draw(place, false, green), approved), tolerance);
}

TEST_F(ApprovedPictureTest, AnotherColourOfASmallSymbolIsSeen) {
    EXPECT_GT(pictureDifference(draw(place, true, {200, 60, 40}), approved), tolerance);
    EXPECT_GT(pictureDifference(draw(place, true, {250, 250, 250}), approved), tolerance);
}

TEST_F(ApprovedPictureTest, ALineThatMovedIsSeen) {
    EXPECT_GT(pictureDifference(draw(place + QPointF(0, 12), true, green), approved), tolerance);
}

TEST_F(ApprovedPictureTest, AnotherDigitIsSeenInTheTextsAlone) {
    const auto other = draw(place, true, green, QStringLiteral("Telefon: Připraven, 13 poznámek"));
    EXPECT_LT(pictureDifference(other, approved), tolerance);
    EXPECT_EQ(textDifference("Spojení\nTelefon: Připraven, 13 poznámek\n",
                             "Spojení\nTelefon: Připraven, 12 poznámek\n"),
              "says \"Telefon: Připraven, 13 poznámek\", not \"Telefon: Připraven, 12 poznámek\"");
    EXPECT_EQ(textDifference("Spojení\n", "Spojení\nRelay\n"), "lacks \"Relay\"");
    EXPECT_EQ(textDifference("Spojení\nRelay\n", "Spojení\n"), "says \"Relay\" at its end");
    EXPECT_EQ(textDifference("Spojení\n", "Spojení\n"), "");
}

} // namespace
} // namespace morvex
