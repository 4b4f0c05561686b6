#include "app/ui/AvailabilitySymbol.h"

#include <QFile>
#include <gtest/gtest.h>

#include <set>

namespace morvex {
namespace {

TEST(AvailabilitySymbol, FollowsTheAvailability) {
    using A = MacAvailability;
    const std::pair<MacAvailability, const char*> table[] = {
        {{A::Pripraveny{}}, "ready"},
        {{A::Zaneprazdneny{"x"}}, "busy"},
        {{A::Pripojuji{3, 5}}, "connecting"},
        {{A::Spanek{}}, "away"},
        {{A::Preruseno{Sentence("x")}}, "away"},
        {{A::Offline{}}, "away"},
        {{A::NeplatneParovani{Sentence("x")}}, "attention"},
        {{A::Nesparovano{}}, "attention"},
    };
    for (const auto& [availability, name] : table)
        EXPECT_EQ(pictureName(availabilitySymbol(availability)).toStdString(), name);
}

TEST(AvailabilitySymbol, EachHasADrawingOfItsOwn) {
    std::set<QByteArray> drawings;
    using enum AvailabilitySymbol;
    for (auto symbol : {ready, busy, connecting, away, attention}) {
        QFile file(QStringLiteral(":/pictures/availability/%1.svg").arg(pictureName(symbol)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        drawings.insert(file.readAll());
    }
    EXPECT_EQ(drawings.size(), 5U);
}

} // namespace
} // namespace morvex
